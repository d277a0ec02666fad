// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "HelpStrip.h"

#include "BrickHelp.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

namespace {

/// The longest sentences take as many at the usual width.
const int lineCount = 4;
const int margin = 8;

} // namespace

HelpStrip::HelpStrip(QWidget* parent)
    : QWidget(parent)
    , m_text(new QLabel)
{
    auto* line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::RichText);
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text->setContentsMargins(margin, 2, margin, 4);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_text->setFixedHeight(fontMetrics().lineSpacing() * lineCount + 8);
    m_text->setAccessibleName(tr("Explanation"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(line);
    layout->addWidget(m_text);
    refresh();
}

void HelpStrip::setBrick(DzShaderBrick* brick)
{
    m_brick = brick;
    refresh();
}

void HelpStrip::setValue(DzProperty* property, const QString& label)
{
    m_property = property;
    m_label = label;
    refresh();
}

void HelpStrip::refresh()
{
    QString heading = m_property ? m_label : QString();
    QString sentence = m_property ? BrickHelp::ofValue(m_property) : QString();
    if (!m_property && m_brick) {
        heading = m_brick->getPreferredName();
        sentence = BrickHelp::ofBrick(m_brick);
    }
    QString shown = sentence.isEmpty() ? QString() : tr("%1: %2").arg(heading, sentence);
    setVisible(m_property || m_brick);
    if (shown == m_shown)
        return;
    m_shown = shown;
    m_text->setText(sentence.isEmpty()
            ? QString()
            : QStringLiteral("<b>%1</b><br>%2")
                  .arg(heading.toHtmlEscaped(), sentence.toHtmlEscaped()));
    m_text->setToolTip(BrickHelp::tipOf(shown));
}
