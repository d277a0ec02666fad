// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// Something that a reader or writer could not take or keep as it was, and went on.
struct DzWarning {
    QString place;  ///< where in the file or network; empty for all of it
    QString text;   ///< what is wrong there
    QString remedy; ///< what became of it or what to do; may be empty

    /// "PLACE: TEXT; REMEDY".
    QString toLine() const;
};

/// Warnings in the order in which they were given. A list with a limit does not grow beyond what
/// a person reads, and counts the rest.
class DzWarningList
{
public:
    /// `limit` is the number of warnings that are kept; 0 keeps all.
    explicit DzWarningList(int limit = 0)
        : m_limit(limit)
    {
    }

    void add(const DzWarning& warning);
    void add(const DzWarningList& others);
    void clear();
    /// True when one more would be kept: its text may be expensive.
    bool hasRoom() const { return m_limit == 0 || m_warnings.size() < m_limit; }
    bool isEmpty() const { return m_warnings.isEmpty(); }

    const QVector<DzWarning>& getAll() const { return m_warnings; }
    /// Warnings that were given but not kept.
    int getNumOmitted() const { return m_numOmitted; }
    /// A line for each warning and, when some were not kept, one that says how many.
    QStringList toLines() const;

private:
    QVector<DzWarning> m_warnings;
    int m_limit;
    int m_numOmitted = 0;
};

/// Gathers what is told with dzWarn() or DzApp::warning() in a list while it lives: on this
/// thread, and for the innermost of several. Attributes pass through interfaces that return
/// nothing, so that their readers cannot hand a list on.
class DzWarningScope
{
public:
    /// `list` is not owned and must outlive the scope.
    explicit DzWarningScope(DzWarningList* list);
    ~DzWarningScope();

    /// The list that gathers at present; null when none does.
    static DzWarningList* current();

private:
    Q_DISABLE_COPY(DzWarningScope)

    DzWarningList* m_outer;
};

/// Tells a warning: to the list of the innermost scope, to the application where there is none.
void dzWarn(const DzWarning& warning);

/// Who gets the warnings that no scope gathers; the application sets itself. Null for nobody.
typedef void (*DzWarningReceiver)(const DzWarning& warning);
void dzSetWarningReceiver(DzWarningReceiver receiver);
