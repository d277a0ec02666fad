// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Dialogs.h"
#include "TestSupport.h"
#include "VireoExportCodeAction.h"
#include "dzbrickuserfile.h"
#include "dzmainwindow.h"
#include "dzundostack.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDir>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <QtTest>
#include <memory>

namespace {

class ExportWindowTest : public testing::Test
{
protected:
    ExportWindowTest()
    {
        dzApp->setInterface(&main);
        main.resize(1000, 700);
        main.show();
    }
    ~ExportWindowTest() override { dzApp->setInterface(nullptr); }

    /// Triggers the action on a brick as the mixer does.
    void exportCode(DzShaderBrick* brick)
    {
        const std::unique_ptr<DzBrickAction> action(
            qobject_cast<DzBrickAction*>(dzApp->createInstance("VireoExportCodeAction")));
        ASSERT_NE(action, nullptr);
        action->setBrick(brick);
        dzTriggerBrickAction(action.get(), brick);
    }
    QList<QDialog*> windows() const
    {
        return main.findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly);
    }
    QPlainTextEdit* edit(int index) const
    {
        return windows().at(index)->findChild<QPlainTextEdit*>();
    }

    DzMainWindow main;
    VireoBrickUser user;
};

const QString separator = "#---------------------------------------------------------------------";

} // namespace

TEST_F(ExportWindowTest, theRootOffersTheAction)
{
    const BrickPtr root = makeBrick("VireoRootBrick");
    EXPECT_EQ(root->getBrickActionList(), QStringList({ "VireoExportCodeAction", "" }));
    EXPECT_EQ(VireoExportCodeAction().text(), QString("Export LuxRender Code"));
}

TEST_F(ExportWindowTest, theWindowIsModelessAndLooksAsItShould)
{
    exportCode(addBrick(user, "VireoRootBrick"));
    ASSERT_EQ(windows().size(), 1);
    const QDialog* window = windows().first();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isModal());
    EXPECT_EQ(window->windowTitle(), QString("Vireo - LuxRender Code"));
    EXPECT_EQ(window->size(), QSize(800, 600));
    EXPECT_EQ(window->parentWidget(), &main);
    ASSERT_EQ(window->findChildren<QPlainTextEdit*>().size(), 1);
    ASSERT_NE(qobject_cast<QVBoxLayout*>(window->layout()), nullptr);
    EXPECT_EQ(window->layout()->count(), 1);
    EXPECT_EQ(window->layout()->itemAt(0)->widget(), edit(0));
}

TEST_F(ExportWindowTest, anEmptyRootShowsHeadingsAroundItsDefaults)
{
    exportCode(addBrick(user, "VireoRootBrick"));
    EXPECT_TEXT(separator + "\n# Material Settings\n\n\n" + separator + "\n# Mesh Settings\n"
            + freshMeshText(),
        edit(0)->toPlainText());
}

TEST_F(ExportWindowTest, everyExampleIsShownAsItsCommittedText)
{
    const QStringList examples
        = QDir(projectPath("examples")).entryList({ "*.sskn" }, QDir::Files, QDir::Name);
    ASSERT_GE(examples.size(), 12);
    for (const QString& name : examples) {
        VireoBrickUser example;
        DzBrickUserFile file;
        ASSERT_TRUE(file.load(projectPath("examples/" + name), &example));
        DzShaderBrick* root = nullptr;
        QList<uint> ids;
        example.getBrickIDs(ids);
        for (const uint id : qAsConst(ids))
            if (example.getBrick(id)->inherits("VireoRootBrick"))
                root = example.getBrick(id);
        ASSERT_NE(root, nullptr) << name.toStdString();
        exportCode(root);
        QString expected = projectFile("examples/" + name.chopped(5) + ".txt");
        EXPECT_TEXT(expected, windows().last()->findChild<QPlainTextEdit*>()->toPlainText());
    }
}

TEST_F(ExportWindowTest, aLockedOrUnlockedValueIsNeverAPlaceholder)
{
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    exportCode(root);
    lockAll(matte);
    exportCode(root);
    EXPECT_TEXT(edit(0)->toPlainText(), edit(1)->toPlainText());
    EXPECT_TRUE(edit(0)->toPlainText().contains("\t\"color   Kd\" ["));
    EXPECT_FALSE(edit(0)->toPlainText().contains("$("));
    EXPECT_FALSE(edit(0)->toPlainText().contains("%("));
}

