// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzapp.h"

#include "dzimagemgr.h"
#include "dzundostack.h"
#include "dzwarning.h"

#include <cstdio>

DzApp* dzApp = nullptr;

DzApp::DzApp()
    : m_undoStack(new DzUndoStack)
    , m_imageMgr(new DzImageMgr)
    , m_pluginMgr(makePluginMgr())
    , m_scene(makeScene())
{
    Q_ASSERT(!dzApp);
    dzApp = this;
    dzUndoStack = m_undoStack.get();
    dzSetWarningReceiver(
        [](const DzWarning& warning) { dzApp->tell(WarningMessage, warning.toLine()); });
}

DzApp::~DzApp()
{
    emit closing();
    dzSetWarningReceiver(nullptr);
    // Undo steps hold bricks and textures: they go while the managers are there.
    m_undoStack->clearAll();
    m_scene.reset();
    dzUndoStack = nullptr;
    m_undoStack.reset();
    m_pluginMgr.reset();
    m_imageMgr.reset();
    dzApp = nullptr;
}

void DzApp::warning(const QString& message)
{
    dzWarn({ QString(), message, QString() });
}

void DzApp::tell(MessageType type, const QString& message)
{
    if (m_handler)
        m_handler(type, message);
    else if (type == WarningMessage)
        std::fprintf(stderr, "warning: %s\n", message.toUtf8().constData());
}
