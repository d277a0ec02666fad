// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PropertyRow.h"

#include "BrickAppearance.h"
#include "BrickHelp.h"
#include "FileField.h"
#include "FreshValue.h"
#include "LineIcon.h"
#include "ProblemNote.h"
#include "PropertyEditor.h"
#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace {

/// Ends its text with dots where there is no room for it.
class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override { return QSize(0, QLabel::minimumSizeHint().height()); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        style()->drawItemText(&painter, contentsRect(), alignment() | Qt::AlignVCenter, palette(),
            isEnabled(), fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()),
            foregroundRole());
    }
};

bool isUntouched(const PropertyGroup& group)
{
    const QVector<DzProperty*> all = group.getAll();
    return std::all_of(all.begin(), all.end(), isFreshValue);
}

/// A picture and the begin of a name.
const int leastSourceWidth = 40;

} // namespace

PropertyRow::PropertyRow(const PropertyGroup& group, const QString& folder, QWidget* parent)
    : QWidget(parent)
    , m_group(group)
    , m_line(new QHBoxLayout)
    , m_name(new ElidedLabel(group.getLabel()))
    , m_editor(PropertyEditor::make(group, nullptr))
    , m_source(new QToolButton)
    , m_map(new FileField)
{
    auto* lines = new QVBoxLayout;
    lines->setSpacing(2);
    lines->addWidget(m_source, 0, Qt::AlignLeft);
    lines->addWidget(m_editor);
    lines->addWidget(m_map);
    m_line->setSpacing(2);
    m_line->addWidget(m_name, 0, Qt::AlignTop);
    m_line->addSpacing(6);
    m_line->addLayout(lines, 1);
    // What is told of the value stands below it, as wide as the row.
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(m_line);
    m_mapButton = addTool(LineIcon::Image, tr("Map of %1").arg(group.getLabel()));
    m_resetButton = addTool(LineIcon::Reset, tr("Reset %1 to its default").arg(group.getLabel()));
    m_lockButton = addTool(LineIcon::Unlock, tr("Lock %1").arg(group.getLabel()));
    m_mapButton->setObjectName(QStringLiteral("map"));
    m_resetButton->setObjectName(QStringLiteral("reset"));
    m_lockButton->setObjectName(QStringLiteral("lock"));
    m_lockButton->setCheckable(true);
    m_name->setBuddy(m_editor);
    m_name->setFixedHeight(PropertyEditor::lineHeight(this));
    m_source->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_source->setIcon(LineIcon::make(LineIcon::Link));
    m_source->setAutoRaise(true);
    m_source->setMinimumWidth(leastSourceWidth);
    m_source->setToolTip(tr("This brick feeds the value; click to go there"));
    m_map->setFilter(imageFilter());
    m_map->setShowsPicture(true);
    m_map->getLineEdit()->setAccessibleName(tr("Map of %1").arg(group.getLabel()));
    setAcceptDrops(true);

    connect(m_editor, &PropertyEditor::message, this, &PropertyRow::message);
    connect(m_source, &QToolButton::clicked, this, [this] {
        if (DzShaderBrick* brick = m_group.getSource())
            emit brickActivated(brick);
    });
    connect(m_map, &FileField::chosen, this, [this](const QString& file) { m_group.setMap(file); });
    connect(m_resetButton, &QToolButton::clicked, this, [this] {
        m_group.reset();
        if (!m_group.getNotice().isEmpty())
            emit message(m_group.getNotice());
    });
    connect(
        m_lockButton, &QToolButton::clicked, this, [this](bool checked) { m_group.lock(checked); });
    connect(m_mapButton, &QToolButton::clicked, this, [this] {
        if (m_group.isMapped())
            m_group.setMap(QString());
        else
            m_map->choose();
    });
    for (QWidget* child : findChildren<QWidget*>())
        if (child->focusPolicy() & Qt::TabFocus)
            child->installEventFilter(this);
    refresh(folder);
}

QToolButton* PropertyRow::addTool(int icon, const QString& name)
{
    auto* button = new QToolButton;
    button->setIcon(LineIcon::make(static_cast<LineIcon::Name>(icon)));
    button->setIconSize(QSize(14, 14));
    button->setAutoRaise(true);
    // One Tab stop a value: the menu has the rest.
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedSize(PropertyEditor::lineHeight(this) - 2, PropertyEditor::lineHeight(this));
    button->setToolTip(name);
    button->setAccessibleName(name);
    // What cannot be done now leaves its place free, so that nothing jumps.
    QSizePolicy policy = button->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    button->setSizePolicy(policy);
    m_line->addWidget(button, 0, Qt::AlignTop);
    return button;
}

int PropertyRow::getNameWidth() const
{
    return m_name->sizeHint().width();
}

void PropertyRow::setNameWidth(int width)
{
    m_name->setFixedWidth(width);
}

