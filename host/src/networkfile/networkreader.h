// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "paramkeys.h"
#include "useraccess.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QVector>

class SettingsTree;
class DzShaderBrick;
class DzUnknownBrick;
struct DzWarning;

/// Builds a brick user's network from a settings tree.
class DzNetworkReader
{
public:
    explicit DzNetworkReader(DzDefaultBrickUser& user);

    void read(const SettingsTree& setup);
    const QHash<QString, DzShaderBrick*>& createdBricks() const { return m_bricks; }

private:
    void readBricks(const SettingsTree& bricks);
    DzShaderBrick* makeBrick(const QString& name, const SettingsTree& stored);
    void readAttributes(const QString& name, DzShaderBrick* brick, const SettingsTree& tree);
    void readParameters(const QString& name, DzShaderBrick* brick, const SettingsTree& tree);
    DzBrickParam* findOriginal(
        const ParamKeys& keys, const SettingsTree& members, QSet<QString>* others) const;
    void restoreOrder(DzShaderBrick* brick, const QVector<DzBrickParam*>& order);
    void addMissingPlaces(DzShaderBrick* brick);
    void readConnections(const SettingsTree& connections);
    /// Makes one link. When it cannot be made, says why in the warning, and whether its entry is to
    /// be kept.
    bool readConnection(const SettingsTree& link, DzWarning* warning, bool* isKept);
    DzBrickParam* findParam(const QString& brickName, const QString& key, bool isOutput);
    void keepLink(const QString& key, const SettingsTree& link);
    /// Does what follows for all bricks that links name.
    void keepNumbersIn(const SettingsTree& connections);
    /// Sees to it that the number in a name that is kept is not given to another brick.
    void keepNumber(const QString& brickName);

    DzDefaultBrickUser& m_user;
    std::unique_ptr<DzDefaultBrickUser::Access::KeptTrees>& m_kept;
    QHash<QString, DzShaderBrick*> m_bricks;
    QHash<const DzShaderBrick*, ParamKeys> m_keys;
    /// Per class, the members of "Attributes" that bricks of the class write by themselves.
    QHash<QString, QVector<QString>> m_ownAttributes;
};
