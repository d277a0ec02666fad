// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dznode.h"

#include "dzobject.h"
#include "dzscene.h"

#include <vector>

DzNode::DzNode(const QString& name)
    : DzElement(name)
{
}

DzNode::~DzNode()
{
    if (m_scene)
        m_scene->delist(this);
    if (m_parent)
        m_parent->m_children.remove(this);
    // Level by level instead of each in its parent's destructor: a chain may be long.
    std::vector<DzNode*> below;
    const auto adopt = [&below](DzNode* parent) {
        for (int i = 0; i < parent->m_children.size(); ++i)
            below.push_back(parent->m_children.at(i));
        parent->m_children.clear();
    };
    adopt(this);
    for (std::size_t i = 0; i < below.size(); ++i)
        adopt(below[i]);
    for (DzNode* node : below) {
        node->m_parent = nullptr;
        delete node;
    }
    delete m_object;
}

void DzNode::setObject(DzObject* object)
{
    if (object == m_object)
        return;
    delete m_object;
    m_object = object;
    if (object) {
        connect(object, &DzObject::materialListChanged, this, &DzNode::materialListChanged);
        connect(
            object, &DzObject::materialSelectionChanged, this, &DzNode::materialSelectionChanged);
    }
    emit materialListChanged();
}

bool DzNode::isBelow(const DzNode* other) const
{
    for (const DzNode* node = this; node; node = node->m_parent)
        if (node == other)
            return true;
    return false;
}

DzError DzNode::addNodeChild(DzNode* child)
{
    if (!child || child->m_parent || child->m_scene)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (child == this || (!child->m_children.isEmpty() && isBelow(child)))
        return DZ_REFUSED_ERROR;
    attachChild(child);
    if (m_scene)
        m_scene->enlist(child);
    return DZ_NO_ERROR;
}

void DzNode::attachChild(DzNode* child)
{
    m_children.append(child);
    child->m_parent = this;
}

DzError DzNode::removeNodeChild(DzNode* child)
{
    if (!child || child->m_parent != this)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    m_children.remove(child);
    child->m_parent = nullptr;
    if (m_scene)
        m_scene->delist(child);
    return DZ_NO_ERROR;
}

void DzNode::select(bool onOff)
{
    if (onOff == m_selected)
        return;
    m_selected = onOff;
    emit selectionStateChanged(this, onOff);
    if (m_scene)
        m_scene->nodeSelectionStateChanged(this, onOff);
}
