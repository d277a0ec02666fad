// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// A brick class as tests/data/catalogue.tsv has it.
struct BrickRow {
    QString name;
    QString base;
    QString kind;
    QString type;
    QString label;
    QString category;
    QString output;
    QString identifier; ///< the ending of the class identifier
    bool isConverted;   ///< a surface of this type is rebuilt as this brick
};

/// All brick classes in the order of the table, the root first. It may be asked before main().
const QVector<BrickRow>& brickTable();
/// Their names.
QStringList brickClassNames();
/// The cells of the lines of one kind, such as "P", without that.
QVector<QStringList> catalogueLines(const QString& record);
