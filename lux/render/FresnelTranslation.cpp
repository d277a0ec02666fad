// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FresnelTranslation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cmath>

namespace lux {

namespace {

// Where red, green and blue are asked for, and the yellow line of sodium, in micrometres.
constexpr Rgb rgbWavelengths = { { 0.61, 0.55, 0.465 } };
constexpr double sodium = 0.5876;
// The ends of the visible in nanometres, from which LuxRender makes Cauchy's A of an index.
constexpr double firstWavelength = 380;
constexpr double lastWavelength = 720;

QString tr(const char* text)
{
    return QCoreApplication::translate("LuxCore", text);
}

/// Index and absorption of a metal for red, green and blue light; measured values as in the
/// collections of optical constants.
struct Metal {
    const char* name;
    Rgb n;
    Rgb k;
};
const Metal metals[] = {
    { "amorphous carbon", { { 2.90, 2.75, 2.50 } }, { { 0.83, 0.83, 0.80 } } },
    { "silver", { { 0.155, 0.117, 0.138 } }, { { 4.83, 3.12, 2.15 } } },
    { "gold", { { 0.143, 0.375, 1.44 } }, { { 3.98, 2.39, 1.60 } } },
    { "copper", { { 0.200, 0.924, 1.10 } }, { { 3.91, 2.45, 2.14 } } },
    { "aluminium", { { 1.35, 0.965, 0.617 } }, { { 7.47, 6.40, 5.30 } } },
};
const Metal& aluminium = metals[4];

/// A transparent material by A and B of n = A + B / λ², λ in micrometres.
FresnelTerm cauchyTerm(double a, double b)
{
    Rgb n;
    for (std::size_t i = 0; i < 3; ++i)
        n[i] = a + b / (rgbWavelengths[i] * rgbWavelengths[i]);
    FresnelTerm term;
    term.n = Term(n);
    term.k = Term(0.0);
    term.index = a + b / (sodium * sodium);
    term.cauchyB = b;
    return term;
}

FresnelTerm cauchy(const Inputs& inputs, Translation* translation)
{
    const double b = inputs.number("cauchyb", 0);
    const double index = inputs.number("index", -1);
    const double fromIndex = index - b * 1e6 / (firstWavelength * lastWavelength);
    const double a = inputs.number("cauchya", fromIndex);
    FresnelTerm term = cauchyTerm(a, b);
    term.name = translation->newName();
    translation->properties.thing("textures", term.name, "fresnelcauchy").set("a", a).set("b", b);
    return term;
}

FresnelTerm abbe(const Inputs& inputs)
{
    const double n = inputs.number("n", 1.5168);
    const double v = inputs.number("V", 64.17);
    // From the definition of V by the lines F (486.1 nm) and C (656.3 nm).
    const double b = v > 0 ? (n - 1) / v / (1 / (0.4861 * 0.4861) - 1 / (0.6563 * 0.6563)) : 0;
    return cauchyTerm(n - b / (sodium * sodium), b);
}

FresnelTerm sellmeier(const Inputs& inputs)
{
    const double a = inputs.number("A", 1);
    const std::vector<double> b = inputs.numbers("B");
    const std::vector<double> c = inputs.numbers("C");
    const auto index = [&](double wavelength) {
        double square = a;
        for (std::size_t i = 0; i < std::min(b.size(), c.size()); ++i) {
            const double rest = 1 - c[i] / (wavelength * wavelength);
            if (rest != 0)
                square += b[i] / rest;
        }
        return std::sqrt(std::max(0.0, square));
    };
    FresnelTerm term;
    term.n = Term(
        Rgb { { index(rgbWavelengths[0]), index(rgbWavelengths[1]), index(rgbWavelengths[2]) } });
    term.k = Term(0.0);
    term.index = index(sodium);
    return term;
}

FresnelTerm fresnelColor(const Inputs& inputs, Translation* translation)
{
    const Term kr = inputs.colorTerm("Kr", 0.5);
    PropertyText& properties = translation->properties;
    FresnelTerm term;
    term.name = translation->newName();
    properties.thing("textures", term.name, "fresnelcolor").set("kr", kr.text);
    const QByteArray n = translation->newName();
    properties.thing("textures", n, "fresnelapproxn").set("texture", kr.text);
    const QByteArray k = translation->newName();
    properties.thing("textures", k, "fresnelapproxk").set("texture", kr.text);
    term.n = Term::named(n);
    term.k = Term::named(k);
    return term;
}

FresnelTerm metal(const Metal& row, Translation* translation)
{
    FresnelTerm term;
    term.name = translation->newName();
    translation->properties.thing("textures", term.name, "fresnelpreset")
        .set("name", propertyString(row.name));
    term.n = Term(row.n);
    term.k = Term(row.k);
    term.index = row.n[1];
    return term;
}

const Metal* findMetal(const std::string& name)
{
    for (const Metal& row : metals)
        if (name == row.name)
            return &row;
    return nullptr;
}

FresnelTerm preset(const Statement& statement, const Inputs& inputs, Translation* translation)
{
    const std::string name = inputs.string("name", inputs.string("filename", "").c_str());
    const Metal* row = findMetal(name);
    if (!row)
        translation->note(statement,
            tr("LuxRender takes aluminium for \"%1\"").arg(QString::fromStdString(name)));
    return metal(row ? *row : aluminium, translation);
}

/// A file of measured values.
bool measured(const Statement& statement, const Inputs& inputs, const char* kind,
    Translation* translation, FresnelTerm* term)
{
    const QString file = QString::fromStdString(inputs.string("filename", ""));
    const QFileInfo path(QDir(translation->imageFolder).filePath(file));
    if (file.isEmpty() || !path.isFile() || !isPropertyString(path.absoluteFilePath().toUtf8())) {
        translation->note(statement,
            tr("its file \"%1\" cannot be read: what refers to it takes its own default")
                .arg(file));
        return false;
    }
    term->name = translation->newName();
    translation->properties.thing("textures", term->name, kind)
        .set("file", propertyString(path.absoluteFilePath().toUtf8()));
    term->n = Term(aluminium.n);
    term->k = Term(aluminium.k);
    return true;
}

bool named(
    const Statement& statement, const Inputs& inputs, Translation* translation, FresnelTerm* term)
{
    const std::string file = inputs.string("filename", "");
    if (!file.empty()) {
        const bool isSopra = file.size() > 4 && file.compare(file.size() - 4, 4, ".nk") != 0;
        return measured(
            statement, inputs, isSopra ? "fresnelsopra" : "fresnelluxpop", translation, term);
    }
    *term = preset(statement, inputs, translation);
    return true;
}

/// Index and absorption by the same formula.
Term combined(const Term& first, const Term& second, const Term& amount, Translation* translation)
{
    const QByteArray name = translation->newName();
    translation->properties.thing("textures", name, "mix")
        .set("amount", amount.text)
        .set("texture1", first.text)
        .set("texture2", second.text);
    return Term::named(name);
}

FresnelTerm mixOf(const FresnelTerm& first, const FresnelTerm& second, const Term& amount,
    Translation* translation)
{
    FresnelTerm term;
    term.n = combined(first.n, second.n, amount, translation);
    term.k = combined(first.k, second.k, amount, translation);
    const double share = amount.isConstant ? amount.color[0] : 0.5;
    term.index = first.index + share * (second.index - first.index);
    term.cauchyB = first.cauchyB + share * (second.cauchyB - first.cauchyB);
    return term;
}

Term bilerpOf(const Term corners[4], Translation* translation)
{
    const QByteArray name = translation->newName();
    translation->properties.thing("textures", name, "bilerp")
        .set("texture00", corners[0].text)
        .set("texture01", corners[1].text)
        .set("texture10", corners[2].text)
        .set("texture11", corners[3].text);
    return Term::named(name);
}

FresnelTerm bilerp(const Inputs& inputs, Translation* translation)
{
    const char* names[] = { "v00", "v01", "v10", "v11" };
    const double defaults[] = { 1, 1.5, 1, 1.5 };
    Term n[4], k[4];
    FresnelTerm term;
    term.index = 0;
    for (int i = 0; i < 4; ++i) {
        const FresnelTerm corner = inputs.fresnelTerm(names[i], defaults[i]);
        n[i] = corner.n;
        k[i] = corner.k;
        term.index += corner.index / 4;
    }
    term.n = bilerpOf(n, translation);
    term.k = bilerpOf(k, translation);
    return term;
}

std::vector<FresnelTerm> numberedTerms(const Inputs& inputs, std::size_t count)
{
    std::vector<FresnelTerm> terms;
    for (std::size_t i = 1; i <= count; ++i)
        terms.push_back(inputs.fresnelTerm(("tex" + std::to_string(i)).c_str(), 1));
    return terms;
}

/// Between stops the neighbours are mixed; LuxCore has nothing of the kind for fresnel textures.
bool band(const Inputs& inputs, Translation* translation, FresnelTerm* result)
{
    const std::vector<double> offsets = inputs.numbers("offsets");
    const std::vector<FresnelTerm> terms = numberedTerms(inputs, offsets.size());
    if (terms.empty())
        return false;
    const Term amount = inputs.floatTerm("amount", 0);
    *result = terms[0];
    for (std::size_t i = 0; i + 1 < terms.size(); ++i) {
        const QByteArray share = translation->newName();
        translation->properties.thing("textures", share, "remap")
            .set("value", amount.text)
            .set("sourcemin", offsets[i])
            .set("sourcemax", offsets[i + 1])
            .set("targetmin", 0.0)
            .set("targetmax", 1);
        *result = mixOf(*result, terms[i + 1], Term::named(share), translation);
    }
    return true;
}

Term weightedSum(
    const std::vector<Term>& terms, const std::vector<double>& weights, Translation* translation)
{
    Term sum;
    for (std::size_t i = 0; i < terms.size(); ++i) {
        const QByteArray part = translation->newName();
        translation->properties.thing("textures", part, "scale")
            .set("texture1", terms[i].text)
            .set("texture2", weights[i]);
        const QByteArray name = translation->newName();
        translation->properties.thing("textures", name, "add")
            .set("texture1", sum.text)
            .set("texture2", part);
        sum = Term::named(name);
    }
    return sum;
}

bool multimix(const Inputs& inputs, Translation* translation, FresnelTerm* result)
{
    const std::vector<double> weights = inputs.numbers("weights");
    const std::vector<FresnelTerm> terms = numberedTerms(inputs, weights.size());
    if (terms.empty())
        return false;
    std::vector<Term> n, k;
    *result = FresnelTerm();
    result->index = 0;
    for (std::size_t i = 0; i < terms.size(); ++i) {
        n.push_back(terms[i].n);
        k.push_back(terms[i].k);
        result->index += weights[i] * terms[i].index;
        result->cauchyB += weights[i] * terms[i].cauchyB;
    }
    result->n = weightedSum(n, weights, translation);
    result->k = weightedSum(k, weights, translation);
    return true;
}

} // namespace

bool translateFresnel(const Statement& statement, Translation* translation, FresnelTerm* term)
{
    const Inputs inputs(statement, translation->textures);
    const std::string word = statement.typeText();
    if (word == "constant")
        *term = FresnelTerm(inputs.number("value", 1));
    else if (word == "cauchy")
        *term = cauchy(inputs, translation);
    else if (word == "abbe")
        *term = abbe(inputs);
    else if (word == "sellmeier")
        *term = sellmeier(inputs);
    else if (word == "fresnelcolor")
        *term = fresnelColor(inputs, translation);
    else if (word == "preset")
        *term = preset(statement, inputs, translation);
    else if (word == "fresnelname")
        return named(statement, inputs, translation, term);
    else if (word == "luxpop")
        return measured(statement, inputs, "fresnelluxpop", translation, term);
    else if (word == "sopra")
        return measured(statement, inputs, "fresnelsopra", translation, term);
    else if (word == "mix")
        *term = mixOf(inputs.fresnelTerm("tex1", 1), inputs.fresnelTerm("tex2", 1.5),
            inputs.floatTerm("amount", 0.5), translation);
    else if (word == "bilerp")
        *term = bilerp(inputs, translation);
    else if (word == "band")
        return band(inputs, translation, term);
    else if (word == "multimix")
        return multimix(inputs, translation, term);
    else
        return false;
    return true;
}

} // namespace lux
