// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"
#include "dzshaderbrick.h"

/// Calls `visit(param, peer)` for each link of a brick: of its outputs, or of its inputs and
/// settings rows. Parameters come in their order, the links of one in the order of linking. `visit`
/// must not change links.
template <typename Visit>
void forEachLink(const DzShaderBrick* brick, bool ofOutputs, const Visit& visit)
{
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* param = brick->getParameter(i);
        if (param->isOutput() != ofOutputs)
            continue;
        for (int k = 0; k < param->getNumConnections(); ++k)
            visit(param, param->getConnection(k));
    }
}

/// The same for what feeds the brick: `visit(input, output)`.
template <typename Visit>
void forEachInputLink(const DzShaderBrick* brick, const Visit& visit)
{
    forEachLink(brick, false, visit);
}

/// The same for what the brick feeds: `visit(output, input)`.
template <typename Visit>
void forEachOutputLink(const DzShaderBrick* brick, const Visit& visit)
{
    forEachLink(brick, true, visit);
}
