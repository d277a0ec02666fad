// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MaterialTranslation.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

namespace lux {

namespace {

constexpr double radians = 3.14159265358979323846 / 180;

QString tr(const char* text)
{
    return QCoreApplication::translate("LuxCore", text);
}

/// A material statement that is being translated.
struct Source {
    Source(const Statement& materialStatement, Translation* into, MaterialNames* known)
        : statement(materialStatement)
        , translation(into)
        , names(known)
        , inputs(materialStatement, into->textures)
    {
    }

    PropertyText::Thing make(const QByteArray& name, const char* kind) const
    {
        return translation->properties.thing("materials", name, kind);
    }
    QByteArray newName() const { return translation->newName(); }
    void note(const QString& text) const { translation->note(statement, text); }
    /// The material that a parameter names; empty without one that exists.
    QByteArray material(const char* name) const
    {
        const auto found = names->materials.find(inputs.string(name, ""));
        return found == names->materials.end() ? QByteArray() : found->second;
    }
    /// A texture times a constant.
    Term scaled(const Term& term, double factor) const
    {
        if (term.isConstant)
            return Term(
                Rgb { { term.color[0] * factor, term.color[1] * factor, term.color[2] * factor } });
        const QByteArray name = newName();
        translation->properties.thing("textures", name, "scale")
            .set("texture1", term.text)
            .set("texture2", factor);
        return Term::named(name);
    }

