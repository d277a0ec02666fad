// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TextCheck.h"

#include "RendererFacts.h"
#include "TestSupport.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <random>

using namespace lux;

namespace {

std::vector<Finding> check(const QByteArray& text, const CheckOptions& options = CheckOptions())
{
    SceneText scene;
    scene.readText(text, QString(), SceneOptions());
    return checkScene(scene, options);
}

/// "severity rule parameter" of what is not quiet; quiet findings begin with a dot.
QStringList told(const QByteArray& text, bool isWhole = false)
{
    CheckOptions options;
    options.isWhole = isWhole;
    QStringList list;
    for (const Finding& finding : check(text, options))
        list.append(QLatin1String(finding.isQuiet ? "." : "") + severityWord(finding.severity)
            + QLatin1Char(' ') + finding.rule
            + (finding.parameter.isEmpty() ? QString() : QLatin1Char(' ') + finding.parameter));
    return list;
}

QByteArray material(const char* lines)
{
    return QByteArray("MakeNamedMaterial \"m\" ") + lines;
}

/// Statements that are nearly right.
QByteArray randomScene(std::mt19937* random)
{
    static const char* const pieces[] = { "Texture \"a\" \"float\" \"band\" ",
        "Texture \"b\" \"color\" \"multimix\" ", "Texture \"a\" \"fresnel\" \"cauchy\" ",
        "MakeNamedMaterial \"m\" ", "\"string type\" [\"mix\"] ", "\"float offsets\" [0 1] ",
        "\"float offsets\" [] ", "\"color tex1\" [1 1] ", "\"texture tex2\" [\"a\"] ",
        "\"texture tex2\" ", "AttributeBegin ", "AttributeEnd ", "WorldBegin ",
        "NamedMaterial \"m\" ", "Interior \"\\\"\" ", "MakeNamedVolume \"m\" \"clear\" ",
        "\"string namedmaterial1\" [\"m\"] ", "\"float bumpmap\" nan ", "\"\" 1 ", "] ",
        "\"string filename\" \"a\\b\" ", "Texture \"c\" \"float\" \"imagemap\" ",
        "\"vector scale\" [0 0 0] ", "Shape \"mesh\" \"string displacementmap\" \"a\" ",
        "\"float cauchyb\" [-1e999 \"x\"] ", "\"bool b\" \"\" ", "Include \"x\" ",
        "Texture \"\" \"\" \"\" " };
    QByteArray text;
    const unsigned count = (*random)() % 40;
    for (unsigned i = 0; i < count; ++i)
        text += pieces[(*random)() % (sizeof pieces / sizeof *pieces)];
    return text;
}

} // namespace

TEST(TextCheck, whatIsReadIsNotTold)
{
    EXPECT_EQ(told(material("\"string type\" [\"matte\"] \"color Kd\" [.5 .5 .5] \"float sigma\" 3 "
                            "\"bool compo_visible_material\" [\"true\"]")),
        QStringList());
    EXPECT_EQ(told("Texture \"t\" \"color\" \"marble\" \"float scale\" 2 \"vector scale\" [1 2 3]"),
        QStringList());
    EXPECT_EQ(told("Film \"fleximage\" \"float anything\" 1"), QStringList());
    EXPECT_EQ(
        told("Shape \"mesh\" \"integer triindices\" [0 1 2] \"point P\" [0 0 0]"), QStringList());
    EXPECT_EQ(told("Shape \"sphere\" \"float radius\" 1"), QStringList());
}

TEST(TextCheck, linesThatAreNotRead)
{
    EXPECT_EQ(told(material("\"string type\" [\"matte\"] \"float Kr\" 1")),
        QStringList { "ignored not-read Kr" });
    EXPECT_EQ(told(material("\"string type\" [\"matte\"] \"float Kd\" 1")),
        QStringList { "ignored wrong-kind Kd" });
    EXPECT_EQ(told(material("\"string type\" [\"matte\"] \"string Kd\" [\"t\"]")),
        QStringList { "ignored wrong-kind Kd" });
    EXPECT_EQ(told(material("\"string type\" [\"matte\"] \"color Kd\" [1]")),
        QStringList { "ignored color-of-three Kd" });
    EXPECT_EQ(told(material("\"string type\" [\"matte\"] \"matrix Kd\" [1]")),
        QStringList { "ignored unknown-value-type Kd" });
    EXPECT_EQ(told(material("\"string type\" [\"matte\"] \"float bumpmap\" [0]")),
        QStringList { ".ignored unread-value bumpmap" });
    EXPECT_EQ(told(material("\"string type\" [\"matte\"] \"float bumpmap\" [0.1]")),
        QStringList { "surprising unread-value bumpmap" });
    EXPECT_EQ(told(material("\"string type\" [\"mix\"] \"string namedmaterial1\" [\"a\"] \"string "
                            "namedmaterial2\" [\"b\"] \"float bumpmap\" [1]")),
        QStringList { "surprising unread-value bumpmap" });
    EXPECT_EQ(told(material("\"string type\" [\"scatter\"] \"float g\" [0.8]")),
        QStringList { "ignored not-read g" });
}

