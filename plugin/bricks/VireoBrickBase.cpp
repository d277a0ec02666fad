// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoBrickBase.h"

#include "LinkTypes.h"
#include "NetworkCode.h"
#include "PropertyDefaults.h"
#include "SceneCodeWriter.h"
#include "VireoExtComplexIn.h"
#include "VireoExtMatrixParam.h"
#include "VireoExtOutParam.h"
#include "VireoExtPropertyParam.h"
#include "VireoExtVec3Param.h"
#include "dzapp.h"
#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"
#include "dzshaderstring.h"
#include "dzstringproperty.h"
#include "dzundostack.h"

namespace {

const char* const lockParamName = "VireoBrickBaseLockParam";
const char* const customParamsKey = "VireoExtCustomParameters";
const char* const labelKey = "Label";
const char* const nameKey = "Name";
const char* const typeKey = "ExtTypeID";
const char* const directionKey = "Direction";

using PropertyDefaults::floatLimit;

/// Up to where sliders of whole numbers go, either way; other values can be typed.
const int intLimit = 1000;

QString entryKey(int position)
{
    return QString::fromLatin1("para%1").arg(position);
}

/// The whole number that a file stores as a float; 0 for one that is out of range.
int wholeNumber(double value)
{
    return value > -1e9 && value < 1e9 ? static_cast<int>(value) : 0;
}

// Properties as the creation operations make them. Value and default may differ, and the value
// comes last: it is what clamping is to leave.
DzFloatProperty* makeFloat(const QString& name, float value, float defaultValue,
    float min = -floatLimit, float max = floatLimit, bool clamped = false)
{
    DzFloatProperty* property = new DzFloatProperty(name, true, false, value);
    property->setMinMax(min, max);
    property->setIsClamped(clamped);
    property->setDefaultValue(defaultValue);
    property->setValue(value);
    return property;
}

DzIntProperty* makeInt(
    const QString& name, int value, int defaultValue, int min, int max, bool clamped)
{
    DzIntProperty* property = new DzIntProperty(name, true, false, value);
    property->setMinMax(min, max);
    property->setIsClamped(clamped);
    property->setDefaultValue(defaultValue);
    property->setValue(value);
    return property;
}

DzEnumProperty* makeEnum(const QString& name, const QStringList& items, int value)
{
    DzEnumProperty* property = new DzEnumProperty(name, true, false);
    for (int i = 0; i < items.size(); ++i)
        property->addItem(items.at(i));
    property->setDefaultValue(value);
    property->setValue(value);
    return property;
}

DzColorProperty* makeColor(const QString& name, const QColor& value, const QColor& defaultValue)
{
    DzColorProperty* property = new DzColorProperty(name, true, false, value);
    property->setDefaultColorValue(defaultValue);
    property->setColorValue(value);
    return property;
}

DzBoolProperty* makeBool(const QString& name, bool value, bool defaultValue)
{
    DzBoolProperty* property = new DzBoolProperty(name, true, false, value);
    property->setDefaultBoolValue(defaultValue);
    property->setBoolValue(value);
    return property;
}

} // namespace

VireoBrickBase::VireoBrickBase()
    : customParams(new QList<QPointer<DzBrickParam>>)
{
    // Provided and required alike, so that only bricks of this family can feed one another.
    addScopedParam(DzBrickParam::StringType, QLatin1String(lockParamName), -1);
    addRequiredParam(DzBrickParam::StringType, QLatin1String(lockParamName));
}

VireoBrickBase::~VireoBrickBase()
{
    delete customParams;
}

QStringList VireoBrickBase::getBrickActionList() const
{
    QStringList actions;
    actions << QString() << QLatin1String("VireoAddCustomExtInParamAction")
            << QLatin1String("VireoRemoveCustomExtInParamAction");
    return actions + DzShaderBrick::getBrickActionList();
}

bool VireoBrickBase::providesParams(const DzShaderBrick* other, const DzBrickParam* param) const
{
    return qobject_cast<const VireoBrickBase*>(other)
        && DzShaderBrick::providesParams(other, param);
}

void VireoBrickBase::setBrickRenderSettings(DzBrickSet*, DzRenderer*)
{
}

