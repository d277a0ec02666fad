// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Finding.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class QByteArray;

namespace lux {

/// The three name spaces of textures.
enum class TextureSpace { Float, Color, Fresnel };
constexpr int textureSpaceCount = 3;

/// "float", "color", "fresnel".
std::string_view spaceWord(TextureSpace space);
bool findSpace(std::string_view word, TextureSpace* space);

/// One form that a parameter can be given in.
struct Form {
    enum Meaning { Plain, TextureName, MaterialName };

    ParameterType type = ParameterType::Unknown;
    Meaning meaning = Plain;
    TextureSpace space = TextureSpace::Float; ///< of a texture's name
    std::string words;                        ///< the list that a string is one of; may be empty
};

/// What another parameter must be for something to hold.
struct Condition {
    enum Relation { Is, IsNot, IsBelow };

    std::string parameter;
    Relation relation = Is;
    std::vector<std::string> values;
};

/// What is said when a fact applies.
struct FactText {
    QString rule;
    Severity severity = Severity::Ignored;
    bool isQuiet = false;
    QString says;
    QString advice;
    QVector<Remedy> remedies;
    QString source;
};

/// A parameter that a type reads. A name that ends in # stands for that name with a number.
struct ParameterFact {
    std::string name;
    std::vector<Form> forms;
    std::string standard; ///< the renderer's own value, if known
    std::vector<Condition> conditions;
    QString source;
};

/// A line that is written and not read.
struct UnreadFact {
    ParameterType type = ParameterType::Unknown;
    std::string name;
    std::string quietAt; ///< where nothing is lost: a value, "*" for any, empty for none
    FactText text;
};

/// A parameter that must not be missing.
struct NeedFact {
    std::string parameter;
    int atLeast = 1;    ///< values
    bool stops = false; ///< nothing else of the statement is read without it
    FactText text;
};

/// A value that does not do what its name says.
struct ValueFact {
    enum Test { Always, IsValue, IsNotValue, IsBelow, HasZero, IsMissing, IsGiven };

    std::string parameter;
    ParameterType type = ParameterType::Unknown; ///< Unknown: any
    Test test = Always;
    std::string value;
    std::vector<Condition> conditions;
    FactText text;
};

/// All that is known of one kind of thing.
struct TypeFacts {
    bool isKnown = false;
    bool isOpen = false; ///< it reads more than what is known
    std::vector<ParameterFact> parameters;
    std::vector<const UnreadFact*> unread;
    std::vector<const NeedFact*> needs;
    std::vector<const ValueFact*> values;
    const FactText* unknown = nullptr; ///< what to say of a type that does not exist
};

/// What one version of a renderer does with a text: a table that is data, not code.
class RendererFacts
{
public:
    /// What LuxRender does, and where LuxCore differs. Read once, from within the program.
    static const RendererFacts& renderer();
    static const RendererFacts& portability();

    /// Reads a table; ends the program if it is not one.
    explicit RendererFacts(const QByteArray& json);
    ~RendererFacts();

    QString name() const { return m_name; }
    /// The facts of a kind: "material", "volume", "shape", "float texture" and so on, with the
    /// renderer's word. Of an unknown word there is what holds for all.
    const TypeFacts& type(const std::string& family, const std::string& word) const;
    /// All kinds that the table has, as "family word".
    std::vector<std::string> typeNames() const;

    const std::vector<std::string>& words(const std::string& list) const;
    /// What to say of a word that is not in a list.
    const FactText& unknownWord(const std::string& list) const;
    /// What to say by a rule that the check itself applies.
    const FactText& general(const char* rule) const;
    double limit(const char* what) const;
    /// The values at which nothing is lost if this line is not read: fresh ones, and those that
    /// change nothing.
    std::vector<std::string> quietWhenUnread(const std::string& parameter) const;

private:
    class Loader;

    QString m_name;
    std::map<std::string, TypeFacts> m_types;
    TypeFacts m_none;
    std::vector<std::unique_ptr<UnreadFact>> m_unread;
    std::vector<std::unique_ptr<NeedFact>> m_needs;
    std::vector<std::unique_ptr<ValueFact>> m_values;
    std::map<std::string, FactText> m_unknownTypes;
    std::map<std::string, FactText> m_unknownWords;
    std::map<std::string, FactText> m_general;
    std::map<std::string, std::vector<std::string>> m_words;
    std::map<std::string, double> m_limits;
    std::map<std::string, std::vector<std::string>> m_quietWhenUnread;
};

} // namespace lux
