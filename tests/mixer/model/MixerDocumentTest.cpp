// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MixerDocument.h"
#include "AutosaveFolder.h"
#include "AutosaveStore.h"
#include "Autosaver.h"
#include "BrickSelection.h"
#include "NetworkEdit.h"
#include "NetworkFrames.h"
#include "NetworkText.h"
#include "NetworkWalk.h"
#include "PropertyGroup.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzintproperty.h"
#include "dznumericproperty.h"
#include "dzundostack.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

std::unique_ptr<MixerDocument> example(const char* name)
{
    std::unique_ptr<MixerDocument> document = MixerDocument::create(nullptr);
    EXPECT_TRUE(document->load(projectPath(QStringLiteral("examples/") + QLatin1String(name))))
        << document->getError().toStdString();
    return document;
}

DzShaderBrick* brickNamed(const MixerDocument& document, const char* name)
{
    for (DzShaderBrick* brick : bricksOf(document.getUser()))
        if (brick->getPreferredName() == QLatin1String(name))
            return brick;
    ADD_FAILURE() << name;
    return nullptr;
}

/// Lets timers of the document run out.
void rest()
{
    QTest::qWait(250);
}

} // namespace

TEST(MixerDocument, loadsAndSavesTheSameBytes)
{
    const std::unique_ptr<MixerDocument> document = example("glossy-checkerboard.sskn");
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("copy.sskn"));
    ASSERT_TRUE(document->save(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), projectFile(QStringLiteral("examples/glossy-checkerboard.sskn")));
    EXPECT_EQ(document->getTitle(), QStringLiteral("copy.sskn"));
    EXPECT_FALSE(document->isModified());
}

TEST(MixerDocument, aFileThatCannotBeReadChangesNothing)
{
    const std::unique_ptr<MixerDocument> document = example("plain-matte.sskn");
    const QByteArray before = document->getText();
    EXPECT_FALSE(document->load(projectPath(QStringLiteral("README.md"))));
    EXPECT_TRUE(document->getError().contains(QLatin1String("README.md")));
    EXPECT_EQ(document->getText(), before);
    EXPECT_TRUE(document->getPath().endsWith(QLatin1String("plain-matte.sskn")));
}

TEST(MixerDocument, aFileThatCannotBeWrittenIsAnError)
{
    const std::unique_ptr<MixerDocument> document = example("plain-matte.sskn");
    const QString before = document->getPath();
    EXPECT_FALSE(document->save(QStringLiteral("/no such folder/file.sskn")));
    EXPECT_TRUE(document->getError().contains(QLatin1String("/no such folder/file.sskn")));
    EXPECT_EQ(document->getPath(), before);
}

TEST(MixerDocument, everyEditSetsTheMarkAndUndoTakesItBack)
{
    const std::unique_ptr<MixerDocument> document = example("glossy-checkerboard.sskn");
    DzShaderBrick* glossy = brickNamed(*document, "Glossy");
    const auto leavesMark = [&](const char* what, const std::function<void()>& edit) {
        EXPECT_FALSE(document->isModified()) << what;
        edit();
        EXPECT_TRUE(document->isModified()) << what;
        ASSERT_TRUE(dzUndoStack->undo()) << what;
        rest();
        EXPECT_FALSE(document->isModified()) << what;
        ASSERT_TRUE(dzUndoStack->redo()) << what;
        rest();
        EXPECT_TRUE(document->isModified()) << what;
        dzUndoStack->undo();
        rest();
    };
    leavesMark("value",
        [&] { static_cast<DzNumericProperty*>(property(glossy, "index"))->setDoubleValue(1.7); });
    leavesMark("lock", [&] { property(glossy, "Kd")->lock(true); });
    leavesMark("map", [&] {
        static_cast<DzNumericProperty*>(property(glossy, "Kd"))->setMap(QStringLiteral("a.png"));
    });
    leavesMark("title", [&] { document->getEdit()->setTitle(glossy, QStringLiteral("Paint")); });
    leavesMark("add",
        [&] { document->getEdit()->addBrick(QStringLiteral("VireoMatGlassBrick"), QPointF()); });
    leavesMark("delete", [&] { document->getEdit()->deleteBricks({ glossy }); });
    leavesMark("unlink", [&] { unlinkAll(param(glossy, "result")); });
    leavesMark("move", [&] { document->getEdit()->moveBricks({ { glossy, QPointF(7, 7) } }); });
    leavesMark(
        "frame", [&] { frameBricks(document->getEdit(), { glossy }, QStringLiteral("Frame")); });
}

