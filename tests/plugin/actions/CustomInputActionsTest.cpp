// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Dialogs.h"
#include "TestSupport.h"
#include "VireoAddCustomExtInParamAction.h"
#include "VireoExtPropertyParam.h"
#include "VireoRemoveCustomExtInParamAction.h"
#include "dzbrickaction.h"
#include "dzbrickuserfile.h"
#include "dzfloatproperty.h"
#include "dzmainwindow.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>
#include <memory>

namespace {

const char* const addClass = "VireoAddCustomExtInParamAction";
const char* const removeClass = "VireoRemoveCustomExtInParamAction";

/// The types as the first question lists them.
const QStringList typeNames = { "LuxMaterial", "LuxVolume", "LFloat", "LColor", "LPoint", "LVector",
    "LNormal", "LMatrix", "LString", "LuxFresnel" };

class CustomInputActionsTest : public testing::Test
{
protected:
    CustomInputActionsTest()
    {
        dzApp->setInterface(&window);
        window.show();
        matte = addBrick(user, "VireoMatMatteBrick");
        dzUndoStack->clearAll();
    }
    ~CustomInputActionsTest() override { dzApp->setInterface(nullptr); }

    /// Triggers an action as the mixer does.
    void run(const char* className, std::vector<DialogAnswers::Answer> answers)
    {
        const std::unique_ptr<DzBrickAction> action(
            qobject_cast<DzBrickAction*>(dzApp->createInstance(className)));
        ASSERT_NE(action, nullptr);
        action->setBrick(matte);
        DialogAnswers dialogs(std::move(answers));
        dzTriggerBrickAction(action.get(), matte);
    }
    void add(const QString& type, const QString& name)
    {
        run(addClass, { itemByKeyboard(type), textByKeyboard(name) });
    }
    QStringList customNames() const
    {
        QStringList names;
        for (const DzBrickParam* param : matte->getCustomParams())
            names.append(param->getName());
        return names;
    }

    DzMainWindow window;
    VireoBrickUser user;
    VireoBrickBase* matte;
};

class EachTypeTest : public CustomInputActionsTest, public testing::WithParamInterface<int>
{
protected:
    QString typeName() const { return typeNames.at(GetParam()); }
    int type() const { return 1007 + GetParam(); }

    void expectAdded(const QString& name)
    {
        ASSERT_EQ(matte->getNumCustomParams(), 1);
        const DzBrickParam* param = matte->getCustomParam(0);
        EXPECT_EQ(param->getType(), type());
        EXPECT_EQ(param->getName(), name);
        EXPECT_EQ(param->getLabel(), name);
        EXPECT_TRUE(param->isInput());
        EXPECT_EQ(matte->getParameter(matte->getNumParameters() - 1), param);
    }
};

std::unique_ptr<VireoBrickUser> reloaded(const VireoBrickUser& user)
{
    std::unique_ptr<VireoBrickUser> copy(new VireoBrickUser);
    DzBrickUserFile file;
    const QByteArray saved = DzBrickUserFile().saveText(&user);
    EXPECT_TRUE(file.loadText(saved, "copy", copy.get())) << file.getError().toStdString();
    EXPECT_EQ(file.getWarnings(), QStringList());
    EXPECT_TEXT(QString::fromUtf8(saved), QString::fromUtf8(file.saveText(copy.get())));
    return copy;
}

} // namespace

// The actions themselves ---------------------------------------------------------------------

TEST_F(CustomInputActionsTest, theyAreMadeByNameWithoutAFactory)
{
    for (const char* name : { addClass, removeClass }) {
        EXPECT_EQ(dzApp->findClassFactory(name), nullptr);
        const std::unique_ptr<QObject> object(dzApp->createInstance(name));
        ASSERT_NE(qobject_cast<DzBrickAction*>(object.get()), nullptr) << name;
        EXPECT_STREQ(object->metaObject()->className(), name);
    }
    EXPECT_EQ(VireoAddCustomExtInParamAction().text(), QString("Add Custom Input..."));
    EXPECT_EQ(VireoRemoveCustomExtInParamAction().text(), QString("Remove Custom Input..."));
}

