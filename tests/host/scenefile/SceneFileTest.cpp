// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzscenefile.h"

#include "dzapp.h"
#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzdefaultmaterial.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzundostack.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>
#include <gtest/gtest.h>
#include <zlib.h>

namespace {

// Texts -------------------------------------------------------------------------------------

const char* const libraryBody = R"(		{
			"id" : "Skin",
			"diffuse" : {
				"channel" : {
					"id" : "diffuse",
					"type" : "float_color",
					"name" : "Diffuse Color",
					"label" : "Base Color",
					"value" : [ 0.7529412, 0.7529412, 0.7529412 ],
					"current_value" : [ 1, 1, 1 ],
					"min" : 0,
					"max" : 1,
					"clamped" : true,
					"mappable" : true
				},
				"group" : "/Base"
			},
			"extra" : [
				{
					"type" : "studio/material/uber_iray",
					"version" : "1.1.0.0"
				},
				{
					"type" : "studio_material_channels",
					"channels" : [
						{
							"channel" : {
								"id" : "Glossy Weight",
								"type" : "float",
								"label" : "Weight",
								"value" : 0,
								"current_value" : 0.25,
								"min" : 0,
								"max" : 1,
								"clamped" : true,
								"step_size" : 0.01,
								"mappable" : true
							},
							"group" : "/Gloss",
							"presentation" : {
								"type" : "",
								"colors" : [ [ 0.3, 0.5, 0.6 ], [ 0.5, 0.5, 0.5 ] ]
							}
						},
						{
							"channel" : {
								"id" : "Mode",
								"type" : "enum",
								"label" : "Mode",
								"value" : 0,
								"current_value" : 1,
								"enum_values" : [ "One", "Two", "Three" ]
							},
							"group" : "/General"
						},
						{
							"channel" : {
								"id" : "Odd",
								"type" : "numeric_node",
								"value" : { "x" : [ 1, "two" ] }
							}
						}
					]
				}
			]
		})";

const char* const instanceBody = R"(			{
				"id" : "Skin-1",
				"url" : "#Skin",
				"geometry" : "#Mesh-1",
				"groups" : [ "Skin" ],
				"diffuse" : {
					"channel" : {
						"id" : "diffuse",
						"type" : "float_color",
						"name" : "Diffuse Color",
						"value" : [ 0.7529412, 0.7529412, 0.7529412 ],
						"current_value" : [ 1, 1, 1 ],
						"image_file" : "/maps/a%20b.png"
					}
				},
				"uv_set" : "#UVs",
				"extra" : [
					{
						"type" : "studio/material/uber_iray",
						"version" : "1.1.0.0"
					}
				]
			})";

const char* const bareInstanceBody = R"(			{
				"url" : "/data/Other.dsf#Definition",
				"geometry" : "#Mesh-1",
				"groups" : [ "Lips" ]
			})";

QByteArray document(const QByteArray& library, const QByteArray& materials,
    const QByteArray& nodes = QByteArray(), const QByteArray& afterMaterials = QByteArray())
{
    const QByteArray node = R"(			{
				"id" : "Figure-1",
				"url" : "#Figure",
				"name" : "Figure",
				"label" : "My Figure",
				"geometries" : [
					{
						"id" : "Mesh-1",
						"url" : "#Mesh",
						"label" : "shape"
					}
				],
				"extra" : [
					{
						"type" : "studio_node_channels",
						"version" : 4
					},
					{
						"type" : "studio/element_data/simple_data",
						"name" : "Note",
						"settings" : {
							"Text" : "t",
							"Number" : [ "i", 3 ]
						}
					}
				]
			})";
    const QByteArray mesh = R"(		{
			"id" : "Mesh",
			"vertices" : {
				"count" : 5,
				"values" : [
					[ 0, 0, 0 ],
					[ 1, 0, 0 ],
					[ 1, 1, 0 ],
					[ 0, 1, 0 ],
					[ 0.5, 2, 1.5e-05 ]
				]
			},
			"polygon_material_groups" : {
				"count" : 2,
				"values" : [
					"Skin",
					"Lips"
				]
			},
			"polylist" : {
				"count" : 2,
				"values" : [
					[ 0, 0, 0, 1, 2, 3 ],
					[ 0, 1, 3, 2, 4 ]
				]
			},
			"default_uv_set" : "#UVs"
		})";
    const QByteArray uvs = R"(		{
			"id" : "UVs",
			"vertex_count" : 5,
			"uvs" : {
				"count" : 6,
				"values" : [
					[ 0, 0 ],
					[ 1, 0 ],
					[ 1, 1 ],
					[ 0, 1 ],
					[ 0.5, 1 ],
					[ 0.25, 0.75 ]
				]
			},
			"polygon_vertex_indices" : [
				[ 1, 3, 5 ]
			]
		})";
    return "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : {\n\t\t\"type\" : \"scene\"\n"
           "\t},\n\t\"geometry_library\" : [\n"
        + mesh + "\n\t],\n\t\"uv_set_library\" : [\n" + uvs + "\n\t],\n\t\"material_library\" : [\n"
        + library + "\n\t],\n\t\"scene\" : {\n\t\t\"nodes\" : [\n" + node + nodes
        + "\n\t\t],\n\t\t\"materials\" : [\n" + materials + "\n\t\t]" + afterMaterials + "\n\t}\n}";
}

QByteArray usualDocument()
{
    return document(libraryBody, QByteArray(instanceBody) + ",\n" + bareInstanceBody);
}

QByteArray replaced(const QByteArray& text, const QByteArray& from, const QByteArray& to)
{
    QByteArray result = text;
    const int begin = result.indexOf(from);
    EXPECT_GE(begin, 0) << from.constData();
    return result.replace(begin, from.size(), to);
}

