// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzapp.h"

#include "dzclassfactory.h"
#include "dzimagemgr.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <cstdio>

DzApp* dzApp = nullptr;

DzApp::DzApp()
    : m_undoStack(new DzUndoStack)
    , m_imageMgr(new DzImageMgr)
    , m_pluginMgr(new DzPluginMgr)
{
    Q_ASSERT(!dzApp);
    dzApp = this;
    dzUndoStack = m_undoStack.get();
}

DzApp::~DzApp()
{
    emit closing();
    // Undo steps hold bricks and textures: they go while the managers are there.
    m_undoStack->clearAll();
    dzUndoStack = nullptr;
    m_undoStack.reset();
    m_pluginMgr.reset();
    m_imageMgr.reset();
    dzApp = nullptr;
}

const DzClassFactory* DzApp::findClassFactory(const QString& className) const
{
    return m_pluginMgr->findClassFactory(className);
}

QObject* DzApp::createInstance(const QString& className) const
{
    const DzClassFactory* factory = findClassFactory(className);
    return factory ? factory->createInstance() : nullptr;
}

void DzApp::tell(MessageType type, const QString& message)
{
    if (m_handler)
        m_handler(type, message);
    else if (type == WarningMessage)
        std::fprintf(stderr, "warning: %s\n", message.toUtf8().constData());
}
