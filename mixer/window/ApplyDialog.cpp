// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ApplyDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

/// A text property may hold a whole network's text: its first line tells enough.
QString shortened(const QString& value)
{
    const int mostCharacters = 60;
    const QString line = value.simplified();
    return line.size() > mostCharacters ? line.left(mostCharacters) + QStringLiteral("…") : line;
}

QString kindText(DzElementChange::Kind kind)
{
    switch (kind) {
    case DzElementChange::Appears:
        return ApplyDialog::tr("appears");
    case DzElementChange::Changes:
        return ApplyDialog::tr("changes");
    default:
        return ApplyDialog::tr("vanishes");
    }
}

QString countText(const QVector<DzElementChange>& changes)
{
    int counts[3] = { 0, 0, 0 };
    for (const DzElementChange& change : changes)
        ++counts[change.kind];
    if (changes.isEmpty())
        return ApplyDialog::tr("nothing changes");
    return ApplyDialog::tr("%1 appear, %2 change, %3 vanish")
        .arg(counts[DzElementChange::Appears])
        .arg(counts[DzElementChange::Changes])
        .arg(counts[DzElementChange::Vanishes]);
}

} // namespace

ApplyDialog::ApplyDialog(
    const QString& network, const QVector<SurfacePreview>& surfaces, QWidget* parent)
    : QDialog(parent)
    , m_tree(new QTreeWidget)
    , m_showAgain(new QCheckBox(tr("&Show this before applying")))
{
    setWindowTitle(tr("Apply %1").arg(network));
    auto* text = new QLabel(tr("Applying changes these surfaces; undo takes it back."));
    m_tree->setColumnCount(4);
    m_tree->setHeaderLabels({ tr("Surface and property"), QString(), tr("Before"), tr("After") });
    m_tree->setAlternatingRowColors(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setAccessibleName(tr("Changes"));
    for (const SurfacePreview& surface : surfaces) {
        auto* item = new QTreeWidgetItem(
            m_tree, { tr("%1: %2").arg(surface.surface, countText(surface.changes)) });
        item->setFirstColumnSpanned(true);
        QFont font = item->font(0);
        font.setBold(true);
        item->setFont(0, font);
        for (const DzElementChange& change : surface.changes) {
            auto* line = new QTreeWidgetItem(item,
                { change.label, kindText(change.kind), shortened(change.before),
                    shortened(change.after) });
            line->setToolTip(0, change.name);
            if (change.isData)
                line->setText(0, tr("%1 (network kept on the surface)").arg(change.label));
        }
    }
    if (surfaces.size() == 1)
        m_tree->expandAll();
    m_tree->header()->setSectionResizeMode(0, QHeaderView::Interactive);
    m_tree->setColumnWidth(0, 260);
    m_tree->setColumnWidth(1, 80);
    m_tree->setColumnWidth(2, 120);
    m_showAgain->setChecked(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton* apply = buttons->addButton(tr("&Apply"), QDialogButtonBox::AcceptRole);
    apply->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_showAgain);
    foot->addStretch();
    foot->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_tree);
    layout->addLayout(foot);
    resize(720, 460);
    apply->setFocus();
}

bool ApplyDialog::isToBeShownAgain() const
{
    return m_showAgain->isChecked();
}
