// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LinkTypes.h"
#include "TestSupport.h"
#include "dzbrickstate.h"
#include "dzbrickuserfile.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzpropertysettings.h"
#include "dzstringproperty.h"
#include "dzundostack.h"
#include "dzvec3param.h"

#include <QPointer>

namespace {

QString text(const char* words)
{
    return QString::fromUtf8(words);
}

/// Undo steps that meet a network that changed without them.
class UndoTest : public testing::Test
{
protected:
    UndoTest()
        : matte(addBrick(user, "VireoMatMatteBrick"))
        , first(addBrick(user, "VireoTexFltScaleBrick"))
        , second(addBrick(user, "VireoTexFltScaleBrick"))
    {
        dzUndoStack->clearAll();
    }
    ~UndoTest() override { dzUndoStack->clearAll(); }

    /// Attributes with one custom input.
    static DzSettings attributesWith(const char* name, int linkType)
    {
        DzSettings settings;
        DzSettings* entry = settings.setSettingsValue(text("VireoExtCustomParameters"))
                                ->setSettingsValue(text("para0"));
        entry->setStringValue(text("Name"), text(name));
        entry->setStringValue(text("Label"), text(name));
        entry->setFloatValue(text("ExtTypeID"), linkType);
        return settings;
    }

    QByteArray state() const { return DzBrickUserFile().saveText(&user); }

    VireoBrickUser user;
    VireoBrickBase* matte;
    VireoBrickBase* first;
    VireoBrickBase* second;
};

} // namespace

TEST_F(UndoTest, stepOfAnInputThatWasReplacedByAnotherOfItsNameIsRefused)
{
    auto* input = matte->addCustomInput(StringLink, text("a"), text("a"), 0);
    ASSERT_TRUE(qobject_cast<DzStringProperty*>(input->getProperty(0))->setValue(text("one")));
    const DzSettings settings = attributesWith("a", FloatLink);
    matte->setAttributes(&settings);
    propertyAs<DzFloatProperty>(matte, "a");
    Warnings warnings;
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(warnings.messages.size(), 1);
    EXPECT_EQ(propertyAs<DzFloatProperty>(matte, "a")->getValue(), 0.0f);
    EXPECT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(warnings.messages.size(), 2);
}

TEST_F(UndoTest, stepOfAnInputThatWasReplacedWhileTheStackWasLockedIsRefused)
{
    auto* input = matte->addCustomInput(StringLink, text("a"), text("a"), 0);
    ASSERT_TRUE(qobject_cast<DzStringProperty*>(input->getProperty(0))->setValue(text("one")));
    {
        const DzUndoStackLock lock;
        matte->removeCustomParam(input);
        matte->addCustomInput(FloatLink, text("a"), text("a"), 0);
    }
    Warnings warnings;
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(warnings.messages.size(), 2);
    EXPECT_EQ(propertyAs<DzFloatProperty>(matte, "a")->getValue(), 0.0f);
}

TEST_F(UndoTest, stepsOfInputsOfOneNameAndDifferentKindsGoBackAndForth)
{
    VireoBrickBase* null = addBrick(user, "VireoMatNullBrick");
    dzUndoStack->clearAll();
    QList<QByteArray> states { state() };
    DzBrickParam* own = nullptr;
    {
        DzBrickStateHold hold(null);
        own = null->addCustomInput(StringLink, text("bumpmap"), text("bumpmap"), 0);
        hold.accept(text("Add"));
    }
    states.append(state());
    ASSERT_TRUE(null->changeParamIndex(own, 1));
    states.append(state());
    ASSERT_TRUE(qobject_cast<DzStringProperty*>(own->getProperty(0))->setValue(text("words")));
    states.append(state());
    ASSERT_EQ(dzUndoStack->getNumItems(), 3);
    Warnings warnings;
    for (int round = 0; round < 2; ++round) {
        for (int i = states.size() - 2; i >= 0; --i) {
            ASSERT_TRUE(dzUndoStack->undo());
            EXPECT_TEXT(QString::fromUtf8(states.at(i)), QString::fromUtf8(state()));
        }
        for (int i = 1; i < states.size(); ++i) {
            ASSERT_TRUE(dzUndoStack->redo());
            EXPECT_TEXT(QString::fromUtf8(states.at(i)), QString::fromUtf8(state()));
        }
    }
    EXPECT_EQ(warnings.messages, QStringList());
}

