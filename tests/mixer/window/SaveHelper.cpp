// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

// A program to be killed: it works on a network as told, and says a line when it got there.
//
//   mixer_save_helper save FILE OLD NEW   saves OLD and NEW over FILE in turn, for ever
//   mixer_save_helper autosave STORE FILE opens FILE, changes it, and rests when a copy is kept
//   mixer_save_helper scene STORE FILE    the same with a scene

#include "AutosaveStore.h"
#include "Autosaver.h"
#include "MixerDocument.h"
#include "NetworkEdit.h"
#include "SceneSession.h"
#include "dzapp.h"
#include "dzmaterial.h"
#include "dzpluginmgr.h"
#include "dzscene.h"
#include "dzsimpleelementdata.h"
#include "dzundostack.h"

#include <QDir>
#include <QGuiApplication>
#include <QTimer>
#include <cstdio>

namespace {

void say(const char* line)
{
    std::printf("%s\n", line);
    std::fflush(stdout);
}

int fail(const QString& cause)
{
    std::fprintf(stderr, "mixer_save_helper: %s\n", cause.toUtf8().constData());
    return 1;
}

int saveForEver(const QString& file, const QString& oldPath, const QString& newPath)
{
    const std::unique_ptr<MixerDocument> first = MixerDocument::create(nullptr);
    const std::unique_ptr<MixerDocument> second = MixerDocument::create(nullptr);
    if (!first->load(oldPath) || !second->load(newPath))
        return fail(QStringLiteral("cannot load the networks"));
    say("ready");
    for (;;) {
        if (!second->save(file) || !first->save(file))
            return fail(first->getError() + second->getError());
    }
}

int keepACopy(const QString& folder, const QString& path)
{
    AutosaveStore store(folder);
    Autosaver saver(&store);
    saver.setRestTime(10);
    const std::unique_ptr<MixerDocument> saved = MixerDocument::create(nullptr);
    const std::unique_ptr<MixerDocument> fresh = MixerDocument::create(nullptr);
    if (!saved->load(path) || !fresh->loadTemplate(path))
        return fail(saved->getError());
    fresh->setTitle(QStringLiteral("Never Saved"));
    saver.watch(saved.get());
    saver.watch(fresh.get());
    for (MixerDocument* document : { saved.get(), fresh.get() })
        document->getEdit()->setTitle(
            document->getEdit()->getBricks().last(), QStringLiteral("Changed Before the Crash"));
    QTimer::singleShot(400, [] { say("kept"); });
    return QGuiApplication::exec();
}

int keepACopyOfAScene(const QString& folder, const QString& path)
{
    AutosaveStore store(folder);
    Autosaver saver(&store);
    saver.setRestTime(10);
    SceneSession session;
    if (!session.load(path))
        return fail(session.getError());
    saver.watch(&session);
    DzUndoStackHold hold;
    for (const DzSurface& surface : dzScene->getSurfaces())
        surface.material->addDataItem(
            new DzSimpleElementData(QStringLiteral("ChangedBeforeTheCrash"), true));
    hold.accept(QStringLiteral("Change"));
    QTimer::singleShot(400, [] { say("kept"); });
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    DzApp host;
    QString error;
    if (!host.getPluginMgr()->loadPlugin(QStringLiteral(VIREO_MODULE), &error))
        return fail(error);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.value(1) == QLatin1String("save") && arguments.size() == 5)
        return saveForEver(arguments.at(2), arguments.at(3), arguments.at(4));
    if (arguments.value(1) == QLatin1String("autosave") && arguments.size() == 4)
        return keepACopy(arguments.at(2), arguments.at(3));
    if (arguments.value(1) == QLatin1String("scene") && arguments.size() == 4)
        return keepACopyOfAScene(arguments.at(2), arguments.at(3));
    return fail(QStringLiteral("wrong arguments"));
}
