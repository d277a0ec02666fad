// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QWidget;

enum class OverwriteAnswer { Cancel, Overwrite, SaveAs };

/// Asks what to do when a file is to be saved that another program changed meanwhile.
OverwriteAnswer askToOverwrite(QWidget* parent, const QString& title);
