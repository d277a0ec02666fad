// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ExportText.h"

namespace {

QString headingText(const char* heading)
{
    return exportSeparator() + QLatin1Char('\n') + QLatin1String(heading) + QLatin1Char('\n');
}

} // namespace

QString exportSeparator()
{
    // With the comment sign a line of 70 characters.
    return QLatin1Char('#') + QString(69, QLatin1Char('-'));
}

ExportText::ExportText(const QString& materialText, const QString& meshText)
{
    text = headingText("# Material Settings");
    materialBegin = text.size();
    text += materialText + QLatin1String("\n\n") + headingText("# Mesh Settings");
    meshBegin = text.size();
    text += meshText;
}
