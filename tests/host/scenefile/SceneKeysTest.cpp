// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneDocument.h"
#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzstringproperty.h"

namespace {

const char* const library = R"(		{
			"id" : "Shader",
			"diffuse" : {
				"channel" : {
					"id" : "diffuse",
					"type" : "color",
					"name" : "Diffuse Color",
					"label" : "Diffuse Color",
					"value" : [ 1, 1, 1 ],
					"mappable" : true
				}
			},
			"extra" : [
				{
					"type" : "studio/material/uber_iray"
				},
				{
					"type" : "studio_material_channels",
					"channels" : [
						{
							"channel" : {
								"id" : "Glossy Weight",
								"type" : "float",
								"label" : "Glossy Weight",
								"value" : 0,
								"min" : 0,
								"max" : 1,
								"mappable" : true
							},
							"group" : "/Gloss"
						},
						{
							"channel" : {
								"id" : "100%/A",
								"type" : "bool",
								"label" : "A",
								"value" : false
							}
						},
						{
							"channel" : {
								"id" : "Name",
								"type" : "string",
								"label" : "Name",
								"value" : "none"
							}
						},
						{
							"channel" : {
								"id" : "Backdrop",
								"type" : "image",
								"label" : "Backdrop",
								"value" : null
							}
						}
					]
				}
			]
		})";

QByteArray preset(const QByteArray& materials, const QByteArray& animations)
{
    return "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : {\n\t\t\"type\" : "
           "\"preset_shader\"\n\t},\n\t\"material_library\" : [\n"
        + QByteArray(library) + "\n\t],\n\t\"scene\" : {\n\t\t\"materials\" : [\n" + materials
        + "\n\t\t],\n\t\t\"animations\" : [\n" + animations + "\n\t\t]\n\t}\n}";
}

const char* const anySurface = "\t\t\t{\n\t\t\t\t\"url\" : \"#Shader\"\n\t\t\t}";

QByteArray animation(const QByteArray& address, const QByteArray& keys)
{
    return "\t\t\t{\n\t\t\t\t\"url\" : \"" + address + "\",\n\t\t\t\t\"keys\" : [ " + keys
        + " ]\n\t\t\t}";
}

const QByteArray any = "name://@selection#materials:?";
const QByteArray listed = "extra/studio_material_channels/channels/";

QByteArray fullAnimations()
{
    const QByteArray comma = ",\n";
    return animation(any + "diffuse/value", "[ 0, [ 0.2, 0.4, 0.6 ] ]") + comma
        + animation(any + "diffuse/image_file", "[ 0, \"/maps/skin%201.jpg\" ]") + comma
        + animation(any + listed + "Glossy%20Weight/value", "[ 0, 0.25 ], [ 1, 0.75 ]") + comma
        + animation(any + listed + "Glossy%20Weight/image", "[ 0, null ]") + comma
        + animation(any + listed + "100%25%2FA/value", "[ 0, true ]") + comma
        + animation(any + listed + "Name/value", "[ 0, \"the name\" ]") + comma
        + animation(any + listed + "Backdrop/value", "[ 0, null ]") + comma
        + animation(any + listed + "Backdrop/image_file", "[ 0, \"sky.hdr\" ]");
}

QByteArray replaced(QByteArray text, const QByteArray& from, const QByteArray& to)
{
    EXPECT_EQ(text.count(from), 1) << from.constData();
    return text.replace(from, to);
}

float weightOf(const OpenedScene& opened, const char* surface)
{
    return propertyIn<DzFloatProperty>(opened.surface(surface), "Glossy Weight")->getValue();
}

QByteArray instance(const char* id, const char* node = nullptr)
{
    const QByteArray geometry = node ? ", \"geometry\" : \"#" + QByteArray(node) + "\"" : "";
    return "\t\t\t{ \"url\" : \"#Shader\", \"groups\" : [ \"" + QByteArray(id) + "\" ]" + geometry
        + " }";
}

} // namespace

