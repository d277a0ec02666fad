// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WindowFixture.h"

#include "BrickSelection.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "Explanations.h"
#include "FileField.h"
#include "HelpStrip.h"
#include "MixerDocument.h"
#include "NetworkEdit.h"
#include "NetworkView.h"
#include "NumberField.h"
#include "PropertiesPanel.h"
#include "PropertyEditor.h"
#include "PropertyRow.h"
#include "dzboolproperty.h"
#include "dzbrickparam.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dznumericproperty.h"
#include "dzstringproperty.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollArea>
#include <QThreadPool>
#include <QToolButton>
#include <qtestspontaneevent.h>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

/// Each test changes values of bricks of one network, in its window.
class PropertiesPanelTest : public WindowTest
{
protected:
    DzShaderBrick* add(const char* className)
    {
        DzShaderBrick* added
            = document()->getEdit()->addBrick(QString::fromLatin1(className), QPointF(0, 400));
        dzUndoStack->clearAll();
        select({ added });
        return added;
    }
    template <typename Widget>
    Widget* field(const char* label)
    {
        auto* found = row(label)->findChild<PropertyEditor*>()->findChild<Widget*>();
        EXPECT_NE(found, nullptr) << label;
        return found;
    }
    QToolButton* tool(const char* label, const char* name)
    {
        return row(label)->findChild<QToolButton*>(QString::fromLatin1(name));
    }
    static void press(QToolButton* button)
    {
        ASSERT_TRUE(button->isVisible() && button->isEnabled())
            << button->objectName().toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
    }
    static QString valueOf(DzShaderBrick* of, const char* name)
    {
        return property(of, name)->getValueText();
    }
    /// Drags sideways over a number field.
    static void drag(NumberField* number, const QVector<int>& way,
        Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool release = true)
    {
        const QPoint start = number->rect().center();
        QTest::mousePress(number, Qt::LeftButton, modifiers, start);
        for (const int x : way) {
            const QPoint at = start + QPoint(x, 0);
            QMouseEvent move(QEvent::MouseMove, at, number->mapToGlobal(at), Qt::NoButton,
                Qt::LeftButton, modifiers);
            QApplication::sendEvent(number, &move);
        }
        if (release)
            QTest::mouseRelease(number, Qt::LeftButton, modifiers, start + QPoint(way.last(), 0));
        settle();
    }
};

} // namespace

TEST_F(PropertiesPanelTest, draggingANumberIsOneStep)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    drag(field<NumberField>("Sigma"), { 10, 20, 40, 70, 100 });
    const double value
        = static_cast<DzNumericProperty*>(property(matte, "sigma"))->getDoubleValue();
    EXPECT_GT(value, 0.5);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Change Sigma"));
    dzUndoStack->undo();
    EXPECT_EQ(valueOf(matte, "sigma"), QStringLiteral("0"));
    // Finer with Shift.
    drag(field<NumberField>("Sigma"), { 10, 20, 40, 70, 100 }, Qt::ShiftModifier);
    EXPECT_LT(
        static_cast<DzNumericProperty*>(property(matte, "sigma"))->getDoubleValue(), value / 5);
}

TEST_F(PropertiesPanelTest, aDragIsTakenBackByEscape)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    NumberField* number = field<NumberField>("Sigma");
    drag(number, { 20, 60 }, Qt::NoModifier, false);
    EXPECT_NE(valueOf(matte, "sigma"), QStringLiteral("0"));
    QTest::keyClick(number, Qt::Key_Escape);
    EXPECT_EQ(valueOf(matte, "sigma"), QStringLiteral("0"));
    QTest::mouseRelease(number, Qt::LeftButton);
    EXPECT_FALSE(dzUndoStack->canUndo());
    EXPECT_EQ(dzUndoStack->getHoldDepth(), 0);
}

