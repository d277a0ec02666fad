// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <vector>

/// Answers modal dialogs while the code under test waits for them: the first that opens with the
/// first answer, and so on. A dialog without an answer is cancelled and is a failure of the test,
/// and so is an answer that no dialog asked for.
class DialogAnswers : public QObject
{
    Q_OBJECT

public:
    typedef std::function<void(QDialog*)> Answer;

    explicit DialogAnswers(std::vector<Answer> answers);
    ~DialogAnswers() override;

private slots:
    void answerNext();

private:
    QTimer m_timer;
    std::vector<Answer> m_answers;
    std::size_t m_numAnswered = 0;
    QPointer<QDialog> m_last;
    int m_waited = 0;
};

/// Types text as a keyboard does; any characters.
void typeText(QWidget* widget, const QString& text);

// Answers to the question for an item, the question for a text and the question for a file. Those
// by keyboard end with Return, those by mouse with a click on the button.
DialogAnswers::Answer itemByKeyboard(const QString& item);
DialogAnswers::Answer itemByMouse(const QString& item);
DialogAnswers::Answer textByKeyboard(const QString& text);
DialogAnswers::Answer textByMouse(const QString& text);
DialogAnswers::Answer fileByKeyboard(const QString& path);
DialogAnswers::Answer cancelByKeyboard();
DialogAnswers::Answer cancelByMouse();
