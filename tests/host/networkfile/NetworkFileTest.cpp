// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LinkTypes.h"
#include "TestSupport.h"
#include "dzbrickuserfile.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzstringproperty.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "dzvec3param.h"
#include "settingsjson.h"

#include <QDir>
#include <QTemporaryDir>
#include <QUuid>

#include <cmath>
#include <limits>
#include <memory>

namespace {

/// A file's text from one in which nested trees are plain objects.
QByteArray withTrees(const QByteArray& plain)
{
    QByteArray text;
    bool inString = false;
    int depth = 0;
    for (int i = 0; i < plain.size(); ++i) {
        const char c = plain.at(i);
        if (inString && c == '\\') {
            text += plain.mid(i, 2);
            ++i;
            continue;
        }
        if (c == '"')
            inString = !inString;
        if (!inString && c == '{' && depth++ > 0)
            text += "{\"type\":\"settings\",\"value\":{";
        else if (!inString && c == '}' && --depth > 0)
            text += "}}";
        else
            text += c;
    }
    return text;
}

/// The same text with the blanks and line ends of a saved file.
QByteArray tidied(const QByteArray& text)
{
    DzSettings settings;
    QString error;
    EXPECT_TRUE(settingsFromJson(text, &settings, &error)) << error.toStdString();
    return settingsToJson(settings);
}

QByteArray network(const QByteArray& bricks, const QByteArray& links = QByteArray())
{
    return withTrees("{\"format\":\"sskn\",\"version\":1,\"BrickSetup\":{\"Bricks\":{" + bricks
        + "},\"Connections\":{" + links
        + "},\"BrickUserName\":\"Net\","
          "\"Identifier\":\"{3ea625fb-dc94-5af7-b603-c4f086186845}\"}}");
}

QByteArray brick(const QByteArray& name, const QByteArray& className, const QByteArray& attributes,
    const QByteArray& parameters)
{
    return '"' + name + "\":{\"DAZStudioClassName\":\"" + className + "\",\"Attributes\":{"
        + attributes + "},\"Parameters\":{" + parameters + "}}";
}

const char* const plainAttributes = "\"VireoExtCustomParameters\":{},\"BrickSettings\":{}";

/// A scale texture with the given members of its first input's property.
QByteArray scaleBrick(const QByteArray& name, const QByteArray& tex1 = "\"Value\":1")
{
    return brick(name, "VireoTexFltScaleBrick", plainAttributes,
        "\"result\":{},\"tex1\":{\"Prop_0\":{" + tex1 + "}},\"tex2\":{\"Prop_0\":{\"Value\":1}}");
}

QByteArray linkEntry(int number, const QByteArray& from, const QByteArray& to,
    const QByteArray& input, const QByteArray& output = "result")
{
    return "\"Connection_" + QByteArray::number(number) + "\":{\"SourceBrick\":\"" + to
        + "\",\"TargetBrick\":\"" + from + "\",\"SourceParam\":\"" + input + "\",\"TargetParam\":\""
        + output + "\"}";
}

class NetworkFileTest : public testing::Test
{
protected:
    bool load(const QByteArray& text)
    {
        return file.loadText(text, QStringLiteral("net.sskn"), &user);
    }
    QByteArray resaved(const QByteArray& text)
    {
        EXPECT_TRUE(load(text)) << file.getError().toStdString();
        return file.saveText(&user);
    }
    VireoBrickBase* brickAt(uint id) { return qobject_cast<VireoBrickBase*>(user.getBrick(id)); }
    DzFloatProperty* floatAt(uint id, const char* name)
    {
        return propertyAs<DzFloatProperty>(user.getBrick(id), name);
    }
    bool isWarnedOf(const char* text) const
    {
        return file.getWarnings().join(QLatin1Char('\n')).contains(QString::fromUtf8(text));
    }

    VireoBrickUser user;
    DzBrickUserFile file;
};

#define EXPECT_SAVED_AS_READ(text)                                                                 \
    EXPECT_TEXT(QString::fromUtf8(tidied(text)), QString::fromUtf8(resaved(text)))

/// Saves and loads a network in another user, which is returned.
std::unique_ptr<VireoBrickUser> reloaded(const VireoBrickUser& user)
{
    const QByteArray saved = DzBrickUserFile().saveText(&user);
    std::unique_ptr<VireoBrickUser> copy(new VireoBrickUser);
    DzBrickUserFile file;
    EXPECT_TRUE(file.loadText(saved, QStringLiteral("copy"), copy.get()))
        << file.getError().toStdString();
    EXPECT_EQ(file.getWarnings(), QStringList());
    EXPECT_TEXT(QString::fromUtf8(saved), QString::fromUtf8(file.saveText(copy.get())));
    return copy;
}

const char* const fullProperty = R"("Label":"First","Hidden":false,"Path":"/Other",
    "UserProperty":false,"CanAnimate":true,"Locked":false,"Manipulator":false,"Favorite":true,
    "GlobalFavorite":false,"Selected":false,"AutoFollow":false,"AutoFollowTarget":"",
    "XYZInterest":false,"Clamped":true,"Mapable":true,"NeedMap":false,"DefaultImageGamma":1,
    "TextureModifierFlags":["i",5],"TextureModifier":{"HorizontalTiles":2},"Min":0,"Max":8,
    "Sensitivity":0.25,"AsPercent":true,"Value":0.5,"DefaultValue":2,"MapImage":"a.png",
    "Name":"tex1")";

} // namespace

// What this program wrote ---------------------------------------------------------------------

TEST(NetworkFileExamples, everyExampleSavesToItsOwnBytes)
{
    const QDir folder(projectPath(QStringLiteral("examples")));
    const QStringList names = folder.entryList({ QStringLiteral("*.sskn") }, QDir::Files);
    EXPECT_GE(names.size(), 6);
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const QString path = folder.filePath(name);
        VireoBrickUser user;
        DzBrickUserFile file;
        ASSERT_TRUE(file.load(path, &user)) << file.getError().toStdString();
        EXPECT_EQ(file.getWarnings(), QStringList());
        EXPECT_TEXT(QString::fromUtf8(projectFile(QStringLiteral("examples/") + name)),
            QString::fromUtf8(file.saveText(&user)));
    }
}

TEST(NetworkFileRoundTrip, fileOnDiskHasTheSavedTextAndLoadsAgain)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QString::fromUtf8("Größe \"x\".sskn"));
    VireoBrickUser user;
    addBrick(user, "VireoTexFltScaleBrick");
    DzBrickUserFile file;
    ASSERT_TRUE(file.save(path, &user)) << file.getError().toStdString();
    VireoBrickUser other;
    ASSERT_TRUE(file.load(path, &other)) << file.getError().toStdString();
    EXPECT_EQ(other.getNumBricks(), 1);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(NetworkFileRoundTrip, freshScaleTextureIsWrittenAsFollows)
{
    VireoBrickUser user;
    user.setBrickUserName(QStringLiteral("Net"));
    user.setIdentifier(QUuid(QStringLiteral("{3ea625fb-dc94-5af7-b603-c4f086186845}")));
    addBrick(user, "VireoTexFltScaleBrick");
    EXPECT_TEXT(QString::fromUtf8(tidied(network(scaleBrick("Brick_1")))),
        QString::fromUtf8(DzBrickUserFile().saveText(&user)));
}

