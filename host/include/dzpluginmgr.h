// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzversion.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>

class DzClassFactory;
class DzGuid;
class DzPlugin;

/// Loads modules and finds the classes that they offer.
class DzPluginMgr : public QObject
{
    Q_OBJECT

public:
    DzPluginMgr();
    ~DzPluginMgr() override;

    /// Loads the module in file `path`: asks its "getSDKVersion", refuses one that is newer than
    /// this host, and registers what its "getPluginDefinition" lists. On refusal false, with the
    /// reason in `error`. All of this is tried out in a child process first: a module that throws,
    /// crashes, ends the program or does not return there is refused like any other, and never
    /// runs here. Static objects of one that is taken are therefore made twice, once in each
    /// process.
    bool loadPlugin(const QString& path, QString* error);
    /// Folders that are searched for modules, in order: those that the environment variable
    /// `pathVariable` names, then `installedFolder` under the "lib" folder beside the program's
    /// own or, where there is none, the program's own folder, as in a build. Only folders that
    /// exist, each once.
    static QStringList getPluginFolders(const char* pathVariable, const QString& installedFolder);
    /// Loads every module in the folders; a refusal is a warning and no more. Files that begin
    /// with "lib" are taken for ordinary libraries.
    void loadPlugins(const QStringList& folders);

    /// Registers a definition that lives in this program; it stays owned by its module. False when
    /// one of the same name is registered already.
    bool registerPlugin(DzPlugin* plugin, const QString& filename = QString(),
        const DzVersion& sdkVersion = DZ_SDK_VERSION);

    int getNumPlugins() const { return m_plugins.size(); }
    DzPlugin* getPlugin(int index) const;
    QString getPluginFilename(int index) const;
    /// The SDK version that the module was written against; invalid for an index out of range.
    DzVersion getPluginSDKVersion(int index) const;

    const DzClassFactory* findClassFactory(const QString& className) const;
    /// The first registered factory with this identifier: identifiers need not be unique.
    const DzClassFactory* findClassFactory(const DzGuid& guid) const;
    /// All factories in order of registration.
    QList<const DzClassFactory*> getClassFactories() const { return m_factories; }

private:
    struct Loaded {
        DzPlugin* plugin;
        QString filename;
        DzVersion sdkVersion;
    };

    QList<Loaded> m_plugins;
    QList<const DzClassFactory*> m_factories;
    QHash<QString, const DzClassFactory*> m_byName;
};
