// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

// Any bytes are a network file: they load or are refused with a message. What loads can be
// written as text, and saves to a file that loads and saves to the same bytes.

#include "NetworkCode.h"
#include "VireoBrickBase.h"
#include "VireoBrickUser.h"
#include "VireoRootBrick.h"
#include "dzapp.h"
#include "dzbrickuserfile.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

void require(bool condition, const char* what, const QString& detail = QString())
{
    if (condition)
        return;
    std::fprintf(stderr, "%s %s\n", what, detail.toUtf8().constData());
    std::abort();
}

void exportAll(const VireoBrickUser& user)
{
    GenerateOptions options;
    QList<uint> ids;
    user.getBrickIDs(ids);
    for (const uint id : qAsConst(ids)) {
        auto* brick = qobject_cast<VireoBrickBase*>(user.getBrick(id));
        if (!brick)
            continue;
        options.literalValues = id % 2 == 0;
        options.mapFiles = id % 3 == 0;
        generateCode(brick, options);
    }
    if (VireoRootBrick* root = findRootBrick(&user))
        exportText(generateCode(root, options));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // Both live as long as the process.
    static QCoreApplication application(*argc, *argv);
    static DzApp host;
    host.setMessageHandler([](DzApp::MessageType, const QString&) {});
    host.getUndoStack()->lock();
    QString error;
    require(
        host.getPluginMgr()->loadPlugin(QStringLiteral(VIREO_MODULE), &error), "module:", error);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<int>(size));
    VireoBrickUser user;
    DzBrickUserFile file;
    if (!file.loadText(text, QStringLiteral("input"), &user)) {
        require(!file.getError().isEmpty(), "refused without a message");
        return 0;
    }
    exportAll(user);

    const QByteArray saved = file.saveText(&user);
    VireoBrickUser again;
    DzBrickUserFile fileAgain;
    require(fileAgain.loadText(saved, QStringLiteral("saved"), &again),
        "what was saved does not load:", fileAgain.getError());
    require(fileAgain.saveText(&again) == saved, "saving twice gives different bytes");
    return 0;
}
