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

RestoreDialog::RestoreDialog(const QVector<RestorableNetwork>& networks, QWidget* parent)
    : QDialog(parent)
    , m_networks(networks)
    , m_list(new QTreeWidget)
{
    setWindowTitle(tr("Restore Networks"));
    auto* text = new QLabel(tr("The program ended without warning. These networks were kept as "
                               "they were shortly before; restoring opens them and changes no "
                               "file."));
    text->setWordWrap(true);
    m_list->setColumnCount(3);
    m_list->setHeaderLabels({ tr("Network"), tr("Kept"), tr("File") });
    m_list->setRootIsDecorated(false);
    m_list->setAccessibleName(tr("Networks that can be restored"));
    for (const RestorableNetwork& network : m_networks) {
        auto* item = new QTreeWidgetItem(m_list,
            { network.title, QLocale().toString(network.time, QLocale::ShortFormat),
                network.path.isEmpty() ? tr("never saved") : network.path });
        item->setCheckState(0, Qt::Checked);
        item->setToolTip(2, network.path);
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
    discard->setToolTip(tr("Delete the marked networks"));
    connect(restore, &QPushButton::clicked, this, [this] { choose(Restore); });
    connect(later, &QPushButton::clicked, this, [this] { choose(Later); });
    connect(discard, &QPushButton::clicked, this, [this] { choose(Discard); });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    resize(560, 280);
}

QVector<RestorableNetwork> RestoreDialog::getChosen() const
{
    QVector<RestorableNetwork> chosen;
    for (int i = 0; i < m_networks.size(); ++i)
        if (m_list->topLevelItem(i)->checkState(0) == Qt::Checked)
            chosen.append(m_networks.at(i));
    return chosen;
}

void RestoreDialog::choose(Choice choice)
{
    m_choice = choice;
    done(choice == Later ? Rejected : Accepted);
}