TEST_F(PropertiesPanelTest, aDragLeavesRoundNumbers)
{
    DzShaderBrick* map = add("VireoTexFltImageMapBrick");
    auto* gamma = propertyAs<DzFloatProperty>(map, "gamma");
    gamma->setMinMax(0, 1);
    gamma->setValue(0.1f);
    select({});
    select({ map });
    const QByteArray label = gamma->getLabel().toUtf8();
    for (const int way : { 7, 13, 29, 31 }) {
        drag(field<NumberField>(label.constData()), { 5, way });
        EXPECT_LE(gamma->getValueText().size(), 5) << gamma->getValueText().toStdString();
    }
}

TEST_F(PropertiesPanelTest, theSliderStaysInsideTheLimitsAndTypingMayLeaveThem)
{
    DzShaderBrick* map = add("VireoTexFltImageMapBrick");
    auto* gamma = propertyAs<DzFloatProperty>(map, "gamma");
    const QByteArray label = gamma->getLabel().toUtf8();
    drag(field<NumberField>(label.constData()), { 50, 500, 2000 });
    EXPECT_EQ(gamma->getValue(), gamma->getMax());
    type(label.constData(), QStringLiteral("25"));
    EXPECT_EQ(gamma->getValue(), 25.0f);
}

TEST_F(PropertiesPanelTest, numbersAreTypedAsArithmetic)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    type("Sigma", QStringLiteral("2*0.3+1"));
    EXPECT_EQ(valueOf(matte, "sigma"), QStringLiteral("1.6"));
    type("Sigma", QStringLiteral("1/0"));
    EXPECT_EQ(valueOf(matte, "sigma"), QStringLiteral("1.6"));
    EXPECT_TRUE(m_window->getMessage().contains(QLatin1String("finite")));
    EXPECT_EQ(field<NumberField>("Sigma")->text(), QStringLiteral("1.6"));
    type("Sigma", QStringLiteral("1e39"));
    EXPECT_EQ(valueOf(matte, "sigma"), QStringLiteral("1.6"));
    EXPECT_TRUE(m_window->getMessage().contains(QLatin1String("too large")));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

TEST_F(PropertiesPanelTest, arrowKeysStepAndEscapeForgetsWhatWasTyped)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    NumberField* number = field<NumberField>("Sigma");
    QTest::mouseClick(number, Qt::LeftButton);
    QTest::keyClick(number, Qt::Key_Up);
    QTest::keyClick(number, Qt::Key_Up);
    const double step = double(propertyAs<DzFloatProperty>(matte, "sigma")->getSensitivity());
    EXPECT_NEAR(static_cast<DzNumericProperty*>(property(matte, "sigma"))->getDoubleValue(),
        2 * step, 1e-6);
    QTest::keyClick(number, Qt::Key_Down);
    QTest::keyClick(number, Qt::Key_Down);
    QTest::keyClicks(number, QStringLiteral("99"));
    QTest::keyClick(number, Qt::Key_Escape);
    QTest::keyClick(number, Qt::Key_Return);
    EXPECT_EQ(valueOf(matte, "sigma"), QStringLiteral("0"));
}

