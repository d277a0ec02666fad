// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "moduleprobe.h"
#include "dzpluginmgr.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryFile>
#include <gtest/gtest.h>

namespace {

const char* const modulePath = VIREO_TEST_MODULES_DIR "/odd/Odd.so";

/// What trying out the module says that does `act`; by far less time than a program gives it.
std::string failureOf(const char* act, int timeLimit = 700)
{
    qputenv("VIREO_TEST_MODULE_ACT", act);
    QElapsedTimer timer;
    timer.start();
    const QString failure = moduleFailure(modulePath, timeLimit);
    qunsetenv("VIREO_TEST_MODULE_ACT");
    EXPECT_LT(timer.elapsed(), timeLimit + 1500) << act;
    return failure.toStdString();
}

/// As a program gives it: what survives is not to be disturbed by a busy machine.
const int longEnough = 20000;

} // namespace

TEST(ModuleProbe, anOrdinaryModuleSurvives)
{
    EXPECT_EQ(failureOf("nothing", longEnough), "");
}

TEST(ModuleProbe, anEntryPointThatCrashesIsNamed)
{
    EXPECT_EQ(failureOf("version:crash", longEnough),
        "its \"getSDKVersion\" crashes (Segmentation fault)");
    EXPECT_EQ(failureOf("definition:crash", longEnough),
        "its \"getPluginDefinition\" crashes (Segmentation fault)");
}

TEST(ModuleProbe, anEntryPointThatEndsTheProgramIsNamed)
{
    EXPECT_EQ(failureOf("version:exit 0", longEnough), "its \"getSDKVersion\" ends the program");
    EXPECT_EQ(
        failureOf("definition:exit 7", longEnough), "its \"getPluginDefinition\" ends the program");
}

TEST(ModuleProbe, anEntryPointThatDoesNotReturnIsNamed)
{
    EXPECT_EQ(failureOf("version:hang"), "its \"getSDKVersion\" does not return");
    EXPECT_EQ(failureOf("definition:hang"), "its \"getPluginDefinition\" does not return");
}

TEST(ModuleProbe, aDefinitionThatIsNoneIsRefused)
{
    // Sanitizers end the process where it would crash.
    const std::string start = "its definition ";
    for (const char* act : { "wild pointer", "no object", "wild factory" })
        EXPECT_EQ(failureOf(act, longEnough).substr(0, start.size()), start) << act;
}

TEST(ModuleProbe, noExitCodeStandsForSurviving)
{
    for (int code = 0; code < 256; code += 5) {
        const QByteArray act = "start:exit " + QByteArray::number(code);
        EXPECT_EQ(failureOf(act.constData(), longEnough), "it ends the program while it is loaded")
            << code;
    }
}

TEST(ModuleProbe, closedDescriptorsHideNothing)
{
    EXPECT_EQ(failureOf("start:close and hang"), "it does not finish loading");
    EXPECT_EQ(failureOf("start:close", longEnough), "");
}

TEST(ModuleProbe, whatDripsOrStopsEndsWithTheLimit)
{
    EXPECT_EQ(failureOf("start:drip"), "it does not finish loading");
    EXPECT_EQ(failureOf("start:stop"), "it does not finish loading");
}

TEST(ModuleProbe, aProcessThatIsLeftBehindIsNotWaitedFor)
{
    EXPECT_EQ(failureOf("start:leave a process", 2500), "");
}

TEST(ModuleProbe, longMessagesAreCut)
{
    const std::string shown = std::string(200, 'm') + "...";
    EXPECT_EQ(failureOf("start:throw much", longEnough), "it throws while it is loaded: " + shown);
    EXPECT_EQ(failureOf("definition:throw much", longEnough), "it throws: " + shown);
}

TEST(ModuleProbe, aRefusedModuleNeverRunsInTheProgram)
{
    QTemporaryFile log;
    ASSERT_TRUE(log.open());
    qputenv("VIREO_TEST_MODULE_LOG", QFile::encodeName(log.fileName()));
    qputenv("VIREO_TEST_MODULE_ACT", "definition:exit 0");
    DzPluginMgr manager;
    QString error;
    EXPECT_FALSE(manager.loadPlugin(modulePath, &error));
    EXPECT_EQ(error.toStdString(),
        std::string("cannot load module ") + modulePath
            + ": its \"getPluginDefinition\" ends the program");
    qunsetenv("VIREO_TEST_MODULE_ACT");
    qunsetenv("VIREO_TEST_MODULE_LOG");
    EXPECT_EQ(log.readAll(), QByteArray("x"));
}
