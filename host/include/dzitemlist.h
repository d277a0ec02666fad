// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <algorithm>
#include <vector>

/// An ordered list of different objects, none owned. Taking out any of them costs the same
/// wherever it stands, also when thousands go one after the other: a gap is left at its place and
/// closed when the list is next read behind it.
template <typename T>
class DzItemList
{
public:
    int size() const { return m_index.size(); }
    bool isEmpty() const { return m_index.isEmpty(); }
    bool contains(T* item) const { return m_index.contains(item); }

    /// Item `index`, null when there is none.
    T* at(int index) const
    {
        if (index < 0 || index >= size())
            return nullptr;
        closeGaps();
        return m_items[m_first + static_cast<std::size_t>(index)];
    }
    /// Place of an item, -1 when it is not in the list.
    int indexOf(T* item) const
    {
        if (!contains(item))
            return -1;
        closeGaps();
        return static_cast<int>(m_index.value(item) - m_first);
    }
    /// False, and no change, when the item is in the list already.
    bool append(T* item)
    {
        if (contains(item))
            return false;
        m_index.insert(item, m_items.size());
        m_items.push_back(item);
        return true;
    }
    /// Puts an item before the one at `index`, at the end when there is none.
    bool insert(int index, T* item)
    {
        if (index < 0 || index >= size())
            return append(item);
        if (contains(item))
            return false;
        closeGaps();
        m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(m_first) + index, item);
        renumber();
        return true;
    }
    /// Puts an item that is not in the list in the place of the one at `index`.
    void replace(int index, T* item)
    {
        T* before = at(index);
        const std::size_t place = m_index.take(before);
        m_items[place] = item;
        m_index.insert(item, place);
    }
    bool remove(T* item)
    {
        const auto place = m_index.find(item);
        if (place == m_index.end())
            return false;
        m_items[place.value()] = nullptr;
        m_index.erase(place);
        while (!m_items.empty() && !m_items.back())
            m_items.pop_back();
        m_first = std::min(m_first, m_items.size());
        while (m_first < m_items.size() && !m_items[m_first])
            ++m_first;
        return true;
    }
    void clear()
    {
        m_items.clear();
        m_index.clear();
        m_first = 0;
    }

private:
    void closeGaps() const
    {
        if (m_items.size() - m_first == static_cast<std::size_t>(m_index.size()))
            return;
        m_items.erase(std::remove(m_items.begin(), m_items.end(), nullptr), m_items.end());
        renumber();
    }
    void renumber() const
    {
        m_items.erase(m_items.begin(), m_items.begin() + firstOf(m_items));
        m_first = 0;
        for (std::size_t i = 0; i < m_items.size(); ++i)
            m_index[m_items[i]] = i;
    }
    static std::ptrdiff_t firstOf(const std::vector<T*>& items)
    {
        return std::find_if(items.begin(), items.end(), [](T* item) { return item; })
            - items.begin();
    }

    mutable std::vector<T*> m_items; ///< null at a gap
    mutable QHash<T*, std::size_t> m_index;
    mutable std::size_t m_first = 0; ///< gaps before this place are never closed for reading
};