TEST_F(ExportWindowTest, eachRunOpensAnotherWindowWithTheSameText)
{
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    ASSERT_TRUE(link(addBrick(user, "VireoMatGlossyBrick"), root, "material"));
    for (int i = 0; i < 3; ++i)
        exportCode(root);
    ASSERT_EQ(windows().size(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(windows().at(i)->isVisible());
        EXPECT_TEXT(edit(0)->toPlainText(), edit(i)->toPlainText());
    }
    EXPECT_TRUE(edit(0)->toPlainText().contains("\"Lm_material1\""));
}

TEST_F(ExportWindowTest, aWindowKeepsItsTextAndStaysWhenTheNetworkGoes)
{
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    exportCode(root);
    const QString before = edit(0)->toPlainText();
    user.deleteAllBricks();
    dzUndoStack->clearAll();
    QTest::qWait(10);
    ASSERT_EQ(windows().size(), 1);
    EXPECT_TRUE(windows().first()->isVisible());
    EXPECT_TEXT(before, edit(0)->toPlainText());
}

TEST_F(ExportWindowTest, exportingChangesNothingAndLeavesNoStep)
{
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    ASSERT_TRUE(link(addBrick(user, "VireoMatGlossyBrick"), root, "material"));
    const QByteArray before = DzBrickUserFile().saveText(&user);
    dzUndoStack->clearAll();
    exportCode(root);
    EXPECT_EQ(DzBrickUserFile().saveText(&user), before);
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_F(ExportWindowTest, theTextIsSelectedAndCopiedByKeyboardAndMouse)
{
    exportCode(addBrick(user, "VireoRootBrick"));
    QPlainTextEdit* text = edit(0);
    ASSERT_TRUE(QTest::qWaitForWindowActive(windows().first()));
    text->setFocus();
    QTest::keySequence(text, QKeySequence::SelectAll);
    QTest::keySequence(text, QKeySequence::Copy);
    EXPECT_TEXT(text->toPlainText(), QApplication::clipboard()->text());
    // Two clicks select the word under the mouse.
    QTextCursor word(text->document()->find("Mesh"));
    ASSERT_FALSE(word.isNull());
    word.setPosition(word.selectionStart() + 2);
    QTest::mouseDClick(
        text->viewport(), Qt::LeftButton, Qt::NoModifier, text->cursorRect(word).center());
    EXPECT_EQ(text->textCursor().selectedText(), QString("Mesh"));
}

TEST_F(ExportWindowTest, aWindowIsClosedByKeyboardAndItsNeighbourStays)
{
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    exportCode(root);
    exportCode(root);
    QTest::keyClick(windows().first(), Qt::Key_Escape);
    EXPECT_FALSE(windows().first()->isVisible());
    EXPECT_TRUE(windows().last()->isVisible());
}

TEST_F(ExportWindowTest, anyBrickOfThePlugInCanBeExported)
{
    exportCode(addBrick(user, "VireoTexFltUvMaskBrick"));
    EXPECT_TRUE(edit(0)->toPlainText().contains("\nTexture \"Lm_texture1\" \"float\" \"uvmask\"\n"))
        << edit(0)->toPlainText().toStdString();
    EXPECT_TRUE(edit(0)->toPlainText().endsWith("\n# Mesh Settings\nLm_texture1"));
}

TEST_F(ExportWindowTest, withoutABrickNoWindowOpens)
{
    VireoExportCodeAction action;
    action.trigger();
    action.doTrigger();
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    action.setBrick(root);
    user.deleteAllBricks();
    dzUndoStack->clearAll();
    action.trigger();
    EXPECT_EQ(windows().size(), 0);
}

TEST_F(ExportWindowTest, withoutAMainWindowTheWindowGoesWhenItIsClosed)
{
    dzApp->setInterface(nullptr);
    exportCode(addBrick(user, "VireoRootBrick"));
    QPointer<QDialog> window;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->windowTitle() == "Vireo - LuxRender Code")
            window = qobject_cast<QDialog*>(widget);
    ASSERT_NE(window, nullptr);
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window, nullptr);
}
