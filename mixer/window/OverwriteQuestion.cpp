// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "OverwriteQuestion.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("OverwriteQuestion", text);
}

} // namespace

OverwriteAnswer askToOverwrite(QWidget* parent, const QString& title)
{
    QMessageBox box(QMessageBox::Warning, tr("Overwrite the File?"),
        tr("\"%1\" was changed by another program.").arg(title), QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(tr("Overwriting it loses what the other program saved."));
    const QAbstractButton* overwrite
        = box.addButton(tr("&Overwrite"), QMessageBox::DestructiveRole);
    QPushButton* other = box.addButton(tr("Save &As…"), QMessageBox::AcceptRole);
    box.setDefaultButton(other);
    box.exec();
    if (box.clickedButton() == overwrite)
        return OverwriteAnswer::Overwrite;
    return box.clickedButton() == other ? OverwriteAnswer::SaveAs : OverwriteAnswer::Cancel;
}
