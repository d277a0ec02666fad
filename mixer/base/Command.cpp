// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"

CommandKeys::CommandKeys(const char* known)
    : m_known(known)
{
}

CommandKeys::CommandKeys(QKeySequence::StandardKey standard, const char* known)
    : m_standard(standard)
    , m_known(known)
{
}

QList<QKeySequence> CommandKeys::toList() const
{
    QList<QKeySequence> keys = QKeySequence::keyBindings(m_standard);
    const QList<QKeySequence> known
        = QKeySequence::listFromString(QString::fromLatin1(m_known), QKeySequence::PortableText);
    for (const QKeySequence& key : known)
        if (!keys.contains(key))
            keys.append(key);
    return keys;
}
