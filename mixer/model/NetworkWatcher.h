// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QSet>

class DzProperty;
class DzShaderBrick;
class IDzBrickUser;

/// Tells of every change in a network: bricks, inputs, links, titles, values, maps and locks.
/// Where bricks stand on the canvas is no change of the network.
class NetworkWatcher : public QObject
{
    Q_OBJECT

public:
    /// `user` outlives the watcher.
    explicit NetworkWatcher(IDzBrickUser* user);

    /// Looks which bricks are there: after loading, and where a brick may have come unannounced.
    void rescan();

signals:
    /// Bricks, inputs or links came or went, or a title changed.
    void structureChanged();
    /// A value, a map or a lock changed.
    void propertyChanged(DzProperty* property);

private slots:
    void brickAdded(DzShaderBrick* brick);
    void brickRemoved(DzShaderBrick* brick);
    void parametersChanged(DzShaderBrick* brick);
    void ownPropertyChanged();
    void rescanIfNeeded();

private:
    void watch(DzShaderBrick* brick);
    void watchProperties(DzShaderBrick* brick);

    IDzBrickUser* m_user;
    QSet<DzShaderBrick*> m_bricks; // compared only: one may be gone
};
