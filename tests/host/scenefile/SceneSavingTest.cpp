// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneDocument.h"
#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzdefaultmaterial.h"
#include "dzfloatproperty.h"
#include "dzsimpleelementdata.h"

#include <QFile>
#include <QTemporaryDir>
#include <zlib.h>

namespace {

QByteArray channelText(const char* id, const char* value)
{
    return "{ \"channel\" : { \"id\" : \"" + QByteArray(id)
        + "\", \"type\" : \"float\", \"current_value\" : " + value + ", \"mappable\" : true } }";
}

const QByteArray dataText
    = "{ \"type\" : \"studio/element_data/simple_data\", \"name\" : \"Net\", \"settings\" : "
      "{ \"Text\" : \"t\" } }";

QByteArray library(const QByteArray& channels, const QByteArray& data = QByteArray())
{
    return "{ \"id\" : \"Def\", \"extra\" : [ { \"type\" : \"studio_material_channels\", "
           "\"channels\" : [ "
        + channels + " ] }" + (data.isEmpty() ? QByteArray() : ", " + data) + " ] }";
}

QByteArray document(const QByteArray& libraryText, const QByteArray& materials)
{
    return "{\n\t\"asset_info\" : { \"type\" : \"scene\" },\n\t\"material_library\" : [\n\t\t"
        + libraryText + "\n\t],\n\t\"scene\" : {\n\t\t\"materials\" : [\n" + materials
        + "\n\t\t]\n\t}\n}";
}

QByteArray instance(const QByteArray& groups, const QByteArray& more = QByteArray())
{
    return "\t\t\t{\n\t\t\t\t\"id\" : \"" + QByteArray(groups).replace("\"", "").replace(", ", "+")
        + "-1\",\n\t\t\t\t\"url\" : \"#Def\",\n\t\t\t\t\"groups\" : [ " + groups + " ]"
        + (more.isEmpty() ? QByteArray() : ",\n\t\t\t\t" + more) + "\n\t\t\t}";
}

void addOwn(DzMaterial* material, const char* name = "Own")
{
    material->addProperty(new DzBoolProperty(QString::fromUtf8(name), false, true, true));
}

void addData(DzMaterial* material)
{
    auto* data = new DzSimpleElementData(QStringLiteral("Net"), true);
    data->getSettings()->setStringValue(QStringLiteral("Text"), QStringLiteral("new"));
    material->addDataItem(data);
}

void removeData(DzMaterial* material)
{
    DzElementData* data = material->findDataItem(QStringLiteral("Net"));
    ASSERT_NE(data, nullptr);
    material->deleteDataItem(data);
}

bool hasData(const OpenedScene& opened, const char* surface)
{
    return opened.surface(surface)->findDataItem(QStringLiteral("Net")) != nullptr;
}

float weightOf(const OpenedScene& opened, const char* surface)
{
    return propertyIn<DzFloatProperty>(opened.surface(surface), "W")->getValue();
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void putBytes(const QString& path, const QByteArray& data)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(data), data.size());
}

} // namespace

// What cannot be stored ---------------------------------------------------------------------

TEST(SceneSaving, surfacesOfWhichNotAllCouldBeWrittenAreNamed)
{
    for (const char* odd : { "\"extra\" : { \"type\" : \"x\" }", "\"extra\" : null",
             "\"extra\" : [ { \"type\" : \"studio_material_channels\", \"channels\" : 7 } ]" }) {
        // The definition is elsewhere, so that everything goes to the surface's own entry.
        const QByteArray text = document(
            "{ \"id\" : \"Unused\" }", instance("\"Odd\"", odd) + ",\n" + instance("\"Good\""));
        OpenedScene opened(text);
        for (const char* name : { "Odd", "Good" })
            addOwn(opened.surface(name));
        const QByteArray saved = opened.file.saveText();
        EXPECT_EQ(
            opened.file.getIncompleteSurfaces(), QVector<DzMaterial*> { opened.surface("Odd") })
            << odd;
        EXPECT_EQ(opened.file.getSaveWarnings().getAll().size(), 1);
        EXPECT_EQ(saved.count("\"Own\""), 2); // id and label
        EXPECT_TRUE(saved.contains(odd));
    }
}