TEST_F(PropertiesPanelTest, aColourIsChosenInADialogAsOneStep)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    const QString before = valueOf(matte, "Kd");
    const auto withColours = [&](bool accept) {
        QTest::mouseClick(
            row("Diffuse")->findChild<QToolButton*>(QStringLiteral("swatch")), Qt::LeftButton);
        auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->setCurrentColor(QColor(1, 2, 3));
        dialog->setCurrentColor(QColor(40, 50, 60));
        EXPECT_EQ(valueOf(matte, "Kd"), QStringLiteral("40 50 60"));
        QTest::keyClick(dialog, accept ? Qt::Key_Return : Qt::Key_Escape);
        settle();
    };
    withColours(false);
    EXPECT_EQ(valueOf(matte, "Kd"), before);
    EXPECT_FALSE(dzUndoStack->canUndo());
    withColours(true);
    EXPECT_EQ(valueOf(matte, "Kd"), QStringLiteral("40 50 60"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    type("Diffuse", QStringLiteral("#ff8000"));
    EXPECT_EQ(valueOf(matte, "Kd"), QStringLiteral("255 128 0"));
    type("Diffuse", QStringLiteral("no colour"));
    EXPECT_EQ(valueOf(matte, "Kd"), QStringLiteral("255 128 0"));
    EXPECT_FALSE(m_window->getMessage().isEmpty());
}

TEST_F(PropertiesPanelTest, itemsAndSwitchesAreChosen)
{
    DzShaderBrick* checks = add("VireoTexFltCheckerboardBrick");
    auto* box = field<QComboBox>("aamode");
    QTest::keyClick(box, Qt::Key_Down);
    settle();
    EXPECT_EQ(propertyAs<DzEnumProperty>(checks, "aamode")->getValue(), 1);
    // The wheel scrolls the panel and leaves what it passes alone.
    box->clearFocus();
    QWheelEvent wheel(QPointF(5, 5), box->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120),
        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &wheel);
    EXPECT_EQ(propertyAs<DzEnumProperty>(checks, "aamode")->getValue(), 1);

    DzShaderBrick* glossy = add("VireoMatGlossyBrick");
    auto* flag = propertyAs<DzBoolProperty>(glossy, "multibounce");
    const QByteArray label = flag->getLabel().toUtf8();
    auto* check = field<QCheckBox>(label.constData());
    QTest::mouseClick(check, Qt::LeftButton, Qt::NoModifier, QPoint(8, check->height() / 2));
    settle();
    EXPECT_TRUE(flag->getBoolValue());
    QTest::keyClick(check, Qt::Key_Space);
    EXPECT_FALSE(flag->getBoolValue());
}

TEST_F(PropertiesPanelTest, aValueIsOneStopForTab)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    m_window->getProperties()->focusOn(property(matte, "Kd"));
    const auto isIn = [this](const char* label) {
        const QWidget* focus = QApplication::focusWidget();
        return focus && row(label)->isAncestorOf(focus);
    };
    ASSERT_TRUE(isIn("Diffuse"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(isIn("Sigma"));
    // The menu key leads to what the small buttons do.
    const auto openMenu = [](QWidget* on) {
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(3, 3));
        QApplication::sendEvent(on, &menuKey);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    };
    QMenu* menu = openMenu(QApplication::focusWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions())
        if (action->text() == QLatin1String("Lock"))
            action->trigger();
    menu->close();
    settle();
    EXPECT_TRUE(property(matte, "sigma")->isLocked());
    menu = openMenu(field<QLineEdit>("Diffuse"));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().first()->text(), QStringLiteral("Choose a colour…"));
    menu->close();
    settle();
}

TEST_F(PropertiesPanelTest, whatNobodyTouchedNeedsNoReset)
{
    // A value may start with another one than its default.
    DzShaderBrick* glossy = add("VireoMatGlossyBrick");
    auto* roughness = propertyAs<DzFloatProperty>(glossy, "uroughness");
    ASSERT_FALSE(roughness->currentValueIsDefaultValue());
    const QByteArray label = roughness->getLabel().toUtf8();
    EXPECT_FALSE(tool(label.constData(), "reset")->isVisible());
    const QString before = roughness->getValueText();
    type(label.constData(), QStringLiteral("0.7"));
    m_window->getProperties()->updateNow();
    EXPECT_TRUE(tool(label.constData(), "reset")->isVisible());
    type(label.constData(), before);
    m_window->getProperties()->updateNow();
    EXPECT_FALSE(tool(label.constData(), "reset")->isVisible());
}

