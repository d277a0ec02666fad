// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FresnelTranslation.h"
#include "Spectra.h"
#include "TextureMapping.h"
#include "Translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>

namespace lux {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("LuxCore", text);
}

/// A texture statement that is being translated.
struct Source {
    Source(const Statement& textureStatement, Translation* into, bool color)
        : statement(textureStatement)
        , translation(into)
        , inputs(textureStatement, into->textures)
        , isColor(color)
    {
    }

    /// A value or texture of the kind of this texture.
    Term term(const char* name, double fallback) const
    {
        return isColor ? inputs.colorTerm(name, fallback) : inputs.floatTerm(name, fallback);
    }
    PropertyText::Thing make(const QByteArray& name, const char* kind) const
    {
        return translation->properties.thing("textures", name, kind);
    }
    QByteArray newName() const { return translation->newName(); }
    void note(const char* text) const { translation->note(statement, tr(text)); }

    Statement statement;
    Translation* translation;
    Inputs inputs;
    bool isColor;
};

/// A parameter that goes over as it is, under LuxCore's name.
struct Pass {
    enum Kind { Number, Integer, Word };
    const char* name;
    const char* key;
    Kind kind;
    double number;
    const char* word;
};

Pass number(const char* name, const char* key, double fallback)
{
    return { name, key, Pass::Number, fallback, "" };
}

Pass integer(const char* name, const char* key, double fallback)
{
    return { name, key, Pass::Integer, fallback, "" };
}

Pass word(const char* name, const char* key, const char* fallback)
{
    return { name, key, Pass::Word, 0, fallback };
}

/// Words of the renderer that LuxCore spells otherwise.
const struct {
    const char* word;
    const char* spelling;
} spellings[] = {
    { "lin", "linear" },
    { "quad", "quadratic" },
    { "ease", "easing" },
    { "diag", "diagonal" },
    { "sphere", "spherical" },
    { "fbm", "fBM" },
    { "minkovsky", "minkowski" },
    { "minkovsky_half", "minkowski_half" },
    { "minkovsky_four", "minkowski_four" },
};

QByteArray spelling(const std::string& word)
{
    for (const auto& row : spellings)
        if (word == row.word)
            return row.spelling;
    return QByteArray::fromStdString(word);
}

void pass(const Inputs& inputs, const std::vector<Pass>& rows, PropertyText::Thing* texture)
{
    for (const Pass& row : rows) {
        if (row.kind == Pass::Number)
            texture->set(row.key, inputs.number(row.name, row.number));
        else if (row.kind == Pass::Integer)
            texture->set(row.key, inputs.integer(row.name, static_cast<int>(row.number)));
        else
            texture->set(row.key, propertyString(spelling(inputs.string(row.name, row.word))));
    }
}

/// The solid noises that are called alike in both renderers, with what they read beside their
/// placement.
struct SolidType {
    const char* word;
    std::vector<Pass> rows;
};
const std::vector<SolidType>& solidTypes()
{
    static const std::vector<SolidType> types = {
        { "fbm", { integer("octaves", "octaves", 8), number("roughness", "roughness", 0.5) } },
        { "wrinkled", { integer("octaves", "octaves", 8), number("roughness", "roughness", 0.5) } },
        { "windy", {} },
        { "marble",
            { integer("octaves", "octaves", 8), number("roughness", "roughness", 0.5),
                number("scale", "scale", 1), number("variation", "variation", 0.2) } },
        { "cloud",
            { number("radius", "radius", 0.5), number("noisescale", "noisescale", 0.5),
                number("turbulence", "turbulence", 0.01), number("sharpness", "sharpness", 6),
                number("noiseoffset", "noiseoffset", 0), integer("spheres", "spheres", 0),
                integer("octaves", "octaves", 1), number("omega", "omega", 0.75),
                number("variability", "variability", 0.9),
                number("baseflatness", "baseflatness", 0.8),
                number("spheresize", "spheresize", 0.15) } },
    };
    return types;
}

