// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickTable.h"

#include <QFile>

namespace {

QVector<BrickRow> readBricks()
{
    QVector<BrickRow> bricks;
    for (QStringList cells : catalogueLines(QStringLiteral("B"))) {
        // One that lacks a cell shows up as a brick without identifier.
        while (cells.size() < 9)
            cells.append(QString());
        bricks.append({ cells[0], cells[1], cells[2], cells[3], cells[4], cells[5], cells[6],
            cells[7], cells[8] == QLatin1String("1") });
    }
    return bricks;
}

} // namespace

const QVector<BrickRow>& brickTable()
{
    static const QVector<BrickRow> bricks = readBricks();
    return bricks;
}

QStringList brickClassNames()
{
    QStringList names;
    for (const BrickRow& brick : brickTable())
        names.append(brick.name);
    return names;
}

QVector<QStringList> catalogueLines(const QString& record)
{
    QVector<QStringList> lines;
    QFile file(QStringLiteral(VIREO_SOURCE_DIR "/tests/data/catalogue.tsv"));
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        QStringList cells = line.split(QLatin1Char('\t'));
        if (cells.takeFirst() == record)
            lines.append(cells);
    }
    return lines;
}
