// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Remedies.h"

#include "BrickAppearance.h"
#include "BrickCatalogue.h"
#include "NetworkEdit.h"
#include "NetworkWalk.h"
#include "PropertyGroup.h"
#include "dzbrickparam.h"
#include "dzcolorproperty.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

using lux::Remedy;

namespace {

QString message(const char* source)
{
    return QCoreApplication::translate("Remedies", source);
}

/// The parameter that names the image of an image map.
const QString& imageParameter()
{
    static const QString name = QStringLiteral("filename");
    return name;
}

/// Between the pin and what is put before it, in units of the canvas.
const qreal gap = 80;

/// The values of a parameter: all of an input, or the brick's own.
QVector<DzProperty*> valuesOf(const DzShaderBrick* brick, const QString& parameter)
{
    QVector<DzProperty*> values;
    if (const DzBrickParam* input = brick->findParameterByName(parameter))
        for (int i = 0; i < input->getNumProperties(); ++i)
            values.append(input->getProperty(i));
    else if (DzProperty* own = brick->findProperty(parameter))
        values.append(own);
    return values;
}

DzProperty* valueOf(const Problem& problem, const Remedy& remedy)
{
    if (problem.property)
        return problem.property;
    return problem.brick ? valuesOf(problem.brick, remedy.parameter).value(0) : nullptr;
}

QString labelOf(const DzProperty* value)
{
    const DzBrickParam* input = value->getBrickParam();
    return input && input->getNumProperties() > 1 ? input->getLabel() : value->getLabel();
}

/// A value of the text as users type it: the text has colors from 0 to 1.
QString typedText(const DzProperty* value, const QString& text)
{
    if (!qobject_cast<const DzColorProperty*>(value))
        return text;
    QStringList parts = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    while (parts.size() < 3)
        parts.append(parts.value(0, QStringLiteral("0")));
    for (QString& part : parts)
        part = QString::number(std::lround(part.toDouble() * 255));
    return parts.join(QStringLiteral(", "));
}

/// Parts of one step.
bool setText(DzProperty* value, const QString& text, QString* error)
{
    if (value->isLocked()) {
        *error = message("\"%1\" is locked; unlock it first.").arg(labelOf(value));
        return false;
    }
    return PropertyGroup({ value }).setText(text, error);
}

bool setMap(DzProperty* value, const QString& file, QString* error)
{
    if (value->isLocked()) {
        *error = message("\"%1\" is locked; unlock it first.").arg(labelOf(value));
        return false;
    }
    PropertyGroup({ value }).setMap(file);
    return true;
}

bool setValues(DzShaderBrick* brick, const Remedy& remedy, QString* error)
{
    for (const QPair<QString, QString>& entry : remedy.values) {
        const QVector<DzProperty*> values = valuesOf(brick, entry.first);
        if (values.isEmpty()) {
            *error = message("There is no value \"%1\".").arg(entry.first);
            return false;
        }
        const QStringList texts = values.size() > 1
            ? entry.second.split(QLatin1Char(' '), Qt::SkipEmptyParts)
            : QStringList { entry.second };
        for (int i = 0; i < values.size(); ++i)
            if (!setText(
                    values.at(i), typedText(values.at(i), texts.value(i, texts.last())), error))
                return false;
    }
    return true;
}

bool setFile(DzProperty* value, const QString& file, QString* error)
{
    return qobject_cast<DzNumericProperty*>(value) ? setMap(value, file, error)
                                                   : setText(value, file, error);
}

bool useSlashes(DzProperty* value, QString* error)
{
    const auto withSlashes
        = [](QString text) { return text.replace(QLatin1Char('\\'), QLatin1Char('/')); };
    return qobject_cast<DzNumericProperty*>(value)
        ? setMap(value, withSlashes(mapFileOf(value)), error)
        : setText(value, withSlashes(value->getValueText()), error);
}

/// The value that holds the image of an image map; null for any other brick.
DzNumericProperty* imageValueOf(const DzShaderBrick* brick)
{
    auto* value = qobject_cast<DzNumericProperty*>(valuesOf(brick, imageParameter()).value(0));
    return value && value->isMappable() ? value : nullptr;
}

/// The best class of bricks that give an image to the input; null when there is none.
const BrickKind* imageMapFor(const IDzBrickUser* user, DzBrickParam* input)
{
    BrickCatalogue::Filter filter;
    filter.user = user;
    filter.accepts = [input](const DzShaderBrick* sample) {
        return imageValueOf(sample) && BrickCatalogue::findFitting(sample, input);
    };
    return BrickCatalogue::instance()->search(QStringLiteral("image map"), filter).value(0);
}

/// What was the value's own image is that of a brick before it.
bool insertImageMap(NetworkEdit* edit, DzProperty* value, QString* error)
{
    DzBrickParam* input = value->getBrickParam();
    const QString file = mapFileOf(value);
    const BrickKind* kind = input ? imageMapFor(edit->getUser(), input) : nullptr;
    if (!kind || file.isEmpty()) {
        *error = message("No image map fits \"%1\".").arg(labelOf(value));
        return false;
    }
    if (!setMap(value, QString(), error))
        return false;
    const DzShaderBrick* brick = input->getTopBrickOwner();
    const QPointF place = BrickAppearance::position(brick)
        + BrickAppearance::pinOffset(brick, input) - QPointF(gap, 0);
    DzShaderBrick* added = edit->addBrickLinked(kind->className, place, input, error);
    return added && setMap(imageValueOf(added), file, error);
}

bool apply(NetworkEdit* edit, const Problem& problem, const Remedy& remedy, const QString& file,
    QString* error)
{
    DzProperty* value = valueOf(problem, remedy);
    if (!problem.brick || (!value && remedy.action != Remedy::Set)) {
        *error = message("The value is not there any more.");
        return false;
    }
    switch (remedy.action) {
    case Remedy::Set:
        return setValues(problem.brick, remedy, error);
    case Remedy::ChooseFile:
        return setFile(value, file, error);
    case Remedy::UseSlashes:
        return useSlashes(value, error);
    case Remedy::InsertImageMap:
        return insertImageMap(edit, value, error);
    case Remedy::LinkTexture:
    case Remedy::LinkMaterial:
        break;
    }
    *error = message("Choose what to link.");
    return false;
}

/// The problem's own remedy that is like this one; null when it has none.
const Remedy* remedyLike(const Problem& problem, const Remedy& remedy)
{
    const auto found = std::find_if(problem.remedies.begin(), problem.remedies.end(),
        [&](const Remedy& own) { return own.action == remedy.action; });
    return found == problem.remedies.end() ? nullptr : &*found;
}

bool mayBeDoneToMany(const Remedy& remedy)
{
    return remedy.action == Remedy::Set || remedy.action == Remedy::UseSlashes
        || remedy.action == Remedy::InsertImageMap;
}

} // namespace

