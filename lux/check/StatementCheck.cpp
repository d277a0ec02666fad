// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "StatementCheck.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace lux {

namespace {

/// More of a value is not shown.
constexpr std::size_t maximumValueSize = 60;

std::vector<double> numbersOf(const std::string& text, bool* areNumbers)
{
    std::vector<double> numbers;
    Lexer lexer(text);
    *areNumbers = true;
    for (Token token = lexer.next(); token.kind != TokenKind::End; token = lexer.next()) {
        if (token.kind != TokenKind::Number) {
            *areNumbers = false;
            break;
        }
        numbers.push_back(
            numberContent(std::string_view(text).substr(token.span.begin, token.span.size())));
    }
    *areNumbers = *areNumbers && !numbers.empty();
    return numbers;
}

bool isNear(double a, double b)
{
    return std::abs(a - b) <= 1e-6 * std::max(1.0, std::abs(b));
}

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

/// A condition as a sentence has it.
std::string conditionText(const std::vector<Condition>& conditions)
{
    std::string text;
    for (const Condition& condition : conditions) {
        const char* const relation = condition.relation == Condition::Is ? " is "
            : condition.relation == Condition::IsNot                     ? " is not "
                                                                         : " is below ";
        text += (text.empty() ? "\"" : " and \"") + condition.parameter + '"' + relation;
        for (std::size_t i = 0; i < condition.values.size(); ++i)
            text += (i ? " or " : "") + condition.values[i];
    }
    return text;
}

std::string formText(const Form& form)
{
    switch (form.meaning) {
    case Form::TextureName:
        return "a " + std::string(spaceWord(form.space)) + " texture";
    case Form::MaterialName:
        return "a material";
    case Form::Plain:
        break;
    }
    return "a " + std::string(typeWord(form.type));
}

} // namespace

bool isNamed(const std::string& name, const std::string& fact, int count)
{
    if (fact.empty() || fact.back() != '#')
        return name == fact;
    const std::size_t stem = fact.size() - 1;
    if (name.size() <= stem || name.compare(0, stem, fact, 0, stem) != 0 || name[stem] == '0')
        return false;
    int number = 0;
    const char* const end = name.data() + name.size();
    const auto result = std::from_chars(name.data() + stem, end, number);
    return result.ec == std::errc() && result.ptr == end && number >= 1 && number <= count;
}

std::string valueText(const Parameter& parameter)
{
    std::string text;
    for (const Value value : parameter.values()) {
        text += (text.empty() ? "" : " ") + value.text();
        if (text.size() > maximumValueSize)
            break;
    }
    return text;
}

bool isSameValue(const std::string& value, const std::string& expected)
{
    bool areNumbers = false;
    const std::vector<double> wanted = numbersOf(expected, &areNumbers);
    if (!areNumbers)
        return value == expected;
    const std::vector<double> given = numbersOf(value, &areNumbers);
    if (!areNumbers || (wanted.size() > 1 && wanted.size() != given.size()))
        return false;
    for (std::size_t i = 0; i < given.size(); ++i)
        if (!isNear(given[i], wanted[wanted.size() > 1 ? i : 0]))
            return false;
    return true;
}

StatementCheck::StatementCheck(const Statement& statement, const RendererFacts& renderer,
    const TypeFacts& facts, const std::string& family, const std::string& type,
    const Teller& teller)
    : m_statement(statement)
    , m_renderer(renderer)
    , m_facts(facts)
    , m_family(family)
    , m_type(type)
    , m_teller(teller)
    , m_numbered(0)
{
    const int count = statement.parameterCount();
    m_lines.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const Parameter parameter = statement.parameter(i);
        m_lines.push_back(
            { parameter, parameter.type(), parameter.name(), nullptr, nullptr, false });
    }
    m_numbered = std::max(countOf("offsets"), countOf("weights"));
    for (Line& line : m_lines) {
        bool isNameKnown = false;
        line.fact = factOf(line.name, line.type, &line.form, &isNameKnown);
        // A color of other than three numbers is dropped.
        line.isRead = line.fact && line.parameter.valueCount() > 0
            && !(line.type == ParameterType::Color && line.parameter.valueCount() % 3 != 0);
    }
    for (Line& line : m_lines)
        line.isRead = line.isRead && holds(line.fact->conditions);
}