TEST(SceneSaving, aDataItemLeavesASharedDefinitionWhenAllSurfacesLostIt)
{
    OpenedScene opened(document(
        library(channelText("W", "1"), dataText), instance("\"A\"") + ",\n" + instance("\"B\"")));
    EXPECT_TRUE(hasData(opened, "A"));
    removeData(opened.surface("A"));
    const QByteArray half = opened.file.saveText();
    EXPECT_EQ(opened.file.getIncompleteSurfaces(), QVector<DzMaterial*> { opened.surface("A") });
    EXPECT_TRUE(opened.warnings().contains(QLatin1String("\"Net\" is in a definition")))
        << opened.warnings().toStdString();
    removeData(opened.surface("B"));
    const QByteArray saved = opened.file.saveText();
    EXPECT_EQ(opened.file.getIncompleteSurfaces(), QVector<DzMaterial*>());
    const OpenedScene again(saved);
    EXPECT_FALSE(hasData(again, "A"));
    EXPECT_FALSE(hasData(again, "B"));
    EXPECT_EQ(weightOf(again, "A"), 1.0f);
}

TEST(SceneSaving, aPropertyOfASharedDefinitionThatStaysMakesTheSurfaceIncomplete)
{
    OpenedScene opened(
        document(library(channelText("W", "1")), instance("\"A\"") + ",\n" + instance("\"B\"")));
    DzMaterial* material = opened.surface("A");
    DzProperty* weight = material->findProperty(QStringLiteral("W"));
    weight->setIsUserProperty(true);
    EXPECT_EQ(material->removeProperty(weight), DZ_NO_ERROR);
    opened.file.saveText();
    EXPECT_EQ(opened.file.getIncompleteSurfaces(), QVector<DzMaterial*> { material });
}

// Several groups ----------------------------------------------------------------------------

TEST(SceneSaving, allGroupsOfAnEntryAreSurfaces)
{
    const QByteArray text = document(library(channelText("W", "0.5")),
        instance("\"A\", \"B\", \"A\"") + ",\n" + instance("\"C\""));
    OpenedScene opened(text);
    EXPECT_EQ(opened.warnings(), QString());
    ASSERT_EQ(opened.scene.getSurfaces().size(), 3);
    EXPECT_EQ(weightOf(opened, "B"), 0.5f);
    EXPECT_EQ(opened.file.saveText(), text);
}

TEST(SceneSaving, surfacesOfOneEntryThatChangeAlikeKeepIt)
{
    OpenedScene opened(document(library(channelText("W", "0.5")), instance("\"A\", \"B\"")));
    for (const char* name : { "A", "B" }) {
        propertyIn<DzFloatProperty>(opened.surface(name), "W")->setValue(0.75f);
        addOwn(opened.surface(name));
        addData(opened.surface(name));
    }
    const QByteArray saved = opened.file.saveText();
    EXPECT_TRUE(saved.contains("[ \"A\", \"B\" ]"));
    EXPECT_EQ(saved.count("\"Own\""), 2);
    const OpenedScene again(saved);
    for (const char* name : { "A", "B" }) {
        EXPECT_EQ(weightOf(again, name), 0.75f);
        EXPECT_TRUE(hasData(again, name));
    }
}

TEST(SceneSaving, surfacesOfOneEntryThatChangeDifferentlyGetTheirOwn)
{
    const QByteArray text = document(library(channelText("W", "0.5")),
        instance("\"A\", \"B\", \"C\"") + ",\n" + instance("\"D\""));
    OpenedScene opened(text);
    propertyIn<DzFloatProperty>(opened.surface("B"), "W")->setValue(0.75f);
    addOwn(opened.surface("B"));
    addData(opened.surface("B"));
    const QByteArray saved = opened.file.saveText();
    EXPECT_EQ(opened.warnings(), QString());
    OpenedScene again(saved);
    ASSERT_EQ(again.scene.getSurfaces().size(), 4) << saved.constData();
    for (const char* name : { "A", "C", "D" }) {
        EXPECT_EQ(weightOf(again, name), 0.5f) << name;
        EXPECT_FALSE(hasData(again, name)) << name;
        EXPECT_EQ(again.surface(name)->findProperty(QStringLiteral("Own")), nullptr) << name;
    }
    EXPECT_EQ(weightOf(again, "B"), 0.75f);
    EXPECT_TRUE(hasData(again, "B"));
    EXPECT_NE(again.surface("B")->findProperty(QStringLiteral("Own")), nullptr);
    EXPECT_TRUE(saved.contains("[ \"A\", \"C\" ]")) << saved.constData();
    EXPECT_EQ(again.warnings(), QString());
    // What was opened is still what changes are compared with.
    EXPECT_EQ(opened.file.saveText(), saved);
    propertyIn<DzFloatProperty>(opened.surface("B"), "W")->setValue(0.5f);
    opened.surface("B")->removeProperty(opened.surface("B")->findProperty(QStringLiteral("Own")));
    removeData(opened.surface("B"));
    EXPECT_EQ(opened.file.saveText(), text);
}

