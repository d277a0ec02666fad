// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzscenefile.h"

#include "dzfileformat.h"
#include "dzfilewriter.h"
#include "dzmaterial.h"
#include "dzscene.h"
#include "gzipdata.h"
#include "jsonindex.h"
#include "objscene.h"
#include "sceneinventory.h"
#include "scenereader.h"
#include "scenesplit.h"
#include "scenewriter.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFileInfo>
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

/// What to do about a text that is not JSON as it should be.
QString adviceOn(const QString& problem)
{
    const auto says = [&](const char* word) { return problem.contains(QLatin1String(word)); };
    if (says("UTF-8"))
        return text("open it in a text editor and save it as UTF-8");
    if (says("unexpected ']'") || says("unexpected '}'"))
        return text("take out the comma before that place, or what else does not belong there");
    if (says("levels of nesting"))
        return text("no scene is so deep; choose another file");
    if (says("too large"))
        return text("correct the number in a text editor");
    return text("fetch a whole copy of the file");
}

/// True for JSON that has what the host's documents have.
bool isSceneDocument(const JsonIndex& index)
{
    return index.find(index.root(), "asset_info") != JsonIndex::none
        || index.find(index.root(), "scene") != JsonIndex::none;
}

QByteArray digestOf(const QByteArray& data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha1);
}

bool holdsScene(const QString& path)
{
    QByteArray data;
    QByteArray unpacked;
    QString error;
    JsonIndex index;
    if (!dzReadFile(path, largestFile, &data, &error)
        || (isGzip(data) && !gunzip(data, &unpacked, &error)))
        return false;
    return index.build(isGzip(data) ? unpacked : data, &error) && isSceneDocument(index);
}

} // namespace

class DzSceneFile::Private
{
public:
    bool load(const QString& path, DzScene* scene);
    bool guarded(const std::function<bool()>& step);
    bool open(const QByteArray& document, DzScene* scene);
    bool save(const QString& path);
    void noteFile(const QString& path, const QByteArray& data);
    QByteArray write();
    QByteArray write(
        const JsonIndex& from, const SurfaceRecords& records, const SceneKeys& recordKeys);
    bool mayWriteTo(const QString& path);
    bool convert(const QString& path, QByteArray* data);
    bool unpack(QByteArray* data);
    bool fail(const QString& place, const QString& cause, const QString& advice);

    QString name;
    QByteArray packed; ///< the file's own bytes when it was compressed
    QByteArray nextPacked;
    JsonIndex index;
    SurfaceRecords surfaces;
    SceneKeys keys;
    QPointer<DzScene> scene;
    SceneInventory inventory;
    QString error;
    DzWarningList readWarnings { mostWarnings };
    DzWarningList writeWarnings { mostWarnings };
    QVector<QPointer<DzMaterial>> incomplete;
    QString filePath; ///< canonical, of the file that was opened or saved last
    QByteArray fileDigest;
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
    const QByteArray bytes = data;
    const bool isOther = hasObjName(path) && !isGzip(data);
    const bool isRead = guarded([&] { return isOther ? convert(path, &data) : unpack(&data); });
    if (!isRead || !guarded([&] { return open(data, target); }))
        return false;
    isConverted = isOther;
    noteFile(path, bytes);
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
        return fail(QString(), problem, adviceOn(problem));
    if (!isSceneDocument(next))
        return fail(QString(),
            text("it is JSON, but no scene: it has neither asset_info nor scene"),
            text("choose a scene file"));
    DzSceneMaker maker(next, &readWarnings);
    if (!maker.make())
        return fail(QString(), maker.getError(), text("open a smaller scene"));
    index = std::move(next);
    surfaces = maker.takeSurfaces();
    keys = maker.takeKeys();
    packed = nextPacked;
    scene = target;
    isOpen = true;
    error.clear();
    writeWarnings.clear();
    incomplete.clear();
    maker.moveTo(target);
    inventory.read(*target);
    return true;
}

QByteArray DzSceneFile::Private::write()
{
    QByteArray split;
    std::vector<std::size_t> order;
    if (!splitSurfaces(index, surfaces, &split, &order))
        return write(index, surfaces, keys);
    JsonIndex splitIndex;
    QString problem;
    if (split.isEmpty() || !splitIndex.build(split, &problem))
        return QByteArray();
    DzWarningList toldBefore;
    DzSceneMaker maker(splitIndex, &toldBefore);
    if (!maker.make())
        return QByteArray();
    SurfaceRecords records = maker.takeSurfaces();
    for (std::size_t i = 0; i < records.size(); ++i)
        records[i].material = surfaces[order[i]].material;
    return write(splitIndex, records, maker.takeKeys());
}

QByteArray DzSceneFile::Private::write(
    const JsonIndex& from, const SurfaceRecords& records, const SceneKeys& recordKeys)
{
    writeWarnings.clear();
    DzSceneWriter writer(from, records, recordKeys, &writeWarnings);
    const QByteArray document = writer.write();
    if (scene)
        inventory.tellUnsaved(*scene, &writeWarnings);
    incomplete.clear();
    for (DzMaterial* material : writer.getIncomplete())
        incomplete.append(material);
    return document;
}

/// What is there may be a mesh, a network or a picture, which a scene must not destroy.
bool DzSceneFile::Private::mayWriteTo(const QString& path)
{
    const auto refuse = [&](const QString& cause) {
        error = text("cannot write %1: %2; choose a name that ends in .%3")
                    .arg(path, cause, DzFileFormats::getUsualSuffix(DzFileKind::scene()));
        return false;
    };
    const QFileInfo info(path);
    // Links are followed when the file is written.
    for (const QString& target : { path, info.canonicalFilePath() })
        if (!DzFileFormats::getKind(target).isEmpty()
            && !DzFileFormats::isUsable(target, DzFileKind::scene(), DzFileFormats::Writing))
            return refuse(text("scenes are not written in this format"));
    const bool isNamedScene
        = DzFileFormats::isUsable(path, DzFileKind::scene(), DzFileFormats::Writing);
    if (isNamedScene || !info.isFile() || info.size() == 0 || holdsScene(path))
        return true;
    return refuse(text("there is a file that is not a scene"));
}

bool DzSceneFile::Private::save(const QString& path)
{
    writeWarnings.clear();
    if (!isOpen) {
        error = text("cannot write %1: no scene was opened; open one first").arg(path);
        return false;
    }
    if (!mayWriteTo(path))
        return false;
    const QByteArray document = write();
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
    noteFile(path, data);
    if (scene)
        scene->setFilename(path);
    return true;
}

void DzSceneFile::Private::noteFile(const QString& path, const QByteArray& data)
{
    filePath = QFileInfo(path).canonicalFilePath();
    fileDigest = digestOf(data);
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
    d->filePath.clear();
    d->isConverted = false;
    return true;
}

bool DzSceneFile::save(const QString& path)
{
    return d->save(path);
}

bool DzSceneFile::isFileChanged(const QString& path) const
{
    const QFileInfo info(path);
    QByteArray data;
    QString error;
    return info.isFile() && info.canonicalFilePath() == d->filePath
        && dzReadFile(path, largestFile, &data, &error) && digestOf(data) != d->fileDigest;
}

QByteArray DzSceneFile::saveText()
{
    return d->isOpen ? d->write() : QByteArray();
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

QVector<DzMaterial*> DzSceneFile::getIncompleteSurfaces() const
{
    QVector<DzMaterial*> materials;
    for (const QPointer<DzMaterial>& material : d->incomplete)
        materials.append(material);
    return materials;
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
