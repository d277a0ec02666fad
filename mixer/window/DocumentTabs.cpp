// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "DocumentTabs.h"

#include "MixerDocument.h"
#include "NetworkView.h"
#include "dzundostack.h"

#include <QFileInfo>
#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace {

/// One name for each file, also for one that is not there.
QString placeOf(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() ? file.canonicalFilePath() : file.absoluteFilePath();
}

} // namespace

/// A tab that was closed. It holds the document, so that nothing in it is lost by closing.
class CloseDocumentItem : public DzUndoItem
{
public:
    CloseDocumentItem(DocumentTabs* tabs, const DocumentTabs::DocumentPtr& document, int index)
        : m_tabs(tabs)
        , m_document(document)
        , m_index(index)
    {
    }

    void undo() override
    {
        if (m_tabs)
            m_tabs->insert(m_index, m_document);
    }
    void redo() override
    {
        if (m_tabs)
            m_tabs->closeAgain(m_document);
    }

private:
    QPointer<DocumentTabs> m_tabs;
    DocumentTabs::DocumentPtr m_document;
    int m_index;
};

DocumentTabs::DocumentTabs(QWidget* parent)
    : QTabWidget(parent)
{
    setDocumentMode(true);
    setMovable(true);
    setTabsClosable(true);
    setAccessibleName(tr("Networks"));
    connect(this, &QTabWidget::currentChanged, this, &DocumentTabs::currentDocumentChanged);
    connect(this, &QTabWidget::tabCloseRequested, this, [this](int index) {
        if (const Entry* entry = entryOf(widget(index)))
            emit closeRequested(entry->document.get());
    });
}

DocumentTabs::~DocumentTabs()
{
    // Views look at their documents: they go first.
    for (const Entry& entry : m_entries)
        delete entry.view;
}

NetworkView* DocumentTabs::open(const DocumentPtr& document)
{
    insert(count(), document);
    return getView(document.get());
}

void DocumentTabs::close(MixerDocument* document, bool undoable)
{
    const Entry* entry = entryOf(document);
    if (!entry)
        return;
    const int index = indexOf(entry->view);
    const QString title = document->getTitle();
    const DocumentPtr taken = take(document);
    if (undoable)
        dzUndoStack->push(new CloseDocumentItem(this, taken, index), tr("Close %1").arg(title));
}

void DocumentTabs::setCurrent(MixerDocument* document)
{
    if (const Entry* entry = entryOf(document))
        setCurrentWidget(entry->view);
}

MixerDocument* DocumentTabs::getCurrent() const
{
    const Entry* entry = entryOf(currentWidget());
    return entry ? entry->document.get() : nullptr;
}

NetworkView* DocumentTabs::getCurrentView() const
{
    const Entry* entry = entryOf(currentWidget());
    return entry ? entry->view : nullptr;
}

QVector<MixerDocument*> DocumentTabs::getDocuments() const
{
    QVector<MixerDocument*> documents;
    for (int i = 0; i < count(); ++i)
        if (const Entry* entry = entryOf(widget(i)))
            documents.append(entry->document.get());
    return documents;
}

NetworkView* DocumentTabs::getView(const MixerDocument* document) const
{
    const Entry* entry = entryOf(document);
    return entry ? entry->view : nullptr;
}

MixerDocument* DocumentTabs::findPath(const QString& path) const
{
    if (path.isEmpty())
        return nullptr;
    const QString wanted = placeOf(path);
    for (const Entry& entry : m_entries)
        if (!entry.document->getPath().isEmpty() && placeOf(entry.document->getPath()) == wanted)
            return entry.document.get();
    return nullptr;
}

QVector<MixerDocument*> DocumentTabs::getUnsavedBehindSteps() const
{
    QVector<MixerDocument*> documents;
    for (const DocumentPtr& document : m_unsavedBehindSteps)
        if (document->isModified())
            documents.append(document.get());
    return documents;
}

const DocumentTabs::Entry* DocumentTabs::entryOf(const QWidget* view) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
        [view](const Entry& entry) { return entry.view == view; });
    return found == m_entries.end() ? nullptr : &*found;
}

const DocumentTabs::Entry* DocumentTabs::entryOf(const MixerDocument* document) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
        [document](const Entry& entry) { return entry.document.get() == document; });
    return found == m_entries.end() ? nullptr : &*found;
}

void DocumentTabs::closeAgain(const DocumentPtr& document)
{
    if (document->isModified())
        m_unsavedBehindSteps.push_back(document);
    take(document.get());
}

void DocumentTabs::insert(int index, const DocumentPtr& document)
{
    m_unsavedBehindSteps.erase(
        std::remove(m_unsavedBehindSteps.begin(), m_unsavedBehindSteps.end(), document),
        m_unsavedBehindSteps.end());
    auto* view = new NetworkView(document->getEdit(), document->getSelection(), this);
    m_entries.push_back(Entry { document, view });
    MixerDocument* plain = document.get();
    connect(plain, &MixerDocument::titleChanged, this, [this, plain] { showTitle(plain); });
    connect(plain, &MixerDocument::modifiedChanged, this, [this, plain] { showTitle(plain); });
    insertTab(index, view, QString());
    showTitle(plain);
    emit opened(plain);
    setCurrentWidget(view);
    // When the window has given the canvas its size.
    QTimer::singleShot(0, view, &NetworkView::zoomToAll);
}

DocumentTabs::DocumentPtr DocumentTabs::take(MixerDocument* document)
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
        [document](const Entry& candidate) { return candidate.document.get() == document; });
    if (entry == m_entries.end())
        return nullptr;
    const DocumentPtr taken = entry->document;
    NetworkView* view = entry->view;
    document->disconnect(this);
    m_entries.erase(entry);
    removeTab(indexOf(view));
    emit closed(document);
    // The command may have come through the view; the document stays as long as it looks at it.
    connect(view, &QObject::destroyed, [taken] { (void)taken; });
    view->deleteLater();
    return taken;
}

void DocumentTabs::showTitle(MixerDocument* document)
{
    const Entry* entry = entryOf(document);
    if (!entry)
        return;
    const int index = indexOf(entry->view);
    QString title = document->getTitle();
    title.replace(QLatin1Char('&'), QStringLiteral("&&"));
    setTabText(index, document->isModified() ? title + QStringLiteral(" •") : title);
    setTabToolTip(index, document->getPath().isEmpty() ? tr("not saved yet") : document->getPath());
    if (entry->view == currentWidget())
        emit currentDocumentChanged();
}
