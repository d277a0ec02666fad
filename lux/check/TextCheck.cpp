// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TextCheck.h"

#include "NameScopes.h"
#include "StatementCheck.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <map>
#include <optional>

namespace lux {

namespace {

QString plain(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// The string of a token with its backslashes taken for what they look like.
std::string seenContent(std::string_view token)
{
    std::string text;
    for (std::size_t i = 1; i + 1 < token.size(); ++i) {
        if (token[i] == '\\' && (token[i + 1] == '\\' || token[i + 1] == '"'))
            ++i;
        text += token[i];
    }
    return text;
}

class SceneCheck
{
public:
    SceneCheck(const SceneText& scene, const CheckOptions& options)
        : m_scene(scene)
        , m_options(options)
        , m_renderer(RendererFacts::renderer())
    {
    }

    std::vector<Finding> run()
    {
        for (int i = 0; i < m_scene.documentCount(); ++i)
            checkSyntax(i);
        findWorld();
        for (const SceneText::Step step : m_scene.steps())
            check(step);
        tellRest();
        putInOrder();
        return std::move(m_findings);
    }

private:
    /// The kind of thing that a statement makes.
    struct Kind {
        std::string family;
        std::string type;
        std::string name;
    };

    void checkSyntax(int document);
    void findWorld();
    void check(SceneText::Step step);
    void checkTexture();
    void checkThing(const Kind& kind);
    void checkTextureName(const StatementCheck::Line& line);
    bool checkMaterialName(const StatementCheck::Line& line, bool isNeeded);
    void checkFileName(const StatementCheck::Line& line);
    void checkBackslashes(const StatementCheck::Line& line);
    void checkChain(const Kind& kind, TextureSpace space);
    void use(NameScopes::Kind kind, const char* rule);
    void define(NameScopes::Kind kind, const std::string& name, int chain = 0);
    void tell(const FactText& text, const StatementCheck::Line* line, const Words& words);
    void add(const FactText& text, Span span, const Words& words);
    void tellRest();
    void putInOrder();
    bool isThere(const QString& file);

    const SceneText& m_scene;
    const CheckOptions& m_options;
    const RendererFacts& m_renderer;
    std::vector<Finding> m_findings;
    /// How often each rule applied, and its first finding that was not told.
    struct Tally {
        int count = 0;
        Finding untold;
    };
    std::map<QString, Tally> m_tallies;
    NameScopes m_names;
    QHash<QString, bool> m_files; // only asked, never walked
    bool m_isWhole = false;
    bool m_hasWorld = false;
    bool m_isInWorld = false;
    // Of the statement that is checked.
    int m_document = 0;
    std::optional<Statement> m_statement;
    Kind m_kind;
    int m_chain = 0;
};

void SceneCheck::checkSyntax(int document)
{
    const Document& text = m_scene.document(document);
    m_document = document;
    for (const TextError& error : text.errors()) {
        const char* const rule = isFatal(error.kind) ? "syntax" : "misread";
        add(m_renderer.general(rule), error.span,
            { { "value", text.message(error).toStdString() } });
    }
}

/// A text with WorldBegin is a scene of its own: what it names must stand in it.
void SceneCheck::findWorld()
{
    for (const SceneText::Step step : m_scene.steps())
        m_hasWorld = m_hasWorld || m_scene.statement(step).keyword() == Keyword::WorldBegin;
    m_isWhole = m_options.isWhole || m_hasWorld;
    for (int i = 0; i < m_scene.documentCount(); ++i)
        for (const TextError& error : m_scene.document(i).errors())
            if (error.kind == ErrorKind::Include)
                m_isWhole = false;
}

void SceneCheck::check(SceneText::Step step)
{
    const Statement statement = m_scene.statement(step);
    m_document = step.document;
    m_statement = statement;
    m_kind = Kind();
    switch (statement.keyword()) {
    case Keyword::WorldBegin:
        m_isInWorld = true;
        break;
    case Keyword::AttributeBegin:
        m_names.openBlock();
        break;
    case Keyword::AttributeEnd:
        m_names.closeBlock();
        break;
    case Keyword::Texture:
        checkTexture();
        break;
    case Keyword::MakeNamedMaterial:
        checkThing({ "material", statement.typeText(), statement.headText(0) });
        define(NameScopes::Materials, m_kind.name);
        break;
    case Keyword::Material:
        checkThing({ "material", statement.typeText(), std::string() });
        break;
    case Keyword::MakeNamedVolume:
        checkThing({ "volume", statement.typeText(), statement.headText(0) });
        define(NameScopes::Volumes, m_kind.name);
        break;
    case Keyword::Shape:
        if (statement.typeText() == "mesh" || statement.typeText() == "plymesh")
            checkThing({ "shape", "mesh", std::string() });
        break;
    case Keyword::NamedMaterial:
        use(NameScopes::Materials, "unknown-material");
        break;
    case Keyword::Interior:
    case Keyword::Exterior:
        use(NameScopes::Volumes, "unknown-volume");
        break;
    default:
        break;
    }
    if (statement.parameterCount() > m_renderer.limit("parameters"))
        add(m_renderer.general("too-many-lines"), statement.keywordSpan(),
            { { "value", std::to_string(statement.parameterCount()) },
                { "limit", std::to_string(static_cast<int>(m_renderer.limit("parameters"))) } });
}

void SceneCheck::checkTexture()
{
    TextureSpace space = TextureSpace::Float;
    const std::string family = m_statement->headText(1);
    const std::string name = m_statement->headText(0);
    m_kind.name = name;
    if (!findSpace(family, &space)) {
        if (m_statement->isWhole())
            add(m_renderer.general("unknown-family"), m_statement->headSpan(1),
                { { "value", family } });
        return;
    }
    m_chain = 0;
    checkThing({ family + " texture", m_statement->typeText(), name });
    if (m_hasWorld && !m_isInWorld) {
        add(m_renderer.general("texture-too-early"), m_statement->keywordSpan(), {});
        return;
    }
    checkChain(m_kind, space);
}

void SceneCheck::checkThing(const Kind& kind)
{
    m_kind = kind;
    if (!m_statement->isWhole())
        return;
    const TypeFacts& facts = m_renderer.type(kind.family, kind.type);
    if (!facts.isKnown) {
        // An empty word makes the renderer's own without a message.
        if (!kind.type.empty())
            add(facts.unknown ? *facts.unknown : m_renderer.general("unknown-type"),
                m_statement->typeSpan(), {});
        return;
    }
    const auto teller = [this](const FactText& text, const StatementCheck::Line* line,
                            const Words& words) { tell(text, line, words); };
    StatementCheck check(*m_statement, m_renderer, facts, kind.family, kind.type, teller);
    check.checkLines();
    bool isStopped = false;
    for (const StatementCheck::Line& line : check.lines()) {
        if (line.type == ParameterType::String)
            checkBackslashes(line);
        if (!line.isRead)
            continue;
        if (line.form->meaning == Form::TextureName)
            checkTextureName(line);
        else if (line.form->meaning == Form::MaterialName)
            isStopped = checkMaterialName(line, !facts.needs.empty()) || isStopped;
        else if (line.name == "filename" && kind.type.find("map") != kind.type.npos)
            checkFileName(line);
    }
    check.checkNeeds(isStopped);
    check.checkValues(facts.values);
    if (m_options.tellsPortability) {
        const RendererFacts& other = RendererFacts::portability();
        check.checkValues(other.type(kind.family, kind.type).values);
    }
}

void SceneCheck::checkTextureName(const StatementCheck::Line& line)
{
    const std::string name = line.parameter.text();
    // Some parameters take textures of two kinds.
    for (const ParameterFact& fact : m_renderer.type(m_kind.family, m_kind.type).parameters) {
        if (fact.name != line.fact->name)
            continue;
        for (const Form& form : fact.forms) {
            if (form.meaning != Form::TextureName)
                continue;
            const auto entry = m_names.find(NameScopes::texturesOf(form.space), name);
            if (entry.block < 0)
                continue;
            m_chain = std::max(m_chain, entry.chain);
            return;
        }
    }
    const std::string space(spaceWord(line.form->space));
    for (int i = 0; i < textureSpaceCount; ++i) {
        const auto other = static_cast<TextureSpace>(i);
        if (m_names.find(NameScopes::texturesOf(other), name).block < 0)
            continue;
        tell(m_renderer.general("other-texture"), &line,
            { { "space", space }, { "other", std::string(spaceWord(other)) } });
        return;
    }
    if (m_isWhole)
        tell(m_renderer.general("unknown-texture"), &line, { { "space", space } });
}

/// True if the material is not there and the statement is refused for it.
bool SceneCheck::checkMaterialName(const StatementCheck::Line& line, bool isNeeded)
{
    const std::string name = line.parameter.text();
    if (name.empty() || !m_isWhole || m_names.find(NameScopes::Materials, name).block >= 0)
        return false;
    tell(m_renderer.general(isNeeded ? "unknown-material" : "unknown-layer"), &line, {});
    return isNeeded;
}

void SceneCheck::checkFileName(const StatementCheck::Line& line)
{
    if (m_options.imageFolder.isEmpty())
        return;
    const std::string name = line.parameter.text();
    if (!name.empty() && !isThere(plain(name)))
        tell(m_renderer.general("missing-file"), &line, {});
}

bool SceneCheck::isThere(const QString& file)
{
    const auto known = m_files.constFind(file);
    if (known != m_files.constEnd())
        return known.value();
    const bool isThere = QFileInfo(QDir(m_options.imageFolder).absoluteFilePath(file)).isFile();
    m_files.insert(file, isThere);
    return isThere;
}

void SceneCheck::checkBackslashes(const StatementCheck::Line& line)
{
    for (const Value value : line.parameter.values()) {
        if (!value.isString() || value.source().find('\\') == std::string_view::npos)
            continue;
        const std::string read = value.text();
        if (read != seenContent(value.source()))
            tell(m_renderer.general("swallowed-backslash"), &line, { { "value", read } });
    }
}

void SceneCheck::checkChain(const Kind& kind, TextureSpace space)
{
    const int chain = m_chain + 1;
    define(NameScopes::texturesOf(space), kind.name, chain);
    const Words words { { "value", std::to_string(chain) } };
    if (chain - 1 == static_cast<int>(m_renderer.limit("slowChain")))
        add(m_renderer.general("long-chain"), m_statement->keywordSpan(), words);
    if (chain == static_cast<int>(m_renderer.limit("deadlyChain")))
        add(m_renderer.general("deadly-chain"), m_statement->keywordSpan(), words);
}

void SceneCheck::use(NameScopes::Kind kind, const char* rule)
{
    const std::string name = m_statement->headText(0);
    m_kind.name = name;
    // Without a name there is no volume, as wished.
    if (!m_isWhole || !m_statement->isWhole() || name.empty()
        || m_names.find(kind, name).block >= 0)
        return;
    add(m_renderer.general(rule), m_statement->headSpan(0), { { "value", name } });
}

void SceneCheck::define(NameScopes::Kind kind, const std::string& name, int chain)
{
    if (m_statement->isWhole() && !m_names.define(kind, name, chain))
        add(m_renderer.general("defined-twice"), m_statement->headSpan(0), { { "value", name } });
}

void SceneCheck::tell(const FactText& text, const StatementCheck::Line* line, const Words& words)
{
    Words all = words;
    Span span = m_statement->typeSpan();
    if (line) {
        all.push_back({ "parameter", line->name });
        all.push_back({ "value", valueText(line->parameter) });
        span = line->parameter.valueSpan();
    }
    add(text, span, all);
}

/// Fills what stands in braces. The first of several words of one name is taken.
QString filled(QString text, const Words& words)
{
    for (const auto& word : words)
        text.replace(
            QLatin1Char('{') + QLatin1String(word.first) + QLatin1Char('}'), plain(word.second));
    return text;
}

void SceneCheck::add(const FactText& text, Span span, const Words& words)
{
    Tally& tally = m_tallies[text.rule];
    if (++tally.count > m_options.mostOfARule + 1)
        return;
    Words all = words;
    all.push_back({ "family", m_kind.family });
    all.push_back({ "type", m_kind.type });
    Finding finding;
    finding.rule = text.rule;
    finding.severity = text.severity;
    finding.isQuiet = text.isQuiet;
    if (m_statement) {
        const StatementForm& form = formOf(m_statement->keyword());
        finding.keyword = QString::fromLatin1(form.word.data(), static_cast<int>(form.word.size()));
        finding.name = plain(m_kind.name);
        finding.type = plain(m_kind.type);
    }
    for (const auto& word : words) {
        if (qstrcmp(word.first, "parameter") == 0 && finding.parameter.isEmpty())
            finding.parameter = plain(word.second);
        else if (qstrcmp(word.first, "value") == 0)
            finding.value = plain(word.second);
    }
    finding.document = m_document;
    finding.span = span;
    finding.sentence = filled(text.says, all);
    finding.advice = filled(text.advice, all);
    finding.remedies = text.remedies;
    for (Remedy& remedy : finding.remedies)
        remedy.parameter = filled(remedy.parameter, all);
    finding.source = text.source;
    if (tally.count > m_options.mostOfARule)
        tally.untold = finding;
    else
        m_findings.push_back(finding);
}

/// A broken text may have a finding a line, which nobody reads.
void SceneCheck::tellRest()
{
    for (const auto& entry : m_tallies) {
        const int rest = entry.second.count - m_options.mostOfARule;
        if (rest <= 0)
            continue;
        Finding finding = entry.second.untold;
        if (rest > 1)
            finding.sentence += QStringLiteral(" (%1 more like this.)").arg(rest - 1);
        m_findings.push_back(finding);
    }
}

void SceneCheck::putInOrder()
{
    std::stable_sort(m_findings.begin(), m_findings.end(), [](const Finding& a, const Finding& b) {
        return a.document != b.document ? a.document < b.document : a.span.begin < b.span.begin;
    });
    std::optional<PlaceFinder> places;
    int document = -1;
    for (Finding& finding : m_findings) {
        if (finding.document != document) {
            document = finding.document;
            places.emplace(m_scene.document(document));
        }
        finding.place = places->at(finding.span.begin);
    }
}

} // namespace

std::vector<Finding> checkScene(const SceneText& scene, const CheckOptions& options)
{
    return SceneCheck(scene, options).run();
}

} // namespace lux
