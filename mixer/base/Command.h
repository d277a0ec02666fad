// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIcon>
#include <QKeySequence>
#include <QList>
#include <QString>
#include <functional>

/// The keys of a command as data: those that everybody knows and, for a standard command, those
/// that the desktop has for it.
class CommandKeys
{
public:
    CommandKeys() = default;
    /// Portable names, several separated by "; ".
    CommandKeys(const char* known);
    CommandKeys(QKeySequence::StandardKey standard, const char* known);

    /// The desktop's keys first.
    QList<QKeySequence> toList() const;

private:
    QKeySequence::StandardKey m_standard = QKeySequence::UnknownKey;
    const char* m_known = "";
};

/// One command: a row of the registry. Whatever shows commands or runs them reads it from there.
struct Command {
    typedef std::function<void()> Run;
    typedef std::function<bool()> Test;

    /// What the keys hold for: the whole window, or the canvas that has the keyboard.
    enum Scope { Window, Canvas };

    /// Never shown and never translated; settings and tables know the command by it.
    QString id;
    /// With an & before the letter that picks it in a menu.
    QString text;
    CommandKeys keys;
    /// What it does, in one line.
    QString tip;
    /// Whether it can do something, asked when somebody wants to know; null: always.
    Test canRun;
    Run run;

    // What few commands have.
    QIcon icon = QIcon();
    /// For a switch: whether it is on.
    Test isOn = nullptr;
    /// Switches of one choice have the same word here: one of them is on.
    QString choice = QString();
    /// For a command whose text changes.
    std::function<QString()> textNow = nullptr;
    Scope scope = Window;

    Command& withIcon(const QIcon& its)
    {
        icon = its;
        return *this;
    }
    Command& withText(const std::function<QString()>& now)
    {
        textNow = now;
        return *this;
    }
    Command& asSwitch(const Test& on)
    {
        isOn = on;
        return *this;
    }
    Command& asChoice(const QString& word, const Test& on)
    {
        choice = word;
        isOn = on;
        return *this;
    }
};
