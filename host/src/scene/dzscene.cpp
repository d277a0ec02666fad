// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzscene.h"

#include "dzapp.h"

#include "dznode.h"
#include "dzobject.h"
#include "dzshape.h"

#include <QSet>

namespace {

/// A node and everything below it, parents before children, children in their order.
std::vector<DzNode*> treeOf(DzNode* top)
{
    std::vector<DzNode*> nodes;
    std::vector<DzNode*> open { top };
    while (!open.empty()) {
        DzNode* node = open.back();
        open.pop_back();
        nodes.push_back(node);
        for (int i = node->getNumNodeChildren() - 1; i >= 0; --i)
            open.push_back(node->getNodeChild(i));
    }
    return nodes;
}

} // namespace

DzScene* dzScene = nullptr;

DzScene::DzScene()
{
    if (!dzScene)
        dzScene = this;
}

DzScene::~DzScene()
{
    clear();
    if (dzScene == this)
        dzScene = nullptr;
}

DzNode* DzScene::findNode(const QString& name) const
{
    if (!m_hasNameIndex) {
        m_nameIndex.clear();
        for (int i = m_nodes.size() - 1; i >= 0; --i)
            m_nameIndex.insert(m_nodes.at(i)->getName(), m_nodes.at(i));
        m_hasNameIndex = true;
    }
    return m_nameIndex.value(name);
}

DzError DzScene::addNode(DzNode* node)
{
    if (!node || node->m_parent || node->m_scene)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    enlist(node);
    return DZ_NO_ERROR;
}

DzError DzScene::removeNode(DzNode* node)
{
    if (!node || node->m_scene != this)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (node->m_parent)
        return node->m_parent->removeNodeChild(node);
    delist(node);
    return DZ_NO_ERROR;
}

void DzScene::enlist(DzNode* top)
{
    const std::vector<DzNode*> nodes = treeOf(top);
    for (DzNode* node : nodes)
        enlistAlone(node);
    for (DzNode* node : nodes)
        emit nodeAdded(node);
    emit nodeListChanged();
    emit materialListChanged();
}

void DzScene::enlistAlone(DzNode* node)
{
    m_nodes.append(node);
    node->m_scene = this;
    connect(node, &DzNode::materialListChanged, this, &DzScene::materialListChanged);
    connect(node, &DzNode::materialSelectionChanged, this, &DzScene::materialSelectionChanged);
    connect(node, &DzNode::nameChanged, this, [this] { m_hasNameIndex = false; });
    m_hasNameIndex = false;
    m_hasSelected = false;
}

void DzScene::delist(DzNode* top)
{
    const std::vector<DzNode*> nodes = treeOf(top);
    bool lostPrimary = false;
    for (DzNode* node : nodes) {
        m_nodes.remove(node);
        node->m_scene = nullptr;
        disconnect(node, nullptr, this, nullptr);
        lostPrimary = lostPrimary || node == m_primary;
    }
    m_hasNameIndex = false;
    m_hasSelected = false;
    if (lostPrimary)
        m_primary = nullptr;
    for (DzNode* node : nodes)
        emit nodeRemoved(node);
    emit nodeListChanged();
    if (lostPrimary)
        emit primarySelectionChanged(nullptr);
    emit materialListChanged();
}

void DzScene::nodeSelectionStateChanged(DzNode* node, bool onOff)
{
    m_hasSelected = false;
    DzNode* primary = onOff ? node : m_primary == node ? nullptr : m_primary;
    const bool switched = primary != m_primary;
    m_primary = primary;
    emit nodeSelectionListChanged();
    if (switched)
        emit primarySelectionChanged(primary);
}

const std::vector<DzNode*>& DzScene::selectedNodes() const
{
    if (!m_hasSelected) {
        m_selected.clear();
        for (int i = 0; i < m_nodes.size(); ++i)
            if (m_nodes.at(i)->isSelected())
                m_selected.push_back(m_nodes.at(i));
        m_hasSelected = true;
    }
    return m_selected;
}

DzNode* DzScene::getSelectedNode(int index) const
{
    const bool isThere = index >= 0 && index < getNumSelectedNodes();
    return isThere ? selectedNodes()[static_cast<std::size_t>(index)] : nullptr;
}

void DzScene::setPrimarySelection(DzNode* node)
{
    if (node == m_primary || (node && node->m_scene != this))
        return;
    if (node && !node->isSelected()) {
        node->select(true);
        return;
    }
    m_primary = node;
    emit primarySelectionChanged(node);
}

void DzScene::selectAllNodes(bool onOff)
{
    for (int i = 0; i < m_nodes.size(); ++i)
        m_nodes.at(i)->select(onOff);
}

QVector<DzSurface> DzScene::getSurfaces() const
{
    QVector<DzSurface> surfaces;
    QSet<const DzMaterial*> seen;
    for (int i = 0; i < getNumNodes(); ++i) {
        DzNode* node = getNode(i);
        const DzObject* object = node->getObject();
        const DzShape* shape = object ? object->getCurrentShape() : nullptr;
        for (int k = 0; shape && k < shape->getNumMaterials(); ++k) {
            DzMaterial* material = shape->getMaterial(k);
            if (seen.contains(material))
                continue;
            seen.insert(material);
            surfaces.append({ node, material });
        }
    }
    return surfaces;
}

QVector<DzSurface> DzScene::getSelectedSurfaces() const
{
    QVector<DzSurface> selected;
    for (const DzSurface& surface : getSurfaces())
        if (surface.material->isSelected())
            selected.append(surface);
    return selected;
}

QVector<DzSurface> DzScene::getSelectedMaterials()
{
    QHash<const DzMaterial*, DzNode*> nodes;
    if (dzScene)
        for (const DzSurface& surface : dzScene->getSelectedSurfaces())
            nodes.insert(surface.material, surface.node);
    QVector<DzSurface> selected;
    for (int i = 0; i < DzMaterial::getNumMaterials(); ++i) {
        DzMaterial* material = DzMaterial::getMaterial(i);
        if (material && material->isSelected() && material->getNumShapes() > 0)
            selected.append({ nodes.value(material), material });
    }
    return selected;
}

void DzScene::clear()
{
    emit sceneClearStarting();
    std::vector<DzNode*> nodes;
    for (int i = 0; i < m_nodes.size(); ++i)
        nodes.push_back(m_nodes.at(i));
    m_nodes.clear();
    m_nameIndex.clear();
    m_selected.clear();
    m_hasNameIndex = m_hasSelected = false;
    m_primary = nullptr;
    m_filename.clear();
    for (DzNode* node : nodes) {
        node->m_scene = nullptr;
        node->m_parent = nullptr;
        node->m_children.clear();
        disconnect(node, nullptr, this, nullptr);
    }
    for (DzNode* node : nodes)
        delete node;
    emit materialListChanged();
    emit sceneCleared();
}

std::shared_ptr<DzScene> DzApp::makeScene()
{
    return std::make_shared<DzScene>();
}
