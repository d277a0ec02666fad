// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "paramkeys.h"

#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <QSet>

namespace {

const int manyParams = 16;

} // namespace

ParamKeys::ParamKeys(const DzShaderBrick* brick)
{
    const int count = brick->getNumParameters();
    m_entries.reserve(count);
    QHash<QString, int> lastNumbers;
    QSet<QString> taken;
    for (int i = 0; i < count; ++i) {
        DzBrickParam* param = brick->getParameter(i);
        const QString name = param->getArg(0);
        QString key = name;
        while (taken.contains(key)) {
            int& number = lastNumbers[name];
            number = number == 0 ? 2 : number + 1;
            key = QStringLiteral("%1#").arg(name) + QString::number(number);
        }
        taken.insert(key);
        m_entries.append(Entry { key, param });
    }
    if (count <= manyParams)
        return;
    for (const Entry& entry : qAsConst(m_entries)) {
        m_byKey.insert(entry.key, entry.param);
        m_byParam.insert(entry.param, entry.key);
    }
}

DzBrickParam* ParamKeys::find(const QString& key) const
{
    if (!m_byKey.isEmpty())
        return m_byKey.value(key);
    for (const Entry& entry : m_entries)
        if (entry.key == key)
            return entry.param;
    return nullptr;
}

QString ParamKeys::keyOf(const DzBrickParam* param) const
{
    if (!m_byParam.isEmpty())
        return m_byParam.value(param);
    for (const Entry& entry : m_entries)
        if (entry.param == param)
            return entry.key;
    return QString();
}
