// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneSurfaces.h"

#include "Command.h"
#include "NetworkPersistence.h"
#include "SurfaceProperties.h"
#include "dzapp.h"
#include "dzfilename.h"
#include "dznode.h"
#include "dzproperty.h"
#include "dzscene.h"
#include "idzbrickuser.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSet>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <unistd.h>

namespace {

/// Surfaces of the scene that a message names before it says how many more there are.
const int mostNamed = 8;

/// Only * and ? are special.
QRegularExpression wildcard(const QString& pattern)
{
    QString expression = QRegularExpression::escape(pattern);
    expression.replace(QLatin1String("\\*"), QLatin1String(".*"));
    expression.replace(QLatin1String("\\?"), QLatin1String("."));
    return QRegularExpression(QRegularExpression::anchoredPattern(expression),
        QRegularExpression::DotMatchesEverythingOption);
}

/// Tells whether a surface is meant by one pattern.
class SurfacePattern
{
public:
    explicit SurfacePattern(const QString& pattern)
        : m_text(pattern)
        , m_wildcard(wildcard(pattern))
    {
    }

    bool matches(const Surface& surface) const
    {
        const QString name = surface.material->getName();
        const QLatin1Char slash('/');
        return isEqual(name) || isEqual(surface.node->getName() + slash + name)
            || isEqual(surface.node->getLabel() + slash + name);
    }

private:
    bool isEqual(const QString& text) const
    {
        return text == m_text || m_wildcard.match(text).hasMatch();
    }

    QString m_text;
    QRegularExpression m_wildcard;
};

} // namespace

QString someNames(const QVector<Surface>& surfaces)
{
    QStringList names;
    for (int i = 0; i < qMin(surfaces.size(), mostNamed); ++i)
        names.append(QLatin1Char('"') + dzShownName(surfaces.at(i).path()) + QLatin1Char('"'));
    if (surfaces.size() > mostNamed)
        names.append(QStringLiteral("%1 more").arg(surfaces.size() - mostNamed));
    return names.isEmpty() ? QStringLiteral("no surfaces") : names.join(QStringLiteral(", "));
}

QString Surface::path() const
{
    return node->getName() + QLatin1Char('/') + material->getName();
}

SurfaceState stateOf(const DzMaterial* material)
{
    if (storedNetwork(material))
        return SurfaceState::Network;
    for (int i = 0; i < material->getNumProperties(); ++i)
        if (isRenderProperty(material->getProperty(i)->getName()))
            return SurfaceState::Properties;
    return SurfaceState::None;
}

QString stateWord(SurfaceState state)
{
    switch (state) {
    case SurfaceState::None:
        break;
    case SurfaceState::Properties:
        return QStringLiteral("properties");
    case SurfaceState::Network:
        return QStringLiteral("network");
    }
    return QStringLiteral("-");
}

OpenScene::OpenScene(const std::string& path)
    : m_path(argumentText(path))
{
    if (!m_file.load(m_path, dzApp->getScene()))
        fail(m_file.getError());
    for (const QString& warning : m_file.getReadWarnings().toLines())
        notice(QStringLiteral("warning: %1: %2").arg(m_path, warning));
    const QVector<DzSurface> surfaces = dzApp->getScene()->getSurfaces();
    QHash<QString, int> numOfPath;
    for (const DzSurface& place : surfaces) {
        Surface surface { place.node, place.material };
        surface.numberOfName = numOfPath[surface.path()]++;
        m_surfaces.append(surface);
    }
}

QVector<Surface> OpenScene::matching(const std::vector<std::string>& patterns) const
{
    QVector<bool> isMeant(m_surfaces.size(), false);
    for (const std::string& text : patterns) {
        const SurfacePattern pattern(argumentText(text));
        bool found = false;
        for (int i = 0; i < m_surfaces.size(); ++i) {
            if (!pattern.matches(m_surfaces.at(i)))
                continue;
            isMeant[i] = true;
            found = true;
        }
        if (!found)
            fail(QStringLiteral("%1: no surface matches \"%2\"; the scene has %3")
                     .arg(m_path, argumentText(text), someNames(m_surfaces)));
    }
    QVector<Surface> meant;
    for (int i = 0; i < m_surfaces.size(); ++i)
        if (isMeant.at(i))
            meant.append(m_surfaces.at(i));
    return meant;
}

