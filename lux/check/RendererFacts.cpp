// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "RendererFacts.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

// A resource of a static library is linked only if somebody asks for it, outside of any namespace.
static void makeFactsReadable()
{
    Q_INIT_RESOURCE(facts);
}

namespace lux {

namespace {

QByteArray resource(const char* name)
{
    makeFactsReadable();
    QFile file(QStringLiteral(":/lux/check/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the table %s is not in the program", name);
    return file.readAll();
}

std::string plain(const QJsonValue& value)
{
    return value.toString().toStdString();
}

QStringList split(const QString& text, const char* separator)
{
    return text.split(QLatin1String(separator), Qt::SkipEmptyParts);
}

ParameterType typeOf(const QString& word)
{
    for (int i = 0; i <= static_cast<int>(ParameterType::Color); ++i)
        if (word.toStdString() == typeWord(static_cast<ParameterType>(i)))
            return static_cast<ParameterType>(i);
    return ParameterType::Unknown;
}

constexpr std::string_view spaceWords[] = { "float", "color", "fresnel" };

/// True if the pattern of a family and type, each of them or * for any, takes these.
bool takes(const QString& pattern, const QString& family, const QString& word)
{
    QString rest = pattern;
    if (rest.startsWith(QLatin1String("* texture "))) {
        if (!family.endsWith(QLatin1String(" texture")))
            return false;
        rest.remove(0, 10);
    } else {
        if (!rest.startsWith(family + QLatin1Char(' ')))
            return false;
        rest.remove(0, family.size() + 1);
    }
    return rest == QLatin1String("*") || rest == word;
}

} // namespace

std::string_view spaceWord(TextureSpace space)
{
    return spaceWords[static_cast<int>(space)];
}

bool findSpace(std::string_view word, TextureSpace* space)
{
    for (int i = 0; i < textureSpaceCount; ++i) {
        if (word != spaceWords[i])
            continue;
        *space = static_cast<TextureSpace>(i);
        return true;
    }
    return false;
}

/// Fills a table from its JSON.
class RendererFacts::Loader
{
public:
    Loader(RendererFacts* facts, const QJsonObject& root)
        : m_facts(facts)
        , m_root(root)
        , m_renderer(root.value(QLatin1String("renderer")).toString() + QLatin1Char(' ')
              + root.value(QLatin1String("version")).toString())
    {
    }

    void load()
    {
        m_facts->m_name = m_renderer;
        loadWords();
        for (const QJsonValue& row : array("unread"))
            loadUnread(row.toObject());
        for (const QJsonValue& row : array("needs"))
            loadNeed(row.toObject());
        for (const QJsonValue& row : array("values"))
            loadValue(row.toObject());
        for (const QJsonValue& row : array("unknownTypes"))
            m_facts->m_unknownTypes[plain(row.toObject().value(QLatin1String("in")))]
                = text(row.toObject(), "unknown-type", Severity::Refused);
        for (const QJsonValue& row : array("unknownWords"))
            m_facts->m_unknownWords[plain(row.toObject().value(QLatin1String("words")))]
                = text(row.toObject(), "unknown-word", Severity::Ignored);
        for (const QJsonValue& row : array("general"))
            m_facts->m_general[plain(row.toObject().value(QLatin1String("rule")))]
                = text(row.toObject(), "", Severity::Ignored);
        loadTypes();
    }

private:
    QJsonArray array(const char* name) const { return m_root.value(QLatin1String(name)).toArray(); }
    QJsonObject object(const char* name) const
    {
        return m_root.value(QLatin1String(name)).toObject();
    }

    QString source(const QString& how) const
    {
        const QString words = object("sources").value(how).toString();
        if (words.isEmpty())
            qFatal("a fact without a source: %s", qPrintable(how));
        return m_renderer + QStringLiteral(", ") + words;
    }

    void loadLists(const char* name, std::map<std::string, std::vector<std::string>>* lists) const
    {
        const QJsonObject rows = object(name);
        for (auto it = rows.begin(); it != rows.end(); ++it)
            for (const QJsonValue& word : it.value().toArray())
                (*lists)[it.key().toStdString()].push_back(plain(word));
    }

    void loadWords()
    {
        loadLists("words", &m_facts->m_words);
        loadLists("quietWhenUnread", &m_facts->m_quietWhenUnread);
        const QJsonObject limits = object("limits");
        for (auto it = limits.begin(); it != limits.end(); ++it)
            m_facts->m_limits[it.key().toStdString()]
                = it.value().toObject().value(QLatin1String("value")).toDouble();
    }

