// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzclassfactory.h"
#include "dzversion.h"

#include <QList>
#include <QObject>

/// What a module says of itself: name, version, description and the classes that it can make.
class DzPlugin : public QObject
{
    Q_OBJECT

public:
    explicit DzPlugin(const QString& name, const QString& author = QString(),
        const QString& description = QString());
    /// Deletes the factories.
    ~DzPlugin() override;

    QString getName() const { return m_name; }
    QString getAuthor() const { return m_author; }
    QString getDescription() const { return m_description; }
    DzVersion getVersion() const { return m_version; }

    void setAuthor(const QString& author) { m_author = author; }
    void setDescription(const QString& description) { m_description = description; }
    void setVersion(quint16 major, quint16 minor, quint16 revision, quint16 build);

    /// Adds a factory and takes ownership of it.
    void addClassFactory(DzClassFactory* factory) { m_factories.append(factory); }
    int getNumClassFactories() const { return m_factories.size(); }
    const DzClassFactory* getClassFactory(int index) const { return m_factories.value(index); }

private:
    QString m_name;
    QString m_author;
    QString m_description;
    DzVersion m_version;
    QList<DzClassFactory*> m_factories;
};
