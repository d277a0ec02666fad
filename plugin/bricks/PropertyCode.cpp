// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PropertyCode.h"

#include "SceneCodeWriter.h"
#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzstringproperty.h"

namespace {

// $(...) stands for a property's value, %(...) for its value or map; the latter really opens with
// a percent sign.
const char* const floatForm = "\t\"float   %1\" [$(%2)]\n";
const char* const colorForm = "\t\"color   %1\" [$(%2)]\n";
const char* const stringForm = "\t\"string  %1\" [$(%2)]\n";
const char* const mappedForm = "\t\"string  %1\" [%(%2)]\n";

/// Writes the map's file name where the writer wants that, or notes that the map is not written.
bool writeMap(SceneCodeWriter* writer, const QString& name, DzNumericProperty* property)
{
    if (!property->isMapped())
        return false;
    if (writer->mapFiles && name == QLatin1String("filename")) {
        writer->writeImageFile(name, property, property->getMapValue()->getFilename());
        return true;
    }
    writer->noteUnwrittenMap(property);
    return false;
}

void writeLiteral(SceneCodeWriter* writer, const QString& name, DzProperty* property)
{
    DzNumericProperty* numeric = qobject_cast<DzNumericProperty*>(property);
    if (numeric && writeMap(writer, name, numeric))
        return;
    // Items, switches and colours are whole numbers too: they come before those.
    if (const DzFloatProperty* number = qobject_cast<DzFloatProperty*>(property))
        writer->writeFloat(name, number->getValue());
    else if (const DzColorProperty* color = qobject_cast<DzColorProperty*>(property))
        writer->writeColor(name, color->getColorValue());
    else if (const DzEnumProperty* items = qobject_cast<DzEnumProperty*>(property))
        writer->writeString(name, items->getStringValue());
    else if (const DzBoolProperty* onOff = qobject_cast<DzBoolProperty*>(property))
        writer->writeBool(name, onOff->getBoolValue());
    else if (const DzIntProperty* whole = qobject_cast<DzIntProperty*>(property))
        writer->writeInteger(name, whole->getValue());
    else if (const DzStringProperty* string = qobject_cast<DzStringProperty*>(property))
        writer->writeString(name, string->getValue());
    else if (DzImageProperty* image = qobject_cast<DzImageProperty*>(property))
        writer->writeImageFile(name, image, image->getFilename());
}

const char* placeholderTemplate(DzProperty* property)
{
    const DzNumericProperty* numeric = qobject_cast<DzNumericProperty*>(property);
    const bool isMappable = numeric && numeric->isMappable();
    if (qobject_cast<DzFloatProperty*>(property))
        return isMappable ? mappedForm : floatForm;
    if (qobject_cast<DzColorProperty*>(property))
        return isMappable ? mappedForm : colorForm;
    if (qobject_cast<DzEnumProperty*>(property))
        return stringForm;
    if (qobject_cast<DzBoolProperty*>(property))
        return "\t\"bool    %1\" [$(%2)]\n";
    if (qobject_cast<DzIntProperty*>(property))
        return "\t\"integer %1\" [$(%2)]\n";
    return stringForm;
}

} // namespace

void writeFloatPlaceholder(SceneCodeWriter* writer, const QString& name, const QString& placeholder)
{
    writer->writeTemplate(floatForm, name, placeholder);
}

void writeColorPlaceholder(SceneCodeWriter* writer, const QString& name, const QString& placeholder)
{
    writer->writeTemplate(colorForm, name, placeholder);
}

void writeColorPlaceholder3(
    SceneCodeWriter* writer, const QString& name, const QString& placeholder)
{
    writer->writeTemplate(
        "\t\"color   %1\" [$(%2) $(%3) $(%4)]\n", name, placeholder, placeholder, placeholder);
}

void writePropertyCode(SceneCodeWriter* writer, const QString& name, DzProperty* property)
{
    if (property->isLocked() || writer->literalValues) {
        writeLiteral(writer, name, property);
        return;
    }
    const QString placeholder = placeholderName(writer, property, property->getName());
    writer->writeTemplate(placeholderTemplate(property), name, placeholder);
}
