// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WindowFixture.h"

#include "BrickAppearance.h"
#include "BrickSelection.h"
#include "BrickyardPanel.h"
#include "CommandSet.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "MixerDocument.h"
#include "NetworkTextPanel.h"
#include "NetworkView.h"
#include "NetworkWalk.h"
#include "PropertiesPanel.h"
#include "PropertyEditor.h"
#include "PropertyRow.h"
#include "dzscene.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTreeWidget>
#include <QUrl>

WindowTest::WindowTest()
{
    qputenv("VIREO_SETTINGS_FILE", file("settings.ini").toLocal8Bit());
    openWindow();
    m_window->getDocuments()->createNew();
    settle();
}

WindowTest::~WindowTest()
{
    closeWindow();
    dzUndoStack->clearAll();
    dzScene->clear();
    qunsetenv("VIREO_SETTINGS_FILE");
}

void WindowTest::openWindow()
{
    closeWindow();
    m_settings = std::make_unique<ProgramSettings>();
    m_store = std::make_unique<AutosaveStore>(file("copies"));
    m_window = std::make_unique<MainWindow>(m_settings.get(), m_store.get());
    m_window->resize(1480, 920);
    m_window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
}

void WindowTest::closeWindow()
{
    m_window.reset();
    m_store.reset();
    m_settings.reset();
}

MixerDocument* WindowTest::document() const
{
    return m_window->getDocument();
}

DzShaderBrick* WindowTest::brick(const char* title) const
{
    for (DzShaderBrick* candidate : bricksOf(document()->getUser()))
        if (candidate->getBrickTitle() == QLatin1String(title))
            return candidate;
    ADD_FAILURE() << "no brick " << title;
    return nullptr;
}

QAction* WindowTest::command(const char* name) const
{
    return m_window->getCommands()->find(QString::fromLatin1(name));
}

void WindowTest::run(const char* name) const
{
    EXPECT_TRUE(command(name)->isEnabled()) << name;
    command(name)->trigger();
    settle();
}

QStringList WindowTest::recentMenu() const
{
    QStringList texts;
    for (QMenu* menu : m_window->menuBar()->findChildren<QMenu*>()) {
        if (menu->objectName() != QLatin1String("recent"))
            continue;
        emit menu->aboutToShow();
        for (const QAction* action : menu->actions())
            texts.append(action->text());
    }
    return texts;
}

void WindowTest::settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

DzShaderBrick* WindowTest::addFromPalette(const char* words)
{
    const int before = document()->getUser()->getNumBricks();
    QLineEdit* search = m_window->getBrickyard()->getSearch();
    search->clear();
    QTest::mouseClick(search, Qt::LeftButton);
    QTest::keyClicks(search, QString::fromLatin1(words));
    QTest::keyClick(search, Qt::Key_Return);
    settle();
    EXPECT_EQ(document()->getUser()->getNumBricks(), before + 1) << words;
    return document()->getSelection()->getCurrent();
}

void WindowTest::dragWire(DzShaderBrick* from, DzShaderBrick* to, const char* input)
{
    NetworkView* view = m_window->getView();
    view->zoomToAll();
    const auto place = [&](DzShaderBrick* end, const char* name) {
        return view->mapFromScene(
            BrickAppearance::position(end) + BrickAppearance::pinOffset(end, param(end, name)));
    };
    QWidget* canvas = view->viewport();
    const QPoint start = place(from, "result");
    const QPoint end = place(to, input);
    QTest::mouseMove(canvas, start);
    QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, start);
    // The first move is the one that makes a drag of it.
    for (const QPoint& at : { start + QPoint(12, 4), (start + end) / 2, end }) {
        QMouseEvent move(QEvent::MouseMove, at, canvas->mapToGlobal(at), Qt::NoButton,
            Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(canvas, &move);
    }
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, end);
    settle();
}

void WindowTest::select(const QVector<DzShaderBrick*>& bricks)
{
    document()->getSelection()->set(bricks);
    m_window->getProperties()->updateNow();
    settle();
}

PropertyRow* WindowTest::row(const char* label)
{
    m_window->getProperties()->updateNow();
    PropertyRow* found = m_window->getProperties()->findRow(QString::fromLatin1(label));
    EXPECT_NE(found, nullptr) << label;
    return found;
}

QLineEdit* WindowTest::startTyping(const char* label, const QString& text)
{
    auto* field = row(label)->findChild<PropertyEditor*>()->findChild<QLineEdit*>();
    EXPECT_NE(field, nullptr) << label;
    m_window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    QTest::mouseClick(field, Qt::LeftButton);
    field->selectAll();
    QTest::keyClicks(field, text);
    return field;
}

void WindowTest::type(const char* label, const QString& text)
{
    QTest::keyClick(startTyping(label, text), Qt::Key_Return);
    settle();
}

QPoint WindowTest::itemPlace(QTreeWidget* tree, const QTreeWidgetItem* item)
{
    auto* plain = const_cast<QTreeWidgetItem*>(item);
    tree->scrollToItem(plain);
    return tree->visualItemRect(plain).center();
}

void dropFiles(QWidget* target, const QStringList& paths)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path));
    data.setUrls(urls);
    const QPoint place = target->rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    EXPECT_TRUE(drop.isAccepted());
    QCoreApplication::processEvents();
}