TEST(MixerDocument, editsOfAnotherDocumentLeaveNoMark)
{
    const std::unique_ptr<MixerDocument> first = example("plain-matte.sskn");
    const std::unique_ptr<MixerDocument> second = example("velvet.sskn");
    brickNamed(*first, "Matte")
        ->findParameterByName(QStringLiteral("Kd"))
        ->getProperty(0)
        ->lock(true);
    rest();
    EXPECT_TRUE(first->isModified());
    EXPECT_FALSE(second->isModified());
}

TEST(MixerDocument, savingClearsTheMarkAndUndoingBehindItSetsIt)
{
    QTemporaryDir dir;
    const std::unique_ptr<MixerDocument> document = example("plain-matte.sskn");
    property(brickNamed(*document, "Matte"), "Kd")->lock(true);
    ASSERT_TRUE(document->save(dir.filePath(QStringLiteral("a.sskn"))));
    EXPECT_FALSE(document->isModified());
    dzUndoStack->undo();
    rest();
    EXPECT_TRUE(document->isModified());
    dzUndoStack->redo();
    rest();
    EXPECT_FALSE(document->isModified());
}

TEST(MixerDocument, undoingBehindASavedStateIsAChangeAtOnce)
{
    QTemporaryDir dir;
    const std::unique_ptr<MixerDocument> document = example("plain-matte.sskn");
    property(brickNamed(*document, "Matte"), "Kd")->lock(true);
    ASSERT_TRUE(document->save(dir.filePath(QStringLiteral("a.sskn"))));
    dzUndoStack->undo();
    EXPECT_TRUE(document->isModified());
    EXPECT_FALSE(document->isPristine());
}

TEST(MixerDocument, stepsOfAnotherDocumentLieBetweenASavedStateAndTheWayBackToIt)
{
    QTemporaryDir dir;
    const std::unique_ptr<MixerDocument> first = example("plain-matte.sskn");
    const std::unique_ptr<MixerDocument> second = example("velvet.sskn");
    const auto lock = [](MixerDocument& document, const char* name) {
        property(document.getUser()->getBrick(2), name)->lock(true);
    };
    lock(*first, "Kd");
    ASSERT_TRUE(first->save(dir.filePath(QStringLiteral("a.sskn"))));
    lock(*second, "Kd");
    lock(*first, "sigma");
    dzUndoStack->undo();
    rest();
    EXPECT_FALSE(first->isModified());
    EXPECT_TRUE(second->isModified());
    dzUndoStack->undo();
    rest();
    EXPECT_FALSE(first->isModified());
    EXPECT_FALSE(second->isModified());
    dzUndoStack->undo();
    EXPECT_TRUE(first->isModified());
    // Another way from here leads to the same number of steps, and not to the file.
    lock(*first, "sigma");
    rest();
    EXPECT_TRUE(first->isModified());
}

TEST(MixerDocument, whatIsTakenBackWithoutAStepLeavesNoMark)
{
    const std::unique_ptr<MixerDocument> document = example("plain-matte.sskn");
    DzShaderBrick* band = nullptr;
    {
        const DzUndoStackLock lock;
        band = document->getEdit()->addBrick(QStringLiteral("VireoTexFltBAndBrick"), QPointF());
    }
    rest();
    EXPECT_TRUE(document->isModified()) << "a change without a step is one";
    QTemporaryDir dir;
    ASSERT_TRUE(document->save(dir.filePath(QStringLiteral("a.sskn"))));
    auto* count = static_cast<DzNumericProperty*>(band->findProperty(QStringLiteral("count")));
    {
        const PropertyGroup group({ count });
        const PropertySession session(group);
        count->setDoubleValue(3);
        rest();
        EXPECT_TRUE(document->isModified()) << "while the drag goes on";
    }
    rest();
    EXPECT_FALSE(document->isModified());
    {
        const PropertyGroup group({ count });
        PropertySession session(group);
        count->setDoubleValue(2);
        session.accept(QStringLiteral("Drag"));
    }
    rest();
    EXPECT_TRUE(document->isModified());
    dzUndoStack->undo();
    rest();
    EXPECT_FALSE(document->isModified());
}