TEST(SceneSaving, takingOffTheDefinitionsMapKeepsTheSurfacesOwnValue)
{
    OpenedScene opened(document(library(channelText("W", "1, \"image_file\" : \"/m.png\"")),
        instance("\"A\"",
            "\"extra\" : [ { \"type\" : \"studio_material_channels\", \"channels\" : [ { "
            "\"channel\" : { \"id\" : \"W\", \"type\" : \"float\", \"current_value\" : 0.25 } } ] "
            "} "
            "]")));
    propertyIn<DzFloatProperty>(opened.surface("A"), "W")->clearMap();
    const OpenedScene again(opened.file.saveText());
    EXPECT_FALSE(propertyIn<DzFloatProperty>(again.surface("A"), "W")->isMapped());
    EXPECT_EQ(weightOf(again, "A"), 0.25f);
}

// References --------------------------------------------------------------------------------

TEST(SceneSaving, percentSignsStandForThemselvesWhereNoDigitsFollow)
{
    const QByteArray text = document(
        "{ \"id\" : \"100% wool\", \"extra\" : [ { \"type\" : \"studio_material_channels\", "
        "\"channels\" : [ "
            + channelText("W", "0.25, \"image_file\" : \"/a%20b/50%.png%2\"") + " ] } ] }",
        QByteArray(instance("\"A\"")).replace("#Def", "#100% wool"));
    const OpenedScene opened(text);
    EXPECT_EQ(weightOf(opened, "A"), 0.25f);
    EXPECT_EQ(propertyIn<DzFloatProperty>(opened.surface("A"), "W")->getMapValue()->getFilename(),
        QStringLiteral("/a b/50%.png%2"));
}

TEST(SceneSaving, aLayeredImageSaysThatOnlyItsLowestLayerIsUsed)
{
    const auto text = [](const char* layers) {
        return QByteArray("{\n\t\"image_library\" : [ { \"id\" : \"I\", \"map\" : [ ") + layers
            + " ] } ],\n"
            + document(library(channelText("W", "1, \"image\" : \"#I\"")), instance("\"A\""))
                  .mid(2);
    };
    const char* const one = "{ \"url\" : \"/low.png\" }";
    const OpenedScene plain(text(one));
    EXPECT_EQ(plain.warnings(), QString());
    const OpenedScene layered(text("{ \"url\" : \"/low.png\" }, { \"url\" : \"/high.png\" }"));
    EXPECT_TRUE(layered.warnings().contains(QLatin1String("only its lowest layer is used")))
        << layered.warnings().toStdString();
    EXPECT_EQ(propertyIn<DzFloatProperty>(layered.surface("A"), "W")->getMapValue()->getFilename(),
        QStringLiteral("/low.png"));
}

// Empty things ------------------------------------------------------------------------------

