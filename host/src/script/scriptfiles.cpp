// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptfiles.h"

#include "dzfilewriter.h"
#include "dzscript.h"
#include "idzbrickuser.h"
#include "scriptengine.h"

#include <QCoreApplication>
#include <QFile>
#include <QScriptContext>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

/// The maker of a class that stands for a path.
template <typename T>
ScriptClasses::Maker pathMaker()
{
    return [](QScriptContext* context, QString* error) -> QObject* {
        const QString path = context->argument(0).toString();
        QString problem;
        if (context->argumentCount() != 1 || !context->argument(0).isString())
            *error = text("a path is wanted");
        else if (!isScriptPath(path, &problem))
            *error = text("argument 1 %1").arg(problem);
        else
            return new T(path);
        return nullptr;
    };
}

} // namespace

bool isScriptPath(const QString& path, QString* error)
{
    if (!path.contains(QChar::Null))
        return true;
    *error = text("contains a NUL character, which no path can");
    return false;
}

DzFile::DzFile(const QString& path)
    : m_path(path)
{
}

bool DzFile::open(int mode)
{
    m_error.clear();
    if (isOpen() || (mode != ReadOnly && mode != WriteOnly && mode != Append)) {
        m_error = isOpen()
            ? text("%1 is open already").arg(m_path)
            : text("%1: open it with DzFile.ReadOnly, WriteOnly or Append").arg(m_path);
        return false;
    }
    m_text.clear();
    m_place = 0;
    QByteArray content;
    const bool isNeeded = mode == ReadOnly || (mode == Append && exists());
    if (isNeeded && !dzReadFile(m_path, DzScript::maximumSize, &content, &m_error))
        return false;
    m_text = QString::fromUtf8(content);
    m_mode = mode;
    return true;
}

bool DzFile::close()
{
    m_error.clear();
    const bool isWritten = m_mode == WriteOnly || m_mode == Append;
    m_mode = 0;
    return !isWritten || dzWriteFile(m_path, m_text.toUtf8(), &m_error);
}

QString DzFile::read()
{
    if (m_mode != ReadOnly)
        return QString();
    const QString rest = m_text.mid(m_place);
    m_place = m_text.size();
    return rest;
}

QString DzFile::readLine()
{
    if (m_mode != ReadOnly || eof())
        return QString();
    const int end = m_text.indexOf(QLatin1Char('\n'), m_place);
    const int stop = end < 0 ? m_text.size() : end;
    QString line = m_text.mid(m_place, stop - m_place);
    m_place = end < 0 ? stop : end + 1;
    if (line.endsWith(QLatin1Char('\r')))
        line.chop(1);
    return line;
}

QStringList DzFile::readLines()
{
    QStringList lines;
    while (m_mode == ReadOnly && !eof())
        lines.append(readLine());
    return lines;
}

bool DzFile::write(const QString& given)
{
    if (m_mode != WriteOnly && m_mode != Append) {
        m_error = text("%1 is not open for writing").arg(m_path);
        return false;
    }
    m_text += given;
    return true;
}

bool DzFile::remove()
{
    QFile file(m_path);
    const bool done = file.remove();
    m_error = done ? QString() : text("cannot remove %1: %2").arg(m_path, file.errorString());
    return done;
}

QStringList DzDir::entryList(const QString& filter, int spec) const
{
    QDir::Filters filters = QDir::NoDotAndDotDot;
    if (spec & Dirs)
        filters |= QDir::Dirs;
    if (spec & Files)
        filters |= QDir::Files;
    QStringList names
        = m_dir.entryList(filter.split(QLatin1Char(' '), Qt::SkipEmptyParts), filters);
    names.sort();
    return names;
}

void DzNetworkFile::load(const QString& path, IDzBrickUser* user)
{
    if (!user)
        m_engine->raise(text("load: a brick user is wanted"));
    else if (!m_file.load(path, user))
        m_engine->raise(m_file.getError());
}

void DzNetworkFile::save(const QString& path, IDzBrickUser* user)
{
    if (!user)
        m_engine->raise(text("save: a brick user is wanted"));
    else if (!m_file.save(path, user))
        m_engine->raise(m_file.getError());
}

void defineScriptFiles(ScriptEngine* engine)
{
    ScriptClasses& classes = engine->classes();
    classes.addClass(&DzFile::staticMetaObject, pathMaker<DzFile>());
    classes.addClass(&DzFileInfo::staticMetaObject, pathMaker<DzFileInfo>());
    classes.addClass(&DzDir::staticMetaObject, pathMaker<DzDir>());
    classes.addClass(&DzNetworkFile::staticMetaObject,
        [engine](QScriptContext* context, QString* error) -> QObject* {
            if (context->argumentCount() == 0)
                return new DzNetworkFile(engine);
            *error = text("it takes no arguments");
            return nullptr;
        });
}
