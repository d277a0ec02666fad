// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>

/// Root of the host's object classes: a QObject with a name and class tests by name.
class DzBase : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ getName WRITE setName NOTIFY nameChanged)

public:
    explicit DzBase(const QString& name = QString());
    ~DzBase() override;

    Q_INVOKABLE const QString& getName() const { return m_name; }
    Q_INVOKABLE virtual void setName(const QString& name);

    /// Name of the object's own class.
    Q_INVOKABLE QString className() const;
    /// True when the object's class is, or derives from, `className`.
    Q_INVOKABLE bool iskindof(const QString& className) const;

signals:
    void nameChanged(const QString& name);

private:
    QString m_name;
};
