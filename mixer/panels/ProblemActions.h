// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProblemFinder.h"

#include <QObject>
#include <QPointer>

class DzBrickParam;
class MixerDocument;
class QMenu;
class QWidget;

/// What users can do about the problems of the network that is shown, wherever they see them. Each
/// is one undo step.
class ProblemActions : public QObject
{
    Q_OBJECT

public:
    /// Dialogs open over the widget, which owns this.
    explicit ProblemActions(QWidget* parent);

    /// The document and all its problems. Not owned.
    void setProblems(MixerDocument* document, const QVector<Problem>& problems);
    const QVector<Problem>& getProblems() const { return m_problems; }

    /// Does what one of the problem's remedies says; asks for a file where one is needed.
    void run(const Problem& problem, const lux::Remedy& remedy);
    /// Does the same for all problems of this sort.
    void runAll(const Problem& problem, const lux::Remedy& remedy);
    /// How many that would be.
    int countAlike(const Problem& problem, const lux::Remedy& remedy) const;
    /// Adds all that can be done about a problem.
    void fillMenu(QMenu* menu, const Problem& problem);

signals:
    /// The user is to choose what feeds this input.
    void linkWanted(DzBrickParam* input);
    /// The user does not want to be told of these again.
    void silenced(const QString& rule);
    /// Why something was not done, in one line.
    void message(const QString& text);

private:
    void apply(const QVector<Problem>& problems, const lux::Remedy& remedy, const QString& file);
    QString askForFile(const Problem& problem);

    QPointer<MixerDocument> m_document;
    QVector<Problem> m_problems;
    QWidget* m_parent;
};
