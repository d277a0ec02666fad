// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzimagemgr.h"

#include "dztexture.h"

#include <utility>

DzImageMgr::DzImageMgr()
{
}

DzImageMgr::~DzImageMgr()
{
    const QHash<QString, DzTexture*> images = std::exchange(m_images, {});
    for (DzTexture* texture : images) {
        // The others belong to those who hold them.
        if (texture->getRefCount() == 0)
            delete texture;
    }
}

DzTexture* DzImageMgr::getImage(const QString& filename)
{
    if (filename.isEmpty())
        return nullptr;
    DzTexture*& texture = m_images[filename];
    if (!texture)
        texture = new DzTexture(filename);
    return texture;
}

void DzImageMgr::forget(const DzTexture* texture)
{
    const auto place = m_images.find(texture->getFilename());
    // A texture that was made by hand may bear the name of a shared one.
    if (place != m_images.end() && place.value() == texture)
        m_images.erase(place);
}
