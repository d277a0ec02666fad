// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace {

class RunCommand : public testing::Test
{
protected:
    QString script(const char* code)
    {
        const QString path = m_folder.filePath(QStringLiteral("s.dsa"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(code);
        return path;
    }

    /// Runs the program and gives its exit code.
    int run(const QStringList& arguments)
    {
        QProcess process;
        process.start(
            QStringLiteral(VIREO_PROGRAM), QStringList(QStringLiteral("run")) + arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        m_output = QString::fromUtf8(process.readAllStandardOutput());
        m_error = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }

    QTemporaryDir m_folder;
    QString m_output;
    QString m_error;
};

} // namespace

TEST_F(RunCommand, printsToStandardOutput)
{
    EXPECT_EQ(run({ script("print('\xc3\xbc', args.length)") }), 0) << m_error.toStdString();
    EXPECT_TEXT(QStringLiteral("\u00fc 0\n"), m_output);
    EXPECT_TEXT(QString(), m_error);
}

TEST_F(RunCommand, allThatFollowsTheScriptIsTheScripts)
{
    EXPECT_EQ(run({ script("print(args.join('|'))"), QStringLiteral("a b"), QStringLiteral("-x"),
                  QStringLiteral("--name=value"), QStringLiteral("--help"), QStringLiteral("-h"),
                  QStringLiteral("--"), QStringLiteral("--version"), QStringLiteral("show") }),
        0)
        << m_error.toStdString();
    EXPECT_TEXT(QStringLiteral("a b|-x|--name=value|--help|-h|--|--version|show\n"), m_output);
}

TEST_F(RunCommand, anErrorBeginsWithItsPlace)
{
    const QString path = script("print('before');\nfunction f() { missing(); }\nf();");
    EXPECT_EQ(run({ path }), 1);
    EXPECT_TEXT(QStringLiteral("before\n"), m_output);
    EXPECT_TEXT(QStringLiteral("%1:2: ReferenceError: Can't find variable: missing\n"
                               "    f() at %1:2\n    <global>() at %1:3\n")
                    .arg(path),
        m_error);
}

TEST_F(RunCommand, aSyntaxErrorRunsNothing)
{
    const QString path = script("print('before');\n\nvar x = ;\n");
    EXPECT_EQ(run({ path }), 1);
    EXPECT_TEXT(QString(), m_output);
    EXPECT_TEXT(path + QStringLiteral(":3: SyntaxError: Parse error\n"), m_error);
}

TEST_F(RunCommand, aScriptThatCannotBeReadFails)
{
    EXPECT_EQ(run({ m_folder.filePath(QStringLiteral("none.dsa")) }), 1);
    EXPECT_TEXT(QStringLiteral("vireo: cannot read %1: No such file or directory; check its name "
                               "and its permissions\n")
                    .arg(m_folder.filePath(QStringLiteral("none.dsa"))),
        m_error);
    EXPECT_EQ(run({ m_folder.path() }), 1);
    EXPECT_TEXT(
        QStringLiteral("vireo: cannot read %1: it is a folder; name a file\n").arg(m_folder.path()),
        m_error);
}

TEST_F(RunCommand, withoutAScriptItIsWrongUse)
{
    EXPECT_EQ(run({}), 2);
    EXPECT_TEXT(QString(), m_output);
    EXPECT_EQ(m_error.count(QLatin1Char('\n')), 1);
}

TEST_F(RunCommand, windowsAreRefused)
{
    EXPECT_EQ(run({ script("new VireoMatMatteBrick().runAction('VireoExportCodeAction')") }), 1);
    EXPECT_TRUE(m_error.contains(
        QLatin1String("runAction: VireoExportCodeAction needs a program with windows")))
        << m_error.toStdString();
}

TEST_F(RunCommand, aScriptThatTakesAllMemoryEndsWithOneLine)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has its own idea of memory";
#endif
    for (const char* code : { "var a = []; while (true) a.push(new Array(1000).join('text'));",
             "var a = []; while (true) a.push(new VireoMatMatteBrick());",
             "new Array(4294967295).join('text');" }) {
        QProcess process;
        process.start(QStringLiteral("/bin/sh"),
            { QStringLiteral("-c"), QStringLiteral("ulimit -v 350000; exec \"$@\""),
                QStringLiteral("sh"), QStringLiteral(VIREO_PROGRAM), QStringLiteral("run"),
                script(code) });
        ASSERT_TRUE(process.waitForFinished(120000)) << code;
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << code;
        EXPECT_EQ(process.exitCode(), 1) << code;
        EXPECT_TEXT(QStringLiteral("vireo: the script needs more memory than there is\n"),
            QString::fromUtf8(process.readAllStandardError()));
    }
}

TEST_F(RunCommand, aSmallScriptRunsWhereTheEngineCannotReserveWhatItLikes)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has its own idea of memory";
#endif
    QProcess process;
    process.start(QStringLiteral("/bin/sh"),
        { QStringLiteral("-c"), QStringLiteral("ulimit -v 1000000; exec \"$@\""),
            QStringLiteral("sh"), QStringLiteral(VIREO_PROGRAM), QStringLiteral("run"),
            script("print('hi'); for (var i = 0; i < 1000; ++i) eval('(function(){return 1})()');"
                   "print(new VireoMatMatteBrick().getBrickTitle())") });
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_TEXT(QString(), QString::fromUtf8(process.readAllStandardError()));
    EXPECT_TEXT(QStringLiteral("hi\nMatte\n"), QString::fromUtf8(process.readAllStandardOutput()));
    EXPECT_EQ(process.exitCode(), 0);
}

