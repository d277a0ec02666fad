#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Checks that the plug-in's folders stay within what Qt 4.8 and Qt 5.15 both have, in C++14.

Our build takes Qt 5.15 and would not notice; the host's own SDK is Qt 4.8. The list names
what one reaches for by habit, it is not complete.
"""

import re
import sys

from check_common import blank_cpp, includes, is_cpp, line_of, read_text, run, tree_files

FOLDERS = ("plugin/",)

# (pattern, what it is, what to use instead), applied to code without comments and literals.
QT_RULES = [
    (r"\bQStringLiteral\b", "QStringLiteral is Qt 5", "QLatin1String(\"...\")"),
    (r"\bQByteArrayLiteral\b", "QByteArrayLiteral is Qt 5", "QByteArray(\"...\")"),
    (r"\bQSaveFile\b", "QSaveFile is Qt 5",
     "QTemporaryFile beside the target, flush(), then rename"),
    (r"\bQJson\w+", "the QJson classes are Qt 5", "DzSettings, or a script value"),
    (r"\bQStandardPaths\b", "QStandardPaths is Qt 5", "the paths that dzApp offers"),
    (r"\bQCommandLine(?:Parser|Option)\b", "QCommandLineParser is Qt 5",
     "nothing: command lines belong to cli/"),
    (r"\bQRegularExpression\w*", "QRegularExpression is Qt 5", "QRegExp"),
    (r"\bQStringView\b", "QStringView is Qt 5", "const QString& or QStringRef"),
    (r"\bQ_NULLPTR\b", "Q_NULLPTR is Qt 5", "nullptr"),
    (r"\bQ_DECL_(?:OVERRIDE|FINAL|NOTHROW|NOEXCEPT\w*)\b", "this macro is Qt 5",
     "the C++ word itself"),
    (r"\bQ_FALLTHROUGH\b", "Q_FALLTHROUGH is Qt 5", "a comment \"falls through\""),
    (r"\bQ_ENUM(?:_NS)?\b", "Q_ENUM is Qt 5", "Q_ENUMS"),
    (r"\bQ_FLAG(?:_NS)?\b", "Q_FLAG is Qt 5", "Q_FLAGS"),
    (r"\bQ_NAMESPACE\b", "Q_NAMESPACE is Qt 5", "an enumeration in a class, with Q_ENUMS"),
    (r"\bQ_PLUGIN_METADATA\b", "Q_PLUGIN_METADATA is Qt 5", "the module's two exports"),
    (r"\b(?:QOverload\b|qOverload\b|qConstOverload\b|qNonConstOverload\b)",
     "connecting by pointer to member is Qt 5", "SIGNAL(...) and SLOT(...)"),
    (r"\bqAsConst\b", "qAsConst is Qt 5", "a const reference to the container"),
    (r"\bqInfo\b", "qInfo is Qt 5", "dzApp->log(...)"),
    (r"\bqC(?:Debug|Info|Warning|Critical)\b|\bQLoggingCategory\b|\bQ_LOGGING_CATEGORY\b",
     "logging categories are Qt 5", "dzApp->log(...) or dzApp->warning(...)"),
    (r"\bQSignalBlocker\b", "QSignalBlocker is Qt 5", "blockSignals(true), then back"),
    (r"\b(?:QScopeGuard|qScopeGuard)\b", "QScopeGuard is Qt 5", "a small class of your own"),
    (r"\bqEnvironmentVariable\w*", "this function is Qt 5", "qgetenv"),
    (r"\bqUtf(?:8|16)Printable\b", "qUtf8Printable is Qt 5", "text.toUtf8().constData()"),
    (r"\bQRandomGenerator\b", "QRandomGenerator is Qt 5", "qrand or <random>"),
    (r"\bQVersionNumber\b", "QVersionNumber is Qt 5", "DzVersion"),
    (r"\bQ(?:LockFile|StorageInfo|MimeDatabase|MimeType|Collator|TimeZone|UrlQuery"
     r"|FileSelector|DeadlineTimer|OperatingSystemVersion|StringIterator)\b",
     "this class is Qt 5", "what both Qt versions have"),
    (r"\bQ(?:GuiApplication|Window|Screen|OffscreenSurface|OpenGL\w+)\b", "this class is Qt 5",
     "QApplication, QWidget, QDesktopWidget"),
    (r"\bQt::(?:SkipEmptyParts|KeepEmptyParts)\b", "Qt::SkipEmptyParts is Qt 5",
     "QString::SkipEmptyParts"),
    (r"\bQt::(?:endl|flush|hex|dec|oct|left|right|center|fixed|scientific|ws|bom)\b(?=\s*(?:<<|;))",
     "stream manipulators in the Qt namespace are Qt 5", "a \"\\n\" and flush()"),
    (r"\bQString::asprintf\b", "QString::asprintf is Qt 5", "QString().sprintf or arg"),
    (r"\bQByteArray::fromStdString\b", "QByteArray::fromStdString is Qt 5",
     "QByteArray(text.data(), size)"),
    (r"\bQMetaMethod::fromSignal\b", "QMetaMethod::fromSignal is Qt 5",
     "QMetaObject::indexOfSignal"),
    (r"(?:\.|->)toHtmlEscaped\b", "QString::toHtmlEscaped is Qt 5",
     "replace() for &, < and > by hand"),
    (r"(?:\.|->)(?:constFirst|constLast)\b", "constFirst and constLast are Qt 5",
     "first() or last() of a const container"),
    (r"(?:\.|->)(?:keyValueBegin|keyValueEnd|constKeyValueBegin|constKeyValueEnd)\b",
     "key-value iterators are Qt 5", "constBegin() with key() and value()"),
    (r"(?:\.|->)(?:firstKey|lastKey)\s*\(", "QMap::firstKey is Qt 5", "constBegin().key()"),
    (r"(?:\.|->)chopped\s*\(", "chopped is Qt 5", "left(size() - n)"),
    (r"(?:\.|->)swapItemsAt\s*\(", "swapItemsAt is Qt 5", "swap or std::swap"),
    (r"(?:\.|->)setSectionResizeMode\b", "setSectionResizeMode is Qt 5",
     "a view without per-section modes"),
]

CXX_RULES = [
    (r"\bstd\s*::\s*optional\b|\bstd\s*::\s*nullopt\b", "std::optional is C++17",
     "a bool result with an out parameter, or a pointer"),
    (r"\bstd\s*::\s*(?:w|u8|u16|u32)?string_view\b", "std::string_view is C++17",
     "const char* or const QString&"),
    (r"\bstd\s*::\s*variant\b|\bstd\s*::\s*any(?:_cast)?\b", "this class is C++17",
     "QVariant or a class hierarchy"),
    (r"\bstd\s*::\s*(?:byte|filesystem)\b", "this is C++17", "quint8; QFileInfo and QDir"),
    (r"\bstd\s*::\s*(?:to|from)_chars(?:_result)?\b", "std::to_chars is C++17",
     "QByteArray::number or std::snprintf"),
    (r"\bstd\s*::\s*(?:clamp|as_const|apply|invoke|scoped_lock|shared_mutex|void_t|gcd|lcm"
     r"|not_fn|conjunction|disjunction|negation|make_from_tuple|bool_constant)\b",
     "this part of the library is C++17", "qBound, or a few lines of your own"),
    (r"\bstd\s*::\s*(?:size|data|empty)\s*\(", "std::size is C++17", "the container's own size()"),
    (r"\bstd\s*::\s*is_\w+_v\b", "variable templates of type traits are C++17", "::value"),
    (r"\bif\s+constexpr\b", "if constexpr is C++17", "an overload or a plain if"),
    (r"\b(?:if|switch)\s*\([^();{}]*(?:\([^()]*\)[^();{}]*)*;", "an if with initialiser is C++17",
     "a statement before it"),
    (r"\bauto\s*&{0,2}\s*\[", "structured bindings are C++17", "first and second, or named fields"),
    (r"\[\[\s*(?:nodiscard|maybe_unused|fallthrough)\b", "this attribute is C++17",
     "nothing, Q_UNUSED, or a comment"),
    (r"(?<!using )\bnamespace\s+\w+\s*::", "nested namespace definitions are C++17",
     "one namespace inside the other"),
    (r"\btemplate\s*<[^<>]*\bauto\b", "auto template parameters are C++17", "a type parameter"),
    # An inline declaration that reaches its end or initialiser without a parenthesis.
    (r"(?<![\w:])inline\s+(?!namespace\b)(?![^(){};]*\boperator\b)[^(){};=]*[={;]",
     "inline variables are C++17",
     "a function with a static inside, or a definition in the source"),
]

CXX17_HEADERS = {
    "any", "charconv", "execution", "filesystem", "memory_resource", "optional", "string_view",
    "variant",
}

QT_MODULES = re.compile(
    r"Qt(?:Core|Gui|Widgets|Script|Network|Test|Xml|Sql|Svg|OpenGL|Concurrent|PrintSupport)$")
QT5_HEADERS = {"QtMath": "<qmath.h>"}

# A pointer to member as an argument, or a lambda's introducer where an argument begins.
CALLS = re.compile(r"\b(connect|disconnect|singleShot)\s*\(")
POINTER_TO_MEMBER = re.compile(
    r"(?:^|[,(])\s*&\s*(?:[A-Za-z_]\w*\s*(?:<[^<>;]*>)?\s*::\s*)+\w+\b(?!\s*(?:\(|::))")
LAMBDA = re.compile(r"(?:^|[,(])\s*\[")


def compiled(rules):
    return [(re.compile(pattern), what, instead) for pattern, what, instead in rules]


RULES = compiled(QT_RULES + CXX_RULES)


def arguments_of(code, start):
    """The text between the parenthesis at start and the one that closes it."""
    depth = 0
    for position in range(start, len(code)):
        if code[position] == "(":
            depth += 1
        elif code[position] == ")":
            depth -= 1
            if depth == 0:
                return code[start + 1:position]
    return code[start + 1:]


def check_text(text):
    """(line, message) for each finding in the text of one file."""
    findings = []
    for line, name, _ in includes(text):
        first, slash, rest = name.partition("/")
        if slash and re.match(r"Qt[A-Z]\w*$", first):
            findings.append((line, f"<{name}> names a module; classes move between modules: "
                                   f"use <{rest}>"))
        elif QT_MODULES.match(name):
            findings.append((line, f"<{name}> is a whole module; modules differ between the "
                                   "versions: include the classes"))
        elif name in QT5_HEADERS:
            findings.append((line, f"<{name}> is Qt 5: use {QT5_HEADERS[name]}"))
        elif name in CXX17_HEADERS:
            findings.append((line, f"<{name}> is C++17: use what C++14 and Qt 4.8 have"))

    # Without the include lines, whose names are judged above.
    code = re.sub(r"(?m)^[ \t]*#[ \t]*include\b[^\n]*", "", blank_cpp(text))
    for pattern, what, instead in RULES:
        for match in pattern.finditer(code):
            findings.append((line_of(code, match.start()), f"{what}: use {instead}"))
    for match in CALLS.finditer(code):
        line = line_of(code, match.start())
        call = match.group(1)
        arguments = arguments_of(code, match.end() - 1)
        if call == "singleShot":
            wanted = "singleShot(ms, object, SLOT(...))"
        else:
            wanted = "SIGNAL(...) and SLOT(...)"
        if POINTER_TO_MEMBER.search(arguments):
            findings.append((line, f"{call} by pointer to member is Qt 5: use {wanted}"))
        if LAMBDA.search(arguments):
            findings.append((line, f"{call} to a lambda is Qt 5: use a slot, {wanted}"))
    return sorted(set(findings))


def check(root):
    findings = []
    for path in tree_files(root):
        if is_cpp(path) and path.startswith(FOLDERS):
            text = read_text(root / path)
            if text is not None:
                findings += [f"{path}:{line}: {message}" for line, message in check_text(text)]
    return findings


if __name__ == "__main__":
    sys.exit(run(check, "Checks that the plug-in's folders stay within Qt 4.8 and C++14."))
