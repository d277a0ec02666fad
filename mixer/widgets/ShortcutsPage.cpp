// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ShortcutsPage.h"

#include "CommandSet.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

struct Gesture {
    const char* gesture;
    const char* what;
};

/// What the mouse does on the canvas: no command has these.
const Gesture gestures[] = {
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag from a pin"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Link; into the void: search what fits") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag a brick onto a wire"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Insert it there") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Ctrl+Right drag"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Cut wires") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Wheel"), QT_TRANSLATE_NOOP("ShortcutsPage", "Zoom") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Middle drag"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Move the view") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag on the canvas"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Select what is in the box; with Shift, add") },
    { QT_TRANSLATE_NOOP("ShortcutsPage", "Drag a number"),
        QT_TRANSLATE_NOOP("ShortcutsPage", "Change it; with Shift, finely") },
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
    QTreeWidgetItem* heading = addHeading(list, tr("Mouse"));
    for (const Gesture& gesture : gestures)
        addLine(heading, tr(gesture.what), tr(gesture.gesture), QString());
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