    FactText text(const QJsonObject& row, const char* rule, Severity severity) const
    {
        FactText text;
        text.rule = row.value(QLatin1String("rule")).toString(QLatin1String(rule));
        text.severity = severity;
        const QString word = row.value(QLatin1String("severity")).toString();
        for (int i = 0; i <= static_cast<int>(Severity::Portability); ++i)
            if (word == severityWord(static_cast<Severity>(i)))
                text.severity = static_cast<Severity>(i);
        text.isQuiet = row.value(QLatin1String("quiet")).toBool();
        text.says = row.value(QLatin1String("says")).toString();
        text.advice = row.value(QLatin1String("do")).toString();
        text.source = source(row.value(QLatin1String("source")).toString());
        for (const QJsonValue& value : row.value(QLatin1String("remedies")).toArray())
            text.remedies.append(remedy(value.toObject()));
        return text;
    }

    static Remedy remedy(const QJsonObject& row)
    {
        Remedy remedy;
        if (!findRemedy(row.value(QLatin1String("do")).toString(), &remedy.action))
            qFatal("an unknown remedy");
        remedy.parameter = row.value(QLatin1String("parameter")).toString();
        const QJsonObject values = row.value(QLatin1String("values")).toObject();
        for (auto it = values.begin(); it != values.end(); ++it)
            remedy.values.append({ it.key(), it.value().toString() });
        return remedy;
    }

    static std::vector<Condition> conditions(const QString& text)
    {
        std::vector<Condition> list;
        for (const QString& part : split(text, "&")) {
            Condition condition;
            QString sign = QStringLiteral("=");
            if (part.contains(QLatin1String("!="))) {
                condition.relation = Condition::IsNot;
                sign = QStringLiteral("!=");
            } else if (part.contains(QLatin1Char('<'))) {
                condition.relation = Condition::IsBelow;
                sign = QStringLiteral("<");
            }
            condition.parameter = part.section(sign, 0, 0).toStdString();
            for (const QString& value : split(part.section(sign, 1), ","))
                condition.values.push_back(value.toStdString());
            list.push_back(condition);
        }
        return list;
    }

    static std::vector<Form> forms(const QString& text)
    {
        std::vector<Form> list;
        for (const QString& part : split(text, "|")) {
            Form form;
            const QString word = part.section(QLatin1Char(':'), 0, 0);
            const QString detail = part.section(QLatin1Char(':'), 1);
            if (word == QLatin1String("texture") || word == QLatin1String("name")) {
                form.type = word == QLatin1String("texture") ? ParameterType::Texture
                                                             : ParameterType::String;
                form.meaning = Form::TextureName;
                if (!findSpace(detail.toStdString(), &form.space))
                    qFatal("an unknown kind of texture: %s", qPrintable(detail));
            } else if (word == QLatin1String("material")) {
                form.type = ParameterType::String;
                form.meaning = Form::MaterialName;
            } else {
                form.type = typeOf(QString(word).remove(QLatin1String("[]")));
                form.words = detail.toStdString();
            }
            if (form.type == ParameterType::Unknown)
                qFatal("an unknown form: %s", qPrintable(part));
            list.push_back(form);
        }
        return list;
    }

    void loadUnread(const QJsonObject& row)
    {
        auto fact = std::make_unique<UnreadFact>();
        const QString line = row.value(QLatin1String("line")).toString();
        fact->type = typeOf(line.section(QLatin1Char(' '), 0, 0));
        fact->name = line.section(QLatin1Char(' '), 1).toStdString();
        fact->quietAt = plain(row.value(QLatin1String("quiet")));
        const bool surprises
            = row.value(QLatin1String("loud")).toString() == QLatin1String("surprising");
        fact->text = text(row, surprises ? "unread-value" : "not-read",
            surprises ? Severity::Surprising : Severity::Ignored);
        m_unreadIn.append(row.value(QLatin1String("in")).toString());
        m_facts->m_unread.push_back(std::move(fact));
    }

    void loadNeed(const QJsonObject& row)
    {
        auto fact = std::make_unique<NeedFact>();
        fact->parameter = plain(row.value(QLatin1String("parameter")));
        fact->atLeast = row.value(QLatin1String("atLeast")).toInt(1);
        fact->stops = row.value(QLatin1String("stops")).toBool();
        fact->text = text(row, "", Severity::Refused);
        m_needsIn.append(row.value(QLatin1String("in")).toString());
        m_facts->m_needs.push_back(std::move(fact));
    }

    void loadValue(const QJsonObject& row)
    {
        auto fact = std::make_unique<ValueFact>();
        QString parameter = row.value(QLatin1String("parameter")).toString();
        fact->type = typeOf(parameter.section(QLatin1Char(' '), 0, 0));
        if (fact->type != ParameterType::Unknown)
            parameter = parameter.section(QLatin1Char(' '), 1);
        fact->parameter = parameter.toStdString();
        const auto has = [&row](const char* name) { return row.contains(QLatin1String(name)); };
        if (has("is")) {
            fact->test = ValueFact::IsValue;
            fact->value = plain(row.value(QLatin1String("is")));
        } else if (has("isNot")) {
            fact->test = ValueFact::IsNotValue;
            fact->value = plain(row.value(QLatin1String("isNot")));
        } else if (has("below")) {
            fact->test = ValueFact::IsBelow;
            fact->value
                = QString::number(row.value(QLatin1String("below")).toDouble()).toStdString();
        } else if (has("hasZero")) {
            fact->test = ValueFact::HasZero;
        } else if (has("isMissing")) {
            fact->test = ValueFact::IsMissing;
        } else if (has("isGiven")) {
            fact->test = ValueFact::IsGiven;
        }
        fact->conditions = conditions(row.value(QLatin1String("and")).toString());
        fact->text = text(row, "", Severity::Surprising);
        m_valuesIn.append(row.value(QLatin1String("in")).toString());
        m_facts->m_values.push_back(std::move(fact));
    }

