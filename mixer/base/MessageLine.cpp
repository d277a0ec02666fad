// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MessageLine.h"

namespace {

const int noticeTime = 8000;
const int warningTime = 30000;

} // namespace

MessageLine::MessageLine(QWidget* parent)
    : QLabel(parent)
    , m_end(this)
{
    // Texts come from files: they are never taken for rich text.
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setAccessibleName(tr("Message"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, [this] { tell(QString(), Notice); });
}

void MessageLine::tell(const QString& text, Kind kind)
{
    setText(text.simplified());
    setToolTip(text.toHtmlEscaped());
    if (text.isEmpty())
        m_end.stop();
    else
        m_end.start(kind == Warning ? warningTime : noticeTime);
}
