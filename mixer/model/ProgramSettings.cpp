// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ProgramSettings.h"

#include <QFileInfo>

namespace {

// Keys of the file.
const QString geometryKey = QStringLiteral("window/geometry");
const QString layoutKey = QStringLiteral("window/layout");
const QString themeKey = QStringLiteral("look/theme");
const QString miniMapKey = QStringLiteral("look/miniMap");
const QString applyListKey = QStringLiteral("scene/showApplyList");
const QString silencedKey = QStringLiteral("problems/silenced");
const QString recentKey = QStringLiteral("files/recent");

} // namespace

ProgramSettings::ProgramSettings()
{
    const QString named = QString::fromLocal8Bit(qgetenv("VIREO_SETTINGS_FILE"));
    if (named.isEmpty())
        m_settings
            = std::make_unique<QSettings>(QStringLiteral("Vireo"), QStringLiteral("vireo-mixer"));
    else
        m_settings = std::make_unique<QSettings>(named, QSettings::IniFormat);
}

ProgramSettings::~ProgramSettings()
{
}

QByteArray ProgramSettings::getGeometry() const
{
    return m_settings->value(geometryKey).toByteArray();
}

QByteArray ProgramSettings::getLayout() const
{
    return m_settings->value(layoutKey).toByteArray();
}

void ProgramSettings::setWindow(const QByteArray& geometry, const QByteArray& layout)
{
    m_settings->setValue(geometryKey, geometry);
    m_settings->setValue(layoutKey, layout);
}

QString ProgramSettings::getTheme() const
{
    return m_settings->value(themeKey).toString();
}

void ProgramSettings::setTheme(const QString& word)
{
    m_settings->setValue(themeKey, word);
}

bool ProgramSettings::isApplyListShown() const
{
    return m_settings->value(applyListKey, true).toBool();
}

void ProgramSettings::setApplyListShown(bool shown)
{
    m_settings->setValue(applyListKey, shown);
}

bool ProgramSettings::isMiniMapShown() const
{
    return m_settings->value(miniMapKey, true).toBool();
}

void ProgramSettings::setMiniMapShown(bool shown)
{
    m_settings->setValue(miniMapKey, shown);
}

QStringList ProgramSettings::getSilencedRules() const
{
    return m_settings->value(silencedKey).toStringList();
}

void ProgramSettings::setSilencedRules(const QStringList& rules)
{
    m_settings->setValue(silencedKey, rules);
}

QStringList ProgramSettings::getRecentFiles() const
{
    // What is missing stays in the list: its drive may be back the next time.
    QStringList present;
    for (const QString& path : m_settings->value(recentKey).toStringList())
        if (QFileInfo::exists(path))
            present.append(path);
    return present;
}

void ProgramSettings::addRecentFile(const QString& path)
{
    const QString full = QFileInfo(path).absoluteFilePath();
    QStringList paths = m_settings->value(recentKey).toStringList();
    paths.removeAll(full);
    paths.prepend(full);
    m_settings->setValue(recentKey, QStringList(paths.mid(0, recentFileCount)));
}

void ProgramSettings::clearRecentFiles()
{
    m_settings->remove(recentKey);
}
