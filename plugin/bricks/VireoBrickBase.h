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
    /// `imageFolder` and `textFolder` say how image files are named, see ImageFileNames.
    Q_INVOKABLE QVariantMap getSceneCode(bool literalValues, bool mapFiles = false,
        const QString& imageFolder = QString(), const QString& textFolder = QString());

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
    /// Index behind the last parameter that no user added: where the brick's own inputs end.
    int findOwnParamsEnd() const;
    /// Removes an input that a user added; any other parameter is left alone.
    Q_INVOKABLE void removeCustomParam(DzBrickParam* param);

protected:
    /// Writes one parameter, if it is one that writes.
    void writeParameter(DzBrickParam* param, SceneCodeWriter* writer);

    // Rows of the catalogue: inputs under "/General" that start with their recorded default. A
    // label that is not given equals the name.
    VireoExtPropertyParam* addColor(const char* name, const char* label, const QColor& color);
    VireoExtPropertyParam* addColor(
        const char* name, const char* label, int red, int green, int blue)
    {
        return addColor(name, label, QColor(red, green, blue));
    }
    VireoExtPropertyParam* addColor(const char* name, int red, int green, int blue)
    {
        return addColor(name, name, QColor(red, green, blue));
    }
    VireoExtPropertyParam* addBool(const char* name, const char* label, bool value);
    VireoExtPropertyParam* addBool(const char* name, bool value)
    {
        return addBool(name, name, value);
    }
    VireoExtPropertyParam* addInt(const char* name, int value);
    /// `value` is the index of an item.
    VireoExtPropertyParam* addEnum(const char* name, const QStringList& items, int value);
    VireoExtPropertyParam* addImage(const char* name);
    /// A float without limits. Its family says what default is recorded. `linkType` is FloatLink,
    /// FresnelLink or NoLink.
    VireoExtPropertyParam* addNumber(
        const char* name, const char* label, int linkType, float value, float defaultValue);
    /// The brick's output "result".
    void addResult(int linkType);

private:
    /// What the inputs of all kinds of properties have in common.
    struct PropertyRow {
        bool custom;
        QString path; ///< group under which the property is shown
        QString text; ///< by which the host maps the property to a variable of its shaders
        QString label;
        QString name;
        QString linkType; ///< name of the type; empty for a settings row
    };

    static PropertyRow catalogueRow(const char* name, const char* label, int linkType);
    VireoExtPropertyParam* addPropertyParam(const PropertyRow& row, DzProperty* property);
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