TEST_F(UndoTest, theSameInputComesBackWithItsValueAndLinks)
{
    DzBrickParam* input = matte->addCustomInput(FloatLink, text("a"), text("a"), 0);
    qobject_cast<DzFloatProperty*>(input->getProperty(0))->setValue(2);
    ASSERT_TRUE(link(first, matte, "a"));
    const QByteArray before = state();
    {
        DzBrickStateHold hold(matte);
        const DzSettings settings = attributesWith("a", ColorLink);
        matte->setAttributes(&settings);
        hold.accept(text("Attributes"));
    }
    EXPECT_EQ(param(first, "result")->getNumConnections(), 0);
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(param(matte, "a"), input);
    EXPECT_TEXT(QString::fromUtf8(before), QString::fromUtf8(state()));
    ASSERT_TRUE(dzUndoStack->redo());
    propertyAs<DzColorProperty>(matte, "a");
    ASSERT_TRUE(dzUndoStack->undo());
    while (dzUndoStack->undo()) {}
    EXPECT_EQ(qobject_cast<DzFloatProperty*>(input->getProperty(0))->getValue(), 0.0f);
}

TEST_F(UndoTest, inputThatNoStepKnowsIsGone)
{
    QPointer<DzBrickParam> input = matte->addCustomInput(FloatLink, text("a"), text("a"), 0);
    {
        DzBrickStateHold hold(matte);
        matte->removeCustomParam(input);
        hold.accept(text("Remove"));
    }
    EXPECT_TRUE(input);
    dzUndoStack->clearAll();
    EXPECT_FALSE(input);
    input = matte->addCustomInput(FloatLink, text("a"), text("a"), 0);
    matte->removeCustomParam(input);
    EXPECT_FALSE(input);
}

TEST_F(UndoTest, linkThatWouldCloseALoopIsNotRestored)
{
    ASSERT_TRUE(link(second, first, "tex1"));
    ASSERT_TRUE(param(first, "tex1")->removeConnection(param(second, "result")));
    {
        const DzUndoStackLock lock;
        ASSERT_TRUE(link(first, second, "tex1"));
    }
    Warnings warnings;
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(warnings.messages.size(), 1);
    EXPECT_EQ(param(first, "tex1")->getNumConnections(), 0);
    EXPECT_FALSE(literalText(first).isEmpty());
    EXPECT_FALSE(literalText(second).isEmpty());
}

TEST_F(UndoTest, stateWhoseLinkWouldCloseALoopIsRestoredWithoutIt)
{
    VireoBrickBase* third = addBrick(user, "VireoTexFltScaleBrick");
    ASSERT_TRUE(link(second, first, "tex1"));
    ASSERT_TRUE(link(first, third, "tex1"));
    const DzBrickState linked(first);
    ASSERT_TRUE(param(first, "tex1")->removeConnection(param(second, "result")));
    ASSERT_TRUE(link(third, second, "tex1"));
    Warnings warnings;
    linked.restore(first);
    EXPECT_EQ(warnings.messages.size(), 1);
    EXPECT_EQ(param(first, "tex1")->getNumConnections(), 0);
}