QString remedyText(const Problem& problem, const Remedy& remedy)
{
    const auto label = [&](const QString& parameter) {
        const DzProperty* value
            = problem.brick ? valuesOf(problem.brick, parameter).value(0) : nullptr;
        return value ? labelOf(value) : parameter;
    };
    QStringList parts;
    switch (remedy.action) {
    case Remedy::Set:
        for (const auto& value : remedy.values)
            parts.append(message("%1 to %2").arg(label(value.first), value.second));
        return message("Set %1").arg(parts.join(message(", ")));
    case Remedy::LinkTexture:
        return message("Link a texture to %1…").arg(label(remedy.parameter));
    case Remedy::LinkMaterial:
        return message("Link a material to %1…").arg(label(remedy.parameter));
    case Remedy::ChooseFile:
        return message("Choose a file…");
    case Remedy::InsertImageMap:
        return message("Put an image map before %1").arg(label(remedy.parameter));
    case Remedy::UseSlashes:
        return message("Use slashes");
    }
    return QString();
}

DzBrickParam* inputToLink(const Problem& problem, const Remedy& remedy)
{
    const bool isLink
        = remedy.action == Remedy::LinkTexture || remedy.action == Remedy::LinkMaterial;
    return isLink && problem.brick ? problem.brick->findParameterByName(remedy.parameter) : nullptr;
}

QVector<Problem> alikeOf(const Problem& problem, const Remedy& remedy, const QVector<Problem>& all)
{
    QVector<Problem> alike;
    if (problem.rule.isEmpty() || !mayBeDoneToMany(remedy))
        return alike;
    for (const Problem& other : all)
        if (other.rule == problem.rule && remedyLike(other, remedy))
            alike.append(other);
    return alike;
}

bool applyRemedy(NetworkEdit* edit, const QVector<Problem>& problems, const Remedy& remedy,
    const QString& file, QString* error)
{
    DzUndoStackHold hold;
    bool isDone = false;
    QString caption;
    for (const Problem& problem : problems) {
        const Remedy* own = remedyLike(problem, remedy);
        if (!own)
            continue;
        caption = remedyText(problem, *own);
        DzUndoStackHold part;
        if (!apply(edit, problem, *own, file, error))
            continue;
        part.accept(caption);
        isDone = true;
    }
    while (caption.endsWith(QChar(0x2026)))
        caption.chop(1);
    if (isDone)
        hold.accept(caption);
    return isDone;
}
