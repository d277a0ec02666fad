// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CliSupport.h"

#include "TestSupport.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

Outcome runVireo(const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(QStringLiteral(VIREO_SOURCE_DIR));
    process.start(QStringLiteral(VIREO_PROGRAM), arguments);
    EXPECT_TRUE(process.waitForFinished(60000)) << arguments.join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return Outcome { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError()) };
}

void expectDone(const Outcome& outcome)
{
    EXPECT_EQ(outcome.exitCode, 0) << outcome.error.toStdString();
    EXPECT_TEXT(QString(), outcome.error);
}

void expectFailure(const Outcome& outcome, int exitCode, const QStringList& words)
{
    EXPECT_EQ(outcome.exitCode, exitCode) << outcome.error.toStdString();
    EXPECT_TEXT(QString(), outcome.output);
    EXPECT_EQ(outcome.error.count(QLatin1Char('\n')), 1) << outcome.error.toStdString();
    EXPECT_TRUE(outcome.error.startsWith(QLatin1String("vireo: "))) << outcome.error.toStdString();
    for (const QString& word : words)
        EXPECT_TRUE(outcome.error.contains(word))
            << word.toStdString() << " is not in: " << outcome.error.toStdString();
}

QString writeFile(const QTemporaryDir& folder, const QString& name, const QByteArray& content)
{
    const QString path = folder.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
    return path;
}
