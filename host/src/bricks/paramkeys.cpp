// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "paramkeys.h"

#include "brickaccess.h"

#include <algorithm>

namespace {

/// Up to this many parameters a search is cheaper than an index.
const int manyParams = 16;

QString numberedKey(const QString& name, int number)
{
    return name + QLatin1Char('#') + QString::number(number);
}

/// A name as a file has it: halves of characters are lost there.
QString inFile(const QString& name)
{
    const auto isSurrogate = [](QChar c) { return c.isSurrogate(); };
    return std::any_of(name.begin(), name.end(), isSurrogate) ? QString::fromUtf8(name.toUtf8())
                                                              : name;
}

} // namespace

ParamKeys::ParamKeys(const DzShaderBrick* brick)
    : m_isIndexed(brick->getNumParameters() > manyParams)
{
    const int count = brick->getNumParameters();
    m_entries.reserve(count);
    for (int i = 0; i < count; ++i) {
        DzBrickParam* param = brick->getParameter(i);
        if (DzBrickParam::Access::isRenamed(param))
            m_areOriginal = false;
        add(param->getArg(0), param);
    }
}

ParamKeys ParamKeys::original(const DzShaderBrick* brick)
{
    // Mostly nothing was renamed.
    const ParamKeys now(brick);
    if (now.areOriginal())
        return now;
    typedef DzBrickParam::Access Access;
    struct Made {
        bool isCustom;
        DzBrickParam* param;
    };
    QVector<Made> made;
    made.reserve(brick->getNumParameters());
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* param = brick->getParameter(i);
        made.append(Made { Access::isCustom(param), param });
    }
    // A fresh brick has the parameters of its class first, then those that its attributes name.
    std::sort(made.begin(), made.end(), [](const Made& a, const Made& b) {
        return a.isCustom != b.isCustom ? b.isCustom
                                        : Access::serial(a.param) < Access::serial(b.param);
    });
    ParamKeys keys;
    keys.m_isIndexed = made.size() > manyParams;
    keys.m_entries.reserve(made.size());
    for (const Made& entry : qAsConst(made))
        keys.add(entry.isCustom ? entry.param->getArg(0) : Access::originalArg(entry.param),
            entry.param);
    return keys;
}

void ParamKeys::add(const QString& name, DzBrickParam* param)
{
    const QString plain = inFile(name);
    QString key = plain;
    if (find(key)) {
        m_areOriginal = false;
        int& number = m_lastNumbers[plain];
        number = qMax(number, 1);
        do {
            key = numberedKey(plain, ++number);
        } while (find(key));
    }
    m_entries.append(Entry { key, param });
    if (m_isIndexed) {
        m_byKey.insert(key, param);
        m_byParam.insert(param, key);
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
    const QString name = inFile(param->getArg(0));
    if (name.contains(QLatin1Char('#')))
        return ParamKeys(brick).keyOf(param);
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        const DzBrickParam* other = brick->getParameter(i);
        if (other != param && inFile(other->getArg(0)).startsWith(name))
            return ParamKeys(brick).keyOf(param);
    }
    return name;
}
