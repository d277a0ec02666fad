// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzcolorproperty.h"

#include "settingstree.h"

#include <QStringList>

namespace {

int packed(const QColor& color)
{
    return static_cast<int>(color.isValid() ? color.rgba() : qRgb(0, 0, 0));
}

QColor unpacked(int value)
{
    return QColor::fromRgba(static_cast<QRgb>(value));
}

void writeColor(SettingsTree* settings, const QString& key, const QColor& color)
{
    SettingsTree* parts = settings->setSettingsValue(key);
    parts->setIntValue(QStringLiteral("Red"), color.red());
    parts->setIntValue(QStringLiteral("Green"), color.green());
    parts->setIntValue(QStringLiteral("Blue"), color.blue());
    if (color.alpha() != 255)
        parts->setIntValue(QStringLiteral("Alpha"), color.alpha());
}

/// A colour component in 0 to 255; -1 when it is missing or something else.
int component(const SettingsTree& parts, const char* name, int fallback)
{
    const QString key = QString::fromLatin1(name);
    if (!parts.hasKey(key))
        return fallback;
    const int value = parts.getIntValue(key, -1);
    return value >= 0 && value <= 255 ? value : -1;
}

bool readColor(const SettingsTree& parts, QColor* color)
{
    const int red = component(parts, "Red", -1);
    const int green = component(parts, "Green", -1);
    const int blue = component(parts, "Blue", -1);
    const int alpha = component(parts, "Alpha", 255);
    if (red < 0 || green < 0 || blue < 0 || alpha < 0)
        return false;
    *color = QColor(red, green, blue, alpha);
    return true;
}

bool parseComponents(const QString& text, QColor* color)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    if (words.size() < 3 || words.size() > 4)
        return false;
    int parts[4] = { 0, 0, 0, 255 };
    for (int i = 0; i < words.size(); ++i) {
        bool ok = false;
        parts[i] = words.at(i).toInt(&ok);
        if (!ok || parts[i] < 0 || parts[i] > 255)
            return false;
    }
    *color = QColor(parts[0], parts[1], parts[2], parts[3]);
    return true;
}

} // namespace

DzColorProperty::DzColorProperty(
    const QString& name, bool canAnimate, bool isUserProperty, const QColor& defaultValue)
    : DzIntProperty(name, canAnimate, isUserProperty, packed(defaultValue))
{
}

QColor DzColorProperty::getColorValue() const
{
    return unpacked(getValue());
}

void DzColorProperty::setColorValue(const QColor& color)
{
    setValue(packed(color));
}

QColor DzColorProperty::getDefaultColorValue() const
{
    return unpacked(getDefaultValue());
}

void DzColorProperty::setDefaultColorValue(const QColor& color)
{
    setDefaultValue(packed(color));
}

QString DzColorProperty::getValueText() const
{
    const QColor color = getColorValue();
    const QString text
        = QStringLiteral("%1 %2 %3").arg(color.red()).arg(color.green()).arg(color.blue());
    return color.alpha() == 255 ? text : text + QStringLiteral(" %1").arg(color.alpha());
}

bool DzColorProperty::setValueText(const QString& text, QString* error)
{
    QColor color;
    if (!parseComponents(text, &color))
        color.setNamedColor(text.trimmed());
    if (!color.isValid()) {
        *error = tr("\"%1\" is not a colour: give three numbers from 0 to 255, #rrggbb or a name")
                     .arg(text);
        return false;
    }
    if (isLocked()) {
        *error = tr("it is locked");
        return false;
    }
    setColorValue(color);
    return true;
}

DzProperty* DzColorProperty::createSimilar() const
{
    return new DzColorProperty(getName(), canAnimate(), isUserProperty());
}

void DzColorProperty::getValueAttributes(DzPropertySettings* settings) const
{
    writeValue(settings->tree());
    writeColor(settings->tree(), QStringLiteral("DefaultValue"), getDefaultColorValue());
}

void DzColorProperty::writeValue(SettingsTree* settings) const
{
    writeColor(settings, QStringLiteral("Value"), getColorValue());
}

bool DzColorProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    // Whole numbers have limits, this kind of them has none.
    if (key == QLatin1String("Min") || key == QLatin1String("Max"))
        return false;
    const bool isValue = key == QLatin1String("Value");
    if (!isValue && key != QLatin1String("DefaultValue"))
        return DzIntProperty::readAttribute(settings, key);
    const SettingsTree* parts = settings.getSettingsValue(key);
    QColor color;
    if (!parts || !readColor(*parts, &color))
        return false;
    SettingsTree number;
    number.setIntValue(key, packed(color));
    return DzIntProperty::readAttribute(number, key);
}
