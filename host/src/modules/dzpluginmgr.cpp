// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzpluginmgr.h"

#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzplugin.h"
#include "moduleentry.h"
#include "moduleprobe.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

DzPluginMgr::DzPluginMgr()
{
}

DzPluginMgr::~DzPluginMgr()
{
}

bool DzPluginMgr::loadPlugin(const QString& path, QString* error)
{
    const auto refuse = [&](const QString& cause) {
        if (error)
            *error = tr("cannot load module %1: %2").arg(path, cause);
        return false;
    };
    const QFileInfo file(path);
    if (!file.exists())
        return refuse(tr("there is no such file"));
    // By its full path, or the system's folders would be searched for a bare name.
    QLibrary library(file.absoluteFilePath());
    // Modules stay loaded: objects of their classes may outlive the manager. A symbol that is
    // nowhere is found now, or the call that needs it would end the program.
    library.setLoadHints(QLibrary::PreventUnloadHint | QLibrary::ResolveAllSymbolsHint);
    const QString failure = moduleFailure(library.fileName());
    if (!failure.isEmpty())
        return refuse(failure);
    if (!library.load())
        return refuse(tr("it is not a module (%1)").arg(library.errorString().simplified()));
    const ModuleEntry entry = enterModule(
        [&library](const char* symbol) { return library.resolve(symbol); }, [](ModuleStage) {});
    if (!entry.refusal.isEmpty())
        return refuse(entry.refusal);
    if (!registerPlugin(entry.definition, path, entry.sdkVersion))
        return refuse(
            tr("a module named \"%1\" is loaded already").arg(entry.definition->getName()));
    return true;
}

QStringList DzPluginMgr::getPluginFolders(const char* pathVariable, const QString& installedFolder)
{
    QStringList candidates = QString::fromLocal8Bit(qgetenv(pathVariable))
                                 .split(QDir::listSeparator(), Qt::SkipEmptyParts);
    const QString own = QCoreApplication::applicationDirPath();
    const QString installed = own + QStringLiteral("/../lib/") + installedFolder;
    // Where programs are installed, all kinds of things stand beside them.
    candidates << (QFileInfo(installed).isDir() ? installed : own);
    QStringList folders;
    for (const QString& candidate : qAsConst(candidates)) {
        const QString folder = QFileInfo(candidate).canonicalFilePath();
        if (!folder.isEmpty() && QFileInfo(folder).isDir() && !folders.contains(folder))
            folders.append(folder);
    }
    return folders;
}

void DzPluginMgr::loadPlugins(const QStringList& folders)
{
    for (const QString& folder : folders) {
        const QDir dir(folder);
        for (const QString& name : dir.entryList(QDir::Files, QDir::Name)) {
            // Ordinary shared libraries may stand beside the modules.
            if (!QLibrary::isLibrary(name) || name.startsWith(QLatin1String("lib")))
                continue;
            QString error;
            if (!loadPlugin(dir.filePath(name), &error) && dzApp)
                dzApp->warning(error);
        }
    }
}

bool DzPluginMgr::registerPlugin(
    DzPlugin* plugin, const QString& filename, const DzVersion& sdkVersion)
{
    if (!plugin)
        return false;
    for (const Loaded& loaded : qAsConst(m_plugins))
        if (loaded.plugin->getName() == plugin->getName())
            return false;
    m_plugins.append(Loaded { plugin, filename, sdkVersion });
    for (int i = 0; i < plugin->getNumClassFactories(); ++i) {
        const DzClassFactory* factory = plugin->getClassFactory(i);
        m_factories.append(factory);
        if (!m_byName.contains(factory->className()))
            m_byName.insert(factory->className(), factory);
    }
    return true;
}

DzPlugin* DzPluginMgr::getPlugin(int index) const
{
    return index >= 0 && index < m_plugins.size() ? m_plugins.at(index).plugin : nullptr;
}

QString DzPluginMgr::getPluginFilename(int index) const
{
    return index >= 0 && index < m_plugins.size() ? m_plugins.at(index).filename : QString();
}

DzVersion DzPluginMgr::getPluginSDKVersion(int index) const
{
    return index >= 0 && index < m_plugins.size() ? m_plugins.at(index).sdkVersion : DzVersion();
}

const DzClassFactory* DzPluginMgr::findClassFactory(const QString& className) const
{
    return m_byName.value(className);
}

const DzClassFactory* DzPluginMgr::findClassFactory(const DzGuid& guid) const
{
    for (const DzClassFactory* factory : m_factories)
        if (factory->getGuid() == guid)
            return factory;
    return nullptr;
}

// What the application hands out of this room.

std::shared_ptr<DzPluginMgr> DzApp::makePluginMgr()
{
    return std::make_shared<DzPluginMgr>();
}

const DzClassFactory* DzApp::findClassFactory(const QString& className) const
{
    return m_pluginMgr->findClassFactory(className);
}

QObject* DzApp::createInstance(const QString& className) const
{
    const DzClassFactory* factory = findClassFactory(className);
    if (factory)
        return factory->createInstance();
    const int type = QMetaType::type(className.toLatin1() + '*');
    const QMetaObject* metaObject = QMetaType::metaObjectForType(type);
    return metaObject ? metaObject->newInstance() : nullptr;
}