/// Blender's textures: a value between "tex1" and "tex2", after "bright" and "contrast".
const std::vector<SolidType>& blenderTypes()
{
    const Pass basis = word("noisebasis", "noisebasis", "blender_original");
    const Pass basis2 = word("noisebasis2", "noisebasis2", "sin");
    const Pass noise = word("noisetype", "noisetype", "soft_noise");
    const Pass size = number("noisesize", "noisesize", 0.25);
    const Pass depth = integer("noisedepth", "noisedepth", 2);
    const Pass turbulence = number("turbulence", "turbulence", 5);
    static const std::vector<SolidType> types = {
        { "blender_blend", { word("type", "progressiontype", "lin") } },
        { "blender_clouds", { noise, basis, size, depth } },
        { "blender_distortednoise",
            { word("type", "noise_distortion", "blender_original"), basis, size,
                number("distamount", "distortion", 1) } },
        { "blender_magic", { depth, turbulence } },
        { "blender_marble",
            { word("type", "marbletype", "soft"), noise, basis, basis2, size, depth, turbulence } },
        { "blender_musgrave",
            { word("type", "musgravetype", "multifractal"), basis, number("h", "dimension", 1),
                number("lacu", "lacunarity", 2), number("octs", "octaves", 2),
                number("gain", "gain", 1), number("offset", "offset", 1), size,
                number("outscale", "intensity", 1) } },
        { "blender_noise", { depth } },
        { "blender_stucci",
            { word("type", "stuccitype", "plastic"), noise, basis, size, turbulence } },
        { "blender_voronoi",
            { word("distmetric", "distmetric", "actual_distance"),
                number("minkovsky_exp", "exponent", 2.5), number("outscale", "intensity", 1), size,
                number("w1", "w1", 1), number("w2", "w2", 0), number("w3", "w3", 0),
                number("w4", "w4", 0) } },
        { "blender_wood",
            { word("type", "woodtype", "bands"), noise, basis, basis2, size, turbulence } },
    };
    return types;
}

const SolidType* findType(const std::vector<SolidType>& types, const std::string& word)
{
    for (const SolidType& type : types)
        if (word == type.word)
            return &type;
    return nullptr;
}

Term solid(const Source& source, const SolidType& type)
{
    const bool isNoise = QByteArray(type.word) != "marble";
    // The placement is inverted: all points fall together, where these noises are 0.
    if (isNoise && isCollapsed(source.inputs)) {
        source.note("its scale has a 0, which leaves nothing of the pattern: it is 0 everywhere");
        return Term(0.0);
    }
    const QByteArray name = source.newName();
    PropertyText::Thing texture = source.make(name, type.word);
    pass(source.inputs, type.rows, &texture);
    writeSolidMapping(source.statement, source.translation, &texture);
    return Term::named(name);
}

Term mixed(const Source& source, const QByteArray& amount, const Term& first, const Term& second)
{
    if (first.is(0) && second.is(1))
        return Term::named(amount);
    const QByteArray name = source.newName();
    source.make(name, "mix")
        .set("amount", amount)
        .set("texture1", first.text)
        .set("texture2", second.text);
    return Term::named(name);
}

Term blender(const Source& source, const SolidType& type)
{
    const QByteArray name = source.newName();
    PropertyText::Thing texture = source.make(name, type.word);
    pass(source.inputs, type.rows, &texture);
    if (QByteArray(type.word) == "blender_blend" && source.inputs.flag("flipxy", false))
        texture.set("direction", "vertical");
    texture.set("bright", source.inputs.number("bright", 1));
    texture.set("contrast", source.inputs.number("contrast", 1));
    writeSolidMapping(source.statement, source.translation, &texture);
    return mixed(source, name, source.term("tex1", 0), source.term("tex2", 1));
}

Term arithmetic(const Source& source, const char* kind)
{
    const QByteArray name = source.newName();
    source.make(name, kind)
        .set("texture1", source.term("tex1", 1).text)
        .set("texture2", source.term("tex2", 1).text);
    return Term::named(name);
}

Term mix(const Source& source)
{
    const QByteArray name = source.newName();
    source.make(name, "mix")
        .set("amount", source.inputs.floatTerm("amount", 0.5).text)
        .set("texture1", source.term("tex1", 0).text)
        .set("texture2", source.term("tex2", 1).text);
    return Term::named(name);
}

QByteArray numbered(const char* word, int number)
{
    return word + QByteArray::number(number);
}

