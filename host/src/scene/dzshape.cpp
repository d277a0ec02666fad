// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzshape.h"

#include "dzundostack.h"

#include <QPointer>

namespace {

const std::shared_ptr<const DzFacetMesh>& emptyMesh()
{
    static const std::shared_ptr<const DzFacetMesh> mesh = std::make_shared<DzFacetMesh>();
    return mesh;
}

} // namespace

/// A material that came to a place, left it, or both; holds shares of the two.
class DzShapeMaterialItem : public DzUndoItem
{
public:
    DzShapeMaterialItem(DzShape* shape, int index, DzMaterial* before, DzMaterial* after)
        : m_shape(shape)
        , m_index(index)
        , m_before(before)
        , m_after(after)
    {
    }

    void undo() override { change(m_after, m_before); }
    void redo() override { change(m_before, m_after); }

private:
    void change(DzMaterial* from, DzMaterial* to)
    {
        if (!m_shape || (from && m_shape->findMaterialIndex(from) < 0)
            || (to && m_shape->findMaterialIndex(to) >= 0))
            return;
        if (from && to)
            m_shape->exchange(from, to);
        else if (from)
            m_shape->detach(from);
        else
            m_shape->attach(m_index, to);
    }

    QPointer<DzShape> m_shape;
    int m_index;
    DzMaterialPtr m_before;
    DzMaterialPtr m_after;
};

DzShape::DzShape(const QString& name)
    : DzElement(name)
    , m_mesh(emptyMesh())
{
}

DzShape::~DzShape()
{
    for (int i = 0; i < m_materials.size(); ++i)
        release(m_materials.at(i));
}

DzMaterial* DzShape::findMaterial(const QString& name) const
{
    if (!m_hasNameIndex) {
        m_nameIndex.clear();
        for (int i = m_materials.size() - 1; i >= 0; --i)
            m_nameIndex.insert(m_materials.at(i)->getName(), m_materials.at(i));
        m_hasNameIndex = true;
    }
    return m_nameIndex.value(name);
}

DzError DzShape::addMaterial(DzMaterial* material)
{
    return insertMaterial(-1, material);
}

DzError DzShape::insertMaterial(int index, DzMaterial* material)
{
    if (!material)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (m_materials.contains(material))
        return DZ_REFUSED_ERROR;
    attach(index, material);
    if (isRecorded())
        dzUndoStack->push(
            new DzShapeMaterialItem(this, findMaterialIndex(material), nullptr, material),
            tr("Add Surface"));
    return DZ_NO_ERROR;
}

DzError DzShape::removeMaterial(DzMaterial* material)
{
    if (!material || !m_materials.contains(material))
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    const DzMaterialPtr share(material);
    // The place is asked for only when it is used: telling it costs more than removing.
    const bool recorded = isRecorded();
    const int index = recorded ? findMaterialIndex(material) : -1;
    detach(material);
    if (recorded)
        dzUndoStack->push(
            new DzShapeMaterialItem(this, index, material, nullptr), tr("Remove Surface"));
    return DZ_NO_ERROR;
}

DzError DzShape::replaceMaterial(DzMaterial* current, DzMaterial* replacement)
{
    if (!current || !replacement || !m_materials.contains(current))
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (current == replacement)
        return DZ_NO_ERROR;
    if (m_materials.contains(replacement))
        return DZ_REFUSED_ERROR;
    const DzMaterialPtr share(current);
    exchange(current, replacement);
    if (isRecorded())
        dzUndoStack->push(
            new DzShapeMaterialItem(this, -1, current, replacement), tr("Replace Surface"));
    return DZ_NO_ERROR;
}

void DzShape::take(DzMaterial* material)
{
    material->ref();
    connect(material, &DzMaterial::selectionStateChanged, this, &DzShape::updateSelection);
    connect(material, &DzMaterial::nameChanged, this, [this] { m_hasNameIndex = false; });
    m_hasSelected = false;
    material->addedTo(this);
}

void DzShape::release(DzMaterial* material)
{
    disconnect(material, nullptr, this, nullptr);
    material->removedFrom(this);
    m_hasSelected = false;
    material->unref();
}

void DzShape::attach(int index, DzMaterial* material)
{
    m_materials.insert(index, material);
    // A material of a new name at the end leaves the index right but for itself.
    if (m_hasNameIndex && !m_nameIndex.contains(material->getName()))
        m_nameIndex.insert(material->getName(), material);
    else
        m_hasNameIndex = false;
    take(material);
    emit materialAdded(material);
    emit materialListChanged();
    if (material->isSelected())
        emit materialSelectionChanged();
}

void DzShape::detach(DzMaterial* material)
{
    const DzMaterialPtr share(material);
    m_materials.remove(material);
    m_hasNameIndex = false;
    release(material);
    emit materialRemoved(material);
    emit materialListChanged();
    if (material->isSelected())
        emit materialSelectionChanged();
}

void DzShape::exchange(DzMaterial* current, DzMaterial* replacement)
{
    const DzMaterialPtr share(current);
    const int index = m_materials.indexOf(current);
    m_materials.replace(index, replacement);
    m_hasNameIndex = false;
    take(replacement);
    release(current);
    emit materialReplaced(current, replacement);
    emit materialListChanged();
    if (current->isSelected() != replacement->isSelected())
        emit materialSelectionChanged();
}

void DzShape::updateSelection(DzMaterial* material, bool onOff)
{
    m_hasSelected = false;
    if (onOff)
        emit materialSelected(material);
    else
        emit materialUnselected(material);
    emit materialSelectionChanged();
}

const std::vector<DzMaterial*>& DzShape::selectedMaterials() const
{
    if (!m_hasSelected) {
        m_selected.clear();
        for (int i = 0; i < m_materials.size(); ++i)
            if (m_materials.at(i)->isSelected())
                m_selected.push_back(m_materials.at(i));
        m_hasSelected = true;
    }
    return m_selected;
}

int DzShape::getNumSelectedMaterials() const
{
    return static_cast<int>(selectedMaterials().size());
}

DzMaterial* DzShape::getSelectedMaterial(int index) const
{
    const bool isThere = index >= 0 && index < getNumSelectedMaterials();
    return isThere ? selectedMaterials()[static_cast<std::size_t>(index)] : nullptr;
}

void DzShape::setMesh(const std::shared_ptr<const DzFacetMesh>& mesh)
{
    m_mesh = mesh ? mesh : emptyMesh();
    emit meshChanged();
}