QByteArray gzipped(const QByteArray& data, int level = 1)
{
    z_stream stream = {};
    deflateInit2(&stream, level, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    QByteArray packed(static_cast<int>(deflateBound(&stream, static_cast<uLong>(data.size()))), 0);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

QByteArray gunzipped(const QByteArray& packed)
{
    z_stream stream = {};
    inflateInit2(&stream, 15 + 16);
    QByteArray data(64 << 20, Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(data.data());
    stream.avail_out = static_cast<uInt>(data.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    data.resize(static_cast<int>(stream.total_out));
    inflateEnd(&stream);
    return data;
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

/// A scene that was opened from a text.
class Opened
{
public:
    explicit Opened(const QByteArray& text)
    {
        EXPECT_TRUE(file.loadText(text, QStringLiteral("test.duf"), &scene))
            << file.getError().toStdString();
    }
    DzShape* shape(const char* node = "Figure") const
    {
        DzNode* found = scene.findNode(QString::fromUtf8(node));
        return found && found->getObject() ? found->getObject()->getCurrentShape() : nullptr;
    }
    DzMaterial* material(const char* name, const char* node = "Figure") const
    {
        DzShape* onNode = shape(node);
        DzMaterial* found = onNode ? onNode->findMaterial(QString::fromUtf8(name)) : nullptr;
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QString warnings() const { return file.getWarnings().join(QLatin1Char('\n')); }

    DzUndoStackLock lock;
    DzScene scene;
    DzSceneFile file;
};

template <typename Property>
Property* propertyOf(DzMaterial* material, const char* name)
{
    auto* property = qobject_cast<Property*>(material->findProperty(QString::fromUtf8(name)));
    EXPECT_NE(property, nullptr) << name;
    return property;
}

/// Lines of `after` that are not in `before`, in order; a failure when a line of `before` is lost
/// or changed other than by a comma at its end.
QStringList addedLines(const QByteArray& before, const QByteArray& after)
{
    const QList<QByteArray> old = before.split('\n');
    const QList<QByteArray> now = after.split('\n');
    QStringList added;
    int next = 0;
    for (const QByteArray& line : now) {
        const bool isOld
            = next < old.size() && (line == old.at(next) || line == old.at(next) + ',');
        if (isOld)
            ++next;
        else
            added.append(QString::fromUtf8(line.trimmed()));
    }
    EXPECT_EQ(next, old.size()) << "lost: " << old.value(next).constData();
    return added;
}

/// One property of each kind, all of a user.
void addAllKinds(DzMaterial* material)
{
    auto* number = new DzFloatProperty(QStringLiteral("Own Float"), false, true, 0.1f);
    number->setLabel(QStringLiteral("A \"float\""));
    number->setPath(QStringLiteral("Own"));
    number->setMinMax(-2, 1e20f);
    number->setIsMappable(true);
    number->setMap(QStringLiteral("/maps/größe 1.png"));
    number->setValue(1.0f / 3);
    material->addProperty(number);
    auto* integer = new DzIntProperty(QStringLiteral("Own Int"), false, true, 3);
    integer->setPath(QStringLiteral("/Own/Deeper"));
    integer->setMinMax(-7, 7);
    integer->setIsClamped(true);
    integer->setValue(-7);
    material->addProperty(integer);
    auto* onOff = new DzBoolProperty(QStringLiteral("Own Bool"), false, true, false);
    onOff->setBoolValue(true);
    onOff->setHidden(true);
    material->addProperty(onOff);
    auto* list = new DzEnumProperty(QStringLiteral("Own Enum"), false, true);
    list->addItem(QStringLiteral("first, one"));
    list->addItem(QStringLiteral("zweite \\ Größe"));
    list->setValue(1);
    material->addProperty(list);
    auto* color = new DzColorProperty(QStringLiteral("Own Color"), false, true, QColor(1, 2, 3));
    color->setIsMappable(true);
    color->setMap(QStringLiteral("C:/maps/c.png"));
    color->setColorValue(QColor(12, 34, 255));
    material->addProperty(color);
    auto* text = new DzStringProperty(QStringLiteral("Own/String"), true);
    text->setDefaultValue(QStringLiteral("default"));
    text->setValue(QStringLiteral("two\nlines\t\"quoted\" \\ ü \U0001F600 \x01"));
    text->lock(true);
    material->addProperty(text);
    auto* path = new DzFileProperty(QStringLiteral("Own File"), true);
    path->setType(DzFileProperty::FileSave);
    path->setFilter(QStringLiteral("IES (*.ies)"));
    path->setValue(QStringLiteral("/a/b.ies"));
    material->addProperty(path);
    auto* image = new DzImageProperty(QStringLiteral("Own Image"), true);
    image->setValue(QStringLiteral("pictures/x#1?.png"));
    material->addProperty(image);
    material->addProperty(new DzImageProperty(QStringLiteral("Own Empty Image"), true));
}

const int numKinds = 9;

/// Everything that describes a property but whether it can be animated.
QStringList description(const DzProperty* property)
{
    DzPropertySettings settings;
    property->getAttributes(&settings);
    settings.removeValue(QStringLiteral("CanAnimate"));
    QStringList list { QString::fromLatin1(property->metaObject()->className()),
        property->getName() };
    for (int i = 0; i < settings.getNumValues(); ++i) {
        QString value = settings.getValue(i);
        const QString key = settings.getKey(i);
        if (DzSettings* nested = settings.getSettingsValue(key))
            for (int k = 0; k < nested->getNumValues(); ++k)
                value += nested->getValue(k) + QLatin1Char(' ');
        if (key == QLatin1String("Path") && !value.startsWith(QLatin1Char('/')))
            value.prepend(QLatin1Char('/'));
        list.append(key + QLatin1Char('=') + value);
    }
    return list;
}

void expectAllKinds(DzMaterial* material)
{
    const DzMaterialPtr fresh(new DzDefaultMaterial);
    while (fresh->getNumProperties() > 0)
        delete fresh->getProperty(0);
    addAllKinds(fresh);
    ASSERT_EQ(fresh->getNumProperties(), numKinds);
    for (int i = 0; i < numKinds; ++i) {
        const DzProperty* wanted = fresh->getProperty(i);
        const DzProperty* found = material->findProperty(wanted->getName());
        ASSERT_NE(found, nullptr) << wanted->getName().toStdString();
        EXPECT_EQ(description(wanted).join(QLatin1Char('\n')).toStdString(),
            description(found).join(QLatin1Char('\n')).toStdString());
    }
}

void removeAllKinds(DzMaterial* material)
{
    for (int i = material->getNumProperties() - 1; i >= 0; --i)
        if (material->getProperty(i)->getName().startsWith(QLatin1String("Own"))) {
            EXPECT_EQ(material->removeProperty(material->getProperty(i)), DZ_NO_ERROR);
        }
}

void addData(DzMaterial* material, const char* name, const char* value)
{
    auto* data = new DzSimpleElementData(QString::fromUtf8(name), true);
    data->getSettings()->setStringValue(QStringLiteral("Text"), QString::fromUtf8(value));
    DzSettings* nested = data->getSettings()->setSettingsValue(QStringLiteral("Inner Tree"));
    nested->setIntValue(QStringLiteral("Int"), -5);
    nested->setFloatValue(QStringLiteral("Float"), 369);
    nested->setBoolValue(QStringLiteral("Bool"), false);
    nested->setSettingsValue(QStringLiteral("Empty"));
    EXPECT_EQ(material->addDataItem(data), DZ_NO_ERROR);
}

const DzSettings* dataOf(DzMaterial* material, const char* name)
{
    auto* data
        = qobject_cast<DzSimpleElementData*>(material->findDataItem(QString::fromUtf8(name)));
    EXPECT_NE(data, nullptr) << name;
    return data ? data->getSettings() : nullptr;
}

QString loadError(const QByteArray& text)
{
    DzScene scene;
    scene.addNode(new DzNode(QStringLiteral("kept")));
    DzSceneFile file;
    EXPECT_FALSE(file.loadText(text, QStringLiteral("bad.duf"), &scene));
    // A file that cannot be read leaves the scene alone.
    EXPECT_NE(scene.findNode(QStringLiteral("kept")), nullptr);
    EXPECT_FALSE(file.getError().contains(QLatin1Char('\n')));
    return file.getError();
}

} // namespace

// Reading -----------------------------------------------------------------------------------

TEST(SceneFile, readsNodesMeshAndSurfaces)
{
    const Opened opened(usualDocument());
    EXPECT_EQ(opened.warnings(), QString());
    ASSERT_EQ(opened.scene.getNumNodes(), 1);
    DzNode* node = opened.scene.getNode(0);
    EXPECT_EQ(node->getName(), QStringLiteral("Figure"));
    EXPECT_EQ(node->getLabel(), QStringLiteral("My Figure"));
    ASSERT_NE(node->findDataItem(QStringLiteral("Note")), nullptr);

    const DzFacetMesh& mesh = opened.shape()->getMesh();
    ASSERT_EQ(mesh.getNumVertices(), 5);
    EXPECT_EQ(mesh.vertices[4].z, 1.5e-05f);
    ASSERT_EQ(mesh.getNumFacets(), 2);
    EXPECT_TRUE(mesh.facets[0].isQuad());
    EXPECT_EQ(mesh.facets[1].getNumCorners(), 3);
    EXPECT_EQ(mesh.getSurfaceName(mesh.facets[1].surface), QStringLiteral("Lips"));
    // The third vertex has a place of its own in the second face.
    EXPECT_EQ(mesh.facets[0].uvs[3], 3);
    EXPECT_EQ(mesh.facets[1].uvs[0], 5);
    EXPECT_EQ(mesh.facets[1].uvs[1], 2);

    ASSERT_EQ(opened.shape()->getNumMaterials(), 2);
    EXPECT_EQ(opened.material("Skin")->getMaterialName(), QStringLiteral("uber_iray"));
    EXPECT_EQ(opened.material("Lips")->getNumProperties(), 0);
}

TEST(SceneFile, laysTheSurfacesOwnMembersOverTheDefinition)
{
    const Opened opened(usualDocument());
    DzMaterial* skin = opened.material("Skin");
    ASSERT_EQ(skin->getNumProperties(), 3);
    EXPECT_EQ(skin->getDiffuseColor(), QColor(255, 255, 255));
    EXPECT_EQ(skin->getColorMap()->getFilename(), QStringLiteral("/maps/a b.png"));
    auto* color = propertyOf<DzColorProperty>(skin, "Diffuse Color");
    EXPECT_EQ(color->getLabel(), QStringLiteral("Base Color"));
    EXPECT_EQ(color->getPath(), QStringLiteral("/Base"));
    EXPECT_EQ(color->getDefaultColorValue(), QColor(192, 192, 192));
    auto* weight = propertyOf<DzFloatProperty>(skin, "Glossy Weight");
    EXPECT_EQ(weight->getValue(), 0.25f);
    EXPECT_EQ(weight->getDefaultValue(), 0);
    EXPECT_EQ(weight->getMax(), 1);
    EXPECT_TRUE(weight->isClamped());
    EXPECT_FALSE(weight->isUserProperty());
    auto* mode = propertyOf<DzEnumProperty>(skin, "Mode");
    EXPECT_EQ(mode->getStringValue(), QStringLiteral("Two"));
}

TEST(SceneFile, readsAnEnumerationWithoutItemsAsANumber)
{
    const QByteArray instance = replaced(bareInstanceBody, "\"groups\"",
        "\"extra\" : [ { \"type\" : \"studio_material_channels\", \"channels\" : [\n"
        "{ \"channel\" : { \"id\" : \"Mode\", \"type\" : \"enum\", \"current_value\" : 4 } } ] } "
        "],\n"
        "\"groups\"");
    const QByteArray text = document("", instance);
    const Opened opened(text);
    auto* mode = propertyOf<DzIntProperty>(opened.material("Lips"), "Mode");
    ASSERT_NE(mode, nullptr);
    EXPECT_EQ(mode->getValue(), 4);
    mode->setValue(2);
    Opened again(const_cast<Opened&>(opened).file.saveText());
    EXPECT_EQ(propertyOf<DzIntProperty>(again.material("Lips"), "Mode")->getValue(), 2);
    mode->setValue(4);
    EXPECT_EQ(const_cast<Opened&>(opened).file.saveText(), text);
}

TEST(SceneFile, surfacesWithoutAMeshGetANodeOfTheirOwn)
{
    const QByteArray preset = R"({ "asset_info" : { "type" : "preset_shader" },
"scene" : { "materials" : [ { "url" : "#X", "extra" : [ { "type" : "studio/material/daz_brick" } ] } ] } })";
    const Opened opened(preset);
    ASSERT_EQ(opened.scene.getNumNodes(), 1);
    EXPECT_EQ(opened.material("X", "Surfaces")->getMaterialName(), QStringLiteral("daz_brick"));
    const Opened none(R"({ "asset_info" : {}, "scene" : { "animations" : [ ] } })");
    EXPECT_EQ(none.scene.getNumNodes(), 0);
}

TEST(SceneFile, namesMayBeEncodedAndOfAnyScript)
{
    QByteArray text = document(libraryBody, instanceBody);
    text.replace("\"#Skin\"", "\"#H%C3%A4nde%2F%20%25\"")
        .replace("\"id\" : \"Skin\"", "\"id\" : \"H\xc3\xa4nde/ %\"");
    text.replace("[ \"Skin\" ]", "[ \"\xe8\x82\x8c \\ud83d\\ude00\" ]");
    Opened opened(text);
    EXPECT_EQ(opened.warnings(), QString());
    DzMaterial* material = opened.material("肌 😀");
    ASSERT_NE(material, nullptr);
    EXPECT_EQ(material->getNumProperties(), 3);
    EXPECT_EQ(opened.file.saveText(), text);
}

// Saving unchanged --------------------------------------------------------------------------

TEST(SceneFile, anUnchangedTextIsTheSameBytes)
{
    const QByteArray text = usualDocument();
    for (const QByteArray& form :
        { text, "\xef\xbb\xbf" + text, text + "\n\n", QByteArray(text).replace("\n", "\r\n"),
            QByteArray(text).replace("\n", "").replace("\t", "") }) {
        Opened opened(form);
        EXPECT_EQ(opened.file.saveText(), form);
    }
}

TEST(SceneFile, aSurfaceThatIsChangedAndChangedBackIsUnchanged)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    DzMaterial* skin = opened.material("Skin");
    addAllKinds(skin);
    addData(skin, "Data", "x");
    propertyOf<DzFloatProperty>(skin, "Glossy Weight")->setValue(1);
    EXPECT_NE(opened.file.saveText(), text);
    removeAllKinds(skin);
    skin->deleteDataItem(skin->findDataItem(QStringLiteral("Data")));
    propertyOf<DzFloatProperty>(skin, "Glossy Weight")->setValue(0.25f);
    EXPECT_EQ(opened.file.saveText(), text);
}

// Adding and removing -----------------------------------------------------------------------

TEST(SceneFile, aNewPropertyIsWrittenInTheHostsForm)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    auto* property = new DzStringProperty(QStringLiteral("Own_x"), true);
    property->setLabel(QStringLiteral("L"));
    property->setPath(QStringLiteral("Own"));
    property->setValue(QStringLiteral("text\nmore"));
    opened.material("Skin")->addProperty(property);
    const QByteArray expected = R"(							}
						},
						{
							"user_property" : true,
							"channel" : {
								"id" : "Own_x",
								"type" : "string",
								"label" : "L",
								"value" : "",
								"current_value" : "text\nmore"
							},
							"group" : "/Own"
						}
					]
)";
    const QByteArray saved = opened.file.saveText();
    EXPECT_TRUE(saved.contains(expected)) << saved.constData();
    EXPECT_EQ(addedLines(text, saved).size(), 11);
}