    Statement statement;
    Translation* translation;
    MaterialNames* names;
    Inputs inputs;
};

/// A parameter that goes over as it is.
struct Pass {
    const char* name;
    const char* key;
    bool isColor;
    double value; ///< where neither value nor texture is given
};

void pass(const Source& source, const std::vector<Pass>& rows, PropertyText::Thing* material)
{
    for (const Pass& row : rows)
        material->set(row.key,
            row.isColor ? source.inputs.colorTerm(row.name, row.value).text
                        : source.inputs.floatTerm(row.name, row.value).text);
}

const char* boolean(bool value)
{
    return value ? "1" : "0";
}

QByteArray defaultMaterial(const Source& source)
{
    const QByteArray name = source.newName();
    source.make(name, "matte").set("kd", Term(0.9).text);
    return name;
}

QByteArray roughMatte(const Source& source, const Term& kd, const Term& sigma)
{
    const QByteArray name = source.newName();
    if (sigma.is(0))
        source.make(name, "matte").set("kd", kd.text);
    else // LuxRender takes degrees, LuxCore radians.
        source.make(name, "roughmatte")
            .set("kd", kd.text)
            .set("sigma", source.scaled(sigma, radians).text);
    return name;
}

QByteArray matte(const Source& source)
{
    return roughMatte(
        source, source.inputs.colorTerm("Kd", 0.9), source.inputs.floatTerm("sigma", 0));
}

/// LuxCore always takes from what passes what is reflected; LuxRender only where it is told to.
void keptEnergy(const Term& kr, const Term& kt, bool conserves, Rgb* reflected, Rgb* passed)
{
    for (std::size_t i = 0; i < 3; ++i) {
        double r = std::max(0.0, kr.color[i]);
        double t = std::max(0.0, kt.color[i]);
        if (!conserves && r + t > 1) {
            const double sum = r + t;
            r /= sum;
            t /= sum;
        }
        (*reflected)[i] = r;
        (*passed)[i] = conserves ? t : r < 1 ? std::min(1.0, t / (1 - r)) : 0;
    }
}

QByteArray matteTranslucent(const Source& source)
{
    Term kr = source.inputs.colorTerm("Kr", 1);
    Term kt = source.inputs.colorTerm("Kt", 1);
    const bool conserves = source.inputs.flag("energyconserving", false);
    if (kr.isConstant && kt.isConstant) {
        Rgb reflected, passed;
        keptEnergy(kr, kt, conserves, &reflected, &passed);
        kr = Term(reflected);
        kt = Term(passed);
    } else if (!conserves) {
        source.note(tr("what passes through it is drawn less bright than it is, by what it "
                       "reflects"));
    }
    const Term sigma = source.inputs.floatTerm("sigma", 0);
    const QByteArray name = source.newName();
    PropertyText::Thing material
        = source.make(name, sigma.is(0) ? "mattetranslucent" : "roughmattetranslucent");
    material.set("kr", kr.text).set("kt", kt.text);
    if (!sigma.is(0))
        material.set("sigma", source.scaled(sigma, radians).text);
    return name;
}

QByteArray mirrorOf(const Source& source)
{
    const QByteArray name = source.newName();
    source.make(name, "mirror").set("kr", source.inputs.colorTerm("Kr", 1).text);
    return name;
}

QByteArray mirror(const Source& source)
{
    if (!source.inputs.floatTerm("film", 0).is(0))
        source.note(tr("its film is not drawn: LuxCore's mirror has none"));
    return mirrorOf(source);
}

QByteArray glass(const Source& source)
{
    const Term index = source.inputs.floatTerm("index", 1.5);
    // Nothing passes into an index of 0: what is left is a mirror.
    if (index.is(0))
        return mirrorOf(source);
    const QByteArray name = source.newName();
    PropertyText::Thing material
        = source.make(name, source.inputs.flag("architectural", false) ? "archglass" : "glass");
    pass(source, { { "Kr", "kr", true, 1 }, { "Kt", "kt", true, 1 } }, &material);
    material.set("interiorior", index.text).set("exteriorior", 1);
    const Term cauchyb = source.inputs.floatTerm("cauchyb", 0);
    if (!cauchyb.is(0))
        material.set("cauchyb", cauchyb.text);
    const Term film = source.inputs.floatTerm("film", 0);
    if (!film.is(0))
        material.set("filmthickness", film.text)
            .set("filmior", source.inputs.floatTerm("filmindex", 1.5).text);
    return name;
}

/// Its index is that of the volumes on both sides.
QByteArray glass2(const Source& source)
{
    const QByteArray name = source.newName();
    source.make(name, source.inputs.flag("architectural", false) ? "archglass" : "glass")
        .set("kr", 1)
        .set("kt", 1);
    source.names->disperses[name] = source.inputs.flag("dispersion", false);
    return name;
}

QByteArray roughGlass(const Source& source)
{
    if (source.inputs.flag("dispersion", false) && !source.inputs.floatTerm("cauchyb", 0).is(0))
        source.note(tr("its dispersion is not drawn: LuxCore's rough glass has none"));
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, "roughglass");
    pass(source,
        { { "Kr", "kr", true, 1 }, { "Kt", "kt", true, 1 },
            { "uroughness", "uroughness", false, 0.001 },
            { "vroughness", "vroughness", false, 0.001 }, { "index", "interiorior", false, 1.5 } },
        &material);
    material.set("exteriorior", 1);
    return name;
}

/// The coat of glossy materials, without the colour below.
void coat(const Source& source, PropertyText::Thing* material)
{
    pass(source,
        { { "Ks", "ks", true, 1 }, { "uroughness", "uroughness", false, 0.1 },
            { "vroughness", "vroughness", false, 0.1 }, { "Ka", "ka", true, 0 },
            { "d", "d", false, 0 }, { "index", "index", false, 0 } },
        material);
    material->set("multibounce", boolean(source.inputs.flag("multibounce", false)));
}

QByteArray glossy(const Source& source)
{
    const Term kd = source.inputs.colorTerm("Kd", 1);
    const Term sigma = source.inputs.floatTerm("sigma", 0);
    const QByteArray base = sigma.is(0) ? QByteArray() : roughMatte(source, kd, sigma);
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, base.isEmpty() ? "glossy2" : "glossycoating");
    if (base.isEmpty())
        material.set("kd", kd.text);
    else
        material.set("base", base);
    coat(source, &material);
    return name;
}

QByteArray glossyCoating(const Source& source)
{
    const QByteArray base = source.material("basematerial");
    if (base.isEmpty()) {
        source.note(tr("it has no base material: LuxRender refuses it and draws plain matte"));
        return defaultMaterial(source);
    }
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, "glossycoating");
    material.set("base", base);
    coat(source, &material);
    return name;
}

