// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbrickset.h"

#include "dzrenderer.h"
#include "dzshaderbrick.h"
#include "dzshaderstring.h"
#include "idzbrickuser.h"

#include <memory>

DzBrickSet::DzBrickSet(DzShaderBrick* root, IDzBrickUser* owner)
    : m_root(root)
    , m_owner(owner)
{
}

DzShaderBrick* DzBrickSet::getRoot() const
{
    return m_root;
}

DzBrickSet::ShaderType DzBrickSet::getShaderType() const
{
    return m_root ? m_root->type() : None;
}

QString DzBrickSet::getShaderFile() const
{
    return m_owner->getIdentifier().toString(QUuid::WithoutBraces) + QLatin1Char('_')
        + QString::number(m_root ? m_root->getBrickID() : 0);
}

void DzBrickSet::apply(DzRenderSettings* settings)
{
    // Whoever hears that files are made may change the network, and with it this set and its root.
    const DzTSharedPointer<DzBrickSet> thisAlive(this);
    const DzTSharedPointer<DzShaderBrick> rootAlive(m_root);
    DzRenderer* engine = settings->renderEngine;
    const QString shader = getShaderFile();
    if (!m_hasShader && m_root) {
        m_owner->generatingFilesStarted();
        m_root->setGlobalBrickRenderSettings(this, engine);
        m_root->setBrickRenderSettings(this, engine);
        const std::unique_ptr<DzShaderString> code(m_root->getShaderCodeCall(QStringList()));
        m_hasShader = engine->compileShader(shader, code ? code->getText() : QString());
        m_owner->generatingFilesFinished();
    }
    engine->riSurface(m_hasShader ? shader : QString(), 0, nullptr, nullptr);
}
