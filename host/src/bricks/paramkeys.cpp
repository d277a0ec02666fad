// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "paramkeys.h"

#include "dzbrickparam.h"
#include "dzshaderbrick.h"

namespace {

/// Up to this many parameters a search is cheaper than an index.
const int manyParams = 16;

QString numberedKey(const QString& name, int number)
{
    return name + QLatin1Char('#') + QString::number(number);
}

} // namespace

ParamKeys::ParamKeys(const DzShaderBrick* brick)
    : m_isIndexed(brick->getNumParameters() > manyParams)
{
    const int count = brick->getNumParameters();
    m_entries.reserve(count);
    QHash<QString, int> lastNumbers;
    for (int i = 0; i < count; ++i) {
        DzBrickParam* param = brick->getParameter(i);
        QString key = param->getArg(0);
        if (find(key)) {
            const QString name = key;
            int& number = lastNumbers[name];
            number = qMax(number, 1);
            do {
                key = numberedKey(name, ++number);
            } while (find(key));
        }
        m_entries.append(Entry { key, param });
        if (m_isIndexed) {
            m_byKey.insert(key, param);
            m_byParam.insert(param, key);
        }
    }
}

DzBrickParam* ParamKeys::find(const QString& key) const
{
    if (m_isIndexed)
        return m_byKey.value(key);
    for (const Entry& entry : m_entries)
        if (entry.key == key)
            return entry.param;
    return nullptr;
}

QString ParamKeys::keyOf(const DzBrickParam* param) const
{
    if (m_isIndexed)
        return m_byParam.value(param);
    for (const Entry& entry : m_entries)
        if (entry.param == param)
            return entry.key;
    return QString();
}

QString ParamKeys::keyOf(const DzShaderBrick* brick, const DzBrickParam* param)
{
    // Equal names are rare: without one the key is the name.
    const QString name = param->getArg(0);
    if (name.contains(QLatin1Char('#')))
        return ParamKeys(brick).keyOf(param);
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        const DzBrickParam* other = brick->getParameter(i);
        if (other != param && other->getArg(0).startsWith(name))
            return ParamKeys(brick).keyOf(param);
    }
    return name;
}
