// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WindowCommands.h"

#include "ApplyPreview.h"
#include "BrickSelection.h"
#include "CommandSet.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "LineIcon.h"
#include "MainWindow.h"
#include "MixerDocument.h"
#include "PanelSet.h"
#include "ProgramSettings.h"
#include "PropertyGroup.h"
#include "SceneController.h"
#include "SceneSession.h"
#include "ShortcutsPage.h"
#include "Theme.h"
#include "dzundostack.h"

#include <QApplication>
#include <QMessageBox>
#include <QUndoStack>

namespace {

// What commands work on is asked for when they run, or may run.

QVector<DzShaderBrick*> selectedBricks(const MainWindow* window)
{
    const MixerDocument* document = window->getDocument();
    return document ? document->getSelection()->getBricks() : QVector<DzShaderBrick*>();
}

void goToTab(DocumentTabs* tabs, int step)
{
    if (tabs->count() > 0)
        tabs->setCurrentIndex((tabs->currentIndex() + tabs->count() + step) % tabs->count());
}

void openFromScene(MainWindow* window)
{
    const QVector<SceneNetwork> networks
        = window->getSceneController()->fromScene(window->getDocument());
    for (const SceneNetwork& network : networks)
        window->getDocuments()->openUser(network.user, network.title);
}

void showAbout(MainWindow* window)
{
    auto* box = new QMessageBox(QMessageBox::NoIcon, WindowCommands::tr("About"),
        WindowCommands::tr("%1 %2").arg(
            QApplication::applicationDisplayName(), QApplication::applicationVersion()),
        QMessageBox::Close, window);
    box->setInformativeText(
        WindowCommands::tr("Designs materials for LuxRender.\nLicence: Apache-2.0"));
    box->setIconPixmap(window->windowIcon().pixmap(64));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

} // namespace

WindowCommands::WindowCommands(CommandSet* commands, MainWindow* window, ProgramSettings* settings)
    : m_commands(commands)
    , m_window(window)
    , m_settings(settings)
{
}

void WindowCommands::addFileCommands()
{
    MainWindow* window = m_window;
    DocumentController* documents = window->getDocuments();
    DocumentTabs* tabs = window->getTabs();
    const auto hasDocument = [window] { return window->getDocument() != nullptr; };
    const auto hasTabs = [tabs] { return tabs->count() > 1; };

    m_commands->beginGroup(tr("File"));
    m_commands->add(Command { QStringLiteral("new"), tr("&New"), { QKeySequence::New, "Ctrl+N" },
        tr("Start a network with a root and a material"), nullptr, [documents] {
            documents->createNew();
        } }.withIcon(LineIcon::make(LineIcon::New)));
    m_commands->add(Command { QStringLiteral("open"), tr("&Open…"),
        { QKeySequence::Open, "Ctrl+O" }, tr("Open network files and scenes"), nullptr,
        [window, documents] {
            window->openFiles(documents->askForFiles());
        } }.withIcon(LineIcon::make(LineIcon::Open)));
    m_commands->add(Command { QStringLiteral("save"), tr("&Save"), { QKeySequence::Save, "Ctrl+S" },
        tr("Save the network"), hasDocument, [window, documents] {
            documents->save(window->getDocument());
        } }.withIcon(LineIcon::make(LineIcon::Save)));
    m_commands->add({ QStringLiteral("saveAs"), tr("Save &As…"),
        { QKeySequence::SaveAs, "Ctrl+Shift+S" }, tr("Save the network as another file"),
        hasDocument, [window, documents] { documents->saveAs(window->getDocument()); } });
    m_commands->add({ QStringLiteral("close"), tr("&Close"), "Ctrl+W",
        tr("Close the network; undo brings it back"), hasDocument,
        [window, documents] { documents->close(window->getDocument()); } });
    m_commands->add({ QStringLiteral("nextTab"), tr("Ne&xt Network"), "Ctrl+PgDown; Ctrl+Tab",
        tr("Go to the next tab"), hasTabs, [tabs] { goToTab(tabs, 1); } });
    m_commands->add(
        { QStringLiteral("previousTab"), tr("&Previous Network"), "Ctrl+PgUp; Ctrl+Shift+Tab",
            tr("Go to the previous tab"), hasTabs, [tabs] { goToTab(tabs, -1); } });
    m_commands->add({ QStringLiteral("quit"), tr("&Quit"), { QKeySequence::Quit, "Ctrl+Q" },
        tr("Leave the program"), nullptr, [window] { window->close(); } });
}

void WindowCommands::addEditCommands()
{
    // While a hold is open nothing is undone, but nobody tells when it was taken back.
    const QUndoStack* stack = dzUndoStack->getQtStack();
    m_commands->beginGroup(tr("Edit"));
    m_commands->add(
        Command { QStringLiteral("undo"), tr("&Undo"), { QKeySequence::Undo, "Ctrl+Z" },
            tr("Take the last step back"), [stack] { return stack->canUndo(); },
            [] { dzUndoStack->undo(); } }
            .withIcon(LineIcon::make(LineIcon::Undo))
            .withText([] { return tr("&Undo %1").arg(dzUndoStack->getUndoCaption()).trimmed(); }));
    m_commands->add(
        Command { QStringLiteral("redo"), tr("&Redo"), { QKeySequence::Redo, "Ctrl+Shift+Z" },
            tr("Do the step again that was taken back"), [stack] { return stack->canRedo(); },
            [] { dzUndoStack->redo(); } }
            .withIcon(LineIcon::make(LineIcon::Redo))
            .withText([] { return tr("&Redo %1").arg(dzUndoStack->getRedoCaption()).trimmed(); }));
}

void WindowCommands::addValueCommands()
{
    MainWindow* window = m_window;
    const auto hasBricks = [window] { return !selectedBricks(window).isEmpty(); };

    m_commands->beginGroup(tr("Values"));
    m_commands->add({ QStringLiteral("lockAll"), tr("&Lock All Values"), "Ctrl+K",
        tr("Lock every value of the selected bricks"), hasBricks,
        [window] { lockAllValues(selectedBricks(window), true); } });
    m_commands->add({ QStringLiteral("unlockAll"), tr("&Unlock All Values"), "Ctrl+Shift+K",
        tr("Unlock every value of the selected bricks"), hasBricks,
        [window] { lockAllValues(selectedBricks(window), false); } });
    m_commands->add({ QStringLiteral("resetAll"), tr("&Reset All Values"), {},
        tr("Set every value of the selected bricks that is not locked to its default"), hasBricks,
        [window] { resetAllValues(selectedBricks(window)); } });
    m_commands->add({ QStringLiteral("editValues"), tr("&Edit Values"), "Ctrl+E",
        tr("Take the keyboard to the value that is current on the canvas, or the first one"),
        hasBricks, [window] { window->editValues(); } });
}

void WindowCommands::addSceneCommands()
{
    MainWindow* window = m_window;
    ProgramSettings* settings = m_settings;
    SceneController* scene = window->getSceneController();
    const auto hasScene = [scene] { return scene->getSession()->hasScene(); };
    const auto hasSurfaces = [] { return !selectedSurfaces().isEmpty(); };
    const auto canApply
        = [window] { return window->getDocument() && !selectedSurfaces().isEmpty(); };

    m_commands->beginGroup(tr("Scene"));
    m_commands->add(Command { QStringLiteral("openScene"), tr("Open S&cene…"), "Ctrl+Shift+O",
        tr("Open a scene to put materials on its surfaces"), nullptr, [scene] {
            scene->openWithDialog();
        } }.withIcon(LineIcon::make(LineIcon::Open)));
    m_commands->add({ QStringLiteral("saveScene"), tr("Save Sce&ne"), "Ctrl+Alt+S",
        tr("Save the scene with its materials"), hasScene, [scene] { scene->save(); } });
    m_commands->add({ QStringLiteral("saveSceneAs"), tr("Save Scene As…"), {},
        tr("Save the scene as another file"), hasScene, [scene] { scene->saveAs(); } });
    m_commands->add(Command { QStringLiteral("apply"), tr("&Apply"), "Ctrl+Return; Ctrl+Enter",
        tr("Put the network on the selected surfaces"), canApply, [window, scene] {
            scene->apply(window->getDocument());
        } }.withIcon(LineIcon::make(LineIcon::Apply)));
    m_commands->add({ QStringLiteral("applyBack"), tr("Apply &Back"), "Ctrl+Alt+Return",
        tr("Put the network on the surface that it was taken from"),
        [window, scene] { return scene->getOrigin(window->getDocument()) != nullptr; },
        [window, scene] { scene->applyBack(window->getDocument()); } });
    m_commands->add(Command { QStringLiteral("fromScene"), tr("&From Scene"), "Ctrl+Shift+Return",
        tr("Open the networks of the selected surfaces"), hasSurfaces, [window] {
            openFromScene(window);
        } }.withIcon(LineIcon::make(LineIcon::FromScene)));
    m_commands->add(Command { QStringLiteral("showApplyList"), tr("&Show Changes Before Applying"),
        {}, tr("List what will appear, change and vanish before a network is applied"), nullptr,
        [settings] {
            settings->setApplyListShown(!settings->isApplyListShown());
        } }.asSwitch([settings] { return settings->isApplyListShown(); }));
}

void WindowCommands::addViewCommands()
{
    MainWindow* window = m_window;
    ProgramSettings* settings = m_settings;

    m_commands->beginGroup(tr("View"));
    window->getPanels()->addCommands(m_commands);
    m_commands->add({ QStringLiteral("nextPart"), tr("&Next Part of the Window"), "F6",
        tr("Take the keyboard to the next of canvas and panels; Escape takes it back"), nullptr,
        [window] { window->goToPart(1); } });
    m_commands->add({ QStringLiteral("previousPart"), tr("Pre&vious Part of the Window"),
        "Shift+F6", tr("Take the keyboard to the canvas or panel before"), nullptr,
        [window] { window->goToPart(-1); } });
    m_commands->add({ QStringLiteral("resetLayout"), tr("&Reset Layout"), {},
        tr("Put all panels where they were at first"), nullptr,
        [window] { window->getPanels()->reset(); } });
    m_commands->add(Command { QStringLiteral("fullScreen"), tr("&Full Screen"), "F11",
        tr("Fill the screen, or go back"), nullptr, [window] {
            window->setWindowState(window->windowState() ^ Qt::WindowFullScreen);
        } }.asSwitch([window] { return window->isFullScreen(); }));
    const struct {
        Theme::Mode mode;
        QString text;
        QString tip;
    } looks[] = {
        { Theme::Mode::System, tr("Colours of the &Desktop"),
            tr("Have the window light or dark as the desktop is") },
        { Theme::Mode::Light, tr("&Light"), tr("Have the window light") },
        { Theme::Mode::Dark, tr("D&ark"), tr("Have the window dark") },
    };
    for (const auto& look : looks) {
        const Theme::Mode mode = look.mode;
        const auto choose = [settings, mode] {
            Theme::apply(mode);
            settings->setTheme(Theme::toWord(mode));
        };
        m_commands->add(Command { QStringLiteral("theme-") + Theme::toWord(mode), look.text, {},
            look.tip, nullptr, choose }
                            .asChoice(QStringLiteral("theme"), [settings, mode] {
                                return Theme::fromWord(settings->getTheme()) == mode;
                            }));
    }
}

void WindowCommands::addHelpCommands()
{
    MainWindow* window = m_window;
    CommandSet* commands = m_commands;

    m_commands->beginGroup(tr("Help"));
    m_commands->add({ QStringLiteral("shortcuts"), tr("&Keyboard and Mouse"), "F1",
        tr("Show all commands and their keys"), nullptr, [window, commands] {
            auto* page = new ShortcutsPage(commands, window);
            page->setAttribute(Qt::WA_DeleteOnClose);
            page->open();
        } });
    m_commands->add({ QStringLiteral("about"), tr("&About"), {}, tr("Version and licence"), nullptr,
        [window] { showAbout(window); } });
}