TEST(NetworkFileRoundTrip, locksMapsLabelsPathsAndHiddenFlagsComeBack)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoTexFltScaleBrick");
    auto* tex1 = propertyAs<DzFloatProperty>(brick, "tex1");
    ASSERT_TRUE(tex1->setMap(QString::fromUtf8("C:\\Bücher\\\"a\".png")));
    tex1->setValue(0.1f);
    tex1->setHidden(true);
    tex1->setLabel(QString::fromUtf8("Größe\n\"1\""));
    tex1->setPath(QStringLiteral("/Else/Where"));
    tex1->lock(true);
    brick->setBrickTitle(QString::fromUtf8("雪 \"\\ \t"));
    user.setBrickUserName(QString::fromUtf8("Ünï \"quoted\""));

    const std::unique_ptr<VireoBrickUser> copy = reloaded(user);
    EXPECT_EQ(copy->getBrickUserName(), QString::fromUtf8("Ünï \"quoted\""));
    EXPECT_EQ(copy->getBrick(1)->getBrickTitle(), QString::fromUtf8("雪 \"\\ \t"));
    auto* other = propertyAs<DzFloatProperty>(copy->getBrick(1), "tex1");
    EXPECT_EQ(other->getMapValue()->getFilename(), QString::fromUtf8("C:\\Bücher\\\"a\".png"));
    EXPECT_EQ(other->getValue(), 0.1f);
    EXPECT_TRUE(other->isHidden());
    EXPECT_EQ(other->getLabel(), QString::fromUtf8("Größe\n\"1\""));
    EXPECT_EQ(other->getPath(), QStringLiteral("/Else/Where"));
    EXPECT_TRUE(other->isLocked());
    EXPECT_FALSE(propertyAs<DzFloatProperty>(copy->getBrick(1), "tex2")->isLocked());
}

TEST(NetworkFileRoundTrip, numbersThatAreNotFiniteComeBack)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoTexFltBiLerpBrick");
    propertyAs<DzFloatProperty>(brick, "v00")->setValue(std::numeric_limits<float>::quiet_NaN());
    propertyAs<DzFloatProperty>(brick, "v01")->setValue(std::numeric_limits<float>::infinity());
    propertyAs<DzFloatProperty>(brick, "v10")->setValue(-std::numeric_limits<float>::infinity());
    propertyAs<DzFloatProperty>(brick, "v11")->setValue(std::numeric_limits<float>::denorm_min());
    const QByteArray saved = DzBrickUserFile().saveText(&user);
    EXPECT_TRUE(saved.contains("\"Value\": [\"f\", \"nan\"]"));
    EXPECT_TRUE(saved.contains("\"Value\": [\"f\", \"inf\"]"));
    EXPECT_TRUE(saved.contains("\"Value\": [\"f\", \"-inf\"]"));

    const std::unique_ptr<VireoBrickUser> copy = reloaded(user);
    DzShaderBrick* other = copy->getBrick(1);
    EXPECT_TRUE(std::isnan(propertyAs<DzFloatProperty>(other, "v00")->getValue()));
    EXPECT_EQ(propertyAs<DzFloatProperty>(other, "v01")->getValue(),
        std::numeric_limits<float>::infinity());
    EXPECT_EQ(propertyAs<DzFloatProperty>(other, "v10")->getValue(),
        -std::numeric_limits<float>::infinity());
    EXPECT_EQ(propertyAs<DzFloatProperty>(other, "v11")->getValue(),
        std::numeric_limits<float>::denorm_min());
}

TEST(NetworkFileRoundTrip, customInputsOfTenKindsComeBackWithValuesAndLinks)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoMatMatteBrick");
    VireoBrickBase* color = addBrick(user, "VireoTexClrConstantBrick");
    for (int type = MaterialLink; type <= FresnelLink; ++type) {
        const QString name = QStringLiteral("in %1").arg(type);
        DzBrickParam* input = brick->addCustomInput(
            type, name, name + QStringLiteral(" label"), DzBrickParam::InputDirection);
        ASSERT_NE(input, nullptr) << type;
        for (int k = 0; k < input->getNumProperties(); ++k) {
            QString error;
            const bool isText = type == StringLink;
            EXPECT_TRUE(input->getProperty(k)->setValueText(isText ? QString::fromUtf8("ä\"b")
                    : type == ColorLink                            ? QStringLiteral("1 2 3")
                                                                   : QString::number(k + 7),
                &error))
                << error.toStdString();
        }
    }
    ASSERT_TRUE(link(color, brick, "in 1010"));

    const std::unique_ptr<VireoBrickUser> copy = reloaded(user);
    auto* other = qobject_cast<VireoBrickBase*>(copy->getBrick(1));
    ASSERT_NE(other, nullptr);
    ASSERT_EQ(other->getNumCustomParams(), 10);
    for (int i = 0; i < 10; ++i) {
        DzBrickParam* input = other->getCustomParam(i);
        SCOPED_TRACE(input->getName().toStdString());
        EXPECT_EQ(input->getName(), QStringLiteral("in %1").arg(MaterialLink + i));
        EXPECT_EQ(input->getLabel(), QStringLiteral("in %1 label").arg(MaterialLink + i));
        EXPECT_EQ(input->getType(), MaterialLink + i);
        EXPECT_EQ(input->getDirection(), 0);
        EXPECT_EQ(input->getNumConnections(), MaterialLink + i == ColorLink ? 1 : 0);
    }
    EXPECT_EQ(property(other, "in 1009")->getValueText(), QStringLiteral("7"));
    EXPECT_EQ(property(other, "in 1010")->getValueText(), QStringLiteral("1 2 3"));
    EXPECT_EQ(param(other, "in 1012")->getProperty(2)->getValueText(), QStringLiteral("9"));
    EXPECT_EQ(param(other, "in 1014")->getProperty(15)->getValueText(), QStringLiteral("22"));
    EXPECT_EQ(property(other, "in 1015")->getValueText(), QString::fromUtf8("ä\"b"));
}

TEST(NetworkFileRoundTrip, inputsOfEqualNamesAreToldApartByANumber)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoMatMatteBrick");
    VireoBrickBase* red = addBrick(user, "VireoTexClrConstantBrick");
    VireoBrickBase* blue = addBrick(user, "VireoTexClrConstantBrick");
    const QString name = QStringLiteral("Kd");
    DzBrickParam* second = brick->addCustomInput(ColorLink, name, name, 0);
    DzBrickParam* third = brick->addCustomInput(FloatLink, name, name, 0);
    static_cast<DzFloatProperty*>(third->getProperty(0))->setValue(0.25f);
    ASSERT_TRUE(second->addConnection(param(red, "result")));
    ASSERT_TRUE(link(blue, brick, "Kd"));
    const QByteArray saved = DzBrickUserFile().saveText(&user);
    EXPECT_TRUE(saved.contains("\"Kd#2\": "));
    EXPECT_TRUE(saved.contains("\"Kd#3\": "));
    EXPECT_TRUE(saved.contains("\"SourceParam\": \"Kd#2\""));

    const std::unique_ptr<VireoBrickUser> copy = reloaded(user);
    auto* other = qobject_cast<VireoBrickBase*>(copy->getBrick(1));
    ASSERT_EQ(other->getNumCustomParams(), 2);
    EXPECT_EQ(other->getCustomParam(0)->getConnection(0)->getTopBrickOwner(), copy->getBrick(2));
    EXPECT_EQ(param(other, "Kd")->getConnection(0)->getTopBrickOwner(), copy->getBrick(3));
    EXPECT_EQ(
        static_cast<DzFloatProperty*>(other->getCustomParam(1)->getProperty(0))->getValue(), 0.25f);
}