TEST(SceneFile, theMapOfANewPropertyGoesToTheSurface)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    auto* property = new DzFloatProperty(QStringLiteral("Own_f"), false, true, 0.5f);
    property->setIsMappable(true);
    property->setMap(QStringLiteral("/maps/a b.png"));
    opened.material("Skin")->addProperty(property);
    const QByteArray saved = opened.file.saveText();
    addedLines(text, saved);
    const QByteArray expected = R"(					{
						"type" : "studio/material/uber_iray",
						"version" : "1.1.0.0"
					},
					{
						"type" : "studio_material_channels",
						"channels" : [
							{
								"channel" : {
									"id" : "Own_f",
									"type" : "float",
									"current_value" : 0.5,
									"image_file" : "/maps/a%20b.png"
								}
							}
						]
					}
				]
)";
    EXPECT_TRUE(saved.contains(expected)) << saved.constData();
    EXPECT_EQ(saved.count("Own_f"), 3);
}

TEST(SceneFile, allKindsAreReadBackAndRemovalRestoresTheBytes)
{
    const QByteArray text = usualDocument();
    const QByteArray withSpaces = QByteArray(text).replace("\t", "    ").replace("\" : ", "\": ");
    const QByteArray inOneLine = QByteArray(text).replace("\n", "").replace("\t", "");
    for (const QByteArray& form :
        { text, withSpaces, inOneLine, QByteArray(text).replace("\n", "\r\n") }) {
        for (const char* surface : { "Skin", "Lips" }) {
            Opened opened(form);
            addAllKinds(opened.material(surface));
            addData(opened.material(surface), "Data", "one \"two\"\n");
            const QByteArray saved = opened.file.saveText();
            EXPECT_EQ(opened.warnings(), QString());
            Opened again(saved);
            EXPECT_EQ(again.warnings(), QString());
            expectAllKinds(again.material(surface));
            EXPECT_TRUE(dataOf(again.material(surface), "Data")
                            ->isEqual(*dataOf(opened.material(surface), "Data")));
            EXPECT_EQ(again.file.saveText(), saved);
            removeAllKinds(again.material(surface));
            again.material(surface)->deleteDataItem(
                again.material(surface)->findDataItem(QStringLiteral("Data")));
            EXPECT_EQ(again.file.saveText(), form) << surface;
        }
    }
}

