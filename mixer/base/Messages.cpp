// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Messages.h"

#include <QCoreApplication>
#include <QMessageBox>

namespace Messages {

namespace {

/// More lines than anybody reads, and less than a window bears.
const int mostLines = 8;

void show(QWidget* parent, QMessageBox::Icon icon, const QString& text, const QStringList& lines)
{
    const QString title = icon == QMessageBox::Warning
        ? QCoreApplication::translate("Messages", "Not Done")
        : QCoreApplication::translate("Messages", "Please Note");
    auto* box = new QMessageBox(icon, title, text, QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(QStringList(lines.mid(0, mostLines)).join(QLatin1Char('\n')));
    if (lines.size() > mostLines)
        box->setDetailedText(lines.join(QLatin1Char('\n')));
    box->open();
}

int gatherings = 0;
QStringList gathered;

} // namespace

void showError(QWidget* parent, const QString& text)
{
    // Errors are made to follow a program's name.
    const QString sentence = text.left(1).toUpper() + text.mid(1);
    if (gatherings > 0)
        gathered.append(sentence);
    else
        show(parent, QMessageBox::Warning, sentence, QStringList());
}

void showWarnings(QWidget* parent, const QString& title, const QStringList& warnings)
{
    if (!warnings.isEmpty())
        show(parent, QMessageBox::Information, title, warnings);
}

Gathering::Gathering(QWidget* parent)
    : m_parent(parent)
{
    ++gatherings;
}

Gathering::~Gathering()
{
    if (--gatherings > 0)
        return;
    QStringList lines;
    lines.swap(gathered);
    if (lines.size() == 1)
        show(m_parent, QMessageBox::Warning, lines.first(), QStringList());
    else if (!lines.isEmpty())
        show(m_parent, QMessageBox::Warning,
            QCoreApplication::translate("Messages", "%1 errors:").arg(lines.size()), lines);
}

} // namespace Messages
