// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class DzTexture;

/// Hands out one shared texture per file name.
class DzImageMgr : public QObject
{
    Q_OBJECT

public:
    DzImageMgr();
    ~DzImageMgr() override;

    /// The texture for a file name, made when there is none; null for an empty name. The texture
    /// lives as long as somebody holds it.
    Q_INVOKABLE DzTexture* getImage(const QString& filename);
    Q_INVOKABLE int getNumImages() const { return m_images.size(); }

    /// For the host's own sources.
    struct Access;

private:
    void forget(const DzTexture* texture);

    QHash<QString, DzTexture*> m_images;
};