DzShaderString* VireoBrickBase::getShaderCodeCall(const QStringList&) const
{
    return new DzShaderString(QString());
}

CodeResult* VireoBrickBase::writeCode(CodeResult* result, SceneCodeWriter*)
{
    result->kind = CodeResult::NothingKind;
    result->name.clear();
    return result;
}

QVariantMap VireoBrickBase::getSceneCode(
    bool literalValues, bool mapFiles, const QString& imageFolder, const QString& textFolder)
{
    GenerateOptions options;
    options.literalValues = literalValues;
    options.mapFiles = mapFiles;
    options.imageNames.imageFolder = imageFolder;
    options.imageNames.textFolder = textFolder;
    return sceneCodeMap(this, generateCode(this, options));
}

void VireoBrickBase::writeParameters(SceneCodeWriter* writer)
{
    for (int i = 0; i < getNumParameters(); ++i)
        writeParameter(getParameter(i), writer);
}

void VireoBrickBase::writeParameter(DzBrickParam* param, SceneCodeWriter* writer)
{
    if (!param)
        return;
    VireoParam* writing = static_cast<VireoParam*>(param->qt_metacast("VireoParam"));
    if (!writing)
        return;
    // This one class writes its scale by itself, as a texture of its own.
    if (param->getName() == QLatin1String("scale") && inherits("VireoTexClrConstantBrick"))
        return;
    writing->writeParameterCode(writer);
}

QString VireoBrickBase::getLuxType() const
{
    return QString();
}

VireoExtPropertyParam* VireoBrickBase::addPropertyParam(
    const PropertyRow& row, DzProperty* property)
{
    VireoExtPropertyParam* param = new VireoExtPropertyParam;
    property->setLabel(row.label);
    if (!row.linkType.isEmpty()) {
        if (DzNumericProperty* numeric = qobject_cast<DzNumericProperty*>(property))
            numeric->setIsMappable(true);
        param->setDirection(DzBrickParam::InputDirection);
    }
    param->setProperty(property, row.text, row.linkType);
    param->setPropertyPath(0, row.path);
    addToBrick(row.custom, param, row.name, row.label);
    return param;
}

void VireoBrickBase::addToBrick(
    bool custom, DzBrickParam* param, const QString& name, const QString& label)
{
    param->setName(name);
    param->DzBrickParam::setLabel(label);
    // The host has to know which inputs the attributes make, and has no function to be told.
    if (custom)
        param->setProperty("customInput", true);
    addParameter(param);
    if (custom)
        customParams->append(QPointer<DzBrickParam>(param));
}

VireoExtPropertyParam* VireoBrickBase::addFloatParam(bool custom, const QString& propertyPath,
    const QString& propertyText, const QString& label, const QString& name, float value,
    float defaultValue, float min, float max, bool clamped, const QString& linkType)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        PropertyRow { custom, propertyPath, propertyText, label, name, linkType },
        makeFloat(name, value, defaultValue, min, max, clamped));
}

VireoExtPropertyParam* VireoBrickBase::addFloatParamFlagged(bool custom,
    const QString& propertyPath, const QString& propertyText, const QString& label,
    const QString& name, float value, float defaultValue, float min, float max, bool clamped,
    const QString& linkType)
{
    VireoExtPropertyParam* param = addFloatParam(custom, propertyPath, propertyText, label, name,
        value, defaultValue, min, max, clamped, linkType);
    param->setFresnel(true);
    return param;
}

VireoExtPropertyParam* VireoBrickBase::addIntParam(bool custom, const QString& propertyPath,
    const QString& propertyText, const QString& label, const QString& name, int value,
    int defaultValue, int min, int max, bool clamped, const QString& linkType)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        PropertyRow { custom, propertyPath, propertyText, label, name, linkType },
        makeInt(name, value, defaultValue, min, max, clamped));
}

VireoExtPropertyParam* VireoBrickBase::addEnumParam(bool custom, const QString& propertyPath,
    const QString& propertyText, const QString& label, const QString& name,
    const QStringList& items, int value, const QString& linkType)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        PropertyRow { custom, propertyPath, propertyText, label, name, linkType },
        makeEnum(name, items, value));
}