TEST_F(UndoTest, linkThatIsNotAllowedAnyMoreIsNotRestored)
{
    ASSERT_TRUE(link(second, first, "tex1"));
    ASSERT_TRUE(param(first, "tex1")->removeConnection(param(second, "result")));
    VireoBrickUser other;
    {
        const DzUndoStackLock lock;
        ASSERT_TRUE(user.moveBrick(second->getBrickID(), &other));
    }
    Warnings warnings;
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(warnings.messages.size(), 1);
    EXPECT_EQ(param(first, "tex1")->getNumConnections(), 0);
    dzUndoStack->clearAll();
}

TEST_F(UndoTest, renamedInputKeepsValueAndLinkThroughUndoOfACount)
{
    VireoBrickBase* band = addBrick(user, "VireoTexFltBAndBrick");
    const auto setCount = [&](int count) {
        DzBrickStateHold hold(band);
        propertyAs<DzIntProperty>(band, "count")->setValue(count);
        hold.accept(text("Count"));
    };
    setCount(2);
    DzBrickParam* own = band->addCustomInput(FloatLink, text("a"), text("a"), 0);
    own->setName(text("A2"));
    qobject_cast<DzFloatProperty*>(own->getProperty(0))->setValue(5);
    param(band, "tex2")->setName(text("renamed"));
    propertyAs<DzFloatProperty>(band, "renamed")->setValue(7);
    ASSERT_TRUE(link(first, band, "renamed"));
    ASSERT_TRUE(link(first, band, "A2"));
    const QByteArray before = state();
    setCount(0);
    setCount(3);
    ASSERT_TRUE(dzUndoStack->undo());
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_TEXT(QString::fromUtf8(before), QString::fromUtf8(state()));
}

TEST_F(UndoTest, namesLabelsTitlesAndLimitsLeaveOneStepEach)
{
    DzBrickParam* scale = param(first, "tex1");
    auto* property = propertyAs<DzFloatProperty>(first, "tex1");
    DzPropertySettings settings;
    settings.setFloatValue(text("Value"), 12);
    settings.setStringValue(text("Label"), text("Read"));
    const QList<std::function<void()>> changes {
        [&] { property->setIsMappable(false); },
        [&] { property->setMinMax(-1, 1); },
        [&] { property->setIsClamped(true); },
        [&] { property->setDefaultValue(0.25f); },
        [&] { property->setSensitivity(0.5f); },
        [&] { property->setCanAnimate(false); },
        [&] { property->setName(text("other")); },
        [&] { property->setAttributes(&settings); },
        [&] { scale->setName(text("name")); },
        [&] { scale->setLabel(text("label")); },
        [&] { first->setBrickTitle(text("title")); },
        [&] { first->setLabel(text("label")); },
        [&] { property->copyFrom(propertyAs<DzFloatProperty>(second, "tex2")); },
    };
    propertyAs<DzFloatProperty>(second, "tex2")->setValue(-3);
    property->setMap(text("a.png"));
    dzUndoStack->clearAll();
    const auto described = [&] {
        DzPropertySettings now;
        property->getAttributes(&now);
        return state() + QByteArray::number(now.getNumValues()) + now.getValue(0).toUtf8()
            + property->getName().toUtf8() + first->getLabel().toUtf8()
            + QByteArray::number(static_cast<double>(property->getSensitivity()))
            + QByteArray::number(static_cast<double>(property->getDefaultValue()))
            + QByteArray::number(static_cast<double>(property->getMin()));
    };
    QList<QByteArray> states { described() };
    for (int i = 0; i < changes.size(); ++i) {
        SCOPED_TRACE(i);
        changes.at(i)();
        EXPECT_EQ(dzUndoStack->getNumItems(), i + 1);
        EXPECT_FALSE(dzUndoStack->getUndoCaption().isEmpty());
        states.append(described());
        EXPECT_NE(states.at(i), states.at(i + 1));
    }
    for (int i = changes.size() - 1; i >= 0; --i) {
        SCOPED_TRACE(i);
        ASSERT_TRUE(dzUndoStack->undo());
        EXPECT_TEXT(QString::fromUtf8(states.at(i)), QString::fromUtf8(described()));
    }
    EXPECT_TRUE(property->isMapped());
    for (int i = 1; i < states.size(); ++i) {
        SCOPED_TRACE(i);
        ASSERT_TRUE(dzUndoStack->redo());
        EXPECT_TEXT(QString::fromUtf8(states.at(i)), QString::fromUtf8(described()));
    }
}