TEST_F(PropertiesPanelTest, scrollingPastAValueLeavesItAlone)
{
    DzShaderBrick* checks = add("VireoTexFltCheckerboardBrick");
    m_window->activateWindow();
    m_window->getView()->setFocus();
    const auto turn = [](QWidget* over) {
        const QPoint place = over->rect().center();
        QWheelEvent wheel(place, over->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        // The wheel of a mouse moves the keyboard to what takes it by the wheel.
        QSpontaneKeyEvent::setSpontaneous(&wheel);
        qApp->notify(over, &wheel);
        settle();
    };
    const QString mapping = valueOf(checks, "mapping");
    for (QWidget* widget : m_window->getProperties()->findChildren<QWidget*>())
        if (widget->isVisible() && widget->inherits("QComboBox"))
            for (int i = 0; i < 3; ++i)
                turn(widget);
    EXPECT_EQ(valueOf(checks, "mapping"), mapping);
    for (QWidget* widget : m_window->getProperties()->findChildren<QWidget*>())
        if (widget->isVisible())
            turn(widget);
    EXPECT_FALSE(dzUndoStack->canUndo());
    // Who has put the keyboard there means it.
    auto* box = field<QComboBox>("aamode");
    box->setFocus();
    const QString mode = valueOf(checks, "aamode");
    turn(box);
    EXPECT_NE(valueOf(checks, "aamode"), mode);
}

TEST_F(PropertiesPanelTest, filesAreTypedAndDropped)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    auto* base = static_cast<VireoBrickBase*>(matte);
    base->addCustomInput(
        1015, QStringLiteral("note"), QStringLiteral("note"), DzBrickParam::SettingsDirection);
    settle();
    if (matte->findParameterByName(QStringLiteral("note"))) {
        type("note", QStringLiteral("some words"));
        EXPECT_EQ(valueOf(matte, "note"), QStringLiteral("some words"));
    }
    const QString picture = file("picture.png");
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(picture));
    dropFiles(row("Diffuse"), { picture });
    auto* color = static_cast<DzNumericProperty*>(property(matte, "Kd"));
    ASSERT_TRUE(color->isMapped());
    EXPECT_EQ(color->getMapValue()->getFilename(), picture);
    auto* map = row("Diffuse")->findChild<FileField*>();
    EXPECT_TRUE(map->isVisible());
    // The picture is loaded while others work.
    const auto shown = [map] { return map->findChild<QLabel*>()->pixmap(Qt::ReturnByValue); };
    for (int i = 0; i < 100 && shown().isNull(); ++i)
        QTest::qWait(10);
    ASSERT_FALSE(shown().isNull());
    EXPECT_EQ(shown().toImage().pixelColor(2, 2), QColor(Qt::red));
    press(tool("Diffuse", "map"));
    EXPECT_FALSE(color->isMapped());
    EXPECT_FALSE(map->isVisible());
    dzUndoStack->undo();
    EXPECT_TRUE(color->isMapped());
    type("Diffuse", QStringLiteral("1 2 3"));
    EXPECT_TRUE(color->isMapped());
}

TEST_F(PropertiesPanelTest, lockedValuesCannotBeChanged)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    press(tool("Sigma", "lock"));
    EXPECT_TRUE(property(matte, "sigma")->isLocked());
    EXPECT_FALSE(field<NumberField>("Sigma")->isEnabled());
    drag(field<NumberField>("Sigma"), { 30, 60 });
    EXPECT_EQ(valueOf(matte, "sigma"), QStringLiteral("0"));
    press(tool("Sigma", "lock"));
    EXPECT_FALSE(property(matte, "sigma")->isLocked());
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
}

TEST_F(PropertiesPanelTest, aValueGoesBackToItsDefault)
{
    DzShaderBrick* checks = add("VireoTexFltCheckerboardBrick");
    auto* scale = propertyAs<DzFloatProperty>(checks, "uscale");
    const float byDefault = scale->getDefaultValue();
    EXPECT_FALSE(tool("uscale", "reset")->isVisible() && scale->getValue() == byDefault);
    // A value of its own: only properties without animation take the default along.
    type("uscale", QStringLiteral("9"));
    if (scale->currentValueIsDefaultValue())
        GTEST_SKIP() << "this class sets the default with the value";
    press(tool("uscale", "reset"));
    EXPECT_EQ(scale->getValue(), byDefault);
    EXPECT_FALSE(tool("uscale", "reset")->isVisible());
}