TEST(SceneFile, additionsTouchNoOtherLine)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    for (const char* surface : { "Skin", "Lips" }) {
        addAllKinds(opened.material(surface));
        addData(opened.material(surface), "Data", "x");
    }
    addedLines(text, opened.file.saveText());
    const QByteArray spaced = QByteArray(text).replace("\t", "    ").replace("\" : ", "\": ");
    Opened other(spaced);
    addAllKinds(other.material("Skin"));
    const QByteArray saved = other.file.saveText();
    for (const QString& line : addedLines(spaced, saved))
        EXPECT_FALSE(line.contains(QLatin1String("\" : "))) << line.toStdString();
    EXPECT_FALSE(saved.contains('\t'));
}

TEST(SceneFile, applyingTheSameTwiceGivesTheSameBytes)
{
    Opened opened(usualDocument());
    addAllKinds(opened.material("Skin"));
    addData(opened.material("Skin"), "Data", "x");
    const QByteArray once = opened.file.saveText();
    Opened again(once);
    DzMaterial* skin = again.material("Skin");
    removeAllKinds(skin);
    addAllKinds(skin);
    skin->deleteDataItem(skin->findDataItem(QStringLiteral("Data")));
    addData(skin, "Data", "x");
    EXPECT_EQ(again.file.saveText(), once);
}

TEST(SceneFile, aPropertyOfAnotherKindTakesTheOldOnesPlace)
{
    Opened opened(usualDocument());
    DzMaterial* skin = opened.material("Skin");
    skin->addProperty(new DzFloatProperty(QStringLiteral("Own"), false, true, 1));
    Opened again(opened.file.saveText());
    again.material("Skin")->removeProperty(QStringLiteral("Own"));
    again.material("Skin")->addProperty(new DzStringProperty(QStringLiteral("Own"), true));
    const QByteArray saved = again.file.saveText();
    EXPECT_EQ(saved.count("\"Own\""), 2);
    Opened last(saved);
    EXPECT_NE(propertyOf<DzStringProperty>(last.material("Skin"), "Own"), nullptr);
    EXPECT_EQ(last.warnings(), QString());
}

TEST(SceneFile, numbersArePrintedAsTheHostDoesUnlessThatLosesSomething)
{
    Opened opened(usualDocument());
    const auto printed = [&opened](float value) {
        DzMaterial* skin = opened.material("Skin");
        skin->removeProperty(QStringLiteral("Own"));
        skin->addProperty(new DzFloatProperty(QStringLiteral("Own"), false, true, value));
        const QByteArray text = opened.file.saveText();
        const int at = text.indexOf("current_value", text.indexOf("\"Own\""));
        return text.mid(at + 17, text.indexOf(',', at) - at - 17).toStdString();
    };
    EXPECT_EQ(printed(1), "1");
    EXPECT_EQ(printed(0.1f), "0.1");
    EXPECT_EQ(printed(1.5e-5f), "1.5e-05");
    EXPECT_EQ(printed(-0.7529412f), "-0.7529412");
    EXPECT_EQ(printed(16777215), "16777215");
    EXPECT_EQ(printed(0.123456789f), "0.12345679");
    EXPECT_EQ(printed(std::nanf("")), "0");
    EXPECT_EQ(printed(INFINITY), "3.402823e+38");
    EXPECT_EQ(printed(-INFINITY), "-3.402823e+38");
}

// Changing ----------------------------------------------------------------------------------

TEST(SceneFile, aChangedValueTouchesItsOwnTokens)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    DzMaterial* skin = opened.material("Skin");
    propertyOf<DzFloatProperty>(skin, "Glossy Weight")->setValue(0.75f);
    propertyOf<DzEnumProperty>(skin, "Mode")->setValue(2);
    skin->setDiffuseColor(QColor(0, 51, 255));
    QByteArray expected = text;
    expected.replace("\"current_value\" : 0.25", "\"current_value\" : 0.75");
    expected.replace("\"current_value\" : 1,\n\t\t\t\t\t\t\t\t\"enum",
        "\"current_value\" : 2,\n\t\t\t\t\t\t\t\t\"enum");
    expected.replace("\"current_value\" : [ 1, 1, 1 ]", "\"current_value\" : [ 0, 0.2, 1 ]");
    EXPECT_EQ(opened.file.saveText(), expected);
}

TEST(SceneFile, aMapIsPutOnChangedAndTakenOff)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    auto* weight = propertyOf<DzFloatProperty>(opened.material("Skin"), "Glossy Weight");
    weight->setMap(QStringLiteral("./w.png"));
    const QByteArray mapped = opened.file.saveText();
    EXPECT_EQ(addedLines(text, mapped).join(QLatin1Char(' ')).toStdString(),
        "{ \"type\" : \"studio_material_channels\", \"channels\" : [ { \"channel\" : { \"id\" : "
        "\"Glossy Weight\", \"type\" : \"float\", \"current_value\" : 0.25, \"image_file\" : "
        "\"./w.png\" } } ] }");
    Opened again(mapped);
    weight = propertyOf<DzFloatProperty>(again.material("Skin"), "Glossy Weight");
    EXPECT_EQ(weight->getMapValue()->getFilename(), QStringLiteral("./w.png"));
    weight->setMap(QStringLiteral("v.png"));
    EXPECT_EQ(again.file.saveText(), QByteArray(mapped).replace("./w.png", "v.png"));
    weight->clearMap();
    weight->setValue(0.5f);
    EXPECT_EQ(again.file.saveText(),
        QByteArray(text).replace("\"current_value\" : 0.25", "\"current_value\" : 0.5"));
    weight->setValue(0.25f);
    EXPECT_EQ(again.file.saveText(), text);
    again.material("Skin")->setColorMap(nullptr);
    EXPECT_EQ(again.file.saveText(),
        QByteArray(text).replace(",\n\t\t\t\t\t\t\"image_file\" : \"/maps/a%20b.png\"", ""));
}

TEST(SceneFile, aLayeredImageIsReplacedByAPlainOne)
{
    QByteArray text = usualDocument();
    text.replace("\"image_file\" : \"/maps/a%20b.png\"", "\"image\" : \"#Layers%201\"");
    text.replace("\t\"material_library\"",
        "\t\"image_library\" : [\n\t\t{\n\t\t\t\"id\" : \"Layers 1\",\n\t\t\t\"map\" : "
        "[\n\t\t\t\t{\n"
        "\t\t\t\t\t\"url\" : "
        "\"/maps/bottom%201.png\"\n\t\t\t\t}\n\t\t\t]\n\t\t}\n\t],\n\t\"material_library\"");
    Opened opened(text);
    DzMaterial* skin = opened.material("Skin");
    ASSERT_NE(skin->getColorMap(), nullptr);
    EXPECT_EQ(skin->getColorMap()->getFilename(), QStringLiteral("/maps/bottom 1.png"));
    EXPECT_EQ(opened.file.saveText(), text);
    propertyOf<DzColorProperty>(skin, "Diffuse Color")->setMap(QStringLiteral("p.png"));
    EXPECT_EQ(opened.file.saveText(),
        QByteArray(text).replace("\"image\" : \"#Layers%201\"", "\"image_file\" : \"p.png\""));
}

TEST(SceneFile, membersOfAPropertyAreChangedInTheHostsOrder)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    DzProperty* weight = opened.material("Skin")->findProperty(QStringLiteral("Glossy Weight"));
    weight->lock(true);
    weight->setHidden(true);
    weight->setLabel(QStringLiteral("W"));
    weight->setPath(QStringLiteral("/Other"));
    static_cast<DzFloatProperty*>(weight)->setMinMax(-1, 2);
    QByteArray expected = text;
    expected.replace("\"label\" : \"Weight\",\n",
        "\"label\" : \"W\",\n\t\t\t\t\t\t\t\t\"visible\" : false,\n\t\t\t\t\t\t\t\t\"locked\" : "
        "true,\n");
    expected.replace("\t\"min\" : 0,\n\t\t\t\t\t\t\t\t\"max\" : 1,",
        "\t\"min\" : -1,\n\t\t\t\t\t\t\t\t\"max\" : 2,");
    expected.replace("/Gloss", "/Other");
    const QByteArray saved = opened.file.saveText();
    EXPECT_EQ(saved, expected) << saved.constData();
    Opened again(saved);
    weight = again.material("Skin")->findProperty(QStringLiteral("Glossy Weight"));
    EXPECT_TRUE(weight->isLocked() && weight->isHidden());
    weight->lock(false);
    weight->setHidden(false);
    weight->setLabel(QStringLiteral("Weight"));
    weight->setPath(QStringLiteral("/Gloss"));
    static_cast<DzFloatProperty*>(weight)->setMinMax(0, 1);
    EXPECT_EQ(again.file.saveText(), text);
}

