// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>
#include <QTimer>

/// The line at the foot of the window: what it says goes after a while, for it is about something
/// that was just done.
class MessageLine : public QLabel
{
    Q_OBJECT

public:
    explicit MessageLine(QWidget* parent = nullptr);

    /// Warnings, which say what went wrong and what to do, stay longer.
    enum Kind { Notice, Warning };
    void tell(const QString& text, Kind kind);

private:
    QTimer m_end;
};
