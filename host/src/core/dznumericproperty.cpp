// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dznumericproperty.h"

#include "dzapp.h"
#include "dzimagemgr.h"
#include "dzundostack.h"
#include "settingstree.h"

DzNumericProperty::DzNumericProperty(const QString& name, bool canAnimate, bool isUserProperty)
    : DzProperty(name, canAnimate, isUserProperty)
{
}

DzNumericProperty::~DzNumericProperty()
{
}

void DzNumericProperty::setIsMappable(bool mappable)
{
    if (mappable == m_mappable)
        return;
    const DzTexturePtr map = m_map;
    assignMappable(mappable, mappable ? map : DzTexturePtr());
    if (isRecorded())
        record(
            "mappable", tr("Change %1").arg(getLabel()),
            [=](DzProperty* p) {
                static_cast<DzNumericProperty*>(p)->assignMappable(!mappable, map);
            },
            [=](DzProperty* p) {
                auto* numeric = static_cast<DzNumericProperty*>(p);
                numeric->assignMappable(mappable, mappable ? map : DzTexturePtr());
            });
}

void DzNumericProperty::assignMappable(bool mappable, const DzTexturePtr& map)
{
    m_mappable = mappable;
    if (static_cast<DzTexture*>(map) != static_cast<DzTexture*>(m_map))
        assignMap(map);
    emit isMappableChanged();
}

bool DzNumericProperty::isMapped() const
{
    return m_map && !m_map->getFilename().isEmpty();
}

bool DzNumericProperty::setMap(const QString& filename)
{
    return setMap(dzApp->getImageMgr()->getImage(filename));
}

bool DzNumericProperty::setMap(const DzTexture* texture)
{
    // The image manager hands out one texture per name, so a share of it is no copy.
    const DzTexturePtr map(const_cast<DzTexture*>(texture));
    if (!isMappable() || isLocked())
        return false;
    const DzTexturePtr before = m_map;
    if (static_cast<DzTexture*>(before) == texture)
        return true;
    assignMap(map);
    if (isRecorded())
        record(
            "map", tr("Change Map of %1").arg(getLabel()),
            [=](DzProperty* p) { static_cast<DzNumericProperty*>(p)->assignMap(before); },
            [=](DzProperty* p) { static_cast<DzNumericProperty*>(p)->assignMap(map); });
    return true;
}

void DzNumericProperty::assignMap(const DzTexturePtr& map)
{
    m_map = map;
    emit mapChanged();
    notifyValueChanged();
}

void DzNumericProperty::setIsClamped(bool clamped)
{
    if (clamped != m_clamped)
        changeLimits([=] { assignClamped(clamped); });
}

void DzNumericProperty::restoreClamped(bool clamped)
{
    if (clamped == m_clamped)
        return;
    m_clamped = clamped;
    emit clampedChanged(clamped);
}

void DzNumericProperty::assignClamped(bool clamped)
{
    m_clamped = clamped;
    applyClamping();
    emit clampedChanged(clamped);
}

void DzNumericProperty::takeFrom(const DzProperty* other)
{
    auto* source = qobject_cast<const DzNumericProperty*>(other);
    if (!source || source == this)
        return;
    if (source->metaObject() == metaObject())
        copyValueFrom(source);
    if (m_mappable && static_cast<DzTexture*>(m_map) != static_cast<DzTexture*>(source->m_map))
        assignMap(source->m_map);
}

void DzNumericProperty::getAttributes(DzPropertySettings* settings) const
{
    DzProperty::getAttributes(settings);
    settings->setBoolValue(QStringLiteral("Clamped"), m_clamped);
    // The file format's word has one p.
    settings->setBoolValue(QStringLiteral("Mapable"), m_mappable);
    getValueAttributes(settings);
    if (isMapped())
        settings->setStringValue(QStringLiteral("MapImage"), m_map->getFilename());
}

bool DzNumericProperty::isDescribedLike(const DzProperty* other) const
{
    auto* numeric = static_cast<const DzNumericProperty*>(other);
    // One texture stands for one file name, so that comparing the textures is enough.
    return m_clamped == numeric->m_clamped && m_mappable == numeric->m_mappable
        && static_cast<DzTexture*>(m_map) == static_cast<DzTexture*>(numeric->m_map)
        && DzProperty::isDescribedLike(other);
}

bool DzNumericProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    const int index = settings.getSettingIndex(key);
    if (index < 0)
        return false;
    const DzSettings::ValueType type = settings.getValueType(index);
    if (key == QLatin1String("Clamped") && type == DzSettings::BoolValue) {
        if (settings.getBoolValue(key) != m_clamped)
            assignClamped(!m_clamped);
        return true;
    }
    if (key == QLatin1String("Mapable") && type == DzSettings::BoolValue) {
        const bool mappable = settings.getBoolValue(key);
        if (mappable != m_mappable)
            assignMappable(mappable, mappable ? m_map : DzTexturePtr());
        return true;
    }
    if (key == QLatin1String("MapImage") && type == DzSettings::StringValue) {
        if (!m_mappable)
            return false;
        const DzTexturePtr map(dzApp->getImageMgr()->getImage(settings.getStringValue(key)));
        if (static_cast<DzTexture*>(map) != static_cast<DzTexture*>(m_map))
            assignMap(map);
        return true;
    }
    return DzProperty::readAttribute(settings, key);
}

void DzNumericProperty::assignAll(const DzProperty* model)
{
    DzProperty::assignAll(model);
    auto* source = static_cast<const DzNumericProperty*>(model);
    m_map = source->m_map;
    m_mappable = source->m_mappable;
    m_clamped = source->m_clamped;
}