TEST(NetworkFileRoundTrip, nameThatLooksLikeANumberedOneIsNoTrouble)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoMatMatteBrick");
    float value = 1;
    for (const char* name : { "a", "a#2", "a", "a#2", "", "", "#2" }) {
        const QString text = QString::fromLatin1(name);
        DzBrickParam* input = brick->addCustomInput(FloatLink, text, text, 0);
        static_cast<DzFloatProperty*>(input->getProperty(0))->setValue(value++);
    }
    const std::unique_ptr<VireoBrickUser> copy = reloaded(user);
    auto* other = qobject_cast<VireoBrickBase*>(copy->getBrick(1));
    ASSERT_EQ(other->getNumCustomParams(), 7);
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(
            static_cast<DzFloatProperty*>(other->getCustomParam(i)->getProperty(0))->getValue(),
            static_cast<float>(i + 1));
}

TEST(NetworkFileRoundTrip, numberedPairsComeBackWithValuesAndLinks)
{
    VireoBrickUser user;
    for (const char* className :
        { "VireoTexFltBAndBrick", "VireoTexClrBAndBrick", "VireoTexFnlBAndBrick",
            "VireoTexFltMultiMixBrick", "VireoTexClrMultiMixBrick", "VireoTexFnlMultiMixBrick" })
        propertyAs<DzIntProperty>(addBrick(user, className), "count")->setValue(10);
    VireoBrickBase* source = addBrick(user, "VireoTexFltScaleBrick");
    ASSERT_TRUE(link(source, user.getBrick(1), "tex10"));
    propertyAs<DzFloatProperty>(user.getBrick(1), "offset9")->setValue(0.9f);
    propertyAs<DzFloatProperty>(user.getBrick(4), "weight10")->setValue(0.3f);

    const std::unique_ptr<VireoBrickUser> copy = reloaded(user);
    for (uint id = 1; id <= 6; ++id)
        EXPECT_EQ(propertyAs<DzIntProperty>(copy->getBrick(id), "count")->getValue(), 10);
    EXPECT_EQ(param(copy->getBrick(1), "tex10")->getNumConnections(), 1);
    EXPECT_EQ(propertyAs<DzFloatProperty>(copy->getBrick(1), "offset9")->getValue(), 0.9f);
    EXPECT_EQ(propertyAs<DzFloatProperty>(copy->getBrick(4), "weight10")->getValue(), 0.3f);
}

TEST(NetworkFileRoundTrip, severalLinksIntoOneInputKeepTheirOrder)
{
    VireoBrickUser user;
    VireoBrickBase* target = addBrick(user, "VireoTexFltScaleBrick");
    for (int i = 0; i < 3; ++i)
        addBrick(user, "VireoTexFltScaleBrick");
    for (const uint id : { 3u, 4u, 2u })
        ASSERT_TRUE(link(user.getBrick(id), target, "tex2"));
    const std::unique_ptr<VireoBrickUser> copy = reloaded(user);
    DzBrickParam* input = param(copy->getBrick(1), "tex2");
    ASSERT_EQ(input->getNumConnections(), 3);
    EXPECT_EQ(input->getConnection(0)->getTopBrickOwner()->getBrickID(), 3u);
    EXPECT_EQ(input->getConnection(1)->getTopBrickOwner()->getBrickID(), 4u);
    EXPECT_EQ(input->getConnection(2)->getTopBrickOwner()->getBrickID(), 2u);
}

// What is kept --------------------------------------------------------------------------------

TEST_F(NetworkFileTest, unknownMembersStayInPlaceAtEveryLevel)
{
    const QByteArray text = withTrees(R"({"first":["a",{}],"format":"sskn","editor":{"zoom":2},
        "version":1,"mid":null,"BrickSetup":{
          "x0":true,
          "Bricks":{
            "note":"no brick",
            "Brick_1":{
              "before":1,
              "DAZStudioClassName":"VireoTexClrBlackBodyBrick",
              "between":["i",3],
              "Attributes":{
                "UserOutputParameters":{"a":1},
                "VireoExtCustomParameters":{
                  "para0":{"Colour":"red","Label":"c","Name":"c","ExtTypeID":1009,"Direction":0,
                           "Extra":[1,2]}
                },
                "middle":{},
                "BrickProperties":{
                  "b4":5,
                  "temperature":{"u":1,"Value":6500,"w":"x"},
                  "other":{"Value":3}
                },
                "BrickSettings":{"BrickSet":{"Name":"n","LastInvalidate":"12"},"PosX":1.5,
                                 "Width":["i",180],"Odd":[["f","x"]]},
                "BrickVersion":1
              },
              "Parameters":{
                "old":{"Label":"Old"},
                "result":{"k":1,"Label":"Out","z":2},
                "odd":7,
                "c":{"Tokens":"a,b","Prop_0":{"Strange":{"deep":{"er":[]}},"Value":0},"Prop_1":{"Value":1},"Prop_-1":{"Value":2}}
              },
              "after":"x"
            },
            "Brick_x":["list"]
          },
          "Connections":{"info":"none"},
          "between":{},
          "BrickUserName":"Net",
          "Identifier":"{3ea625fb-dc94-5af7-b603-c4f086186845}",
          "end":[null]
        },"last":-1e-7})");
    EXPECT_SAVED_AS_READ(text);
    ASSERT_NE(brickAt(1), nullptr);
    EXPECT_EQ(user.getNumBricks(), 1);
    EXPECT_EQ(param(brickAt(1), "result")->getLabel(), QStringLiteral("Out"));
    // Once more from what was saved, and in another object.
    VireoBrickUser other;
    DzBrickUserFile otherFile;
    const QByteArray saved = file.saveText(&user);
    ASSERT_TRUE(otherFile.loadText(saved, QStringLiteral("b"), &other));
    EXPECT_TEXT(QString::fromUtf8(saved), QString::fromUtf8(otherFile.saveText(&other)));
}

TEST_F(NetworkFileTest, unknownMembersAreNamedInWarnings)
{
    ASSERT_TRUE(load(network("\"note\":\"text\","
            + brick(
                "Brick_1", "VireoTexFltScaleBrick", plainAttributes, "\"gone\":{\"Label\":\"L\"}"),
        "\"Connection_0\":\"text\"")));
    ASSERT_EQ(file.getWarnings().size(), 3);
    EXPECT_TRUE(isWarnedOf("note: "));
    EXPECT_TRUE(isWarnedOf("Brick_1/gone: "));
    EXPECT_TRUE(isWarnedOf("Connection_0: "));
}

