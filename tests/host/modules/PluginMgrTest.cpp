// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzapp.h"
#include "dzelement.h"
#include "dzplugin.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <memory>

namespace {

const char* const pathVariable = "DZ_TEST_PLUGIN_PATH";

const DzGuid firstGuid = DzGuid::fromString("11111111-2222-3333-4444-555555555555");
const DzGuid secondGuid = DzGuid::fromString("AAAAAAAA-2222-3333-4444-555555555555");

template <typename T>
void addFactory(DzPlugin* plugin, const DzGuid& guid)
{
    plugin->addClassFactory(new DzTClassFactory<T>(T::staticMetaObject, guid));
}

void writeFile(const QString& path, const QByteArray& data)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(data);
}

std::string refusal(DzPluginMgr* manager, const QString& path)
{
    QString error;
    EXPECT_FALSE(manager->loadPlugin(path, &error)) << path.toStdString();
    EXPECT_FALSE(error.contains('\n'));
    return error.toStdString();
}

bool startsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

/// Folders that are found with the variable at this value.
QStringList foldersWith(const QByteArray& value)
{
    qputenv(pathVariable, value);
    const QStringList folders = DzPluginMgr::getPluginFolders(pathVariable, "none/such");
    qunsetenv(pathVariable);
    return folders;
}

QString canonical(const QString& path)
{
    return QDir(path).canonicalPath();
}

} // namespace

TEST(PluginMgr, aRegisteredDefinitionOffersItsClasses)
{
    DzPlugin plugin("test", "author", "description");
    addFactory<DzElement>(&plugin, firstGuid);
    DzPluginMgr manager;
    EXPECT_TRUE(manager.registerPlugin(&plugin, "/some/file.so"));
    EXPECT_EQ(manager.getNumPlugins(), 1);
    EXPECT_EQ(manager.getPlugin(0), &plugin);
    EXPECT_EQ(manager.getPluginFilename(0), QString("/some/file.so"));
    const DzClassFactory* factory = manager.findClassFactory(QString("DzElement"));
    ASSERT_NE(factory, nullptr);
    const std::unique_ptr<QObject> object(factory->createInstance());
    EXPECT_NE(qobject_cast<DzElement*>(object.get()), nullptr);
    EXPECT_EQ(manager.findClassFactory(firstGuid), factory);
}

TEST(PluginMgr, aSecondDefinitionOfTheSameNameIsRefused)
{
    DzPlugin first("same");
    DzPlugin second("same");
    addFactory<DzElement>(&second, firstGuid);
    DzPluginMgr manager;
    EXPECT_TRUE(manager.registerPlugin(&first));
    EXPECT_FALSE(manager.registerPlugin(&second));
    EXPECT_EQ(manager.getNumPlugins(), 1);
    EXPECT_EQ(manager.findClassFactory(QString("DzElement")), nullptr);
}

TEST(PluginMgr, noDefinitionIsRefused)
{
    DzPluginMgr manager;
    EXPECT_FALSE(manager.registerPlugin(nullptr));
    EXPECT_EQ(manager.getNumPlugins(), 0);
}

TEST(PluginMgr, anUnknownClassOrIndexGivesNothing)
{
    const DzPluginMgr manager;
    EXPECT_EQ(manager.findClassFactory(QString("DzElement")), nullptr);
    EXPECT_EQ(manager.findClassFactory(firstGuid), nullptr);
    EXPECT_EQ(manager.getPlugin(0), nullptr);
    EXPECT_EQ(manager.getPlugin(-1), nullptr);
    EXPECT_TRUE(manager.getPluginFilename(5).isEmpty());
}

TEST(PluginMgr, ofTwoClassesOfOneIdentifierTheFirstIsFound)
{
    DzPlugin plugin("test");
    addFactory<DzElement>(&plugin, firstGuid);
    addFactory<DzUndoStack>(&plugin, firstGuid);
    DzPluginMgr manager;
    manager.registerPlugin(&plugin);
    EXPECT_EQ(manager.findClassFactory(firstGuid)->className(), QString("DzElement"));
    EXPECT_NE(manager.findClassFactory(QString("DzUndoStack")), nullptr);
    EXPECT_EQ(manager.findClassFactory(secondGuid), nullptr);
}

TEST(PluginMgr, ofTwoModulesThatOfferOneClassTheFirstMakesIt)
{
    DzPlugin first("first");
    addFactory<DzElement>(&first, firstGuid);
    DzPlugin second("second");
    addFactory<DzElement>(&second, secondGuid);
    DzPluginMgr manager;
    manager.registerPlugin(&first);
    manager.registerPlugin(&second);
    EXPECT_EQ(manager.findClassFactory(QString("DzElement"))->getGuid(), firstGuid);
    EXPECT_EQ(manager.getClassFactories().size(), 2);
}

TEST(PluginMgr, aDefinitionMayOutliveTheManager)
{
    DzPlugin plugin("test");
    addFactory<DzElement>(&plugin, firstGuid);
    {
        DzPluginMgr manager;
        manager.registerPlugin(&plugin);
    }
    EXPECT_EQ(plugin.getNumClassFactories(), 1);
}