Term band(const Source& source)
{
    const std::vector<double> offsets = source.inputs.numbers("offsets");
    std::vector<Term> terms;
    bool isConstant = true;
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        terms.push_back(source.term(numbered("tex", static_cast<int>(i) + 1).constData(), 0));
        isConstant = isConstant && terms.back().isConstant;
    }
    if (terms.empty()) {
        source.note("it has no offsets, which crashes LuxRender: it is drawn black");
        return Term(0.0);
    }
    const Term amount = source.inputs.floatTerm("amount", 0);
    if (isConstant && std::is_sorted(offsets.begin(), offsets.end()) && offsets.front() >= 0
        && offsets.back() <= 1) {
        const QByteArray name = source.newName();
        PropertyText::Thing texture = source.make(name, "band");
        texture.set("amount", amount.text).set("interpolation", "linear");
        for (std::size_t i = 0; i < terms.size(); ++i) {
            texture.set(numbered("offset", static_cast<int>(i)).constData(), offsets[i]);
            texture.set(numbered("value", static_cast<int>(i)).constData(), terms[i].triple());
        }
        return Term::named(name);
    }
    // LuxCore's band takes constants only: a chain of mixes between neighbours.
    Term result = terms[0];
    for (std::size_t i = 0; i + 1 < terms.size(); ++i) {
        const QByteArray share = source.newName();
        if (offsets[i + 1] > offsets[i]) {
            source.make(share, "remap")
                .set("value", amount.text)
                .set("sourcemin", offsets[i])
                .set("sourcemax", offsets[i + 1])
                .set("targetmin", 0.0)
                .set("targetmax", 1);
        } else {
            const QByteArray below = source.newName();
            source.make(below, "lessthan").set("texture1", amount.text).set("texture2", offsets[i]);
            source.make(share, "subtract").set("texture1", 1).set("texture2", below);
        }
        const QByteArray name = source.newName();
        source.make(name, "mix")
            .set("amount", share)
            .set("texture1", result.text)
            .set("texture2", terms[i + 1].text);
        result = Term::named(name);
    }
    return result;
}

Term multimix(const Source& source)
{
    const std::vector<double> weights = source.inputs.numbers("weights");
    if (weights.empty()) {
        source.note("it has no weights, which crashes LuxRender: it is drawn black");
        return Term(0.0);
    }
    Term sum;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const QByteArray part = source.newName();
        source.make(part, "scale")
            .set("texture1",
                source.term(numbered("tex", static_cast<int>(i) + 1).constData(), 0).text)
            .set("texture2", weights[i]);
        if (i == 0) {
            sum = Term::named(part);
            continue;
        }
        const QByteArray name = source.newName();
        source.make(name, "add").set("texture1", sum.text).set("texture2", part);
        sum = Term::named(name);
    }
    return sum;
}

Term checkerboard(const Source& source)
{
    const QByteArray name = source.newName();
    const bool isSolid = source.inputs.integer("dimension", 2) == 3;
    PropertyText::Thing texture = source.make(name, isSolid ? "checkerboard3d" : "checkerboard2d");
    texture.set("texture1", source.term("tex1", 1).text)
        .set("texture2", source.term("tex2", 0).text);
    if (isSolid) {
        writeSolidMapping(source.statement, source.translation, &texture);
        return Term::named(name);
    }
    const SurfaceMapping mapping(source.statement, source.translation->textures);
    mapping.write(&texture);
    return Term::named(mapping.wrapped(name, source.translation));
}

Term dots(const Source& source)
{
    const QByteArray name = source.newName();
    PropertyText::Thing texture = source.make(name, "dots");
    // LuxRender takes the two for each other.
    texture.set("inside", source.term("outside", 0).text)
        .set("outside", source.term("inside", 1).text);
    const SurfaceMapping mapping(source.statement, source.translation->textures);
    mapping.write(&texture);
    return Term::named(mapping.wrapped(name, source.translation));
}

Term uv(const Source& source)
{
    const QByteArray name = source.newName();
    PropertyText::Thing texture = source.make(name, "uv");
    const SurfaceMapping mapping(source.statement, source.translation->textures);
    mapping.write(&texture);
    return Term::named(mapping.wrapped(name, source.translation));
}

