// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickset.h"
#include "dzelement.h"
#include "dzrefcounteditem.h"

#include <QList>
#include <QStringList>
#include <QVector>
#include <memory>

class BrickJournal;
class DzBrickParam;
class DzRenderer;
class DzShaderString;
class FeedPlace;
class IDzBrickUser;

/// Base of all bricks: an element with parameters that can be linked to those of other bricks.
///
/// A brick owns its parameters. It belongs to at most one brick user, which holds a share of it.
class DzShaderBrick : public DzElement, public DzRefCountedItem
{
    Q_OBJECT

public:
    DzShaderBrick();
    /// Removes all links, leaves its user, deletes the parameters.
    ~DzShaderBrick() override;

    // Parameters.
    /// Adds a parameter at the end and takes ownership; false for one that has a brick already.
    bool addParameter(DzBrickParam* param);
    bool insertParameter(int index, DzBrickParam* param);
    /// Removes the parameter with its links; false when it is not this brick's.
    Q_INVOKABLE bool deleteParam(DzBrickParam* param);
    Q_INVOKABLE bool deleteParamByName(const QString& name);
    Q_INVOKABLE int getNumParameters() const { return m_params.size(); }
    Q_INVOKABLE DzBrickParam* getParameter(int index) const { return m_params.value(index); }
    /// The first parameter with this name, label or argument name; null when there is none.
    Q_INVOKABLE DzBrickParam* findParameterByName(const QString& name) const;
    Q_INVOKABLE DzBrickParam* findParameterByLabel(const QString& label) const;
    Q_INVOKABLE DzBrickParam* findParameterByArg(const QString& arg) const;
    Q_INVOKABLE int findParameterIndex(const DzBrickParam* param) const;
    /// Moves a parameter to another place in the order; false when it is not this brick's.
    Q_INVOKABLE bool changeParamIndex(DzBrickParam* param, int index);
    /// Brings the listed parameters into the given order; parameters that `order` leaves out keep
    /// their places.
    void setParameterOrder(const QVector<DzBrickParam*>& order);

    // Scoped variables: what bricks upstream of this one may rely on, and what this one needs.
    void addScopedParam(int type, const QString& name, int scope);
    void addRequiredParam(int type, const QString& name);
    Q_INVOKABLE int getNumScopedParams() const { return m_scoped.size(); }
    Q_INVOKABLE QString getScopedParamName(int index) const { return m_scoped.value(index).name; }
    Q_INVOKABLE int getScopedParamType(int index) const { return m_scoped.value(index).type; }
    Q_INVOKABLE int getNumRequiredScopedParams() const { return m_required.size(); }
    Q_INVOKABLE QString getRequiredScopedParam(int index) const
    {
        return m_required.value(index).name;
    }
    Q_INVOKABLE int getRequiredScopedParamType(int index) const
    {
        return m_required.value(index).type;
    }
    Q_INVOKABLE bool providesParam(const QString& name, int type) const;
    /// True when this brick provides every scoped variable that `other` needs to feed `param`.
    virtual bool providesParams(const DzShaderBrick* other, const DzBrickParam* param) const;

    // Links.
    /// True when the output of `source` may feed this brick without closing a loop. Asking for many
    /// links costs little more than making them: see FeedPlace.
    Q_INVOKABLE bool canBeFedBy(const DzShaderBrick* source) const;
    /// Removes every link of every parameter.
    Q_INVOKABLE void removeAllConnections();
    /// Removes links to bricks of another user than this brick's.
    void removeForeignConnections();

    // Identity.
    IDzBrickUser* getBrickUser() const { return m_user; }
    /// Number within the brick user, from 1; 0 without user.
    Q_INVOKABLE uint getBrickID() const { return m_id; }
    Q_INVOKABLE virtual QString getPreferredName() const = 0;
    Q_INVOKABLE virtual QString getDefaultCategory() const = 0;
    Q_INVOKABLE virtual QString getDescription() const { return QString(); }
    virtual DzBrickSet::ShaderType type() const = 0;
    /// Class names of the actions offered for the brick; an empty name is a separator.
    Q_INVOKABLE virtual QStringList getBrickActionList() const { return QStringList(); }
    /// Name of the class as it stands in files.
    virtual QString getStoredClassName() const { return className(); }
    /// Title shown on the canvas; the preferred name when none was given.
    Q_INVOKABLE QString getBrickTitle() const;
    Q_INVOKABLE void setBrickTitle(const QString& title);
    /// What the mixer keeps of the brick: title, place, size and other things. Owned by the brick.
    Q_INVOKABLE DzSettings* getBrickSettings() { return &m_brickSettings; }
    const DzSettings* getBrickSettings() const { return &m_brickSettings; }

    // Shader code for the host's own preview.
    virtual bool shouldSeperateLocalProperties() const { return true; }
    virtual void setGlobalBrickRenderSettings(DzBrickSet*, DzRenderer*) {}
    virtual void setBrickRenderSettings(DzBrickSet*, DzRenderer*) {}
    /// The caller owns the result.
    virtual DzShaderString* getBrickClassShaderCode() const;
    virtual DzShaderString* getShaderCodeCall(const QStringList& varCallNames) const;

    // DzElement
    void getAttributes(DzSettings* settings) const override;
    DzElement* setAttributes(const DzSettings* settings) override;
    bool isRecorded() const override;
    bool isRecordedFirst() const override;
    void pushUndoItem(DzUndoItem* item, const QString& caption) override;

    /// For the host's own sources.
    struct Access;

signals:
    void connectionsChanged();
    void paramAdded(DzShaderBrick* brick);
    void paramRemoved(DzShaderBrick* brick);
    void brickIDChanged(int oldID);
    void brickTitleChanged(const QString& title);

private:
    struct ScopedParam {
        int type = 0;
        QString name;
    };
    /// Members of the file that the brick was read from, by the tree they stood in.
    struct KeptTrees;

    /// True when a change of the list of parameters is to leave an undo item now.
    bool isListRecorded() const;
    void putOn(int index, DzBrickParam* param);
    int takeOff(DzBrickParam* param);
    void moveParam(DzBrickParam* param, int index);
    /// Called by a parameter that is deleted.
    void forget(DzBrickParam* param);
    void assignTitle(bool hasOne, const QString& title);
    void notifyConnectionsChanged();
    void readBrickProperties(const SettingsTree& settings);

    const std::unique_ptr<FeedPlace> m_place;
    BrickJournal* m_journal = nullptr;
    QVector<DzBrickParam*> m_params;
    /// Parameters that undo steps may put back.
    QVector<DzBrickParam*> m_paramsOff;
    QVector<ScopedParam> m_scoped;
    QVector<ScopedParam> m_required;
    IDzBrickUser* m_user = nullptr;
    uint m_id = 0;
    DzSettings m_brickSettings;
    std::unique_ptr<KeptTrees> m_kept;
};
