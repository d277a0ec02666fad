// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"

#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzplugin.h"
#include "dzpluginmgr.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace {

typedef nlohmann::ordered_json Json;

/// A loaded module: where it came from and what it says of itself.
struct Module {
    const DzPlugin* plugin;
    QString file;
    DzVersion sdkVersion;
};

QVector<Module> loadedModules()
{
    const DzPluginMgr* manager = dzApp->getPluginMgr();
    QVector<Module> modules;
    for (int i = 0; i < manager->getNumPlugins(); ++i)
        modules.append(Module { manager->getPlugin(i), manager->getPluginFilename(i),
            manager->getPluginSDKVersion(i) });
    return modules;
}

Json factoriesAsJson(const DzPlugin* plugin)
{
    Json list = Json::array();
    for (int i = 0; i < plugin->getNumClassFactories(); ++i) {
        const DzClassFactory* factory = plugin->getClassFactory(i);
        list.push_back({ { "class", factory->className().toStdString() },
            { "identifier", factory->getGuid().toString().toStdString() } });
    }
    return list;
}

QByteArray modulesAsJson(const QVector<Module>& modules)
{
    Json list = Json::array();
    for (const Module& module : modules)
        list.push_back({ { "file", module.file.toStdString() },
            { "name", module.plugin->getName().toStdString() },
            { "version", module.plugin->getVersion().getLongVersionString().toStdString() },
            { "description", module.plugin->getDescription().toStdString() },
            { "sdk", module.sdkVersion.getLongVersionString().toStdString() },
            { "factories", factoriesAsJson(module.plugin) } });
    return QByteArray::fromStdString(list.dump(2)) + '\n';
}

QString moduleText(const Module& module)
{
    QVector<QStringList> rows;
    rows.append({ QStringLiteral("file"), module.file });
    rows.append({ QStringLiteral("name"), module.plugin->getName() });
    rows.append({ QStringLiteral("version"), module.plugin->getVersion().getLongVersionString() });
    rows.append({ QStringLiteral("description"), module.plugin->getDescription() });
    rows.append({ QStringLiteral("sdk"), module.sdkVersion.getLongVersionString() });
    const int numFactories = module.plugin->getNumClassFactories();
    rows.append({ QStringLiteral("factories"), QString::number(numFactories) });
    QVector<QStringList> factories;
    for (int i = 0; i < numFactories; ++i) {
        const DzClassFactory* factory = module.plugin->getClassFactory(i);
        factories.append({ factory->className(), factory->getGuid().toString() });
    }
    return formatTable(rows) + formatTable(factories, QStringLiteral("  "));
}

QByteArray modulesAsText(const QVector<Module>& modules)
{
    QStringList texts;
    for (const Module& module : modules)
        texts.append(moduleText(module));
    return texts.join(QLatin1Char('\n')).toUtf8();
}

} // namespace

void addPluginsCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand(
        "plugins", "List the loaded modules with the classes that they make");
    auto asJson = std::make_shared<bool>(false);
    command->add_flag("--json", *asJson, "Print JSON");
    command->callback([asJson] {
        const QVector<Module> modules = loadedModules();
        if (modules.isEmpty())
            notice(QStringLiteral("no module was found; put one beside the program or name its "
                                  "folder in VIREO_PLUGIN_PATH"));
        printText(*asJson ? modulesAsJson(modules) : modulesAsText(modules));
    });
}