TEST(SceneFile, aDataItemIsReplacedInItsPlace)
{
    Opened opened(usualDocument());
    addData(opened.material("Skin"), "First", "one");
    addData(opened.material("Skin"), "Second", "two");
    const QByteArray saved = opened.file.saveText();
    Opened again(saved);
    auto* data = qobject_cast<DzSimpleElementData*>(
        again.material("Skin")->findDataItem(QStringLiteral("First")));
    ASSERT_NE(data, nullptr);
    data->getSettings()->setStringValue(QStringLiteral("Text"), QStringLiteral("changed"));
    EXPECT_EQ(again.file.saveText(), QByteArray(saved).replace("\"one\"", "\"changed\""));
    // One that is not to be saved is not.
    again.material("Skin")->addDataItem(new DzSimpleElementData(QStringLiteral("Third"), false));
    EXPECT_FALSE(again.file.saveText().contains("Third"));
}

TEST(SceneFile, unknownValuesInADataItemAreKept)
{
    QByteArray text = usualDocument();
    text.replace("\"version\" : \"1.1.0.0\"\n\t\t\t\t\t}\n\t\t\t\t]\n\t\t\t}",
        "\"version\" : \"1.1.0.0\"\n\t\t\t\t\t},\n\t\t\t\t\t{\n\t\t\t\t\t\t\"type\" : "
        "\"studio/element_data/simple_data\",\n\t\t\t\t\t\t\"name\" : "
        "\"D\",\n\t\t\t\t\t\t\"settings\" "
        ": {\n\t\t\t\t\t\t\t\"Odd\" : [ \"sl\", [ 1, { \"a\" : null } ] ],\n\t\t\t\t\t\t\t\"N\" : "
        "1.50\n"
        "\t\t\t\t\t\t}\n\t\t\t\t\t}\n\t\t\t\t]\n\t\t\t}");
    Opened opened(text);
    EXPECT_EQ(opened.warnings(), QString());
    EXPECT_EQ(opened.file.saveText(), text);
    auto* data = qobject_cast<DzSimpleElementData*>(
        opened.material("Skin")->findDataItem(QStringLiteral("D")));
    ASSERT_NE(data, nullptr);
    data->getSettings()->setFloatValue(QStringLiteral("N"), 2);
    EXPECT_TRUE(opened.file.saveText().contains("\"Odd\" : [\"sl\",[1,{\"a\":null}]]"));
}

// Definitions that are not the surface's alone ----------------------------------------------

TEST(SceneFile, aSharedDefinitionStaysAsItIs)
{
    const QByteArray other = QByteArray(instanceBody)
                                 .replace("Skin-1", "Skin-2")
                                 .replace("[ \"Skin\" ]", "[ \"Lips\" ]");
    const QByteArray text = document(libraryBody, QByteArray(instanceBody) + ",\n" + other);
    Opened opened(text);
    DzMaterial* lips = opened.material("Lips");
    addAllKinds(lips);
    propertyOf<DzFloatProperty>(lips, "Glossy Weight")->setValue(0.5f);
    lips->findProperty(QStringLiteral("Mode"))->lock(true);
    const QByteArray saved = opened.file.saveText();
    addedLines(text, saved);
    EXPECT_EQ(saved.left(saved.indexOf("\"scene\"")), text.left(text.indexOf("\"scene\"")));
    Opened again(saved);
    EXPECT_EQ(again.warnings(), QString());
    expectAllKinds(again.material("Lips"));
    EXPECT_EQ(again.material("Skin")->getNumProperties(), 3);
    EXPECT_EQ(
        propertyOf<DzFloatProperty>(again.material("Lips"), "Glossy Weight")->getValue(), 0.5f);
    EXPECT_EQ(
        propertyOf<DzFloatProperty>(again.material("Skin"), "Glossy Weight")->getValue(), 0.25f);
    EXPECT_TRUE(again.material("Lips")->findProperty(QStringLiteral("Mode"))->isLocked());
    removeAllKinds(again.material("Lips"));
    EXPECT_FALSE(again.file.saveText().contains("Own"));
}

TEST(SceneFile, aPropertyOfASharedDefinitionGoesWhenNoSurfaceHasItAnyMore)
{
    Opened first(document(libraryBody, instanceBody));
    addAllKinds(first.material("Skin"));
    QByteArray text = first.file.saveText();
    const QByteArray other
        = QByteArray(bareInstanceBody).replace("/data/Other.dsf#Definition", "#Skin");
    text.replace("\n\t\t]\n\t}\n}", ",\n" + other + "\n\t\t]\n\t}\n}");
    Opened opened(text);
    removeAllKinds(opened.material("Skin"));
    EXPECT_TRUE(opened.file.saveText().contains("Own Int"));
    EXPECT_TRUE(opened.warnings().contains(QLatin1String("that other surfaces use")));
    removeAllKinds(opened.material("Lips"));
    EXPECT_FALSE(opened.file.saveText().contains("Own"));
    EXPECT_EQ(opened.warnings(), QString());
}

TEST(SceneFile, entriesOfADefinitionElsewhereGoToTheSurface)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    auto* property = new DzBoolProperty(QStringLiteral("Own"), false, true, true);
    opened.material("Lips")->addProperty(property);
    const QByteArray expected = R"(				"groups" : [ "Lips" ],
				"extra" : [
					{
						"type" : "studio_material_channels",
						"channels" : [
							{
								"user_property" : true,
								"channel" : {
									"id" : "Own",
									"type" : "bool",
									"label" : "Own",
									"value" : true,
									"current_value" : true
								},
								"group" : "/"
							}
						]
					}
				]
			}
)";
    const QByteArray saved = opened.file.saveText();
    EXPECT_TRUE(saved.contains(expected)) << saved.constData();
}

TEST(SceneFile, takingOffAMapOfADefinitionElsewhereSaysSo)
{
    const QByteArray instance = replaced(bareInstanceBody, "\"groups\"",
        "\"extra\" : [ { \"type\" : \"studio_material_channels\", \"channels\" : [\n"
        "{ \"channel\" : { \"id\" : \"W\", \"type\" : \"float\", \"current_value\" : 1, "
        "\"image_file\" : \"w.png\" } } ] } ],\n"
        "\"groups\"");
    Opened opened(document("", instance));
    propertyOf<DzFloatProperty>(opened.material("Lips"), "W")->clearMap();
    const QByteArray saved = opened.file.saveText();
    EXPECT_TRUE(saved.contains("\"current_value\" : 1, \"image\" : null }")) << saved.constData();
    Opened again(saved);
    EXPECT_FALSE(propertyOf<DzFloatProperty>(again.material("Lips"), "W")->isMapped());
}

TEST(SceneFile, animationsOfARemovedPropertyGoWithIt)
{
    const auto animation = [](const char* url) {
        return "\n\t\t\t{\n\t\t\t\t\"url\" : \"" + QByteArray(url)
            + "\",\n\t\t\t\t\"keys\" : [ [ 0, 1 ] ]\n\t\t\t}";
    };
    const char* const path = ":?extra/studio_material_channels/channels/Own%20Float/value";
    const QByteArray kept
        = animation(
              "Other#materials/Skin:?extra/studio_material_channels/channels/Own%20Float/value")
        + ","
        + animation(
            "Figure#materials/Lips:?extra/studio_material_channels/channels/Own%20Float/value")
        + ","
        + animation(
            "Figure#materials/Skin:?extra/studio_material_channels/channels/Glossy%20Weight/value");
    const QByteArray gone = animation(QByteArray("name://@selection#materials/Skin").append(path))
        + "," + animation(QByteArray("Figure#materials/Skin").append(path)) + ",";
    const auto text = [](const QByteArray& animations) {
        return document(libraryBody, QByteArray(instanceBody), "",
            ",\n\t\t\"animations\" : [" + animations + "\n\t\t]");
    };
    Opened opened(text(gone + kept));
    addAllKinds(opened.material("Skin"));
    Opened again(opened.file.saveText());
    removeAllKinds(again.material("Skin"));
    EXPECT_EQ(again.file.saveText(), text(kept));
}