TEST(SceneKeys, valuesAtTimeZeroCountBeforeDefinitionAndSurface)
{
    const QByteArray text = preset(anySurface, fullAnimations());
    OpenedScene opened(text);
    EXPECT_EQ(opened.warnings(), QString());
    DzMaterial* material = opened.surface(0);
    auto* color = propertyIn<DzColorProperty>(material, "Diffuse Color");
    EXPECT_EQ(color->getColorValue(), QColor(51, 102, 153));
    EXPECT_EQ(QColor(static_cast<QRgb>(color->getDefaultValue())), QColor(255, 255, 255));
    EXPECT_EQ(color->getMapValue()->getFilename(), QStringLiteral("/maps/skin 1.jpg"));
    auto* weight = propertyIn<DzFloatProperty>(material, "Glossy Weight");
    EXPECT_EQ(weight->getValue(), 0.25f);
    EXPECT_FALSE(weight->isMapped());
    EXPECT_TRUE(propertyIn<DzBoolProperty>(material, "100%/A")->getBoolValue());
    EXPECT_EQ(
        propertyIn<DzStringProperty>(material, "Name")->getValue(), QStringLiteral("the name"));
    EXPECT_EQ(propertyIn<DzImageProperty>(material, "Backdrop")->getFilename(),
        QStringLiteral("sky.hdr"));
    EXPECT_EQ(opened.file.saveText(), text);
}

TEST(SceneKeys, onlyKeysAtTimeZeroCountAndTheLastAnimationOfSeveral)
{
    const QByteArray address = any + listed + "Glossy%20Weight/value";
    const auto weight = [&](const QByteArray& animations) {
        return weightOf(OpenedScene(preset(anySurface, animations)), "Shader");
    };
    EXPECT_EQ(weight(animation(address, "[ 0.5, 0.25 ]")), 0.0f);
    EXPECT_EQ(weight(animation(address, "[ -1, 0.25 ], [ 0, 0.5, [ \"LINEAR\" ] ]")), 0.5f);
    EXPECT_EQ(weight(animation(address, "")), 0.0f);
    EXPECT_EQ(
        weight(animation(address, "[ 0, 0.25 ]") + ",\n" + animation(address, "[ 0, 1 ]")), 1.0f);
    OpenedScene odd(preset(anySurface, animation(address, "[ 0, \"a lot\" ]")));
    EXPECT_EQ(weightOf(odd, "Shader"), 0.0f);
    EXPECT_TRUE(odd.warnings().contains(QLatin1String("its key is not a number")));
}

