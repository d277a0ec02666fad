// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickHelp.h"

#include "Explanations.h"
#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

namespace {

QString classOf(const QObject* brick)
{
    return QString::fromLatin1(brick->metaObject()->className());
}

} // namespace

bool BrickHelp::isCustom(const DzBrickParam* input)
{
    // The brick tells when asked by name: the mixer knows no class of a plug-in.
    DzShaderBrick* brick = input->getTopBrickOwner();
    int count = 0;
    if (!brick || brick->metaObject()->indexOfMethod("getNumCustomParams()") < 0)
        return false;
    QMetaObject::invokeMethod(
        brick, "getNumCustomParams", Qt::DirectConnection, Q_RETURN_ARG(int, count));
    for (int i = 0; i < count; ++i) {
        DzBrickParam* custom = nullptr;
        QMetaObject::invokeMethod(brick, "getCustomParam", Qt::DirectConnection,
            Q_RETURN_ARG(DzBrickParam*, custom), Q_ARG(int, i));
        if (custom == input)
            return true;
    }
    return false;
}

QString BrickHelp::ofBrick(const DzShaderBrick* brick)
{
    return Explanations::ofBrick(classOf(brick));
}

QString BrickHelp::ofInput(const DzBrickParam* input)
{
    const DzShaderBrick* brick = input->getTopBrickOwner();
    if (!brick || input->isOutput() || isCustom(input))
        return QString();
    return Explanations::ofInput(classOf(brick), input->getName());
}

QString BrickHelp::ofValue(const DzProperty* property)
{
    if (const DzBrickParam* input = property->getBrickParam())
        return ofInput(input);
    const auto* brick = qobject_cast<const DzShaderBrick*>(property->getOwner());
    return brick ? Explanations::ofInput(classOf(brick), property->getName()) : QString();
}

QString BrickHelp::tipOf(const QString& plainText)
{
    if (plainText.isEmpty())
        return QString();
    return QStringLiteral("<p>%1</p>")
        .arg(plainText.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}
