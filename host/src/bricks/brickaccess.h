// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"
#include "dzshaderbrick.h"
#include "feedorder.h"
#include "idzbrickuser.h"
#include "settingstree.h"

class BrickJournal;

/// Members of the file that a brick was read from, by the tree they stood in.
struct DzShaderBrick::KeptTrees {
    std::unique_ptr<SettingsTree> brick;
    std::unique_ptr<SettingsTree> attributes;
    std::unique_ptr<SettingsTree> properties;
    std::unique_ptr<SettingsTree> parameters;
};

/// What the host's readers, writers and undo steps do with a brick.
struct DzShaderBrick::Access {
    typedef DzShaderBrick::KeptTrees KeptTrees;

    static FeedPlace* place(const DzShaderBrick* brick) { return brick->m_place.get(); }
    static std::unique_ptr<KeptTrees>& kept(DzShaderBrick* brick) { return brick->m_kept; }
    static const KeptTrees* kept(const DzShaderBrick* brick) { return brick->m_kept.get(); }
    static BrickJournal* journal(const DzShaderBrick* brick) { return brick->m_journal; }
    static void setJournal(DzShaderBrick* brick, BrickJournal* journal)
    {
        brick->m_journal = journal;
    }

    // Without asking and without undo.
    static void setMembership(DzShaderBrick* brick, IDzBrickUser* user, uint id)
    {
        brick->m_user = user;
        brick->m_id = id;
    }
    static void putOn(DzShaderBrick* brick, int index, DzBrickParam* param)
    {
        brick->putOn(index, param);
    }
    /// Removes the links too. The brick keeps the parameter in memory.
    static void takeOff(DzShaderBrick* brick, DzBrickParam* param) { brick->takeOff(param); }
    /// Called by a parameter that is deleted.
    static void forget(DzShaderBrick* brick, DzBrickParam* param) { brick->forget(param); }
    static void tellConnectionsChanged(DzShaderBrick* brick) { brick->notifyConnectionsChanged(); }
    static void move(DzShaderBrick* brick, DzBrickParam* param, int index)
    {
        brick->moveParam(param, index);
    }
    static void setTitle(DzShaderBrick* brick, bool hasOne, const QString& title)
    {
        brick->assignTitle(hasOne, title);
    }
};

/// What a brick tells its user.
struct IDzBrickUser::Access {
    static void forget(IDzBrickUser* user, DzShaderBrick* brick) { user->forgetBrick(brick); }
};

/// What the host's readers, writers and undo steps do with a parameter.
struct DzBrickParam::Access {
    typedef DzBrickParam::PeerPlace PeerPlace;

    static DzShaderBrick*& brick(DzBrickParam* param) { return param->m_brick; }
    static DzShaderBrick*& formerBrick(DzBrickParam* param) { return param->m_formerBrick; }
    /// How many undo steps may still put the parameter back on its brick.
    static int& numAddresses(DzBrickParam* param) { return param->m_numAddresses; }
    static std::unique_ptr<SettingsTree>& kept(DzBrickParam* param) { return param->m_keptMembers; }
    static const SettingsTree* kept(const DzBrickParam* param)
    {
        return param->m_keptMembers.get();
    }

    /// Counts up with every parameter that is made.
    static quint64 serial(const DzBrickParam* param) { return param->m_serial; }
    /// Made by the brick's attributes rather than by its class. Whoever makes it says so.
    static bool isCustom(const DzBrickParam* param)
    {
        return param->property("customInput").toBool();
    }
    static bool isRenamed(const DzBrickParam* param) { return param->m_isRenamed; }
    /// The argument name that the parameter had when it came to its brick.
    static QString originalArg(const DzBrickParam* param)
    {
        return param->m_isRenamed ? param->m_originalArg : param->getArg(0);
    }

    static int peerSlot(const DzBrickParam* param, int index) { return param->getPeerSlot(index); }
    /// True when a link that was there once, or that a file has, may be made now.
    static bool mayBeLinked(const DzBrickParam* a, const DzBrickParam* b)
    {
        return a->mayBeLinked(b);
    }

    // Without asking and without undo, but for links that would close a loop, which are refused.
    static bool link(DzBrickParam* a, DzBrickParam* b, int slotA = -1, int slotB = -1)
    {
        return a->link(b, slotA, slotB);
    }
    static void unlink(DzBrickParam* a, DzBrickParam* b) { a->unlinkSlot(a->findSlot(b)); }
    static void setConnections(DzBrickParam* param, const QVector<PeerPlace>& peers)
    {
        param->setConnections(peers);
    }
    static void setName(DzBrickParam* param, const QString& name) { param->assignName(name); }
    static void setLabel(DzBrickParam* param, const QString& label) { param->assignLabel(label); }
};
