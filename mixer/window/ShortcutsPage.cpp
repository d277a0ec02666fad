// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ShortcutsPage.h"

#include "CommandSet.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <iterator>

namespace {

struct Gesture {
    const char* gesture;
    const char* what;
};

// What no command has; the keys are those of the widget that has the keyboard.

/// On the canvas, by the keyboard.
const Gesture canvasKeys[] = {
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Tab"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Add a brick where the mouse is") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Up, Down"),
        QT_TRANSLATE_NOOP(
            "ShortcutsPage", "Go through the rows of a brick, and on to the next brick") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Left, Right"),
        QT_TRANSLATE_NOOP(
            "ShortcutsPage", "Follow a link from a row that has one, else go to the next brick") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Return on a brick"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Edit its values") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Return on a row with a pin"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Begin a wire there; on another pin, link them") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Backspace on a row with a pin"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Unlink it") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Ctrl+Arrows"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Move the selected bricks") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Escape"),
        QT_TRANSLATE_NOOP(
            "ShortcutsPage", "Take back what is being dragged or linked; else select nothing") },
};

/// On the canvas, with the mouse.
const Gesture canvasMouse[] = {
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag from a pin"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Link; into the void: search what fits") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drop a wire with Shift"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Add the link to those that are there") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag a brick"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Move it with all that is selected") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag a brick with Ctrl"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Move it with the grid the other way round") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag a brick onto a wire"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Insert it there") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Shift+Click on a brick"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Select it too, or no longer") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag on the canvas"),
        QT_TRANSLATE_NOOP(
            "ShortcutsPage", "Select what is in the box; with Shift, add; with Ctrl, take away") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Double click on a brick"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Edit its values") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Double click on a frame's title"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Change it") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Double click on the canvas"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Add a brick there") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Ctrl+Right drag"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Cut wires") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Right click"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Show what can be done there") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Wheel"),
        QT_TRANSLATE_NOOP(
            "ShortcutsPage", "Zoom; with Shift or Ctrl, move the view sideways or up and down") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Middle drag, Space and drag"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Move the view") },
};

/// In the properties.
const Gesture valueGestures[] = {
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag a number"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Change it; with Shift, finely") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Up, Down, PgUp, PgDown on a number"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Step it, PgUp and PgDown by ten steps") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Escape on a number"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Take back a drag, or what was typed") },
};

QTreeWidgetItem* addHeading(QTreeWidget* list, const QString& title)
{
    auto* item = new QTreeWidgetItem(list, { title });
    QFont font = item->font(0);
    font.setBold(true);
    item->setFont(0, font);
    item->setFlags(Qt::ItemIsEnabled);
    item->setFirstColumnSpanned(true);
    item->setExpanded(true);
    return item;
}

/// The id of a line's command; none for gestures.
const int idRole = Qt::UserRole;

void addGestures(QTreeWidgetItem* heading, const Gesture* first, const Gesture* last)
{
    for (const Gesture* gesture = first; gesture != last; ++gesture)
        new QTreeWidgetItem(
            heading, { ShortcutsPage::tr(gesture->what), ShortcutsPage::tr(gesture->gesture) });
}

QString keysOf(const QAction* action)
{
    QStringList keys;
    for (const QKeySequence& sequence : action->shortcuts())
        keys.append(sequence.toString(QKeySequence::NativeText));
    return keys.join(QStringLiteral(",  "));
}

bool isShownCommand(const QTreeWidgetItem* line)
{
    return !line->isHidden() && !line->data(0, idRole).toString().isEmpty();
}

} // namespace

ShortcutsPage::ShortcutsPage(CommandSet* commands, QWidget* parent)
    : QDialog(parent)
    , m_commands(commands)
    , m_search(new QLineEdit)
    , m_list(new QTreeWidget)
    , m_note(new QLabel)
{
    setWindowTitle(tr("Keyboard and Mouse"));
    m_search->setPlaceholderText(tr("Search commands; Return runs what is found"));
    m_search->setAccessibleName(tr("Search commands"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_list->setColumnCount(2);
    m_list->setHeaderLabels({ tr("Command"), tr("Keys") });
    m_list->setAlternatingRowColors(true);
    m_list->setAccessibleName(tr("Commands and their keys"));
    fill();
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->header()->setStretchLastSection(false);
    m_list->setColumnWidth(1, 230);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setObjectName(QStringLiteral("note"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    // Return is for the lines.
    buttons->button(QDialogButtonBox::Close)->setAutoDefault(false);
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_note, 1);
    foot->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_list);
    layout->addLayout(foot);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_search, &QLineEdit::textChanged, this, &ShortcutsPage::search);
    connect(m_list, &QTreeWidget::itemActivated, this, &ShortcutsPage::run);
    resize(620, 640);
    m_search->setFocus();
}

void ShortcutsPage::fill()
{
    m_commands->refresh();
    const QBrush faint = palette().brush(QPalette::PlaceholderText);
    for (const CommandSet::Group& group : m_commands->getGroups()) {
        QTreeWidgetItem* heading = addHeading(m_list, group.title);
        for (const QAction* action : group.actions) {
            auto* line = new QTreeWidgetItem(
                heading, { action->text().remove(QLatin1Char('&')), keysOf(action) });
            line->setToolTip(0, action->statusTip());
            line->setData(0, idRole, action->data());
            if (!action->isEnabled())
                line->setForeground(0, faint);
        }
    }
    QTreeWidgetItem* canvas = addHeading(m_list, tr("On the Canvas"));
    addGestures(canvas, std::begin(canvasKeys), std::end(canvasKeys));
    addGestures(canvas, std::begin(canvasMouse), std::end(canvasMouse));
    addGestures(
        addHeading(m_list, tr("On Values")), std::begin(valueGestures), std::end(valueGestures));
}

void ShortcutsPage::search(const QString& text)
{
    const QString wanted = text.trimmed();
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* heading = m_list->topLevelItem(i);
        int shown = 0;
        for (int k = 0; k < heading->childCount(); ++k) {
            QTreeWidgetItem* line = heading->child(k);
            const bool matches = line->text(0).contains(wanted, Qt::CaseInsensitive)
                || line->text(1).contains(wanted, Qt::CaseInsensitive);
            line->setHidden(!matches);
            shown += matches ? 1 : 0;
        }
        heading->setHidden(shown == 0);
    }
    m_note->clear();
    m_list->setCurrentItem(nullptr);
    if (!wanted.isEmpty())
        goBy(1);
}

/// Goes to another line of a command, from the top when none is current.
void ShortcutsPage::goBy(int lines)
{
    QTreeWidgetItem* line = m_list->currentItem();
    do
        line = line ? (lines > 0 ? m_list->itemBelow(line) : m_list->itemAbove(line))
                    : m_list->topLevelItem(0);
    while (line && !isShownCommand(line));
    if (line)
        m_list->setCurrentItem(line);
}

void ShortcutsPage::run(QTreeWidgetItem* line)
{
    QAction* action = line ? m_commands->find(line->data(0, idRole).toString()) : nullptr;
    if (!action)
        return;
    if (!action->isEnabled()) {
        m_note->setText(tr("\"%1\" has nothing to work on now.").arg(line->text(0)));
        return;
    }
    accept();
    // When the window has the keyboard again.
    QTimer::singleShot(0, action, &QAction::trigger);
}

bool ShortcutsPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
        goBy(-1);
        return true;
    case Qt::Key_Down:
        goBy(1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        run(m_list->currentItem());
        return true;
    default:
        return QDialog::eventFilter(watched, event);
    }
}