TEST(SceneFile, aSurfaceThatLeftTheSceneKeepsItsEntries)
{
    const QByteArray text = usualDocument();
    Opened opened(text);
    DzMaterial* skin = opened.material("Skin");
    addAllKinds(skin);
    opened.shape()->removeMaterial(skin);
    EXPECT_EQ(opened.file.saveText(), text);
    EXPECT_TRUE(opened.warnings().contains(QLatin1String("no longer in the scene")));
    opened.scene.clear();
    EXPECT_EQ(opened.file.saveText(), text);
}

// Files -------------------------------------------------------------------------------------

TEST(SceneFile, keepsTheFormTheFileHad)
{
    const QTemporaryDir folder;
    const QString in = folder.filePath(QStringLiteral("in.duf"));
    const QString out = folder.filePath(QStringLiteral("out.duf"));
    const QByteArray text = usualDocument();
    const QByteArray packed = gzipped(text, 6);
    for (const QByteArray& form :
        { text, packed, gzipped(text.left(100)) + gzipped(text.mid(100)) }) {
        putBytes(in, form);
        DzScene scene;
        DzSceneFile file;
        ASSERT_TRUE(file.load(in, &scene)) << file.getError().toStdString();
        EXPECT_EQ(scene.getFilename(), in);
        EXPECT_EQ(file.isCompressed(), form != text);
        ASSERT_TRUE(file.save(out));
        EXPECT_EQ(scene.getFilename(), out);
        EXPECT_EQ(bytesOf(out), form);
        addAllKinds(scene.findNode(QStringLiteral("Figure"))
                        ->getObject()
                        ->getCurrentShape()
                        ->getMaterial(0));
        ASSERT_TRUE(file.save(out));
        const QByteArray saved = bytesOf(out);
        EXPECT_EQ(saved.startsWith("\x1f\x8b\x08"), form != text);
        EXPECT_EQ(form == text ? saved : gunzipped(saved), file.saveText());
        if (form != text) {
            EXPECT_EQ(saved.left(10), QByteArray("\x1f\x8b\x08\x00\x00\x00\x00\x00\x04\x0b", 10));
        }
        EXPECT_EQ(bytesOf(in), form);
    }
}

TEST(SceneFile, aTargetThatCannotBeWrittenIsToldAndKept)
{
    const QTemporaryDir folder;
    Opened opened(usualDocument());
    EXPECT_FALSE(opened.file.save(folder.filePath(QStringLiteral("no/such/folder.duf"))));
    EXPECT_TRUE(opened.file.getError().contains(QLatin1String("no such folder")));
    EXPECT_FALSE(opened.file.save(folder.path()));
    if (QFileInfo(QStringLiteral("/dev/full")).exists()) {
        EXPECT_FALSE(opened.file.save(QStringLiteral("/dev/full")));
        EXPECT_TRUE(opened.file.getError().contains(QLatin1String("/dev/full")));
    }
    DzSceneFile empty;
    EXPECT_FALSE(empty.save(folder.filePath(QStringLiteral("x.duf"))));
    EXPECT_TRUE(empty.saveText().isEmpty());
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(SceneFile, aMissingFileIsTold)
{
    DzScene scene;
    DzSceneFile file;
    EXPECT_FALSE(file.load(QStringLiteral("/no/such/file.duf"), &scene));
    EXPECT_TRUE(file.getError().startsWith(QLatin1String("cannot read /no/such/file.duf: ")));
}

// Meshes of other programs ------------------------------------------------------------------

namespace {

const char* const objText
    = "mtllib box.mtl\no box\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv .5 2 -1e-3\n"
      "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\nvt .5 .5\n"
      "usemtl Red Paint\r\nf 1/1 2/2 3/3 4/4\n"
      "usemtl Glas\xc3\x9f\nf -2/5 -3/3 -1/-1\nusemtl Red Paint\nf 1 2 3 4 5\n";

} // namespace

TEST(SceneFile, aMeshWithNamedMaterialsOpensAsAScene)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("my box.obj"));
    putBytes(path, objText);
    putBytes(folder.filePath(QStringLiteral("box.mtl")),
        "newmtl Red Paint\nKd 1 0.2 0\nd 0.5\nmap_Kd tex/red.png\nmap_d alpha.png\n");
    DzScene scene;
    DzSceneFile file;
    ASSERT_TRUE(file.load(path, &scene)) << file.getError().toStdString();
    EXPECT_EQ(file.getWarnings().join(QLatin1Char('\n')), QString());
    EXPECT_TRUE(file.isConverted());
    ASSERT_EQ(scene.getNumNodes(), 1);
    EXPECT_EQ(scene.getNode(0)->getName(), QStringLiteral("my box"));
    DzShape* shape = scene.getNode(0)->getObject()->getCurrentShape();
    ASSERT_EQ(shape->getNumMaterials(), 2);
    DzMaterial* red = shape->findMaterial(QStringLiteral("Red Paint"));
    ASSERT_NE(red, nullptr);
    EXPECT_EQ(red->getDiffuseColor(), QColor(255, 51, 0));
    EXPECT_EQ(red->getBaseOpacity(), 0.5f);
    EXPECT_EQ(red->getColorMap()->getFilename(), folder.filePath(QStringLiteral("tex/red.png")));
    EXPECT_EQ(red->getOpacityMap()->getFilename(), folder.filePath(QStringLiteral("alpha.png")));
    ASSERT_NE(shape->findMaterial(QStringLiteral("Glasß")), nullptr);
    const DzFacetMesh& mesh = shape->getMesh();
    ASSERT_EQ(mesh.getNumVertices(), 5);
    ASSERT_EQ(mesh.getNumFacets(), 5);
    EXPECT_TRUE(mesh.facets[0].isQuad());
    EXPECT_EQ(mesh.facets[1].vertices[0], 3);
    EXPECT_EQ(mesh.getSurfaceName(mesh.facets[1].surface), QStringLiteral("Glasß"));
    const DzFacetMesh::Uv uv = mesh.uvs[static_cast<std::size_t>(mesh.facets[1].uvs[0])];
    EXPECT_EQ(uv.u, 0.5f);
    EXPECT_EQ(mesh.getSurfaceName(mesh.facets[4].surface), QStringLiteral("Red Paint"));

    // It is saved as a document of the host.
    EXPECT_FALSE(file.save(path));
    EXPECT_EQ(bytesOf(path), QByteArray(objText));
    const QString saved = folder.filePath(QStringLiteral("box.duf"));
    addAllKinds(red);
    ASSERT_TRUE(file.save(saved)) << file.getError().toStdString();
    DzScene again;
    DzSceneFile other;
    ASSERT_TRUE(other.load(saved, &again)) << other.getError().toStdString();
    EXPECT_EQ(other.getWarnings().join(QLatin1Char('\n')), QString());
    EXPECT_FALSE(other.isConverted());
    expectAllKinds(again.getNode(0)->getObject()->getCurrentShape()->findMaterial(
        QStringLiteral("Red Paint")));
    EXPECT_EQ(again.getNode(0)->getObject()->getCurrentShape()->getMesh().getNumFacets(), 5);
}

