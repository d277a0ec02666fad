// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CheckReport.h"

#include "Command.h"
#include "NetworkCheck.h"
#include "NetworkPersistence.h"
#include "SceneSurfaces.h"
#include "VireoBrickUser.h"
#include "VireoRootBrick.h"
#include "dzbrickuserfile.h"
#include "dzfileformat.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

#include <QFileInfo>

namespace {

using Json = nlohmann::ordered_json;

std::string plain(const QString& text)
{
    return text.toStdString();
}

QString member(const Json& json, const char* name)
{
    const auto found = json.find(name);
    return found != json.end() && found->is_string()
        ? QString::fromStdString(found->get<std::string>())
        : QString();
}

Json remedyJson(const lux::Remedy& remedy)
{
    Json json;
    json["do"] = plain(lux::remedyWord(remedy.action));
    if (!remedy.parameter.isEmpty())
        json["parameter"] = plain(remedy.parameter);
    for (const auto& value : remedy.values)
        json["values"][plain(value.first)] = plain(value.second);
    return json;
}

/// What all findings have; where they are is for the caller to say.
Json findingJson(const QString& file, const lux::Finding& finding)
{
    Json json;
    json["file"] = plain(file);
    json["severity"] = plain(lux::severityWord(finding.severity));
    json["rule"] = plain(finding.rule);
    json["quiet"] = finding.isQuiet;
    if (!finding.keyword.isEmpty())
        json["statement"] = plain(finding.keyword);
    if (!finding.name.isEmpty())
        json["name"] = plain(finding.name);
    if (!finding.type.isEmpty())
        json["type"] = plain(finding.type);
    if (!finding.parameter.isEmpty())
        json["parameter"] = plain(finding.parameter);
    if (!finding.value.isEmpty() && !finding.parameter.isEmpty())
        json["value"] = plain(finding.value);
    json["says"] = plain(finding.sentence);
    json["do"] = plain(finding.advice);
    json["remedies"] = Json::array();
    for (const lux::Remedy& remedy : finding.remedies)
        json["remedies"].push_back(remedyJson(remedy));
    json["source"] = plain(finding.source);
    return json;
}

Json placed(Json json, const lux::Place& place)
{
    json["line"] = place.line;
    json["column"] = place.column;
    json["byte"] = place.byte;
    return json;
}

QString textSuffixes()
{
    return lux::SceneText::suffixes().join(QLatin1String(", ."));
}

bool isText(const QString& path)
{
    return lux::SceneText::suffixes().contains(QFileInfo(path).suffix().toLower());
}

void checkText(const QString& path, const ReportOptions& options, Json* report)
{
    lux::SceneText scene;
    QString error;
    if (!scene.readFile(path, lux::SceneOptions(), &error))
        fail(error);
    lux::CheckOptions check;
    check.tellsPortability = options.tellsPortability;
    // A part of a scene does not say where the scene is, whose folder its images are named from.
    if (path.endsWith(QLatin1String(".lxs"), Qt::CaseInsensitive))
        check.imageFolder = QFileInfo(path).absolutePath();
    for (const lux::Finding& finding : lux::checkScene(scene, check))
        if (options.tellsQuiet || !finding.isQuiet)
            (*report)["findings"].push_back(
                placed(findingJson(scene.path(finding.document), finding), finding.place));
}

/// The findings of a network; `surface` is where it is kept, empty for a file of its own.
void addNetwork(const QString& path, const QString& surface, const IDzBrickUser* user,
    const lux::NetworkCheckOptions& check, const ReportOptions& options, Json* report)
{
    const auto add = [&](Json json) {
        if (!surface.isEmpty())
            json["surface"] = plain(surface);
        (*report)["findings"].push_back(std::move(json));
    };
    if (!findRootBrick(user)) {
        lux::Finding finding;
        finding.rule = QStringLiteral("no-root");
        finding.severity = lux::Severity::Surprising;
        finding.sentence
            = QStringLiteral("The network has no \"Vireo Surface\", so nothing of it is rendered.");
        finding.advice = QStringLiteral("Add one and link the material to it.");
        add(findingJson(path, finding));
    }
    for (const lux::BrickFinding& found : lux::checkNetwork(user, check)) {
        if (!options.tellsQuiet && (found.finding.isQuiet || !found.isWritten))
            continue;
        Json json = findingJson(path, found.finding);
        json["rendered"] = found.isWritten;
        if (found.brick) {
            json["brick"] = plain(brickCaption(found.brick));
            json["brickNumber"] = found.brick->getBrickID();
        }
        if (found.property) {
            json["property"] = plain(found.property->getName());
            json["propertyValue"] = plain(valueCaption(found.property));
        }
        add(std::move(json));
    }
}

void checkNetworkFile(const QString& path, const ReportOptions& options, Json* report)
{
    VireoBrickUser user;
    DzBrickUserFile file;
    if (!file.load(path, &user))
        fail(file.getError());
    lux::NetworkCheckOptions check;
    check.tellsPortability = options.tellsPortability;
    check.imageFolder = QFileInfo(path).absolutePath();
    addNetwork(path, QString(), &user, check, options, report);
}

void checkSceneFile(const QString& path, const ReportOptions& options, Json* report)
{
    const OpenScene scene(plain(path));
    lux::NetworkCheckOptions check;
    check.tellsPortability = options.tellsPortability;
    for (const Surface& surface : scene.surfaces()) {
        VireoBrickUser user;
        if (rebuildStoredNetwork(surface.material, &user))
            addNetwork(path, surface.path(), &user, check, options, report);
    }
}

} // namespace