void OpenScene::save(const std::string& path)
{
    if (m_file.isFileChanged(argumentText(path)))
        fail(
            QStringLiteral("cannot write %1: another program changed it since it was read; run the "
                           "command again")
                .arg(argumentText(path)));
    if (!m_file.save(argumentText(path)))
        fail(m_file.getError());
}

std::unique_ptr<DzScene> OpenScene::asSaved()
{
    auto scene = std::make_unique<DzScene>();
    DzSceneFile file;
    const QByteArray text = m_file.saveText();
    if (text.isEmpty())
        fail(QStringLiteral("%1: the scene gets too large; choose fewer surfaces").arg(m_path));
    if (!file.loadText(text, m_path, scene.get()))
        fail(file.getError());
    return scene;
}

void OpenScene::tellSaveWarnings() const
{
    for (const QString& warning : m_file.getSaveWarnings().toLines())
        notice(QStringLiteral("warning: %1: %2").arg(m_path, warning));
}

QVector<Surface> OpenScene::incomplete(const QVector<Surface>& surfaces) const
{
    QSet<const DzMaterial*> materials;
    for (const DzMaterial* material : m_file.getIncompleteSurfaces())
        materials.insert(material);
    QVector<Surface> incomplete;
    for (const Surface& surface : surfaces)
        if (materials.contains(surface.material))
            incomplete.append(surface);
    return incomplete;
}

void SurfaceChoice::addTo(CLI::App* command, const char* what)
{
    CLI::Option* named = command
                             ->add_option("--surface", patterns,
                                 std::string(what)
                                     + ": a surface's name or NODE/NAME; * and ? stand for any "
                                       "text and character. May be given several times")
                             ->allow_extra_args(false);
    command->add_flag("--all", all, "All surfaces of the scene")->excludes(named);
}

QVector<Surface> SurfaceChoice::in(const OpenScene& scene) const
{
    if (all)
        return scene.surfaces();
    return scene.matching(patterns);
}

void selectOnly(const OpenScene& scene, const QVector<Surface>& surfaces)
{
    for (const Surface& surface : scene.surfaces())
        surface.material->select(false);
    for (const Surface& surface : surfaces)
        surface.material->select(true);
}

BrickUserHandle::BrickUserHandle()
{
    QObject* object = dzApp->createInstance(QStringLiteral("VireoBrickUser"));
    material = qobject_cast<DzMaterial*>(object);
    user = dynamic_cast<IDzBrickUser*>(object);
    if (!user)
        fail(QStringLiteral("no loaded module offers the class VireoBrickUser; put the module "
                            "siskin beside the program or name its folder in VIREO_PLUGIN_PATH"));
}

Progress::Progress()
    : m_isShown(isatty(fileno(stderr)))
{
}

Progress::~Progress()
{
    // Leaves the line empty for what comes next.
    if (m_width > 0)
        std::fprintf(stderr, "\r%*s\r", m_width, "");
}

void Progress::tell(const QString& what)
{
    if (!m_isShown)
        return;
    std::fprintf(stderr, "\r%s%*s", what.toUtf8().constData(), qMax(0, m_width - what.size()), "");
    std::fflush(stderr);
    m_width = what.size();
}

void Progress::tell(const QString& what, int done, int total)
{
    static QElapsedTimer clock;
    if (!clock.isValid())
        clock.start();
    if (!m_isShown || (done < total && clock.elapsed() - m_last < 200))
        return;
    m_last = clock.elapsed();
    tell(QStringLiteral("%1 %2 of %3").arg(what).arg(done).arg(total));
}
