// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkTextPanel.h"

#include "BrickAppearance.h"
#include "BrickSelection.h"
#include "LineIcon.h"
#include "MixerDocument.h"
#include "NetworkTextHighlighter.h"
#include "PendingEdits.h"
#include "PlaceholderModel.h"
#include "dzfileformat.h"
#include "dzfilewriter.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QTableView>
#include <QTextBlock>
#include <QToolButton>

namespace {

QToolButton* toolFor(QAction* action)
{
    auto* button = new QToolButton;
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    return button;
}

/// How many characters two texts have in common at their begin.
int commonBegin(const QString& a, const QString& b)
{
    const int most = qMin(a.size(), b.size());
    int count = 0;
    while (count < most && a.at(count) == b.at(count))
        ++count;
    return count;
}

int commonEnd(const QString& a, const QString& b, int most)
{
    int count = 0;
    while (count < most && a.at(a.size() - 1 - count) == b.at(b.size() - 1 - count))
        ++count;
    return count;
}

/// Texts of more characters take longer than a frame to write: they follow after these
/// milliseconds, so that the canvas does not wait for them.
const int longText = 100000;
const int longDelay = 50;
/// Lines that are shown above the first that is lit.
const int linesAbove = 3;

/// Maps that the note names; its tooltip names all.
const int mostNamedMaps = 3;

} // namespace

NetworkTextPanel::NetworkTextPanel(QWidget* parent)
    : QWidget(parent)
    , m_placeholders(new QCheckBox(tr("&Placeholders")))
    , m_mapFiles(new QCheckBox(tr("&Image files")))
    , m_text(new QPlainTextEdit)
    , m_highlighter(new NetworkTextHighlighter(m_text->document()))
    , m_note(new QLabel)
    , m_table(new QTableView)
    , m_model(new PlaceholderModel(this))
{
    auto* copy = new QAction(LineIcon::make(LineIcon::Copy), tr("Copy the whole text"), this);
    auto* save = new QAction(LineIcon::make(LineIcon::Save), tr("Save the text as a file…"), this);
    connect(copy, &QAction::triggered, this, &NetworkTextPanel::copyText);
    connect(save, &QAction::triggered, this, &NetworkTextPanel::saveText);
    m_placeholders->setToolTip(
        tr("Write placeholders for values that are not locked, as surfaces get them"));

    m_mapFiles->setObjectName(QStringLiteral("mapFiles"));
    m_mapFiles->setToolTip(
        tr("Write the maps of image textures as the names of their files, so that "
           "the text can be pasted into a scene of the renderer"));

    auto* tools = new QHBoxLayout;
    tools->setContentsMargins(6, 2, 2, 2);
    tools->addWidget(m_placeholders);
    tools->addWidget(m_mapFiles);
    tools->addStretch();
    tools->addWidget(toolFor(copy));
    tools->addWidget(toolFor(save));

    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setTabStopDistance(m_text->fontMetrics().horizontalAdvance(QLatin1Char(' ')) * 4);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setAccessibleName(tr("Text for the renderer"));
    m_text->viewport()->installEventFilter(this);
    m_text->installEventFilter(this);

    m_table->setModel(m_model);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setFrameShape(QFrame::NoFrame);
    m_table->setAccessibleName(tr("Placeholders"));
    m_table->setColumnWidth(PlaceholderModel::LockedColumn, 54);
    m_table->setColumnWidth(PlaceholderModel::NameColumn, 160);
    m_table->setColumnWidth(PlaceholderModel::BrickColumn, 90);
    m_table->setColumnWidth(PlaceholderModel::PropertyColumn, 80);

    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(m_text);
    splitter->addWidget(m_table);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({ 200, 150 });
    m_table->hide();

    m_note->setObjectName(QStringLiteral("note"));
    m_note->setWordWrap(true);
    m_note->setMargin(8);
    m_note->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(tools);
    layout->addWidget(m_note);
    layout->addWidget(splitter, 1);

    m_light.setSingleShot(true);
    connect(&m_light, &QTimer::timeout, this, &NetworkTextPanel::showLight);
    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &NetworkTextPanel::updateText);
    connect(m_placeholders, &QCheckBox::toggled, this, [this](bool on) {
        m_table->setVisible(on);
        updateNow();
    });
    connect(m_mapFiles, &QCheckBox::toggled, this, &NetworkTextPanel::updateNow);
    connect(m_table, &QTableView::activated, this, [this](const QModelIndex& index) {
        if (DzShaderBrick* brick = m_model->getBrick(index.row()))
            emit brickActivated(brick);
    });
}

