// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "RendererFacts.h"

#include <functional>
#include <map>
#include <vector>

namespace lux {

/// The words that are filled into a fact's sentence, by what stands in braces there.
typedef std::vector<std::pair<const char*, std::string>> Words;

/// Checks the parameters of one statement against what its type reads.
class StatementCheck
{
public:
    /// A parameter of the statement, taken apart.
    struct Line {
        Parameter parameter;
        ParameterType type;
        std::string name;
        const ParameterFact* fact; ///< of this name and form; null if nothing reads it
        const Form* form;
        bool isRead;
    };

    /// Tells a finding of a line, or of the whole statement for null.
    typedef std::function<void(const FactText& text, const Line* line, const Words& words)> Teller;

    /// `family` and `type` are those of `facts`; all must live as long as the check.
    StatementCheck(const Statement& statement, const RendererFacts& renderer,
        const TypeFacts& facts, const std::string& family, const std::string& type,
        const Teller& teller);

    /// Tells what is wrong with lines by themselves: what is not read, and why.
    void checkLines();
    /// Tells of parameters that are missing. `isStopped` is true if the renderer was found to give
    /// the statement up before it reads its lines.
    void checkNeeds(bool isStopped);
    /// Tells of values by a table's value facts.
    void checkValues(const std::vector<const ValueFact*>& facts);

    const std::vector<Line>& lines() const { return m_lines; }

private:
    const ParameterFact* factOf(
        const std::string& name, ParameterType type, const Form** form, bool* isNameKnown) const;
    bool holds(const std::vector<Condition>& conditions) const;
    const std::string& valueOf(const std::string& parameter) const;
    int countOf(const char* array) const;
    void checkLine(Line* line);
    void tellUnread(const Line& line, bool isNameKnown);
    void checkForm(Line* line);
    void testLine(const ValueFact& fact, const Line& line);
    const FactText* unreadText(const Line& line, FactText* buffer) const;

    const Statement& m_statement;
    const RendererFacts& m_renderer;
    const TypeFacts& m_facts;
    const std::string& m_family;
    const std::string& m_type;
    Teller m_teller;
    std::vector<Line> m_lines;
    mutable std::map<std::string, std::string> m_asked; // values that conditions asked for
    int m_numbered; // how many numbered parameters are read, from 1
};

/// True if a name is the fact's: the same, or with a number from 1 to `count` in place of a # at
/// the end.
bool isNamed(const std::string& name, const std::string& fact, int count);

/// All values of a parameter as one text: numbers with blanks between them.
std::string valueText(const Parameter& parameter);

/// True if a value says the same as a fact's: words alike, or all numbers alike. One expected
/// number stands for as many as there are.
bool isSameValue(const std::string& value, const std::string& expected);

} // namespace lux