TEST(SceneKeys, namesOfNodesAndSurfacesTellWhoseAKeyIs)
{
    const QByteArray path = ":?" + listed + "Glossy%20Weight/value";
    const auto text = [&](const QByteArray& place) {
        return preset(instance("Skin", "Body") + ",\n" + instance("Left Eye", "Body") + ",\n"
                + instance("Skin", "Hat"),
            animation(place + path, "[ 0, 0.5 ]"));
    };
    const auto weights = [&](const QByteArray& place) {
        const OpenedScene opened(text(place));
        QStringList list;
        for (int i = 0; i < 3; ++i)
            list.append(QString::number(static_cast<double>(
                propertyIn<DzFloatProperty>(opened.surface(i), "Glossy Weight")->getValue())));
        return list.join(QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(weights("name://@selection#materials"), "0.5 0.5 0.5");
    EXPECT_EQ(weights("name://@selection#materials/Skin"), "0.5 0 0.5");
    EXPECT_EQ(weights("name://@selection#materials/Left%20Eye"), "0 0.5 0");
    EXPECT_EQ(weights("Hat#materials/Skin"), "0 0 0.5");
    EXPECT_EQ(weights("name://Body#materials"), "0.5 0.5 0");
    EXPECT_EQ(weights("name://@selection#other/Skin"), "0 0 0");
}

TEST(SceneKeys, aSurfaceWhoseNodeTheDocumentDoesNotTellAnswersToAnyNode)
{
    const QByteArray path = ":?" + listed + "Glossy%20Weight/value";
    const OpenedScene opened(preset(instance("Face") + ",\n" + instance("Lips"),
        animation("Someone#materials/Face" + path, "[ 0, 0.5 ]")));
    EXPECT_EQ(weightOf(opened, "Face"), 0.5f);
    EXPECT_EQ(weightOf(opened, "Lips"), 0.0f);
}

TEST(SceneKeys, changingAValueChangesItsKey)
{
    OpenedScene opened(preset(anySurface, fullAnimations()));
    DzMaterial* material = opened.surface(0);
    propertyIn<DzColorProperty>(material, "Diffuse Color")->setColorValue(QColor(255, 0, 51));
    propertyIn<DzFloatProperty>(material, "Glossy Weight")->setValue(0.5f);
    propertyIn<DzBoolProperty>(material, "100%/A")->setBoolValue(false);
    propertyIn<DzStringProperty>(material, "Name")->setValue(QStringLiteral("an\"other"));
    propertyIn<DzImageProperty>(material, "Backdrop")->setValue(QStringLiteral("a b.hdr"));
    const QByteArray saved = opened.file.saveText();
    EXPECT_TRUE(saved.contains("[ 0, [ 1, 0, 0.2 ] ]")) << saved.constData();
    // Later keys are the animation's own.
    EXPECT_TRUE(saved.contains("[ 0, 0.5 ], [ 1, 0.75 ]"));
    EXPECT_TRUE(saved.contains("[ 0, false ]"));
    EXPECT_TRUE(saved.contains("[ 0, \"an\\\"other\" ]"));
    EXPECT_TRUE(saved.contains("[ 0, \"a%20b.hdr\" ]"));
    EXPECT_EQ(saved.count("\"keys\""), 8);
    const OpenedScene again(saved);
    material = again.surface(0);
    EXPECT_EQ(propertyIn<DzColorProperty>(material, "Diffuse Color")->getColorValue(),
        QColor(255, 0, 51));
    EXPECT_EQ(propertyIn<DzFloatProperty>(material, "Glossy Weight")->getValue(), 0.5f);
    EXPECT_FALSE(propertyIn<DzBoolProperty>(material, "100%/A")->getBoolValue());
    EXPECT_EQ(
        propertyIn<DzStringProperty>(material, "Name")->getValue(), QStringLiteral("an\"other"));
    EXPECT_EQ(propertyIn<DzImageProperty>(material, "Backdrop")->getFilename(),
        QStringLiteral("a b.hdr"));
}

TEST(SceneKeys, settingAndTakingOffAMapChangesItsKey)
{
    OpenedScene opened(preset(anySurface, fullAnimations()));
    DzMaterial* material = opened.surface(0);
    propertyIn<DzColorProperty>(material, "Diffuse Color")->clearMap();
    propertyIn<DzFloatProperty>(material, "Glossy Weight")->setMap(QStringLiteral("gloss.png"));
    const QByteArray saved = opened.file.saveText();
    OpenedScene again(saved);
    material = again.surface(0);
    EXPECT_FALSE(propertyIn<DzColorProperty>(material, "Diffuse Color")->isMapped())
        << saved.constData();
    auto* weight = propertyIn<DzFloatProperty>(material, "Glossy Weight");
    ASSERT_TRUE(weight->isMapped()) << saved.constData();
    EXPECT_EQ(weight->getMapValue()->getFilename(), QStringLiteral("gloss.png"));
    // And the other way round.
    propertyIn<DzColorProperty>(material, "Diffuse Color")->setMap(QStringLiteral("skin.png"));
    weight->clearMap();
    const OpenedScene last(again.file.saveText());
    EXPECT_FALSE(propertyIn<DzFloatProperty>(last.surface(0), "Glossy Weight")->isMapped());
    EXPECT_TRUE(propertyIn<DzColorProperty>(last.surface(0), "Diffuse Color")->isMapped());
}

TEST(SceneKeys, aKeyForManySurfacesIsChangedOnlyWhenAllWantTheSame)
{
    const QByteArray text = preset(instance("Skin") + ",\n" + instance("Lips"),
        animation(any + listed + "Glossy%20Weight/value", "[ 0, 0.25 ]"));
    OpenedScene opened(text);
    EXPECT_EQ(weightOf(opened, "Lips"), 0.25f);
    propertyIn<DzFloatProperty>(opened.surface("Lips"), "Glossy Weight")->setValue(0.75f);
    const QByteArray one = opened.file.saveText();
    {
        const OpenedScene again(one);
        EXPECT_EQ(weightOf(again, "Lips"), 0.75f) << one.constData();
        EXPECT_EQ(weightOf(again, "Skin"), 0.25f);
    }
    propertyIn<DzFloatProperty>(opened.surface("Skin"), "Glossy Weight")->setValue(0.75f);
    const QByteArray both = opened.file.saveText();
    const OpenedScene again(both);
    EXPECT_EQ(weightOf(again, "Lips"), 0.75f);
    EXPECT_EQ(weightOf(again, "Skin"), 0.75f);
    EXPECT_EQ(both.count("\"keys\""), 1);
}

TEST(SceneKeys, surfacesOfOneNameGetKeysByTheirNodes)
{
    const QByteArray text = preset(instance("Skin", "Body") + ",\n" + instance("Skin", "Hat"),
        animation(any + listed + "Glossy%20Weight/value", "[ 0, 0.25 ]"));
    OpenedScene opened(text);
    propertyIn<DzFloatProperty>(opened.surface(1), "Glossy Weight")->setValue(0.75f);
    const OpenedScene again(opened.file.saveText());
    EXPECT_EQ(propertyIn<DzFloatProperty>(again.surface(0), "Glossy Weight")->getValue(), 0.25f);
    EXPECT_EQ(propertyIn<DzFloatProperty>(again.surface(1), "Glossy Weight")->getValue(), 0.75f);
}

TEST(SceneKeys, aPropertyThatGoesTakesItsKeysAlongAndOneThatComesIsNotHiddenByOldOnes)
{
    const QByteArray old = animation(any + listed + "Own/value", "[ 0, 0.25 ]");
    const QByteArray rest = animation(any + listed + "Name/value", "[ 0, \"n\" ]");
    OpenedScene opened(preset(anySurface, old + ",\n" + rest));
    auto* own = new DzFloatProperty(QStringLiteral("Own"), false, true, 0);
    own->setValue(7);
    opened.surface(0)->addProperty(own);
    OpenedScene again(opened.file.saveText());
    EXPECT_EQ(propertyIn<DzFloatProperty>(again.surface(0), "Own")->getValue(), 7.0f);
    again.surface(0)->removeProperty(again.surface(0)->findProperty(QStringLiteral("Own")));
    EXPECT_EQ(again.file.saveText(), preset(anySurface, rest));
}

TEST(SceneKeys, aPresetWithNothingButValuesShowsItsSurfaces)
{
    const QByteArray text
        = "{\n\t\"asset_info\" : {\n\t\t\"type\" : \"preset_material\"\n\t},\n\t\"scene\" : "
          "{\n\t\t\"animations\" : [\n"
        + animation("name://@selection#materials/Face:?diffuse/value", "[ 0, [ 0.2, 0.4, 0.6 ] ]")
        + ",\n"
        + animation("name://@selection#materials/Face:?diffuse/image_file", "[ 0, \"face.png\" ]")
        + ",\n"
        + animation(
            "name://@selection#materials/Lower%20Lip:?" + listed + "Weight/value", "[ 0, 0.5 ]")
        + ",\n" + animation("name://@selection:?translation/x/value", "[ 0, 0 ]")
        + "\n\t\t]\n\t}\n}";
    OpenedScene opened(text);
    ASSERT_EQ(opened.scene.getSurfaces().size(), 2);
    auto* color = propertyIn<DzColorProperty>(opened.surface("Face"), "diffuse");
    EXPECT_EQ(color->getColorValue(), QColor(51, 102, 153));
    ASSERT_TRUE(color->isMapped());
    EXPECT_EQ(color->getMapValue()->getFilename(), QStringLiteral("face.png"));
    auto* weight = propertyIn<DzFloatProperty>(opened.surface("Lower Lip"), "Weight");
    EXPECT_EQ(weight->getValue(), 0.5f);
    EXPECT_EQ(opened.file.saveText(), text);

    weight->setValue(1);
    color->clearMap();
    opened.surface("Face")->addProperty(
        new DzBoolProperty(QStringLiteral("Own"), false, true, true));
    const QByteArray saved = opened.file.saveText();
    EXPECT_EQ(saved, replaced(replaced(text, "[ 0, 0.5 ]", "[ 0, 1 ]"), "\"face.png\"", "\"\""));
    // There is no entry that a new property could go to.
    EXPECT_TRUE(opened.warnings().contains(QLatin1String("no entry for this surface")));
}