TEST_F(NetworkFileTest, anotherLoadForgetsWhatWasKeptBefore)
{
    ASSERT_TRUE(load(withTrees(R"({"extra":1,"format":"sskn","version":1,
        "BrickSetup":{"more":2,"Bricks":{"odd":3},"Connections":{"odd":4}}})")));
    const QByteArray text = network(scaleBrick("Brick_1"));
    EXPECT_SAVED_AS_READ(text);
}

TEST_F(NetworkFileTest, fullDescriptionOfAPropertyKeepsItsMembers)
{
    const QByteArray text = network(scaleBrick("Brick_1", fullProperty));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_EQ(file.getWarnings(), QStringList());
    const DzFloatProperty* tex1 = floatAt(1, "tex1");
    EXPECT_EQ(tex1->getLabel(), QStringLiteral("First"));
    EXPECT_EQ(tex1->getPath(), QStringLiteral("/Other"));
    EXPECT_TRUE(tex1->isClamped());
    EXPECT_EQ(tex1->getMin(), 0.0f);
    EXPECT_EQ(tex1->getMax(), 8.0f);
    EXPECT_EQ(tex1->getSensitivity(), 0.25f);
    EXPECT_EQ(tex1->getValue(), 0.5f);
    EXPECT_EQ(tex1->getDefaultValue(), 2.0f);
    EXPECT_EQ(tex1->getMapValue()->getFilename(), QStringLiteral("a.png"));
}

TEST_F(NetworkFileTest, fullDescriptionOfAPropertyShowsCurrentValues)
{
    ASSERT_TRUE(load(network(scaleBrick("Brick_1", fullProperty))));
    DzFloatProperty* tex1 = floatAt(1, "tex1");
    tex1->setValue(0.75f);
    tex1->clearMap();
    tex1->setLabel(QStringLiteral("Changed"));
    tex1->lock(true);
    QByteArray expected(fullProperty);
    expected.replace("\"Value\":0.5", "\"Value\":0.75");
    expected.replace("\"MapImage\":\"a.png\"", "\"MapImage\":\"\"");
    expected.replace("\"Label\":\"First\"", "\"Label\":\"Changed\"");
    expected.replace("\"Locked\":false", "\"Locked\":true");
    EXPECT_TEXT(QString::fromUtf8(tidied(network(scaleBrick("Brick_1", expected)))),
        QString::fromUtf8(file.saveText(&user)));
}

TEST_F(NetworkFileTest, fullAndShortDescriptionsReadAlike)
{
    const QByteArray full = R"("Label":"tex1","Hidden":false,"Path":"/General",
        "UserProperty":false,"CanAnimate":true,"Locked":false,"XYZInterest":false,"Clamped":false,
        "Mapable":true,"NeedMap":false,"Min":-1e38,"Max":1e38,"Sensitivity":0.01,"AsPercent":false,
        "Value":0.5,"DefaultValue":1,"Name":"tex1")";
    ASSERT_TRUE(load(network(scaleBrick("Brick_1", full))));
    DzPropertySettings ofFull;
    floatAt(1, "tex1")->getAttributes(&ofFull);
    ASSERT_TRUE(load(network(scaleBrick("Brick_1", "\"Value\":0.5"))));
    DzPropertySettings ofShort;
    floatAt(1, "tex1")->getAttributes(&ofShort);
    EXPECT_TEXT(
        QString::fromUtf8(settingsToJson(ofFull)), QString::fromUtf8(settingsToJson(ofShort)));
}

TEST_F(NetworkFileTest, valueOfAWrongTypeIsKeptUntilThePropertyChanges)
{
    const QByteArray text = network(scaleBrick("Brick_1", R"("Value":"red","Clamped":3)"));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_TRUE(isWarnedOf("Brick_1/tex1: \"Value\""));
    EXPECT_EQ(floatAt(1, "tex1")->getValue(), 1.0f);
    floatAt(1, "tex1")->setValue(0.5f);
    EXPECT_TEXT(
        QString::fromUtf8(tidied(network(scaleBrick("Brick_1", R"("Value":0.5,"Clamped":3)")))),
        QString::fromUtf8(file.saveText(&user)));
}

TEST_F(NetworkFileTest, propertyWhoseKeptValueIsReplacedIsWrittenLikeAnyOther)
{
    ASSERT_TRUE(load(network(scaleBrick("Brick_1", R"("Value":"red","Max":1e38,"Label":"L")"))));
    floatAt(1, "tex1")->setValue(0.5f);
    const QByteArray saved = file.saveText(&user);
    EXPECT_TEXT(
        QString::fromUtf8(tidied(network(scaleBrick("Brick_1", R"("Label":"L","Value":0.5)")))),
        QString::fromUtf8(saved));
    EXPECT_SAVED_AS_READ(saved);
}

TEST_F(NetworkFileTest, everyKindOfPropertyKeepsAValueThatIsNone)
{
    // Float, colour, whole number, enumeration, switch, text.
    const QByteArray text = network(brick("Brick_1", "VireoMatMatteBrick", plainAttributes,
                                        R"("result":{},"bumpmap":{"Prop_0":{"Value":true}},
               "Kd":{"Prop_0":{"Value":{"Red":["i",256],"Green":["i",0],"Blue":["i",0]}}},
               "sigma":{"Prop_0":{"Value":["f","x"]}})")
        + ','
        + brick("Brick_2", "VireoTexFltFbmBrick", plainAttributes,
            R"("result":{},"octaves":{"Prop_0":{"Value":1.5}},
               "roughness":{"Prop_0":{"Value":0.5}},
               "coordinates":{"Prop_0":{"Value":["i",99]}},
               "translate":{"Prop_0":{"Value":"x"},"Prop_1":{"Value":null},"Prop_2":{"Value":0}})"));
    ASSERT_TRUE(load(text));
    const QByteArray saved = file.saveText(&user);
    for (const char* kept :
        { "\"Value\": true", "\"Red\": [\"i\", 256]", "\"Value\": [\"f\",\"x\"]", "\"Value\": 1.5",
            "\"Value\": [\"i\", 99]", "\"Value\": \"x\"", "\"Value\": null" })
        EXPECT_TRUE(saved.contains(kept)) << kept;
    EXPECT_EQ(file.getWarnings().size(), 7);
    EXPECT_EQ(
        propertyAs<DzColorProperty>(brickAt(1), "Kd")->getColorValue(), QColor(230, 230, 230));
    EXPECT_EQ(propertyAs<DzIntProperty>(brickAt(2), "octaves")->getValue(), 8);
    EXPECT_TRUE(isWarnedOf("Brick_2/translate/Prop_1: "));
}

TEST_F(NetworkFileTest, enumerationIndexWithoutItemIsKeptAndTheDefaultUsed)
{
    ASSERT_TRUE(load(network(brick("Brick_1", "VireoTexFltCheckerboardBrick", plainAttributes,
        R"("aamode":{"Prop_0":{"Value":["i",3]}},"mapping":{"Prop_0":{"Value":["i",-1]}})"))));
    EXPECT_EQ(
        propertyAs<DzEnumProperty>(brickAt(1), "aamode")->getStringValue(), QStringLiteral("none"));
    EXPECT_TRUE(file.saveText(&user).contains("\"Value\": [\"i\", 3]"));
    EXPECT_TRUE(file.saveText(&user).contains("\"Value\": [\"i\", -1]"));
    EXPECT_TRUE(isWarnedOf("Brick_1/aamode"));
    // The user chooses an item: the file's index goes.
    propertyAs<DzEnumProperty>(brickAt(1), "aamode")->setValue(1);
    EXPECT_FALSE(file.saveText(&user).contains("\"Value\": [\"i\", 3]"));
}

TEST_F(NetworkFileTest, customInputOfUnknownKindMakesNoInputAndIsRewrittenAfterTheKnownOnes)
{
    const QByteArray known = R"({"Label":"c","Name":"c","ExtTypeID":1009,"Direction":0})";
    const QByteArray odd = R"({"Label":"q","Name":"q","ExtTypeID":1234,"Direction":0,"More":[1]})";
    const QByteArray parameters
        = R"("result":{},"tex1":{"Prop_0":{"Value":1}},"tex2":{"Prop_0":{"Value":1}},"c":{"Prop_0":{"Value":0}})";
    const auto withEntries = [&](const QByteArray& entries) {
        return network(brick("Brick_1", "VireoTexFltScaleBrick",
            "\"VireoExtCustomParameters\":{" + entries + "},\"BrickSettings\":{}", parameters));
    };
    ASSERT_TRUE(load(withEntries("\"para0\":" + odd + ",\"para1\":" + known + ",\"note\":7")));
    EXPECT_EQ(brickAt(1)->getNumCustomParams(), 1);
    EXPECT_EQ(file.getWarnings().size(), 2);
    EXPECT_TRUE(isWarnedOf("para0"));
    const QByteArray expected
        = withEntries("\"para0\":" + known + ",\"para1\":" + odd + ",\"note\":7");
    EXPECT_TEXT(QString::fromUtf8(tidied(expected)), QString::fromUtf8(file.saveText(&user)));
    EXPECT_SAVED_AS_READ(expected);
}

TEST_F(NetworkFileTest, membersOfAnUnusualOrderAndTypeAreWrittenInOneOrderFromTheFirstTimeOn)
{
    for (const char* text :
        {
            R"({"BrickUserName":5,"Bricks":{},"Connections":{}})",
            R"({"Bricks":{"Brick_1":{"Parameters":{},"DAZStudioClassName":"VireoMatMatteBrick","Attributes":5}}})",
            R"({"Bricks":{"Brick_1":{"DAZStudioClassName":"VireoTexFltBAndBrick",
                "Attributes":{"BrickSettings":{},"BrickProperties":5}}}})",
            R"({"Bricks":{"Brick_1":{"DAZStudioClassName":"VireoTexFltFbmBrick",
                "Parameters":{"translate":{"Prop_2":5,"Prop_0":{"Value":7}}}}}})",
        }) {
        SCOPED_TRACE(text);
        const QByteArray saved = resaved(withTrees(
            QByteArray("{\"format\":\"sskn\",\"version\":1,\"BrickSetup\":") + text + '}'));
        EXPECT_SAVED_AS_READ(saved);
    }
}

