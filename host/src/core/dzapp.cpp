// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzapp.h"

#include "dzbrickparam.h"
#include "dzclassfactory.h"
#include "dzimagemgr.h"
#include "dzpluginmgr.h"
#include "dzproperty.h"
#include "dzscene.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "dzwarning.h"

#include <QMetaType>
#include <cstdio>

DzApp* dzApp = nullptr;

namespace {

/// Signals carry these also where only their names are known.
void registerSignalTypes()
{
    qRegisterMetaType<DzBrickParam*>("DzBrickParam*");
    qRegisterMetaType<DzProperty*>("DzProperty*");
    qRegisterMetaType<DzShaderBrick*>("DzShaderBrick*");
}

} // namespace

DzApp::DzApp()
    : m_undoStack(new DzUndoStack)
    , m_imageMgr(new DzImageMgr)
    , m_pluginMgr(new DzPluginMgr)
    , m_scene(new DzScene)
{
    Q_ASSERT(!dzApp);
    dzApp = this;
    dzUndoStack = m_undoStack.get();
    registerSignalTypes();
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

const DzClassFactory* DzApp::findClassFactory(const QString& className) const
{
    return m_pluginMgr->findClassFactory(className);
}

QObject* DzApp::createInstance(const QString& className) const
{
    const DzClassFactory* factory = findClassFactory(className);
    if (factory)
        return factory->createInstance();
    const int type = QMetaType::type(className.toLatin1() + '*');
    const QMetaObject* metaObject = QMetaType::metaObjectForType(type);
    return metaObject ? metaObject->newInstance() : nullptr;
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
