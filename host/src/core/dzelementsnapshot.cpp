// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzelementsnapshot.h"

#include "dzelement.h"
#include "dznumericproperty.h"
#include "dzproperty.h"
#include "dztexture.h"
#include "settingsjson.h"

namespace {

QString valueOf(const DzProperty* property)
{
    auto* numeric = qobject_cast<const DzNumericProperty*>(property);
    const QString value = property->getValueText();
    return numeric && numeric->isMapped()
        ? QStringLiteral("%1, map %2").arg(value, numeric->getMapValue()->getFilename())
        : value;
}

QString descriptionOf(const DzProperty* property)
{
    QString flags;
    flags += QLatin1Char(property->isHidden() ? 'h' : '-');
    flags += QLatin1Char(property->isLocked() ? 'l' : '-');
    flags += QLatin1Char(property->isUserProperty() ? 'u' : '-');
    // Paths begin at the root, whether they say so or not.
    QString path = property->getPath();
    if (!path.startsWith(QLatin1Char('/')))
        path.prepend(QLatin1Char('/'));
    return property->className() + QLatin1Char(' ') + flags + QLatin1Char(' ') + path;
}

/// Equal in a file: a single-precision number and what was read of its text are not equal
/// otherwise.
bool areSameSettings(const DzSettings& a, const DzSettings& b)
{
    if (a.isEqual(b))
        return true;
    const QByteArray text = settingsToJson(a);
    return !text.isEmpty() && text == settingsToJson(b);
}

} // namespace

DzElementSnapshot::DzElementSnapshot(const DzElement* element)
{
    for (int i = 0; i < element->getNumProperties(); ++i) {
        const DzProperty* property = element->getProperty(i);
        Entry entry;
        entry.name = property->getName();
        entry.label = property->getLabel();
        entry.value = valueOf(property);
        entry.description = descriptionOf(property);
        add(entry);
    }
    for (int i = 0; i < element->getNumDataItems(); ++i) {
        const DzElementData* item = element->getDataItem(i);
        Entry entry;
        entry.name = item->getName();
        entry.label = entry.name;
        entry.description = item->className();
        entry.isData = true;
        if (auto* simple = qobject_cast<const DzSimpleElementData*>(item))
            entry.settings = std::make_shared<const DzSettings>(*simple->getSettings());
        add(entry);
    }
}

QString DzElementSnapshot::keyOf(const Entry& entry)
{
    return QLatin1Char(entry.isData ? 'd' : 'p') + entry.name;
}

void DzElementSnapshot::add(const Entry& entry)
{
    m_index.insert(keyOf(entry), m_entries.size());
    m_entries.append(entry);
}

const DzElementSnapshot::Entry* DzElementSnapshot::find(const Entry& other) const
{
    const int index = m_index.value(keyOf(other), -1);
    return index < 0 ? nullptr : &m_entries.at(index);
}

bool DzElementSnapshot::isSame(const Entry& a, const Entry& b)
{
    if (a.value != b.value || a.label != b.label || a.description != b.description)
        return false;
    return !a.settings || !b.settings ? !a.settings && !b.settings
                                      : areSameSettings(*a.settings, *b.settings);
}

QVector<DzElementChange> DzElementSnapshot::changesTo(const DzElementSnapshot& later) const
{
    QVector<DzElementChange> changes;
    for (const Entry& entry : m_entries) {
        const Entry* now = later.find(entry);
        if (!now)
            changes.append({ DzElementChange::Vanishes, entry.name, entry.label, entry.value,
                QString(), entry.isData });
        else if (!isSame(entry, *now))
            changes.append({ DzElementChange::Changes, entry.name, now->label, entry.value,
                now->value, entry.isData });
    }
    for (const Entry& entry : later.m_entries)
        if (!find(entry))
            changes.append({ DzElementChange::Appears, entry.name, entry.label, QString(),
                entry.value, entry.isData });
    return changes;
}
