// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

class MixerDocument;
class QUndoCommand;

/// Tells which networks the steps of the one undo stack belong to.
class NetworkSteps : public QObject
{
    Q_OBJECT

public:
    explicit NetworkSteps(QObject* parent = nullptr);

    /// Follows a document from now on; again does no harm.
    void watch(MixerDocument* document);
    /// The network that a step of the stack changed; null when it is gone, or the step changed
    /// none or several.
    MixerDocument* getOwner(int step) const;

signals:
    /// Steps were undone or redone, by a command or a jump. `changed` has the networks that they
    /// changed, the last one last; the caption is that of the last step.
    void ran(const QVector<MixerDocument*>& changed, bool isUndo, const QString& caption);

private slots:
    void documentChanged();
    void indexChanged(int index);

private:
    typedef QVector<QPointer<MixerDocument>> Documents;

    void pushed(int index);
    void remember();

    /// For each step of the stack.
    QVector<Documents> m_owners;
    /// Changed since the stack moved last, and while it runs steps.
    Documents m_changed;
    Documents m_run;
    int m_index = 0;
    /// The step that redoing would run, compared only: pushing puts another in its place.
    const QUndoCommand* m_next = nullptr;
};
