// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ImageFileNames.h"

#include <QDir>

namespace {

/// Names with a drive or of a network share may come from another system: no folder goes before
/// them.
bool isForeign(const QString& name)
{
    return (name.size() > 1 && name.at(1) == QLatin1Char(':') && name.at(0).isLetter())
        || name.startsWith(QLatin1String("\\\\"));
}

} // namespace

QString ImageFileNames::placeOf(const QString& stored) const
{
    if (stored.isEmpty() || imageFolder.isEmpty() || isForeign(stored))
        return stored;
    return QDir::cleanPath(QDir(imageFolder).absoluteFilePath(stored));
}

QString ImageFileNames::nameOf(const QString& stored) const
{
    const QString place = placeOf(stored);
    if (place.isEmpty() || imageFolder.isEmpty() || textFolder.isEmpty() || isForeign(place))
        return place;
    return QDir(textFolder).relativeFilePath(place);
}