TEST_F(CustomInputActionsTest, withoutABrickOfThePlugInTheyAskNothing)
{
    DzUnknownBrick foreign { DzSettings() };
    VireoAddCustomExtInParamAction action;
    const DialogAnswers none({});
    action.trigger();
    action.doTrigger();
    action.setBrick(nullptr);
    action.trigger();
    action.setBrick(&foreign);
    action.trigger();
    // A brick that was handed over before is not kept beside.
    action.setBrick(matte);
    action.setBrick(&foreign);
    action.trigger();
    action.doTrigger();
    dzTriggerBrickAction(nullptr, matte);
    dzTriggerBrickAction(&action, nullptr);
}

TEST_F(CustomInputActionsTest, aBrickThatIsHandedOverTwiceIsAskedAboutOnce)
{
    VireoAddCustomExtInParamAction action;
    action.setBrick(matte);
    action.setBrick(matte);
    const DialogAnswers one({ cancelByKeyboard() });
    action.trigger();
}

TEST_F(CustomInputActionsTest, aBrickThatIsGoneIsAskedNothing)
{
    VireoRemoveCustomExtInParamAction action;
    action.setBrick(matte);
    user.deleteAllBricks();
    dzUndoStack->clearAll();
    const DialogAnswers none({});
    action.trigger();
}

// Adding -------------------------------------------------------------------------------------

TEST_F(CustomInputActionsTest, theQuestionsAreWordedAndFilledAsTheyShould)
{
    const auto checkType = [this](QDialog* dialog) {
        EXPECT_EQ(dialog->windowTitle(), QString("Parameter Type"));
        EXPECT_EQ(dialog->parentWidget(), &window);
        EXPECT_EQ(dialog->findChild<QLabel*>()->text(), QString("Type :"));
        const auto* box = dialog->findChild<QComboBox*>();
        QStringList items;
        for (int i = 0; i < box->count(); ++i)
            items.append(box->itemText(i));
        EXPECT_EQ(items, typeNames);
        EXPECT_EQ(box->currentIndex(), 0);
        EXPECT_FALSE(box->isEditable());
        QTest::keyClick(dialog, Qt::Key_Return);
    };
    const auto checkName = [this](QDialog* dialog) {
        EXPECT_EQ(dialog->windowTitle(), QString("Parameter Name"));
        EXPECT_EQ(dialog->parentWidget(), &window);
        EXPECT_EQ(dialog->findChild<QLabel*>()->text(), QString("Name :"));
        const auto* edit = dialog->findChild<QLineEdit*>();
        EXPECT_EQ(edit->text(), QString());
        EXPECT_EQ(edit->echoMode(), QLineEdit::Normal);
        QTest::keyClick(dialog, Qt::Key_Escape);
    };
    run(addClass, { checkType, checkName });
}

TEST_P(EachTypeTest, itIsAddedByKeyboard)
{
    run(addClass, { itemByKeyboard(typeName()), textByKeyboard("x") });
    expectAdded("x");
}

TEST_P(EachTypeTest, itIsAddedByMouse)
{
    run(addClass, { itemByMouse(typeName()), textByMouse("x") });
    expectAdded("x");
}

