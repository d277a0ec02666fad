// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickTable.h"
#include "TestSupport.h"
#include "dzclassfactory.h"
#include "dzplugin.h"
#include "dzpluginmgr.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QProcess>

namespace {

/// The first 32 digits of every identifier.
const char* const guidStart = "5F0C2E91-7A4B-4D3E-9C61-3B8A20D7";

/// Class and whole identifier of each row of the table.
/// Class and identifier, in order of registration: the bricks as their table has them, and the
/// brick user and two actions, which are no bricks.
QVector<QStringList> tableOfFactories()
{
    QVector<QStringList> rows;
    const auto add = [&rows](const QString& name, const QString& identifier) {
        rows.append({ name, guidStart + identifier });
    };
    add("VireoBrickUser", "3571");
    for (const BrickRow& brick : brickTable()) {
        add(brick.name, brick.identifier);
        if (brick.kind == "root") {
            add("VireoImporLbm2Action", "357A");
            add("VireoExportCodeAction", "357B");
        }
    }
    return rows;
}

QVector<QStringList> factoriesOf(const DzPlugin* plugin)
{
    QVector<QStringList> rows;
    for (int i = 0; i < plugin->getNumClassFactories(); ++i) {
        const DzClassFactory* factory = plugin->getClassFactory(i);
        rows.append({ factory->className(), factory->getGuid().toString() });
    }
    return rows;
}

QString modulePath(const char* name)
{
    return QStringLiteral(VIREO_TEST_MODULES_DIR "/%1.so").arg(name);
}

/// What loading a module says, without the file's name, when it is refused.
std::string refusal(DzPluginMgr* manager, const char* name)
{
    const QString start = "cannot load module " + modulePath(name) + ": ";
    QString error;
    EXPECT_FALSE(manager->loadPlugin(modulePath(name), &error)) << name;
    EXPECT_TRUE(error.startsWith(start)) << error.toStdString();
    EXPECT_FALSE(error.contains('\n')) << error.toStdString();
    return error.mid(start.size()).toStdString();
}

struct Outcome {
    int exitCode;
    QByteArray output;
    QString error;
};

Outcome runPlugins(const QStringList& options, const QString& path = QString())
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("VIREO_PLUGIN_PATH", path);
    process.setProcessEnvironment(environment);
    process.start(VIREO_PROGRAM, QStringList("plugins") + options);
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return { process.exitCode(), process.readAllStandardOutput(),
        QString::fromUtf8(process.readAllStandardError()) };
}

} // namespace

// The module ---------------------------------------------------------------------------------

TEST(Siskin, itExportsItsTwoEntryPointsAndNothingElse)
{
    QProcess nm;
    nm.start(VIREO_NM, { "-D", "--defined-only", VIREO_MODULE });
    ASSERT_TRUE(nm.waitForFinished(60000));
    ASSERT_EQ(nm.exitCode(), 0) << nm.readAllStandardError().toStdString();
    QStringList symbols;
    for (const QString& line : QString::fromUtf8(nm.readAll()).split('\n', Qt::SkipEmptyParts))
        symbols.append(line.section(' ', 1));
    symbols.sort();
    EXPECT_EQ(symbols, QStringList({ "T getPluginDefinition", "T getSDKVersion" }));
}

TEST(Siskin, itsEntryPointsGiveTheVersionAndAlwaysTheSameDefinition)
{
    QLibrary module(VIREO_MODULE);
    const auto getVersion = reinterpret_cast<DzVersion (*)()>(module.resolve("getSDKVersion"));
    const auto getDefinition
        = reinterpret_cast<DzPlugin* (*)()>(module.resolve("getPluginDefinition"));
    ASSERT_NE(getVersion, nullptr);
    ASSERT_NE(getDefinition, nullptr);
    EXPECT_EQ(getVersion(), DzVersion(4, 5, 0, 100));
    DzPlugin* const plugin = getDefinition();
    EXPECT_EQ(getDefinition(), plugin);
    EXPECT_EQ(plugin->getName(), QString("Siskin"));
    EXPECT_EQ(plugin->getVersion(), DzVersion(0, 0, 0, 5));
    EXPECT_EQ(plugin->getDescription(), QString("Vireo ShaderMixer Extension"));
    EXPECT_EQ(plugin->getAuthor(), QString());
}

TEST(Siskin, itsFactoriesAreThoseOfTheTableInOrderAndAsWritten)
{
    const QVector<QStringList> table = tableOfFactories();
    const QVector<QStringList> registered = factoriesOf(dzApp->getPluginMgr()->getPlugin(0));
    EXPECT_TRUE(
        table.contains({ "VireoTexFltWrinkledBrick", "5F0C2E91-7A4B-4D3E-9C61-3B8A20D7364c" }));
    for (int i = 0; i < qMin(table.size(), registered.size()); ++i)
        ASSERT_EQ(registered.at(i), table.at(i)) << "factory " << i;
    EXPECT_EQ(registered.size(), table.size());
}