/// Corners take no textures. LuxCore asks for them at the mesh's coordinates.
Term bilerp(const Source& source)
{
    const SurfaceMapping mapping(source.statement, source.translation->textures);
    if (!mapping.isUv() || mapping.uscale() != 1 || mapping.vscale() != 1 || mapping.udelta() != 0
        || mapping.vdelta() != 0)
        source.note("its placement is drawn as the mesh's own coordinates");
    const QByteArray name = source.newName();
    PropertyText::Thing texture = source.make(name, "bilerp");
    const struct {
        const char* name;
        const char* key;
        double value;
    } corners[] = { { "v00", "texture00", 0 }, { "v01", "texture01", 1 }, { "v10", "texture10", 0 },
        { "v11", "texture11", 1 } };
    for (const auto& corner : corners) {
        const double value = corner.value;
        const Term term = source.isColor
            ? Term(source.inputs.color(corner.name, Rgb { { value, value, value } }))
            : Term(source.inputs.number(corner.name, value));
        texture.set(corner.key, term.text);
    }
    return Term::named(name);
}

/// One inside of the unit square of the placed coordinates. LuxCore's coordinates begin anew at
/// each whole number and cannot tell, so a ramp along each of them is asked.
Term uvmask(const Source& source)
{
    const SurfaceMapping mapping(source.statement, source.translation->textures);
    if (!mapping.isUv())
        source.note("its mapping is drawn as \"uv\"");
    // The ramp is (1 + x) / 2, from 0 to 1: x is moved so that the square is its middle.
    const auto inside = [&](double scale, double delta, int coordinate) {
        const QByteArray ramp = source.newName();
        Matrix matrix {};
        matrix[static_cast<std::size_t>(coordinate * 4)] = scale;
        matrix[12] = delta - 0.5;
        matrix[15] = 1;
        source.make(ramp, "blender_blend")
            .set("progressiontype", "linear")
            .set("mapping.type", "uvmapping3d")
            .set("mapping.transformation",
                propertyNumbers(std::vector<double>(matrix.begin(), matrix.end())));
        const QByteArray above = source.newName();
        source.make(above, "greaterthan").set("texture1", ramp).set("texture2", 0.25);
        const QByteArray below = source.newName();
        source.make(below, "lessthan").set("texture1", ramp).set("texture2", 0.75);
        const QByteArray both = source.newName();
        source.make(both, "scale").set("texture1", above).set("texture2", below);
        return both;
    };
    const QByteArray mask = source.newName();
    source.make(mask, "scale")
        .set("texture1", inside(mapping.uscale(), mapping.udelta(), 0))
        .set("texture2", inside(mapping.vscale(), mapping.vdelta(), 1));
    return mixed(source, mask, source.term("outertex", 0), source.term("innertex", 1));
}

/// Writes the image of a texture. Empty, after a note, when there is none to show.
QByteArray image(const Source& source, const QByteArray& name, double gamma)
{
    const QString file = QString::fromStdString(source.inputs.string("filename", ""));
    const QString path
        = file.isEmpty() ? QString() : QDir(source.translation->imageFolder).filePath(file);
    QString problem;
    if (file.isEmpty())
        problem = tr("it names no image and is drawn white");
    else if (!QFileInfo(path).isFile())
        problem = tr("its image %1 is missing, and it is drawn white").arg(file);
    else if (!isPropertyString(path.toUtf8()))
        problem = tr("LuxCore cannot read an image whose name has a quote in it (%1): it is drawn "
                     "white")
                      .arg(file);
    if (!problem.isEmpty()) {
        source.translation->note(source.statement, problem);
        return QByteArray();
    }
    PropertyText::Thing texture = source.make(name, "imagemap");
    const std::string wrap = source.inputs.string("wrap", "repeat");
    const bool isKnown = wrap == "black" || wrap == "white" || wrap == "clamp";
    texture.set("file", propertyString(QFileInfo(path).absoluteFilePath().toUtf8()))
        .set("gamma", gamma)
        .set("wrap", isKnown ? QByteArray::fromStdString(wrap) : QByteArray("repeat"))
        .set("filter",
            source.inputs.string("filtertype", "bilinear") == "nearest" ? "nearest" : "linear");
    const SurfaceMapping mapping(source.statement, source.translation->textures);
    mapping.write(&texture);
    return mapping.wrapped(name, source.translation);
}