TEST_P(EachTypeTest, cancellingTheFirstQuestionAddsNothing)
{
    run(addClass, { [this](QDialog* dialog) {
        dialog->findChild<QComboBox*>()->setCurrentText(typeName());
        cancelByMouse()(dialog);
    } });
    run(addClass, { cancelByKeyboard() });
    EXPECT_EQ(customNames(), QStringList());
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_P(EachTypeTest, cancellingTheSecondQuestionAddsNothing)
{
    run(addClass, { itemByKeyboard(typeName()), [](QDialog* dialog) {
                       typeText(dialog->findChild<QLineEdit*>(), "x");
                       cancelByMouse()(dialog);
                   } });
    run(addClass, { itemByKeyboard(typeName()), cancelByKeyboard() });
    EXPECT_EQ(customNames(), QStringList());
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_P(EachTypeTest, aNameOfNothingButBlanksAddsNothing)
{
    run(addClass, { itemByKeyboard(typeName()), textByKeyboard(QString()) });
    run(addClass, { itemByKeyboard(typeName()), textByMouse(QString::fromUtf8(" \t \u00a0 ")) });
    EXPECT_EQ(customNames(), QStringList());
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_P(EachTypeTest, whatWasAddedIsUndoneAndRedoneAsOneStep)
{
    add(typeName(), "x");
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QString("Add Custom Input"));
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(customNames(), QStringList());
    EXPECT_EQ(matte->getNumParameters(), 4);
    EXPECT_TRUE(dzUndoStack->redo());
    expectAdded("x");
}

TEST_P(EachTypeTest, whatWasAddedIsSavedLoadedAndCopied)
{
    const QString name = QString::fromUtf8("50% \"größe\" %1 \\ 石");
    add(typeName(), name);
    expectAdded(name);
    const std::unique_ptr<VireoBrickUser> loaded = reloaded(user);
    VireoBrickUser copied;
    copied.copyFrom(&user);
    for (VireoBrickUser* other : { loaded.get(), &copied }) {
        matte = qobject_cast<VireoBrickBase*>(other->getBrick(1));
        ASSERT_NE(matte, nullptr);
        expectAdded(name);
    }
}

INSTANTIATE_TEST_SUITE_P(Types, EachTypeTest, testing::Range(0, 10));

TEST_F(CustomInputActionsTest, blanksAroundANameAreDropped)
{
    add("LFloat", QString::fromUtf8("  \u00a0in the middle\t "));
    EXPECT_EQ(customNames(), QStringList({ "in the middle" }));
}

TEST_F(CustomInputActionsTest, namesAreTakenAsTyped)
{
    const QStringList names = { "%1", "a\"b", "$(x)", "'", "&file", "\\n",
        QString::fromUtf8("größe 石 \U0001F600"), "Kd", "Kd", "<b>x</b>" };
    for (const QString& name : names)
        add("LFloat", name);
    EXPECT_EQ(customNames(), names);
}

TEST_F(CustomInputActionsTest, aFresnelInputCarriesANumberAndTakesFresnelTextures)
{
    add("LuxFresnel", "n");
    const auto* param = qobject_cast<VireoExtPropertyParam*>(matte->getCustomParam(0));
    ASSERT_NE(param, nullptr);
    EXPECT_EQ(param->getType(), 1016);
    EXPECT_EQ(param->getTypeString(), QString("LuxFresnel"));
    EXPECT_TRUE(param->isFresnel());
    EXPECT_NE(qobject_cast<DzFloatProperty*>(param->getProperty(0)), nullptr);
    VireoBrickBase* cauchy = addBrick(user, "VireoTexFnlCauchyBrick");
    VireoBrickBase* scale = addBrick(user, "VireoTexFltScaleBrick");
    EXPECT_FALSE(link(scale, matte, "n"));
    EXPECT_TRUE(link(cauchy, matte, "n"));
}

TEST_F(CustomInputActionsTest, whatWasAddedIsWrittenWhereItsKindWrites)
{
    for (int i = 0; i < 10; ++i)
        add(typeNames.at(i), "in" + QString::number(i));
    // Materials, volumes, vectors and matrices have no line of their own.
    EXPECT_TEXT(QString("\nMakeNamedMaterial \"Lm_material1\"\n"
                        "\t\"float   bumpmap\" [0]\n"
                        "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                        "\t\"float   sigma\" [0]\n"
                        "\t\"float   in2\" [0]\n"
                        "\t\"color   in3\" [0 0 0]\n"
                        "\t\"string  in8\" [\"\"]\n"
                        "\t\"float   in9\" [0]\n"
                        "\t\"string  type\" [\"matte\"]\n"),
        literalText(matte));
}

TEST_F(CustomInputActionsTest, aLinkedInputThatWasAddedIsWrittenAsAReference)
{
    add("LFloat", QString::fromUtf8("50% größe"));
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltUvMaskBrick"), matte,
        QString::fromUtf8("50% größe").toUtf8().constData()));
    const QString text = literalText(matte);
    EXPECT_TRUE(text.endsWith(QString::fromUtf8("\t\"texture 50% größe\" [\"Lm_texture1\"]\n"
                                                "\t\"string  type\" [\"matte\"]\n")))
        << text.toStdString();
}

TEST_F(CustomInputActionsTest, theBrickAndTheActionMayGoWhileTheQuestionIsOpen)
{
    for (const char* name : { addClass, removeClass }) {
        matte = addBrick(user, "VireoMatMatteBrick");
        matte->addCustomInput(1009, "x", "x", 0);
        dzUndoStack->clearAll();
        QPointer<DzBrickAction> action(qobject_cast<DzBrickAction*>(dzApp->createInstance(name)));
        action->setBrick(matte);
        const DialogAnswers dialogs({ [&](QDialog* dialog) {
            DzUndoStackLock lock;
            user.deleteBrick(matte);
            delete action;
            QTest::keyClick(dialog, Qt::Key_Return);
        } });
        dzTriggerBrickAction(action, matte);
        EXPECT_EQ(action, nullptr);
        EXPECT_FALSE(dzUndoStack->hasItems());
        EXPECT_FALSE(dzUndoStack->isLocked());
    }
}

