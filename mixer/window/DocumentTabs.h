// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTabWidget>
#include <memory>
#include <vector>

class MixerDocument;
class NetworkView;

/// The open documents, a tab with a canvas each.
///
/// Closing a tab by a command is an undo step: the document lives in the step, and taking the step
/// back brings the tab back.
class DocumentTabs : public QTabWidget
{
    Q_OBJECT

public:
    typedef std::shared_ptr<MixerDocument> DocumentPtr;

    explicit DocumentTabs(QWidget* parent = nullptr);
    ~DocumentTabs() override;

    /// Shows a document in a new tab, which becomes the current one.
    NetworkView* open(const DocumentPtr& document);
    /// Takes a document's tab away. With `undoable` it leaves an undo step.
    void close(MixerDocument* document, bool undoable);
    void setCurrent(MixerDocument* document);

    MixerDocument* getCurrent() const;
    NetworkView* getCurrentView() const;
    /// In the order of the tabs.
    QVector<MixerDocument*> getDocuments() const;
    NetworkView* getView(const MixerDocument* document) const;
    /// The document of this file, null when it is not open.
    MixerDocument* findPath(const QString& path) const;
    /// Documents with something unsaved whose tab went because its closing was redone: nobody was
    /// asked about them.
    QVector<MixerDocument*> getUnsavedBehindSteps() const;

signals:
    void currentDocumentChanged();
    void opened(MixerDocument* document);
    void closed(MixerDocument* document);
    /// A tab's cross was pressed.
    void closeRequested(MixerDocument* document);

private:
    friend class CloseDocumentItem;

    struct Entry {
        DocumentPtr document;
        NetworkView* view;
    };

    const Entry* entryOf(const QWidget* view) const;
    const Entry* entryOf(const MixerDocument* document) const;
    void insert(int index, const DocumentPtr& document);
    void closeAgain(const DocumentPtr& document);
    DocumentPtr take(MixerDocument* document);
    void showTitle(MixerDocument* document);

    std::vector<Entry> m_entries;
    /// Held here too: the steps may go before somebody was asked.
    std::vector<DocumentPtr> m_unsavedBehindSteps;
};
