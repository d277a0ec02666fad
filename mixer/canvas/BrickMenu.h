// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>
#include <QPointer>

class DzBrickAction;
class DzShaderBrick;

/// The commands of one brick: what the brick lists itself, then the registered actions that no
/// brick lists. An empty name is a separator; names that lead nowhere are skipped. Whatever a
/// command changes in the brick is one undo step.
class BrickMenu : public QMenu
{
    Q_OBJECT

public:
    BrickMenu(DzShaderBrick* brick, QWidget* parent);

private:
    void addNamed(const QString& className);

    QPointer<DzShaderBrick> m_brick;
};