TEST_F(PropertiesPanelTest, severalBricksAreChangedTogether)
{
    DzShaderBrick* first = add("VireoMatMatteBrick");
    DzShaderBrick* second = add("VireoMatMatteBrick");
    select({ first });
    type("Sigma", QStringLiteral("4"));
    select({ first, second });
    EXPECT_EQ(field<NumberField>("Sigma")->placeholderText(), QStringLiteral("several values"));
    EXPECT_TRUE(field<NumberField>("Sigma")->text().isEmpty());
    dzUndoStack->clearAll();
    type("Sigma", QStringLiteral("8"));
    EXPECT_EQ(valueOf(first, "sigma"), QStringLiteral("8"));
    EXPECT_EQ(valueOf(second, "sigma"), QStringLiteral("8"));
    press(tool("Sigma", "lock"));
    EXPECT_TRUE(property(first, "sigma")->isLocked() && property(second, "sigma")->isLocked());
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
    run("unlockAll");
    EXPECT_FALSE(property(first, "sigma")->isLocked() || property(second, "sigma")->isLocked());
}

TEST_F(PropertiesPanelTest, countShowsItsPairsAtOnce)
{
    DzShaderBrick* band = add("VireoTexFltBAndBrick");
    EXPECT_EQ(m_window->getProperties()->findRow(QStringLiteral("tex1")), nullptr);
    const QByteArray before = document()->getText();
    type("count", QStringLiteral("3"));
    ASSERT_NE(m_window->getProperties()->findRow(QStringLiteral("tex3")), nullptr);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    drag(field<NumberField>("count"), { -30, -60, -120, -300 });
    EXPECT_EQ(m_window->getProperties()->findRow(QStringLiteral("tex1")), nullptr);
    EXPECT_EQ(valueOf(band, "count"), QStringLiteral("0"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
    dzUndoStack->undo();
    settle();
    EXPECT_NE(m_window->getProperties()->findRow(QStringLiteral("tex3")), nullptr);
    dzUndoStack->undo();
    EXPECT_EQ(document()->getText(), before);
}

TEST_F(PropertiesPanelTest, aLoweredCountSaysWhatItTakesAwayAndBringsBack)
{
    DzShaderBrick* constant = add("VireoTexFltConstantBrick");
    DzShaderBrick* band = add("VireoTexFltBAndBrick");
    type("count", QStringLiteral("3"));
    EXPECT_EQ(m_window->getMessage(), QString()) << "new inputs are in view";
    ASSERT_TRUE(linkPins(param(constant, "result"), param(band, "tex3")));
    property(band, "offset2")->setValueText(QStringLiteral("0.25"), nullptr);
    settle();
    type("count", QStringLiteral("1"));
    EXPECT_TEXT(QStringLiteral("4 inputs went, and 1 wire to them. Setting the old value brings "
                               "back what they held."),
        m_window->getMessage());
    type("count", QStringLiteral("3"));
    EXPECT_TEXT(QStringLiteral("4 inputs came back, and 1 wire to them."), m_window->getMessage());
    EXPECT_EQ(valueOf(band, "offset2"), QStringLiteral("0.25"));
    EXPECT_TRUE(param(band, "tex3")->isConnectedTo(param(constant, "result")));
    press(tool("count", "reset"));
    EXPECT_TRUE(m_window->getMessage().startsWith(QLatin1String("6 inputs went")))
        << m_window->getMessage().toStdString();
}

TEST_F(PropertiesPanelTest, whatFeedsAValueIsShownAndOneClickAway)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* checks = add("VireoTexFltCheckerboardBrick");
    ASSERT_TRUE(linkPins(param(checks, "result"), param(matte, "sigma")));
    select({ matte });
    QToolButton* source = nullptr;
    for (QToolButton* button : row("Sigma")->findChildren<QToolButton*>())
        if (button->isVisible() && button->text().contains(checks->getBrickTitle()))
            source = button;
    ASSERT_NE(source, nullptr);
    press(source);
    EXPECT_EQ(document()->getSelection()->getBricks(), QVector<DzShaderBrick*> { checks });
}

TEST_F(PropertiesPanelTest, theTitleIsChangedInPlace)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    auto* title = m_window->getProperties()->findChild<QLineEdit*>();
    title->selectAll();
    QTest::keyClicks(title, QStringLiteral("Plaster"));
    QTest::keyClick(title, Qt::Key_Return);
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Plaster"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

TEST_F(PropertiesPanelTest, aTitleIsForTheBrickItWasTypedFor)
{
    DzShaderBrick* first = brick("Matte");
    MixerDocument* firstDocument = document();
    run("new");
    DzShaderBrick* other = brick("Matte");
    select({ other });
    m_window->getTabs()->setCurrentIndex(0);
    select({ first });
    m_window->activateWindow();
    auto* title = m_window->getProperties()->findChild<QLineEdit*>();
    const auto startTitle = [title](const char* text) {
        QTest::mouseClick(title, Qt::LeftButton);
        title->selectAll();
        QTest::keyClicks(title, QString::fromLatin1(text));
    };
    startTitle("Only First");
    run("nextTab");
    ASSERT_NE(document(), firstDocument);
    QTest::keyClick(title, Qt::Key_Return);
    EXPECT_EQ(other->getBrickTitle(), QStringLiteral("Matte"));
    EXPECT_EQ(first->getBrickTitle(), QStringLiteral("Only First"));
    EXPECT_FALSE(document()->isModified());
    // The same within one document.
    startTitle("Plaster");
    select({ document()->getUser()->getBrick(1) });
    QTest::keyClick(title, Qt::Key_Return);
    EXPECT_EQ(other->getBrickTitle(), QStringLiteral("Plaster"));
    EXPECT_NE(document()->getUser()->getBrick(1)->getBrickTitle(), QStringLiteral("Plaster"));
    // A brick that went takes nothing any more.
    select({ other });
    startTitle("Late");
    document()->getEdit()->deleteBricks({ other });
    const int steps = dzUndoStack->getNumUndoItems();
    settle();
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), steps);
}