TEST_F(NetworkFileTest, propertiesThatABrickHasNotAreKept)
{
    const QByteArray text = network(brick("Brick_1", "VireoTexFltScaleBrick",
        R"("VireoExtCustomParameters":{},"BrickProperties":{"gone":{"Value":3},"x":4},"BrickSettings":{})",
        R"("result":{},"tex1":{"Prop_0":{"Value":1}},"tex2":{"Prop_0":{"Value":1}})"));
    EXPECT_SAVED_AS_READ(text);
}

TEST_F(NetworkFileTest, nameOfAKeptEntryIsNotGivenToABrick)
{
    const QByteArray text = network(scaleBrick("Brick_1") + ",\"Brick_2\":[7]");
    EXPECT_SAVED_AS_READ(text);
    EXPECT_EQ(addBrick(user, "VireoTexFltScaleBrick")->getBrickID(), 3u);
    EXPECT_TRUE(file.saveText(&user).contains("\"Brick_2\": [7]"));
    // The same where a brick gets its number while loading.
    VireoBrickUser other;
    ASSERT_TRUE(file.loadText(
        network(scaleBrick("Mine") + ",\"Brick_1\":[7]"), QStringLiteral("other"), &other));
    EXPECT_TRUE(file.saveText(&other).contains("\"Brick_1\": [7]"));
    EXPECT_NE(other.getBrick(2), nullptr);
}

TEST_F(NetworkFileTest, savingWarnsOfNothingAgain)
{
    ASSERT_TRUE(load(network(brick("Brick_1", "VireoTexFltScaleBrick",
        R"("VireoExtCustomParameters":{"para0":{"Name":"c","ExtTypeID":1009},"note":7},"BrickSettings":{})",
        "\"c\":{\"Prop_0\":{\"Value\":\"x\"}}"))));
    EXPECT_EQ(file.getWarnings().size(), 2);
    const Warnings warnings;
    file.saveText(&user);
    EXPECT_EQ(warnings.messages, QStringList());
}

// Unknown classes -----------------------------------------------------------------------------

namespace {

const char* const strangeBrick
    = R"("Brick_1":{"DAZStudioClassName":"OtherNoiseBrick","Attributes":{"own":[1,2],
        "BrickSettings":{"BrickTitle":"Odd one"}},"Parameters":{"in":{"Prop_0":{"Value":3}}},
        "Rest":{"a":true}})";

QByteArray strangeNetwork()
{
    return network(
        QByteArray(strangeBrick) + ',' + scaleBrick("Brick_2") + ',' + scaleBrick("Brick_3"),
        linkEntry(0, "Brick_3", "Brick_1", "in") + ','
            + linkEntry(1, "Brick_1", "Brick_2", "tex1", "noise"));
}

} // namespace

TEST_F(NetworkFileTest, brickOfUnknownClassIsKeptWithItsLinksAndNamed)
{
    EXPECT_SAVED_AS_READ(strangeNetwork());
    ASSERT_EQ(user.getNumBricks(), 3);
    auto* odd = qobject_cast<DzUnknownBrick*>(user.getBrick(1));
    ASSERT_NE(odd, nullptr);
    EXPECT_EQ(odd->getStoredClassName(), QStringLiteral("OtherNoiseBrick"));
    EXPECT_EQ(odd->getBrickTitle(), QStringLiteral("Odd one"));
    EXPECT_EQ(param(brickAt(2), "tex1")->getNumConnections(), 1);
    EXPECT_EQ(param(brickAt(3), "result")->getNumConnections(), 1);
    ASSERT_EQ(file.getWarnings().size(), 1);
    EXPECT_TRUE(isWarnedOf("Brick_1: "));
    EXPECT_TRUE(isWarnedOf("OtherNoiseBrick"));
}

TEST_F(NetworkFileTest, inputFedByABrickOfUnknownClassWritesNothing)
{
    ASSERT_TRUE(load(strangeNetwork()));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"scale\"\n"
                               "\t\"float   tex2\" [1]\n"),
        literalText(brickAt(2)));
}

TEST_F(NetworkFileTest, brickOfUnknownClassIsNotAnnounced)
{
    QStringList announced;
    QObject::connect(&user, &VireoBrickUser::brickAdded,
        [&](DzShaderBrick* brick) { announced.append(QString::number(brick->getBrickID())); });
    ASSERT_TRUE(load(strangeNetwork()));
    EXPECT_EQ(announced, QStringList({ QStringLiteral("2"), QStringLiteral("3") }));
}

