// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ProblemsPanel.h"

#include "BrickAppearance.h"
#include "LineIcon.h"
#include "MixerDocument.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

/// Milliseconds of rest before the network is looked through.
const int restTime = 120;

QString captionOf(const DzShaderBrick* brick)
{
    return brick ? BrickAppearance::titleText(brick) : QString();
}

} // namespace

ProblemsPanel::ProblemsPanel(QWidget* parent)
    : QWidget(parent)
    , m_list(new QTreeWidget)
    , m_none(new QLabel(tr("No problems.")))
{
    m_list->setColumnCount(2);
    m_list->setHeaderLabels({ tr("Brick"), tr("Problem") });
    m_list->setRootIsDecorated(false);
    m_list->setAlternatingRowColors(true);
    m_list->setUniformRowHeights(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setAccessibleName(tr("Problems"));
    m_list->setColumnWidth(0, 170);
    m_none->setAlignment(Qt::AlignCenter);
    m_none->setForegroundRole(QPalette::PlaceholderText);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    layout->addWidget(m_none);
    m_list->hide();

    m_update.setSingleShot(true);
    connect(&m_update, &QTimer::timeout, this, &ProblemsPanel::updateNow);
    connect(m_list, &QTreeWidget::itemClicked, this, &ProblemsPanel::activate);
    connect(m_list, &QTreeWidget::itemActivated, this, &ProblemsPanel::activate);
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
    m_problems = m_document ? findProblems(m_document->getUser(), m_document->getFolder())
                            : QVector<Problem>();
    m_list->clear();
    QList<QTreeWidgetItem*> items;
    for (const Problem& problem : qAsConst(m_problems)) {
        auto* item = new QTreeWidgetItem({ captionOf(problem.brick), problem.text });
        item->setIcon(0, LineIcon::make(LineIcon::Warning));
        item->setToolTip(1, problem.text);
        items.append(item);
    }
    m_list->addTopLevelItems(items);
    m_list->setVisible(!items.isEmpty());
    m_none->setVisible(items.isEmpty());
    emit problemsChanged();
}

void ProblemsPanel::activate(const QTreeWidgetItem* item)
{
    const int row = m_list->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item));
    if (DzShaderBrick* brick = row >= 0 ? m_problems.at(row).brick.data() : nullptr)
        emit brickActivated(brick);
}