TEST_F(PropertiesPanelTest, choicesAmongOtherItemsAreNotChangedTogether)
{
    DzShaderBrick* lamp = add("VireoTexClrLampSpectrumBrick");
    DzShaderBrick* metal = add("VireoTexFnlFresnelNameBrick");
    select({ lamp });
    ASSERT_NE(m_window->getProperties()->findRow(QStringLiteral("name")), nullptr);
    select({ lamp, metal });
    EXPECT_EQ(m_window->getProperties()->findRow(QStringLiteral("name")), nullptr);
    DzShaderBrick* second = add("VireoTexClrLampSpectrumBrick");
    select({ lamp, second });
    QTest::keyClick(field<QComboBox>("name"), Qt::Key_Down);
    EXPECT_EQ(propertyAs<DzEnumProperty>(lamp, "name")->getValue(), 1);
    EXPECT_EQ(propertyAs<DzEnumProperty>(second, "name")->getValue(), 1);
}

TEST_F(PropertiesPanelTest, picturesAreLookedForBesideTheFile)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkdir(QStringLiteral("sub")));
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(file("sub/picture.png")));
    DzShaderBrick* matte = brick("Matte");
    static_cast<DzNumericProperty*>(property(matte, "Kd"))->setMap(QStringLiteral("picture.png"));
    select({ matte });
    auto* picture = row("Diffuse")->findChild<FileField*>()->findChild<QLabel*>();
    const auto waitFor = [picture](const QString& tip) {
        for (int i = 0; i < 200 && picture->toolTip() != tip; ++i)
            QTest::qWait(10);
        return picture->toolTip();
    };
    EXPECT_EQ(
        waitFor(QStringLiteral("There is no such file")), QStringLiteral("There is no such file"));
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), file("sub/a.sskn")));
    EXPECT_EQ(waitFor(file("sub/picture.png")), file("sub/picture.png"));
}