void NetworkTextPanel::setDocument(MixerDocument* document)
{
    if (m_document == document)
        return;
    if (m_document) {
        m_document->disconnect(this);
        m_document->getSelection()->disconnect(this);
    }
    m_document = document;
    if (document) {
        connect(
            document, &MixerDocument::structureChanged, this, &NetworkTextPanel::scheduleUpdate);
        connect(document, &MixerDocument::propertyChanged, this, &NetworkTextPanel::scheduleUpdate);
        connect(document->getSelection(), &BrickSelection::selectionChanged, this,
            &NetworkTextPanel::scheduleLight);
    }
    m_code = NetworkText(); // nothing of another document is shown for long
    scheduleUpdate();
}

bool NetworkTextPanel::isLiteral() const
{
    return !m_placeholders->isChecked();
}

void NetworkTextPanel::setLiteral(bool literal)
{
    m_placeholders->setChecked(!literal);
}

bool NetworkTextPanel::isMapFiles() const
{
    return m_mapFiles->isChecked();
}

QString NetworkTextPanel::getText() const
{
    return m_code.text;
}

void NetworkTextPanel::scheduleUpdate()
{
    m_stale = true;
    // All that happens before the next frame, or meanwhile, is one update; nobody sees a hidden
    // one.
    if (isVisible() && !m_update.isActive())
        m_update.start(m_code.text.size() > longText ? longDelay : 0);
}

void NetworkTextPanel::scheduleLight()
{
    // Bricks that go leave the selection one by one.
    if (isVisible() && !m_light.isActive())
        m_light.start(0);
}

void NetworkTextPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_stale)
        scheduleUpdate();
    else
        scheduleLight();
}

void NetworkTextPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // The colours are those of the look.
    if (event->type() == QEvent::PaletteChange) {
        m_highlighter->rehighlight();
        showLight();
    }
}

void NetworkTextPanel::updateNow()
{
    m_update.stop();
    updateText();
}

void NetworkTextPanel::updateText()
{
    m_stale = false;
    NetworkTextForm form { isLiteral(), isMapFiles() };
    // The text is pasted or saved elsewhere, where the network's relative names lead nowhere.
    if (m_document && isMapFiles() && !m_document->getPath().isEmpty())
        form.imageFolder = QFileInfo(m_document->getPath()).absolutePath();
    m_code = m_document ? textOf(m_document->getUser(), form) : NetworkText();
    showNote();
    m_model->setPlaceholders(m_code.placeholders);
    showText(m_code.text);
    showLight();
}

/// Says why there is no text, or which images are not in it.
void NetworkTextPanel::showNote()
{
    QStringList maps;
    for (const UnwrittenMap& map : qAsConst(m_code.unwrittenMaps))
        if (map.brick && map.property)
            maps.append(
                tr("%1, %2").arg(BrickAppearance::titleText(map.brick), map.property->getLabel()));
    QString note = m_code.error;
    if (!maps.isEmpty()) {
        const QString shown = QStringList(maps.mid(0, mostNamedMaps)).join(QStringLiteral("; "));
        note = maps.size() > mostNamedMaps
            ? tr("Values are written where these have images: %1; and %2 more.")
                  .arg(shown)
                  .arg(maps.size() - mostNamedMaps)
            : tr("Values are written where these have images: %1.").arg(shown);
        if (!isMapFiles())
            note += QLatin1Char(' ') + tr("“Image files” writes those of image textures.");
    }
    m_note->setText(note);
    m_note->setToolTip(maps.join(QLatin1Char('\n')));
    m_note->setVisible(!note.isEmpty());
}

