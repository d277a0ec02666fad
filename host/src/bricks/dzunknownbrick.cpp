// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzunknownbrick.h"

#include "dzsettings.h"
#include "networkkeys.h"

namespace {

/// A parameter that is known only from the links that a file gives it.
class UnknownParam : public DzBrickParam
{
public:
    explicit UnknownParam(Direction direction)
        : DzBrickParam(direction)
    {
    }
    int getType() const override { return UnknownType; }
    bool canConnect(DzBrickParam*) const override { return false; }
    /// The file's name for it, whatever it is called here.
    QString getArg(int index) const override { return index == 0 ? m_arg : QString(); }
    void setArg(const QString& arg) { m_arg = arg; }

private:
    QString m_arg;
};

} // namespace

DzUnknownBrick::DzUnknownBrick(const DzSettings& stored)
    : m_stored(stored)
{
    const DzSettings* attributes = m_stored.getSettingsValue(NetworkKeys::attributes());
    const DzSettings* settings
        = attributes ? attributes->getSettingsValue(NetworkKeys::brickSettings()) : nullptr;
    if (settings)
        getBrickSettings()->replaceWithSettings(*settings);
}

DzUnknownBrick::~DzUnknownBrick()
{
}

QString DzUnknownBrick::getStoredClassName() const
{
    return m_stored.getStringValue(NetworkKeys::className());
}

QString DzUnknownBrick::getPreferredName() const
{
    return tr("Unknown (%1)").arg(getStoredClassName());
}

DzBrickParam* DzUnknownBrick::paramFor(const QString& name, DzBrickParam::Direction direction)
{
    DzBrickParam*& param = m_paramIndex[QString::number(direction) + name];
    if (!param) {
        auto* unknown = new UnknownParam(direction);
        unknown->setArg(name);
        param = unknown;
        param->setName(name);
        param->setLabel(name);
        addParameter(param);
    }
    return param;
}
