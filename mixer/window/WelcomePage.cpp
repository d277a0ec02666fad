// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WelcomePage.h"

#include "CommandSet.h"
#include "DataFiles.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const int mostRecent = 6;

QLabel* heading(const QString& text)
{
    auto* label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QToolButton* linkButton(const QString& text, const QString& tip)
{
    auto* button = new QToolButton;
    button->setText(text);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setCursor(Qt::PointingHandCursor);
    button->setToolTip(tip);
    return button;
}

QString exampleTitle(const QString& path)
{
    QString title = QFileInfo(path).completeBaseName().replace(QLatin1Char('-'), QLatin1Char(' '));
    return title.left(1).toUpper() + title.mid(1);
}

} // namespace

WelcomePage::WelcomePage(const CommandSet& commands, QWidget* parent)
    : QWidget(parent)
    , m_recent(new QVBoxLayout)
    , m_recentBox(new QWidget)
{
    auto* column = new QVBoxLayout;
    column->setSpacing(10);
    auto* title = new QLabel(tr("Shader Mixer"));
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.8);
    title->setFont(font);
    column->addWidget(title);
    auto* text = new QLabel(tr("Build materials from bricks: add them, link them, and put the "
                               "result on the surfaces of a scene. Files can be dropped here."));
    text->setWordWrap(true);
    column->addWidget(text);
    auto* buttons = new QHBoxLayout;
    for (QAction* action : commands.findAll("new open openScene")) {
        auto* button = new QPushButton(action->icon(), action->text());
        button->setToolTip(action->toolTip());
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    column->addLayout(buttons);

    auto* recent = new QVBoxLayout(m_recentBox);
    recent->setContentsMargins(0, 8, 0, 0);
    recent->addWidget(heading(tr("Recent files")));
    m_recent->setSpacing(0);
    recent->addLayout(m_recent);
    column->addWidget(m_recentBox);

    const QStringList examples = findExamples();
    if (!examples.isEmpty()) {
        auto* label = heading(tr("Examples"));
        label->setContentsMargins(0, 8, 0, 0);
        column->addWidget(label);
        auto* grid = new QGridLayout;
        grid->setVerticalSpacing(0);
        for (int i = 0; i < examples.size(); ++i) {
            const QString path = examples.at(i);
            QToolButton* button = linkButton(exampleTitle(path), path);
            connect(
                button, &QToolButton::clicked, this, [this, path] { emit exampleChosen(path); });
            grid->addWidget(button, i / 3, i % 3, Qt::AlignLeft);
        }
        column->addLayout(grid);
    }
    auto* box = new QWidget;
    box->setMaximumWidth(620);
    box->setLayout(column);
    auto* centre = new QGridLayout(this);
    centre->addWidget(box, 1, 1);
    centre->setRowStretch(0, 1);
    centre->setRowStretch(2, 2);
    centre->setColumnStretch(0, 1);
    centre->setColumnStretch(1, 4);
    centre->setColumnStretch(2, 1);
    setRecentFiles(QStringList());
}

void WelcomePage::setRecentFiles(const QStringList& paths)
{
    while (QLayoutItem* item = m_recent->takeAt(0)) {
        item->widget()->deleteLater();
        delete item;
    }
    for (const QString& path : paths.mid(0, mostRecent)) {
        QToolButton* button = linkButton(QFileInfo(path).fileName(), path);
        connect(button, &QToolButton::clicked, this, [this, path] { emit fileChosen(path); });
        m_recent->addWidget(button, 0, Qt::AlignLeft);
    }
    m_recentBox->setVisible(!paths.isEmpty());
}
