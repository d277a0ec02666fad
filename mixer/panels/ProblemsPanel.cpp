// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ProblemsPanel.h"

#include "BrickAppearance.h"
#include "BrickHelp.h"
#include "LineIcon.h"
#include "MixerDocument.h"
#include "ProblemActions.h"
#include "Remedies.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QSet>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

/// Milliseconds of rest before the network is looked through.
const int restTime = 120;

enum Column { BrickColumn, ProblemColumn, RemedyColumn };

QString captionOf(const DzShaderBrick* brick)
{
    return brick ? BrickAppearance::titleText(brick) : QString();
}

} // namespace

ProblemsPanel::ProblemsPanel(QWidget* parent)
    : QWidget(parent)
    , m_actions(new ProblemActions(this))
    , m_list(new QTreeWidget)
    , m_none(new QLabel(tr("No problems.")))
    , m_tellAll(new QToolButton)
{
    m_list->setColumnCount(3);
    m_list->setHeaderLabels({ tr("Brick"), tr("Problem"), tr("Remedy") });
    m_list->setRootIsDecorated(false);
    m_list->setAlternatingRowColors(true);
    m_list->setUniformRowHeights(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setAccessibleName(tr("Problems"));
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(ProblemColumn, QHeaderView::Stretch);
    m_list->setColumnWidth(BrickColumn, 170);
    m_list->setColumnWidth(RemedyColumn, 210);
    m_none->setAlignment(Qt::AlignCenter);
    m_none->setForegroundRole(QPalette::PlaceholderText);
    m_tellAll->setText(tr("Tell me again what I did not want to be told"));
    m_tellAll->setAutoRaise(true);
    m_tellAll->setObjectName(QStringLiteral("tellAll"));
    m_tellAll->hide();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    layout->addWidget(m_none);
    layout->addWidget(m_tellAll, 0, Qt::AlignRight);
    m_list->hide();

    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &ProblemsPanel::updateNow);
    connect(&m_renderer, &RendererFindings::changed, this, &ProblemsPanel::gather);
    connect(m_list, &QTreeWidget::itemClicked, this, &ProblemsPanel::activate);
    connect(m_list, &QTreeWidget::itemActivated, this,
        [this](const QTreeWidgetItem* item) { activate(item, BrickColumn); });
    connect(m_list, &QWidget::customContextMenuRequested, this, &ProblemsPanel::openMenu);
    connect(m_actions, &ProblemActions::silenced, this, &ProblemsPanel::silence);
    connect(m_tellAll, &QToolButton::clicked, this, [this] {
        setSilencedRules(QStringList());
        emit silencedRulesChanged(m_silenced);
    });
}

void ProblemsPanel::setDocument(MixerDocument* document)
{
    if (m_document == document)
        return;
    if (m_document)
        m_document->disconnect(this);
    m_document = document;
    if (document) {
        connect(document, &MixerDocument::structureChanged, this, &ProblemsPanel::scheduleUpdate);
        connect(document, &MixerDocument::propertyChanged, this, &ProblemsPanel::scheduleUpdate);
        connect(document, &MixerDocument::titleChanged, this, &ProblemsPanel::scheduleUpdate);
    }
    scheduleUpdate();
}

void ProblemsPanel::scheduleUpdate()
{
    m_update.start(restTime);
}

void ProblemsPanel::updateNow()
{
    m_update.stop();
    m_found = m_document ? findProblems(m_document->getUser(), m_document->getFolder())
                         : QVector<Problem>();
    // Both kinds are shown together, so that lists and badges change once.
    m_renderer.check(m_document ? m_document->getUser() : nullptr);
}

void ProblemsPanel::updateAllNow()
{
    updateNow();
    m_renderer.finish();
}

void ProblemsPanel::setSilencedRules(const QStringList& rules)
{
    m_silenced = rules;
    m_tellAll->setVisible(!rules.isEmpty());
    gather();
}

void ProblemsPanel::silence(const QString& rule)
{
    setSilencedRules(m_silenced + QStringList { rule });
    emit silencedRulesChanged(m_silenced);
}

/// Puts both kinds of problems together, the worst first within a brick's.
void ProblemsPanel::gather()
{
    QVector<Problem> problems;
    QSet<const DzProperty*> told;
    for (const Problem& problem : qAsConst(m_found)) {
        if (problem.property)
            told.insert(problem.property);
        problems.append(problem);
    }
    // What is wrong with a value by itself is not said a second time of its line.
    for (const Problem& finding : m_renderer.getFindings())
        if (finding.brick && !told.contains(finding.property))
            problems.append(finding);
    problems.erase(
        std::remove_if(problems.begin(), problems.end(),
            [this](const Problem& problem) { return m_silenced.contains(problem.rule); }),
        problems.end());
    std::stable_sort(problems.begin(), problems.end(),
        [](const Problem& a, const Problem& b) { return a.level < b.level; });
    m_problems = problems;
    m_actions->setProblems(m_document, m_problems);
    fillList();
    emit problemsChanged();
}

void ProblemsPanel::fillList()
{
    m_list->clear();
    QList<QTreeWidgetItem*> items;
    QFont link = m_list->font();
    link.setUnderline(true);
    for (const Problem& problem : qAsConst(m_problems)) {
        auto* item = new QTreeWidgetItem({ captionOf(problem.brick), problem.text });
        item->setIcon(BrickColumn,
            LineIcon::makeDot(levelColor(problem.level), problem.level == ProblemLevel::Notes));
        item->setToolTip(BrickColumn, levelText(problem.level));
        item->setToolTip(ProblemColumn, BrickHelp::tipOf(problem.text));
        if (!problem.remedies.isEmpty()) {
            const QString remedy = remedyText(problem, problem.remedies.first());
            item->setText(RemedyColumn, remedy);
            item->setToolTip(RemedyColumn, BrickHelp::tipOf(remedy));
            item->setFont(RemedyColumn, link);
            item->setForeground(RemedyColumn, palette().link());
        }
        items.append(item);
    }
    m_list->addTopLevelItems(items);
    m_list->setVisible(!items.isEmpty());
    m_none->setVisible(items.isEmpty());
}

void ProblemsPanel::activate(const QTreeWidgetItem* item, int column)
{
    const int row = m_list->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item));
    if (row < 0)
        return;
    // The list changes while it is done.
    const Problem problem = m_problems.at(row);
    if (problem.brick)
        emit brickActivated(problem.brick);
    if (column == RemedyColumn && !problem.remedies.isEmpty())
        m_actions->run(problem, problem.remedies.first());
}

void ProblemsPanel::openMenu(const QPoint& place)
{
    const QTreeWidgetItem* item = m_list->itemAt(place);
    const int row = m_list->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item));
    if (row < 0)
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    m_actions->fillMenu(menu, m_problems.at(row));
    if (menu->isEmpty())
        delete menu;
    else
        menu->popup(m_list->viewport()->mapToGlobal(place));
}
