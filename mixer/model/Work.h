// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QUuid>

/// Something that is being worked on and has a file, or will have one: a network or a scene.
class Work : public QObject
{
    Q_OBJECT

public:
    enum Kind { Network, Scene };

    explicit Work(QObject* parent = nullptr)
        : QObject(parent)
        , m_key(QUuid::createUuid().toString(QUuid::WithoutBraces))
    {
    }

    virtual Kind getKind() const = 0;
    /// Tells the works of one program apart; letters, digits and "-".
    QString getKey() const { return m_key; }
    /// Name for tabs and windows.
    virtual QString getTitle() const = 0;
    /// The file, empty for one that was never saved.
    virtual QString getPath() const = 0;
    /// True when it differs from its file.
    virtual bool isModified() const = 0;
    /// What would be saved now.
    virtual QByteArray getText() const = 0;

signals:
    /// It changed in any way.
    void changed();
    void modifiedChanged(bool modified);

private:
    QString m_key;
};
