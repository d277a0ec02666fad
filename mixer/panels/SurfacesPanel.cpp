// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SurfacesPanel.h"

#include "ElementLabel.h"
#include "StoredNetworks.h"
#include "dzmaterial.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzundostack.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScopedValueRollback>
#include <QSet>
#include <QToolButton>
#include <QTreeWidget>
#include <QUndoStack>

#include <functional>

namespace {

enum Column { SurfaceColumn, MaterialColumn, NetworkColumn, ColumnCount };

void forEachMaterial(const DzNode* node, const std::function<void(DzMaterial*)>& visit)
{
    const DzObject* object = node->getObject();
    const DzShape* shape = object ? object->getCurrentShape() : nullptr;
    for (int i = 0; shape && i < shape->getNumMaterials(); ++i)
        visit(shape->getMaterial(i));
}

} // namespace

SurfacesPanel::SurfacesPanel(const QVector<QAction*>& actions, QWidget* parent)
    : QWidget(parent)
    , m_tree(new QTreeWidget)
    , m_empty(new QLabel(tr("Open a scene to put materials on its surfaces.")))
{
    m_tree->setColumnCount(ColumnCount);
    m_tree->setHeaderLabels({ tr("Surface"), tr("Material"), tr("Network") });
    m_tree->headerItem()->setToolTip(NetworkColumn,
        tr("Surfaces that keep the network that was applied to them; From Scene opens it"));
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_tree->setUniformRowHeights(true);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setAccessibleName(tr("Surfaces"));
    m_tree->header()->setSectionResizeMode(SurfaceColumn, QHeaderView::Stretch);
    m_tree->header()->setSectionResizeMode(NetworkColumn, QHeaderView::ResizeToContents);
    m_tree->header()->setStretchLastSection(false);
    m_tree->setColumnWidth(MaterialColumn, 70);
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setWordWrap(true);
    m_empty->setForegroundRole(QPalette::PlaceholderText);
    m_empty->setMargin(8);

    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(4, 2, 4, 4);
    for (QAction* action : actions) {
        auto* button = new QToolButton;
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setFocusPolicy(Qt::TabFocus);
        buttons->addWidget(button);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_empty, 1);
    layout->addLayout(buttons);

    m_rebuild.setSingleShot(true);
    connect(&m_rebuild, &QTimer::timeout, this, &SurfacesPanel::rebuild);
    const auto schedule = [this] { m_rebuild.start(0); };
    connect(dzScene, &DzScene::nodeListChanged, this, schedule);
    connect(dzScene, &DzScene::materialListChanged, this, schedule);
    connect(dzScene, &DzScene::sceneLoaded, this, schedule);
    connect(dzScene, &DzScene::sceneCleared, this, schedule);
    // What surfaces keep has no signal of its own; whoever changes it leaves a step.
    m_updateMarks.setSingleShot(true);
    connect(&m_updateMarks, &QTimer::timeout, this, &SurfacesPanel::updateMarks);
    connect(dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this,
        [this] { m_updateMarks.start(0); });
    // Nodes and materials may go at any time: nothing of them is kept until the list is made anew.
    connect(dzScene, &DzScene::sceneClearStarting, this, [this] {
        m_materials.clear();
        m_tree->clear();
    });
    connect(
        dzScene, &DzScene::materialSelectionChanged, this, &SurfacesPanel::takeSelectionFromScene);
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &SurfacesPanel::giveSelectionToScene);
    rebuild();
}

void SurfacesPanel::updateNow()
{
    m_rebuild.stop();
    rebuild();
}

void SurfacesPanel::rebuild()
{
    fill();
    takeSelectionFromScene();
}

void SurfacesPanel::fill()
{
    const QScopedValueRollback<bool> exchange(m_exchanging, true);
    m_tree->clear();
    m_materials.clear();
    for (int i = 0; i < dzScene->getNumNodes(); ++i)
        if (!dzScene->getNode(i)->getNodeParent())
            addNode(dzScene->getNode(i), nullptr);
    const bool empty = m_tree->topLevelItemCount() == 0;
    m_tree->setVisible(!empty);
    m_empty->setVisible(empty);
    // A figure has hundreds of bones without a surface: only the way to surfaces is opened.
    for (auto entry = m_materials.begin(); entry != m_materials.end(); ++entry)
        for (QTreeWidgetItem* item = entry.key()->parent(); item && !item->isExpanded();
             item = item->parent())
            item->setExpanded(true);
}

void SurfacesPanel::addNode(DzNode* node, QTreeWidgetItem* parent)
{
    // Without recursion: a damaged file may nest nodes deeper than the stack.
    struct Open {
        DzNode* node;
        QTreeWidgetItem* parent;
    };
    QVector<Open> open { Open { node, parent } };
    while (!open.isEmpty()) {
        const Open next = open.takeLast();
        auto* item = new QTreeWidgetItem({ labelOf(next.node) });
        item->setFlags(item->flags() & ~Qt::ItemIsSelectable);
        if (next.parent)
            next.parent->addChild(item);
        else
            m_tree->addTopLevelItem(item);
        // Spans only when it is in the tree; nodes have nothing in the other columns.
        item->setFirstColumnSpanned(true);
        forEachMaterial(next.node, [&](DzMaterial* material) {
            auto* surface
                = new QTreeWidgetItem(item, { labelOf(material), material->getMaterialName() });
            surface->setToolTip(MaterialColumn, material->getMaterialName());
            m_materials.insert(surface, material);
            mark(surface, material);
        });
        for (int i = next.node->getNumNodeChildren() - 1; i >= 0; --i)
            open.append(Open { next.node->getNodeChild(i), item });
    }
}

void SurfacesPanel::mark(QTreeWidgetItem* surface, const DzMaterial* material)
{
    const bool isKept = keepsNetwork(material);
    surface->setText(NetworkColumn, isKept ? tr("Yes") : QString());
}

void SurfacesPanel::updateMarks()
{
    // A list that is about to be made anew may hold materials that are gone.
    if (m_rebuild.isActive())
        return;
    for (auto entry = m_materials.begin(); entry != m_materials.end(); ++entry)
        mark(const_cast<QTreeWidgetItem*>(entry.key()), entry.value());
}

void SurfacesPanel::takeSelectionFromScene()
{
    // A list that is about to be made anew may hold materials that are gone.
    if (m_exchanging || m_rebuild.isActive())
        return;
    {
        const QScopedValueRollback<bool> exchange(m_exchanging, true);
        for (auto entry = m_materials.begin(); entry != m_materials.end(); ++entry)
            const_cast<QTreeWidgetItem*>(entry.key())->setSelected(entry.value()->isSelected());
    }
    emit selectionChanged();
}

void SurfacesPanel::giveSelectionToScene()
{
    if (m_exchanging || m_rebuild.isActive())
        return;
    {
        const QScopedValueRollback<bool> exchange(m_exchanging, true);
        // One material may lie on several surfaces: one of them selected is enough.
        QHash<DzMaterial*, bool> selected;
        for (auto entry = m_materials.begin(); entry != m_materials.end(); ++entry)
            selected[entry.value()] = selected.value(entry.value()) || entry.key()->isSelected();
        for (auto entry = selected.begin(); entry != selected.end(); ++entry)
            entry.key()->select(entry.value());
    }
    emit selectionChanged();
}