Term imagemap(const Source& source)
{
    const double gamma = source.inputs.number("gamma", 1);
    const double gain = source.inputs.number("gain", 1);
    const QByteArray name = source.newName();
    const QByteArray used = image(source, name, gamma);
    // LuxRender multiplies before it takes the power, LuxCore after.
    const double factor = gain < 0 ? 0 : std::pow(gain, gamma);
    if (used.isEmpty())
        return Term(factor);
    PropertyText::Thing texture(&source.translation->properties, "textures", name);
    texture.set("gain", factor);
    if (source.isColor)
        texture.set("channel", "rgb");
    else
        texture.set("channel",
            propertyString(QByteArray::fromStdString(source.inputs.string("channel", "mean"))));
    return Term::named(used);
}

Term normalmap(const Source& source)
{
    const QByteArray name = source.newName();
    const QByteArray used = image(source, name, 1);
    Term term(0.0);
    term.normalImage = used;
    return term;
}

Term brick(const Source& source)
{
    const QByteArray tinted = source.newName();
    // LuxRender tints each brick with "brickmodtex", LuxCore blends to it by chance.
    source.make(tinted, "scale")
        .set("texture1", source.term("bricktex", 1).text)
        .set("texture2", source.term("brickmodtex", 1).text);
    const QByteArray name = source.newName();
    PropertyText::Thing texture = source.make(name, "brick");
    texture.set("bricktex", tinted)
        .set("brickmodtex", 1)
        .set("brickmodbias", -1)
        .set("mortartex", source.term("mortartex", 0.2).text);
    pass(source.inputs,
        { number("brickwidth", "brickwidth", 0.3), number("brickheight", "brickheight", 0.1),
            number("brickdepth", "brickdepth", 0.15), number("mortarsize", "mortarsize", 0.01),
            word("brickbond", "brickbond", "running"), number("brickrun", "brickrun", 0.75) },
        &texture);
    writeSolidMapping(source.statement, source.translation, &texture);
    return Term::named(name);
}

Term colordepth(const Source& source)
{
    const QByteArray name = source.newName();
    source.make(name, "colordepth")
        .set("kt", source.inputs.colorTerm("Kt", 0).text)
        .set("depth", std::max(0.001, source.inputs.number("depth", 1)));
    return Term::named(name);
}

/// A reflectance that is given by wavelengths.
Term spectrum(const Source& source, const Spectrum& values)
{
    if (values.wavelengths.size() < 2) {
        source.note("it has fewer than two wavelengths and is left out");
        return Term(0.0);
    }
    const QByteArray name = source.newName();
    source.make(name, "irregulardata")
        .set("wavelengths", propertyNumbers(values.wavelengths))
        .set("data", propertyNumbers(values.values))
        .set("emission", 0.0);
    return Term::named(name);
}

Term lampspectrum(const Source& source)
{
    source.note("its brightness is approximate");
    const QByteArray lamp = source.newName();
    source.make(lamp, "lampspectrum")
        .set("name",
            propertyString(
                QByteArray::fromStdString(source.inputs.string("name", "Incandescent2"))));
    // LuxCore's lamps are about as bright as this.
    const double brightness = 4e4;
    const QByteArray name = source.newName();
    source.make(name, "scale").set("texture1", lamp).set("texture2", 1 / brightness);
    return Term::named(name);
}

/// LuxRender colours each triangle by where it lies in memory, which nobody can repeat.
Term harlequin(const Source& source)
{
    source.note("its colours are patches of noise, since LuxRender's change with every run");
    QByteArray channels[3];
    for (int i = 0; i < 3; ++i) {
        channels[i] = source.newName();
        PropertyText::Thing patches = source.make(channels[i], "blender_clouds");
        patches.set("noisebasis", "cell_noise").set("noisesize", 0.2).set("noisedepth", 0.0);
        Matrix matrix
            = textureMatrix({ { 7.1 * i, 3.3 * i, 5.7 * i } }, { { 0, 0, 0 } }, { { 1, 1, 1 } });
        patches.set("mapping.type", "globalmapping3d")
            .set("mapping.transformation",
                propertyNumbers(std::vector<double>(matrix.begin(), matrix.end())));
    }
    const QByteArray name = source.newName();
    source.make(name, "makefloat3")
        .set("texture1", channels[0])
        .set("texture2", channels[1])
        .set("texture3", channels[2]);
    return Term::named(name);
}

Term constant(const Source& source)
{
    return source.isColor ? Term(source.inputs.color("value", { { 1, 1, 1 } }))
                          : Term(source.inputs.number("value", 1));
}

Term hitpoint(const Source& source, const char* kind)
{
    const QByteArray name = source.newName();
    source.make(name, kind);
    return Term::named(name);
}