TEST(SceneSaving, whatWasEmptyIsEmptyAgainAfterAllWasTakenOff)
{
    const char* const compact
        = "{\"asset_info\":{},\"scene\":{\"materials\":[{\"groups\":[\"A\"],\"extra\":[]}]}}";
    const auto pretty = [](const char* material) {
        return "{\n\t\"asset_info\" : {\n\t},\n\t\"scene\" : {\n\t\t\"materials\" : [\n\t\t\t"
            + QByteArray(material) + "\n\t\t]\n\t}\n}";
    };
    for (const QByteArray& text : { QByteArray(compact), pretty("{}"), pretty("{ }"),
             pretty("{\n\t\t\t}"), pretty("{ \"extra\" : [] }"), pretty("{ \"extra\" : [ ] }"),
             pretty("{\n\t\t\t\t\"extra\" : []\n\t\t\t}"),
             pretty("{\n\t\t\t\t\"extra\" : [\n\t\t\t\t]\n\t\t\t}"),
             pretty("{\n\t\t\t\t\"extra\" : [\n\t\t\t\t\t{\n\t\t\t\t\t\t\"type\" : "
                    "\"studio_material_channels\",\n\t\t\t\t\t\t\"channels\" : []\n\t\t\t\t\t}\n"
                    "\t\t\t\t]\n\t\t\t}"),
             pretty("{\n\t\t\t\t\"id\" : \"A\"\n\t\t\t}") }) {
        OpenedScene opened(text);
        addOwn(opened.surface(0));
        addData(opened.surface(0));
        const QByteArray filled = opened.file.saveText();
        EXPECT_EQ(opened.warnings(), QString());
        OpenedScene again(filled);
        EXPECT_EQ(again.file.saveText(), filled);
        DzMaterial* material = again.surface(0);
        ASSERT_NE(material->findProperty(QStringLiteral("Own")), nullptr) << filled.constData();
        material->removeProperty(material->findProperty(QStringLiteral("Own")));
        removeData(material);
        EXPECT_EQ(again.file.saveText(), text) << filled.constData();
    }
}

// What else changed -------------------------------------------------------------------------

TEST(SceneSaving, whatSavingCannotWriteIsNamed)
{
    const QByteArray text
        = "{\n\t\"asset_info\" : { \"type\" : \"scene\" },\n\t\"scene\" : {\n\t\t"
          "\"nodes\" : [ { \"id\" : \"N\", \"geometries\" : [ { \"id\" : \"G\" } ] }, "
          "{ \"id\" : \"M\" } ],\n\t\t\"materials\" : [\n"
        + instance("\"A\", \"B\"").replace("\"url\"", "\"geometry\" : \"#G\", \"url\"")
        + "\n\t\t]\n\t}\n}";
    OpenedScene opened(text);
    opened.file.saveText();
    EXPECT_EQ(opened.warnings(), QString());
    DzNode* node = opened.scene.findNode(QStringLiteral("N"));
    ASSERT_NE(node, nullptr);
    node->setLabel(QStringLiteral("new label"));
    node->addDataItem(new DzSimpleElementData(QStringLiteral("Own"), true));
    opened.scene.addNode(new DzNode(QStringLiteral("New")));
    delete opened.scene.findNode(QStringLiteral("M"));
    DzShape* shape = node->getObject()->getCurrentShape();
    shape->removeMaterial(opened.surface("B"));
    shape->addMaterial(DzDefaultMaterial::createBare(QStringLiteral("B")));
    opened.surface("A")->setLabel(QStringLiteral("another"));
    EXPECT_EQ(opened.file.saveText(), text);
    const QString warnings = opened.warnings();
    for (const char* word : { "the node \"N\" has another label", "the data of the node \"N\"",
             "the node \"New\" is new", "the node \"M\" is no longer", "the surface \"B\" is new",
             "the surface \"A\" has another label", "this surface is no longer in the scene" })
        EXPECT_TRUE(warnings.contains(QLatin1String(word))) << word << "\n"
                                                            << warnings.toStdString();
    EXPECT_EQ(opened.file.getSaveWarnings().getAll().size(), 7);
}

TEST(SceneSaving, adviceFitsWhatIsWrongWithAText)
{
    const auto error = [](const QByteArray& text) {
        DzScene scene;
        DzSceneFile file;
        EXPECT_FALSE(file.loadText(text, QStringLiteral("bad.duf"), &scene));
        const QString message = file.getError();
        EXPECT_EQ(message.count(QLatin1String("bad.duf")), 1) << message.toStdString();
        return message;
    };
    const auto advises = [](const QString& message, const char* advice) {
        return message.endsWith(QLatin1String(advice));
    };
    EXPECT_TRUE(advises(error("\xff\xfe{"), "save it as UTF-8"));
    EXPECT_TRUE(advises(error("{ \"scene\" : \"gr\xfc\" }"), "save it as UTF-8"));
    EXPECT_TRUE(error("{ \"scene\" : [ 1, ] }").contains(QLatin1String("take out the comma")));
    EXPECT_TRUE(error("{ \"scene\" : 1, }").contains(QLatin1String("take out the comma")));
    EXPECT_TRUE(error("{ \"scene\" : " + QByteArray(1000, '[')).contains(QLatin1String("so deep")));
    EXPECT_TRUE(advises(error("{ \"scene\" : 1e999 }"), "correct the number in a text editor"));
    EXPECT_TRUE(advises(error("{ \"scene\" : "), "fetch a whole copy of the file"));
}

