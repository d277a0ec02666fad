// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoExportCodeAction.h"

#include "NetworkCode.h"
#include "VireoBrickBase.h"
#include "dzapp.h"
#include "dzmainwindow.h"

#include <QDialog>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

/// Lines stand as they are in the scene: not wrapped, columns aligned.
void setUpForCode(QPlainTextEdit* edit)
{
    QFont font(QLatin1String("Monospace"));
    font.setStyleHint(QFont::TypeWriter);
    edit->setFont(font);
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit->setTabStopWidth(4 * edit->fontMetrics().width(QLatin1Char(' ')));
}

} // namespace

VireoExportCodeAction::VireoExportCodeAction()
    : VireoBrickAction(tr("Export LuxRender Code"))
{
}

void VireoExportCodeAction::doTrigger()
{
    VireoBrickBase* brick = getBrick();
    if (!brick)
        return;
    QDialog* window = new QDialog(dzApp->getInterface());
    // Without a main window nobody else would ever delete it.
    window->setAttribute(Qt::WA_DeleteOnClose, !window->parent());
    window->resize(800, 600);
    window->setWindowTitle(tr("Vireo - LuxRender Code"));
    QPlainTextEdit* edit = new QPlainTextEdit(window);
    setUpForCode(edit);
    edit->setPlainText(exportText(generateCode(brick, GenerateOptions())));
    QVBoxLayout* layout = new QVBoxLayout;
    layout->addWidget(edit);
    window->setLayout(layout);
    window->show();
}
