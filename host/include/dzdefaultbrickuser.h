// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzrefcounteditem.h"
#include "dzsettings.h"
#include "idzbrickuser.h"

#include <QHash>
#include <QMap>
#include <QVector>
#include <memory>

/// The common implementation of a brick user.
///
/// Bricks are numbered from 1 in order of adding; a number is never given twice in a network's
/// life, so that files and links keep their meaning.
class DzDefaultBrickUser : public virtual IDzBrickUser
{
public:
    DzDefaultBrickUser();
    ~DzDefaultBrickUser() override;

    QString getBrickUserName() const override { return m_name; }
    void setBrickUserName(const QString& name) override { m_name = name; }
    QUuid getIdentifier() const override { return m_identifier; }
    void setIdentifier(const QUuid& identifier) override { m_identifier = identifier; }

    uint addBrick(DzShaderBrick* brick) override;
    DzShaderBrick* getBrick(uint id) const override { return m_bricks.value(id); }
    void getBrickIDs(QList<uint>& ids) const override { ids += m_bricks.keys(); }
    int getNumBricks() const override { return m_bricks.size(); }
    bool deleteBrick(uint id) override;
    bool deleteBrick(DzShaderBrick* brick) override;
    void deleteAllBricks() override;
    bool moveBrick(uint id, IDzBrickUser* newOwner) override;

    int getNumBrickSets() const override;
    DzBrickSet* getBrickSet(int index) const override;
    void removeSet(DzBrickSet* set) override;
    void invalidateSets() override;
    void updateIdentifierOnSetInvalidate(bool onOff) override { m_updatesIdentifier = onOff; }

    bool isInEditMode() const override { return m_editMode; }
    void startEditMode() override { m_editMode = true; }
    void endEditMode() override { m_editMode = false; }

    bool usesLocalShaderSpace() const override { return false; }
    void brickIDChanged(int oldID) override;
    /// Properties belong to their bricks, whatever the brick: only the sets are made anew.
    void resolvePropertyOwnership(DzShaderBrick* brick) override;
    void generatingFilesStarted() override {}
    void generatingFilesFinished() override {}

    /// Writes the bricks with the given numbers, and the links among them, into `settings`.
    /// `names`, when not null, receives the name under which each brick was written.
    void getAttributesHelper(DzSettings* settings, const QList<uint>& ids,
        QHash<const DzShaderBrick*, QString>* names) const;
    /// Replaces the network by what `settings` holds. Whatever cannot be understood is kept, to be
    /// written back in its place, and named in a warning. `createdBricks`, when not null, receives
    /// the new bricks by the name they had in the settings.
    void setAttributesHelper(
        const DzSettings* settings, QHash<QString, DzShaderBrick*>* createdBricks);

    /// For the host's own sources.
    struct Access;

private:
    void forgetBrick(DzShaderBrick* brick) override;
    /// Puts a brick in under `id`, without asking and without undo.
    void attach(DzShaderBrick* brick, uint id);
    /// Takes a brick out, without undo. The caller holds a share of the brick.
    void detach(DzShaderBrick* brick);
    uint takeNextID() { return m_nextID++; }

    QMap<uint, DzShaderBrick*> m_bricks;
    uint m_nextID = 1;
    /// Counts the networks that were loaded, so that undo knows which one a brick was of.
    int m_generation = 0;
    QString m_name;
    QUuid m_identifier;
    bool m_editMode = false;
    bool m_updatesIdentifier = false;
    mutable bool m_setsValid = false;
    mutable QVector<DzBrickSet*> m_sets;
    /// What was read from a file and not understood, by the tree it stood in.
    struct KeptTrees;
    std::unique_ptr<KeptTrees> m_kept;
};