TEST_F(NetworkFileTest, brickOfUnknownClassCanBeDeletedAndComesBack)
{
    ASSERT_TRUE(load(strangeNetwork()));
    const QByteArray before = file.saveText(&user);
    ASSERT_TRUE(user.deleteBrick(1));
    EXPECT_EQ(param(brickAt(2), "tex1")->getNumConnections(), 0);
    EXPECT_EQ(param(brickAt(3), "result")->getNumConnections(), 0);
    EXPECT_FALSE(file.saveText(&user).contains("OtherNoiseBrick"));
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_TEXT(QString::fromUtf8(before), QString::fromUtf8(file.saveText(&user)));
}

TEST_F(NetworkFileTest, brickOfUnknownClassIsCopiedWithItsUser)
{
    ASSERT_TRUE(load(strangeNetwork()));
    VireoBrickUser copy;
    {
        const Warnings warnings;
        copy.copyFrom(&user);
    }
    EXPECT_NE(copy.getIdentifier(), user.getIdentifier());
    copy.setIdentifier(user.getIdentifier());
    EXPECT_TEXT(QString::fromUtf8(tidied(strangeNetwork())),
        QString::fromUtf8(DzBrickUserFile().saveText(&copy)));
}

TEST_F(NetworkFileTest, usersMayNotAddABrickOfUnknownClass)
{
    const DzTSharedPointer<DzShaderBrick> odd(new DzUnknownBrick(DzSettings()));
    EXPECT_EQ(user.addBrick(odd), 0u);
    EXPECT_EQ(user.getNumBricks(), 0);
}

TEST_F(NetworkFileTest, newPlaceOfABrickOfUnknownClassIsSaved)
{
    ASSERT_TRUE(load(network(strangeBrick)));
    user.getBrick(1)->getBrickSettings()->setFloatValue(QStringLiteral("PosX"), 42);
    QByteArray expected(strangeBrick);
    expected.replace("\"BrickTitle\":\"Odd one\"", "\"BrickTitle\":\"Odd one\",\"PosX\":42");
    EXPECT_TEXT(
        QString::fromUtf8(tidied(network(expected))), QString::fromUtf8(file.saveText(&user)));
}

TEST_F(NetworkFileTest, classThatIsNoBrickIsKeptAsAnUnknownOne)
{
    const QByteArray text
        = network("\"Brick_1\":{\"DAZStudioClassName\":\"VireoBrickUser\",\"Attributes\":{}}");
    EXPECT_SAVED_AS_READ(text);
    EXPECT_NE(qobject_cast<DzUnknownBrick*>(user.getBrick(1)), nullptr);
}

// Links ---------------------------------------------------------------------------------------

TEST_F(NetworkFileTest, linksToWhatIsNotThereAreKeptAndNamed)
{
    const QByteArray text = network(scaleBrick("Brick_1") + ',' + scaleBrick("Brick_2"),
        linkEntry(0, "Brick_2", "Brick_1", "tex1") + ','
            + linkEntry(1, "Brick_9", "Brick_1", "tex1") + ','
            + linkEntry(2, "Brick_2", "Brick_1", "nosuch") + ','
            + linkEntry(3, "Brick_2", "Brick_1", "tex2", "nosuch") + ','
            + linkEntry(4, "nobody", "", ""));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_EQ(file.getWarnings().size(), 4);
    EXPECT_TRUE(isWarnedOf("Connection_1: the link from Brick_9/result to Brick_1/tex1"));
    EXPECT_EQ(param(brickAt(1), "tex1")->getNumConnections(), 1);
    EXPECT_EQ(param(brickAt(1), "tex2")->getNumConnections(), 0);
}

TEST_F(NetworkFileTest, numberThatAKeptLinkNamesIsNotGivenAway)
{
    ASSERT_TRUE(load(network(scaleBrick("Brick_1"), linkEntry(0, "Brick_9", "Brick_1", "tex1"))));
    EXPECT_EQ(addBrick(user, "VireoTexFltScaleBrick")->getBrickID(), 10u);
    const QByteArray saved = file.saveText(&user);
    ASSERT_TRUE(load(saved));
    EXPECT_EQ(param(brickAt(1), "tex1")->getNumConnections(), 0);
}

TEST_F(NetworkFileTest, numberThatAKeptLinkNamesIsNotGivenAwayWhileLoading)
{
    const QByteArray saved = resaved(network(scaleBrick("Brick_1") + ',' + scaleBrick("Mine"),
        linkEntry(0, "Brick_2", "Brick_1", "tex1")));
    EXPECT_EQ(brickAt(2), nullptr);
    EXPECT_NE(brickAt(3), nullptr);
    EXPECT_SAVED_AS_READ(saved);
    EXPECT_EQ(param(brickAt(1), "tex1")->getNumConnections(), 0);
}

TEST_F(NetworkFileTest, keptLinkAmongOthersMovesBehindThemOnce)
{
    const QByteArray bricks = scaleBrick("Brick_1") + ',' + scaleBrick("Brick_2");
    const auto good = [](int n) { return linkEntry(n, "Brick_2", "Brick_1", "tex1"); };
    const auto kept = [](int n) { return linkEntry(n, "Brick_5", "Brick_1", "tex1"); };
    const QByteArray saved = resaved(network(bricks, kept(0) + ',' + good(1)));
    EXPECT_TEXT(QString::fromUtf8(tidied(network(bricks, good(0) + ',' + kept(1)))),
        QString::fromUtf8(saved));
    EXPECT_SAVED_AS_READ(saved);
}

TEST_F(NetworkFileTest, linksBesideWhatIsNoneKeepTheirKeysAndOrder)
{
    const QByteArray bricks
        = scaleBrick("Brick_1") + ',' + scaleBrick("Brick_2") + ',' + scaleBrick("Brick_3");
    const QByteArray text = network(bricks,
        linkEntry(5, "Brick_3", "Brick_1", "tex1") + ",\"note\":1,"
            + linkEntry(2, "Brick_2", "Brick_1", "tex1") + ','
            + linkEntry(0, "Brick_9", "Brick_1", "tex1"));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_EQ(param(brickAt(1), "tex1")->getConnection(0)->getTopBrickOwner()->getBrickID(), 3u);
    // One more takes the next number that is free.
    ASSERT_TRUE(link(brickAt(3), brickAt(2), "tex1"));
    const QByteArray saved = file.saveText(&user);
    EXPECT_TRUE(saved.contains("\"Connection_1\""));
    EXPECT_SAVED_AS_READ(saved);
}

TEST_F(NetworkFileTest, linkThatWouldCloseALoopIsDroppedAndNamed)
{
    const QByteArray bricks
        = scaleBrick("Brick_1") + ',' + scaleBrick("Brick_2") + ',' + scaleBrick("Brick_3");
    const QByteArray good = linkEntry(0, "Brick_2", "Brick_1", "tex1") + ','
        + linkEntry(1, "Brick_3", "Brick_2", "tex1");
    ASSERT_TRUE(load(network(bricks,
        good + ',' + linkEntry(2, "Brick_1", "Brick_3", "tex1") + ','
            + linkEntry(3, "Brick_1", "Brick_1", "tex2"))));
    EXPECT_EQ(file.getWarnings().size(), 2);
    EXPECT_TRUE(isWarnedOf("Connection_2: "));
    EXPECT_TRUE(isWarnedOf("Connection_3: "));
    EXPECT_TRUE(isWarnedOf("loop"));
    EXPECT_TEXT(
        QString::fromUtf8(tidied(network(bricks, good))), QString::fromUtf8(file.saveText(&user)));
}