QByteArray glossyTranslucent(const Source& source)
{
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, "glossytranslucent");
    pass(source, { { "Kd", "kd", true, 1 }, { "Kt", "kt", true, 1 } }, &material);
    coat(source, &material);
    const std::vector<Pass> same
        = { { "Ks", "ks_bf", true, 1 }, { "uroughness", "uroughness_bf", false, 0.1 },
              { "vroughness", "vroughness_bf", false, 0.1 }, { "Ka", "ka_bf", true, 0 },
              { "d", "d_bf", false, 0 }, { "index", "index_bf", false, 0 } };
    const std::vector<Pass> own = { { "backface_Ks", "ks_bf", true, 0 },
        { "backface_uroughness", "uroughness_bf", false, 0 },
        { "backface_vroughness", "vroughness_bf", false, 0 }, { "backface_Ka", "ka_bf", true, 0 },
        { "backface_d", "d_bf", false, 0 }, { "backface_index", "index_bf", false, 0 } };
    const bool isOneSided = source.inputs.flag("onesided", true);
    pass(source, isOneSided ? same : own, &material);
    material.set("multibounce_bf",
        boolean(source.inputs.flag(isOneSided ? "multibounce" : "backface_multibounce", false)));
    return name;
}

QByteArray velvet(const Source& source)
{
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, "velvet");
    pass(source,
        { { "Kd", "kd", true, 0.3 }, { "p1", "p1", false, -2 }, { "p2", "p2", false, 20 },
            { "p3", "p3", false, 2 }, { "thickness", "thickness", false, 0.1 } },
        &material);
    return name;
}

QByteArray cloth(const Source& source)
{
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, "cloth");
    material.set("preset",
        propertyString(QByteArray::fromStdString(source.inputs.string("presetname", "denim"))));
    pass(source,
        { { "warp_Kd", "warp_kd", true, 0 }, { "warp_Ks", "warp_ks", true, 0 },
            { "weft_Kd", "weft_kd", true, 0 }, { "weft_Ks", "weft_ks", true, 0 } },
        &material);
    material.set("repeat_u", source.inputs.number("repeat_u", 100))
        .set("repeat_v", source.inputs.number("repeat_v", 100));
    return name;
}

QByteArray carPaint(const Source& source)
{
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, "carpaint");
    pass(source, { { "Ka", "ka", true, 0 }, { "d", "d", false, 0 } }, &material);
    const std::string preset = source.inputs.string("name", "");
    if (!preset.empty()) {
        material.set("preset", propertyString(QByteArray::fromStdString(preset)));
        return name;
    }
    // What is not given is Ford's F8 as it was measured, the renderer's default.
    const struct {
        const char* name;
        const char* key;
        Rgb value;
    } colors[] = { { "Kd", "kd", { { 0.0012, 0.0015, 0.0018 } } },
        { "Ks1", "ks1", { { 0.0049, 0.0076, 0.0120 } } },
        { "Ks2", "ks2", { { 0.0100, 0.0130, 0.0180 } } },
        { "Ks3", "ks3", { { 0.0070, 0.0065, 0.0077 } } } };
    for (const auto& row : colors)
        material.set(row.key, source.inputs.colorTerm(row.name, row.value).text);
    pass(source,
        { { "R1", "r1", false, 0.15 }, { "R2", "r2", false, 0.087 }, { "R3", "r3", false, 0.9 },
            { "M1", "m1", false, 0.32 }, { "M2", "m2", false, 0.11 },
            { "M3", "m3", false, 0.013 } },
        &material);
    return name;
}

QByteArray metal2Of(const Source& source, const FresnelTerm& fresnel)
{
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, "metal2");
    pass(source,
        { { "uroughness", "uroughness", false, 0.1 }, { "vroughness", "vroughness", false, 0.1 } },
        &material);
    if (fresnel.name.isEmpty())
        material.set("n", fresnel.n.text).set("k", fresnel.k.text);
    else
        material.set("fresnel", fresnel.name);
    return name;
}

QByteArray metal2(const Source& source)
{
    return metal2Of(source, source.inputs.fresnelTerm("fresnel", 5));
}

QByteArray metal(const Source& source)
{
    const QByteArray fresnel = source.newName();
    source.translation->properties.thing("textures", fresnel, "fresnelpreset")
        .set("name",
            propertyString(QByteArray::fromStdString(source.inputs.string("name", "aluminium"))));
    FresnelTerm term;
    term.name = fresnel;
    return metal2Of(source, term);
}