TEST(PluginMgr, aTextFileIsRefusedAsNoModule)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.so");
    writeFile(path, "this is not a module\n");
    DzPluginMgr manager;
    EXPECT_TRUE(startsWith(refusal(&manager, path),
        "cannot load module " + path.toStdString() + ": it is not a module ("));
    EXPECT_EQ(manager.getNumPlugins(), 0);
}

TEST(PluginMgr, aMissingFileIsRefused)
{
    DzPluginMgr manager;
    EXPECT_EQ(refusal(&manager, "/none/such.so"),
        "cannot load module /none/such.so: there is no such file");
}

TEST(PluginMgr, aBareNameIsNotSearchedInTheSystem)
{
    DzPluginMgr manager;
    EXPECT_EQ(
        refusal(&manager, "libc.so.6"), "cannot load module libc.so.6: there is no such file");
}

TEST(PluginMgr, aFolderIsRefused)
{
    const QTemporaryDir folder;
    DzPluginMgr manager;
    EXPECT_TRUE(startsWith(refusal(&manager, folder.path()),
        "cannot load module " + folder.path().toStdString() + ": it is not a module ("));
}

TEST(PluginMgr, aLibraryWithoutEntryPointsIsRefused)
{
    Dl_info library;
    ASSERT_NE(dladdr(reinterpret_cast<const void*>(&qVersion), &library), 0);
    DzPluginMgr manager;
    EXPECT_EQ(refusal(&manager, QString::fromLocal8Bit(library.dli_fname)),
        std::string("cannot load module ") + library.dli_fname
            + ": it lacks the entry point \"getSDKVersion\"");
}

TEST(PluginMgr, aRefusalNeedsNobodyToHearIt)
{
    DzPluginMgr manager;
    EXPECT_FALSE(manager.loadPlugin("/none/such.so", nullptr));
}

TEST(PluginMgr, foldersOfTheVariableComeBeforeTheProgramsOwn)
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    const QByteArray value = QFile::encodeName(second.path() + ':' + first.path());
    EXPECT_EQ(foldersWith(value),
        QStringList({ canonical(second.path()), canonical(first.path()),
            canonical(QCoreApplication::applicationDirPath()) }));
}

TEST(PluginMgr, onlyFoldersThatExistAreSearchedEachOnce)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("file");
    writeFile(file, "x");
    ASSERT_TRUE(QFile::link(folder.path(), folder.filePath("link")));
    const QString value = QStringList(
        { folder.path(), folder.path() + "/.", "/none/such", file, folder.filePath("link") })
                              .join(':');
    EXPECT_EQ(foldersWith(QFile::encodeName(value)),
        QStringList(
            { canonical(folder.path()), canonical(QCoreApplication::applicationDirPath()) }));
}

TEST(PluginMgr, oddValuesOfTheVariableDoNoHarm)
{
    const QStringList own(canonical(QCoreApplication::applicationDirPath()));
    EXPECT_EQ(DzPluginMgr::getPluginFolders(pathVariable, "none/such"), own);
    EXPECT_EQ(foldersWith(""), own);
    EXPECT_EQ(foldersWith(":::"), own);
    EXPECT_EQ(foldersWith("\xff\xfe:%1:~:\n"), own);
    EXPECT_EQ(foldersWith(QByteArray(20000, 'x') + ':' + QByteArray(20000, '/') + 'y'), own);
}

TEST(PluginMgr, theInstalledFolderTakesThePlaceOfTheProgramsOwn)
{
    const QDir own(QCoreApplication::applicationDirPath());
    ASSERT_TRUE(own.mkpath("../lib"));
    const QTemporaryDir folder(own.filePath("../lib/test-modules-XXXXXX"));
    ASSERT_TRUE(folder.isValid());
    const QString name = QFileInfo(folder.path()).fileName();
    EXPECT_EQ(
        DzPluginMgr::getPluginFolders(pathVariable, name), QStringList(canonical(folder.path())));
}

TEST(PluginMgr, modulesAreTriedInOrderOfTheirNamesAndRefusalsAreWarnings)
{
    const QTemporaryDir folder;
    for (const char* name : { "b.so", "a.so", "C.so", "libordinary.so", "readme.txt" })
        writeFile(folder.filePath(name), "no module");
    QStringList warnings;
    dzApp->setMessageHandler([&](DzApp::MessageType type, const QString& message) {
        EXPECT_EQ(type, DzApp::WarningMessage);
        warnings.append(message.section(':', 0, 0));
    });
    DzPluginMgr manager;
    manager.loadPlugins({ folder.path(), "/none/such" });
    const QString start = "cannot load module " + folder.path() + '/';
    EXPECT_EQ(warnings, QStringList({ start + "C.so", start + "a.so", start + "b.so" }));
}