TEST_F(NetworkFileTest, linkThatStandsTwiceIsMadeOnce)
{
    const QByteArray bricks = scaleBrick("Brick_1") + ',' + scaleBrick("Brick_2");
    ASSERT_TRUE(load(network(bricks,
        linkEntry(0, "Brick_2", "Brick_1", "tex1") + ','
            + linkEntry(1, "Brick_2", "Brick_1", "tex1"))));
    EXPECT_EQ(param(brickAt(1), "tex1")->getNumConnections(), 1);
    EXPECT_EQ(file.getWarnings().size(), 1);
    EXPECT_TEXT(
        QString::fromUtf8(tidied(network(bricks, linkEntry(0, "Brick_2", "Brick_1", "tex1")))),
        QString::fromUtf8(file.saveText(&user)));
}

TEST_F(NetworkFileTest, linkBetweenUnlikeTypesIsKeptWithoutEffect)
{
    const QByteArray text = network(scaleBrick("Brick_1") + ','
            + brick("Brick_2", "VireoTexClrConstantBrick", plainAttributes,
                R"("result":{},"value":{"Prop_0":{"Value":{"Red":["i",1],"Green":["i",2],"Blue":["i",3]}}},
                   "scale":{"Prop_0":{"Value":1}})"),
        linkEntry(0, "Brick_2", "Brick_1", "tex1"));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_EQ(param(brickAt(1), "tex1")->getNumConnections(), 0);
    ASSERT_EQ(file.getWarnings().size(), 1);
    EXPECT_TRUE(isWarnedOf("no effect"));
}

TEST_F(NetworkFileTest, linkIntoAnOutputOrOutOfAnInputIsKeptWithoutEffect)
{
    const QByteArray text = network(scaleBrick("Brick_1") + ',' + scaleBrick("Brick_2"),
        linkEntry(0, "Brick_2", "Brick_1", "result") + ','
            + linkEntry(1, "Brick_2", "Brick_1", "tex1", "tex2"));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_EQ(param(brickAt(1), "result")->getNumConnections(), 0);
    EXPECT_EQ(param(brickAt(1), "tex1")->getNumConnections(), 0);
    EXPECT_EQ(file.getWarnings().size(), 2);
}

// Order and numbers ---------------------------------------------------------------------------

TEST_F(NetworkFileTest, storedOrderOfParametersIsRestored)
{
    const QByteArray text = network(brick("Brick_1", "VireoTexFltScaleBrick", plainAttributes,
        R"("tex2":{"Prop_0":{"Value":3}},"result":{},"tex1":{"Prop_0":{"Value":2}})"));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_EQ(brickAt(1)->getParameter(0)->getName(), QStringLiteral("tex2"));
    EXPECT_EQ(brickAt(1)->getParameter(1)->getName(), QStringLiteral("result"));
    EXPECT_EQ(brickAt(1)->getParameter(2)->getName(), QStringLiteral("tex1"));
}

TEST_F(NetworkFileTest, storedOrderIsRestoredAcrossPairsAndCustomInputs)
{
    const QByteArray text = network(brick("Brick_1", "VireoTexFltBAndBrick",
        R"("VireoExtCustomParameters":{"para0":{"Label":"c","Name":"c","ExtTypeID":1009,"Direction":0}},
           "BrickProperties":{"count":{"Value":["i",2]}},"BrickSettings":{})",
        R"("tex2":{"Prop_0":{"Value":4}},"c":{"Prop_0":{"Value":5}},"result":{},
           "offset2":{"Prop_0":{"Value":3}},"amount":{"Prop_0":{"Value":0}},
           "offset1":{"Prop_0":{"Value":1}},"tex1":{"Prop_0":{"Value":2}})"));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_EQ(brickAt(1)->getParameter(1)->getName(), QStringLiteral("c"));
    EXPECT_EQ(floatAt(1, "tex2")->getValue(), 4.0f);
}

TEST_F(NetworkFileTest, parametersThatTheFileLeavesOutKeepTheirPlacesAndDefaults)
{
    ASSERT_TRUE(load(network(brick(
        "Brick_1", "VireoTexFltScaleBrick", plainAttributes, R"("tex2":{"Prop_0":{"Value":3}})"))));
    EXPECT_EQ(brickAt(1)->getNumParameters(), 3);
    EXPECT_EQ(brickAt(1)->getParameter(0)->getName(), QStringLiteral("result"));
    EXPECT_EQ(floatAt(1, "tex1")->getValue(), 1.0f);
    EXPECT_EQ(floatAt(1, "tex2")->getValue(), 3.0f);
}

TEST_F(NetworkFileTest, parametersThatTheFileLeavesOutAreWrittenInPlaceBesideUnknownOnes)
{
    const auto withParameters = [](const QByteArray& parameters) {
        return network(brick("Brick_1", "VireoTexFltScaleBrick", plainAttributes, parameters));
    };
    ASSERT_TRUE(load(withParameters(R"("gone":{},"result":{},"tex2":{"Prop_0":{"Value":3}})")));
    EXPECT_EQ(brickAt(1)->getParameter(1)->getName(), QStringLiteral("tex1"));
    const QByteArray expected = withParameters(
        R"("gone":{},"result":{},"tex1":{"Prop_0":{"Value":1}},"tex2":{"Prop_0":{"Value":3}})");
    EXPECT_TEXT(QString::fromUtf8(tidied(expected)), QString::fromUtf8(file.saveText(&user)));
    EXPECT_SAVED_AS_READ(expected);
}

TEST_F(NetworkFileTest, brickNumbersAreKept)
{
    const QByteArray text = network(scaleBrick("Brick_3") + ',' + scaleBrick("Brick_7"),
        linkEntry(0, "Brick_3", "Brick_7", "tex1"));
    EXPECT_SAVED_AS_READ(text);
    EXPECT_NE(brickAt(3), nullptr);
    EXPECT_NE(brickAt(7), nullptr);
    EXPECT_EQ(addBrick(user, "VireoTexFltScaleBrick")->getBrickID(), 8u);
}

TEST_F(NetworkFileTest, bricksUnderOtherNamesGetTheNextNumbers)
{
    QByteArray bricks;
    for (const char* name : { "Mine", "Brick_4", "Brick_04", "Brick_0", "Brick_-1",
             "Brick_4294967295", "Brick_99999999999999", "" })
        bricks += (bricks.isEmpty() ? "" : ",") + scaleBrick(name);
    ASSERT_TRUE(load(network(bricks,
        linkEntry(0, "Mine", "Brick_4", "tex1") + ','
            + linkEntry(1, "Brick_4294967295", "Mine", "tex2"))));
    QList<uint> ids;
    user.getBrickIDs(ids);
    EXPECT_EQ(ids, QList<uint>({ 4, 5, 6, 7, 8, 9, 10, 11 }));
    EXPECT_EQ(param(brickAt(4), "tex1")->getConnection(0)->getTopBrickOwner(), brickAt(5));
    EXPECT_EQ(param(brickAt(5), "tex2")->getConnection(0)->getTopBrickOwner(), brickAt(9));
    const QByteArray saved = file.saveText(&user);
    EXPECT_SAVED_AS_READ(saved);
}

