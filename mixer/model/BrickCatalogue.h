// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzrefcounteditem.h"
#include "dzshaderbrick.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>

class DzBrickParam;
class IDzBrickUser;

/// An input or output that bricks of a kind have from the start.
struct BrickPin {
    QString name;
    QString label;
    QString typeText;
};

/// A class of bricks that the modules offer.
struct BrickKind {
    QString className;
    QString name;     ///< preferred name
    QString category; ///< path with slashes, as the brick has it
    QString description;
    QVector<BrickPin> inputs; ///< what can be linked, in order
    QVector<BrickPin> outputs;
    /// A brick of the class that stands in no network.
    DzTSharedPointer<DzShaderBrick> sample;

    /// A root has no output: networks end in it.
    bool isRoot() const { return outputs.isEmpty(); }
};

/// All kinds of bricks that the loaded modules offer, found by making each once.
class BrickCatalogue : public QObject
{
    Q_OBJECT

public:
    /// The application's catalogue; made at the first call, and anew when modules were loaded
    /// since. Pointers into it are good until then.
    static const BrickCatalogue* instance();

    /// In order of registration.
    const QVector<BrickKind>& getKinds() const { return m_kinds; }
    /// Null for a class that is no brick or that no module offers.
    const BrickKind* find(const QString& className) const;

    /// What limits a search.
    struct Filter {
        /// Only bricks of which this holds, if it is there.
        std::function<bool(const DzShaderBrick* sample)> accepts;
        /// Only bricks that this user takes.
        const IDzBrickUser* user = nullptr;
    };
    /// Kinds in which every word of `text` is found, best first: names that begin so, words of the
    /// name, parts of it, then categories. Without text all, in order of registration.
    QVector<const BrickKind*> search(const QString& text, const Filter& filter) const;
    /// The first parameter of the brick that can be linked with `pin`; null when there is none.
    static DzBrickParam* findFitting(const DzShaderBrick* brick, DzBrickParam* pin);

    /// Class names of registered brick actions that no brick lists, in order of registration.
    const QStringList& getUnlistedActions() const { return m_unlistedActions; }

    /// Type of drag-and-drop data that carries a class name, as UTF-8 text.
    static QString mimeType();

private:
    BrickCatalogue();

    void addKind(DzShaderBrick* sample, const QString& className);

    QVector<BrickKind> m_kinds;
    QStringList m_unlistedActions;
    int m_factoryCount = 0;
};
