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
    auto* box
        = new QMessageBox(icon, QCoreApplication::applicationName(), text, QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(QStringList(lines.mid(0, mostLines)).join(QLatin1Char('\n')));
    if (lines.size() > mostLines)
        box->setDetailedText(lines.join(QLatin1Char('\n')));
    box->open();
}

} // namespace

void showError(QWidget* parent, const QString& text)
{
    // Errors are made to follow a program's name.
    show(parent, QMessageBox::Warning, text.left(1).toUpper() + text.mid(1), QStringList());
}

void showWarnings(QWidget* parent, const QString& title, const QStringList& warnings)
{
    if (!warnings.isEmpty())
        show(parent, QMessageBox::Information, title, warnings);
}

} // namespace Messages