TEST(TextCheck, linesThatAreReadSometimes)
{
    const QByteArray uv = "Texture \"t\" \"color\" \"uv\" ";
    EXPECT_EQ(told(uv + "\"vector v1\" [2 0 0]"), QStringList { "ignored not-read-now v1" });
    EXPECT_EQ(told(uv + "\"vector v1\" [1 0 0]"), QStringList { ".ignored not-read-now v1" });
    EXPECT_EQ(told(uv + "\"vector v1\" [2 0 0] \"string mapping\" [\"planar\"]"), QStringList());
    EXPECT_EQ(
        told(uv + "\"float vscale\" 2 \"float uscale\" 2 \"string mapping\" [\"cylindrical\"]"),
        QStringList { "ignored not-read-now vscale" });
    const QByteArray checks = "Texture \"t\" \"float\" \"checkerboard\" ";
    EXPECT_EQ(told(checks + "\"float uscale\" 2"), QStringList());
    EXPECT_EQ(told(checks + "\"integer dimension\" 3 \"float uscale\" 2"),
        QStringList { "ignored not-read-now uscale" });
    EXPECT_EQ(told(checks + "\"integer dimension\" 3 \"vector scale\" [1 0 1]"),
        QStringList { "surprising collapsed-space scale" });
    EXPECT_EQ(told(material("\"string type\" \"glossytranslucent\" \"float backface_d\" 1")),
        QStringList { "ignored not-read-now backface_d" });
    EXPECT_EQ(told(material("\"string type\" \"glossytranslucent\" \"float backface_d\" 1 \"bool "
                            "onesided\" \"false\"")),
        QStringList());
}

TEST(TextCheck, numberedInputsGoAsFarAsTheirList)
{
    const QByteArray band = "Texture \"t\" \"float\" \"band\" \"float offsets\" [0 1] ";
    EXPECT_EQ(told(band + "\"float tex1\" 1 \"float tex2\" 1"), QStringList());
    EXPECT_EQ(told(band + "\"float tex3\" 1"), QStringList { "ignored not-read tex3" });
    EXPECT_EQ(told(band + "\"float tex0\" 1 \"float tex01\" 1 \"float tex\" 1"),
        (QStringList {
            "ignored not-read tex0", "ignored not-read tex01", "ignored not-read tex" }));
    EXPECT_EQ(told("Texture \"t\" \"float\" \"band\""), QStringList { "crash no-offsets offsets" });
    EXPECT_EQ(told("Texture \"t\" \"color\" \"multimix\" \"integer weights\" [1 2]"),
        (QStringList { "crash no-weights weights", "ignored wrong-kind weights" }));
}

TEST(TextCheck, kindsThatDoNotExist)
{
    EXPECT_EQ(told("Texture \"t\" \"color\" \"irregular data\" \"float data\" 1"),
        QStringList { "refused unknown-type" });
    EXPECT_EQ(told("Texture \"t\" \"color\" \"irregulardata\" \"float data\" [1 2] \"float "
                   "wavelengths\" [1 2]"),
        QStringList());
    EXPECT_EQ(told("Texture \"t\" \"color\" \"irregulardata\" \"float data\" 1"),
        QStringList { "refused too-few-data data" });
    EXPECT_EQ(told("Texture \"t\" \"float\" \"marble\""), QStringList { "refused unknown-type" });
    EXPECT_EQ(
        told("Texture \"t\" \"colour\" \"marble\""), QStringList { "refused unknown-family" });
    EXPECT_EQ(told(material("\"string type\" [\"glas\"]")), QStringList { "refused unknown-type" });
    EXPECT_EQ(told("Material \"glas\""), QStringList { "refused unknown-type" });
    EXPECT_EQ(told(material("\"string type\" [\"\"]")), QStringList());
    EXPECT_EQ(told("MakeNamedVolume \"v\" \"fog\""), QStringList { "refused unknown-type" });
}

