// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzscenefile.h"
#include "dzshape.h"
#include "dzstringproperty.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

void demand(bool holds, const char* what)
{
    if (!holds)
        qFatal("%s", what);
}

/// Half of the text is meshes, half is surfaces with many properties, as in scenes of the host.
QByteArray buildScene(int megabytes)
{
    const int channelsPerSurface = 150;
    const qint64 half = qint64(megabytes) * 1000000 / 2;
    QByteArray vertices;
    int numVertices = 0;
    QByteArray faces;
    while (vertices.size() + faces.size() < half) {
        const QByteArray number = QByteArray::number(numVertices);
        vertices += (numVertices ? ",\n" : "\n") + QByteArray("\t\t\t\t\t[ ")
            + QByteArray::number(numVertices * 0.0137, 'g', 7) + ", "
            + QByteArray::number(160.5 - numVertices * 0.00031, 'g', 7) + ", -3.402915 ]";
        faces += (numVertices ? ",\n" : "\n") + QByteArray("\t\t\t\t\t[ 0, 0, 0, 1, 2, ") + number
            + " ]";
        ++numVertices;
    }
    QByteArray library;
    QByteArray instances;
    for (int i = 0; library.size() < half; ++i) {
        const QByteArray number = QByteArray::number(i);
        library += (i ? ",\n" : "\n") + QByteArray("\t\t{\n\t\t\t\"id\" : \"Surface") + number
            + "\",\n\t\t\t\"extra\" : [\n"
              "\t\t\t\t{\n\t\t\t\t\t\"type\" : "
              "\"studio_material_channels\",\n\t\t\t\t\t\"channels\" : [";
        for (int k = 0; k < channelsPerSurface; ++k) {
            const QByteArray channel = QByteArray::number(k);
            library += (k ? ",\n" : "\n")
                + QByteArray("\t\t\t\t\t\t{\n\t\t\t\t\t\t\t\"channel\" : {\n\t\t\t\t\t\t\t\t\"id\" "
                             ": \"Weight ")
                + channel
                + "\",\n\t\t\t\t\t\t\t\t\"type\" : \"float\",\n\t\t\t\t\t\t\t\t\"label\" : "
                  "\"Layered Weight "
                + channel
                + "\",\n\t\t\t\t\t\t\t\t\"value\" : 0,\n\t\t\t\t\t\t\t\t\"current_value\" : "
                  "0.25,\n\t\t\t\t\t\t\t\t\"min\" : 0,\n"
                  "\t\t\t\t\t\t\t\t\"max\" : 1,\n\t\t\t\t\t\t\t\t\"clamped\" : "
                  "true,\n\t\t\t\t\t\t\t\t\"step_size\" : 0.01,\n"
                  "\t\t\t\t\t\t\t\t\"default_image_gamma\" : 1,\n\t\t\t\t\t\t\t\t\"mappable\" : "
                  "true\n\t\t\t\t\t\t\t},\n"
                  "\t\t\t\t\t\t\t\"group\" : \"/Base/Diffuse/Reflection\"\n\t\t\t\t\t\t}";
        }
        library += "\n\t\t\t\t\t]\n\t\t\t\t}\n\t\t\t]\n\t\t}";
        instances += (i ? ",\n" : "\n") + QByteArray("\t\t\t{\n\t\t\t\t\"id\" : \"Surface") + number
            + "-1\",\n\t\t\t\t\"url\" : \"#Surface" + number
            + "\",\n\t\t\t\t\"geometry\" : \"#Mesh-1\",\n\t\t\t\t\"groups\" : [ \"Surface" + number
            + "\" ]\n\t\t\t}";
    }
    const QByteArray count = QByteArray::number(numVertices);
    return "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : {\n\t\t\"type\" : "
           "\"scene\"\n\t},\n"
           "\t\"geometry_library\" : [\n\t\t{\n\t\t\t\"id\" : \"Mesh\",\n\t\t\t\"vertices\" : "
           "{\n\t\t\t\t\"count\" : "
        + count + ",\n\t\t\t\t\"values\" : [" + vertices
        + "\n\t\t\t\t]\n\t\t\t},\n\t\t\t\"polygon_material_groups\" : {\n"
          "\t\t\t\t\"count\" : 1,\n\t\t\t\t\"values\" : "
          "[\n\t\t\t\t\t\"Surface0\"\n\t\t\t\t]\n\t\t\t},\n"
          "\t\t\t\"polylist\" : {\n\t\t\t\t\"count\" : "
        + count + ",\n\t\t\t\t\"values\" : [" + faces
        + "\n\t\t\t\t]\n\t\t\t}\n\t\t}\n\t],\n\t\"material_library\" : [" + library
        + "\n\t],\n\t\"scene\" : {\n\t\t\"nodes\" : [\n\t\t\t{\n\t\t\t\t\"id\" : "
          "\"Node\",\n\t\t\t\t\"geometries\" : [\n"
          "\t\t\t\t\t{\n\t\t\t\t\t\t\"id\" : \"Mesh-1\",\n\t\t\t\t\t\t\"url\" : "
          "\"#Mesh\"\n\t\t\t\t\t}\n\t\t\t\t]\n\t\t\t}\n\t\t],\n"
          "\t\t\"materials\" : ["
        + instances + "\n\t\t]\n\t}\n}";
}