#ifdef Q_OS_UNIX
TEST_F(PropertiesPanelTest, aPipeIsNoPicture)
{
    const QByteArray path = file("pipe.png").toLocal8Bit();
    ASSERT_EQ(::mkfifo(path.constData(), 0600), 0);
    DzShaderBrick* matte = brick("Matte");
    static_cast<DzNumericProperty*>(property(matte, "Kd"))->setMap(file("pipe.png"));
    select({ matte });
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone(2000)) << "somebody waits for the pipe";
    // Whoever waits for somebody that writes goes on now.
    const int writer = ::open(path.constData(), O_RDWR | O_NONBLOCK);
    ASSERT_GE(writer, 0);
    ::close(writer);
    settle();
    auto* picture = row("Diffuse")->findChild<FileField*>()->findChild<QLabel*>();
    EXPECT_EQ(picture->toolTip(), QStringLiteral("This picture cannot be shown"));
}
#endif

TEST_F(PropertiesPanelTest, aBrickThatGoesWhileItIsShownDoesNoHarm)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    const QPointer<NumberField> number = field<NumberField>("Sigma");
    drag(number, { 20, 60 }, Qt::NoModifier, false);
    document()->getEdit()->deleteBricks({ matte });
    settle();
    if (number)
        QTest::mouseRelease(number, Qt::LeftButton);
    settle();
    EXPECT_EQ(dzUndoStack->getHoldDepth(), 0);
    EXPECT_EQ(m_window->getProperties()->findRow(QStringLiteral("Sigma")), nullptr);
}

TEST_F(PropertiesPanelTest, rowsOfOneVectorSayWhichVector)
{
    DzShaderBrick* checks = add("VireoTexFltCheckerboardBrick");
    QStringList labels;
    for (const PropertyRow* shown : m_window->getProperties()->findChildren<PropertyRow*>())
        labels.append(shown->getGroup().getLabel());
    EXPECT_EQ(QStringList(labels).removeDuplicates(), 0)
        << labels.join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(labels.filter(QStringLiteral(" · X")).isEmpty(), false)
        << labels.join(QLatin1Char('|')).toStdString();
    EXPECT_NE(checks, nullptr);
}

