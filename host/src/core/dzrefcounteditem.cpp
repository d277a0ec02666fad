// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzrefcounteditem.h"

DzRefCountedItem::~DzRefCountedItem()
{
}

void DzRefCountedItem::unref()
{
    if (--m_refCount <= 0)
        delete this;
}