TEST(TextCheck, unknownWords)
{
    EXPECT_EQ(told("Texture \"t\" \"float\" \"fbm\" \"string coordinates\" [\"global normal\"]"),
        QStringList { "ignored unknown-word coordinates" });
    EXPECT_EQ(told("Texture \"t\" \"color\" \"lampspectrum\" \"string name\" [\"Lamp\"]"),
        QStringList { "surprising unknown-word name" });
    EXPECT_EQ(told("Texture \"t\" \"fresnel\" \"preset\" \"string name\" [\"iron\"]"),
        QStringList { "surprising unknown-word name" });
    EXPECT_EQ(told("Texture \"t\" \"float\" \"brick\" \"string brickbond\" [\"running\"]"),
        QStringList());
}

TEST(TextCheck, namesInAWholeText)
{
    const QByteArray matte = "\"string type\" [\"matte\"] \"texture Kd\" [\"c\"]";
    EXPECT_EQ(told("MakeNamedMaterial \"m\" " + matte), QStringList());
    EXPECT_EQ(told("MakeNamedMaterial \"m\" " + matte, true),
        QStringList { "ignored unknown-texture Kd" });
    EXPECT_EQ(told("Texture \"c\" \"color\" \"constant\" MakeNamedMaterial \"m\" " + matte, true),
        QStringList());
    EXPECT_EQ(told("Texture \"c\" \"float\" \"constant\" MakeNamedMaterial \"m\" " + matte),
        QStringList { "ignored other-texture Kd" });
    EXPECT_EQ(told("NamedMaterial \"m\" Interior \"v\" Exterior \"\"", true),
        (QStringList { "refused unknown-material", "ignored unknown-volume" }));
    EXPECT_EQ(told("WorldBegin NamedMaterial \"m\""), QStringList { "refused unknown-material" });
    EXPECT_EQ(told(material("\"string type\" \"mix\" \"float amount\" 1 \"string namedmaterial1\" "
                            "\"a\" \"string namedmaterial2\" \"b\""),
                  true),
        (QStringList { ".ignored not-read-refused amount",
            "refused unknown-material namedmaterial1",
            "refused unknown-material namedmaterial2" }));
    EXPECT_EQ(told(material("\"string type\" \"layered\" \"string namedmaterial1\" \"a\""), true),
        (QStringList {
            ".surprising unstable-layers type", "ignored unknown-layer namedmaterial1" }));
}

TEST(TextCheck, namesOfABlockEndWithIt)
{
    EXPECT_EQ(told("WorldBegin AttributeBegin MakeNamedMaterial \"m\" \"string type\" \"null\" "
                   "NamedMaterial \"m\" AttributeEnd NamedMaterial \"m\""),
        QStringList { "refused unknown-material" });
    EXPECT_EQ(
        told("WorldBegin MakeNamedMaterial \"m\" \"string type\" \"null\" AttributeBegin "
             "MakeNamedMaterial \"m\" \"string type\" \"null\" AttributeEnd NamedMaterial \"m\" "
             "AttributeEnd"),
        QStringList());
    EXPECT_EQ(told("MakeNamedMaterial \"m\" \"string type\" \"null\" MakeNamedMaterial \"m\" "
                   "\"string type\" \"null\""),
        QStringList { "surprising defined-twice" });
    // The spaces of textures are apart.
    EXPECT_EQ(told("Texture \"t\" \"float\" \"constant\" Texture \"t\" \"color\" \"constant\""),
        QStringList());
}

TEST(TextCheck, texturesBeforeTheWorld)
{
    EXPECT_EQ(told("Texture \"t\" \"float\" \"constant\" WorldBegin"),
        QStringList { "refused texture-too-early" });
    EXPECT_EQ(told("WorldBegin Texture \"t\" \"float\" \"constant\""), QStringList());
}

