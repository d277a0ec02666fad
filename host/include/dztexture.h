// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbase.h"
#include "dzrefcounteditem.h"

/// An image file that properties refer to. The file itself need not exist.
class DzTexture : public DzBase, public DzRefCountedItem
{
    Q_OBJECT

public:
    explicit DzTexture(const QString& filename);
    ~DzTexture() override;

    /// The file name as it was given, never made absolute.
    Q_INVOKABLE QString getFilename() const { return m_filename; }

private:
    QString m_filename;
};

typedef DzTSharedPointer<DzTexture> DzTexturePtr;
