// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PropertiesPanel.h"

#include "BrickSelection.h"
#include "FirstFocus.h"
#include "HelpStrip.h"
#include "LineIcon.h"
#include "MixerDocument.h"
#include "NetworkEdit.h"
#include "NetworkWalk.h"
#include "PropertyGroup.h"
#include "PropertyRow.h"
#include "dzshaderbrick.h"
#include "dzunknownbrick.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

#include <algorithm>

namespace {

QToolButton* addTool(QHBoxLayout* layout, LineIcon::Name icon, const QString& text)
{
    auto* button = new QToolButton;
    button->setIcon(LineIcon::make(icon));
    button->setIconSize(QSize(14, 14));
    button->setAutoRaise(true);
    button->setToolTip(text);
    button->setAccessibleName(text);
    layout->addWidget(button);
    return button;
}

QLabel* headingFor(const QString& path)
{
    QString text = path;
    while (text.startsWith(QLatin1Char('/')))
        text.remove(0, 1);
    auto* label = new QLabel(text.replace(QLatin1Char('/'), QStringLiteral(" / ")));
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    label->setContentsMargins(0, 6, 0, 0);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

/// What values need to be read and changed.
const int leastWidth = 250;
const int leastNameWidth = 44;
const int mostNameWidth = 150;

/// Why there are no values.
QString reasonForNone(int brickCount)
{
    switch (brickCount) {
    case 0:
        return PropertiesPanel::tr("Select a brick to see and change its values.");
    case 1:
        return PropertiesPanel::tr("This brick has no values.");
    default:
        return PropertiesPanel::tr("These bricks have no values in common.");
    }
}

} // namespace

PropertiesPanel::PropertiesPanel(QWidget* parent)
    : QWidget(parent)
    , m_title(new QLineEdit)
    , m_kind(new QLabel)
    , m_empty(new QLabel)
    , m_tools(new QWidget)
    , m_scroll(new QScrollArea)
    , m_help(new HelpStrip)
{
    m_title->setAccessibleName(tr("Title of the brick"));
    m_title->setToolTip(tr("Title of the brick"));
    m_kind->setForegroundRole(QPalette::PlaceholderText);
    m_kind->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_empty->setForegroundRole(QPalette::PlaceholderText);
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setWordWrap(true);

    auto* tools = new QHBoxLayout(m_tools);
    tools->setContentsMargins(0, 0, 0, 0);
    tools->setSpacing(0);
    tools->addWidget(m_kind, 1);
    QToolButton* reset = addTool(tools, LineIcon::Reset, tr("Reset all values"));
    QToolButton* lock = addTool(tools, LineIcon::Lock, tr("Lock all values"));
    QToolButton* unlock = addTool(tools, LineIcon::Unlock, tr("Unlock all values"));

    auto* content = new QWidget;
    m_layout = new QVBoxLayout(content);
    m_layout->setContentsMargins(8, 4, 4, 8);
    m_layout->setSpacing(3);
    m_layout->addStretch();
    m_scroll->setWidget(content);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    setMinimumWidth(leastWidth);

    auto* head = new QVBoxLayout;
    head->setContentsMargins(8, 6, 4, 2);
    head->addWidget(m_title);
    head->addWidget(m_tools);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(head);
    layout->addWidget(m_empty, 1);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(m_help);

    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &PropertiesPanel::updateNow);
    connect(qApp, &QApplication::focusChanged, this, &PropertiesPanel::explainFocus);
    connect(m_title, &QLineEdit::editingFinished, this, &PropertiesPanel::enterTitle);
    connect(reset, &QToolButton::clicked, this,
        [this] { resetAllValues(m_document->getSelection()->getBricks()); });
    connect(lock, &QToolButton::clicked, this,
        [this] { lockAllValues(m_document->getSelection()->getBricks(), true); });
    connect(unlock, &QToolButton::clicked, this,
        [this] { lockAllValues(m_document->getSelection()->getBricks(), false); });
    rebuild();
}

PropertiesPanel::~PropertiesPanel()
{
    // The last widget to go still tells that it lost the keyboard.
    qApp->disconnect(this);
}

void PropertiesPanel::setDocument(MixerDocument* document)
{
    if (m_document == document)
        return;
    enterTitle();
    if (m_document) {
        m_document->disconnect(this);
        m_document->getSelection()->disconnect(this);
    }
    m_document = document;
    if (document) {
        connect(document->getSelection(), &BrickSelection::selectionChanged, this,
            &PropertiesPanel::scheduleRebuild);
        connect(
            document, &MixerDocument::structureChanged, this, &PropertiesPanel::scheduleRebuild);
        connect(document, &MixerDocument::propertyChanged, this, &PropertiesPanel::scheduleRefresh);
        // Files are looked for beside the document's own.
        connect(document, &MixerDocument::titleChanged, this, &PropertiesPanel::scheduleRefresh);
    }
    scheduleRebuild();
}

PropertyRow* PropertiesPanel::findRow(const QString& label) const
{
    for (PropertyRow* row : m_rows)
        if (row->getGroup().getLabel() == label)
            return row;
    return nullptr;
}

void PropertiesPanel::showProblems(const QVector<Problem>& problems, ProblemActions* actions)
{
    m_problems = problems;
    m_actions = actions;
    for (PropertyRow* row : m_rows)
        row->showProblems(m_problems, m_actions);
}

void PropertiesPanel::focusFirst()
{
    updateNow();
    focusFirstIn(m_scroll->widget());
}

