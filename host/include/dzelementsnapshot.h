// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>
#include <QVector>
#include <memory>

class DzElement;
class DzSettings;

/// One difference between two states of an element.
struct DzElementChange {
    enum Kind { Appears, Changes, Vanishes };

    Kind kind;
    QString name;   ///< of the property or data item
    QString label;  ///< of the property; the name of a data item
    QString before; ///< value as a person would type it, with the map; empty for data items
    QString after;
    bool isData; ///< a data item rather than a property
};

/// What an element's properties and data items are at one moment, to be compared with a later one:
/// take it, make a change within a hold of the undo stack, take another, and cancel the hold to
/// know what a command would do without doing it.
class DzElementSnapshot
{
public:
    DzElementSnapshot() {}
    explicit DzElementSnapshot(const DzElement* element);

    /// The differences: what vanishes and what changes in this one's order, then what appears in
    /// the later one's.
    QVector<DzElementChange> changesTo(const DzElementSnapshot& later) const;

private:
    struct Entry {
        QString name;
        QString label;
        QString value;
        QString description; ///< class, path and flags: a change of these is a change too
        bool isData = false;
        std::shared_ptr<const DzSettings> settings; ///< of simple element data
    };

    static QString keyOf(const Entry& entry);
    static bool isSame(const Entry& a, const Entry& b);
    const Entry* find(const Entry& other) const;
    void add(const Entry& entry);

    QVector<Entry> m_entries;
    QHash<QString, int> m_index;
};
