// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ProblemActions.h"

#include "FileField.h"
#include "MixerDocument.h"
#include "Remedies.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

#include <QFileDialog>
#include <QMenu>

ProblemActions::ProblemActions(QWidget* parent)
    : QObject(parent)
    , m_parent(parent)
{
}

void ProblemActions::setProblems(MixerDocument* document, const QVector<Problem>& problems)
{
    m_document = document;
    m_problems = problems;
}

void ProblemActions::run(const Problem& problem, const lux::Remedy& remedy)
{
    if (DzBrickParam* input = inputToLink(problem, remedy)) {
        emit linkWanted(input);
        return;
    }
    QString file;
    if (remedy.action == lux::Remedy::ChooseFile) {
        file = askForFile(problem);
        if (file.isEmpty())
            return;
    }
    apply({ problem }, remedy, file);
}

void ProblemActions::runAll(const Problem& problem, const lux::Remedy& remedy)
{
    apply(alikeOf(problem, remedy, m_problems), remedy, QString());
}

int ProblemActions::countAlike(const Problem& problem, const lux::Remedy& remedy) const
{
    return alikeOf(problem, remedy, m_problems).size();
}

void ProblemActions::apply(
    const QVector<Problem>& problems, const lux::Remedy& remedy, const QString& file)
{
    QString error;
    if (m_document && !applyRemedy(m_document->getEdit(), problems, remedy, file, &error))
        emit message(error);
}

QString ProblemActions::askForFile(const Problem& problem)
{
    // The document may be closed, and the brick deleted, while the dialog is open.
    QFileDialog dialog(m_parent, tr("Choose a File"),
        m_document ? m_document->getFolder() : QString(), imageFilter());
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted || !problem.brick)
        return QString();
    return dialog.selectedFiles().value(0);
}

void ProblemActions::fillMenu(QMenu* menu, const Problem& problem)
{
    for (const lux::Remedy& remedy : problem.remedies) {
        QAction* one = menu->addAction(remedyText(problem, remedy));
        connect(one, &QAction::triggered, this, [=] { run(problem, remedy); });
        const int count = countAlike(problem, remedy);
        if (count < 2)
            continue;
        QAction* all = menu->addAction(tr("Fix All %1 Like This").arg(count));
        all->setObjectName(QStringLiteral("fixAll"));
        connect(all, &QAction::triggered, this, [=] { runAll(problem, remedy); });
    }
    if (problem.rule.isEmpty())
        return;
    menu->addSeparator();
    QAction* never = menu->addAction(tr("Never Tell Me This Again"));
    never->setObjectName(QStringLiteral("never"));
    connect(never, &QAction::triggered, this, [=] { emit silenced(problem.rule); });
}
