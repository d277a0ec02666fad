// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LinkTypes.h"

QString linkTypeName(int code)
{
    if (code == MaterialLink)
        return QLatin1String("LuxMaterial");
    if (code == VolumeLink)
        return QLatin1String("LuxVolume");
    if (code == FresnelLink)
        return QLatin1String("LuxFresnel");
    if (!isLinkType(code))
        return QString();
    QString name = DzBrickParam::typeToString(hostTypeFor(code));
    name[0] = name.at(0).toUpper();
    return QLatin1Char('L') + name;
}

QString linkTypeText(const DzBrickParam* param)
{
    const int type = param->getType();
    const QString name = isLinkType(type) ? linkTypeName(type) : DzBrickParam::typeToString(type);
    return param->isArray() ? QString::fromLatin1("%1[]").arg(name) : name;
}
