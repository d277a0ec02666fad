// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ProblemLevel.h"

#include <QCoreApplication>

QColor levelColor(ProblemLevel level)
{
    switch (level) {
    case ProblemLevel::Stops:
        return QColor(0xd8, 0x48, 0x3c);
    case ProblemLevel::Warns:
        return QColor(0xe8, 0xa0, 0x20);
    case ProblemLevel::Notes:
        break;
    }
    return QColor(0x5c, 0x96, 0xc8);
}

QString levelText(ProblemLevel level)
{
    switch (level) {
    case ProblemLevel::Stops:
        return QCoreApplication::translate("ProblemLevel", "It does not render");
    case ProblemLevel::Warns:
        return QCoreApplication::translate("ProblemLevel", "The picture may surprise you");
    case ProblemLevel::Notes:
        break;
    }
    return QCoreApplication::translate("ProblemLevel", "Something is not read");
}
