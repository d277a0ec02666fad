// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickItem.h"
#include "BrickSelection.h"
#include "DocumentController.h"
#include "MixerDocument.h"
#include "NetworkEdit.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "NetworkWalk.h"
#include "ProblemNote.h"
#include "ProblemsPanel.h"
#include "PropertiesPanel.h"
#include "PropertyRow.h"
#include "WindowFixture.h"
#include "dzbrickparam.h"
#include "dzfloatproperty.h"
#include "dznumericproperty.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QTreeWidget>

namespace {

enum Column { BrickColumn, ProblemColumn, RemedyColumn };

/// What the renderer makes of a network, told and cured in the window.
class RendererProblems : public WindowTest
{
protected:
    DzShaderBrick* add(const char* className)
    {
        return document()->getEdit()->addBrick(QString::fromLatin1(className), QPointF(-300, 300));
    }
    /// Puts a new material in place of the one that new documents have.
    DzShaderBrick* takeMaterial(const char* className)
    {
        DzShaderBrick* material = add(className);
        EXPECT_TRUE(
            linkPins(param(material, "result"), param(rootOf(document()->getUser()), "material")));
        document()->getEdit()->deleteBricks({ brick("Matte") });
        dzUndoStack->clearAll();
        return material;
    }
    DzShaderBrick* addTo(DzShaderBrick* target, const char* input, const char* className)
    {
        DzShaderBrick* added = add(className);
        EXPECT_TRUE(linkPins(param(added, "result"), param(target, input)));
        dzUndoStack->clearAll();
        return added;
    }
    ProblemsPanel* panel() const { return m_window->getProblems(); }
    QTreeWidget* list() const { return panel()->findChild<QTreeWidget*>(); }
    /// All problems, as "rule of brick".
    QStringList told()
    {
        panel()->updateAllNow();
        settle();
        QStringList found;
        for (const Problem& problem : panel()->getProblems())
            found.append(QStringLiteral("%1 of %2")
                             .arg(problem.rule,
                                 problem.brick ? problem.brick->getBrickTitle()
                                               : QStringLiteral("nothing")));
        return found;
    }
    void showPanel()
    {
        for (QDockWidget* dock : m_window->findChildren<QDockWidget*>())
            if (dock->objectName() == QLatin1String("Problems"))
                dock->show();
        settle();
    }
    void click(int row, int column)
    {
        QTreeWidgetItem* item = list()->topLevelItem(row);
        ASSERT_NE(item, nullptr);
        list()->scrollToItem(item);
        const QRect box = list()->visualItemRect(item);
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier,
            QPoint(list()->columnViewportPosition(column) + 20, box.center().y()));
        settle();
    }
    /// Chooses from the menu of a line, by the name of the action.
    void choose(int row, const char* name)
    {
        const QPoint place = itemPlace(list(), list()->topLevelItem(row));
        emit list()->customContextMenuRequested(place);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        auto* action = menu->findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_NE(action, nullptr) << name;
        QTest::mouseClick(
            menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
        settle();
    }
    static QString valueOf(DzShaderBrick* of, const char* name)
    {
        return property(of, name)->getValueText();
    }
    QVector<ProblemNote*> notesOf(const char* label)
    {
        QVector<ProblemNote*> shown;
        for (ProblemNote* note : row(label)->findChildren<ProblemNote*>())
            if (note->isVisible())
                shown.append(note);
        return shown;
    }
    static QString vector(DzShaderBrick* of, const char* name)
    {
        QStringList numbers;
        const DzBrickParam* input = param(of, name);
        for (int i = 0; i < input->getNumProperties(); ++i)
            numbers.append(input->getProperty(i)->getValueText());
        return numbers.join(QLatin1Char(' '));
    }
};

} // namespace

TEST_F(RendererProblems, aNewDocumentHasNone)
{
    EXPECT_EQ(told(), QStringList());
}

TEST_F(RendererProblems, noExampleRaisesAFalseAlarm)
{
    const QDir folder(QStringLiteral(VIREO_SOURCE_DIR "/examples"));
    const QStringList names = folder.entryList({ QStringLiteral("*.sskn") });
    ASSERT_GE(names.size(), 13);
    for (const QString& name : names) {
        m_window->getDocuments()->openAsNew(folder.filePath(name));
        EXPECT_EQ(told(), QStringList()) << name.toStdString();
    }
}