TEST(MixerDocument, aTemplateGetsAFreshIdentifierAndNoPath)
{
    const std::unique_ptr<MixerDocument> first = MixerDocument::create(nullptr);
    const std::unique_ptr<MixerDocument> second = MixerDocument::create(nullptr);
    const QString start = projectPath(QStringLiteral("plugin/data/start.sskn"));
    ASSERT_TRUE(first->loadTemplate(start));
    ASSERT_TRUE(second->loadTemplate(start));
    EXPECT_NE(first->getUser()->getIdentifier(), second->getUser()->getIdentifier());
    EXPECT_TRUE(first->getPath().isEmpty());
    EXPECT_TRUE(first->isPristine());
    // A root with a matte material linked to it, as fresh bricks are.
    ASSERT_EQ(first->getUser()->getNumBricks(), 2);
    DzShaderBrick* root = rootOf(first->getUser());
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(
        param(root, "material")->getConnection(0)->getTopBrickOwner(), brickNamed(*first, "Matte"));
    const BrickPtr fresh = makeBrick("VireoMatMatteBrick");
    forEachProperty(brickNamed(*first, "Matte"), [&](DzProperty* value) {
        EXPECT_EQ(value->getValueText(),
            property(fresh, value->getName().toUtf8().constData())->getValueText());
    });
}

// The text for the renderer.

TEST(NetworkText, isTheExportTextWithTheBrickOfEachLine)
{
    const std::unique_ptr<MixerDocument> document = example("glossy-checkerboard.sskn");
    const NetworkText code = textOf(document->getUser(), NetworkTextForm());
    QString expected
        = QString::fromUtf8(projectFile(QStringLiteral("examples/glossy-checkerboard.txt")));
    if (expected.endsWith(QLatin1Char('\n')) && !code.text.endsWith(QLatin1Char('\n')))
        expected.chop(1);
    EXPECT_TEXT(expected, code.text);
    EXPECT_TRUE(code.placeholders.isEmpty());
    EXPECT_EQ(code.brickAt(code.text.indexOf(QLatin1String("uscale")))->getBrickTitle(),
        QStringLiteral("Roughness Checks"));
    EXPECT_EQ(code.brickAt(code.text.indexOf(QLatin1String("multibounce"))),
        brickNamed(*document, "Glossy"));
    EXPECT_EQ(code.brickAt(0), nullptr);
    EXPECT_EQ(code.brickAt(code.text.size() + 10), nullptr);
}

TEST(NetworkText, lockedValuesStandBesideThePlaceholders)
{
    const std::unique_ptr<MixerDocument> document = example("glossy-checkerboard.sskn");
    DzProperty* locked = property(brickNamed(*document, "Glossy"), "Kd");
    const int before
        = textOf(document->getUser(), NetworkTextForm { false, false }).placeholders.size();
    locked->lock(true);
    const NetworkText code = textOf(document->getUser(), NetworkTextForm { false, false });
    EXPECT_EQ(code.placeholders.size(), before);
    int found = 0;
    for (const TextPlaceholder& placeholder : code.placeholders)
        if (placeholder.property == locked) {
            ++found;
            EXPECT_TRUE(placeholder.name.isEmpty());
            EXPECT_EQ(placeholder.brick, brickNamed(*document, "Glossy"));
        }
    EXPECT_EQ(found, 1);
}

TEST(NetworkText, imagesAreNamedOrWritten)
{
    const std::unique_ptr<MixerDocument> document = example("tinted-image-map.sskn");
    const NetworkText values = textOf(document->getUser(), NetworkTextForm());
    ASSERT_EQ(values.unwrittenMaps.size(), 1);
    EXPECT_EQ(values.unwrittenMaps.first().brick->getBrickTitle(), QStringLiteral("Brick Wall"));
    EXPECT_EQ(values.unwrittenMaps.first().property->getName(), QStringLiteral("filename"));
    EXPECT_FALSE(values.text.contains(QLatin1String("bricks.png")));

    const NetworkText files = textOf(document->getUser(), NetworkTextForm { true, true });
    EXPECT_TRUE(files.unwrittenMaps.isEmpty());
    EXPECT_TRUE(
        files.text.contains(QLatin1String("\t\"string  filename\" [\"textures/bricks.png\"]\n")));
}