bool isCheckable(const QString& path)
{
    const QString kind = DzFileFormats::getKind(path);
    return isText(path) || kind == DzFileKind::network() || kind == DzFileKind::scene();
}

std::string checkableHelp()
{
    const QString suffixes = DzFileFormats::getSuffixText(
        { DzFileKind::network(), DzFileKind::scene() }, DzFileFormats::Reading);
    return plain(suffixes + QStringLiteral(", .") + textSuffixes());
}

Json reportOf(const QString& path, const ReportOptions& options)
{
    Json report;
    report["file"] = plain(path);
    report["findings"] = Json::array();
    try {
        if (isText(path))
            checkText(path, options, &report);
        else if (DzFileFormats::getKind(path) == DzFileKind::scene())
            checkSceneFile(path, options, &report);
        else
            checkNetworkFile(path, options, &report);
    } catch (const CommandError& error) {
        report["error"] = plain(error.message);
    }
    return report;
}

QString findingLine(const Json& finding)
{
    QString line = member(finding, "file");
    if (finding.contains("line"))
        line += QStringLiteral(":%1:%2")
                    .arg(finding["line"].get<int>())
                    .arg(finding["column"].get<int>());
    line += QStringLiteral(": ");
    for (const char* place : { "surface", "brick" })
        if (finding.contains(place))
            line += member(finding, place) + QStringLiteral(": ");
    if (!finding.contains("brick") && finding.contains("statement"))
        line += member(finding, "statement") + QStringLiteral(" \"") + member(finding, "name")
            + QStringLiteral("\": ");
    const QString parameter = member(finding, "parameter");
    if (!parameter.isEmpty()) {
        const QString value
            = member(finding, finding.contains("value") ? "value" : "propertyValue");
        line += parameter + (value.isEmpty() ? QString() : QLatin1Char(' ') + value)
            + QStringLiteral(": ");
    }
    line += member(finding, "severity") + QStringLiteral(": ") + member(finding, "says")
        + QLatin1Char(' ') + member(finding, "do");
    return line.simplified();
}

bool isBad(const Json& report)
{
    if (report.contains("error"))
        return true;
    for (const Json& finding : report["findings"]) {
        const QString severity = member(finding, "severity");
        if (severity == lux::severityWord(lux::Severity::Crash)
            || severity == lux::severityWord(lux::Severity::Refused))
            return true;
    }
    return false;
}
