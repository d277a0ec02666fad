// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkInput.h"

#include "Command.h"
#include "VireoRootBrick.h"
#include "dzbrickuserfile.h"

VireoRootBrick* loadNetworkRoot(const QString& path, IDzBrickUser* user, const char* purpose)
{
    DzBrickUserFile file;
    if (!file.load(path, user))
        fail(file.getError());
    for (const QString& warning : file.getWarnings())
        notice(QStringLiteral("warning: %1: %2").arg(path, warning));
    VireoRootBrick* root = findRootBrick(user);
    if (!root)
        fail(QStringLiteral("cannot %1 %2: the network has no root brick; add a \"Vireo "
                            "Surface\" and link the material to it")
                 .arg(QLatin1String(purpose), path));
    return root;
}
