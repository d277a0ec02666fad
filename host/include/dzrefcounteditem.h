// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

/// Shared ownership by counting. A fresh item has count 0; the last unref() deletes it.
class DzRefCountedItem
{
public:
    DzRefCountedItem() {}
    virtual ~DzRefCountedItem();

    void ref() { ++m_refCount; }
    /// Gives up one share; deletes the item when it was the last.
    void unref();
    int getRefCount() const { return m_refCount; }
    bool isShared() const { return m_refCount > 1; }

private:
    Q_DISABLE_COPY(DzRefCountedItem)

    int m_refCount = 0;
};

/// Holds one share of a DzRefCountedItem; converts to the raw pointer.
template <typename T>
class DzTSharedPointer
{
public:
    DzTSharedPointer(T* item = nullptr)
        : m_item(item)
    {
        if (m_item)
            m_item->ref();
    }
    DzTSharedPointer(const DzTSharedPointer& other)
        : DzTSharedPointer(other.m_item)
    {
    }
    DzTSharedPointer(DzTSharedPointer&& other) noexcept
        : m_item(other.m_item)
    {
        other.m_item = nullptr;
    }
    ~DzTSharedPointer()
    {
        if (m_item)
            m_item->unref();
    }
    DzTSharedPointer& operator=(DzTSharedPointer other)
    {
        T* item = m_item;
        m_item = other.m_item;
        other.m_item = item;
        return *this;
    }

    operator T*() const { return m_item; }
    T* operator->() const { return m_item; }

private:
    T* m_item;
};
