// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "keptmembers.h"

#include "brickaccess.h"
#include "dzwarning.h"
#include "propertyaccess.h"

namespace {

const char* const valueKey = "Value";
/// Only files that describe properties in full have this member.
const char* const fullFormKey = "CanAnimate";

QString propertyKey(int index)
{
    static const QString first = QStringLiteral("Prop_0");
    return index == 0 ? first : QStringLiteral("Prop_%1").arg(index);
}

void setPlace(SettingsTree* settings, const QString& key)
{
    settings->setOpaqueValue(key, QByteArray());
}

bool isText(const SettingsTree& tree, const QString& key)
{
    const int index = tree.getSettingIndex(key);
    return index >= 0 && tree.getValueType(index) == DzSettings::StringValue;
}

/// True when a file with the one reads like a file with the other: halves of characters are lost
/// there.
bool readsAlike(const SettingsTree& a, const SettingsTree& b, const QString& key)
{
    return a.hasEqualValue(b, key)
        || (isText(a, key) && isText(b, key)
            && a.getStringValue(key).toUtf8() == b.getStringValue(key).toUtf8());
}

/// True when nothing of what is kept for a property remains, so that the file is to be read again
/// as if nothing had been kept.
bool isOutlived(const SettingsTree& kept, const SettingsTree& full, const SettingsTree& usual)
{
    if (kept.hasKey(QString::fromLatin1(fullFormKey)))
        return false;
    for (int i = 0; i < kept.getNumValues(); ++i) {
        const QString key = kept.getKey(i);
        if (!DzKeptMembers::isPlace(kept, key)
            && (!full.hasKey(key) || readsAlike(full, usual, key)))
            return false;
    }
    return true;
}

bool isPlaceAt(const SettingsTree& out, int index)
{
    return out.getValueType(index) == DzSettings::OpaqueValue
        && out.getOpaqueValueAt(index).isEmpty();
}

/// A place for each member of `read` that is understood, and every other member as it is.
std::unique_ptr<SettingsTree> layoutOf(
    const SettingsTree& read, const DzKeptMembers::KeyTest& understood)
{
    std::unique_ptr<SettingsTree> layout(new SettingsTree);
    for (int i = 0; i < read.getNumValues(); ++i) {
        const QString key = read.getKey(i);
        if (understood(key))
            setPlace(layout.get(), key);
        else
            read.copySetting(key, layout.get());
    }
    return layout;
}

} // namespace

std::unique_ptr<SettingsTree> DzKeptMembers::remember(
    const SettingsTree& read, const KeyTest& understood)
{
    for (int i = 0; i < read.getNumValues(); ++i)
        if (!understood(read.getKey(i)))
            return layoutOf(read, understood);
    return nullptr;
}

std::unique_ptr<SettingsTree> DzKeptMembers::rememberTrees(const SettingsTree& read,
    const KeyTest& understood, const KeyTest& isTree, const QString& place)
{
    std::unique_ptr<SettingsTree> kept = remember(read, understood);
    for (int i = 0; i < read.getNumValues(); ++i) {
        const QString key = read.getKey(i);
        if (!isTree(key) || read.getValueType(i) == DzSettings::SettingsValue)
            continue;
        QString otherKey = key + QStringLiteral(" (not read)");
        while (read.hasKey(otherKey))
            otherKey += QLatin1Char('\'');
        dzWarn({ place, DzProperty::tr("\"%1\" is not a settings tree").arg(key),
            DzProperty::tr("it is kept as \"%1\"").arg(otherKey) });
        if (!kept)
            kept = layoutOf(read, understood);
        read.copySetting(key, kept.get(), otherKey);
    }
    return kept;
}

void DzKeptMembers::begin(SettingsTree* out, const SettingsTree* kept)
{
    if (kept)
        *out = *kept;
}

bool DzKeptMembers::isPlace(const SettingsTree& out, const QString& key)
{
    const int index = out.getSettingIndex(key);
    return index >= 0 && isPlaceAt(out, index);
}

void DzKeptMembers::end(SettingsTree* out)
{
    out->removeValues([out](int index) { return isPlaceAt(*out, index); });
}

