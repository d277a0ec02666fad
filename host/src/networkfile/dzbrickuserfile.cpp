// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbrickuserfile.h"

#include "dzdefaultbrickuser.h"
#include "dzelement.h"
#include "dzfilewriter.h"
#include "idzbrickuser.h"
#include "keptmembers.h"
#include "settingsjson.h"
#include "settingstree.h"

#include <QCoreApplication>

namespace {

const QString& formatKey()
{
    static const QString key = QStringLiteral("format");
    return key;
}

const QString& versionKey()
{
    static const QString key = QStringLiteral("version");
    return key;
}

const QString& setupKey()
{
    static const QString key = QStringLiteral("BrickSetup");
    return key;
}

QString text(const char* source)
{
    return QCoreApplication::translate("DzBrickUserFile", source);
}

/// What keeps `root` from being a network file of this kind; empty when nothing does.
QString findFault(const DzSettings& root, const QString& format)
{
    if (root.getStringValue(formatKey()) != format)
        return text("\"format\" is not \"%1\": this is not a network file of this program; choose "
                    "another file")
            .arg(format);
    const double version = root.getFloatValue(versionKey(), -1);
    if (!(version >= 1) || version != static_cast<int>(qMin(version, 1e9)))
        return text("\"version\" is not a whole number from 1; the file is damaged");
    if (version > DzBrickUserFile::formatVersion)
        return text("it was written by a later version of this program (file version %1, this "
                    "program reads up to %2); update the program")
            .arg(version)
            .arg(DzBrickUserFile::formatVersion);
    if (!root.getSettingsValue(setupKey()))
        return text("\"BrickSetup\" is missing or no settings tree; the file is damaged");
    return QString();
}

} // namespace

bool DzBrickUserFile::fail(const QString& error)
{
    m_error = error;
    return false;
}

bool DzBrickUserFile::load(const QString& path, IDzBrickUser* user)
{
    QByteArray data;
    QString error;
    if (!dzReadFile(path, maximumSize, &data, &error))
        return fail(error);
    return loadText(data, path, user);
}

bool DzBrickUserFile::loadText(const QByteArray& data, const QString& name, IDzBrickUser* user)
{
    m_error.clear();
    m_warnings.clear();
    DzSettings root;
    QString error;
    if (!settingsFromJson(data, &root, &error))
        return fail(text("cannot read %1: %2").arg(name, error));
    const QString fault = findFault(root, user->getExtension());
    if (!fault.isEmpty())
        return fail(text("cannot read %1: %2").arg(name, fault));

    const DzWarningScope scope(&m_warnings);
    const auto understood = [](const QString& key) {
        return key == formatKey() || key == versionKey() || key == setupKey();
    };
    m_kept.clear();
    if (const auto kept = DzKeptMembers::remember(*root.tree(), understood))
        *m_kept.tree() = *kept;
    user->getBrickUserElement()->setAttributes(&root);
    return true;
}

QByteArray DzBrickUserFile::saveText(const IDzBrickUser* user) const
{
    DzSettings root;
    DzKeptMembers::begin(root.tree(), m_kept.tree());
    root.setStringValue(formatKey(), user->getExtension());
    root.setFloatValue(versionKey(), formatVersion);
    user->getBrickUserElement()->getAttributes(&root);
    DzKeptMembers::end(root.tree());
    return settingsToJson(root);
}

QByteArray DzBrickUserFile::saveText(const IDzBrickUser* user, const QList<uint>& ids) const
{
    DzSettings root;
    root.setStringValue(formatKey(), user->getExtension());
    root.setFloatValue(versionKey(), formatVersion);
    DzSettings* setup = root.setSettingsValue(setupKey());
    if (auto* network = dynamic_cast<const DzDefaultBrickUser*>(user))
        network->getAttributesHelper(setup, ids, nullptr);
    return settingsToJson(root);
}

bool DzBrickUserFile::save(const QString& path, const IDzBrickUser* user)
{
    m_error.clear();
    const QByteArray data = saveText(user);
    if (data.isEmpty())
        return fail(text("cannot write %1: too many settings are nested within each other; remove "
                         "levels from what scripts added")
                        .arg(path));
    QString error;
    return dzWriteFile(path, data, &error) || fail(error);
}
