// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// What a file holds. Layers above may have kinds of their own: any other text is one.
namespace DzFileKind {
inline QString network()
{
    return QStringLiteral("network");
}
inline QString scene()
{
    return QStringLiteral("scene");
}
inline QString script()
{
    return QStringLiteral("script");
}
} // namespace DzFileKind

/// A row of the table of file formats.
struct DzFileFormat {
    QString kind;
    QString title;        ///< what dialogs call such files: plural, with a capital letter
    QStringList suffixes; ///< in lower case and without dots; the first written one is the usual
    bool reads;
    bool writes;
};

/// The file formats that the programs know: the one place that dialogs, dropped and recent files,
/// command lines and help ask.
///
/// Networks are in the table as soon as a module offers a brick user that says what their files
/// are called. Suffixes are compared without regard to case.
class DzFileFormats
{
public:
    enum Use { Reading, Writing };

    /// All rows, the host's own first, then those of modules, then those added.
    static QVector<DzFileFormat> getAll();
    /// Adds a row. One that has a kind and suffixes that are there already changes nothing.
    static void add(const DzFileFormat& format);

    /// The kind that a file's name speaks of; empty for names that are in no row.
    static QString getKind(const QString& path);
    /// True when the name is one of files of this kind that can be read or written.
    static bool isUsable(const QString& path, const QString& kind, Use use);

    /// The suffixes of these kinds, in the order of `kinds` and of the table.
    static QStringList getSuffixes(const QStringList& kinds, Use use);
    /// The suffix that a new file of this kind gets; empty when none can be written.
    static QString getUsualSuffix(const QString& kind);
    /// What a file dialog offers: "Networks and scenes (*.abc *.def);;All files (*)".
    static QString getDialogFilter(const QStringList& kinds, Use use);
    /// The suffixes as help texts list them: ".abc, .def".
    static QString getSuffixText(const QStringList& kinds, Use use);
};
