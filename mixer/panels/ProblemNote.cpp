// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ProblemNote.h"

#include "BrickHelp.h"
#include "LineIcon.h"
#include "ProblemActions.h"
#include "Remedies.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const int signSize = 14;
const int leastButtonWidth = 40;

QToolButton* makeButton(const QString& text)
{
    auto* button = new QToolButton;
    button->setText(text);
    button->setToolTip(BrickHelp::tipOf(text));
    button->setFocusPolicy(Qt::NoFocus);
    // A long text gives way to the panel's width.
    button->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    button->setMinimumWidth(leastButtonWidth);
    return button;
}

} // namespace

ProblemNote::ProblemNote(const Problem& problem, ProblemActions* actions, QWidget* parent)
    : QWidget(parent)
    , m_problem(problem)
{
    auto* sign = new QLabel;
    sign->setPixmap(
        LineIcon::makeDot(levelColor(problem.level), problem.level == ProblemLevel::Notes)
            .pixmap(signSize, signSize));
    sign->setToolTip(levelText(problem.level));
    auto* text = new QLabel(problem.text);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // It takes the width that there is.
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    text->setSizePolicy(policy);
    auto* head = new QHBoxLayout;
    head->setSpacing(4);
    head->addWidget(sign, 0, Qt::AlignTop);
    head->addWidget(text, 1);
    auto* more = new QToolButton;
    more->setText(QStringLiteral("⋯"));
    more->setToolTip(tr("What else can be done"));
    more->setAccessibleName(tr("What else can be done"));
    more->setAutoRaise(true);
    more->setFocusPolicy(Qt::NoFocus);
    // Showing it now would make it a window of its own.
    if (problem.rule.isEmpty())
        more->hide();
    more->setObjectName(QStringLiteral("more"));
    head->addWidget(more, 0, Qt::AlignTop);
    connect(more, &QToolButton::clicked, actions, [actions, problem, more] {
        auto* menu = new QMenu(more);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        actions->fillMenu(menu, problem);
        menu->popup(more->mapToGlobal(QPoint(0, more->height())));
    });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 4);
    layout->setSpacing(2);
    layout->addLayout(head);
    for (const lux::Remedy& remedy : problem.remedies) {
        QToolButton* button = makeButton(remedyText(problem, remedy));
        button->setObjectName(QStringLiteral("remedy"));
        auto* line = new QHBoxLayout;
        line->setContentsMargins(signSize + 4, 0, 0, 0);
        line->addWidget(button);
        line->addStretch();
        layout->addLayout(line);
        connect(button, &QToolButton::clicked, actions,
            [actions, problem, remedy] { actions->run(problem, remedy); });
    }
}