/// A scene file of this many megabytes in a folder of its own.
class SceneOnDisk
{
public:
    explicit SceneOnDisk(int megabytes)
        : path(m_folder.filePath(QStringLiteral("scene.duf")))
        , other(m_folder.filePath(QStringLiteral("other.duf")))
    {
        const QByteArray text = buildScene(megabytes);
        QFile file(path);
        demand(
            file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "write the scene");
    }

private:
    QTemporaryDir m_folder;

public:
    QString path;
    QString other;
};

/// Puts a property on every surface.
void changeSurfaces(DzScene* scene)
{
    DzShape* shape = scene->getNode(0)->getObject()->getCurrentShape();
    for (int i = 0; i < shape->getNumMaterials(); ++i) {
        auto* property = new DzStringProperty(QStringLiteral("Extra Settings"), true);
        property->setValue(QStringLiteral("line\n").repeated(20));
        demand(shape->getMaterial(i)->addProperty(property) == 0, "add");
    }
}

void BM_OpenScene(benchmark::State& state)
{
    const SceneOnDisk disk(static_cast<int>(state.range(0)));
    double surfaces = 0;
    for (auto _ : state) {
        DzScene scene;
        DzSceneFile file;
        demand(file.load(disk.path, &scene), "load");
        demand(file.getWarnings().isEmpty(), "no warning");
        state.PauseTiming();
        surfaces = scene.getNode(0)->getObject()->getCurrentShape()->getNumMaterials();
        scene.clear();
        state.ResumeTiming();
    }
    state.counters["surfaces"] = surfaces;
    state.counters["MB"] = static_cast<double>(QFileInfo(disk.path).size()) / 1e6;
}

void BM_SaveScene(benchmark::State& state)
{
    const SceneOnDisk disk(static_cast<int>(state.range(0)));
    DzScene scene;
    DzSceneFile file;
    demand(file.load(disk.path, &scene), "load");
    changeSurfaces(&scene);
    for (auto _ : state)
        demand(file.save(disk.other), "save");
    {
        DzScene again;
        DzSceneFile other;
        demand(other.load(disk.other, &again), "load what was saved");
        demand(again.getNode(0)->getObject()->getCurrentShape()->getMaterial(0)->findProperty(
                   QStringLiteral("Extra Settings")),
            "property");
    }
}

/// Peak memory of opening, changing and saving, as a multiple of the file. The kernel's count of
/// this process is reset before.
void BM_SceneMemory(benchmark::State& state)
{
    const SceneOnDisk disk(static_cast<int>(state.range(0)));
    const auto status = [](const char* key) {
        QFile file(QStringLiteral("/proc/self/status"));
        demand(file.open(QIODevice::ReadOnly), "status");
        for (const QByteArray& line : file.readAll().split('\n'))
            if (line.startsWith(key))
                return line.mid(static_cast<int>(qstrlen(key)))
                           .simplified()
                           .split(' ')
                           .first()
                           .toDouble()
                    * 1024;
        return 0.0;
    };
    for (auto _ : state) {
        malloc_trim(0);
        QFile reset(QStringLiteral("/proc/self/clear_refs"));
        if (reset.open(QIODevice::WriteOnly))
            reset.write("5");
        reset.close();
        const double before = status("VmRSS:");
        DzScene scene;
        DzSceneFile file;
        demand(file.load(disk.path, &scene), "load");
        const double open = status("VmHWM:") - before;
        changeSurfaces(&scene);
        demand(file.save(disk.other), "save");
        const double size = static_cast<double>(QFileInfo(disk.path).size());
        state.counters["open"] = open / size;
        state.counters["peak"] = (status("VmHWM:") - before) / size;
    }
}

} // namespace

BENCHMARK(BM_OpenScene)->Arg(50)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_SaveScene)->Arg(50)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_SceneMemory)->Arg(50)->Unit(benchmark::kMillisecond)->Iterations(1);