TEST(Plugin, aDefinitionHoldsWhatItWasGiven)
{
    DzPlugin plugin("name");
    EXPECT_EQ(plugin.getName(), QString("name"));
    EXPECT_TRUE(plugin.getAuthor().isEmpty());
    plugin.setAuthor("author");
    plugin.setDescription("text");
    plugin.setVersion(1, 2, 3, 65535);
    EXPECT_EQ(plugin.getAuthor(), QString("author"));
    EXPECT_EQ(plugin.getDescription(), QString("text"));
    EXPECT_EQ(plugin.getVersion().getLongVersionString(), QString("1.2.3.65535"));
    EXPECT_EQ(plugin.getClassFactory(0), nullptr);
}

TEST(Version, numbersAndTextsAreGivenBack)
{
    const DzVersion version(4, 5, 65535, 100);
    EXPECT_EQ(version.getMajorVersion(), 4);
    EXPECT_EQ(version.getMinorVersion(), 5);
    EXPECT_EQ(version.getRevisionNumber(), 65535);
    EXPECT_EQ(version.getBuildNumber(), 100);
    EXPECT_EQ(version.getVersionNumber(), Q_UINT64_C(0x00040005ffff0064));
    EXPECT_EQ(version.getVersionString(), QString("4.5"));
    EXPECT_EQ(version.getLongVersionString(), QString("4.5.65535.100"));
}

TEST(Version, textsOfOneToFourNumbersAreRead)
{
    EXPECT_EQ(DzVersion::fromString("4.5.0.100"), DzVersion(4, 5, 0, 100));
    EXPECT_EQ(DzVersion::fromString("4.5"), DzVersion(4, 5, 0, 0));
    EXPECT_EQ(DzVersion::fromString("65535"), DzVersion(65535, 0, 0, 0));
}

TEST(Version, otherTextsGiveAnInvalidVersion)
{
    for (const char* text :
        { "", ".", "4.", ".5", "4..5", "1.2.3.4.5", "65536", "-1", "+1", " 1", "1.x", "1,2", "٣" })
        EXPECT_FALSE(DzVersion::fromString(QString::fromUtf8(text)).isValid()) << text;
}

TEST(Version, earlierNumbersWeighMoreInComparison)
{
    EXPECT_LT(DzVersion(4, 5, 0, 100), DzVersion(4, 5, 0, 101));
    EXPECT_LT(DzVersion(4, 5, 9, 999), DzVersion(4, 6, 0, 0));
    EXPECT_LT(DzVersion(4, 65535, 0, 0), DzVersion(5, 0, 0, 0));
    EXPECT_NE(DzVersion(4, 5, 0, 0), DzVersion(4, 5, 0, 1));
}

TEST(Guid, itIsReadWithAndWithoutBracesAndKeepsItsLetters)
{
    const QString digits = "0123aBcD-4567-89ef-ABCD-0123456789aF";
    EXPECT_EQ(DzGuid::fromString(digits).toString(), digits);
    EXPECT_EQ(DzGuid::fromString('{' + digits + '}').toString(), digits);
}

TEST(Guid, lettersCompareWithoutRegardToCase)
{
    EXPECT_EQ(DzGuid::fromString("abcdef01-2222-3333-4444-555555555555"),
        DzGuid::fromString("{ABCDEF01-2222-3333-4444-555555555555}"));
    EXPECT_NE(firstGuid, secondGuid);
}

TEST(Guid, otherTextsGiveANullIdentifier)
{
    for (const char* text : { "", "{}", "11111111-2222-3333-4444-55555555555",
             "{11111111-2222-3333-4444-555555555555", "11111111-2222-3333-4444-555555555555}",
             "1111111-12222-3333-4444-555555555555", "1111111g-2222-3333-4444-555555555555",
             "(11111111-2222-3333-4444-555555555555)", "11111111222233334444555555555555----" })
        EXPECT_TRUE(DzGuid::fromString(text).isNull()) << text;
    EXPECT_TRUE(DzGuid().isNull());
}

TEST(App, warningsGoToStandardErrorWhenNobodyListens)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    dzApp->warning(QString::fromUtf8("grün"));
    dzApp->log("log");
    dzApp->debug("debug");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "warning: grün\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(App, aHandlerReceivesAllMessages)
{
    QStringList told;
    dzApp->setMessageHandler([&](DzApp::MessageType type, const QString& message) {
        told.append(QString::number(type) + ' ' + message);
    });
    dzApp->log("a");
    dzApp->debug("b");
    dzApp->warning("c");
    EXPECT_EQ(told, QStringList({ "0 a", "1 b", "2 c" }));
}

TEST(App, anUnknownClassMakesNoObject)
{
    EXPECT_EQ(dzApp->createInstance("NoSuchClass"), nullptr);
    EXPECT_EQ(dzApp->findClassFactory("NoSuchClass"), nullptr);
}

TEST(App, theGlobalsAreTheApplicationsOwn)
{
    EXPECT_EQ(dzUndoStack, dzApp->getUndoStack());
    EXPECT_NE(dzApp->getImageMgr(), nullptr);
    EXPECT_NE(dzApp->getPluginMgr(), nullptr);
}