TEST_F(NetworkFileTest, identifierAndNameAreTheFiles)
{
    ASSERT_TRUE(load(network("")));
    EXPECT_EQ(user.getBrickUserName(), QStringLiteral("Net"));
    EXPECT_EQ(
        user.getIdentifier().toString(), QStringLiteral("{3ea625fb-dc94-5af7-b603-c4f086186845}"));
}

TEST_F(NetworkFileTest, withoutIdentifierAndNameTheUserKeepsItsOwn)
{
    const QUuid before = user.getIdentifier();
    ASSERT_TRUE(load(withTrees(R"({"format":"sskn","version":1,"BrickSetup":{}})")));
    EXPECT_EQ(user.getIdentifier(), before);
    EXPECT_FALSE(before.isNull());
    EXPECT_EQ(user.getBrickUserName(), QStringLiteral("Vireo Brick User"));
    EXPECT_EQ(user.getNumBricks(), 0);
}

TEST_F(NetworkFileTest, loadingLeavesNoUndoStepAndWritesLockedProperties)
{
    ASSERT_TRUE(load(network(scaleBrick("Brick_1", R"("Value":0.5,"Locked":true)"))));
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
    EXPECT_EQ(floatAt(1, "tex1")->getValue(), 0.5f);
    EXPECT_TRUE(floatAt(1, "tex1")->isLocked());
}

// Refusals ------------------------------------------------------------------------------------

TEST_F(NetworkFileTest, refusedFilesLeaveEverythingUnchangedAndSayWhy)
{
    const QByteArray good = network(scaleBrick("Brick_1") + ",\"odd\":1");
    const QByteArray before = resaved(good);
    const struct {
        const char* text;
        const char* cause;
    } cases[] = {
        { "", "line 1, column 1" },
        { "[]", "line 1, column 1" },
        { "{\n  \"format\": x}", "line 2, column 13" },
        { "{}", "\"format\"" },
        { R"({"format":"duf","version":1,"BrickSetup":{}})", "\"format\"" },
        { R"({"format":5,"version":1,"BrickSetup":{}})", "\"format\"" },
        { R"({"format":"sskn","BrickSetup":{}})", "\"version\"" },
        { R"({"format":"sskn","version":"1","BrickSetup":{}})", "\"version\"" },
        { R"({"format":"sskn","version":1.5,"BrickSetup":{}})", "\"version\"" },
        { R"({"format":"sskn","version":0,"BrickSetup":{}})", "\"version\"" },
        { R"({"format":"sskn","version":["f","nan"],"BrickSetup":{}})", "\"version\"" },
        { R"({"format":"sskn","version":["f","inf"],"BrickSetup":{}})", "\"version\"" },
        { R"({"format":"sskn","version":2,"BrickSetup":{}})", "file version 2" },
        { R"({"format":"sskn","version":1e300,"BrickSetup":{}})", "version" },
        { R"({"format":"sskn","version":1})", "\"BrickSetup\"" },
        { R"({"format":"sskn","version":1,"BrickSetup":[1]})", "\"BrickSetup\"" },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_FALSE(file.loadText(withTrees(c.text), QStringLiteral("bad net.sskn"), &user));
        EXPECT_TRUE(file.getError().contains(QStringLiteral("bad net.sskn")));
        EXPECT_TRUE(file.getError().contains(QString::fromUtf8(c.cause)))
            << file.getError().toStdString();
        EXPECT_FALSE(file.getError().contains(QLatin1Char('\n')));
        EXPECT_TEXT(QString::fromUtf8(before), QString::fromUtf8(file.saveText(&user)));
    }
}

TEST_F(NetworkFileTest, successClearsTheErrorAndTheWarnings)
{
    EXPECT_FALSE(load("{"));
    EXPECT_FALSE(file.getError().isEmpty());
    ASSERT_TRUE(load(network("\"odd\":1")));
    EXPECT_EQ(file.getError(), QString());
    EXPECT_EQ(file.getWarnings().size(), 1);
    ASSERT_TRUE(load(network("")));
    EXPECT_EQ(file.getWarnings(), QStringList());
}

TEST_F(NetworkFileTest, treesThatAreNoneAreNamedAndKeptUnderAnotherKey)
{
    const QByteArray text = network(
        brick("Brick_1", "VireoTexFltScaleBrick", plainAttributes, R"("tex1":{"Prop_0":20})"));
    QByteArray odd(text);
    odd.replace(odd.indexOf("\"Connections\""),
        odd.indexOf("\"BrickUserName\"") - odd.indexOf("\"Connections\""), "\"Connections\":[1],");
    ASSERT_TRUE(file.loadText(odd, QStringLiteral("odd.sskn"), &user))
        << file.getError().toStdString();
    EXPECT_EQ(file.getWarnings().size(), 2)
        << file.getWarnings().join(QLatin1Char('\n')).toStdString();
    const QByteArray saved = file.saveText(&user);
    EXPECT_TRUE(saved.contains("\"Connections (not read)\": [1]")) << saved.toStdString();
    EXPECT_TRUE(saved.contains("\"Prop_0 (not read)\": 20")) << saved.toStdString();
    EXPECT_SAVED_AS_READ(saved);
}

TEST_F(NetworkFileTest, membersOfALinkBesideItsEndsAreKept)
{
    QByteArray text = network(scaleBrick("Brick_1") + ',' + scaleBrick("Brick_2"),
        linkEntry(0, "Brick_2", "Brick_1", "tex1"));
    text.replace("\"SourceBrick\"", "\"Note\":\"mine\",\"SourceBrick\"");
    ASSERT_TRUE(load(text));
    EXPECT_TRUE(param(brickAt(1), "tex1")->isConnectedTo(param(brickAt(2), "result")));
    EXPECT_TRUE(file.saveText(&user).contains("\"Note\": \"mine\""));
}

TEST_F(NetworkFileTest, aNumberBeyondSinglePrecisionIsKeptAndNotBentToInfinity)
{
    ASSERT_TRUE(load(network(scaleBrick("Brick_1", R"("Value":1e39)"))));
    EXPECT_EQ(file.getWarnings().size(), 1);
    EXPECT_EQ(floatAt(1, "tex1")->getValue(), 1.0f);
    EXPECT_TRUE(file.saveText(&user).contains("\"Value\": 1e+39"));
}

TEST_F(NetworkFileTest, aPartIsSavedWithTheLinksAmongItsBricks)
{
    const QByteArray first = scaleBrick("Brick_1");
    const QByteArray third = scaleBrick("Brick_3");
    const QByteArray text = network(first + ',' + scaleBrick("Brick_2") + ',' + third,
        linkEntry(0, "Brick_2", "Brick_1", "tex1") + ','
            + linkEntry(1, "Brick_3", "Brick_1", "tex2"));
    VireoBrickUser part;
    DzBrickUserFile whole;
    ASSERT_TRUE(whole.loadText(text, QStringLiteral("test"), &part));
    EXPECT_EQ(whole.saveText(&part, { 1, 3, 9 }),
        tidied(network(first + ',' + third, linkEntry(0, "Brick_3", "Brick_1", "tex2"))));
}
