// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProblemFinder.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

class MixerDocument;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

/// What is wrong in a document's network, a line each; each leads to its brick.
class ProblemsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ProblemsPanel(QWidget* parent = nullptr);

    /// Shows this document's problems; null for none. Not owned.
    void setDocument(MixerDocument* document);
    const QVector<Problem>& getProblems() const { return m_problems; }
    /// Looks now rather than after a moment of rest.
    void updateNow();

signals:
    void brickActivated(DzShaderBrick* brick);
    void problemsChanged();

private:
    void scheduleUpdate();
    void activate(const QTreeWidgetItem* item);

    QPointer<MixerDocument> m_document;
    QVector<Problem> m_problems;
    QTimer m_update;
    QTreeWidget* m_list;
    QLabel* m_none;
};