TEST_F(UndoTest, aVectorIsSetInOneStep)
{
    auto* vector = qobject_cast<DzVec3Param*>(
        matte->addCustomInput(VectorLink, text("v"), text("Vector"), 0));
    vector->setValue(DzVec3(4, 5, 6));
    EXPECT_EQ(dzUndoStack->getNumItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), text("Change Vector"));
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(vector->getValue().m_z, 0.0f);
    ASSERT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(vector->getValue().m_x, 4.0f);
    EXPECT_EQ(vector->getValue().m_z, 6.0f);
}

TEST_F(UndoTest, twoThousandInputsOnOneBrickAreAddedAndTakenBackOneByOne)
{
    const int numInputs = 2000;
    const int before = matte->getNumParameters();
    for (int i = 0; i < numInputs; ++i) {
        DzBrickStateHold hold(matte);
        matte->addCustomInput(FloatLink, text("a"), text("a"), 0);
        hold.accept(text("Add"));
    }
    EXPECT_EQ(dzUndoStack->getNumItems(), numInputs);
    while (dzUndoStack->undo()) {}
    EXPECT_EQ(matte->getNumParameters(), before);
    while (dzUndoStack->redo()) {}
    EXPECT_EQ(matte->getNumCustomParams(), numInputs);
}

// Files ---------------------------------------------------------------------------------------

namespace {

/// A network that is saved, loaded and copied: all three are to be alike.
class StoredNetworkTest : public UndoTest
{
protected:
    /// What is lost by saving and loading, and by copying, as a diff; empty when nothing is.
    void expectNothingIsLost()
    {
        DzBrickUserFile file;
        const QByteArray bytes = file.saveText(&user);
        ASSERT_TRUE(file.loadText(bytes, text("network"), &loaded))
            << file.getError().toStdString();
        EXPECT_EQ(file.getWarnings(), QStringList());
        EXPECT_TEXT(QString::fromUtf8(bytes), QString::fromUtf8(file.saveText(&loaded)));
        VireoBrickUser copy;
        copy.copyFrom(&user);
        copy.setIdentifier(user.getIdentifier());
        EXPECT_TEXT(QString::fromUtf8(bytes), QString::fromUtf8(file.saveText(&copy)));
        expectSameBricks(loaded);
        expectSameBricks(copy);
    }

    void expectSameBricks(const VireoBrickUser& other)
    {
        QList<uint> ids;
        static_cast<const IDzBrickUser&>(user).getBrickIDs(ids);
        for (const uint id : ids) {
            SCOPED_TRACE(id);
            auto* brick = qobject_cast<VireoBrickBase*>(user.getBrick(id));
            auto* same = qobject_cast<VireoBrickBase*>(other.getBrick(id));
            ASSERT_NE(same, nullptr);
            EXPECT_TEXT(inFile(literalText(brick)), inFile(literalText(same)));
            EXPECT_TEXT(inFile(placeholderText(brick)), inFile(placeholderText(same)));
            ASSERT_EQ(brick->getNumParameters(), same->getNumParameters());
            for (int i = 0; i < brick->getNumParameters(); ++i)
                expectSameParam(brick->getParameter(i), same->getParameter(i));
        }
    }

    /// What a file has of a text: halves of characters are lost there.
    static QString inFile(const QString& words) { return QString::fromUtf8(words.toUtf8()); }

