// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzscenefile.h"

#include "dzfilewriter.h"
#include "dzscene.h"
#include "gzipdata.h"
#include "jsonindex.h"
#include "objscene.h"
#include "scenereader.h"
#include "scenewriter.h"

#include <QCoreApplication>
#include <QPointer>
#include <climits>
#include <functional>
#include <new>

namespace {

/// Warnings that are kept word by word.
const int mostWarnings = 40;

const qint64 largestFile = INT_MAX - 4096; // what one text can hold

QString text(const char* source)
{
    return QCoreApplication::translate("DzSceneFile", source);
}

bool hasObjName(const QString& path)
{
    return path.endsWith(QLatin1String(".obj"), Qt::CaseInsensitive);
}

} // namespace

class DzSceneFile::Private
{
public:
    bool load(const QString& path, DzScene* scene);
    bool guarded(const std::function<bool()>& step);
    bool open(const QByteArray& document, DzScene* scene);
    bool save(const QString& path);
    bool convert(const QString& path, QByteArray* data);
    bool unpack(QByteArray* data);
    bool fail(const QString& place, const QString& cause, const QString& advice);

    QString name;
    QByteArray packed; ///< the file's own bytes when it was compressed
    QByteArray nextPacked;
    JsonIndex index;
    SurfaceRecords surfaces;
    QPointer<DzScene> scene;
    QString error;
    DzWarningList readWarnings { mostWarnings };
    DzWarningList writeWarnings { mostWarnings };
    bool isOpen = false;
    bool isConverted = false;
};

bool DzSceneFile::Private::fail(const QString& place, const QString& cause, const QString& advice)
{
    error = text("cannot read %1: ").arg(name)
        + (place.isEmpty() ? QString() : place + QLatin1String(": ")) + cause + QLatin1String("; ")
        + advice;
    return false;
}

bool DzSceneFile::Private::load(const QString& path, DzScene* target)
{
    name = path;
    QByteArray data;
    if (!dzReadFile(path, largestFile, &data, &error))
        return false;
    readWarnings.clear();
    nextPacked.clear();
    const bool isOther = hasObjName(path) && !isGzip(data);
    const bool isRead = guarded([&] { return isOther ? convert(path, &data) : unpack(&data); });
    if (!isRead || !guarded([&] { return open(data, target); }))
        return false;
    isConverted = isOther;
    target->setFilename(path);
    return true;
}

/// Runs a step of reading; running out of memory is a failure like others.
bool DzSceneFile::Private::guarded(const std::function<bool()>& step)
{
    try {
        return step();
    } catch (const std::bad_alloc&) {
        return fail(QString(), text("there is not enough memory for it"),
            text("close other programs or open a smaller scene"));
    }
}

bool DzSceneFile::Private::convert(const QString& path, QByteArray* data)
{
    QString cause;
    QByteArray document;
    if (!sceneFromObj(path, *data, &document, &readWarnings, &cause))
        return fail(QString(), cause, text("export it again"));
    *data = document;
    return true;
}

bool DzSceneFile::Private::unpack(QByteArray* data)
{
    if (!isGzip(*data))
        return true;
    nextPacked = *data;
    QString cause;
    if (!gunzip(nextPacked, data, &cause))
        return fail(QString(), cause, text("fetch a whole copy of the file"));
    return true;
}

bool DzSceneFile::Private::open(const QByteArray& document, DzScene* target)
{
    JsonIndex next;
    QString problem;
    if (!next.build(document, &problem))
        return fail(QString(), problem, text("fetch a whole copy of the file"));
    if (next.find(next.root(), "asset_info") == JsonIndex::none
        && next.find(next.root(), "scene") == JsonIndex::none)
        return fail(QString(),
            text("it is JSON, but no scene: it has neither asset_info nor scene"),
            text("choose a scene file"));
    DzSceneMaker maker(next, &readWarnings);
    if (!maker.make())
        return fail(QString(), maker.getError(), text("open a smaller scene"));
    index = std::move(next);
    surfaces = maker.takeSurfaces();
    packed = nextPacked;
    scene = target;
    isOpen = true;
    error.clear();
    writeWarnings.clear();
    maker.moveTo(target);
    return true;
}

bool DzSceneFile::Private::save(const QString& path)
{
    writeWarnings.clear();
    if (!isOpen) {
        error = text("cannot write %1: no scene was opened; open one first").arg(path);
        return false;
    }
    if (isConverted && hasObjName(path)) {
        error = text("cannot write %1: scenes are not written in this format; choose a name that "
                     "ends in .duf")
                    .arg(path);
        return false;
    }
    const QByteArray document = DzSceneWriter(index, surfaces, &writeWarnings).write();
    QByteArray data = document;
    if (!packed.isEmpty())
        data = document.constData() == index.text().constData() ? packed : gzip(document);
    if (data.isEmpty()) {
        error
            = text("cannot write %1: it gets too large; take something out of the scene").arg(path);
        return false;
    }
    if (!dzWriteFile(path, data, &error))
        return false;
    error.clear();
    if (scene)
        scene->setFilename(path);
    return true;
}

DzSceneFile::DzSceneFile()
    : d(new Private)
{
}

DzSceneFile::~DzSceneFile()
{
}

bool DzSceneFile::load(const QString& path, DzScene* scene)
{
    return d->load(path, scene);
}

bool DzSceneFile::loadText(const QByteArray& text, const QString& name, DzScene* scene)
{
    d->name = name;
    d->readWarnings.clear();
    d->nextPacked.clear();
    if (!d->guarded([&] { return d->open(text, scene); }))
        return false;
    d->isConverted = false;
    return true;
}

bool DzSceneFile::save(const QString& path)
{
    return d->save(path);
}

QByteArray DzSceneFile::saveText()
{
    d->writeWarnings.clear();
    if (!d->isOpen)
        return QByteArray();
    return DzSceneWriter(d->index, d->surfaces, &d->writeWarnings).write();
}

QString DzSceneFile::getError() const
{
    return d->error;
}

const DzWarningList& DzSceneFile::getReadWarnings() const
{
    return d->readWarnings;
}

const DzWarningList& DzSceneFile::getSaveWarnings() const
{
    return d->writeWarnings;
}

QStringList DzSceneFile::getWarnings() const
{
    return d->readWarnings.toLines() + d->writeWarnings.toLines();
}

bool DzSceneFile::isCompressed() const
{
    return !d->packed.isEmpty();
}

bool DzSceneFile::isConverted() const
{
    return d->isConverted;
}
