// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzwarning.h"

#include <QCoreApplication>

namespace {

thread_local DzWarningList* currentList = nullptr;
DzWarningReceiver receiver = nullptr;

} // namespace

QString DzWarning::toLine() const
{
    QString line = place;
    if (!line.isEmpty())
        line += QLatin1String(": ");
    line += text;
    if (!remedy.isEmpty())
        line += QLatin1String("; ") + remedy;
    return line;
}

void DzWarningList::add(const DzWarning& warning)
{
    if (hasRoom())
        m_warnings.append(warning);
    else
        ++m_numOmitted;
}

void DzWarningList::add(const DzWarningList& others)
{
    for (const DzWarning& warning : others.m_warnings)
        add(warning);
    m_numOmitted += others.m_numOmitted;
}

void DzWarningList::clear()
{
    m_warnings.clear();
    m_numOmitted = 0;
}

QStringList DzWarningList::toLines() const
{
    QStringList lines;
    for (const DzWarning& warning : m_warnings)
        lines.append(warning.toLine());
    if (m_numOmitted > 0)
        lines.append(QCoreApplication::translate("DzWarningList", "and %1 more").arg(m_numOmitted));
    return lines;
}

DzWarningScope::DzWarningScope(DzWarningList* list)
    : m_outer(currentList)
{
    currentList = list;
}

DzWarningScope::~DzWarningScope()
{
    currentList = m_outer;
}

DzWarningList* DzWarningScope::current()
{
    return currentList;
}

void dzWarn(const DzWarning& warning)
{
    if (currentList)
        currentList->add(warning);
    else if (receiver)
        receiver(warning);
}

void dzSetWarningReceiver(DzWarningReceiver newReceiver)
{
    receiver = newReceiver;
}