    static void expectSameParam(const DzBrickParam* a, const DzBrickParam* b)
    {
        SCOPED_TRACE(a->getName().toStdString());
        EXPECT_EQ(a->getName().toUtf8(), b->getName().toUtf8());
        EXPECT_EQ(a->getLabel().toUtf8(), b->getLabel().toUtf8());
        EXPECT_EQ(a->getType(), b->getType());
        EXPECT_EQ(a->getNumConnections(), b->getNumConnections());
        ASSERT_EQ(a->getNumProperties(), b->getNumProperties());
        for (int i = 0; i < a->getNumProperties(); ++i)
            EXPECT_EQ(a->getProperty(i)->getValueText(), b->getProperty(i)->getValueText());
    }

    VireoBrickUser loaded;
};

} // namespace

TEST_F(StoredNetworkTest, renamedInputsKeepNameValueAndLink)
{
    DzBrickParam* own = matte->addCustomInput(FloatLink, text("a"), text("a"), 0);
    own->setName(text("A2"));
    qobject_cast<DzFloatProperty*>(own->getProperty(0))->setValue(5);
    EXPECT_EQ(own->getArg(0), text("A2"));
    DzBrickParam* volume = matte->addCustomInput(VolumeLink, text("v"), text("v"), 0);
    volume->setName(text("V2"));
    EXPECT_EQ(volume->getArg(0), text("V2"));
    param(matte, "sigma")->setName(text("Sigma 2"));
    propertyAs<DzFloatProperty>(matte, "Sigma 2")->setValue(3);
    ASSERT_TRUE(link(first, matte, "A2"));
    ASSERT_TRUE(link(first, matte, "Sigma 2"));
    expectNothingIsLost();
    EXPECT_EQ(
        propertyAs<DzFloatProperty>(loaded.getBrick(matte->getBrickID()), "Sigma 2")->getValue(),
        3.0f);
}

TEST_F(StoredNetworkTest, nameThatIsGivenBackLeavesNoTrace)
{
    const QByteArray before = state();
    param(matte, "sigma")->setName(text("other"));
    EXPECT_NE(state(), before);
    param(matte, "other")->setName(text("sigma"));
    EXPECT_EQ(state(), before);
}

TEST_F(StoredNetworkTest, exchangedNamesStayExchanged)
{
    param(first, "tex1")->setName(text("other"));
    param(first, "tex2")->setName(text("tex1"));
    param(first, "other")->setName(text("tex2"));
    propertyAs<DzFloatProperty>(first, "tex1")->setValue(1);
    propertyAs<DzFloatProperty>(first, "tex2")->setValue(2);
    ASSERT_TRUE(link(second, first, "tex1"));
    expectNothingIsLost();
}

TEST_F(StoredNetworkTest, equalNamesOfDifferentKindsKeepTheirPlacesAndValues)
{
    DzBrickParam* words = matte->addCustomInput(StringLink, text("a"), text("a"), 0);
    DzBrickParam* number = matte->addCustomInput(FloatLink, text("a"), text("a"), 0);
    qobject_cast<DzStringProperty*>(words->getProperty(0))->setValue(text("one"));
    qobject_cast<DzFloatProperty*>(number->getProperty(0))->setValue(2);
    ASSERT_TRUE(number->addConnection(param(first, "result")));
    ASSERT_TRUE(matte->changeParamIndex(number, matte->findParameterIndex(words)));
    expectNothingIsLost();
}

TEST_F(StoredNetworkTest, customInputBeforeTheClassesOwnOfItsNameStaysCustom)
{
    DzBrickParam* own = matte->addCustomInput(ColorLink, text("Kd"), text("Mine"), 0);
    ASSERT_TRUE(matte->changeParamIndex(own, 0));
    qobject_cast<DzColorProperty*>(own->getProperty(0))->setColorValue(QColor(1, 2, 3));
    expectNothingIsLost();
    auto* brick = qobject_cast<VireoBrickBase*>(loaded.getBrick(matte->getBrickID()));
    EXPECT_EQ(brick->getCustomParam(0), brick->getParameter(0));
    EXPECT_EQ(brick->getParameter(0)->getLabel(), text("Mine"));
}

