// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QtGlobal>

/// A version of four 16-bit numbers.
class DzVersion
{
public:
    DzVersion() {}
    DzVersion(quint16 major, quint16 minor, quint16 revision, quint16 build);

    /// Reads "a.b.c.d" (missing numbers are 0); an invalid version when the text is not of that
    /// form.
    static DzVersion fromString(const QString& text);

    quint16 getMajorVersion() const { return part(48); }
    quint16 getMinorVersion() const { return part(32); }
    quint16 getRevisionNumber() const { return part(16); }
    quint16 getBuildNumber() const { return part(0); }
    /// All four numbers in one, in order of significance.
    quint64 getVersionNumber() const { return m_number; }
    /// The first two numbers, such as "4.5".
    QString getVersionString() const;
    /// All four numbers, such as "4.5.0.100".
    QString getLongVersionString() const;
    bool isValid() const { return m_number != 0; }

    bool operator==(const DzVersion& other) const { return m_number == other.m_number; }
    bool operator!=(const DzVersion& other) const { return m_number != other.m_number; }
    bool operator<(const DzVersion& other) const { return m_number < other.m_number; }

private:
    quint16 part(int shift) const { return static_cast<quint16>(m_number >> shift); }

    quint64 m_number = 0;
};

/// The SDK version that this host offers to modules.
#define DZ_SDK_VERSION DzVersion(4, 5, 0, 100)
