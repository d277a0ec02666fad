// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <memory>

/// What the program remembers from one run to the next: window layout, look, recent files and
/// choices. It stands in the file that the environment variable VIREO_SETTINGS_FILE names, else at
/// the user's usual place.
class ProgramSettings
{
public:
    /// Names that are kept of recent files.
    static const int recentFileCount = 10;

    ProgramSettings();
    ~ProgramSettings();

    QByteArray getGeometry() const;
    QByteArray getLayout() const;
    void setWindow(const QByteArray& geometry, const QByteArray& layout);

    /// The word of the look, empty for none.
    QString getTheme() const;
    void setTheme(const QString& word);

    bool isApplyListShown() const;
    void setApplyListShown(bool shown);
    bool isMiniMapShown() const;
    void setMiniMapShown(bool shown);

    /// Rules of problems that the user does not want to be told of, in the order of telling so.
    QStringList getSilencedRules() const;
    void setSilencedRules(const QStringList& rules);

    /// Full paths, the latest first; such that are gone are left out.
    QStringList getRecentFiles() const;
    void addRecentFile(const QString& path);
    void clearRecentFiles();

private:
    ProgramSettings(const ProgramSettings&) = delete;
    ProgramSettings& operator=(const ProgramSettings&) = delete;

    std::unique_ptr<QSettings> m_settings;
};
