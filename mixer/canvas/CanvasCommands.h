// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <functional>

class CommandSet;
class NetworkView;

/// The commands of the canvas, a row each.
class CanvasCommands
{
    Q_DECLARE_TR_FUNCTIONS(CanvasCommands)

public:
    /// Adds them to a registry. They run on the canvas that `current` answers; none can run while
    /// it answers null.
    static void addTo(CommandSet* commands, const std::function<NetworkView*()>& current);

    /// Ids of those that line bricks up, which have a menu of their own.
    static const char* alignments();

private:
    struct Row;
    static QVector<Row> editRows();
    static QVector<Row> selectRows();
    static QVector<Row> brickRows();
    static QVector<Row> placeRows();
    static QVector<Row> lookRows();
};
