// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <QPointer>
#include <QString>

/// Where a parameter stands, for undo items: inputs may be deleted and made again under the same
/// key while the items wait.
class ParamAddress
{
public:
    ParamAddress() {}
    explicit ParamAddress(DzBrickParam* param);

    /// The parameter, or the one that stands in its place now; null when there is none.
    DzBrickParam* find();

private:
    QPointer<DzShaderBrick> m_brick;
    QPointer<DzBrickParam> m_param;
    QString m_key;
};