TEST(SceneFile, badMeshesAreReadAsFarAsTheyMakeSense)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bad.obj"));
    const auto open = [&path](const QByteArray& text) {
        putBytes(path, text);
        DzScene scene;
        DzSceneFile file;
        const bool isOpen = file.load(path, &scene);
        return isOpen ? QStringLiteral("open ") + file.getWarnings().join(QLatin1Char('\n'))
                      : file.getError();
    };
    EXPECT_TRUE(open("").contains(QLatin1String("there is no mesh in it")));
    EXPECT_TRUE(open("hello").contains(QLatin1String("there is no mesh in it")));
    const QByteArray vertices = "v 0 0 0\nv 1 0 0\nv 0 1 0\n";
    EXPECT_EQ(open(vertices + "f 1 2 3\n"), QStringLiteral("open "));
    for (const char* face : { "f 1 2 4", "f 0 1 2", "f -1 -2 -4", "f 1 2 -2147483648",
             "f 1 2 2147483647", "f 1 2", "f 1", "f a b c", "f / / /" })
        EXPECT_TRUE(open(vertices + face + "\n").contains(QLatin1String("1 faces do not have")))
            << face;
    EXPECT_TRUE(open(vertices + "f 1 2 99999999999999999999\nv nan inf 0\n")
                    .startsWith(QLatin1String("open")));
    EXPECT_EQ(open(vertices + "f 1/9 2/0 3/-9\nf 1//1 2//2 3//3\nf 1/2/3/4 2 3\n").left(5),
        QStringLiteral("open "));
    EXPECT_TRUE(open("v 1e999 0 0\n").contains(QLatin1String("1 vertices are not numbers")));
    EXPECT_TRUE(open("mtllib none.mtl\n" + vertices).contains(QLatin1String("none.mtl")));
    EXPECT_TRUE(open("mtllib\nmtllib \n" + vertices + "usemtl\nusemtl \nf 1 2 3\n")
                    .startsWith(QLatin1String("open")));
    EXPECT_TRUE(
        open(vertices + QByteArray("f 1 2 3\0f 1 2 3", 15)).startsWith(QLatin1String("open")));
}

// Bad input ---------------------------------------------------------------------------------

TEST(SceneFile, textsThatAreNoSceneAreTold)
{
    EXPECT_TRUE(loadError("").contains(QLatin1String("the text is empty")));
    EXPECT_TRUE(loadError("[]").contains(QLatin1String("outermost value")));
    EXPECT_TRUE(loadError("3").contains(QLatin1String("outermost value")));
    EXPECT_TRUE(loadError("{}").contains(QLatin1String("no scene")));
    EXPECT_EQ(loadError("{ \"asset_info\" : \n oops }").toStdString(),
        "cannot read bad.duf: line 2, column 2: this is not JSON: invalid literal; fetch a whole "
        "copy of the file");
    EXPECT_TRUE(loadError(QByteArray("{ \"a\" : 1\0 }", 12)).contains(QLatin1String("zero byte")));
    EXPECT_TRUE(loadError("{ \"a\" : 1e999 }").contains(QLatin1String("too large")));
    EXPECT_TRUE(loadError("{ \"a\" : \"\xff\" }").contains(QLatin1String("not JSON")));
    EXPECT_TRUE(loadError(QByteArray("\xff\xfe{\0", 4)).contains(QLatin1String("UTF-16")));
    EXPECT_TRUE(loadError("{ \"asset_info\" : {}, }").contains(QLatin1String("not JSON")));
}

TEST(SceneFile, aTruncatedTextIsToldWhereverItEnds)
{
    const QByteArray text = usualDocument();
    for (int size = 0; size < text.size(); size += size < 200 ? 1 : 37) {
        DzScene scene;
        DzSceneFile file;
        EXPECT_FALSE(file.loadText(text.left(size), QStringLiteral("cut.duf"), &scene)) << size;
    }
}

TEST(SceneFile, deepNestingIsLimited)
{
    const auto nested = [](int depth) {
        return "{ \"asset_info\" : " + QByteArray(depth, '[') + QByteArray(depth, ']') + " }";
    };
    Opened opened(nested(511));
    EXPECT_EQ(opened.file.saveText(), nested(511));
    EXPECT_TRUE(loadError(nested(512)).contains(QLatin1String("512 levels")));
    EXPECT_TRUE(loadError(nested(1000000)).contains(QLatin1String("512 levels")));
}

TEST(SceneFile, damagedPackedFilesAreTold)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("packed.duf"));
    const auto error = [&path](const QByteArray& data) {
        putBytes(path, data);
        DzScene scene;
        DzSceneFile file;
        EXPECT_FALSE(file.load(path, &scene));
        return file.getError();
    };
    const QByteArray packed = gzipped(usualDocument());
    QByteArray wrongSum = packed;
    wrongSum[wrongSum.size() - 6] = static_cast<char>(wrongSum.at(wrongSum.size() - 6) ^ 1);
    EXPECT_TRUE(error(wrongSum).contains(QLatin1String("the checksum does not match")));
    EXPECT_TRUE(error(packed.left(packed.size() / 2)).contains(QLatin1String("cut off")));
    EXPECT_TRUE(error(packed.left(packed.size() - 3)).contains(QLatin1String("cut off")));
    EXPECT_TRUE(error(packed.left(2)).contains(QLatin1String("cut off")));
    QByteArray damaged = packed;
    damaged[packed.size() / 2] = static_cast<char>(damaged.at(packed.size() / 2) ^ 0x55);
    EXPECT_TRUE(error(damaged).contains(QLatin1String("damaged")));
    // A bomb: nothing but blanks, packed twelve hundred times smaller and more.
    EXPECT_TRUE(
        error(gzipped(QByteArray(100 << 20, ' '), 9)).contains(QLatin1String("more than a scene")));
}

TEST(SceneFile, valuesOfTheWrongTypeDoNoHarm)
{
    const QByteArray text = usualDocument();
    const QList<QByteArray> lines = text.split('\n');
    const QByteArray replacements[]
        = { "null", "[]", "{}", "\"x\"", "-1e30", "[ 1, 2 ]", "[ {} ]", "true" };
    for (int line = 0; line < lines.size(); ++line) {
        const int at = lines.at(line).indexOf("\" : ");
        if (at < 0 || lines.at(line).endsWith('{') || lines.at(line).endsWith('['))
            continue;
        const bool hasComma = lines.at(line).endsWith(',');
        for (const QByteArray& replacement : replacements) {
            QList<QByteArray> changed = lines;
            changed[line] = lines.at(line).left(at + 4) + replacement + (hasComma ? "," : "");
            const QByteArray form = changed.join('\n');
            Opened opened(form);
            EXPECT_EQ(opened.file.saveText(), form) << changed.at(line).constData();
            for (int i = 0; i < opened.scene.getNumNodes(); ++i) {
                DzObject* object = opened.scene.getNode(i)->getObject();
                DzShape* shape = object ? object->getCurrentShape() : nullptr;
                for (int k = 0; shape && k < shape->getNumMaterials(); ++k) {
                    addAllKinds(shape->getMaterial(k));
                    addData(shape->getMaterial(k), "Data", "x");
                    for (DzProperty* property : shape->getMaterial(k)->getPropertyList())
                        property->setLabel(QStringLiteral("changed"));
                }
            }
            Opened again(opened.file.saveText());
        }
    }
}

TEST(SceneFile, membersOfTheWrongTypeAreKeptAndNothingIsLost)
{
    for (const char* key : { "\"geometry_library\" : ", "\"material_library\" : ",
             "\"uv_set_library\" : ", "\"scene\" : ", "\"nodes\" : ", "\"materials\" : ",
             "\"geometries\" : ", "\"extra\" : ", "\"channels\" : ", "\"channel\" : ",
             "\"vertices\" : ", "\"polylist\" : ", "\"uvs\" : " }) {
        QByteArray swapped = usualDocument();
        const int at = swapped.indexOf(key);
        swapped.insert(at, QByteArray(key) + "5,\n");
        Opened opened(swapped);
        EXPECT_EQ(opened.file.saveText(), swapped) << key;
    }
}

