// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "RestoreDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

RestoreDialog::RestoreDialog(const QVector<RestorableWork>& works, QWidget* parent)
    : QDialog(parent)
    , m_works(works)
    , m_list(new QTreeWidget)
{
    setWindowTitle(tr("Restore Unsaved Work"));
    auto* text = new QLabel(tr("The program ended without warning. This work was kept as it was "
                               "shortly before; restoring opens it and changes no file."));
    text->setWordWrap(true);
    m_list->setColumnCount(3);
    m_list->setHeaderLabels({ tr("Name"), tr("Kept"), tr("File") });
    m_list->setRootIsDecorated(false);
    m_list->setAccessibleName(tr("Work that can be restored"));
    for (const RestorableWork& work : m_works) {
        auto* item = new QTreeWidgetItem(m_list,
            { work.title, QLocale().toString(work.time, QLocale::ShortFormat),
                work.path.isEmpty() ? tr("never saved") : work.path });
        item->setCheckState(0, Qt::Checked);
        item->setToolTip(2, work.path);
    }
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    auto* buttons = new QDialogButtonBox;
    QPushButton* restore = buttons->addButton(tr("&Restore"), QDialogButtonBox::AcceptRole);
    QPushButton* later = buttons->addButton(tr("&Later"), QDialogButtonBox::RejectRole);
    QPushButton* discard = buttons->addButton(tr("&Discard"), QDialogButtonBox::DestructiveRole);
    restore->setDefault(true);
    restore->setObjectName(QStringLiteral("restore"));
    later->setObjectName(QStringLiteral("later"));
    discard->setObjectName(QStringLiteral("discard"));
    later->setToolTip(tr("Ask again when the program starts the next time"));
    discard->setToolTip(tr("Delete the copies that are marked"));
    connect(restore, &QPushButton::clicked, this, [this] { choose(Restore); });
    connect(later, &QPushButton::clicked, this, [this] { choose(Later); });
    connect(discard, &QPushButton::clicked, this, [this] { choose(Discard); });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    resize(560, 280);
}

QVector<RestorableWork> RestoreDialog::getChosen() const
{
    QVector<RestorableWork> chosen;
    for (int i = 0; i < m_works.size(); ++i)
        if (m_list->topLevelItem(i)->checkState(0) == Qt::Checked)
            chosen.append(m_works.at(i));
    return chosen;
}

void RestoreDialog::choose(Choice choice)
{
    m_choice = choice;
    done(choice == Later ? Rejected : Accepted);
}
