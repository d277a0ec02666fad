// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

class QTemporaryDir;

/// How a run of the program ended.
struct Outcome {
    int exitCode;
    QString output;
    QString error;
};

/// Runs `vireo` in the project's folder.
Outcome runVireo(const QStringList& arguments,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

/// Exit code 0 and nothing on standard error.
void expectDone(const Outcome& outcome);
/// A failure is one line that begins with the program's name, and nothing on standard output.
void expectFailure(const Outcome& outcome, int exitCode, const QStringList& words);

/// Writes a file into the folder and returns its path.
QString writeFile(const QTemporaryDir& folder, const QString& name, const QByteArray& content);
