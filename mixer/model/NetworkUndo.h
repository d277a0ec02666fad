// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzsettings.h"
#include "dzundostack.h"

#include <QPointF>
#include <QPointer>
#include <QVector>

class DzShaderBrick;
class NetworkEdit;

/// The moving of bricks: places only, for moves are many and large.
class BrickMoveItem : public DzUndoItem
{
public:
    struct Entry {
        /// The brick with its place as it is.
        Entry(DzShaderBrick* moved, const QPointF& place);
        Entry() {}

        QPointer<DzShaderBrick> brick;
        QPointF before;
        QPointF after;
        bool hadPlace = false;
    };

    BrickMoveItem(NetworkEdit* edit, const QVector<Entry>& entries);

    void undo() override { place(false); }
    void redo() override { place(true); }

private:
    void place(bool isAfter);

    QPointer<NetworkEdit> m_edit; ///< the step outlives the tab that it was made in
    QVector<Entry> m_entries;
};

/// Any other change of one brick's settings.
class BrickSettingsItem : public DzUndoItem
{
public:
    /// To be made after the change; `before` are the settings as they were.
    BrickSettingsItem(NetworkEdit* edit, DzShaderBrick* brick, const DzSettings& before);

    void undo() override { restore(m_before); }
    void redo() override { restore(m_after); }

    /// Tells everybody that the settings are not `before` any more.
    static void tell(NetworkEdit* edit, DzShaderBrick* brick, const DzSettings& before);

private:
    void restore(const DzSettings& settings);

    QPointer<NetworkEdit> m_edit;
    QPointer<DzShaderBrick> m_brick;
    DzSettings m_before;
    DzSettings m_after;
};