QByteArray shinyMetal(const Source& source)
{
    const Term kr = source.inputs.colorTerm("Kr", 1);
    const QByteArray n = source.newName();
    source.translation->properties.thing("textures", n, "fresnelapproxn").set("texture", kr.text);
    const QByteArray k = source.newName();
    source.translation->properties.thing("textures", k, "fresnelapproxk").set("texture", kr.text);
    const QByteArray base = source.newName();
    source.make(base, "metal2")
        .set("n", n)
        .set("k", k)
        .set("uroughness", 0.001)
        .set("vroughness", 0.001);
    const QByteArray name = source.newName();
    PropertyText::Thing material = source.make(name, "glossycoating");
    material.set("base", base);
    pass(source,
        { { "Ks", "ks", true, 1 }, { "uroughness", "uroughness", false, 0.1 },
            { "vroughness", "vroughness", false, 0.1 } },
        &material);
    source.note(tr("its two layers share the light, which LuxRender adds"));
    return name;
}

QByteArray mixOf(
    const Source& source, const QByteArray& first, const QByteArray& second, const Term& amount)
{
    const QByteArray name = source.newName();
    source.make(name, "mix")
        .set("material1", first)
        .set("material2", second)
        .set("amount", amount.text);
    return name;
}

QByteArray mix(const Source& source)
{
    const QByteArray first = source.material("namedmaterial1");
    const QByteArray second = source.material("namedmaterial2");
    if (first.isEmpty() || second.isEmpty()) {
        source.note(tr("it lacks a material to mix: LuxRender refuses it and draws plain matte"));
        return defaultMaterial(source);
    }
    return mixOf(source, first, second, source.inputs.floatTerm("amount", 0.5));
}

QByteArray layered(const Source& source)
{
    const struct {
        const char* material;
        const char* opacity;
    } layers[] = { { "namedmaterial4", "opacity4" }, { "namedmaterial3", "opacity3" },
        { "namedmaterial2", "opacity2" }, { "namedmaterial1", "opacity1" } };
    QByteArray result;
    for (const auto& layer : layers) {
        const QByteArray material = source.material(layer.material);
        if (material.isEmpty())
            continue;
        const Term opacity = source.inputs.floatTerm(layer.opacity, 1);
        if (result.isEmpty() || opacity.is(1))
            result = material;
        else
            result = mixOf(source, result, material, opacity);
    }
    if (result.isEmpty()) {
        source.note(tr("it has no layer: it is drawn plain matte"));
        return defaultMaterial(source);
    }
    source.note(tr("its layers are mixed by opacity; light that passes through one to the next is "
                   "not drawn"));
    return result;
}

QByteArray doubleSide(const Source& source)
{
    const QByteArray front = source.material("frontnamedmaterial");
    const QByteArray back = source.material("backnamedmaterial");
    if (front.isEmpty() || back.isEmpty()) {
        source.note(tr("it lacks a side: it is drawn plain matte"));
        return defaultMaterial(source);
    }
    const QByteArray name = source.newName();
    source.make(name, "twosided").set("frontmaterial", front).set("backmaterial", back);
    return name;
}

/// Light that enters a thin sheet of dust: what it keeps, and how much of that turns back.
QByteArray scatter(const Source& source)
{
    const Term kd = source.inputs.colorTerm("Kd", 0.9);
    const Rgb g = source.inputs.color("g", { { 0, 0, 0 } });
    // The phase function of Schlick, as LuxRender has it.
    const double mean = (g[0] + g[1] + g[2]) / 3;
    const double k = mean * (1.55 - 0.55 * mean * mean);
    const double back = std::max(0.0, std::min(1.0, (1 - k) / 2));
    Rgb reflected, passed;
    for (std::size_t i = 0; i < 3; ++i) {
        const double whole = kd.isConstant ? kd.color[i] : 0.9;
        reflected[i] = whole * back;
        passed[i] = reflected[i] < 1 ? whole * (1 - back) / (1 - reflected[i]) : 0;
    }
    source.note(kd.isConstant
            ? tr("it is drawn as a translucent sheet")
            : tr("it is drawn as a translucent sheet, and its texture as an even colour"));
    const QByteArray name = source.newName();
    source.make(name, "mattetranslucent")
        .set("kr", Term(reflected).text)
        .set("kt", Term(passed).text);
    return name;
}