void PropertyRow::refresh(const QString& folder)
{
    const DzProperty* property = m_group.getFirst();
    if (!property)
        return;
    const QString help = BrickHelp::ofValue(property);
    setToolTip(BrickHelp::tipOf(
        help.isEmpty() ? m_group.describe() : m_group.describe() + QLatin1Char('\n') + help));
    const bool locked = m_group.isLocked();
    const bool mapped = m_group.isMapped();
    m_editor->setFolder(folder);
    m_editor->refresh();
    m_editor->setEnabled(!locked);
    DzShaderBrick* source = m_group.getSource();
    m_source->setVisible(source != nullptr);
    // What is linked takes the value's place.
    m_editor->setVisible(source == nullptr);
    if (source)
        m_source->setText(BrickAppearance::titleText(source));
    m_map->setVisible(mapped);
    if (mapped)
        m_map->showFile(m_group.getMap(), folder);
    m_map->setEnabled(!locked);
    m_mapButton->setVisible(m_group.isMappable());
    m_mapButton->setEnabled(!locked);
    m_mapButton->setToolTip(mapped ? tr("Clear the map of %1").arg(m_group.getLabel())
                                   : tr("Set an image as the map of %1").arg(m_group.getLabel()));
    m_resetButton->setVisible(!m_group.isDefault() && !isUntouched(m_group));
    m_resetButton->setEnabled(!locked);
    m_lockButton->setChecked(locked);
    m_lockButton->setIcon(LineIcon::make(locked ? LineIcon::Lock : LineIcon::Unlock));
    m_lockButton->setToolTip(locked ? tr("Unlock %1").arg(m_group.getLabel())
                                    : tr("Lock %1: it is written as a value and not as a "
                                         "placeholder, and not changed by mistake")
                                          .arg(m_group.getLabel()));
}

void PropertyRow::showProblems(const QVector<Problem>& problems, ProblemActions* actions)
{
    const QVector<DzProperty*> own = m_group.getAll();
    QVector<Problem> mine;
    for (const Problem& problem : problems)
        if (problem.property && own.contains(problem.property))
            mine.append(problem);
    const bool isShown = std::equal(mine.begin(), mine.end(), m_notes.begin(), m_notes.end(),
        [](const Problem& problem, const ProblemNote* note) {
            return problem.text == note->getProblem().text
                && problem.property == note->getProblem().property;
        });
    if (isShown)
        return;
    for (ProblemNote* note : qAsConst(m_notes)) {
        // One of its buttons may be what asked for this.
        note->hide();
        note->deleteLater();
    }
    m_notes.clear();
    for (const Problem& problem : qAsConst(mine)) {
        m_notes.append(new ProblemNote(problem, actions));
        layout()->addWidget(m_notes.last());
    }
}

void PropertyRow::fillMenu(QMenu* menu)
{
    for (QToolButton* button : m_editor->findChildren<QToolButton*>()) {
        QAction* action = menu->addAction(tr("%1…").arg(button->toolTip()));
        action->setEnabled(button->isEnabled());
        connect(action, &QAction::triggered, button, &QToolButton::click);
    }
    const bool locked = m_group.isLocked();
    QAction* reset = menu->addAction(LineIcon::make(LineIcon::Reset), tr("Reset to Default"));
    reset->setEnabled(!locked && !m_group.isDefault());
    connect(reset, &QAction::triggered, this, [this] { m_group.reset(); });
    QAction* lock = menu->addAction(locked ? tr("Unlock") : tr("Lock"));
    connect(lock, &QAction::triggered, this, [this, locked] { m_group.lock(!locked); });
    if (!m_group.isMappable())
        return;
    menu->addSeparator();
    QAction* set = menu->addAction(LineIcon::make(LineIcon::Image), tr("Set Map…"));
    set->setEnabled(!locked);
    connect(set, &QAction::triggered, m_map, &FileField::choose);
    QAction* clear = menu->addAction(tr("Clear Map"));
    clear->setEnabled(!locked && m_group.isMapped());
    connect(clear, &QAction::triggered, this, [this] { m_group.setMap(QString()); });
}

void PropertyRow::contextMenuEvent(QContextMenuEvent* event)
{
    openMenu(event->globalPos());
}

void PropertyRow::openMenu(const QPoint& globalPlace)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillMenu(menu);
    menu->popup(globalPlace);
}

/// The menu key is the way to the small buttons; fields have their own menus for the mouse.
bool PropertyRow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ContextMenu
        || static_cast<QContextMenuEvent*>(event)->reason() != QContextMenuEvent::Keyboard)
        return QWidget::eventFilter(watched, event);
    auto* field = static_cast<QWidget*>(watched);
    openMenu(field->mapToGlobal(field->rect().bottomLeft()));
    return true;
}

void PropertyRow::dragEnterEvent(QDragEnterEvent* event)
{
    if (m_group.isMappable() && !m_group.isLocked()
        && !FileField::draggedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void PropertyRow::dropEvent(QDropEvent* event)
{
    const QString file = FileField::draggedFile(event->mimeData());
    if (file.isEmpty())
        return;
    event->acceptProposedAction();
    m_group.setMap(file);
}
