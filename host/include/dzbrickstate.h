// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzshaderbrick.h"

#include <QPointer>
#include <QString>
#include <memory>

class BrickJournal;

/// What an action may change in a brick: its own properties, its inputs with their values and
/// order, and its links. Title, place and size on the canvas are not part of it.
class DzBrickState
{
public:
    /// The state that the brick is in now.
    explicit DzBrickState(const DzShaderBrick* brick);
    ~DzBrickState();

    /// Brings the brick back into this state, without undo. Inputs that were taken off meanwhile
    /// are put back, the very same ones. What cannot be had any more is left out, with a warning.
    void restore(DzShaderBrick* brick) const;

    bool operator==(const DzBrickState& other) const;
    bool operator!=(const DzBrickState& other) const { return !(*this == other); }

private:
    struct Data;

    std::unique_ptr<Data> m_data;
};

/// Makes one undo step of whatever happens to one brick in a scope, such as running an action or
/// changing a property that makes and removes inputs. Meanwhile the undo stack is locked, and each
/// change of the brick is noted, so that a step costs what was changed and not what there is.
/// Without accept() the brick is taken back to what it was.
class DzBrickStateHold
{
public:
    explicit DzBrickStateHold(DzShaderBrick* brick);
    ~DzBrickStateHold();

    /// Keeps the changes, as one step under this caption; no step when there are none.
    void accept(const QString& caption);

private:
    Q_DISABLE_COPY(DzBrickStateHold)

    /// Ends the noting of changes.
    std::unique_ptr<BrickJournal> close();

    QPointer<DzShaderBrick> m_brick;
    std::unique_ptr<BrickJournal> m_journal;
    BrickJournal* m_outer; ///< of a hold around this one
};
