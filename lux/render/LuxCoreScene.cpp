// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LuxCoreScene.h"

#include "MaterialTranslation.h"
#include "Translation.h"

#include <QCoreApplication>

namespace lux {

namespace {

/// What a surface wears, as far as the text has said.
struct Surface {
    QByteArray material;
    std::string interior;
    std::string exterior;
};

class Translator
{
public:
    explicit Translator(const LuxCoreOptions& options)
    {
        m_translation.imageFolder = options.imageFolder;
        m_translation.prefix = options.prefix;
    }

    void add(const Statement& statement)
    {
        switch (statement.keyword()) {
        case Keyword::Texture:
            translateTexture(statement, &m_translation);
            break;
        case Keyword::MakeNamedVolume:
            translateVolume(statement, &m_translation, &m_names);
            break;
        case Keyword::MakeNamedMaterial:
            m_last = translateMaterial(statement, &m_translation, &m_names);
            m_names.materials[statement.headText(0)] = m_last;
            break;
        case Keyword::Material:
            m_surface.material = translateMaterial(statement, &m_translation, &m_names);
            break;
        case Keyword::NamedMaterial:
            useMaterial(statement);
            break;
        case Keyword::Interior:
            m_surface.interior = statement.headText(0);
            break;
        case Keyword::Exterior:
            m_surface.exterior = statement.headText(0);
            break;
        case Keyword::Shape:
        case Keyword::Loose:
            readMesh(statement);
            break;
        default:
            break; // Cameras, films, lights and transformations are not a material's.
        }
    }

    void readMesh(const Statement& statement)
    {
        const Inputs inputs(statement, m_translation.textures);
        m_mesh.subdivisions = inputs.integer("nsubdivlevels", m_mesh.subdivisions);
        m_mesh.displacementScale = inputs.number("dmscale", m_mesh.displacementScale);
        m_mesh.displacementOffset = inputs.number("dmoffset", m_mesh.displacementOffset);
        m_mesh.smoothsNormals = inputs.flag("dmnormalsmooth", m_mesh.smoothsNormals);
        // The string is the older form of the reference.
        const std::string name = inputs.string("displacementmap", "");
        const auto found = m_translation.textures.floats.find(name);
        Term term;
        if (inputs.hasTexture("displacementmap"))
            term = inputs.floatTerm("displacementmap", 0);
        else if (found != m_translation.textures.floats.end())
            term = found->second;
        if (!term.isConstant && term.text != "0")
            m_mesh.displacement = term.text;
    }

    LuxCoreMaterial finish()
    {
        LuxCoreMaterial result;
        result.name = m_surface.material.isEmpty() ? m_last : m_surface.material;
        if (!result.name.isEmpty())
            addVolumes(result.name);
        result.mesh = m_mesh;
        if (m_mesh.subdivisions > 0 && !m_mesh.displacement.isEmpty())
            m_translation.notes.append(QCoreApplication::translate("LuxCore",
                "its displacement is drawn smoother than LuxRender's, which cuts the mesh finer"));
        result.properties = m_translation.properties.text();
        result.notes = m_translation.notes;
        return result;
    }

private:
    void useMaterial(const Statement& statement)
    {
        const auto found = m_names.materials.find(statement.headText(0));
        if (found != m_names.materials.end())
            m_surface.material = found->second;
        else
            m_translation.note(statement,
                QCoreApplication::translate("LuxCore", "there is no material of this name"));
    }

    void addVolumes(const QByteArray& material)
    {
        PropertyText::Thing thing(&m_translation.properties, "materials", material);
        const auto interior = m_names.volumes.find(m_surface.interior);
        if (interior != m_names.volumes.end()) {
            thing.set("volume.interior", interior->second.name);
            const double b = interior->second.fresnel.cauchyB;
            const auto disperses = m_names.disperses.find(material);
            // LuxCore's volumes have one index: dispersion is the material's.
            if (b != 0 && disperses != m_names.disperses.end() && disperses->second)
                thing.set("cauchyb", b);
        }
        const auto exterior = m_names.volumes.find(m_surface.exterior);
        if (exterior != m_names.volumes.end())
            thing.set("volume.exterior", exterior->second.name);
    }

    Translation m_translation;
    MaterialNames m_names;
    Surface m_surface;
    QByteArray m_last;
    MeshSettings m_mesh;
};

} // namespace

QByteArray Translation::newName()
{
    return prefix + QByteArray::number(++m_names);
}

void Translation::note(const Statement& statement, const QString& text)
{
    const QString name = QString::fromStdString(statement.headText(0));
    const QString whole = name.isEmpty() ? text : name + QLatin1String(": ") + text;
    if (m_said.contains(whole))
        return;
    m_said.insert(whole);
    notes.append(whole);
}

LuxCoreMaterial luxCoreMaterial(const SceneText& text, const LuxCoreOptions& options)
{
    Translator translator(options);
    for (const SceneText::Step& step : text.steps())
        translator.add(text.statement(step));
    // The settings of a mesh may follow the text without a word of their own: then they are
    // parameters of its last statement.
    if (!text.steps().empty())
        translator.readMesh(text.statement(text.steps().back()));
    return translator.finish();
}

} // namespace lux
