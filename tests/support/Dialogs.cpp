// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Dialogs.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <gtest/gtest.h>

namespace {

const int interval = 5;
/// Longer than any dialog needs to close, in milliseconds.
const int patience = 5000;

template <typename T>
T* part(QDialog* dialog)
{
    T* const found = dialog->findChild<T*>();
    EXPECT_NE(found, nullptr) << dialog->windowTitle().toStdString();
    return found;
}

void press(QDialog* dialog, QDialogButtonBox::StandardButton which)
{
    if (QDialogButtonBox* const box = part<QDialogButtonBox>(dialog))
        QTest::mouseClick(box->button(which), Qt::LeftButton);
}

/// Opens the list and clicks the row, as people do.
void clickItem(QComboBox* box, int row)
{
    QTest::mouseClick(box, Qt::LeftButton);
    QAbstractItemView* const list = box->view();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(list->window(), patience));
    // The list takes no release that may belong to the click that opened it.
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    const QModelIndex index = box->model()->index(row, 0);
    list->scrollTo(index);
    QTest::mouseClick(
        list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualRect(index).center());
}

} // namespace

DialogAnswers::DialogAnswers(std::vector<Answer> answers)
    : m_answers(std::move(answers))
{
    connect(&m_timer, &QTimer::timeout, this, &DialogAnswers::answerNext);
    m_timer.start(interval);
}

DialogAnswers::~DialogAnswers()
{
    EXPECT_EQ(m_numAnswered, m_answers.size()) << "dialogs that opened, and answers";
}

void DialogAnswers::answerNext()
{
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog != m_last)
        m_waited = 0;
    if (!dialog || (dialog == m_last && (m_waited += interval) < patience)) {
        m_last = dialog;
        return;
    }
    if (dialog == m_last || m_numAnswered == m_answers.size()) {
        ADD_FAILURE() << "no answer to, or none that closes: "
                      << dialog->windowTitle().toStdString();
        dialog->reject();
        return;
    }
    m_last = dialog;
    // Answers may wait for something, which must not start the next answer.
    m_timer.stop();
    m_answers[m_numAnswered++](dialog);
    m_timer.start(interval);
}

void typeText(QWidget* widget, const QString& text)
{
    QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, text, Qt::NoModifier);
}

DialogAnswers::Answer itemByKeyboard(const QString& item)
{
    return [item](QDialog* dialog) {
        auto* const box = part<QComboBox>(dialog);
        const int row = box->findText(item);
        EXPECT_GE(row, 0) << item.toStdString();
        for (int i = 0; i < row; ++i)
            QTest::keyClick(box, Qt::Key_Down);
        EXPECT_EQ(box->currentText(), item);
        QTest::keyClick(dialog, Qt::Key_Return);
    };
}

DialogAnswers::Answer itemByMouse(const QString& item)
{
    return [item](QDialog* dialog) {
        auto* const box = part<QComboBox>(dialog);
        const int row = box->findText(item);
        EXPECT_GE(row, 0) << item.toStdString();
        clickItem(box, row);
        EXPECT_EQ(box->currentText(), item);
        press(dialog, QDialogButtonBox::Ok);
    };
}

DialogAnswers::Answer textByKeyboard(const QString& text)
{
    return [text](QDialog* dialog) {
        typeText(part<QLineEdit>(dialog), text);
        QTest::keyClick(dialog, Qt::Key_Return);
    };
}

DialogAnswers::Answer textByMouse(const QString& text)
{
    return [text](QDialog* dialog) {
        typeText(part<QLineEdit>(dialog), text);
        press(dialog, QDialogButtonBox::Ok);
    };
}

DialogAnswers::Answer fileByKeyboard(const QString& path)
{
    return [path](QDialog* dialog) {
        auto* const edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(edit, nullptr);
        edit->clear();
        typeText(edit, path);
        QTest::keyClick(edit, Qt::Key_Return);
    };
}

DialogAnswers::Answer cancelByKeyboard()
{
    return [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); };
}

DialogAnswers::Answer cancelByMouse()
{
    return [](QDialog* dialog) { press(dialog, QDialogButtonBox::Cancel); };
}
