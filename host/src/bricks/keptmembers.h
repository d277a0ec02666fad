// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "settingstree.h"

#include <QSet>

#include <functional>
#include <memory>

class DzBrickParam;
class DzProperty;

/// Where in a file something stands. The text is made only when a message needs it.
struct FilePlace {
    QString brick;    ///< empty for what stands in no brick's parameters
    QString name;     ///< of the parameter or property
    QString property; ///< empty for the parameter, or for its only property

    QString text() const
    {
        const QString place = brick.isEmpty() ? name : brick + QLatin1Char('/') + name;
        return property.isEmpty() ? place : place + QLatin1Char('/') + property;
    }
};

/// Keeps what a file holds and nobody understands, so that it is written back in its place.
///
/// A kept tree is a copy of the tree that was read, in which a member that is understood is only
/// a place in the order, and any other member stands in full. Writing starts from a copy of the
/// kept tree, sets the members that there are now, and ends by dropping the places that stayed
/// unused.
class DzKeptMembers
{
public:
    typedef std::function<bool(const QString& key)> KeyTest;

    /// What to keep of `read`; null when everything in it is understood.
    static std::unique_ptr<SettingsTree> remember(
        const SettingsTree& read, const KeyTest& understood);
    /// The same where understood members that `isTree` accepts have to be trees. One that is none
    /// is named in a warning and kept under another key, since its own is written anew; `place`
    /// names the tree that was read.
    static std::unique_ptr<SettingsTree> rememberTrees(const SettingsTree& read,
        const KeyTest& understood, const KeyTest& isTree, const QString& place);

    /// Starts writing a tree: fills `out` with what was kept, which may be null.
    static void begin(SettingsTree* out, const SettingsTree* kept);
    /// Ends writing it.
    static void end(SettingsTree* out);
    /// True when `key` is a member of the file that is still to be written.
    static bool isPlace(const SettingsTree& out, const QString& key);

    /// Reads a property from its members in a file; `place` names it in warnings.
    static void readProperty(
        DzProperty* property, const SettingsTree& members, const FilePlace& place);
    /// Writes a property: its value always, other members where they differ from those of `fresh`
    /// (which may be null) or where the file that it was read from has them.
    static void writeProperty(
        SettingsTree* out, const DzProperty* property, const DzProperty* fresh);

    /// Reads label and properties of a parameter. `others` are members that were read already.
    static void readParameter(DzBrickParam* param, const SettingsTree& members,
        const QSet<QString>& others, const FilePlace& place);
    /// Writes a parameter; `fresh` is the same one of a fresh brick, null when there is none.
    static void writeParameter(
        SettingsTree* out, const DzBrickParam* param, const DzBrickParam* fresh);
};