TEST(TextCheck, tooManyLines)
{
    const QByteArray begin = "Film \"fleximage\"";
    EXPECT_EQ(told(begin + QByteArray(" \"float x\" 1").repeated(390)), QStringList());
    EXPECT_EQ(told(begin + QByteArray(" \"float x\" 1").repeated(391)),
        QStringList { "crash too-many-lines" });
}

TEST(TextCheck, longChains)
{
    const auto chain = [](int length) {
        QByteArray text = "Texture \"0\" \"float\" \"constant\"\n";
        for (int i = 1; i < length; ++i)
            text += "Texture \"" + QByteArray::number(i)
                + "\" \"float\" \"scale\" \"texture tex1\" \"" + QByteArray::number(i - 1) + "\"\n";
        return told(text);
    };
    EXPECT_EQ(chain(30000), QStringList());
    EXPECT_EQ(chain(30001), QStringList { "surprising long-chain" });
    EXPECT_EQ(chain(400000), (QStringList { "surprising long-chain", "crash deadly-chain" }));
}

TEST(TextCheck, valuesThatSurprise)
{
    const QByteArray glass = "MakeNamedMaterial \"m\" \"string type\" \"glass\" ";
    EXPECT_EQ(told(glass + "\"float index\" 0"), QStringList { "surprising mirror-glass index" });
    EXPECT_EQ(told(glass + "\"float index\" 1.5"), QStringList());
    // A texture's name may look like a number.
    EXPECT_EQ(told(glass + "\"texture index\" \"0\""), QStringList());
    EXPECT_EQ(told(glass + "\"float film\" 300 \"float filmindex\" 0"),
        (QStringList { "surprising film-index filmindex", ".surprising other-start filmindex" }));
    EXPECT_EQ(told("Texture \"t\" \"float\" \"fbm\" \"vector scale\" [1 0 0]"),
        QStringList { "surprising collapsed-space scale" });
    EXPECT_EQ(told("Texture \"t\" \"fresnel\" \"cauchy\" \"float cauchyb\" -1"),
        QStringList { "surprising falling-index cauchyb" });
    EXPECT_EQ(told("Texture \"d\" \"float\" \"constant\" Shape \"mesh\" \"string displacementmap\" "
                   "\"d\" \"integer nsubdivlevels\" 0"),
        (QStringList { "surprising flat-displacement displacementmap",
            ".surprising old-displacement displacementmap" }));
    EXPECT_EQ(
        told("Texture \"d\" \"float\" \"constant\" Shape \"mesh\" \"texture displacementmap\" "
             "\"d\" \"integer nsubdivlevels\" 2"),
        QStringList());
}

TEST(TextCheck, backslashesThatAreSwallowed)
{
    const QByteArray image = "Texture \"t\" \"color\" \"imagemap\" \"string filename\" ";
    const std::vector<Finding> findings = check(image + R"("C:\temp\new.png")");
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings.at(0).rule, QStringLiteral("swallowed-backslash"));
    EXPECT_TRUE(findings.at(0).sentence.contains(QStringLiteral("C:\temp\new.png")));
    ASSERT_EQ(findings.at(0).remedies.size(), 1);
    EXPECT_EQ(findings.at(0).remedies.at(0).action, Remedy::UseSlashes);
    EXPECT_EQ(findings.at(0).remedies.at(0).parameter, QStringLiteral("filename"));
    EXPECT_EQ(told(image + R"("C:\\temp\\new.png")"), QStringList());
    EXPECT_EQ(told(image + R"("C:/temp/new.png")"), QStringList());
}

TEST(TextCheck, imageFilesThatAreNotThere)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("there.png"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    CheckOptions options;
    options.imageFolder = folder.path();
    const QByteArray image = "Texture \"t\" \"color\" \"imagemap\" \"string filename\" ";
    EXPECT_TRUE(check(image + "\"there.png\"", options).empty());
    const std::vector<Finding> findings = check(image + "\"gone.png\"", options);
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings.at(0).rule, QStringLiteral("missing-file"));
    EXPECT_EQ(findings.at(0).value, QStringLiteral("gone.png"));
}

TEST(TextCheck, errorsOfTheTextAreFindings)
{
    const std::vector<Finding> findings
        = check("MakeNamedMaterial \"m\"\n\t\"float sigma\" [nan]\n\t\"float sigma\" [0,5]\nFilm");
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings.at(0).severity, Severity::Refused);
    EXPECT_EQ(findings.at(0).place.line, 2);
    EXPECT_EQ(findings.at(0).place.column, 17);
    EXPECT_EQ(told("Film \"f\" \"float x\" [0,5]"), QStringList { "surprising misread" });
}

