// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FileMenus.h"

#include "DataFiles.h"
#include "ProgramSettings.h"
#include "dzfileformat.h"

#include <QFileInfo>

RecentMenu::RecentMenu(ProgramSettings* settings, const QString& title, QWidget* parent)
    : QMenu(title, parent)
    , m_settings(settings)
{
    setObjectName(QStringLiteral("recent"));
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &RecentMenu::fill);
}

void RecentMenu::fill()
{
    clear();
    QStringList networks;
    QStringList scenes;
    for (const QString& path : m_settings->getRecentFiles())
        (DzFileFormats::getKind(path) == DzFileKind::scene() ? scenes : networks).append(path);
    addFiles(tr("Networks"), networks);
    addFiles(tr("Scenes"), scenes);
    if (isEmpty()) {
        addAction(tr("None yet"))->setEnabled(false);
        return;
    }
    addSeparator();
    connect(addAction(tr("Clear")), &QAction::triggered, this, &RecentMenu::cleared);
}

void RecentMenu::addFiles(const QString& title, const QStringList& paths)
{
    if (!paths.isEmpty())
        addSection(title);
    for (const QString& path : paths) {
        QAction* action
            = addAction(QFileInfo(path).fileName().replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setToolTip(path);
        connect(action, &QAction::triggered, this, [this, path] { emit fileChosen(path); });
    }
}

ExampleMenu::ExampleMenu(const QString& title, QWidget* parent)
    : QMenu(title, parent)
{
    connect(this, &QMenu::aboutToShow, this, &ExampleMenu::fill);
}

void ExampleMenu::fill()
{
    clear();
    const QStringList paths = findExamples();
    for (const QString& path : paths)
        connect(addAction(QFileInfo(path).completeBaseName()), &QAction::triggered, this,
            [this, path] { emit fileChosen(path); });
    if (paths.isEmpty())
        addAction(tr("None installed"))->setEnabled(false);
}