VireoExtPropertyParam* VireoBrickBase::addColorParam(bool custom, const QString& propertyPath,
    const QString& propertyText, const QString& label, const QString& name, const QColor& value,
    const QColor& defaultValue, const QString& linkType)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        PropertyRow { custom, propertyPath, propertyText, label, name, linkType },
        makeColor(name, value, defaultValue));
}

VireoExtPropertyParam* VireoBrickBase::addBoolParam(bool custom, const QString& propertyPath,
    const QString& propertyText, const QString& label, const QString& name, bool value,
    bool defaultValue, const QString& linkType)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        PropertyRow { custom, propertyPath, propertyText, label, name, linkType },
        makeBool(name, value, defaultValue));
}

VireoExtPropertyParam* VireoBrickBase::addImageParam(bool custom, const QString& propertyPath,
    const QString& propertyText, const QString& label, const QString& name, const QString& linkType)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        PropertyRow { custom, propertyPath, propertyText, label, name, linkType },
        new DzImageProperty(name, true));
}

VireoExtPropertyParam* VireoBrickBase::addStringParam(bool custom, const QString& propertyPath,
    const QString& propertyText, const QString& label, const QString& name, const QString& linkType)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        PropertyRow { custom, propertyPath, propertyText, label, name, linkType },
        new DzStringProperty(name, true));
}

VireoExtPropertyParam* VireoBrickBase::addFileParam(bool custom, const QString& propertyPath,
    const QString& propertyText, const QString& label, const QString& name, const QString& linkType)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        PropertyRow { custom, propertyPath, propertyText, label, name, linkType },
        new DzFileProperty(name, true));
}

VireoExtVec3Param* VireoBrickBase::addVec3Param(bool custom, const QString& propertyPath,
    const QString& label, const QString& name, int type, const DzVec3& defaultValue, int direction)
{
    DzUndoStackLock lock;
    VireoExtVec3Param* param = new VireoExtVec3Param(hostTypeFor(type), defaultValue);
    param->setDirection(direction);
    for (int i = 0; i < param->getNumProperties(); ++i)
        param->setPropertyPath(i, propertyPath);
    addToBrick(custom, param, name, label);
    return param;
}

VireoExtMatrixParam* VireoBrickBase::addMatrixParam(bool custom, const QString& propertyPath,
    const QString& label, const QString& name, bool shouldWriteToken, int direction)
{
    DzUndoStackLock lock;
    VireoExtMatrixParam* param = new VireoExtMatrixParam;
    param->setShouldWriteTokenInShader(shouldWriteToken);
    param->setDirection(direction);
    for (int i = 0; i < param->getNumProperties(); ++i)
        param->setPropertyPath(i, propertyPath);
    addToBrick(custom, param, name, label);
    return param;
}

VireoExtComplexIn* VireoBrickBase::addComplexInput(
    bool custom, int linkKind, const QString& name, const QString& label)
{
    DzUndoStackLock lock;
    VireoExtComplexIn* param = new VireoExtComplexIn;
    param->setArgName(name);
    param->setLinkType(linkKind);
    addToBrick(custom, param, name, label);
    // The host's other parameters have their names follow by themselves.
    QObject::connect(param, SIGNAL(nameChanged(QString)), param, SLOT(setArgName(QString)));
    return param;
}

DzBrickParam* VireoBrickBase::addCustomInput(
    int linkType, const QString& name, const QString& label, int direction)
{
    const QString path = PropertyDefaults::path();
    const QString typeName = linkTypeName(linkType);
    switch (linkType) {
    case MaterialLink:
    case VolumeLink:
        return addComplexInput(true, linkType, name, label);
    case FloatLink:
        return addFloatParam(
            true, path, name, label, name, 0, 0, -floatLimit, floatLimit, false, typeName);
    case FresnelLink:
        return addFloatParamFlagged(
            true, path, name, label, name, 0, 0, -floatLimit, floatLimit, false, typeName);
    case ColorLink:
        return addColorParam(true, path, name, label, name, QColor(), QColor(), typeName);
    case StringLink:
        return addStringParam(true, path, name, label, name, typeName);
    case PointLink:
    case VectorLink:
    case NormalLink:
        return addVec3Param(true, path, label, name, linkType, DzVec3(), direction);
    case MatrixLink:
        return addMatrixParam(true, path, label, name, false, direction);
    default:
        return nullptr;
    }
}

