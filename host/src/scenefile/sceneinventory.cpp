// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "sceneinventory.h"

#include "dzmaterial.h"
#include "dznode.h"
#include "dzscene.h"
#include "dzsimpleelementdata.h"
#include "dzwarning.h"

#include <QCoreApplication>
#include <QSet>
#include <algorithm>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzSceneFile", source);
}

void tell(DzWarningList* warnings, const QString& what)
{
    warnings->add({ QString(), what, text("it is not saved: only what is on surfaces is") });
}

} // namespace

SceneInventory::Data SceneInventory::dataOf(const DzNode* node)
{
    Data data;
    for (int i = 0; i < node->getNumDataItems(); ++i) {
        auto* item = qobject_cast<const DzSimpleElementData*>(node->getDataItem(i));
        if (item && item->isPersistent())
            data.emplace_back(item->getName(), *item->getSettings());
    }
    return data;
}

void SceneInventory::read(const DzScene& scene)
{
    m_nodes.clear();
    m_surfaces.clear();
    for (int i = 0; i < scene.getNumNodes(); ++i) {
        DzNode* node = scene.getNode(i);
        m_nodes.push_back(
            { node, node->getName(), node->getLabel(), node->getNodeParent(), dataOf(node) });
    }
    for (const DzSurface& surface : scene.getSurfaces())
        m_surfaces.push_back(
            { surface.material, surface.material->getName(), surface.material->getLabel() });
}

void SceneInventory::tellUnsaved(const DzScene& scene, DzWarningList* warnings) const
{
    tellNodes(scene, warnings);
    tellSurfaces(scene, warnings);
}

void SceneInventory::tellNodes(const DzScene& scene, DzWarningList* warnings) const
{
    QSet<const DzNode*> known;
    for (const Node& read : m_nodes) {
        const DzNode* node = read.node;
        known.insert(node);
        if (!node || node->getScene() != &scene) {
            warnings->add(
                { QString(), text("the node \"%1\" is no longer in the scene").arg(read.name),
                    text("its entries stay as they are") });
            continue;
        }
        if (node->getName() != read.name)
            tell(warnings,
                text("the node \"%1\" is named \"%2\" now").arg(read.name, node->getName()));
        if (node->getLabel() != read.label)
            tell(warnings, text("the node \"%1\" has another label").arg(read.name));
        if (node->getNodeParent() != read.parent)
            tell(warnings, text("the node \"%1\" has another parent").arg(read.name));
        const Data data = dataOf(node);
        const bool isSame = std::equal(data.begin(), data.end(), read.data.begin(), read.data.end(),
            [](const auto& one, const auto& other) {
                return one.first == other.first && one.second.isEqual(other.second);
            });
        if (!isSame)
            tell(warnings, text("the data of the node \"%1\" changed").arg(read.name));
    }
    for (int i = 0; i < scene.getNumNodes(); ++i)
        if (!known.contains(scene.getNode(i)))
            tell(warnings, text("the node \"%1\" is new").arg(scene.getNode(i)->getName()));
}

void SceneInventory::tellSurfaces(const DzScene& scene, DzWarningList* warnings) const
{
    QSet<const DzMaterial*> known;
    for (const Surface& read : m_surfaces) {
        const DzMaterial* material = read.material;
        known.insert(material);
        if (!material || material->getNumShapes() == 0)
            continue;
        if (material->getName() != read.name)
            tell(warnings,
                text("the surface \"%1\" is named \"%2\" now").arg(read.name, material->getName()));
        if (material->getLabel() != read.label)
            tell(warnings, text("the surface \"%1\" has another label").arg(read.name));
    }
    for (const DzSurface& surface : scene.getSurfaces())
        if (!known.contains(surface.material))
            tell(warnings,
                text("the surface \"%1\" is new, or its material was replaced")
                    .arg(surface.material->getName()));
}