TEST(SceneFile, parentsThatGoInACircleAreCut)
{
    const auto node = [](const char* id, const char* parent) {
        return ",\n{ \"id\" : \"" + QByteArray(id) + "\", \"parent\" : \"#" + parent + "\" }";
    };
    const QByteArray text = document("", "",
        node("a", "b") + node("b", "c") + node("c", "a") + node("d", "c") + node("e", "e")
            + node("f", "none") + node("g", "Figure-1"));
    Opened opened(text);
    ASSERT_EQ(opened.scene.getNumNodes(), 8);
    EXPECT_EQ(opened.file.getWarnings().size(), 3);
    EXPECT_TRUE(opened.warnings().contains(QLatin1String("form a loop")));
    EXPECT_EQ(opened.scene.findNode(QStringLiteral("d"))->getNodeParent(),
        opened.scene.findNode(QStringLiteral("c")));
    EXPECT_EQ(opened.scene.findNode(QStringLiteral("g"))->getNodeParent()->getName(),
        QStringLiteral("Figure"));
    EXPECT_EQ(opened.scene.findNode(QStringLiteral("e"))->getNodeParent(), nullptr);
}

TEST(SceneFile, idsThatStandTwiceMeanTheFirst)
{
    const QByteArray text
        = document(QByteArray(libraryBody) + ",\n" + QByteArray(libraryBody).replace("0.25", "0.5"),
            QByteArray(instanceBody) + ",\n" + instanceBody,
            ",\n{ \"id\" : \"Figure-1\", \"geometries\" : [ { \"id\" : \"Mesh-1\", \"url\" : "
            "\"#Mesh\" } ] }");
    Opened opened(text);
    EXPECT_EQ(opened.file.getWarnings().size(), 3);
    EXPECT_EQ(opened.shape()->getNumMaterials(), 2);
    EXPECT_EQ(
        propertyOf<DzFloatProperty>(opened.material("Skin"), "Glossy Weight")->getValue(), 0.25f);
    EXPECT_EQ(opened.file.saveText(), text);
}

TEST(SceneFile, facesWithIndicesOutOfRangeAreLeftOut)
{
    QByteArray text = usualDocument();
    text.replace("[ 0, 0, 0, 1, 2, 3 ],",
        "[ 0, 0, 0, 1, 2, 5 ],\n[ 0, 0, -1, 1, 2 ],\n[ 0, 0, 0.5, 1, 2 ],\n"
        "[ 0, 0, 1e30, 1, 2 ],\n[ 0, 0, 1, 2 ],\n[ 0, 9, 0, 1, 2, 3, 4 ],\n[ 0, 7, 0, 1, 2 "
        "],\n5,\n\"x\",");
    Opened opened(text);
    const DzFacetMesh& mesh = opened.shape()->getMesh();
    EXPECT_EQ(mesh.getNumFacets(), 2);
    EXPECT_EQ(mesh.facets[0].surface, -1);
    EXPECT_EQ(opened.file.getWarnings().size(), 2);
    EXPECT_EQ(opened.file.saveText(), text);
}

TEST(SceneFile, warningsDoNotGrowWithoutLimit)
{
    QByteArray nodes;
    for (int i = 0; i < 5000; ++i)
        nodes += ",\n{ \"id\" : \"same\" }";
    Opened opened(document("", "", nodes));
    EXPECT_LT(opened.file.getWarnings().size(), 100);
    EXPECT_TRUE(opened.file.getWarnings().last().endsWith(QLatin1String("more")));
}

TEST(SceneFile, manySurfacesCostNoMoreThanEachOfThem)
{
    const int count = 100000;
    QByteArray materials;
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i);
        materials += (i ? ",\n" : "") + QByteArray("{ \"id\" : \"m") + number
            + "\", \"url\" : \"#Skin\", \"geometry\" : \"#Mesh-1\", \"groups\" : [ \"s" + number
            + "\" ] }";
    }
    QByteArray library = libraryBody;
    Opened opened(document(library, materials));
    ASSERT_EQ(opened.shape()->getNumMaterials(), count);
    for (int i = 0; i < count; i += 2)
        opened.shape()->getMaterial(i)->addProperty(
            new DzIntProperty(QStringLiteral("Own"), false, true, i));
    Opened again(opened.file.saveText());
    EXPECT_EQ(propertyOf<DzIntProperty>(again.material("s500"), "Own")->getValue(), 500);
    EXPECT_EQ(again.material("s501")->findProperty(QStringLiteral("Own")), nullptr);
}

TEST(SceneFile, aSmallFileCannotStandForAHugeScene)
{
    QByteArray channels;
    for (int i = 0; i < 2000; ++i)
        channels += (i ? "," : "") + QByteArray("{\"channel\":{\"id\":\"c") + QByteArray::number(i)
            + "\",\"type\":\"int\"}}";
    QByteArray materials;
    for (int i = 0; i < 1000; ++i)
        materials += (i ? "," : "") + QByteArray("{\"url\":\"#L\"}");
    const QByteArray text
        = "{\"asset_info\":{},\"material_library\":[{\"id\":\"L\",\"extra\":[{\"type\":"
          "\"studio_material_channels\",\"channels\":["
        + channels + "]}]}],\"scene\":{\"materials\":[" + materials + "]}}";
    EXPECT_TRUE(loadError(text).contains(QLatin1String("more properties than")));
}

// The host's own files ----------------------------------------------------------------------

namespace {

QStringList samples()
{
    const QDir folder(QStringLiteral(VIREO_SAMPLES_DIR));
    QStringList paths;
    for (const QString& name :
        folder.entryList({ QStringLiteral("*.duf"), QStringLiteral("*.dsf") }, QDir::Files))
        paths.append(folder.filePath(name));
    return paths;
}

} // namespace

TEST(SceneFileSamples, areTheSameBytesWhenNothingChanged)
{
    if (samples().isEmpty())
        GTEST_SKIP() << "there are no sample scenes in " << VIREO_SAMPLES_DIR;
    const QTemporaryDir folder;
    const QString out = folder.filePath(QStringLiteral("out.duf"));
    for (const QString& path : samples()) {
        DzScene scene;
        DzSceneFile file;
        ASSERT_TRUE(file.load(path, &scene)) << file.getError().toStdString();
        EXPECT_EQ(file.getWarnings().join(QLatin1Char('\n')).toStdString(), "");
        ASSERT_TRUE(file.save(out));
        EXPECT_EQ(bytesOf(out), bytesOf(path)) << path.toStdString();
    }
}

TEST(SceneFileSamples, getNothingButOurLinesAndLoseThemAgain)
{
    if (samples().isEmpty())
        GTEST_SKIP() << "there are no sample scenes in " << VIREO_SAMPLES_DIR;
    int numSurfaces = 0;
    for (const QString& path : samples()) {
        DzScene scene;
        DzSceneFile file;
        ASSERT_TRUE(file.load(path, &scene));
        const QByteArray before = file.saveText();
        const auto forEachSurface = [](const DzScene& in, const auto& function) {
            for (int i = 0; i < in.getNumNodes(); ++i) {
                DzObject* object = in.getNode(i)->getObject();
                for (int s = 0; object && s < object->getNumShapes(); ++s)
                    for (int k = 0; k < object->getShape(s)->getNumMaterials(); ++k)
                        function(object->getShape(s)->getMaterial(k));
            }
        };
        forEachSurface(scene, [&numSurfaces](DzMaterial* material) {
            addAllKinds(material);
            addData(material, "Own Data", "x");
            ++numSurfaces;
        });
        const QByteArray after = file.saveText();
        addedLines(before, after);
        DzScene again;
        DzSceneFile other;
        ASSERT_TRUE(other.loadText(after, path, &again)) << other.getError().toStdString();
        EXPECT_EQ(other.getWarnings().join(QLatin1Char('\n')).toStdString(), "");
        forEachSurface(again, [](DzMaterial* material) {
            expectAllKinds(material);
            removeAllKinds(material);
            material->deleteDataItem(material->findDataItem(QStringLiteral("Own Data")));
        });
        EXPECT_EQ(other.saveText(), before) << path.toStdString();
    }
    EXPECT_GT(numSurfaces, 20);
}
