// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfileformat.h"

#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzelement.h"
#include "dzpluginmgr.h"
#include "idzbrickuser.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <memory>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzFileFormats", source);
}

QVector<DzFileFormat> hostFormats()
{
    return {
        { DzFileKind::scene(), text("Scenes"), { QStringLiteral("duf"), QStringLiteral("dsf") },
            true, true },
        { DzFileKind::scene(), text("Scenes"), { QStringLiteral("obj") }, true, false },
        { DzFileKind::script(), text("Scripts"), { QStringLiteral("dsa") }, true, false },
    };
}

bool isBrick(const QMetaObject* metaObject)
{
    for (; metaObject; metaObject = metaObject->superClass())
        if (qstrcmp(metaObject->className(), "DzShaderBrick") == 0)
            return true;
    return false;
}

/// The file extension of a class's networks; empty for classes that are no brick users. Asking
/// costs an object, so that classes which cannot be any are left alone.
QString networkExtension(const DzClassFactory* factory)
{
    const QMetaObject& metaObject = factory->getMetaObject();
    if (!metaObject.inherits(&DzElement::staticMetaObject) || isBrick(&metaObject))
        return QString();
    const std::unique_ptr<QObject> object(factory->createInstance());
    auto* user = dynamic_cast<const IDzBrickUser*>(object.get());
    return user ? user->getExtension().toLower() : QString();
}

QVector<DzFileFormat>& addedFormats()
{
    static QVector<DzFileFormat> formats;
    return formats;
}

bool contains(const QVector<DzFileFormat>& formats, const DzFileFormat& wanted)
{
    for (const DzFileFormat& format : formats)
        if (format.kind == wanted.kind && format.suffixes == wanted.suffixes)
            return true;
    return false;
}

QVector<DzFileFormat> moduleFormats()
{
    // Modules come, but do not go while the application lives.
    static const DzApp* app = nullptr;
    static int numAsked = 0;
    static QVector<DzFileFormat> formats;
    if (app != dzApp) {
        app = dzApp;
        numAsked = 0;
        formats.clear();
    }
    if (!dzApp)
        return formats;
    const QList<const DzClassFactory*> factories = dzApp->getPluginMgr()->getClassFactories();
    for (; numAsked < factories.size(); ++numAsked) {
        const QString extension = networkExtension(factories.at(numAsked));
        const DzFileFormat format { DzFileKind::network(), text("Networks"), { extension }, true,
            true };
        if (!extension.isEmpty() && !contains(formats, format))
            formats.append(format);
    }
    return formats;
}

bool allows(const DzFileFormat& format, DzFileFormats::Use use)
{
    return use == DzFileFormats::Reading ? format.reads : format.writes;
}

QString suffixOf(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

/// "Networks and scenes" of the titles "Networks" and "Scenes".
QString titleOf(const QStringList& titles)
{
    QString title = titles.value(0);
    for (int i = 1; i < titles.size(); ++i) {
        const QString next = titles.at(i).left(1).toLower() + titles.at(i).mid(1);
        title = (i + 1 < titles.size() ? text("%1, %2") : text("%1 and %2")).arg(title, next);
    }
    return title;
}

/// The rows of these kinds that can be used so, in the order of `kinds`.
QVector<DzFileFormat> rowsOf(const QStringList& kinds, DzFileFormats::Use use)
{
    const QVector<DzFileFormat> all = DzFileFormats::getAll();
    QVector<DzFileFormat> rows;
    for (const QString& kind : kinds)
        for (const DzFileFormat& format : all)
            if (format.kind == kind && allows(format, use))
                rows.append(format);
    return rows;
}

} // namespace

QVector<DzFileFormat> DzFileFormats::getAll()
{
    return hostFormats() + moduleFormats() + addedFormats();
}

void DzFileFormats::add(const DzFileFormat& format)
{
    if (!contains(getAll(), format))
        addedFormats().append(format);
}

QString DzFileFormats::getKind(const QString& path)
{
    const QString suffix = suffixOf(path);
    for (const DzFileFormat& format : getAll())
        if (format.suffixes.contains(suffix))
            return format.kind;
    return QString();
}

bool DzFileFormats::isUsable(const QString& path, const QString& kind, Use use)
{
    return getSuffixes({ kind }, use).contains(suffixOf(path));
}

QStringList DzFileFormats::getSuffixes(const QStringList& kinds, Use use)
{
    QStringList suffixes;
    for (const DzFileFormat& format : rowsOf(kinds, use))
        suffixes += format.suffixes;
    suffixes.removeDuplicates();
    return suffixes;
}

QString DzFileFormats::getUsualSuffix(const QString& kind)
{
    return getSuffixes({ kind }, Writing).value(0);
}

QString DzFileFormats::getDialogFilter(const QStringList& kinds, Use use)
{
    QStringList titles;
    for (const DzFileFormat& format : rowsOf(kinds, use))
        titles.append(format.title);
    titles.removeDuplicates();
    const QString everything = text("All files (*)");
    if (titles.isEmpty())
        return everything;
    const QString patterns = getSuffixes(kinds, use).join(QLatin1String(" *."));
    return QStringLiteral("%1 (*.%2);;%3").arg(titleOf(titles), patterns, everything);
}

QString DzFileFormats::getSuffixText(const QStringList& kinds, Use use)
{
    const QStringList suffixes = getSuffixes(kinds, use);
    return suffixes.isEmpty() ? QString() : QLatin1Char('.') + suffixes.join(QLatin1String(", ."));
}