void PropertiesPanel::focusOn(DzProperty* property)
{
    updateNow();
    for (PropertyRow* row : m_rows)
        if (row->getGroup().getAll().contains(property)) {
            focusFirstIn(row);
            m_scroll->ensureWidgetVisible(row);
            return;
        }
}

void PropertiesPanel::scheduleRebuild()
{
    m_needsRebuild = true;
    scheduleRefresh();
}

void PropertiesPanel::scheduleRefresh()
{
    m_needsRefresh = true;
    // All that happens before the next frame is one update; nobody sees a hidden one.
    if (isVisible() && !m_update.isActive())
        m_update.start(0);
}

void PropertiesPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_needsRefresh)
        updateNow();
}

void PropertiesPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    alignNames();
}

void PropertiesPanel::updateNow()
{
    m_update.stop();
    m_needsRefresh = false;
    if (m_needsRebuild)
        rebuild();
    for (PropertyRow* row : m_rows)
        row->refresh(m_document ? m_document->getFolder() : QString());
    refreshHead();
}

void PropertiesPanel::rebuild()
{
    m_needsRebuild = false;
    const QVector<DzShaderBrick*> bricks
        = m_document ? m_document->getSelection()->getBricks() : QVector<DzShaderBrick*>();
    m_title->setVisible(bricks.size() == 1);
    m_tools->setVisible(!bricks.isEmpty());
    const std::vector<PropertyGroup> groups = commonProperties(bricks);
    m_empty->setText(reasonForNone(bricks.size()));
    m_empty->setVisible(groups.empty());
    m_scroll->setVisible(!groups.empty());
    showRows(groups);
    refreshHead();
}

void PropertiesPanel::refreshHead()
{
    explainFocus();
    if (!m_document)
        return;
    const BrickSelection* selection = m_document->getSelection();
    DzShaderBrick* brick = selection->getCurrent();
    if (brick != m_titled)
        enterTitle();
    m_titled = brick;
    m_titledDocument = m_document;
    if (!brick)
        return;
    if (!m_title->isModified())
        m_title->setText(brick->getBrickTitle());
    const QString kind = QStringLiteral("%1 (%2)").arg(
        brick->getPreferredName(), QString::number(brick->getBrickID()));
    m_kind->setText(selection->size() == 1 ? kind : tr("%1 bricks").arg(selection->size()));
}

/// Explains the value that the keyboard is on.
void PropertiesPanel::explainFocus()
{
    m_help->setBrick(m_document ? m_document->getSelection()->getCurrent() : nullptr);
    const QWidget* focus = QApplication::focusWidget();
    // Whoever looks at a list or picks in a dialog still is at the value.
    if (focus && focus->window() != window())
        return;
    const auto row = std::find_if(m_rows.begin(), m_rows.end(),
        [focus](const PropertyRow* candidate) { return candidate->isAncestorOf(focus); });
    if (row == m_rows.end())
        m_help->setValue(nullptr, QString());
    else
        m_help->setValue((*row)->getGroup().getFirst(), (*row)->getGroup().getLabel());
}

void PropertiesPanel::enterTitle()
{
    if (!m_title->isModified())
        return;
    m_title->setModified(false);
    if (m_titled && m_titledDocument && bricksOf(m_titledDocument->getUser()).contains(m_titled))
        m_titledDocument->getEdit()->setTitle(m_titled, m_title->text());
}

void PropertiesPanel::showRows(const std::vector<PropertyGroup>& groups)
{
    // Rows whose properties stay are kept: one of them may be in somebody's hand.
    QHash<DzProperty*, PropertyRow*> before;
    for (PropertyRow* row : m_rows) {
        m_layout->removeWidget(row);
        DzProperty* first = row->getGroup().getFirst();
        if (first && !before.contains(first))
            before.insert(first, row);
        else
            row->deleteLater();
    }
    m_rows.clear();
    qDeleteAll(m_headings);
    m_headings.clear();
    while (QLayoutItem* item = m_layout->takeAt(0))
        delete item;

    const bool hasPaths
        = std::any_of(groups.begin(), groups.end(), [&](const PropertyGroup& group) {
              return group.getFirst()->getPath() != groups.front().getFirst()->getPath();
          });
    QString path;
    for (const PropertyGroup& group : groups) {
        if (hasPaths && group.getFirst()->getPath() != path) {
            path = group.getFirst()->getPath();
            m_headings.append(headingFor(path));
            m_layout->addWidget(m_headings.last());
        }
        PropertyRow* row = before.value(group.getFirst());
        if (row && row->getGroup().getAll() == group.getAll()) {
            before.remove(group.getFirst());
        } else {
            row = new PropertyRow(group, m_document->getFolder());
            connect(row, &PropertyRow::brickActivated, this, &PropertiesPanel::brickActivated);
            connect(row, &PropertyRow::message, this, &PropertiesPanel::message);
            row->showProblems(m_problems, m_actions);
        }
        m_rows.push_back(row);
        m_layout->addWidget(row);
    }
    m_layout->addStretch();
    for (PropertyRow* row : before) {
        row->hide();
        row->deleteLater();
    }
    // The keyboard goes from row to row.
    QWidget* last = m_scroll;
    for (PropertyRow* row : m_rows) {
        QWidget::setTabOrder(last, row);
        last = row;
    }
    alignNames();
}

void PropertiesPanel::alignNames()
{
    int width = 0;
    for (const PropertyRow* row : m_rows)
        width = qMax(width, row->getNameWidth());
    // Names give way first.
    const int room = qMin(mostNameWidth, this->width() * 3 / 10);
    width = qBound(leastNameWidth, width, qMax(leastNameWidth, room));
    for (PropertyRow* row : m_rows)
        row->setNameWidth(width);
}
