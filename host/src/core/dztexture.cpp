// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dztexture.h"

#include "dzapp.h"
#include "dzimagemgr.h"

struct DzImageMgr::Access {
    static void forget(DzImageMgr* manager, const DzTexture* texture) { manager->forget(texture); }
};

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
        DzImageMgr::Access::forget(manager, this);
}