void NetworkTextPanel::showText(const QString& text)
{
    // Only what differs is replaced: laying out and colouring the whole takes longer than a frame,
    // and the reader's place stays.
    const QString before = m_text->toPlainText();
    if (before == text)
        return;
    const int begin = commonBegin(before, text);
    const int end = commonEnd(before, text, qMin(before.size(), text.size()) - begin);
    // Every cursor of a light is adjusted for every line that changes; they are set anew anyway.
    m_text->setExtraSelections({});
    QTextCursor cursor(m_text->document());
    cursor.setPosition(begin);
    cursor.setPosition(before.size() - end, QTextCursor::KeepAnchor);
    cursor.insertText(text.mid(begin, text.size() - end - begin));
    m_text->document()->clearUndoRedoStacks();
}

void NetworkTextPanel::showLight()
{
    if (m_stale || !isVisible())
        return;
    QTextEdit::ExtraSelection light;
    QColor color = palette().color(QPalette::Highlight);
    color.setAlpha(70);
    light.format.setBackground(color);
    light.format.setProperty(QTextFormat::FullWidthSelection, true);
    QList<QTextEdit::ExtraSelection> lights;
    const QTextDocument* document = m_text->document();
    int first = -1;
    int end = -1;
    for (const TextStatement& statement : qAsConst(m_code.statements)) {
        if (!statement.brick || !m_document
            || !m_document->getSelection()->contains(statement.brick))
            continue;
        // What follows what is lit is one with it: lights cost time, each on its own.
        if (lights.isEmpty() || statement.begin != end) {
            QTextBlock block = document->findBlock(statement.begin);
            while (block.isValid() && block.text().isEmpty())
                block = block.next(); // statements begin with an empty line
            if (!block.isValid())
                continue;
            if (first < 0)
                first = block.blockNumber();
            light.cursor = QTextCursor(block);
            lights.append(light);
        }
        end = statement.begin + statement.length;
        // With the line end, or the last line would be lit no wider than its text.
        const QTextBlock last = document->findBlock(end - 1);
        lights.last().cursor.setPosition(
            qMin(last.position() + last.length(), document->characterCount() - 1),
            QTextCursor::KeepAnchor);
    }
    m_text->setExtraSelections(lights);
    // Whoever reads here stays where he is.
    if (first >= 0 && !m_text->hasFocus())
        m_text->verticalScrollBar()->setValue(first - linesAbove);
}

bool NetworkTextPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_text->viewport() && event->type() == QEvent::MouseButtonRelease) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        // Selecting text is no click on a line.
        if (mouse->button() == Qt::LeftButton && !m_text->textCursor().hasSelection())
            activateLine(mouse->pos());
    } else if (watched == m_text && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (DzShaderBrick* brick = m_code.brickAt(m_text->textCursor().position()))
                emit brickActivated(brick);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void NetworkTextPanel::activateLine(const QPoint& position)
{
    const QTextCursor cursor = m_text->cursorForPosition(position);
    if (DzShaderBrick* brick = m_code.brickAt(cursor.block().position()))
        emit brickActivated(brick);
}

void NetworkTextPanel::copyText()
{
    commitPendingEdits();
    updateNow();
    QGuiApplication::clipboard()->setText(m_code.text);
    emit message(tr("The text is on the clipboard."));
}

void NetworkTextPanel::saveText()
{
    commitPendingEdits();
    updateNow();
    if (!m_document)
        return;
    const QString kind = QStringLiteral("text");
    DzFileFormats::add(DzFileFormat {
        kind, tr("Text"), { QStringLiteral("lxm"), QStringLiteral("txt") }, false, true });
    const QString suffix = DzFileFormats::getUsualSuffix(kind);
    QFileDialog dialog(this, tr("Save Text"), m_document->getFolder(),
        DzFileFormats::getDialogFilter({ kind }, DzFileFormats::Writing));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(m_document->getBaseName() + QLatin1Char('.') + suffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString path = dialog.selectedFiles().first();
    QString error;
    if (dzWriteFile(path, m_code.text.toUtf8(), &error))
        emit message(tr("Saved %1.").arg(path));
    else
        emit message(error);
}
