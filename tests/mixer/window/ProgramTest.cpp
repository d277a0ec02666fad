// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(MixerProgram, runningOutOfMemoryEndsOpeningAFileAndNotTheProgram)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has its own idea of memory";
#endif
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("wide.sskn"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{ \"a\": 1");
    for (int i = 0; i < 1500000; ++i)
        file.write(",\"k" + QByteArray::number(i) + "\":\"0123456789\"");
    file.write("}");
    file.close();

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("HOME"), folder.path());
    environment.insert(
        QStringLiteral("VIREO_AUTOSAVE_DIR"), folder.filePath(QStringLiteral("autosave")));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("/bin/sh"),
        { QStringLiteral("-c"), QStringLiteral("ulimit -v 300000; exec \"$@\""),
            QStringLiteral("sh"), QStringLiteral(VIREO_MIXER), path });
    QByteArray error;
    QElapsedTimer timer;
    timer.start();
    while (!error.contains("there is not enough memory") && process.state() != QProcess::NotRunning
        && timer.elapsed() < 60000) {
        process.waitForReadyRead(100);
        error += process.readAllStandardError();
    }
    EXPECT_TRUE(error.contains("vireo-mixer: warning: there is not enough memory"))
        << error.constData();
    EXPECT_FALSE(process.waitForFinished(1000));
    EXPECT_EQ(process.state(), QProcess::Running);
    process.kill();
    process.waitForFinished();
}
