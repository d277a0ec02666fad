// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CodeResult.h"
#include "dzsettings.h"
#include "dzshaderbrick.h"
#include "dzvec3.h"

#include <QColor>
#include <QList>
#include <QPointer>
#include <QStringList>
#include <QVariant>

class DzBrickParam;
class SceneCodeWriter;
class VireoExtComplexIn;
class VireoExtMatrixParam;
class VireoExtOutParam;
class VireoExtPropertyParam;
class VireoExtVec3Param;

/// Base of every brick of the plug-in: it creates properties with their inputs, keeps the inputs
/// that users added, and writes LuxRender text.
class VireoBrickBase : public DzShaderBrick
{
    Q_OBJECT

public:
    VireoBrickBase();
    ~VireoBrickBase() override;

    // DzElement
    DzElement* setAttributes(const DzSettings* settings) override;
    void getAttributes(DzSettings* settings) const override;

    // DzShaderBrick
    QStringList getBrickActionList() const override;
    /// Only bricks of this family can feed one another.
    bool providesParams(const DzShaderBrick* other, const DzBrickParam* param) const override;
    void setBrickRenderSettings(DzBrickSet* set, DzRenderer* renderer) override;
    DzShaderString* getShaderCodeCall(const QStringList& varCallNames) const override;

    /// Writes the brick's statement, after those of the bricks that feed it, and tells of it in
    /// `result`, which is returned. The base writes nothing.
    virtual CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer);
    /// Writes the lines of all parameters, in order.
    virtual void writeParameters(SceneCodeWriter* writer);
    /// The renderer's word for the kind of material, volume or texture; empty in the base.
    virtual QString getLuxType() const;

    /// The LuxRender text of the brick and what feeds it, for scripts and for programs that know
    /// the plug-in only by name; see sceneCodeMap() for what it holds. Empties the cache of
    /// generated code. With `mapFiles` a mapped "filename" is written as the name of its file.
    Q_INVOKABLE QVariantMap getSceneCode(bool literalValues, bool mapFiles = false);

    // Creating inputs. Each makes a host property with an input of the same name at the end of the
    // parameters, without undo. `custom` marks an input that a user added and may remove again.
    // An empty `linkType` makes a settings row: shown and edited, but not linked and not mapped.
    VireoExtPropertyParam* addFloatParam(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name, float value,
        float defaultValue, float min, float max, bool clamped, const QString& linkType);
    /// The same for an input that takes Fresnel textures.
    VireoExtPropertyParam* addFloatParamFlagged(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name, float value,
        float defaultValue, float min, float max, bool clamped, const QString& linkType);
    VireoExtPropertyParam* addIntParam(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name, int value,
        int defaultValue, int min, int max, bool clamped, const QString& linkType);
    /// `value` is the index of an item, and the default.
    VireoExtPropertyParam* addEnumParam(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name,
        const QStringList& items, int value, const QString& linkType);
    VireoExtPropertyParam* addColorParam(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name, const QColor& value,
        const QColor& defaultValue, const QString& linkType);
    VireoExtPropertyParam* addBoolParam(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name, bool value,
        bool defaultValue, const QString& linkType);
    VireoExtPropertyParam* addImageParam(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name,
        const QString& linkType);
    VireoExtPropertyParam* addStringParam(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name,
        const QString& linkType);
    VireoExtPropertyParam* addFileParam(bool custom, const QString& propertyPath,
        const QString& propertyText, const QString& label, const QString& name,
        const QString& linkType);
    /// `type` is the host's point, vector or normal type, or the link type that stands for it.
    VireoExtVec3Param* addVec3Param(bool custom, const QString& propertyPath, const QString& label,
        const QString& name, int type, const DzVec3& defaultValue, int direction);
    VireoExtMatrixParam* addMatrixParam(bool custom, const QString& propertyPath,
        const QString& label, const QString& name, bool shouldWriteToken, int direction);
    VireoExtComplexIn* addComplexInput(
        bool custom, int linkKind, const QString& name, const QString& label);
    /// Makes the input that stands for a link type, as a user adds it; null for other numbers.
    Q_INVOKABLE DzBrickParam* addCustomInput(
        int linkType, const QString& name, const QString& label, int direction);

    // Inputs that users added, in order of adding.
    QList<DzBrickParam*> getCustomParams() const;
    Q_INVOKABLE int getNumCustomParams() const;
    Q_INVOKABLE DzBrickParam* getCustomParam(int index) const;
    /// Index of the first of them among all parameters, -1 when there is none.
    int findFirstCustomParamIndex() const;
    /// Removes an input that a user added; any other parameter is left alone.
    Q_INVOKABLE void removeCustomParam(DzBrickParam* param);

protected:
    /// Writes one parameter, if it is one that writes.
    void writeParameter(DzBrickParam* param, SceneCodeWriter* writer);

    // Rows of the catalogue: inputs under "/General" whose label is given or equals the name.
    VireoExtPropertyParam* addFloatRow(
        const QString& name, const QString& label, float value, float defaultValue);
    VireoExtPropertyParam* addFresnelRow(
        const QString& name, const QString& label, float value, float defaultValue);
    VireoExtPropertyParam* addColorRow(
        const QString& name, const QString& label, const QColor& color);
    VireoExtPropertyParam* addBoolRow(const QString& name, const QString& label, bool value);
    VireoExtPropertyParam* addIntRow(const QString& name, const QString& label, int value);
    VireoExtPropertyParam* addEnumRow(
        const QString& name, const QString& label, const QStringList& items, int value);
    /// The brick's output "result".
    void addResult(int linkType);

private:
    VireoExtPropertyParam* addPropertyParam(bool custom, DzProperty* property,
        const QString& propertyPath, const QString& propertyText, const QString& label,
        const QString& name, const QString& linkType);
    void addToBrick(bool custom, DzBrickParam* param, const QString& name, const QString& label);
    void purgeCustomParams() const;
    void writeCustomParams(DzSettings* settings) const;
    QString nextEntryKey(int* position) const;
    void readCustomParams(const DzSettings& settings);
    bool readCustomParam(const DzSettings& entry, int position);

    /// Members of a custom input's entry in a file that are not understood.
    struct KeptMembers {
        QPointer<DzBrickParam> param;
        DzSettings members;
    };
    const DzSettings* keptMembersOf(const DzBrickParam* param) const;

    QList<QPointer<DzBrickParam>>* customParams;
    QList<KeptMembers> keptMembers;
    /// Entries of a file that make no input.
    DzSettings keptEntries;
};
