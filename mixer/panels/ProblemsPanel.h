// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProblemFinder.h"
#include "RendererFindings.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

class MixerDocument;
class ProblemActions;
class QLabel;
class QTreeWidget;
class QToolButton;
class QTreeWidgetItem;

/// What is wrong in a document's network, and what the renderer will do with it that its user may
/// not expect, a line each; each leads to its brick, and to what can be done at once.
class ProblemsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ProblemsPanel(QWidget* parent = nullptr);

    /// Shows this document's problems; null for none. Not owned.
    void setDocument(MixerDocument* document);
    const QVector<Problem>& getProblems() const { return m_problems; }
    /// Looks now rather than after a moment of rest; problemsChanged() tells when it is done.
    void updateNow();
    /// Looks now, and waits until it is done.
    void updateAllNow();
    ProblemActions* getActions() const { return m_actions; }
    /// Rules of problems that are not told.
    void setSilencedRules(const QStringList& rules);

signals:
    void brickActivated(DzShaderBrick* brick);
    void problemsChanged();
    void silencedRulesChanged(const QStringList& rules);

private:
    void scheduleUpdate();
    void activate(const QTreeWidgetItem* item, int column);
    void openMenu(const QPoint& place);
    void silence(const QString& rule);
    void gather();
    void fillList();

    QPointer<MixerDocument> m_document;
    QVector<Problem> m_found; ///< by looking at the network
    QVector<Problem> m_problems;
    QStringList m_silenced;
    QTimer m_update;
    RendererFindings m_renderer;
    ProblemActions* m_actions;
    QTreeWidget* m_list;
    QLabel* m_none;
    QToolButton* m_tellAll;
};
