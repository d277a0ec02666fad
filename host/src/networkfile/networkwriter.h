// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzrefcounteditem.h"
#include "paramkeys.h"

#include <QHash>
#include <QList>
#include <QString>

class DzDefaultBrickUser;
class SettingsTree;
class DzShaderBrick;
class DzUnknownBrick;

/// Writes bricks of a brick user, and the links among them, into a settings tree.
class DzNetworkWriter
{
public:
    explicit DzNetworkWriter(const DzDefaultBrickUser& user);
    ~DzNetworkWriter();

    void write(
        SettingsTree* out, const QList<uint>& ids, QHash<const DzShaderBrick*, QString>* names);

private:
    typedef DzTSharedPointer<DzShaderBrick> BrickPtr;

    void writeBrick(SettingsTree* out, const DzShaderBrick* brick);
    void writeUnknownBrick(SettingsTree* out, const DzUnknownBrick* brick);
    void writeAttributes(SettingsTree* out, const DzShaderBrick* brick, const DzShaderBrick* fresh);
    void writeParameters(SettingsTree* out, const DzShaderBrick* brick, const DzShaderBrick* fresh);
    void writeConnections(SettingsTree* out, const QList<uint>& ids);
    /// A brick of the same class as a user would get it now; null when none can be made.
    const DzShaderBrick* freshBrick(const QString& className);
    /// The same for this very brick: with the parameters that its attributes give it.
    BrickPtr freshWithAttributes(const DzShaderBrick* brick);

    /// The keys of such a brick's parameters, found once for all bricks of its class.
    ParamKeys freshKeys(const DzShaderBrick* fresh);
    bool wouldBeMade(const SettingsTree& link);
    /// The key of a parameter of a brick that may have very many.
    QString keyOf(const DzBrickParam* param);

    const DzDefaultBrickUser& m_user;
    QHash<QString, BrickPtr> m_fresh;
    QHash<const DzShaderBrick*, ParamKeys> m_freshKeys;
    QHash<const DzShaderBrick*, ParamKeys> m_largeBricks;
};