TEST_F(StoredNetworkTest, linkIntoAnInputWithAnEmptyNameComesBack)
{
    ASSERT_TRUE(matte->addCustomInput(FloatLink, QString(), QString(), 0)
                    ->addConnection(param(first, "result")));
    expectNothingIsLost();
}

TEST_F(StoredNetworkTest, namesThatAFileCannotTellApartAreNumbered)
{
    QString half(text("x"));
    half.prepend(QChar(0xd800));
    DzBrickParam* odd = matte->addCustomInput(FloatLink, half, half, 0);
    DzBrickParam* plain = matte->addCustomInput(FloatLink, text("?x"), text("?x"), 0);
    qobject_cast<DzFloatProperty*>(odd->getProperty(0))->setValue(1);
    qobject_cast<DzFloatProperty*>(plain->getProperty(0))->setValue(2);
    ASSERT_TRUE(odd->addConnection(param(first, "result")));
    ASSERT_TRUE(plain->addConnection(param(second, "result")));
    expectNothingIsLost();
}

TEST_F(StoredNetworkTest, largestNumberComesBack)
{
    auto* sigma = propertyAs<DzFloatProperty>(matte, "sigma");
    for (const float number : { std::numeric_limits<float>::max(),
             -std::numeric_limits<float>::max(), std::numeric_limits<float>::infinity() }) {
        sigma->setValue(number);
        expectNothingIsLost();
    }
}

TEST_F(StoredNetworkTest, linkWithoutEffectGetsNoneBySavingOrCopying)
{
    VireoBrickBase* band = addBrick(user, "VireoTexFltBAndBrick");
    propertyAs<DzIntProperty>(band, "count")->setValue(4);
    ASSERT_TRUE(link(first, band, "tex4"));
    QByteArray bytes = state();
    bytes.replace("\"count\": { \"type\": \"settings\", \"value\": { \"Value\": [\"i\", 4] } }",
        "\"count\": { \"type\": \"settings\", \"value\": { \"Value\": [\"i\", 3] } }");
    VireoBrickUser dead;
    DzBrickUserFile file;
    ASSERT_TRUE(file.loadText(bytes, text("network"), &dead));
    ASSERT_FALSE(file.getWarnings().isEmpty());
    auto* deadBand = qobject_cast<VireoBrickBase*>(dead.getBrick(band->getBrickID()));
    ASSERT_EQ(propertyAs<DzIntProperty>(deadBand, "count")->getValue(), 3);
    const QByteArray kept = file.saveText(&dead);
    EXPECT_TRUE(kept.contains("tex4"));
    EXPECT_FALSE(kept.contains("Inactive"));
    for (const bool isCustom : { false, true }) {
        SCOPED_TRACE(isCustom);
        if (isCustom) {
            propertyAs<DzIntProperty>(deadBand, "count")->setValue(3);
            deadBand->addCustomInput(FloatLink, text("tex4"), text("tex4"), 0);
        } else {
            propertyAs<DzIntProperty>(deadBand, "count")->setValue(4);
        }
        ASSERT_TRUE(link(dead.getBrick(second->getBrickID()), deadBand, "tex4"));
        VireoBrickUser copy;
        copy.copyFrom(&dead);
        VireoBrickUser again;
        const QByteArray saved = file.saveText(&dead);
        ASSERT_TRUE(file.loadText(saved, text("network"), &again));
        for (const VireoBrickUser* other : { &copy, &again }) {
            auto* same = qobject_cast<VireoBrickBase*>(other->getBrick(band->getBrickID()));
            EXPECT_EQ(param(same, "tex4")->getNumConnections(), 1);
            EXPECT_TEXT(literalText(deadBand), literalText(same));
        }
        EXPECT_TEXT(QString::fromUtf8(saved), QString::fromUtf8(file.saveText(&again)));
    }
}
