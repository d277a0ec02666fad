// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

/// Dialogs that tell something and do not wait for an answer.
namespace Messages {

/// An error: file, place, cause and what to do.
void showError(QWidget* parent, const QString& text);
/// Things that were left out or put right, a line each; nothing when there are none.
void showWarnings(QWidget* parent, const QString& title, const QStringList& warnings);

/// While it lives, errors are gathered; then they are told in one dialog.
class Gathering
{
public:
    explicit Gathering(QWidget* parent);
    ~Gathering();

private:
    Q_DISABLE_COPY(Gathering)

    QPointer<QWidget> m_parent;
};

} // namespace Messages