/// One row a type word. A type that only colours or only floats have is asked for by both: the
/// renderer's word for the other does not exist, and the caller has looked.
struct TypeRow {
    const char* word;
    bool ofFloats;
    bool ofColors;
    Term (*translate)(const Source&);
};
const TypeRow typeRows[] = {
    { "add", true, true, [](const Source& s) { return arithmetic(s, "add"); } },
    { "band", true, true, band },
    { "bilerp", true, true, bilerp },
    { "blackbody", false, true,
        [](const Source& s) {
            return spectrum(s, blackBodySpectrum(s.inputs.number("temperature", 6500)));
        } },
    { "brick", true, true, brick },
    { "checkerboard", true, false, checkerboard },
    { "colordepth", false, true, colordepth },
    { "constant", true, true, constant },
    { "dots", true, false, dots },
    { "equalenergy", false, true,
        [](const Source& s) { return Term(s.inputs.number("energy", 1)); } },
    { "frequency", false, true,
        [](const Source& s) {
            return spectrum(s,
                frequencySpectrum(s.inputs.number("freq", 0.03), s.inputs.number("phase", 0.5),
                    s.inputs.number("energy", 1)));
        } },
    { "gaussian", false, true,
        [](const Source& s) {
            return spectrum(s,
                gaussianSpectrum(s.inputs.number("wavelength", 550), s.inputs.number("width", 50),
                    s.inputs.number("energy", 1)));
        } },
    { "harlequin", false, true, harlequin },
    { "hitpointalpha", true, false, [](const Source& s) { return hitpoint(s, "hitpointalpha"); } },
    { "hitpointcolor", false, true, [](const Source& s) { return hitpoint(s, "hitpointcolor"); } },
    { "hitpointgrey", true, false, [](const Source& s) { return hitpoint(s, "hitpointgrey"); } },
    { "imagemap", true, true, imagemap },
    { "irregulardata", false, true,
        [](const Source& s) {
            return spectrum(
                s, irregularSpectrum(s.inputs.numbers("wavelengths"), s.inputs.numbers("data")));
        } },
    { "lampspectrum", false, true, lampspectrum },
    { "mix", true, true, mix },
    { "multimix", true, true, multimix },
    { "normalmap", true, false, normalmap },
    { "regulardata", false, true,
        [](const Source& s) {
            return spectrum(s,
                regularSpectrum(s.inputs.number("start", 380), s.inputs.number("end", 720),
                    s.inputs.numbers("data")));
        } },
    { "scale", true, true, [](const Source& s) { return arithmetic(s, "scale"); } },
    { "subtract", true, true, [](const Source& s) { return arithmetic(s, "subtract"); } },
    { "uv", false, true, uv },
    { "uvmask", true, false, uvmask },
};

/// The texture's value; false if LuxRender knows no such type.
bool translateValue(const Source& source, const std::string& word, Term* term)
{
    for (const TypeRow& row : typeRows) {
        if (word == row.word && (source.isColor ? row.ofColors : row.ofFloats)) {
            *term = row.translate(source);
            return true;
        }
    }
    const SolidType* type = findType(solidTypes(), word);
    if (type && (word == "marble") == source.isColor) {
        *term = solid(source, *type);
        return true;
    }
    type = findType(blenderTypes(), word);
    if (type && !source.isColor) {
        *term = blender(source, *type);
        return true;
    }
    return false;
}

} // namespace

void translateTexture(const Statement& statement, Translation* translation)
{
    const std::string name = statement.headText(0);
    const std::string kind = statement.headText(1);
    const std::string word = statement.typeText();
    bool isKnown = false;
    if (kind == "fresnel") {
        FresnelTerm term;
        isKnown = translateFresnel(statement, translation, &term);
        if (isKnown)
            translation->textures.fresnels[name] = term;
    } else if (kind == "float" || kind == "color") {
        const bool isColor = kind == "color";
        Term term;
        isKnown = translateValue(Source(statement, translation, isColor), word, &term);
        if (isKnown)
            (isColor ? translation->textures.colors : translation->textures.floats)[name] = term;
    }
    if (!isKnown)
        translation->note(statement,
            tr("%1 textures have no type \"%2\": what refers to it takes its own default")
                .arg(QString::fromStdString(kind), QString::fromStdString(word)));
}

} // namespace lux
