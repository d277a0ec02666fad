// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzmaterial.h"

#include <QVector>

namespace {

/// All materials in order of creation. A deleted one leaves a null until the list is read again,
/// so that deleting many costs no more than each of them.
struct MaterialList {
    QVector<DzMaterial*> materials;
    int dead = 0;
};

MaterialList& allMaterials()
{
    static MaterialList list;
    return list;
}

} // namespace

DzMaterial::DzMaterial(const QString& name)
    : DzElement(name)
    , m_listSlot(allMaterials().materials.size())
{
    allMaterials().materials.append(this);
}

DzMaterial::~DzMaterial()
{
    MaterialList& list = allMaterials();
    if (m_listSlot == list.materials.size() - 1) {
        list.materials.removeLast();
        return;
    }
    list.materials[m_listSlot] = nullptr;
    ++list.dead;
}

int DzMaterial::getNumMaterials()
{
    return allMaterials().materials.size() - allMaterials().dead;
}

DzMaterial* DzMaterial::getMaterial(int index)
{
    MaterialList& list = allMaterials();
    if (list.dead) {
        int kept = 0;
        for (DzMaterial* material : qAsConst(list.materials)) {
            if (!material)
                continue;
            material->m_listSlot = kept;
            list.materials[kept++] = material;
        }
        list.materials.resize(kept);
        list.dead = 0;
    }
    return list.materials.value(index);
}

void DzMaterial::select(bool onOff)
{
    if (onOff == m_selected)
        return;
    m_selected = onOff;
    emit selectionStateChanged(this, onOff);
}

void DzMaterial::addedTo(DzShape* shape)
{
    m_shapes.append(shape);
}

void DzMaterial::removedFrom(DzShape* shape)
{
    m_shapes.removeOne(shape);
}
