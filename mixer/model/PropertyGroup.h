// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickstate.h"
#include "dzproperty.h"
#include "dzundostack.h"

#include <QPointer>
#include <QString>
#include <QVector>
#include <memory>
#include <vector>

class DzShaderBrick;

/// Properties of the same name, class and items, one of each selected brick, that are shown and
/// changed as one.
class PropertyGroup
{
public:
    explicit PropertyGroup(const QVector<DzProperty*>& properties);

    /// The first that is still there; null when all are gone.
    DzProperty* getFirst() const;
    template <typename T>
    T* firstAs() const
    {
        return qobject_cast<T*>(getFirst());
    }
    QVector<DzProperty*> getAll() const;

    /// What users call it: with the input's name where that has several values.
    QString getLabel() const;
    /// Label, name, range and default, a line each.
    QString describe() const;
    /// True when values, or maps, differ.
    bool isMixed() const;
    bool isLocked() const;   ///< any of them
    bool isDefault() const;  ///< all of them
    bool isMappable() const; ///< all of them
    /// The file of the map that all have, empty for none or different ones.
    QString getMap() const;
    bool isMapped() const; ///< any of them
    /// The brick that feeds the input of the first; null when none does.
    DzShaderBrick* getSource() const;

    // Each is one undo step, and leaves locked properties as they are.
    /// False with the reason in `error` when the text is not a value for them.
    bool setText(const QString& text, QString* error);
    void setNumber(double value);
    void setMap(const QString& file);
    void reset(const QString& caption = QString());
    void lock(bool locked);
    /// What the last change did to the inputs of bricks, as a sentence; empty for nothing.
    QString getNotice() const { return m_notice; }

private:
    friend class PropertySession;

    QVector<QPointer<DzProperty>> m_properties;
    QString m_notice;
};

/// The properties that all of the bricks have, in the order of the first.
std::vector<PropertyGroup> commonProperties(const QVector<DzShaderBrick*>& bricks);

/// Makes one undo step of all changes of a group while it lives, such as a drag or a dialog.
///
/// Changing a brick's own properties may make and remove inputs; of these bricks the whole state is
/// kept.
class PropertySession
{
public:
    explicit PropertySession(const PropertyGroup& group);
    /// Without accept() the changes are taken back.
    ~PropertySession();

    void accept(const QString& caption);
    /// After accept(): what the step did to the inputs of bricks, as a sentence; empty for nothing.
    QString getNotice() const { return m_notice; }

private:
    PropertySession(const PropertySession&) = delete;
    PropertySession& operator=(const PropertySession&) = delete;

    struct Kept;

    DzUndoStackHold m_hold;
    std::vector<Kept> m_kept;
    /// Held while there are kept states: their items stand for all that happens.
    std::unique_ptr<DzUndoStackLock> m_lock;
    QString m_notice;
};

/// Locks or unlocks every value of the bricks, as one step.
void lockAllValues(const QVector<DzShaderBrick*>& bricks, bool locked);
/// Sets every value of the bricks to its default, as one step.
void resetAllValues(const QVector<DzShaderBrick*>& bricks);
