// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>
#include <QVector>

class DzBrickParam;
class DzShaderBrick;

/// The keys of a brick's parameters in a file: a parameter's argument name, with "#2", "#3", …
/// for the later ones of equal names. Names are equal if a file cannot tell them apart.
class ParamKeys
{
public:
    /// Numbered in parameter order.
    explicit ParamKeys(const DzShaderBrick* brick);
    /// The keys that the parameters have, or would have, on a fresh brick of the same attributes:
    /// names of before any renaming, numbered in the order of making.
    static ParamKeys original(const DzShaderBrick* brick);

    /// True when these are the original keys too.
    bool areOriginal() const { return m_areOriginal; }
    int size() const { return m_entries.size(); }
    DzBrickParam* param(int index) const { return m_entries.at(index).param; }
    QString key(int index) const { return m_entries.at(index).key; }
    /// The parameter with this key, null when there is none.
    DzBrickParam* find(const QString& key) const;
    QString keyOf(const DzBrickParam* param) const;
    /// The same for one parameter of a brick, without the keys of all others.
    static QString keyOf(const DzShaderBrick* brick, const DzBrickParam* param);

private:
    ParamKeys() {}
    void add(const QString& name, DzBrickParam* param);

    struct Entry {
        QString key;
        DzBrickParam* param;
    };

    QVector<Entry> m_entries;
    /// The indexes are filled only for bricks with so many parameters that searching costs more.
    bool m_isIndexed = false;
    bool m_areOriginal = true;
    QHash<QString, int> m_lastNumbers;
    QHash<QString, DzBrickParam*> m_byKey;
    QHash<const DzBrickParam*, QString> m_byParam;
};
