// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

class DzBrickParam;
class DzProperty;
class VireoBrickBase;

/// One value or input of a brick under one name: an input with its properties, or a property
/// without input.
struct BrickInput {
    QString name;
    QString label;
    DzBrickParam* param; ///< null for a property without input
    QVector<DzProperty*> properties;
};

/// All values and inputs of a brick, properties without input first.
QVector<BrickInput> brickInputs(const VireoBrickBase* brick);
/// Kind, value, default and limits of all inputs as rows of a table, with a headline.
QVector<QStringList> inputTable(const VireoBrickBase* brick);