TEST(NetworkText, aNetworkWithoutRootSaysSo)
{
    VireoBrickUser user;
    addBrick(user, "VireoMatMatteBrick");
    const NetworkText code = textOf(&user, NetworkTextForm());
    EXPECT_TRUE(code.text.isEmpty());
    EXPECT_TRUE(code.error.contains(QLatin1String("root")));
}

// Values of several bricks.

namespace {

PropertyGroup groupOf(const QVector<DzShaderBrick*>& bricks, const char* label)
{
    for (const PropertyGroup& group : commonProperties(bricks))
        if (group.getLabel() == QLatin1String(label))
            return group;
    ADD_FAILURE() << label;
    return PropertyGroup({});
}

} // namespace

TEST(PropertyGroup, bricksShareWhatAllOfThemHave)
{
    VireoBrickUser user;
    VireoBrickBase* first = addBrick(user, "VireoMatMatteBrick");
    VireoBrickBase* second = addBrick(user, "VireoMatMatteBrick");
    VireoBrickBase* glass = addBrick(user, "VireoMatGlassBrick");
    EXPECT_EQ(commonProperties({ first, second }).size(), commonProperties({ first }).size());
    // Glass and matte have the bump map in common.
    const std::vector<PropertyGroup> common = commonProperties({ first, glass });
    ASSERT_EQ(common.size(), 1u);
    EXPECT_EQ(common.front().getFirst()->getName(), QStringLiteral("bumpmap"));
    EXPECT_TRUE(commonProperties({}).empty());
}