const ParameterFact* StatementCheck::factOf(
    const std::string& name, ParameterType type, const Form** form, bool* isNameKnown) const
{
    for (const ParameterFact& fact : m_facts.parameters) {
        if (!isNamed(name, fact.name, m_numbered))
            continue;
        *isNameKnown = true;
        for (const Form& candidate : fact.forms) {
            if (candidate.type != type)
                continue;
            *form = &candidate;
            return &fact;
        }
    }
    return nullptr;
}

int StatementCheck::countOf(const char* array) const
{
    for (const Line& line : m_lines)
        if (line.name == array && line.type == ParameterType::Float)
            return line.parameter.valueCount();
    return 0;
}

/// What the renderer takes for a parameter: the line's value, else its own.
const std::string& StatementCheck::valueOf(const std::string& parameter) const
{
    const auto known = m_asked.find(parameter);
    if (known != m_asked.end())
        return known->second;
    std::string standard;
    for (const ParameterFact& fact : m_facts.parameters)
        if (fact.name == parameter)
            standard = fact.standard;
    for (const Line& line : m_lines)
        if (line.name == parameter && line.fact)
            standard = valueText(line.parameter);
    return m_asked.emplace(parameter, standard).first->second;
}

bool StatementCheck::holds(const std::vector<Condition>& conditions) const
{
    for (const Condition& condition : conditions) {
        const std::string& value = valueOf(condition.parameter);
        bool matches = false;
        for (const std::string& expected : condition.values) {
            bool areNumbers = false;
            const std::vector<double> numbers = numbersOf(value, &areNumbers);
            matches = matches
                || (condition.relation == Condition::IsBelow
                        ? areNumbers && numbers.front() < numberContent(expected)
                        : isSameValue(value, expected));
        }
        if (matches == (condition.relation == Condition::IsNot))
            return false;
    }
    return true;
}

void StatementCheck::checkLines()
{
    for (Line& line : m_lines)
        checkLine(&line);
}

void StatementCheck::checkLine(Line* line)
{
    if (m_family == "material" && (line->name == "type" || line->name.rfind("compo_", 0) == 0))
        return;
    if (line->type == ParameterType::Unknown) {
        m_teller(m_renderer.general("unknown-value-type"), line,
            { { "given", line->parameter.typeText() } });
        return;
    }
    if (line->isRead) {
        checkForm(line);
        return;
    }
    const Form* form = nullptr;
    bool isNameKnown = false;
    factOf(line->name, line->type, &form, &isNameKnown);
    if (!isNameKnown && m_facts.isOpen)
        return;
    tellUnread(*line, isNameKnown);
}

void StatementCheck::tellUnread(const Line& line, bool isNameKnown)
{
    FactText buffer;
    if (const FactText* text = unreadText(line, &buffer)) {
        m_teller(*text, &line, {});
        return;
    }
    Words words;
    if (line.fact && line.type == ParameterType::Color && line.parameter.valueCount() % 3 != 0) {
        buffer = m_renderer.general("color-of-three");
        words = { { "value", std::to_string(line.parameter.valueCount()) } };
    } else if (line.fact) {
        buffer = m_renderer.general("not-read-now");
        words = { { "condition", conditionText(line.fact->conditions) } };
    } else if (isNameKnown) {
        std::string taken;
        for (const ParameterFact& fact : m_facts.parameters)
            if (isNamed(line.name, fact.name, m_numbered))
                for (const Form& form : fact.forms)
                    taken += (taken.empty() ? "" : " or ") + formText(form);
        buffer = m_renderer.general("wrong-kind");
        words = { { "given", "a " + line.parameter.typeText() }, { "taken", taken } };
    } else {
        buffer = m_renderer.general("not-read");
    }
    const std::string value = valueText(line.parameter);
    for (const std::string& quiet : m_renderer.quietWhenUnread(line.name))
        buffer.isQuiet = buffer.isQuiet || isSameValue(value, quiet);
    m_teller(buffer, &line, words);
}