TEST(TextCheck, manyFindingsOfARuleAreCounted)
{
    const std::vector<Finding> findings
        = check(QByteArray("Material \"matte\" \"float Kr\" 1\n").repeated(3000));
    ASSERT_EQ(findings.size(), 1001u);
    EXPECT_FALSE(findings.at(999).sentence.contains(QStringLiteral("more")));
    EXPECT_TRUE(findings.at(1000).sentence.contains(QStringLiteral("(1999 more like this.)")));
    EXPECT_EQ(findings.at(1000).place.line, 1001);
    EXPECT_EQ(
        check(QByteArray("Material \"matte\" \"float Kr\" 1\n").repeated(1000)).size(), 1000u);
}

TEST(TextCheck, anyTextIsChecked)
{
    std::mt19937 random(5);
    CheckOptions options;
    options.tellsPortability = true;
    options.imageFolder = QStringLiteral("/nowhere");
    for (int i = 0; i < 10000; ++i) {
        const QByteArray text = randomScene(&random);
        options.isWhole = i % 2 == 0;
        for (const Finding& finding : check(text, options)) {
            ASSERT_LE(finding.span.begin, finding.span.end) << text.constData();
            ASSERT_LE(finding.span.end, static_cast<std::uint32_t>(text.size()));
            ASSERT_FALSE(finding.sentence.isEmpty()) << finding.rule.toStdString();
            ASSERT_FALSE(finding.sentence.contains('{')) << finding.sentence.toStdString();
            ASSERT_FALSE(finding.source.isEmpty());
        }
    }
}

TEST(TextCheck, portabilityIsToldWhenAsked)
{
    const QByteArray text = "Texture \"t\" \"float\" \"dots\" \"string mapping\" \"spherical\"";
    EXPECT_TRUE(check(text).empty());
    CheckOptions options;
    options.tellsPortability = true;
    const std::vector<Finding> findings = check(text, options);
    ASSERT_EQ(findings.size(), 2u);
    for (const Finding& finding : findings) {
        EXPECT_EQ(finding.severity, Severity::Portability);
        EXPECT_TRUE(finding.source.startsWith(QStringLiteral("LuxCore")));
    }
}

TEST(TextCheck, findingsStandInTheTextsOrder)
{
    std::uint32_t last = 0;
    for (const Finding& finding :
        check("Texture \"t\" \"float\" \"band\" \"float x\" nan Texture "
              "\"u\" \"float\" \"fbm\" \"vector scale\" [0 0 0] \"float y\" 1")) {
        EXPECT_LE(last, finding.span.begin);
        last = finding.span.begin;
    }
}

TEST(RendererFacts, everyRowIsWhole)
{
    for (const RendererFacts* facts :
        { &RendererFacts::renderer(), &RendererFacts::portability() }) {
        for (const std::string& name : RendererFacts::renderer().typeNames()) {
            const std::size_t blank
                = name.find("texture ") == name.npos ? name.find(' ') : name.find("texture ") + 7;
            const TypeFacts& type = facts->type(name.substr(0, blank), name.substr(blank + 1));
            for (const ValueFact* fact : type.values) {
                EXPECT_FALSE(fact->text.says.isEmpty()) << name;
                EXPECT_TRUE(fact->text.says.endsWith('.')) << fact->text.says.toStdString();
                EXPECT_FALSE(fact->text.advice.isEmpty()) << fact->text.says.toStdString();
                EXPECT_FALSE(fact->text.rule.isEmpty());
            }
            for (const NeedFact* fact : type.needs)
                EXPECT_TRUE(fact->text.says.endsWith('.')) << fact->text.says.toStdString();
            for (const UnreadFact* fact : type.unread) {
                EXPECT_TRUE(fact->text.says.endsWith('.')) << fact->text.says.toStdString();
                EXPECT_NE(fact->type, ParameterType::Unknown);
            }
            for (const ParameterFact& parameter : type.parameters)
                for (const Form& form : parameter.forms)
                    EXPECT_TRUE(form.words.empty() || !facts->words(form.words).empty());
        }
    }
    EXPECT_EQ(RendererFacts::renderer().name(), QStringLiteral("LuxRender 1.9"));
}
