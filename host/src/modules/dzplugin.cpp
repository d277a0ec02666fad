// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzplugin.h"

DzPlugin::DzPlugin(const QString& name, const QString& author, const QString& description)
    : m_name(name)
    , m_author(author)
    , m_description(description)
{
}

DzPlugin::~DzPlugin()
{
    qDeleteAll(m_factories);
}

void DzPlugin::setVersion(quint16 major, quint16 minor, quint16 revision, quint16 build)
{
    m_version = DzVersion(major, minor, revision, build);
}
