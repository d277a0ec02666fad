// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SurfaceChanges.h"

#include "dzfilename.h"
#include "dznode.h"
#include "dzscene.h"

#include <QHash>

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

/// Characters of a value that a line shows.
const int longestValue = 60;

QString shortened(const QString& text)
{
    const QString value = dzShownText(text);
    return value.size() <= longestValue ? value
                                        : value.left(longestValue - 3) + QStringLiteral("...");
}

QString lineOf(const DzElementChange& change)
{
    if (change.isData) {
        const char* what = change.kind == DzElementChange::Appears ? "+ data %1"
            : change.kind == DzElementChange::Changes              ? "~ data %1"
                                                                   : "- data %1";
        return QString::fromLatin1(what).arg(dzShownName(change.name));
    }
    switch (change.kind) {
    case DzElementChange::Appears:
        return QStringLiteral("+ %1: ").arg(dzShownName(change.name)) + shortened(change.after);
    case DzElementChange::Changes:
        return QStringLiteral("~ %1: ").arg(dzShownName(change.name)) + shortened(change.before)
            + QStringLiteral(" -> ") + shortened(change.after);
    case DzElementChange::Vanishes:
        break;
    }
    return QStringLiteral("- %1: ").arg(dzShownName(change.name)) + shortened(change.before);
}

Json jsonOf(const DzElementChange& change)
{
    static const char* const words[] = { "appears", "changes", "vanishes" };
    Json json;
    json["change"] = words[change.kind];
    json["what"] = change.isData ? "data" : "property";
    json["name"] = change.name.toStdString();
    if (!change.isData && change.kind != DzElementChange::Appears)
        json["before"] = change.before.toStdString();
    if (!change.isData && change.kind != DzElementChange::Vanishes)
        json["after"] = change.after.toStdString();
    return json;
}

} // namespace

SurfaceChanges::SurfaceChanges(const QVector<Surface>& surfaces)
    : m_surfaces(surfaces)
{
    m_before.reserve(surfaces.size());
    for (const Surface& surface : surfaces)
        m_before.append(DzElementSnapshot(surface.material));
}

void SurfaceChanges::setAfter(const DzScene& scene)
{
    // Names of nodes and surfaces may repeat: the first stands for the first.
    QHash<QString, QList<const DzMaterial*>> after;
    for (const DzSurface& surface : scene.getSurfaces())
        after[Surface { surface.node, surface.material }.path()].append(surface.material);
    m_changes.clear();
    for (int i = 0; i < m_surfaces.size(); ++i) {
        const QString path = m_surfaces.at(i).path();
        const int number = m_surfaces.at(i).numberOfName;
        const DzMaterial* material = after.value(path).value(number);
        m_changes.append(material ? m_before.at(i).changesTo(DzElementSnapshot(material))
                                  : QVector<DzElementChange>());
    }
}

QByteArray SurfaceChanges::toText() const
{
    QString text;
    for (int i = 0; i < m_surfaces.size(); ++i) {
        const QVector<DzElementChange>& changes = m_changes.at(i);
        text += dzShownText(m_surfaces.at(i).path())
            + (changes.isEmpty() ? QStringLiteral(": no change\n") : QStringLiteral("\n"));
        for (const DzElementChange& change : changes)
            text += QStringLiteral("  ") + lineOf(change) + QLatin1Char('\n');
    }
    return text.toUtf8();
}

QByteArray SurfaceChanges::toJson() const
{
    Json list = Json::array();
    for (int i = 0; i < m_surfaces.size(); ++i) {
        Json surface;
        surface["node"] = m_surfaces.at(i).node->getName().toStdString();
        surface["surface"] = m_surfaces.at(i).material->getName().toStdString();
        surface["changes"] = Json::array();
        for (const DzElementChange& change : m_changes.at(i))
            surface["changes"].push_back(jsonOf(change));
        list.push_back(std::move(surface));
    }
    return QByteArray::fromStdString(list.dump(2)) + '\n';
}