void DzKeptMembers::readProperty(
    DzProperty* property, const SettingsTree& members, const FilePlace& place)
{
    static const QString value = QString::fromLatin1(valueKey);
    static const QString fullForm = QString::fromLatin1(fullFormKey);
    const int count = members.getNumValues();
    // Nearly all properties of a file have nothing but a value that can be used.
    if (count == 1 && members.getKey(0) == value && property->readAttribute(members, value)) {
        DzProperty::Access::kept(property).reset();
        return;
    }
    QSet<QString> unusable;
    for (int i = 0; i < count; ++i) {
        const QString key = members.getKey(i);
        if (key != value && !property->readAttribute(members, key))
            unusable.insert(key);
    }
    // Last, so that limits from the same file hold for it.
    if (members.hasKey(value) && !property->readAttribute(members, value)) {
        unusable.insert(value);
        dzWarn({ place.text(), DzProperty::tr("\"Value\" is not a value of this property"),
            DzProperty::tr("its default is used and the file's value is kept") });
    }
    const bool isFullForm = members.hasKey(fullForm);
    if (unusable.isEmpty() && !isFullForm) {
        DzProperty::Access::kept(property).reset();
        return;
    }
    // In full form every member has its place, so that the file keeps that form.
    DzProperty::Access::kept(property)
        = layoutOf(members, [&](const QString& key) { return !unusable.contains(key); });
}

void DzKeptMembers::writeProperty(
    SettingsTree* out, const DzProperty* property, const DzProperty* fresh)
{
    const SettingsTree* kept = DzProperty::Access::kept(property);
    // By far the most properties differ from a fresh brick's in nothing but the value.
    if (!kept && fresh && property->isDescribedLike(fresh)) {
        property->writeValue(out);
        return;
    }
    DzPropertySettings fullSettings;
    property->getAttributes(&fullSettings);
    const SettingsTree& full = *fullSettings.tree();
    DzPropertySettings usualSettings;
    if (fresh)
        fresh->getAttributes(&usualSettings);
    const SettingsTree& usual = *usualSettings.tree();
    begin(out, kept && isOutlived(*kept, full, usual) ? nullptr : kept);
    for (int i = 0; i < full.getNumValues(); ++i) {
        const QString key = full.getKey(i);
        const bool isNew = !out->hasKey(key);
        // A value of the file that could not be used stands until the property is changed.
        if (!readsAlike(full, usual, key) || isPlace(*out, key)
            || (isNew && key == QLatin1String(valueKey)))
            full.copySetting(key, out);
    }
    // A property without map has no such member, but a full form does.
    const QString mapKey = QStringLiteral("MapImage");
    if (isPlace(*out, mapKey))
        out->setStringValue(mapKey, QString());
    end(out);
}

void DzKeptMembers::readParameter(DzBrickParam* param, const SettingsTree& members,
    const QSet<QString>& others, const FilePlace& place)
{
    const QString labelKey = QStringLiteral("Label");
    const int labelIndex = members.getSettingIndex(labelKey);
    const bool hasLabel
        = labelIndex >= 0 && members.getValueType(labelIndex) == DzSettings::StringValue;
    if (hasLabel)
        param->setLabel(members.getStringValue(labelKey));
    int understood = 0;
    for (int i = 0; i < param->getNumProperties(); ++i) {
        const QString key = propertyKey(i);
        const SettingsTree* property = members.getSettingsValue(key);
        if (!property)
            continue;
        ++understood;
        FilePlace propertyPlace = place;
        if (param->getNumProperties() > 1)
            propertyPlace.property = key;
        readProperty(param->getProperty(i), *property, propertyPlace);
    }
    // Nearly all parameters of a file are nothing but their properties.
    if (understood == members.getNumValues()) {
        DzBrickParam::Access::kept(param).reset();
        return;
    }
    QSet<QString> properties;
    for (int i = 0; i < param->getNumProperties(); ++i)
        properties.insert(propertyKey(i));
    const auto isProperty = [&](const QString& key) { return properties.contains(key); };
    // A label of the file keeps its place also when it is the usual one.
    const auto isUnderstood
        = [&](const QString& key) { return properties.contains(key) || others.contains(key); };
    std::unique_ptr<SettingsTree>& kept = DzBrickParam::Access::kept(param);
    kept = rememberTrees(members, isUnderstood, isProperty, place.text());
    if (kept && hasLabel)
        setPlace(kept.get(), labelKey);
}

void DzKeptMembers::writeParameter(
    SettingsTree* out, const DzBrickParam* param, const DzBrickParam* fresh)
{
    begin(out, DzBrickParam::Access::kept(param));
    const QString labelKey = QStringLiteral("Label");
    if (isPlace(*out, labelKey) || !fresh || fresh->getLabel() != param->getLabel())
        out->setStringValue(labelKey, param->getLabel());
    for (int i = 0; i < param->getNumProperties(); ++i)
        writeProperty(out->setSettingsValue(propertyKey(i)), param->getProperty(i),
            fresh ? fresh->getProperty(i) : nullptr);
    end(out);
}