TEST(PropertyGroup, changesAllInOneStepAndLeavesLockedOnes)
{
    VireoBrickUser user;
    VireoBrickBase* first = addBrick(user, "VireoMatMatteBrick");
    VireoBrickBase* second = addBrick(user, "VireoMatMatteBrick");
    VireoBrickBase* third = addBrick(user, "VireoMatMatteBrick");
    property(third, "sigma")->lock(true);
    dzUndoStack->clearAll();
    PropertyGroup sigma = groupOf({ first, second, third }, "Sigma");
    EXPECT_FALSE(sigma.isMixed());
    sigma.setNumber(12);
    EXPECT_TRUE(sigma.isMixed());
    EXPECT_EQ(property(second, "sigma")->getValueText(), QStringLiteral("12"));
    EXPECT_EQ(property(third, "sigma")->getValueText(), QStringLiteral("0"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Change Sigma"));
    dzUndoStack->undo();
    EXPECT_FALSE(sigma.isMixed());
}

TEST(PropertyGroup, aSessionIsOneStepOrNone)
{
    VireoBrickUser user;
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    dzUndoStack->clearAll();
    PropertyGroup sigma = groupOf({ matte }, "Sigma");
    {
        PropertySession session(sigma);
        for (int i = 1; i <= 50; ++i)
            sigma.setNumber(i);
    }
    EXPECT_EQ(property(matte, "sigma")->getValueText(), QStringLiteral("0"));
    EXPECT_FALSE(dzUndoStack->canUndo());
    {
        PropertySession session(sigma);
        for (int i = 1; i <= 50; ++i)
            sigma.setNumber(i);
        session.accept(QStringLiteral("Drag"));
    }
    EXPECT_EQ(property(matte, "sigma")->getValueText(), QStringLiteral("50"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_EQ(property(matte, "sigma")->getValueText(), QStringLiteral("0"));
}

TEST(PropertyGroup, countOfSeveralBricksIsOneStepWithAllPairsAndLinks)
{
    VireoBrickUser user;
    VireoBrickBase* first = addBrick(user, "VireoTexFltBAndBrick");
    VireoBrickBase* second = addBrick(user, "VireoTexFltMultiMixBrick");
    VireoBrickBase* source = addBrick(user, "VireoTexFltCheckerboardBrick");
    dzUndoStack->clearAll();
    PropertyGroup count = groupOf({ first, second }, "count");
    count.setNumber(3);
    ASSERT_TRUE(link(source, first, "tex3"));
    const QByteArray with = DzBrickUserFile().saveText(&user);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
    {
        PropertySession session(count);
        count.setNumber(2);
        count.setNumber(1);
        count.setNumber(0);
        session.accept(QStringLiteral("Drag"));
    }
    EXPECT_EQ(first->findParameterByName(QStringLiteral("tex1")), nullptr);
    const QByteArray without = DzBrickUserFile().saveText(&user);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 3);
    dzUndoStack->undo();
    EXPECT_EQ(DzBrickUserFile().saveText(&user), with);
    dzUndoStack->redo();
    EXPECT_EQ(DzBrickUserFile().saveText(&user), without);
}

TEST(PropertyGroup, resettingAllIsOneStepAlsoWherePairsGo)
{
    VireoBrickUser user;
    VireoBrickBase* band = addBrick(user, "VireoTexFltBAndBrick");
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    groupOf({ band }, "count").setNumber(4);
    groupOf({ matte }, "Sigma").setNumber(9);
    property(matte, "Kd")->lock(true);
    static_cast<DzNumericProperty*>(property(matte, "bumpmap"))->setDoubleValue(2);
    const QByteArray before = DzBrickUserFile().saveText(&user);
    dzUndoStack->clearAll();
    resetAllValues({ band, matte });
    EXPECT_EQ(property(matte, "sigma")->getValueText(), QStringLiteral("0"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    const QByteArray after = DzBrickUserFile().saveText(&user);
    dzUndoStack->undo();
    EXPECT_EQ(DzBrickUserFile().saveText(&user), before);
    dzUndoStack->redo();
    EXPECT_EQ(DzBrickUserFile().saveText(&user), after);
}

// Copies for the case of a crash.

TEST(Autosaver, keepsACopyAfterAMomentAndForgetsItWhenSaved)
{
    QTemporaryDir dir;
    AutosaveStore store(dir.filePath(QStringLiteral("store")));
    Autosaver saver(&store);
    saver.setRestTime(20);
    const std::unique_ptr<MixerDocument> document = example("plain-matte.sskn");
    saver.watch(document.get());
    const auto copies = [&] {
        int count = 0;
        const QDir sessions(store.getFolder());
        for (const QString& name : sessions.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            count += QDir(sessions.filePath(name))
                         .entryList({ QStringLiteral("*.network") }, QDir::Files)
                         .size();
        return count;
    };
    const auto keeps
        = [&](int count) { return QTest::qWaitFor([&] { return copies() == count; }, 5000); };
    QTest::qWait(60);
    EXPECT_EQ(copies(), 0);
    property(brickNamed(*document, "Matte"), "Kd")->lock(true);
    EXPECT_TRUE(keeps(1));
    property(brickNamed(*document, "Matte"), "sigma")->lock(true);
    EXPECT_TRUE(keeps(2));
    ASSERT_TRUE(document->save(dir.filePath(QStringLiteral("saved.sskn"))));
    EXPECT_EQ(copies(), 0);
}

TEST(Autosaver, aCopyThatFailedIsTriedAgain)
{
    QTemporaryDir dir;
    // A file where the folder should be: nothing can be written there by anybody.
    const QString folder = dir.filePath(QStringLiteral("store"));
    QFile obstacle(folder);
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    obstacle.close();
    AutosaveStore store(folder);
    Autosaver saver(&store);
    saver.setRestTime(20);
    QSignalSpy failures(&saver, &Autosaver::failed);
    const std::unique_ptr<MixerDocument> document = example("plain-matte.sskn");
    saver.watch(document.get());
    property(brickNamed(*document, "Matte"), "Kd")->lock(true);
    EXPECT_FALSE(saver.keepNow(document.get()));
    EXPECT_FALSE(saver.keepNow(document.get())) << "there still is no copy";
    EXPECT_EQ(failures.count(), 1);
    ASSERT_TRUE(obstacle.remove());
    for (int i = 0; i < 100 && !holdsCopy(folder); ++i)
        QTest::qWait(10);
    EXPECT_TRUE(holdsCopy(folder));
}