TEST(Siskin, eachFactoryMakesAnObjectOfItsClass)
{
    for (const QStringList& row : tableOfFactories()) {
        QObject* const object = dzApp->createInstance(row.first());
        ASSERT_NE(object, nullptr) << row.first().toStdString();
        EXPECT_EQ(object->metaObject()->className(), row.first().toStdString());
        if (auto* shared = dynamic_cast<DzRefCountedItem*>(object))
            const DzTSharedPointer<DzRefCountedItem> owner(shared);
        else
            delete object;
    }
}

TEST(Siskin, ofTwoClassesOfOneIdentifierTheActionIsRegisteredFirst)
{
    const DzPluginMgr* manager = dzApp->getPluginMgr();
    const auto classOf = [&](const QString& ending) {
        return manager->findClassFactory(DzGuid::fromString(guidStart + ending))->className();
    };
    EXPECT_EQ(classOf("357A"), QString("VireoImporLbm2Action"));
    EXPECT_EQ(classOf("357B"), QString("VireoExportCodeAction"));
    EXPECT_EQ(dzApp->findClassFactory("VireoMatClothBrick")->getGuid().toString(),
        guidStart + QString("357B"));
}

// The loader ---------------------------------------------------------------------------------

TEST(ModuleLoader, aGoodModuleIsKeptWithFileAndVersions)
{
    DzPluginMgr manager;
    QString error;
    ASSERT_TRUE(manager.loadPlugin(modulePath("Good"), &error)) << error.toStdString();
    ASSERT_EQ(manager.getNumPlugins(), 1);
    EXPECT_EQ(manager.getPlugin(0)->getName(), QString("Good"));
    EXPECT_EQ(manager.getPluginFilename(0), modulePath("Good"));
    EXPECT_EQ(manager.getPluginSDKVersion(0), DzVersion(4, 0, 3, 2));
    EXPECT_EQ(manager.getPluginSDKVersion(1), DzVersion());
    EXPECT_EQ(manager.getPluginSDKVersion(-1), DzVersion());
}

TEST(ModuleLoader, aModuleWithoutOneOfTheEntryPointsIsRefused)
{
    DzPluginMgr manager;
    EXPECT_EQ(refusal(&manager, "NoVersion"), "it lacks the entry point \"getSDKVersion\"");
    EXPECT_EQ(
        refusal(&manager, "NoDefinition"), "it lacks the entry point \"getPluginDefinition\"");
    EXPECT_EQ(refusal(&manager, "NullDefinition"), "it gives no definition");
    EXPECT_EQ(manager.getNumPlugins(), 0);
}

TEST(ModuleLoader, aModuleForANewerHostIsRefused)
{
    DzPluginMgr manager;
    EXPECT_EQ(refusal(&manager, "Newer"),
        "it needs SDK version 4.5.0.101, this program offers 4.5.0.100; use a newer program or an "
        "older module");
}

TEST(ModuleLoader, aSecondModuleOfTheSameNameIsRefused)
{
    DzPluginMgr manager;
    ASSERT_TRUE(manager.loadPlugin(modulePath("Good"), nullptr));
    EXPECT_EQ(refusal(&manager, "Twin"), "a module named \"Good\" is loaded already");
    EXPECT_EQ(manager.getNumPlugins(), 1);
}

TEST(ModuleLoader, aModuleWhoseEntryPointsThrowIsRefused)
{
    DzPluginMgr manager;
    EXPECT_EQ(refusal(&manager, "ThrowingVersion"), "it throws: no version today");
    EXPECT_EQ(refusal(&manager, "ThrowingDefinition"), "it throws");
}

TEST(ModuleLoader, aModuleThatThrowsWhileItIsLoadedIsRefused)
{
    DzPluginMgr manager;
    EXPECT_EQ(refusal(&manager, "ThrowingStart"), "it throws while it is loaded: nothing works");
    EXPECT_EQ(refusal(&manager, "ThrowingNumber"), "it throws while it is loaded");
}

TEST(ModuleLoader, aModuleThatCrashesEndsOrNeverReturnsIsRefused)
{
    DzPluginMgr manager;
    EXPECT_EQ(
        refusal(&manager, "CrashingStart"), "it crashes while it is loaded (Segmentation fault)");
    EXPECT_EQ(refusal(&manager, "EndingStart"), "it ends the program while it is loaded");
    EXPECT_EQ(refusal(&manager, "slow/HangingStart"), "it does not finish loading");
}

