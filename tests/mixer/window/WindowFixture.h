// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "AutosaveStore.h"
#include "MainWindow.h"
#include "ProgramSettings.h"
#include "TestSupport.h"

#include <QAction>
#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

class MixerDocument;
class PropertyRow;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/// A window of the program with a folder of its own for settings, copies and files. Everything is
/// done as users do it: with the mouse, the keyboard and drops.
class WindowTest : public testing::Test
{
protected:
    WindowTest();
    ~WindowTest() override;

    /// Makes the window; another one takes the place of the first.
    void openWindow();
    void closeWindow();

    QString file(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }
    MixerDocument* document() const;
    DzShaderBrick* brick(const char* title) const;
    QAction* command(const char* name) const;
    /// The texts of the menu of recent files.
    QStringList recentMenu() const;
    void run(const char* command) const;

    /// Lets everything that was put off happen.
    static void settle();
    /// Adds a brick through the search of the palette.
    DzShaderBrick* addFromPalette(const char* words);
    /// Drags a wire from a brick's output to another's input on the canvas.
    void dragWire(DzShaderBrick* from, DzShaderBrick* to, const char* input);
    /// Selects bricks and brings the panels up to date.
    void select(const QVector<DzShaderBrick*>& bricks);
    PropertyRow* row(const char* label);
    /// Types into the field of a row, and leaves the keyboard there.
    QLineEdit* startTyping(const char* label, const QString& text);
    /// Types into the field of a row and presses Return.
    void type(const char* label, const QString& text);

    static QPoint itemPlace(QTreeWidget* tree, const QTreeWidgetItem* item);
    /// Does something with the next dialog that opens, when it is there.
    template <typename Dialog>
    static void withDialog(const std::function<void(Dialog*)>& act)
    {
        QTimer::singleShot(0, qApp, [act] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr) << "no such dialog is open";
            act(dialog);
        });
    }

    QTemporaryDir m_dir;
    std::unique_ptr<ProgramSettings> m_settings;
    std::unique_ptr<AutosaveStore> m_store;
    std::unique_ptr<MainWindow> m_window;
};

/// A drop of files on a widget.
void dropFiles(QWidget* target, const QStringList& paths);
