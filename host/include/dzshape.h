// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzelement.h"
#include "dzfacetmesh.h"
#include "dzitemlist.h"
#include "dzmaterial.h"

#include <QHash>
#include <QStringList>
#include <memory>
#include <vector>

/// A mesh and the materials on its surfaces. A material lies on the surface of its name.
///
/// The shape holds one share of each material; a material may lie on several shapes, but once on
/// each. Adding, removing and replacing leave one undo item each.
class DzShape : public DzElement
{
    Q_OBJECT

public:
    explicit DzShape(const QString& name = QString());
    ~DzShape() override;

    Q_INVOKABLE int getNumMaterials() const { return m_materials.size(); }
    Q_INVOKABLE DzMaterial* getMaterial(int index) const { return m_materials.at(index); }
    Q_INVOKABLE int findMaterialIndex(DzMaterial* material) const
    {
        return m_materials.indexOf(material);
    }
    /// The first material of this name, null when there is none.
    Q_INVOKABLE DzMaterial* findMaterial(const QString& name) const;

    /// Takes one share of a material; refused when it lies on the shape already.
    Q_INVOKABLE DzError addMaterial(DzMaterial* material);
    /// Puts it before the one at `index`, at the end when there is none.
    Q_INVOKABLE DzError insertMaterial(int index, DzMaterial* material);
    /// Gives up the share.
    Q_INVOKABLE DzError removeMaterial(DzMaterial* material);
    /// Puts another material in a material's place.
    Q_INVOKABLE DzError replaceMaterial(DzMaterial* current, DzMaterial* replacement);

    Q_INVOKABLE int getNumSelectedMaterials() const;
    /// Selected material `index` in the shape's order, null when there is none.
    Q_INVOKABLE DzMaterial* getSelectedMaterial(int index) const;

    /// The mesh; empty when the file that the shape came from only refers to it. Shapes share it.
    const DzFacetMesh& getMesh() const { return *m_mesh; }
    void setMesh(const std::shared_ptr<const DzFacetMesh>& mesh);
    /// What the mesh was read from or, when it is not at hand, refers to.
    QString getMeshReference() const { return m_meshReference; }
    void setMeshReference(const QString& reference) { m_meshReference = reference; }

signals:
    void materialAdded(DzMaterial* material);
    void materialRemoved(DzMaterial* material);
    void materialReplaced(DzMaterial* before, DzMaterial* after);
    void materialSelected(DzMaterial* material);
    void materialUnselected(DzMaterial* material);
    void materialListChanged();
    void materialSelectionChanged();
    void meshChanged();

private:
    friend class DzShapeMaterialItem;

    void attach(int index, DzMaterial* material);
    void detach(DzMaterial* material);
    void exchange(DzMaterial* current, DzMaterial* replacement);
    void take(DzMaterial* material);
    void release(DzMaterial* material);
    void updateSelection(DzMaterial* material, bool onOff);
    const std::vector<DzMaterial*>& selectedMaterials() const;

    DzItemList<DzMaterial> m_materials;
    std::shared_ptr<const DzFacetMesh> m_mesh;
    QString m_meshReference;
    mutable QHash<QString, DzMaterial*> m_nameIndex; ///< first of each name; made when asked for
    mutable std::vector<DzMaterial*> m_selected;     ///< made when asked for
    mutable bool m_hasNameIndex = false;
    mutable bool m_hasSelected = false;
};