TEST(ModuleLoader, aModuleThatNeedsWhatIsNowhereIsRefused)
{
    DzPluginMgr manager;
    const std::string cause = refusal(&manager, "Unresolved");
    EXPECT_EQ(cause.find("it is not a module ("), 0u) << cause;
    EXPECT_NE(cause.find("findNowhere"), std::string::npos) << cause;
}

TEST(ModuleLoader, refusalsAreOneLineEachAndTheGoodModuleIsLoaded)
{
    Warnings warnings;
    DzPluginMgr manager;
    manager.loadPlugins({ QStringLiteral(VIREO_TEST_MODULES_DIR) });
    const int files = QDir(VIREO_TEST_MODULES_DIR).entryList({ "*.so" }, QDir::Files).size();
    EXPECT_EQ(warnings.messages.size(), files - 1);
    ASSERT_EQ(manager.getNumPlugins(), 1);
    EXPECT_EQ(manager.getPlugin(0)->getName(), QString("Good"));
    EXPECT_NE(manager.findClassFactory(QString("DzElement")), nullptr);
}

// The command --------------------------------------------------------------------------------

TEST(PluginsCommand, eachModuleIsListedWithItsDefinitionAndFactories)
{
    const Outcome outcome = runPlugins({});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, QString());
    const QStringList lines = QString::fromUtf8(outcome.output).split('\n');
    const QVector<QStringList> table = tableOfFactories();
    ASSERT_EQ(lines.size(), 6 + table.size() + 1);
    EXPECT_EQ(lines.at(0), QString("file         ") + QFileInfo(VIREO_MODULE).canonicalFilePath());
    EXPECT_EQ(lines.at(1), QString("name         Siskin"));
    EXPECT_EQ(lines.at(2), QString("version      0.0.0.5"));
    EXPECT_EQ(lines.at(3), QString("description  Vireo ShaderMixer Extension"));
    EXPECT_EQ(lines.at(4), QString("sdk          4.5.0.100"));
    EXPECT_EQ(lines.at(5), QString("factories    %1").arg(table.size()));
    for (int i = 0; i < table.size(); ++i)
        EXPECT_EQ(lines.at(6 + i).simplified(), table.at(i).join(' '));
}

TEST(PluginsCommand, asJsonItHoldsTheSame)
{
    const Outcome outcome = runPlugins({ "--json" });
    EXPECT_EQ(outcome.exitCode, 0);
    const QJsonArray modules = QJsonDocument::fromJson(outcome.output).array();
    ASSERT_EQ(modules.size(), 1);
    const QJsonObject module = modules.at(0).toObject();
    EXPECT_EQ(module.value("file").toString(), QFileInfo(VIREO_MODULE).canonicalFilePath());
    EXPECT_EQ(module.value("name").toString(), QString("Siskin"));
    EXPECT_EQ(module.value("version").toString(), QString("0.0.0.5"));
    EXPECT_EQ(module.value("description").toString(), QString("Vireo ShaderMixer Extension"));
    EXPECT_EQ(module.value("sdk").toString(), QString("4.5.0.100"));
    QVector<QStringList> factories;
    for (const QJsonValue& factory : module.value("factories").toArray())
        factories.append({ factory.toObject().value("class").toString(),
            factory.toObject().value("identifier").toString() });
    EXPECT_EQ(factories, tableOfFactories());
}

TEST(PluginsCommand, modulesOfThePathComeFirstAndRefusalsAreLinesOnStandardError)
{
    const Outcome outcome = runPlugins({ "--json" }, VIREO_TEST_MODULES_DIR);
    EXPECT_EQ(outcome.exitCode, 0);
    const QJsonArray modules = QJsonDocument::fromJson(outcome.output).array();
    ASSERT_EQ(modules.size(), 2);
    const QJsonObject good = modules.at(0).toObject();
    EXPECT_EQ(good.value("name").toString(), QString("Good"));
    EXPECT_EQ(good.value("description").toString(), QString("A \"quoted\" description"));
    EXPECT_EQ(good.value("sdk").toString(), QString("4.0.3.2"));
    EXPECT_EQ(modules.at(1).toObject().value("name").toString(), QString("Siskin"));
    const QStringList errors = outcome.error.split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(
        errors.size(), QDir(VIREO_TEST_MODULES_DIR).entryList({ "*.so" }, QDir::Files).size() - 1);
    for (const QString& error : errors)
        EXPECT_TRUE(error.startsWith("vireo: warning: cannot load module ")) << error.toStdString();
}

TEST(PluginsCommand, anythingElseOnTheCommandLineIsWrongUse)
{
    const Outcome outcome = runPlugins({ "--yaml" });
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.output, QByteArray());
    EXPECT_EQ(outcome.error,
        QString("vireo: unknown argument \"--yaml\"; see vireo plugins "
                "--help\n"));
}
