// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickuserfile.h"

#include <QDir>
#include <QFileInfo>
#include <QObject>
#include <QStringList>

class ScriptEngine;

// Files and folders as scripts see them.

/// A text file: read whole when opened, written whole when closed.
class DzFile : public QObject
{
    Q_OBJECT

public:
    enum AccessMode { ReadOnly = 1, WriteOnly = 2, Append = 4 };
    Q_ENUM(AccessMode)

    explicit DzFile(const QString& path);

    /// False, with the reason in error(), when a file cannot be read.
    Q_INVOKABLE bool open(int mode);
    Q_INVOKABLE bool isOpen() const { return m_mode != 0; }
    /// Writes what was given since opening. False, with the reason in error(), when that fails;
    /// the file is what it was then.
    Q_INVOKABLE bool close();

    /// All that is left to read.
    Q_INVOKABLE QString read();
    /// The next line without its end.
    Q_INVOKABLE QString readLine();
    Q_INVOKABLE QStringList readLines();
    Q_INVOKABLE bool eof() const { return m_place >= m_text.size(); }
    /// False when the file is not open for writing.
    Q_INVOKABLE bool write(const QString& text);
    Q_INVOKABLE bool writeLine(const QString& line) { return write(line + QLatin1Char('\n')); }

    Q_INVOKABLE bool exists() const { return QFileInfo::exists(m_path); }
    Q_INVOKABLE bool remove();
    Q_INVOKABLE QString name() const { return m_path; }
    Q_INVOKABLE QString error() const { return m_error; }

private:
    QString m_path;
    QString m_text;
    int m_place = 0;
    int m_mode = 0;
    QString m_error;
};

/// A file's name and what the system knows of it.
class DzFileInfo : public QObject
{
    Q_OBJECT

public:
    explicit DzFileInfo(const QString& path)
        : m_info(path)
    {
    }

    Q_INVOKABLE bool exists() const { return m_info.exists(); }
    Q_INVOKABLE bool isFile() const { return m_info.isFile(); }
    Q_INVOKABLE bool isDir() const { return m_info.isDir(); }
    Q_INVOKABLE bool isWritable() const { return m_info.isWritable(); }
    Q_INVOKABLE double size() const { return static_cast<double>(m_info.size()); }
    Q_INVOKABLE QString filePath() const { return m_info.filePath(); }
    Q_INVOKABLE QString fileName() const { return m_info.fileName(); }
    /// The name without its last ending, and that ending without the dot.
    Q_INVOKABLE QString baseName() const { return m_info.completeBaseName(); }
    Q_INVOKABLE QString extension() const { return m_info.suffix(); }
    Q_INVOKABLE QString path() const { return m_info.path(); }
    Q_INVOKABLE QString absFilePath() const { return m_info.absoluteFilePath(); }
    Q_INVOKABLE QString absPath() const { return m_info.absolutePath(); }

private:
    QFileInfo m_info;
};

/// A folder.
class DzDir : public QObject
{
    Q_OBJECT

public:
    enum FilterSpec { Dirs = 1, Files = 2 };
    Q_ENUM(FilterSpec)

    explicit DzDir(const QString& path)
        : m_dir(path)
    {
    }

    Q_INVOKABLE bool exists() const { return m_dir.exists(); }
    Q_INVOKABLE QString path() const { return m_dir.path(); }
    Q_INVOKABLE QString dirName() const { return m_dir.dirName(); }
    Q_INVOKABLE QString absPath() const { return m_dir.absolutePath(); }
    Q_INVOKABLE QString filePath(const QString& name) const { return m_dir.filePath(name); }
    Q_INVOKABLE QString absFilePath(const QString& name) const
    {
        return m_dir.absoluteFilePath(name);
    }
    /// Names in the folder, in the order of their characters. `filter` is a pattern such as
    /// "*.sskn", or several with blanks between; `spec` is of Dirs and Files.
    Q_INVOKABLE QStringList entryList(
        const QString& filter = QString(), int spec = Dirs | Files) const;
    /// Makes a folder in this one, with those above it.
    Q_INVOKABLE bool mkpath(const QString& path) const { return m_dir.mkpath(path); }
    Q_INVOKABLE bool cd(const QString& path) { return m_dir.cd(path); }
    Q_INVOKABLE bool cdUp() { return m_dir.cdUp(); }

private:
    QDir m_dir;
};

/// A brick user's network as a file. What fails is an error of the script.
class DzNetworkFile : public QObject
{
    Q_OBJECT

public:
    explicit DzNetworkFile(ScriptEngine* engine)
        : m_engine(engine)
    {
    }

    Q_INVOKABLE void load(const QString& path, IDzBrickUser* user);
    Q_INVOKABLE void save(const QString& path, IDzBrickUser* user);
    Q_INVOKABLE QStringList getWarnings() const { return m_file.getWarnings(); }

private:
    ScriptEngine* m_engine;
    DzBrickUserFile m_file;
};

/// False, with what is wrong in `error`, for a text that names no file on any system: the system
/// would take what stands before the NUL character for the name.
bool isScriptPath(const QString& path, QString* error);

/// Makes these classes known to scripts.
void defineScriptFiles(ScriptEngine* engine);
