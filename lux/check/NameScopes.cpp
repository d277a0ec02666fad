// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NameScopes.h"

namespace lux {

void NameScopes::closeBlock()
{
    if (m_blocks.empty())
        return;
    while (m_changes.size() > m_blocks.back()) {
        const Change& change = m_changes.back();
        if (change.before.block < 0)
            m_names[change.kind].erase(change.name);
        else
            m_names[change.kind][change.name] = change.before;
        m_changes.pop_back();
    }
    m_blocks.pop_back();
}

bool NameScopes::define(Kind kind, const std::string& name, int chain)
{
    Entry& entry = m_names[kind][name];
    const int block = static_cast<int>(m_blocks.size());
    const bool isNew = entry.block != block;
    if (isNew && block > 0)
        m_changes.push_back({ kind, name, entry });
    entry = { block, chain };
    return isNew;
}

NameScopes::Entry NameScopes::find(Kind kind, const std::string& name) const
{
    const auto found = m_names[kind].find(name);
    return found == m_names[kind].end() ? Entry() : found->second;
}

} // namespace lux
