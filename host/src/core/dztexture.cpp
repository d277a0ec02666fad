// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dztexture.h"

#include "dzapp.h"
#include "dzimagemgr.h"

DzTexture::DzTexture(const QString& filename)
    : DzBase(filename)
    , m_filename(filename)
{
}

DzTexture::~DzTexture()
{
    // Whoever holds the last share may well outlive the application.
    DzImageMgr* manager = dzApp ? dzApp->getImageMgr() : nullptr;
    if (manager)
        manager->forget(this);
}