QByteArray nothing(const Source& source)
{
    const QByteArray name = source.newName();
    source.make(name, "null");
    return name;
}

struct TypeRow {
    const char* word;
    QByteArray (*translate)(const Source&);
    bool readsBumpMap;
};
const TypeRow typeRows[] = {
    { "carpaint", carPaint, true },
    { "cloth", cloth, true },
    { "doubleside", doubleSide, false },
    { "glass", glass, true },
    { "glass2", glass2, true },
    { "glossy", glossy, true },
    { "glossy_lossy", glossy, true },
    { "glossycoating", glossyCoating, true },
    { "glossytranslucent", glossyTranslucent, true },
    { "layered", layered, false },
    { "matte", matte, true },
    { "mattetranslucent", matteTranslucent, true },
    { "metal", metal, true },
    { "metal2", metal2, true },
    { "mirror", mirror, true },
    { "mix", mix, false },
    { "null", nothing, false },
    { "plastic", glossy, true },
    { "roughglass", roughGlass, true },
    { "scatter", scatter, false },
    { "shinymetal", shinyMetal, true },
    { "substrate", glossy, true },
    { "velvet", velvet, true },
};

/// Bumps are heights in units of the world in both renderers.
void bump(const Source& source, const QByteArray& material)
{
    if (!source.inputs.hasTexture("bumpmap"))
        return;
    const Term term = source.inputs.floatTerm("bumpmap", 0);
    PropertyText::Thing thing(&source.translation->properties, "materials", material);
    if (!term.normalImage.isEmpty())
        thing.set("normaltex", term.normalImage);
    else if (!term.isConstant)
        thing.set("bumptex", term.text)
            .set("bumpsamplingdistance", source.inputs.number("bumpmapsampledistance", 0.001));
}

} // namespace

void translateVolume(const Statement& statement, Translation* translation, MaterialNames* names)
{
    const Inputs inputs(statement, translation->textures);
    const std::string word = statement.typeText();
    VolumeTerm volume;
    volume.fresnel = inputs.fresnelTerm("fresnel", 1.5);
    const bool isClear = word == "clear";
    if (!isClear && word != "homogeneous" && word != "heterogeneous") {
        translation->note(
            statement, tr("volumes have no type \"%1\"").arg(QString::fromStdString(word)));
        return;
    }
    volume.name = translation->newName();
    PropertyText::Thing thing
        = translation->properties.thing("volumes", volume.name, isClear ? "clear" : word.c_str());
    thing.set("ior", volume.fresnel.index);
    if (isClear) {
        thing.set("absorption", inputs.colorTerm("absorption", 0).text);
    } else {
        thing.set("absorption", inputs.colorTerm("sigma_a", 0).text)
            .set("scattering", inputs.colorTerm("sigma_s", 0).text)
            .set("asymmetry", Term(inputs.color("g", { { 0, 0, 0 } })).triple())
            .set("multiscattering", 1);
    }
    if (word == "heterogeneous") {
        // Enough steps for objects of the size of a room.
        thing.set("steps.size", std::max(1e-4, inputs.number("stepsize", 1)))
            .set("steps.maxcount", 1024);
    }
    names->volumes[statement.headText(0)] = volume;
}

QByteArray translateMaterial(
    const Statement& statement, Translation* translation, MaterialNames* names)
{
    const Source source(statement, translation, names);
    const std::string word = statement.typeText();
    for (const TypeRow& row : typeRows) {
        if (word != row.word)
            continue;
        const QByteArray material = row.translate(source);
        if (row.readsBumpMap)
            bump(source, material);
        return material;
    }
    if (!word.empty()) // LuxRender says nothing of an empty one.
        source.note(tr("materials have no type \"%1\": LuxRender draws plain matte")
                        .arg(QString::fromStdString(word)));
    return defaultMaterial(source);
}

} // namespace lux