TEST_F(RendererProblems, glassOfIndexZeroIsToldWhereItIsAndCuredByOneClick)
{
    DzShaderBrick* glass = takeMaterial("VireoMatGlassBrick");
    ASSERT_EQ(told(), QStringList { QStringLiteral("mirror-glass of Glass") });
    const Problem problem = panel()->getProblems().first();
    EXPECT_EQ(problem.property, property(glass, "index"));
    EXPECT_EQ(problem.level, ProblemLevel::Warns);
    EXPECT_TRUE(problem.text.contains(QLatin1String("mirror"))) << problem.text.toStdString();
    const BrickItem* item = m_window->getView()->getNetworkScene()->getItem(glass);
    EXPECT_EQ(item->getBadge(), problem.text);

    select({ glass });
    ASSERT_EQ(notesOf("index").size(), 1);
    auto* remedy = notesOf("index").first()->findChild<QToolButton*>(QStringLiteral("remedy"));
    ASSERT_NE(remedy, nullptr);
    EXPECT_EQ(remedy->text(), QStringLiteral("Set index to 1.5"));
    QTest::mouseClick(remedy, Qt::LeftButton);
    EXPECT_EQ(valueOf(glass, "index"), QStringLiteral("1.5"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Set index to 1.5"));
    EXPECT_EQ(told(), QStringList());
    EXPECT_TRUE(notesOf("index").isEmpty());
    EXPECT_EQ(item->getBadge(), QString());
    dzUndoStack->undo();
    EXPECT_EQ(valueOf(glass, "index"), QStringLiteral("0"));
    EXPECT_EQ(told().size(), 1);
}

TEST_F(RendererProblems, aCollapsedTextureIsStretchedFromTheList)
{
    DzShaderBrick* checks = addTo(brick("Matte"), "sigma", "VireoTexFltFbmBrick");
    showPanel();
    ASSERT_EQ(
        told(), QStringList { QStringLiteral("collapsed-space of ") + checks->getBrickTitle() });
    EXPECT_EQ(list()->topLevelItem(0)->text(RemedyColumn),
        QStringLiteral("Set translate to 0 0 0, rotate to 0 0 0, scale to 1 1 1"));
    click(0, ProblemColumn);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 0) << "looking changes nothing";
    EXPECT_EQ(document()->getSelection()->getCurrent(), checks);
    click(0, RemedyColumn);
    EXPECT_EQ(vector(checks, "translate"), QStringLiteral("0 0 0"));
    EXPECT_EQ(vector(checks, "rotate"), QStringLiteral("0 0 0"));
    EXPECT_EQ(vector(checks, "scale"), QStringLiteral("1 1 1"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(told(), QStringList());
}

TEST_F(RendererProblems, allOfASortAreCuredInOneStep)
{
    DzShaderBrick* matte = brick("Matte");
    DzShaderBrick* first = addTo(matte, "sigma", "VireoTexFltFbmBrick");
    DzShaderBrick* second = addTo(matte, "bumpmap", "VireoTexFltFbmBrick");
    showPanel();
    ASSERT_EQ(told().size(), 2);
    choose(0, "fixAll");
    EXPECT_EQ(vector(first, "scale"), QStringLiteral("1 1 1"));
    EXPECT_EQ(vector(second, "scale"), QStringLiteral("1 1 1"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(told(), QStringList());
    dzUndoStack->undo();
    EXPECT_EQ(told().size(), 2);
}

TEST_F(RendererProblems, whatIsNotWantedIsNotToldAgainUntilItIsWanted)
{
    takeMaterial("VireoMatGlassBrick");
    showPanel();
    ASSERT_EQ(told().size(), 1);
    auto* tellAll = panel()->findChild<QToolButton*>(QStringLiteral("tellAll"));
    EXPECT_FALSE(tellAll->isVisible());
    choose(0, "never");
    EXPECT_EQ(told(), QStringList());
    openWindow();
    m_window->getDocuments()->createNew();
    settle();
    takeMaterial("VireoMatGlassBrick");
    showPanel();
    EXPECT_EQ(told(), QStringList()) << "the next run knows";
    tellAll = panel()->findChild<QToolButton*>(QStringLiteral("tellAll"));
    ASSERT_TRUE(tellAll->isVisible());
    QTest::mouseClick(tellAll, Qt::LeftButton);
    EXPECT_EQ(told().size(), 1);
    EXPECT_FALSE(tellAll->isVisible());
}

TEST_F(RendererProblems, aBandThatCrashesTheRendererGetsTwoSteps)
{
    DzShaderBrick* band = addTo(brick("Matte"), "sigma", "VireoTexFltBAndBrick");
    showPanel();
    told();
    ASSERT_FALSE(panel()->getProblems().isEmpty());
    const Problem problem = panel()->getProblems().first();
    EXPECT_EQ(problem.brick, band);
    EXPECT_EQ(problem.level, ProblemLevel::Stops);
    click(0, RemedyColumn);
    EXPECT_EQ(valueOf(band, "count"), QStringLiteral("2"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    for (const QString& rule : told())
        EXPECT_FALSE(rule.startsWith(problem.rule)) << rule.toStdString();
    dzUndoStack->undo();
    EXPECT_EQ(valueOf(band, "count"), QStringLiteral("0"));
}

TEST_F(RendererProblems, anImageOnAValueIsPutBeforeIt)
{
    DzShaderBrick* matte = brick("Matte");
    const QString image = file("picture.png");
    ASSERT_TRUE(QImage(4, 4, QImage::Format_RGB32).save(image));
    propertyAs<DzNumericProperty>(matte, "Kd")->setMap(image);
    dzUndoStack->clearAll();
    showPanel();
    ASSERT_EQ(told(), QStringList { QStringLiteral("image-not-written of Matte") });
    click(0, RemedyColumn);
    const DzBrickParam* fed = param(matte, "Kd")->getConnection(0);
    ASSERT_NE(fed, nullptr);
    EXPECT_EQ(mapFileOf(property(fed->getTopBrickOwner(), "filename")), image);
    EXPECT_EQ(mapFileOf(property(matte, "Kd")), QString());
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    for (const QString& rule : told())
        EXPECT_FALSE(rule.startsWith(QLatin1String("image-not-written")));
    dzUndoStack->undo();
    EXPECT_EQ(param(matte, "Kd")->getNumConnections(), 0);
    EXPECT_EQ(mapFileOf(property(matte, "Kd")), image);
}

TEST_F(RendererProblems, aBumpThatIsNotReadLeadsToTheSearchForATexture)
{
    DzShaderBrick* matte = brick("Matte");
    propertyAs<DzFloatProperty>(matte, "bumpmap")->setValue(0.5f);
    dzUndoStack->clearAll();
    showPanel();
    ASSERT_EQ(told().size(), 1);
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    click(0, RemedyColumn);
    auto* search = m_window->getView()->findChild<QWidget*>(QStringLiteral("brickSearch"));
    ASSERT_NE(search, nullptr);
    auto* words = search->findChild<QLineEdit*>();
    QTest::keyClicks(words, QStringLiteral("fbm"));
    QTest::keyClick(words, Qt::Key_Return);
    settle();
    EXPECT_EQ(param(matte, "bumpmap")->getNumConnections(), 1);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

TEST_F(RendererProblems, backslashesBecomeSlashes)
{
    DzShaderBrick* map = addTo(brick("Matte"), "Kd", "VireoTexClrImageMapBrick");
    const QString image = file("picture.png");
    ASSERT_TRUE(QImage(4, 4, QImage::Format_RGB32).save(image));
    QString wrong = image;
    wrong.replace(wrong.lastIndexOf(QLatin1Char('/')), 1, QLatin1Char('\\'));
    propertyAs<DzNumericProperty>(map, "filename")->setMap(wrong);
    dzUndoStack->clearAll();
    showPanel();
    int row = -1;
    const QStringList rules = told();
    for (int i = 0; i < rules.size(); ++i)
        if (rules.at(i).startsWith(QLatin1String("swallowed-backslash")))
            row = i;
    ASSERT_GE(row, 0) << rules.join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(rules.filter(QStringLiteral("swallowed")).size(), 1) << "it is said once";
    click(row, RemedyColumn);
    EXPECT_EQ(mapFileOf(property(map, "filename")), image);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

TEST_F(RendererProblems, aLockedValueStaysAndTheUserIsToldWhy)
{
    DzShaderBrick* glass = takeMaterial("VireoMatGlassBrick");
    property(glass, "index")->lock(true);
    dzUndoStack->clearAll();
    showPanel();
    ASSERT_EQ(told().size(), 1);
    click(0, RemedyColumn);
    EXPECT_EQ(valueOf(glass, "index"), QStringLiteral("0"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 0);
    EXPECT_TRUE(m_window->getMessage().contains(QLatin1String("locked")));
}

TEST_F(RendererProblems, whatGoesWhileItIsCheckedIsNotTold)
{
    DzShaderBrick* glass = takeMaterial("VireoMatGlassBrick");
    panel()->updateNow();
    document()->getEdit()->deleteBricks({ glass });
    dzUndoStack->clearAll();
    panel()->updateNow();
    panel()->updateAllNow();
    for (const Problem& problem : panel()->getProblems())
        EXPECT_NE(problem.rule, QStringLiteral("mirror-glass"));
    panel()->updateNow();
    closeWindow(); // while the last check runs
}

TEST_F(RendererProblems, aLineThatIsNotReadIsANoteOnceTheUserChoseIt)
{
    DzShaderBrick* noise = addTo(brick("Matte"), "sigma", "VireoTexFltFbmBrick");
    const auto notes = [this] {
        told();
        QVector<Problem> found;
        for (const Problem& problem : panel()->getProblems())
            if (problem.level == ProblemLevel::Notes)
                found.append(problem);
        return found;
    };
    EXPECT_EQ(notes().size(), 0);
    QString error;
    ASSERT_TRUE(
        property(noise, "coordinates")->setValueText(QStringLiteral("global normal"), &error))
        << error.toStdString();
    ASSERT_EQ(notes().size(), 1);
    EXPECT_EQ(notes().first().property, property(noise, "coordinates"));
    EXPECT_TRUE(notes().first().text.contains(QLatin1String("takes global")));
}