TEST_F(CustomInputActionsTest, theMainWindowMayGoWhileTheQuestionIsOpen)
{
    auto* other = new DzMainWindow;
    dzApp->setInterface(other);
    run(addClass, { [other](QDialog*) {
        dzApp->setInterface(nullptr);
        delete other;
    } });
    EXPECT_EQ(customNames(), QStringList());
}

// Removing -----------------------------------------------------------------------------------

TEST_F(CustomInputActionsTest, removingOffersTheAddedInputsAloneByTheirLabels)
{
    matte->addCustomInput(1009, "one", "First", 0);
    matte->addCustomInput(1012, "two", "Second", 0);
    run(removeClass, { [this](QDialog* dialog) {
        EXPECT_EQ(dialog->windowTitle(), QString("Remove Parameter"));
        EXPECT_EQ(dialog->parentWidget(), &window);
        EXPECT_EQ(dialog->findChild<QLabel*>()->text(), QString("Parameter :"));
        const auto* box = dialog->findChild<QComboBox*>();
        ASSERT_EQ(box->count(), 2);
        EXPECT_EQ(box->itemText(0), QString("First"));
        EXPECT_EQ(box->itemText(1), QString("Second"));
        EXPECT_FALSE(box->isEditable());
        QTest::keyClick(dialog, Qt::Key_Escape);
    } });
    EXPECT_EQ(customNames(), QStringList({ "one", "two" }));
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_F(CustomInputActionsTest, theChosenInputIsRemovedByKeyboardAndMouse)
{
    for (const char* name : { "a", "b", "c" })
        matte->addCustomInput(1009, name, name, 0);
    run(removeClass, { itemByKeyboard("b") });
    EXPECT_EQ(customNames(), QStringList({ "a", "c" }));
    run(removeClass, { itemByMouse("c") });
    EXPECT_EQ(customNames(), QStringList({ "a" }));
    run(removeClass, { cancelByMouse() });
    EXPECT_EQ(customNames(), QStringList({ "a" }));
    EXPECT_EQ(matte->getNumParameters(), 5);
}

TEST_F(CustomInputActionsTest, ofTwoInputsOfOneLabelTheFirstIsRemoved)
{
    matte->addCustomInput(1009, "one", "Same", 0);
    matte->addCustomInput(1010, "two", "Same", 0);
    run(removeClass, { itemByMouse("Same") });
    EXPECT_EQ(customNames(), QStringList({ "two" }));
}

TEST_F(CustomInputActionsTest, anInputOfTheBrickItselfWithThatLabelStays)
{
    matte->addCustomInput(1009, "Kd", matte->findParameterByName("Kd")->getLabel(), 0);
    run(removeClass, { itemByKeyboard(matte->findParameterByName("Kd")->getLabel()) });
    EXPECT_EQ(customNames(), QStringList());
    EXPECT_EQ(matte->getNumParameters(), 4);
    EXPECT_EQ(param(matte, "Kd")->getType(), 1010);
}

TEST_F(CustomInputActionsTest, withoutAddedInputsNothingIsRemoved)
{
    run(removeClass, { [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); } });
    EXPECT_EQ(matte->getNumParameters(), 4);
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_F(CustomInputActionsTest, removingIsOneStepThatUndoTakesBackWithValueAndLink)
{
    matte->addCustomInput(1009, "x", "x", 0);
    propertyAs<DzFloatProperty>(matte, "x")->setValue(3);
    VireoBrickBase* mask = addBrick(user, "VireoTexFltUvMaskBrick");
    ASSERT_TRUE(link(mask, matte, "x"));
    dzUndoStack->clearAll();
    run(removeClass, { itemByKeyboard("x") });
    EXPECT_EQ(param(mask, "result")->getNumConnections(), 0);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QString("Remove Custom Input"));
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(propertyAs<DzFloatProperty>(matte, "x")->getValue(), 3);
    EXPECT_TRUE(param(matte, "x")->isConnectedTo(param(mask, "result")));
    EXPECT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(customNames(), QStringList());
}