void VireoBrickBase::purgeCustomParams() const
{
    customParams->removeAll(QPointer<DzBrickParam>());
}

/// The listed inputs that are on the brick: undo may hold one that was taken off.
QList<DzBrickParam*> VireoBrickBase::getCustomParams() const
{
    purgeCustomParams();
    QList<DzBrickParam*> present;
    for (int i = 0; i < customParams->size(); ++i)
        if (customParams->at(i)->getTopBrickOwner() == this)
            present.append(customParams->at(i));
    return present;
}

int VireoBrickBase::getNumCustomParams() const
{
    return getCustomParams().size();
}

DzBrickParam* VireoBrickBase::getCustomParam(int index) const
{
    return getCustomParams().value(index);
}

int VireoBrickBase::findOwnParamsEnd() const
{
    purgeCustomParams();
    int end = getNumParameters();
    while (end > 0 && customParams->contains(QPointer<DzBrickParam>(getParameter(end - 1))))
        --end;
    return end;
}

void VireoBrickBase::removeCustomParam(DzBrickParam* param)
{
    // Undo of the whole brick is up to whoever lets the user remove the input.
    DzUndoStackLock lock;
    // It stays listed: undo may put the very same input back.
    if (param && getCustomParams().contains(param))
        deleteParam(param);
}

void VireoBrickBase::getAttributes(DzSettings* settings) const
{
    writeCustomParams(settings->setSettingsValue(QLatin1String(customParamsKey)));
    DzShaderBrick::getAttributes(settings);
}

const DzSettings* VireoBrickBase::keptMembersOf(const DzBrickParam* param) const
{
    for (int i = 0; i < keptMembers.size(); ++i)
        if (keptMembers.at(i).param == param)
            return &keptMembers.at(i).members;
    return nullptr;
}

/// The next entry's key that no kept plain value has.
QString VireoBrickBase::nextEntryKey(int* position) const
{
    for (;;) {
        const QString key = entryKey((*position)++);
        const int index = keptEntries.getSettingIndex(key);
        if (index < 0 || keptEntries.getValueType(index) == DzSettings::SettingsValue)
            return key;
    }
}

void VireoBrickBase::writeCustomParams(DzSettings* settings) const
{
    int position = 0;
    const QList<DzBrickParam*> params = getCustomParams();
    for (int i = 0; i < params.size(); ++i) {
        const DzBrickParam* param = params.at(i);
        DzSettings* entry = settings->setSettingsValue(nextEntryKey(&position));
        if (const DzSettings* kept = keptMembersOf(param))
            entry->replaceWithSettings(*kept);
        entry->setStringValue(QLatin1String(labelKey), param->getLabel());
        entry->setStringValue(QLatin1String(nameKey), param->getName());
        // Whole numbers are stored as floats.
        entry->setFloatValue(QLatin1String(typeKey), param->getType());
        entry->setFloatValue(QLatin1String(directionKey), param->getDirection());
    }
    for (int i = 0; i < keptEntries.getNumValues(); ++i) {
        const QString key = keptEntries.getKey(i);
        if (const DzSettings* entry = keptEntries.getSettingsValue(key))
            settings->setSettingsValue(nextEntryKey(&position), *entry);
        else
            keptEntries.copySetting(key, settings);
    }
}

DzElement* VireoBrickBase::setAttributes(const DzSettings* settings)
{
    if (!settings)
        return DzShaderBrick::setAttributes(settings);
    {
        DzUndoStackLock lock;
        // Inputs that undo may put back stay listed, with what is kept for them.
        const QList<DzBrickParam*> before = getCustomParams();
        for (int i = before.size() - 1; i >= 0; --i)
            deleteParam(before.at(i));
        purgeCustomParams();
        for (int i = keptMembers.size() - 1; i >= 0; --i)
            if (!keptMembers.at(i).param)
                keptMembers.removeAt(i);
        keptEntries.clear();
        if (const DzSettings* stored = settings->getSettingsValue(QLatin1String(customParamsKey)))
            readCustomParams(*stored);
    }
    return DzShaderBrick::setAttributes(settings);
}