TEST_F(RunCommand, aScriptLeavesTheSystemAnEighthOfItsMemory)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has its own idea of memory";
#endif
    rlimit given;
    if (getrlimit(RLIMIT_AS, &given) != 0 || given.rlim_cur != RLIM_INFINITY)
        GTEST_SKIP() << "there is a limit already";
    // What the limit leaves beside what the program and its engine have reserved already.
    EXPECT_EQ(run({ script(
                  "var limit = /Max address space +([0-9]+)/.exec(readFile('/proc/self/limits'));"
                  "print(limit[1]); print(readFile('/proc/self/statm').split(' ')[0]);") }),
        0)
        << m_error.toStdString();
    const quint64 pageSize = static_cast<quint64>(sysconf(_SC_PAGESIZE));
    const quint64 limit = m_output.section('\n', 0, 0).toULongLong();
    const quint64 used = m_output.section('\n', 1, 1).toULongLong() * pageSize;
    const quint64 installed = static_cast<quint64>(sysconf(_SC_PHYS_PAGES)) * pageSize;
    ASSERT_GT(limit, used);
    EXPECT_LE(limit - used, installed - installed / 8);
    EXPECT_GT(limit - used, installed / 4);
}

TEST_F(RunCommand, aScriptThatCrashesTheEngineEndsWithOneLine)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has its own handlers";
#endif
    for (const char* code : { "var s = 'x'; for (var i = 0; i < 32; ++i) s += s; s.charAt(5);",
             "var s = ''; for (var i = 0; i < 20000; ++i) s += '('; "
             "for (i = 0; i < 20000; ++i) s += ')'; new RegExp(s).exec('x');" }) {
        QProcess process;
        process.start(QStringLiteral(VIREO_PROGRAM), { QStringLiteral("run"), script(code) });
        ASSERT_TRUE(process.waitForFinished(60000)) << code;
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << code;
        EXPECT_EQ(process.exitCode(), 1) << code;
        const QString error = QString::fromUtf8(process.readAllStandardError());
        EXPECT_TRUE(error.startsWith(QLatin1String("vireo: the script "))) << error.toStdString();
        EXPECT_EQ(error.count(QLatin1Char('\n')), 1) << error.toStdString();
    }
}

TEST_F(RunCommand, applyingToNothingIsAWarning)
{
    EXPECT_EQ(run({ script("new VireoBrickUser().applyToScene(); print('after');") }), 0)
        << m_error.toStdString();
    EXPECT_TEXT(QStringLiteral("after\n"), m_output);
    EXPECT_TEXT(QStringLiteral("vireo: warning: No material(s) selected\n"), m_error);
}

TEST_F(RunCommand, outputThatCannotBeWrittenIsAnError)
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    const QString path = script("\nprint('x')");
    process.start(QStringLiteral(VIREO_PROGRAM), { QStringLiteral("run"), path });
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 1);
    const QString error = QString::fromUtf8(process.readAllStandardError());
    EXPECT_TRUE(error.startsWith(
        path + QLatin1String(":2: Error: print: cannot write to standard output: ")))
        << error.toStdString();
}

TEST_F(RunCommand, anEndlessLoopIsStoppedFromTheKeyboard)
{
    for (const char* loop :
        { "while (true) ;", "function f() { try { f(); } finally { f(); } } f();",
            "while (true) writeFile(args[0], new Array(100000).join('text'));" }) {
        const QString target = m_folder.filePath(QStringLiteral("whole.txt"));
        QProcess process;
        const QByteArray code = QByteArray("writeFile(args[0], 'old'); print('started');") + loop;
        process.start(QStringLiteral(VIREO_PROGRAM),
            { QStringLiteral("run"), script(code.constData()), target });
        ASSERT_TRUE(process.waitForReadyRead(60000)) << loop;
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
        EXPECT_TRUE(process.waitForFinished(60000)) << loop;
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << loop;
        EXPECT_EQ(process.exitCode(), 130) << loop;
        QFile file(target);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(file.size() == 3 || file.size() == 4 * 99999) << loop << file.size();
        // No half-written file beside it.
        EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files).size(), 2) << loop;
    }
}