// Files -------------------------------------------------------------------------------------

TEST(SceneSaving, zerosBehindACompressedSceneAreNoFault)
{
    const QTemporaryDir folder;
    const QByteArray text = document(library(channelText("W", "1")), instance("\"A\""));
    const QString path = folder.filePath(QStringLiteral("in.duf"));
    gzFile packed = gzopen(QFile::encodeName(path).constData(), "wb");
    gzwrite(packed, text.constData(), static_cast<unsigned>(text.size()));
    gzclose(packed);
    const QByteArray padded = bytesOf(path) + QByteArray(500, '\0');
    putBytes(path, padded);
    DzScene scene;
    DzSceneFile file;
    ASSERT_TRUE(file.load(path, &scene)) << file.getError().toStdString();
    EXPECT_EQ(file.saveText(), text);
    ASSERT_TRUE(file.save(path));
    EXPECT_EQ(bytesOf(path), padded);
    putBytes(path, padded + "x");
    EXPECT_FALSE(file.load(path, &scene));
}

TEST(SceneSaving, aFileThatAnotherProgramChangedIsNoticed)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("in.duf"));
    const QString other = folder.filePath(QStringLiteral("other.duf"));
    const QString link = folder.filePath(QStringLiteral("link.duf"));
    const QByteArray text = document(library(channelText("W", "1")), instance("\"A\""));
    putBytes(path, text);
    putBytes(other, "{}");
    ASSERT_TRUE(QFile::link(path, link));
    DzScene scene;
    DzSceneFile file;
    ASSERT_TRUE(file.load(path, &scene));
    EXPECT_FALSE(file.isFileChanged(path));
    EXPECT_FALSE(file.isFileChanged(other));
    putBytes(path, text + " ");
    EXPECT_TRUE(file.isFileChanged(path));
    EXPECT_TRUE(file.isFileChanged(link));
    ASSERT_TRUE(file.save(path));
    EXPECT_FALSE(file.isFileChanged(path));
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_FALSE(file.isFileChanged(path));
}

TEST(SceneSaving, filesOfOtherKindsAreNotWrittenOver)
{
    const QTemporaryDir folder;
    const auto path = [&](const char* name) { return folder.filePath(QString::fromUtf8(name)); };
    const QByteArray text = document(library(channelText("W", "1")), instance("\"A\""));
    putBytes(path("in.duf"), text);
    putBytes(path("mesh.obj"), "v 0 0 0\n");
    putBytes(path("net.sskn"), "{}");
    putBytes(path("picture.png"), "\x89PNG");
    putBytes(path("list.json"), "{ \"a\" : 1 }");
    putBytes(path("empty"), "");
    putBytes(path("scene.json"), text);
    ASSERT_TRUE(QFile::link(path("mesh.obj"), path("link.duf")));
    OpenedScene opened(text);
    for (const char* name :
        { "mesh.obj", "net.sskn", "picture.png", "list.json", "link.duf", "new.OBJ" }) {
        const QByteArray before
            = QFile::exists(path(name)) ? bytesOf(path(name)) : QByteArray("none");
        EXPECT_FALSE(opened.file.save(path(name))) << name;
        EXPECT_TRUE(opened.file.getError().endsWith(QLatin1String("a name that ends in .duf")))
            << opened.file.getError().toStdString();
        EXPECT_EQ(QFile::exists(path(name)) ? bytesOf(path(name)) : QByteArray("none"), before);
    }
    for (const char* name :
        { "in.duf", "new.duf", "NEW.DSF", "empty", "scene.json", "no-suffix" }) {
        EXPECT_TRUE(opened.file.save(path(name))) << opened.file.getError().toStdString();
        EXPECT_EQ(bytesOf(path(name)), text);
    }
}
