// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "HistoryDelegate.h"

#include "MixerDocument.h"
#include "NetworkSteps.h"

HistoryDelegate::HistoryDelegate(const NetworkSteps* steps, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_steps(steps)
{
}

QString HistoryDelegate::textOf(const QModelIndex& index) const
{
    const QString caption = index.data().toString();
    // The first row stands for the begin, before all steps.
    const MixerDocument* owner = m_steps->getOwner(index.row() - 1);
    return owner ? tr("%1 — %2").arg(caption, owner->getTitle()) : caption;
}

void HistoryDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = textOf(index);
}