void VireoBrickBase::readCustomParams(const DzSettings& settings)
{
    for (int i = 0; i < settings.getNumValues(); ++i) {
        const QString key = settings.getKey(i);
        const DzSettings* entry = settings.getSettingsValue(key);
        if (entry && readCustomParam(*entry, i))
            continue;
        settings.copySetting(key, &keptEntries);
        dzApp->warning(tr("%1: the custom input \"%2\" is of a kind that this program does not "
                          "know; its data is kept")
                           .arg(getPreferredName(), key));
    }
}

bool VireoBrickBase::readCustomParam(const DzSettings& entry, int position)
{
    const QString fallback = QString::fromLatin1("arg_%1").arg(position);
    const int linkType = wholeNumber(entry.getFloatValue(QLatin1String(typeKey), 0));
    const QString label = entry.getStringValue(QLatin1String(labelKey), fallback);
    const QString name = entry.getStringValue(QLatin1String(nameKey), fallback);
    const int direction = wholeNumber(
        entry.getFloatValue(QLatin1String(directionKey), DzBrickParam::SettingsDirection));
    DzBrickParam* param = addCustomInput(linkType, name, label, direction);
    if (!param)
        return false;
    static const char* const understood[] = { labelKey, nameKey, typeKey, directionKey };
    int known = 0;
    for (int i = 0; i < 4; ++i)
        known += entry.getSettingIndex(QLatin1String(understood[i])) >= 0 ? 1 : 0;
    for (int i = 0; i < 2; ++i) {
        const int index = entry.getSettingIndex(QLatin1String(understood[i]));
        if (index >= 0 && entry.getValueType(index) != DzSettings::StringValue)
            dzApp->warning(tr("%1: the custom input \"%2\" has a \"%3\" that is not text; it gets "
                              "another")
                               .arg(getPreferredName(), name, QLatin1String(understood[i])));
    }
    if (known < entry.getNumValues()) {
        KeptMembers kept;
        kept.param = param;
        kept.members = entry;
        keptMembers.append(kept);
    }
    return true;
}

VireoBrickBase::PropertyRow VireoBrickBase::catalogueRow(
    const char* name, const char* label, int linkType)
{
    const QLatin1String text(name);
    return PropertyRow { false, PropertyDefaults::path(), text, QLatin1String(label), text,
        linkTypeName(linkType) };
}

VireoExtPropertyParam* VireoBrickBase::addNumber(
    const char* name, const char* label, int linkType, float value, float defaultValue)
{
    DzUndoStackLock lock;
    VireoExtPropertyParam* param = addPropertyParam(
        catalogueRow(name, label, linkType), makeFloat(QLatin1String(name), value, defaultValue));
    param->setFresnel(linkType == FresnelLink);
    return param;
}

VireoExtPropertyParam* VireoBrickBase::addColor(
    const char* name, const char* label, const QColor& color)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        catalogueRow(name, label, ColorLink), makeColor(QLatin1String(name), color, color));
}

VireoExtPropertyParam* VireoBrickBase::addBool(const char* name, const char* label, bool value)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        catalogueRow(name, label, NoLink), makeBool(QLatin1String(name), value, value));
}

VireoExtPropertyParam* VireoBrickBase::addInt(const char* name, int value)
{
    DzUndoStackLock lock;
    return addPropertyParam(catalogueRow(name, name, NoLink),
        makeInt(QLatin1String(name), value, value, -intLimit, intLimit, false));
}

VireoExtPropertyParam* VireoBrickBase::addEnum(
    const char* name, const QStringList& items, int value)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        catalogueRow(name, name, NoLink), makeEnum(QLatin1String(name), items, value));
}

VireoExtPropertyParam* VireoBrickBase::addImage(const char* name)
{
    DzUndoStackLock lock;
    return addPropertyParam(
        catalogueRow(name, name, NoLink), new DzImageProperty(QLatin1String(name), true));
}

void VireoBrickBase::addResult(int linkType)
{
    DzUndoStackLock lock;
    VireoExtOutParam* result = new VireoExtOutParam;
    result->setLinkType(linkType);
    addToBrick(false, result, QLatin1String("result"), QLatin1String("Result"));
}