/// What the table says of this very line; null if nothing.
const FactText* StatementCheck::unreadText(const Line& line, FactText* buffer) const
{
    for (const UnreadFact* fact : m_facts.unread) {
        if (fact->type != line.type || fact->name != line.name)
            continue;
        *buffer = fact->text;
        buffer->isQuiet = fact->quietAt == "*"
            || (!fact->quietAt.empty() && isSameValue(valueText(line.parameter), fact->quietAt));
        // Where nothing is lost it is only a line that is not read.
        if (buffer->isQuiet)
            buffer->severity = Severity::Ignored;
        return buffer;
    }
    return nullptr;
}

void StatementCheck::checkForm(Line* line)
{
    if (line->form->words.empty())
        return;
    const std::vector<std::string>& known = m_renderer.words(line->form->words);
    const std::string value = line->parameter.text();
    if (value.empty() || std::find(known.begin(), known.end(), value) != known.end())
        return;
    m_teller(m_renderer.unknownWord(line->form->words), line, { { "words", joined(known) } });
}

void StatementCheck::checkNeeds(bool isStopped)
{
    for (const NeedFact* need : m_facts.needs) {
        int count = 0;
        for (const Line& line : m_lines)
            if (line.isRead && line.name == need->parameter
                && !(line.type == ParameterType::String && line.parameter.text().empty()))
                count = line.parameter.valueCount();
        if (count >= need->atLeast)
            continue;
        m_teller(need->text, nullptr, { { "parameter", need->parameter } });
        isStopped = isStopped || need->stops;
    }
    if (!isStopped)
        return;
    FactText text = m_renderer.general("not-read-refused");
    text.isQuiet = true; // the refusal says it
    for (const Line& line : m_lines)
        if (line.isRead && line.form->meaning != Form::MaterialName)
            m_teller(text, &line, {});
}

void StatementCheck::checkValues(const std::vector<const ValueFact*>& facts)
{
    for (const ValueFact* fact : facts) {
        if (fact->test == ValueFact::Always) {
            m_teller(fact->text, nullptr, {});
            continue;
        }
        if (!holds(fact->conditions))
            continue;
        bool isGiven = false;
        for (const Line& line : m_lines) {
            const bool isType = line.name == "type" && m_family == "material";
            if (!isNamed(line.name, fact->parameter, m_numbered) || !(line.isRead || isType)
                || (fact->type != ParameterType::Unknown && fact->type != line.type))
                continue;
            isGiven = !valueText(line.parameter).empty();
            testLine(*fact, line);
        }
        if (fact->test == ValueFact::IsMissing && !isGiven)
            m_teller(fact->text, nullptr, { { "parameter", fact->parameter } });
    }
}

void StatementCheck::testLine(const ValueFact& fact, const Line& line)
{
    const std::string value = valueText(line.parameter);
    bool areNumbers = false;
    const std::vector<double> numbers = numbersOf(value, &areNumbers);
    // A texture may be named like a number.
    areNumbers = areNumbers && line.type != ParameterType::Texture;
    bool applies = false;
    switch (fact.test) {
    case ValueFact::IsValue:
        applies = line.type != ParameterType::Texture && isSameValue(value, fact.value);
        break;
    case ValueFact::IsNotValue:
        applies = line.type == ParameterType::Texture || !isSameValue(value, fact.value);
        break;
    case ValueFact::IsBelow:
        applies = areNumbers && numbers.front() < numberContent(fact.value);
        break;
    case ValueFact::HasZero:
        applies = areNumbers && std::find(numbers.begin(), numbers.end(), 0.0) != numbers.end();
        break;
    case ValueFact::IsGiven:
        applies = !value.empty();
        break;
    case ValueFact::IsMissing:
    case ValueFact::Always:
        break;
    }
    if (applies)
        m_teller(fact.text, &line, {});
}

} // namespace lux