    void loadTypes()
    {
        const QJsonObject types = object("types");
        for (auto it = types.begin(); it != types.end(); ++it) {
            TypeFacts& type = m_facts->m_types[it.key().toStdString()];
            type.isKnown = true;
            type.isOpen = array("openTypes").contains(it.key());
            for (const QJsonValue& value : it.value().toArray()) {
                const QJsonArray row = value.toArray();
                ParameterFact parameter;
                parameter.name = plain(row.at(0));
                parameter.forms = forms(row.at(1).toString());
                parameter.standard = plain(row.at(2));
                parameter.source = source(row.at(3).toString());
                parameter.conditions = conditions(row.at(4).toString());
                type.parameters.push_back(parameter);
            }
            addFacts(it.key(), &type);
        }
        for (auto& entry : m_facts->m_unknownTypes)
            m_facts->m_types[entry.first].unknown = &entry.second;
        // A table without types says only where things differ, for whatever type is asked.
        if (types.isEmpty())
            for (const std::string& name : RendererFacts::renderer().typeNames())
                addFacts(QString::fromStdString(name), &m_facts->m_types[name]);
    }

    /// What holds for a type because a pattern takes it.
    void addFacts(const QString& name, TypeFacts* type) const
    {
        const int blank = name.indexOf(QLatin1String("texture ")) < 0
            ? name.indexOf(QLatin1Char(' '))
            : name.indexOf(QLatin1String("texture ")) + 7;
        const QString family = name.left(blank);
        const QString word = name.mid(blank + 1);
        for (int i = 0; i < m_unreadIn.size(); ++i)
            if (takes(m_unreadIn.at(i), family, word))
                type->unread.push_back(m_facts->m_unread[static_cast<size_t>(i)].get());
        for (int i = 0; i < m_needsIn.size(); ++i)
            if (takes(m_needsIn.at(i), family, word))
                type->needs.push_back(m_facts->m_needs[static_cast<size_t>(i)].get());
        for (int i = 0; i < m_valuesIn.size(); ++i)
            if (takes(m_valuesIn.at(i), family, word))
                type->values.push_back(m_facts->m_values[static_cast<size_t>(i)].get());
    }

    RendererFacts* m_facts;
    QJsonObject m_root;
    QString m_renderer;
    // Which types each fact is of, place for place.
    QStringList m_unreadIn;
    QStringList m_needsIn;
    QStringList m_valuesIn;
};

const RendererFacts& RendererFacts::renderer()
{
    static const RendererFacts facts(resource("renderer-facts.json"));
    return facts;
}

const RendererFacts& RendererFacts::portability()
{
    static const RendererFacts facts(resource("portability-facts.json"));
    return facts;
}

RendererFacts::RendererFacts(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (!document.isObject())
        qFatal("a table of facts is broken: %s", qPrintable(error.errorString()));
    Loader(this, document.object()).load();
}

RendererFacts::~RendererFacts() = default;

const TypeFacts& RendererFacts::type(const std::string& family, const std::string& word) const
{
    const auto found = m_types.find(family + ' ' + word);
    return found == m_types.end() ? m_none : found->second;
}

std::vector<std::string> RendererFacts::typeNames() const
{
    std::vector<std::string> names;
    for (const auto& entry : m_types)
        if (entry.second.isKnown)
            names.push_back(entry.first);
    return names;
}

const std::vector<std::string>& RendererFacts::words(const std::string& list) const
{
    const auto found = m_words.find(list);
    if (found == m_words.end())
        qFatal("there is no list of words \"%s\"", list.c_str());
    return found->second;
}

const FactText& RendererFacts::unknownWord(const std::string& list) const
{
    const auto found = m_unknownWords.find(list);
    return found == m_unknownWords.end() ? general("unknown-word") : found->second;
}

const FactText& RendererFacts::general(const char* rule) const
{
    const auto found = m_general.find(rule);
    if (found == m_general.end())
        qFatal("there is no rule \"%s\"", rule);
    return found->second;
}

double RendererFacts::limit(const char* what) const
{
    const auto found = m_limits.find(what);
    if (found == m_limits.end())
        qFatal("there is no limit \"%s\"", what);
    return found->second;
}

std::vector<std::string> RendererFacts::quietWhenUnread(const std::string& parameter) const
{
    const auto found = m_quietWhenUnread.find(parameter);
    return found == m_quietWhenUnread.end() ? std::vector<std::string>() : found->second;
}

} // namespace lux
