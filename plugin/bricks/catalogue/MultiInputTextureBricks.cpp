// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MultiInputTextureBricks.h"

VireoTexFltBAndBrick::VireoTexFltBAndBrick()
{
    addNumberedPairs("offset", addFloat("amount", 0));
}

VireoTexClrBAndBrick::VireoTexClrBAndBrick()
{
    addNumberedPairs("offset", addFloat("amount", 0));
}

VireoTexFnlBAndBrick::VireoTexFnlBAndBrick()
{
    addNumberedPairs("offset", addFloat("amount", 0));
}

VireoTexFltMultiMixBrick::VireoTexFltMultiMixBrick()
{
    addNumberedPairs("weight", nullptr);
}

VireoTexClrMultiMixBrick::VireoTexClrMultiMixBrick()
{
    addNumberedPairs("weight", nullptr);
}

VireoTexFnlMultiMixBrick::VireoTexFnlMultiMixBrick()
{
    addNumberedPairs("weight", nullptr);
}
