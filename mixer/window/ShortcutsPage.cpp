// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ShortcutsPage.h"

#include "CommandSet.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
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

void addLine(QTreeWidgetItem* heading, const QString& what, const QString& keys, const QString& tip)
{
    auto* item = new QTreeWidgetItem(heading, { what, keys });
    item->setToolTip(0, tip);
}

void addGestures(QTreeWidgetItem* heading, const Gesture* first, const Gesture* last)
{
    for (const Gesture* gesture = first; gesture != last; ++gesture)
        addLine(heading, ShortcutsPage::tr(gesture->what), ShortcutsPage::tr(gesture->gesture),
            QString());
}

QString keysOf(const QAction* action)
{
    QStringList keys;
    for (const QKeySequence& sequence : action->shortcuts())
        keys.append(sequence.toString(QKeySequence::NativeText));
    return keys.join(QStringLiteral(",  "));
}

void showMatching(QTreeWidget* list, const QString& text)
{
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* heading = list->topLevelItem(i);
        int shown = 0;
        for (int k = 0; k < heading->childCount(); ++k) {
            QTreeWidgetItem* line = heading->child(k);
            const bool matches = line->text(0).contains(text, Qt::CaseInsensitive)
                || line->text(1).contains(text, Qt::CaseInsensitive);
            line->setHidden(!matches);
            shown += matches ? 1 : 0;
        }
        heading->setHidden(shown == 0);
    }
}

} // namespace

ShortcutsPage::ShortcutsPage(const CommandSet& commands, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Keyboard and Mouse"));
    auto* search = new QLineEdit;
    search->setPlaceholderText(tr("Search commands"));
    search->setClearButtonEnabled(true);
    auto* list = new QTreeWidget;
    list->setColumnCount(2);
    list->setHeaderLabels({ tr("Command"), tr("Keys") });
    list->setAlternatingRowColors(true);
    list->setAccessibleName(tr("Commands and their keys"));
    for (const CommandSet::Group& group : commands.getGroups()) {
        QTreeWidgetItem* heading = addHeading(list, group.title);
        for (const QAction* action : group.actions)
            addLine(heading, action->text().remove(QLatin1Char('&')), keysOf(action),
                action->statusTip());
    }
    QTreeWidgetItem* canvas = addHeading(list, tr("On the Canvas"));
    addGestures(canvas, std::begin(canvasKeys), std::end(canvasKeys));
    addGestures(canvas, std::begin(canvasMouse), std::end(canvasMouse));
    addGestures(
        addHeading(list, tr("On Values")), std::begin(valueGestures), std::end(valueGestures));
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setStretchLastSection(false);
    list->setColumnWidth(1, 230);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(search);
    layout->addWidget(list);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(search, &QLineEdit::textChanged, this,
        [list](const QString& text) { showMatching(list, text.trimmed()); });
    resize(620, 640);
}