TEST_F(PropertiesPanelTest, aNarrowPanelReachesItsButtons)
{
    add("VireoTexFltCheckerboardBrick");
    const PropertiesPanel* panel = m_window->getProperties();
    const int before = panel->width();
    m_window->resize(800, 600);
    settle();
    EXPECT_EQ(m_window->width(), 800);
    const auto* area = panel->findChild<QScrollArea*>();
    EXPECT_EQ(area->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    for (PropertyRow* shown : panel->findChildren<PropertyRow*>()) {
        const auto* lock = shown->findChild<QToolButton*>(QStringLiteral("lock"));
        EXPECT_LE(
            lock->mapTo(area->viewport(), lock->rect().topRight()).x(), area->viewport()->width())
            << shown->getGroup().getLabel().toStdString();
        for (const NumberField* number : shown->findChildren<NumberField*>())
            EXPECT_GE(number->width(), 56);
    }
    m_window->resize(1480, 920);
    settle();
    EXPECT_EQ(panel->width(), before);
}

TEST_F(PropertiesPanelTest, bricksWithNothingInCommonSaySo)
{
    add("VireoTexFltCheckerboardBrick");
    DzShaderBrick* checks = document()->getSelection()->getCurrent();
    select({ checks, brick("Matte") });
    QStringList texts;
    for (const QLabel* label : m_window->getProperties()->findChildren<QLabel*>())
        if (label->isVisible())
            texts.append(label->text());
    EXPECT_TRUE(texts.contains(QStringLiteral("These bricks have no values in common.")))
        << texts.join(QLatin1Char('|')).toStdString();
    select({ checks });
    for (const QLabel* label : m_window->getProperties()->findChildren<QLabel*>())
        EXPECT_FALSE(label->isVisible() && label->text().contains(QLatin1String("in common")));
}

TEST_F(PropertiesPanelTest, rowsSayNameRangeAndDefault)
{
    add("VireoMatMatteBrick");
    const QString tip = row("Sigma")->toolTip();
    EXPECT_TRUE(tip.contains(QLatin1String("Sigma"))) << tip.toStdString();
    EXPECT_TRUE(tip.contains(QLatin1String("Name: sigma"))) << tip.toStdString();
    EXPECT_TRUE(tip.contains(QLatin1String("Default: 0"))) << tip.toStdString();
    // Sigma may be any number.
    EXPECT_FALSE(tip.contains(QLatin1String("Range"))) << tip.toStdString();
    DzShaderBrick* map = add("VireoTexFltImageMapBrick");
    auto* gamma = propertyAs<DzFloatProperty>(map, "gamma");
    gamma->setMinMax(0, 5);
    select({});
    select({ map });
    const QString limited = row(gamma->getLabel().toUtf8().constData())->toolTip();
    EXPECT_TRUE(limited.contains(QLatin1String("Range: 0 to 5"))) << limited.toStdString();
}

TEST_F(PropertiesPanelTest, theStripUnderTheValuesExplainsTheOneInHandAndElseTheBrick)
{
    auto* strip = m_window->getProperties()->findChild<HelpStrip*>();
    ASSERT_NE(strip, nullptr);
    select({});
    EXPECT_FALSE(strip->isVisible());
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    const QString className = QStringLiteral("VireoMatMatteBrick");
    EXPECT_TRUE(strip->isVisible());
    EXPECT_EQ(strip->getText(),
        QStringLiteral("%1: %2").arg(matte->getPreferredName(), Explanations::ofBrick(className)));
    const QString ofSigma = Explanations::ofInput(className, QStringLiteral("sigma"));
    startTyping("Sigma", QStringLiteral("1"));
    EXPECT_EQ(strip->getText(), QStringLiteral("Sigma: ") + ofSigma);
    EXPECT_TRUE(row("Sigma")->toolTip().contains(ofSigma.toHtmlEscaped()));
    const int height = strip->height();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_NE(strip->getText(), QStringLiteral("Sigma: ") + ofSigma);
    EXPECT_EQ(strip->height(), height) << "nothing jumps";
}

TEST_F(PropertiesPanelTest, allNumbersOfAVectorAreExplainedAsTheirInput)
{
    add("VireoTexFltCheckerboardBrick");
    const QString sentence = Explanations::ofInput(
        QStringLiteral("VireoTexFltCheckerboardBrick"), QStringLiteral("v1"));
    ASSERT_FALSE(sentence.isEmpty());
    int found = 0;
    for (const PropertyRow* each : m_window->getProperties()->findChildren<PropertyRow*>())
        found += each->toolTip().contains(sentence.toHtmlEscaped());
    EXPECT_GE(found, 3);
}

TEST_F(PropertiesPanelTest, whatAUserAddsIsNotExplainedAsSomethingElse)
{
    auto* matte = static_cast<VireoBrickBase*>(add("VireoMatMatteBrick"));
    const QString sentence
        = Explanations::ofInput(QStringLiteral("VireoMatMatteBrick"), QStringLiteral("sigma"));
    matte->addCustomInput(
        1009, QStringLiteral("sigma"), QStringLiteral("<i>Mine</i>"), DzBrickParam::InputDirection);
    select({});
    select({ matte });
    EXPECT_TRUE(row("Sigma")->toolTip().contains(sentence));
    const QString tip = row("<i>Mine</i>")->toolTip();
    EXPECT_FALSE(tip.contains(sentence));
    EXPECT_TRUE(tip.contains(QLatin1String("&lt;i&gt;Mine"))) << "a name is no rich text";
}
