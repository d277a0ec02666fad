// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// The path of a file that is installed with the plug-in, such as the network that new documents
/// start with; empty when it is nowhere. It is looked for in the folder that the environment
/// variable VIREO_DATA_DIR names, then in "share/vireo" beside the program's folder.
QString findDataFile(const QString& name);

/// Paths of the installed example networks, by name.
QStringList findExamples();
