// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// A class identifier in its text form; the case of its letters is kept.
class DzGuid
{
public:
    DzGuid() {}

    /// Reads "8-4-4-4-12" hexadecimal digits, with or without braces; null when of another form.
    static DzGuid fromString(const QString& text);

    bool isNull() const { return m_text.isEmpty(); }
    /// The digits with the case in which they were given, without braces.
    QString toString() const { return m_text; }

    /// Identifiers are numbers: they compare without regard to the case of their letters.
    bool operator==(const DzGuid& other) const;
    bool operator!=(const DzGuid& other) const { return !(*this == other); }

private:
    QString m_text;
};
