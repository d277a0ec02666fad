// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WindowFixture.h"

#include "ApplyDialog.h"
#include "AutosaveFolder.h"
#include "BrickAppearance.h"
#include "BrickCatalogue.h"
#include "BrickItem.h"
#include "BrickSelection.h"
#include "BrickyardPanel.h"
#include "CommandSet.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "HistoryDelegate.h"
#include "MessageLine.h"
#include "MixerDocument.h"
#include "NetworkEdit.h"
#include "NetworkScene.h"
#include "NetworkTextPanel.h"
#include "NetworkView.h"
#include "NetworkWalk.h"
#include "PlaceholderModel.h"
#include "ProblemsPanel.h"
#include "PropertiesPanel.h"
#include "PropertyRow.h"
#include "SceneController.h"
#include "SceneSession.h"
#include "SurfacesPanel.h"
#include "Theme.h"
#include "dzbrickparam.h"
#include "dzmaterial.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzstringproperty.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QDockWidget>
#include <QDrag>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTextBlock>
#include <QToolButton>
#include <QTreeWidget>
#include <QUndoStack>
#include <QUndoView>
#include <QUrl>

#include <algorithm>

namespace {

QString scenePath()
{
    return projectPath(QStringLiteral("examples/scenes/vase-on-table.obj"));
}

QTreeWidgetItem* itemNamed(QTreeWidget* tree, const char* name)
{
    const QList<QTreeWidgetItem*> items
        = tree->findItems(QString::fromLatin1(name), Qt::MatchExactly | Qt::MatchRecursive);
    EXPECT_EQ(items.size(), 1) << name;
    return items.value(0);
}

DzMaterial* materialNamed(const char* name)
{
    for (int i = 0; i < dzScene->getNumNodes(); ++i)
        if (const DzObject* object = dzScene->getNode(i)->getObject())
            if (DzMaterial* found
                = object->getCurrentShape()->findMaterial(QString::fromLatin1(name)))
                return found;
    ADD_FAILURE() << "no surface " << name;
    return nullptr;
}

QString textOn(const DzMaterial* material)
{
    auto* property = qobject_cast<DzStringProperty*>(
        material->findProperty(QStringLiteral("LuxRender_material_extrasettings")));
    return property ? property->getValue() : QString();
}

QByteArray contentOf(const QString& path)
{
    QFile content(path);
    EXPECT_TRUE(content.open(QIODevice::ReadOnly)) << path.toStdString();
    return content.readAll();
}

/// Whether doing this asks about something unsaved; the answer is Cancel.
bool asks(const std::function<void()>& act)
{
    bool isAsked = false;
    QTimer::singleShot(0, qApp, [&isAsked] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        isAsked = box != nullptr;
        if (box)
            box->button(QMessageBox::Cancel)->click();
    });
    act();
    return isAsked;
}

/// Everything below the widget that the keyboard can reach.
QList<QWidget*> focusable(QWidget* top)
{
    QList<QWidget*> result;
    for (QWidget* widget : top->findChildren<QWidget*>())
        if (widget->focusPolicy() & Qt::TabFocus && widget->isVisible() && !widget->focusProxy())
            result.append(widget);
    return result;
}

/// Width and height of a dot on an even ground, in pixels of the picture and parts of them.
QSizeF sizeOfDot(const QImage& picture, const QRectF& place)
{
    const qreal ratio = picture.devicePixelRatio();
    const QRect area
        = QRectF(place.topLeft() * ratio, place.size() * ratio).toRect() & picture.rect();
    const QColor ground = picture.pixelColor(area.topLeft());
    const auto contrast = [&](int x, int y) {
        return qAbs(picture.pixelColor(x, y).lightnessF() - ground.lightnessF());
    };
    qreal strongest = 0;
    QVector<qreal> rows(area.height());
    QVector<qreal> columns(area.width());
    for (int y = 0; y < area.height(); ++y)
        for (int x = 0; x < area.width(); ++x) {
            const qreal found = contrast(area.x() + x, area.y() + y);
            strongest = qMax(strongest, found);
            rows[y] += found;
            columns[x] += found;
        }
    const auto most = [&](const QVector<qreal>& sums) {
        return *std::max_element(sums.begin(), sums.end()) / qMax(strongest, 1e-3);
    };
    return QSizeF(most(rows), most(columns));
}

} // namespace

// The whole way of somebody who sees the program for the first time.

TEST_F(WindowTest, aNewcomerBuildsGlossyWithCheckeredRoughnessAndAClearVolume)
{
    DzShaderBrick* root = rootOf(document()->getUser());
    DzShaderBrick* glossy = addFromPalette("glossy");
    ASSERT_EQ(glossy->getPreferredName(), QStringLiteral("Glossy"));
    dragWire(glossy, root, "material");
    EXPECT_EQ(param(root, "material")->getNumConnections(), 1);
    EXPECT_EQ(param(root, "material")->getConnection(0)->getTopBrickOwner(), glossy);

    DzShaderBrick* checks = addFromPalette("float checker");
    dragWire(checks, glossy, "uroughness");
    dragWire(checks, glossy, "vroughness");
    EXPECT_TRUE(param(glossy, "uroughness")->isConnectedTo(param(checks, "result")));
    EXPECT_TRUE(param(glossy, "vroughness")->isConnectedTo(param(checks, "result")));
    DzShaderBrick* clear = addFromPalette("clear");
    dragWire(clear, root, "Interior");
    EXPECT_TRUE(param(root, "Interior")->isConnectedTo(param(clear, "result")));

    select({ checks });
    type("tex1", QStringLiteral("0.1/2"));
    type("tex2", QStringLiteral("0.4"));
    EXPECT_EQ(property(checks, "tex1")->getValueText(), QStringLiteral("0.05"));

    // Put on two surfaces.
    ASSERT_TRUE(m_window->openFile(scenePath()));
    settle();
    QTreeWidget* surfaces = m_window->getSurfaces()->getTree();
    QTest::mouseClick(surfaces->viewport(), Qt::LeftButton, Qt::NoModifier,
        itemPlace(surfaces, itemNamed(surfaces, "Body")));
    QTest::mouseClick(surfaces->viewport(), Qt::LeftButton, Qt::ControlModifier,
        itemPlace(surfaces, itemNamed(surfaces, "TableTop")));
    settle();
    withDialog<ApplyDialog>([](ApplyDialog* dialog) {
        EXPECT_EQ(dialog->getTree()->topLevelItemCount(), 2);
        EXPECT_GT(dialog->getTree()->topLevelItem(0)->childCount(), 3);
        dialog->accept();
    });
    run("apply");
    NetworkTextPanel* code = m_window->getTextPanel();
    code->setLiteral(false);
    code->updateNow();
    ASSERT_TRUE(code->getText().contains(QLatin1String("checkerboard")));
    ASSERT_TRUE(code->getText().contains(QLatin1String("Interior")));
    EXPECT_FALSE(textOn(materialNamed("Body")).isEmpty());
    EXPECT_TRUE(code->getText().contains(textOn(materialNamed("Body"))));
    EXPECT_EQ(textOn(materialNamed("TableTop")), textOn(materialNamed("Body")));
    EXPECT_TRUE(textOn(materialNamed("Rim")).isEmpty());

    // Saved, closed, and opened again: the same text.
    code->setLiteral(true);
    code->updateNow();
    const QString text = code->getText();
    const QString path = file("newcomer.sskn");
    withDialog<QFileDialog>([&](QFileDialog* dialog) {
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->clear();
        QTest::keyClicks(name, path);
        QTest::keyClick(name, Qt::Key_Return);
    });
    run("save");
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_FALSE(document()->isModified());
    run("close");
    EXPECT_EQ(document(), nullptr);
    dropFiles(m_window.get(), { path });
    settle();
    ASSERT_NE(document(), nullptr);
    code->updateNow();
    EXPECT_TEXT(text, code->getText());
}

// Palette.

TEST_F(WindowTest, paletteFollowsTheCategoriesAndFiltersWhileTyping)
{
    BrickyardPanel* palette = m_window->getBrickyard();
    const QTreeWidgetItem* matte = palette->findItem(QStringLiteral("VireoMatMatteBrick"));
    ASSERT_NE(matte, nullptr);
    EXPECT_EQ(matte->text(0), QStringLiteral("Matte"));
    EXPECT_EQ(matte->parent()->text(0), QStringLiteral("Material"));
    EXPECT_EQ(matte->parent()->parent()->text(0), QStringLiteral("Vireo"));
    QTest::keyClicks(palette->getSearch(), QStringLiteral("matte"));
    EXPECT_FALSE(matte->isHidden());
    EXPECT_TRUE(matte->parent()->isExpanded());
    EXPECT_TRUE(palette->findItem(QStringLiteral("VireoMatGlassBrick"))->isHidden());
    QTest::keyClick(palette->getSearch(), Qt::Key_Escape);
    EXPECT_FALSE(palette->findItem(QStringLiteral("VireoMatGlassBrick"))->isHidden());
    QTest::keyClicks(palette->getSearch(), QStringLiteral("no such brick"));
    EXPECT_FALSE(palette->getTree()->isVisible());
    QTest::keyClick(palette->getSearch(), Qt::Key_Return);
    EXPECT_EQ(document()->getUser()->getNumBricks(), 2);
}

TEST_F(WindowTest, dotsOfThePaletteAreRoundAtAnyScaleOfTheScreen)
{
    QTreeWidget* tree = m_window->getBrickyard()->getTree();
    QTest::keyClicks(m_window->getBrickyard()->getSearch(), QStringLiteral("scale"));
    tree->setCurrentItem(nullptr);
    settle();
    // As in the program.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    for (const qreal ratio : { 1.0, 1.0417, 1.25, 1.5, 2.0 }) {
        QImage shown(tree->viewport()->size() * ratio, QImage::Format_RGB32);
        shown.setDevicePixelRatio(ratio);
        tree->viewport()->render(&shown);
        int count = 0;
        for (const BrickKind& kind : BrickCatalogue::instance()->getKinds()) {
            const QTreeWidgetItem* item = m_window->getBrickyard()->findItem(kind.className);
            const QRect row = tree->visualItemRect(item) & tree->viewport()->rect();
            if (item->isHidden() || row.isEmpty())
                continue;
            const QSizeF dot = sizeOfDot(shown, QRectF(row.left(), row.top(), 18, row.height()));
            EXPECT_GE(dot.width(), 7 * ratio) << kind.className.toStdString();
            EXPECT_NEAR(dot.width(), dot.height(), 0.5) << ratio;
            ++count;
        }
        EXPECT_GE(count, 2);
    }
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, false);
}

TEST_F(WindowTest, doubleClickAddsABrickWhereItIsSeen)
{
    QTreeWidget* tree = m_window->getBrickyard()->getTree();
    QTreeWidgetItem* glass
        = m_window->getBrickyard()->findItem(QStringLiteral("VireoMatGlassBrick"));
    const QPoint place = itemPlace(tree, glass);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    settle();
    DzShaderBrick* added = document()->getSelection()->getCurrent();
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->className(), QStringLiteral("VireoMatGlassBrick"));
    EXPECT_TRUE(m_window->getView()->getVisibleBox().contains(BrickAppearance::position(added)));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

TEST_F(WindowTest, aBrickIsDraggedFromThePaletteToTheCanvas)
{
    QTreeWidget* tree = m_window->getBrickyard()->getTree();
    QTreeWidgetItem* glass
        = m_window->getBrickyard()->findItem(QStringLiteral("VireoMatGlassBrick"));
    tree->scrollToItem(glass);
    settle();
    QWindow* window = m_window->windowHandle();
    const QPoint start = tree->visualItemRect(glass).center();
    const QPoint from = tree->viewport()->mapTo(m_window.get(), start);
    const QPoint way(0, 2 * QApplication::startDragDistance());
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(window, from + way);
    // This platform ends each drag at once: what it carries is handed to the canvas here, before
    // the next event takes it away.
    QMouseEvent move(
        QEvent::MouseMove, start + 2 * way, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree->viewport(), &move);
    const auto* drag = tree->findChild<QDrag*>();
    ASSERT_NE(drag, nullptr) << "nothing was dragged";
    EXPECT_FALSE(drag->pixmap().isNull());
    QWidget* canvas = m_window->getView()->viewport();
    const QPoint place(80, 80);
    QDragEnterEvent enter(place, Qt::CopyAction, drag->mimeData(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, drag->mimeData(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas, &drop);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, from);
    settle();
    ASSERT_EQ(document()->getUser()->getNumBricks(), 3);
    EXPECT_EQ(
        document()->getUser()->getBrick(3)->className(), QStringLiteral("VireoMatGlassBrick"));
}

TEST_F(WindowTest, headingsOfThePaletteCannotBeDragged)
{
    QTreeWidget* tree = m_window->getBrickyard()->getTree();
    const QTreeWidgetItem* glass
        = m_window->getBrickyard()->findItem(QStringLiteral("VireoMatGlassBrick"));
    QTreeWidgetItem* heading = glass->parent();
    ASSERT_NE(heading, nullptr);
    tree->setCurrentItem(heading);
    const std::unique_ptr<QMimeData> carried(tree->model()->mimeData({ tree->currentIndex() }));
    EXPECT_EQ(carried, nullptr);
}

namespace {

/// Takes no bricks whose class name has "Glass" in it.
class ChoosyUser : public VireoBrickUser
{
public:
    bool canUseBrick(const DzShaderBrick* candidate) const override
    {
        return !candidate->className().contains(QLatin1String("Glass"));
    }
};

} // namespace

TEST_F(WindowTest, aBrickThatTheNetworkRefusesShowsAStopCursor)
{
    ChoosyUser choosy;
    choosy.ref(); // it stands on the stack
    BrickyardPanel* palette = m_window->getBrickyard();
    palette->setUser(&choosy);
    QTreeWidget* tree = palette->getTree();
    QTreeWidgetItem* glass = palette->findItem(QStringLiteral("VireoMatGlassBrick"));
    QTreeWidgetItem* matte = palette->findItem(QStringLiteral("VireoMatMatteBrick"));
    EXPECT_FALSE(glass->flags() & Qt::ItemIsDragEnabled);
    const auto cursorAt = [&](QTreeWidgetItem* item) {
        const QPoint at = itemPlace(tree, item);
        QMouseEvent move(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &move);
        return tree->viewport()->cursor().shape();
    };
    EXPECT_EQ(cursorAt(glass), Qt::ForbiddenCursor);
    EXPECT_EQ(cursorAt(matte), Qt::ArrowCursor);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, itemPlace(tree, glass));
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, itemPlace(tree, glass));
    EXPECT_EQ(document()->getUser()->getNumBricks(), 2);
    EXPECT_TRUE(m_window->getMessage().contains(QLatin1String("Glass")));
    palette->setUser(nullptr);
}

TEST_F(WindowTest, newBricksLieOnNoOthers)
{
    for (int i = 0; i < 12; ++i)
        addFromPalette(i % 2 ? "glossy" : "float checker");
    const QVector<DzShaderBrick*> bricks = bricksOf(document()->getUser());
    for (int i = 0; i < bricks.size(); ++i)
        for (int k = 0; k < i; ++k) {
            const QRectF a(
                BrickAppearance::position(bricks.at(i)), BrickAppearance::size(bricks.at(i)));
            const QRectF b(
                BrickAppearance::position(bricks.at(k)), BrickAppearance::size(bricks.at(k)));
            EXPECT_FALSE(a.intersects(b)) << i << " and " << k;
        }
}

// The text for the renderer.

TEST_F(WindowTest, theTextFollowsEveryChange)
{
    NetworkTextPanel* code = m_window->getTextPanel();
    EXPECT_TRUE(code->getText().contains(QLatin1String("\"float   sigma\" [0]")));
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("15"));
    EXPECT_TRUE(code->getText().contains(QLatin1String("\"float   sigma\" [15]")));
    auto* shown = code->findChild<QPlainTextEdit*>();
    EXPECT_TEXT(code->getText(), shown->toPlainText());
    run("undo");
    EXPECT_TRUE(code->getText().contains(QLatin1String("\"float   sigma\" [0]")));
    EXPECT_TEXT(code->getText(), shown->toPlainText());
    document()->getEdit()->deleteBricks({ rootOf(document()->getUser()) });
    settle();
    EXPECT_TRUE(shown->toPlainText().isEmpty());
}

TEST_F(WindowTest, selectingABrickLightsItsLines)
{
    auto* shown = m_window->getTextPanel()->findChild<QPlainTextEdit*>();
    EXPECT_TRUE(shown->extraSelections().isEmpty());
    select({ brick("Matte") });
    QStringList lit;
    for (const QTextEdit::ExtraSelection& light : shown->extraSelections())
        lit += light.cursor.selectedText().split(QChar::ParagraphSeparator, Qt::SkipEmptyParts);
    EXPECT_EQ(lit.value(0), QStringLiteral("MakeNamedMaterial \"Lm_material1\""));
    EXPECT_TRUE(lit.last().contains(QLatin1String("\"matte\""))) << lit.last().toStdString();
    const QImage with = shown->viewport()->grab().toImage();
    // The light of every line is as wide as the panel.
    const QTextCursor litLines = shown->extraSelections().constLast().cursor;
    QTextCursor line = litLines;
    line.setPosition(litLines.selectionStart());
    int numLines = 0;
    for (; line.position() < litLines.selectionEnd(); line.movePosition(QTextCursor::NextBlock)) {
        const QPoint place(with.width() - 2, shown->cursorRect(line).center().y());
        if (!with.rect().contains(place))
            continue;
        ++numLines;
        EXPECT_NE(with.pixelColor(place), shown->palette().color(QPalette::Base))
            << line.block().text().toStdString();
    }
    EXPECT_GE(numLines, 2);
    document()->getSelection()->clear();
    settle();
    EXPECT_TRUE(shown->extraSelections().isEmpty());
    EXPECT_NE(shown->viewport()->grab().toImage(), with);
    // Several are lit together, and only theirs.
    DzShaderBrick* checks = addFromPalette("float checker");
    dragWire(checks, brick("Matte"), "sigma");
    select({ checks, brick("Matte") });
    const auto litText = [shown] {
        QString text;
        for (const QTextEdit::ExtraSelection& light : shown->extraSelections())
            text += light.cursor.selectedText();
        return text;
    };
    EXPECT_TRUE(litText().contains(QLatin1String("checkerboard")));
    EXPECT_TRUE(litText().contains(QLatin1String("\"matte\"")));
    select({ checks });
    EXPECT_TRUE(litText().contains(QLatin1String("checkerboard")));
    EXPECT_FALSE(litText().contains(QLatin1String("\"matte\"")));
}

TEST_F(WindowTest, aLongTextFollowsToo)
{
    QVector<DzShaderBrick*> mixes;
    {
        const DzUndoStackLock lock;
        for (int i = 0; i < 1200; ++i)
            mixes.append(document()->getEdit()->addBrick(
                QStringLiteral("VireoTexClrMixBrick"), QPointF(0, 40 * i)));
        for (int i = 0; i + 1 < mixes.size(); ++i)
            param(mixes.at(i), "tex1")->addConnection(param(mixes.at(i + 1), "result"));
        param(brick("Matte"), "Kd")->addConnection(param(mixes.first(), "result"));
    }
    NetworkTextPanel* code = m_window->getTextPanel();
    const auto waitFor = [code](auto holds) {
        for (int i = 0; i < 300 && !holds(code->getText()); ++i)
            QTest::qWait(10);
        return holds(code->getText());
    };
    ASSERT_TRUE(waitFor([](const QString& text) { return text.size() > 100000; }));
    unlinkAll(param(mixes.first(), "tex1"));
    EXPECT_TRUE(waitFor([](const QString& text) { return text.size() < 100000; }));
    run("undo");
    EXPECT_TRUE(waitFor([](const QString& text) { return text.size() > 100000; }));
    EXPECT_TEXT(code->getText(), code->findChild<QPlainTextEdit*>()->toPlainText());
}

TEST_F(WindowTest, clickingALineShowsItsBrick)
{
    auto* shown = m_window->getTextPanel()->findChild<QPlainTextEdit*>();
    const QTextCursor found = shown->document()->find(QStringLiteral("sigma"));
    const QPoint place = shown->cursorRect(found).center();
    QTest::mouseClick(shown->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    settle();
    EXPECT_EQ(document()->getSelection()->getBricks(), QVector<DzShaderBrick*> { brick("Matte") });
    EXPECT_TRUE(
        m_window->getView()->getVisibleBox().contains(BrickAppearance::position(brick("Matte"))));
}

TEST_F(WindowTest, theTextIsCopiedWhole)
{
    QGuiApplication::clipboard()->clear();
    m_window->getTextPanel()->copyText();
    EXPECT_TEXT(m_window->getTextPanel()->getText(), QGuiApplication::clipboard()->text());
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(QLatin1String("NamedMaterial")));
}

TEST_F(WindowTest, imagesThatTheTextLacksAreNamedAndCanBeWritten)
{
    NetworkTextPanel* code = m_window->getTextPanel();
    auto* note = code->findChild<QLabel*>(QStringLiteral("note"));
    EXPECT_FALSE(note->isVisible());
    ASSERT_TRUE(m_window->getDocuments()->open(
        projectPath(QStringLiteral("examples/tinted-image-map.sskn"))));
    settle();
    ASSERT_TRUE(note->isVisible());
    EXPECT_TRUE(note->text().contains(QLatin1String("Brick Wall (3)")))
        << note->text().toStdString();
    auto* box = code->findChild<QCheckBox*>(QStringLiteral("mapFiles"));
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    settle();
    EXPECT_FALSE(note->isVisible());
    auto* shown = code->findChild<QPlainTextEdit*>();
    // Wherever the text is pasted, the renderer finds the image.
    const QString image = projectPath(QStringLiteral("examples/textures/bricks.png"));
    EXPECT_TRUE(shown->toPlainText().contains(QStringLiteral("[\"%1\"]").arg(image)))
        << shown->toPlainText().toStdString();
    code->copyText();
    EXPECT_TEXT(shown->toPlainText(), QGuiApplication::clipboard()->text());
}

TEST_F(WindowTest, placeholdersAreLockedAndUnlockedInTheirTable)
{
    NetworkTextPanel* code = m_window->getTextPanel();
    auto* box = code->findChild<QCheckBox*>();
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    ASSERT_FALSE(code->isLiteral());
    EXPECT_TRUE(code->getText().contains(QLatin1String("%(LuxRender_Lm_")));
    auto* table = code->findChild<QTableView*>();
    const auto rowOf = [&](const char* name) {
        for (int i = 0; i < table->model()->rowCount(); ++i)
            if (table->model()->index(i, PlaceholderModel::PropertyColumn).data().toString()
                == QLatin1String(name))
                return i;
        return -1;
    };
    const auto clickLock = [&] {
        const QModelIndex cell
            = table->model()->index(rowOf("Sigma"), PlaceholderModel::LockedColumn);
        table->scrollTo(cell);
        const QRect place = table->visualRect(cell);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
            QPoint(place.left() + 10, place.center().y()));
        settle();
    };
    ASSERT_GE(rowOf("Sigma"), 0);
    clickLock();
    EXPECT_TRUE(property(brick("Matte"), "sigma")->isLocked());
    EXPECT_TRUE(code->getText().contains(QLatin1String("\"float   sigma\" [0]")));
    ASSERT_GE(rowOf("Sigma"), 0);
    clickLock();
    EXPECT_FALSE(property(brick("Matte"), "sigma")->isLocked());
    EXPECT_FALSE(code->getText().contains(QLatin1String("\"float   sigma\" [0]")));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
    // The keyboard stays on its row, wherever that goes.
    table->setFocus();
    const auto spaceOn = [&](const char* label, const DzProperty* value) {
        table->setCurrentIndex(table->model()->index(rowOf(label), PlaceholderModel::LockedColumn));
        for (const bool isLocked : { true, false, true }) {
            QTest::keyClick(table, Qt::Key_Space);
            settle();
            EXPECT_EQ(value->isLocked(), isLocked) << label;
            EXPECT_EQ(table->currentIndex().row(), rowOf(label)) << label;
            EXPECT_TRUE(table->selectionModel()->isRowSelected(rowOf(label), QModelIndex()));
        }
        return rowOf(label);
    };
    const int before = rowOf("Diffuse");
    EXPECT_NE(spaceOn("Diffuse", property(brick("Matte"), "Kd")), before) << "it moved";
    spaceOn("Sigma", property(brick("Matte"), "sigma"));
}

// Problems.

TEST_F(WindowTest, aProblemLeadsToItsBrickWhichHasABadge)
{
    DzShaderBrick* idle = addFromPalette("velvet");
    QTest::qWait(250);
    ASSERT_EQ(m_window->getProblems()->getProblems().size(), 1);
    document()->getSelection()->clear();
    for (QDockWidget* dock : m_window->findChildren<QDockWidget*>())
        if (dock->objectName() == QLatin1String("Problems"))
            dock->show();
    settle();
    auto* list = m_window->getProblems()->findChild<QTreeWidget*>();
    ASSERT_TRUE(list->isVisible());
    QTest::mouseClick(
        list->viewport(), Qt::LeftButton, Qt::NoModifier, itemPlace(list, list->topLevelItem(0)));
    EXPECT_EQ(document()->getSelection()->getCurrent(), idle);
    const QImage with = m_window->getView()->grab().toImage();
    m_window->getView()->getNetworkScene()->clearBadges();
    EXPECT_NE(m_window->getView()->grab().toImage(), with) << "the brick shows a badge";
    dragWire(idle, rootOf(document()->getUser()), "material");
    document()->getEdit()->deleteBricks({ brick("Matte") });
    QTest::qWait(250);
    EXPECT_TRUE(m_window->getProblems()->getProblems().isEmpty());
    EXPECT_FALSE(list->isVisible());
}

TEST_F(WindowTest, whoGoesToABrickInViewStaysWhereHeIs)
{
    NetworkView* view = m_window->getView();
    const QRectF before = view->getVisibleBox();
    m_window->showBrick(brick("Matte"));
    EXPECT_EQ(view->getVisibleBox(), before);
    view->goTo(QPointF(5000, 5000));
    m_window->showBrick(brick("Matte"));
    EXPECT_TRUE(view->getVisibleBox().contains(
        QRectF(BrickAppearance::position(brick("Matte")), BrickAppearance::size(brick("Matte")))));
}

TEST_F(WindowTest, doubleClickOnARowOfTheCanvasEditsItsValue)
{
    NetworkView* view = m_window->getView();
    DzShaderBrick* matte = brick("Matte");
    const QPoint place = view->mapFromScene(BrickAppearance::position(matte)
        + BrickAppearance::pinOffset(matte, param(matte, "sigma")) + QPointF(60, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    settle();
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    settle();
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Sigma"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("12"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(property(matte, "sigma")->getValueText(), QStringLiteral("12"));

    run("dockProperties");
    settle();
    EXPECT_FALSE(m_window->findChild<PropertiesPanel*>()->isVisible());
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    settle();
    EXPECT_TRUE(m_window->findChild<PropertiesPanel*>()->isVisible());
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Sigma"));
}

TEST_F(WindowTest, messagesGoAfterAWhile)
{
    auto* line = m_window->findChild<MessageLine*>();
    ASSERT_NE(line, nullptr);
    auto* end = line->findChild<QTimer*>();
    m_window->showMessage(QStringLiteral("Done."));
    ASSERT_TRUE(end->isActive());
    const int notice = end->interval();
    m_window->showWarning(QStringLiteral("Nothing was done."));
    EXPECT_GT(end->interval(), notice) << "what went wrong stays longer";
    EXPECT_EQ(m_window->getMessage(), QStringLiteral("Nothing was done."));
    QTimerEvent over(end->timerId());
    QApplication::sendEvent(end, &over);
    EXPECT_EQ(m_window->getMessage(), QString());
    EXPECT_FALSE(end->isActive());
}

// Surfaces.

TEST_F(WindowTest, surfacesThatKeepANetworkAreMarked)
{
    m_settings->setApplyListShown(false);
    ASSERT_TRUE(m_window->openFile(scenePath()));
    materialNamed("Body")->select(true);
    settle();
    QTreeWidget* tree = m_window->getSurfaces()->getTree();
    const auto mark = [tree](const char* surface) { return itemNamed(tree, surface)->text(2); };
    EXPECT_EQ(mark("Body"), QString());
    run("apply");
    EXPECT_NE(mark("Body"), QString());
    EXPECT_EQ(mark("Rim"), QString());
    EXPECT_TRUE(itemNamed(tree, "Body")->isSelected());
    run("undo");
    EXPECT_EQ(mark("Body"), QString());
    run("redo");
    EXPECT_NE(mark("Body"), QString());
    const QString path = file("scene.duf");
    ASSERT_TRUE(m_window->getSceneController()->saveTo(path));
    ASSERT_TRUE(m_window->openFile(path));
    settle();
    EXPECT_NE(mark("Body"), QString());
    EXPECT_EQ(mark("Rim"), QString());
    // Another item of data is no network.
    DzUndoStackHold hold;
    materialNamed("Rim")->addDataItem(new DzSimpleElementData(QStringLiteral("Other"), true));
    hold.accept(QStringLiteral("Other"));
    settle();
    EXPECT_EQ(mark("Rim"), QString());
}

TEST_F(WindowTest, selectionOfSurfacesAndMaterialsIsOne)
{
    ASSERT_TRUE(m_window->openFile(scenePath()));
    settle();
    QTreeWidget* tree = m_window->getSurfaces()->getTree();
    EXPECT_FALSE(command("apply")->isEnabled());
    QTest::mouseClick(
        tree->viewport(), Qt::LeftButton, Qt::NoModifier, itemPlace(tree, itemNamed(tree, "Rim")));
    EXPECT_TRUE(materialNamed("Rim")->isSelected());
    EXPECT_TRUE(command("apply")->isEnabled());
    materialNamed("Body")->select(true);
    materialNamed("Rim")->select(false);
    settle();
    EXPECT_TRUE(itemNamed(tree, "Body")->isSelected());
    EXPECT_FALSE(itemNamed(tree, "Rim")->isSelected());
}

TEST_F(WindowTest, applyingCanBeRefusedAndTakenBack)
{
    ASSERT_TRUE(m_window->openFile(scenePath()));
    materialNamed("Body")->select(true);
    settle();
    withDialog<ApplyDialog>([](ApplyDialog* dialog) { dialog->reject(); });
    run("apply");
    EXPECT_TRUE(textOn(materialNamed("Body")).isEmpty());
    EXPECT_FALSE(dzUndoStack->canUndo());
    EXPECT_FALSE(m_window->getSceneController()->getSession()->isModified());
    withDialog<ApplyDialog>([](ApplyDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    run("apply");
    EXPECT_FALSE(textOn(materialNamed("Body")).isEmpty());
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_TRUE(m_window->getSceneController()->getSession()->isModified());
    run("undo");
    EXPECT_TRUE(textOn(materialNamed("Body")).isEmpty());
    EXPECT_FALSE(m_window->getSceneController()->getSession()->isModified());
}

TEST_F(WindowTest, theListBeforeApplyingIsSwitchedOffForGood)
{
    ASSERT_TRUE(m_window->openFile(scenePath()));
    materialNamed("Body")->select(true);
    settle();
    withDialog<ApplyDialog>([](ApplyDialog* dialog) {
        QTest::mouseClick(dialog->getShowAgain(), Qt::LeftButton, Qt::NoModifier,
            QPoint(8, dialog->getShowAgain()->height() / 2));
        dialog->accept();
    });
    run("apply");
    EXPECT_FALSE(command("showApplyList")->isChecked());
    // No dialog any more, also in the next run.
    run("apply");
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
    EXPECT_FALSE(ProgramSettings().isApplyListShown());
    run("showApplyList");
    EXPECT_TRUE(ProgramSettings().isApplyListShown());
}

TEST_F(WindowTest, fromSceneOpensATabForEachSurface)
{
    m_settings->setApplyListShown(false);
    ASSERT_TRUE(m_window->openFile(scenePath()));
    materialNamed("Body")->select(true);
    materialNamed("Rim")->select(true);
    settle();
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("33"));
    run("apply");
    const int before = m_window->getTabs()->count();
    run("fromScene");
    EXPECT_EQ(m_window->getTabs()->count(), before + 2);
    EXPECT_TRUE(document()->isModified());
    EXPECT_TRUE(document()->getPath().isEmpty());
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("33"));
    const QString first = document()->getUser()->getIdentifier().toString();
    m_window->getTabs()->setCurrentIndex(before);
    EXPECT_NE(document()->getUser()->getIdentifier().toString(), first);
}

TEST_F(WindowTest, networksWithoutANameAreCalledAsTheirSurfaces)
{
    m_settings->setApplyListShown(false);
    ASSERT_TRUE(m_window->openFile(scenePath()));
    materialNamed("Body")->select(true);
    materialNamed("Rim")->select(true);
    settle();
    run("apply");
    const auto titles = [this] {
        QStringList texts;
        for (const MixerDocument* open : m_window->getTabs()->getDocuments())
            texts.append(open->getTitle());
        return texts;
    };
    run("fromScene");
    run("fromScene");
    const QStringList all = titles();
    ASSERT_GE(all.size(), 4);
    EXPECT_EQ(QStringList(all).removeDuplicates(), 0) << all.join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(all.filter(QStringLiteral("Body")).size(), 2);
    EXPECT_EQ(all.filter(QStringLiteral("Rim")).size(), 2);
    EXPECT_TRUE(all.last().endsWith(QLatin1String(" 2"))) << all.last().toStdString();
    EXPECT_TRUE(document()->getPath().isEmpty());
}

TEST_F(WindowTest, undoingBehindASavedSceneIsAChange)
{
    m_settings->setApplyListShown(false);
    ASSERT_TRUE(m_window->openFile(scenePath()));
    materialNamed("Body")->select(true);
    settle();
    run("apply");
    ASSERT_TRUE(m_window->getSceneController()->saveTo(file("scene.duf")));
    run("undo");
    EXPECT_TRUE(m_window->getSceneController()->getSession()->isModified());
    EXPECT_TRUE(asks([this] { EXPECT_FALSE(m_window->close()); }));
    run("redo");
    EXPECT_FALSE(m_window->getSceneController()->getSession()->isModified());
    EXPECT_EQ(m_settings->getRecentFiles().value(0), file("scene.duf"));
}

TEST_F(WindowTest, aSceneIsSavedAndOpenedWithItsMaterials)
{
    m_settings->setApplyListShown(false);
    ASSERT_TRUE(m_window->openFile(scenePath()));
    materialNamed("Body")->select(true);
    settle();
    run("apply");
    const QString text = textOn(materialNamed("Body"));
    const QString path = file("scene.duf");
    ASSERT_TRUE(m_window->getSceneController()->saveTo(path));
    EXPECT_FALSE(m_window->getSceneController()->getSession()->isModified());
    ASSERT_TRUE(m_window->openFile(path));
    EXPECT_EQ(textOn(materialNamed("Body")), text);
}

// Documents.

TEST_F(WindowTest, theTitleShowsTheMark)
{
    EXPECT_TRUE(m_window->windowTitle().startsWith(QLatin1String("Untitled")));
    EXPECT_FALSE(m_window->isWindowModified());
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("3"));
    EXPECT_TRUE(m_window->isWindowModified());
    EXPECT_TRUE(m_window->getTabs()->tabText(0).contains(QChar(0x2022)));
}

TEST_F(WindowTest, closingAsksAndUndoBringsTheTabBack)
{
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("3"));
    withDialog<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Cancel)->click(); });
    run("close");
    ASSERT_NE(document(), nullptr);
    withDialog<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Discard)->click(); });
    run("close");
    EXPECT_EQ(document(), nullptr);
    EXPECT_FALSE(command("save")->isEnabled());
    run("undo");
    ASSERT_NE(document(), nullptr);
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("3"));
    run("undo");
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("0"));
    run("redo");
    run("redo");
    EXPECT_EQ(document(), nullptr);
}

TEST_F(WindowTest, leavingAsksForEachUnsavedNetwork)
{
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("3"));
    withDialog<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Cancel)->click(); });
    EXPECT_FALSE(m_window->close());
    EXPECT_TRUE(m_window->isVisible());
    const QString path = file("saved.sskn");
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), path));
    EXPECT_TRUE(m_window->close());
}

TEST_F(WindowTest, filesAreDroppedInAndRemembered)
{
    const QString path = projectPath(QStringLiteral("examples/velvet.sskn"));
    dropFiles(m_window.get(), { path, scenePath() });
    settle();
    // The untouched first tab made room.
    EXPECT_EQ(m_window->getTabs()->count(), 1);
    EXPECT_EQ(document()->getPath(), path);
    EXPECT_GT(dzScene->getNumNodes(), 0);
    EXPECT_EQ(m_settings->getRecentFiles(), QStringList({ scenePath(), path }));
    EXPECT_EQ(recentMenu(),
        QStringList(
            { QStringLiteral("Networks"), QStringLiteral("velvet.sskn"), QStringLiteral("Scenes"),
                QStringLiteral("vase-on-table.obj"), QString(), QStringLiteral("Clear") }));
    // A file that is open already is shown, not opened twice.
    run("new");
    ASSERT_TRUE(m_window->openFile(path));
    EXPECT_EQ(m_window->getTabs()->count(), 2);
    EXPECT_EQ(document()->getPath(), path);
}

TEST_F(WindowTest, aDamagedFileIsAMessageAndNoMore)
{
    const QString path = file("damaged.sskn");
    QFile damaged(path);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("{ \"format\": \"sskn\", ");
    damaged.close();
    for (const QString& bad : { path, file("missing.sskn"), m_dir.path(), file("missing.duf") }) {
        EXPECT_FALSE(m_window->openFile(bad)) << bad.toStdString();
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr) << bad.toStdString();
        EXPECT_TRUE(box->text().contains(bad)) << box->text().toStdString();
        QTest::keyClick(box, Qt::Key_Return);
        settle();
    }
    EXPECT_EQ(m_window->getTabs()->count(), 1);
}

TEST_F(WindowTest, whatIsStillBeingTypedIsSaved)
{
    const QString path = file("a.sskn");
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), path));
    select({ brick("Matte") });
    auto* field = startTyping("Sigma", QStringLiteral("42"));
    command("save")->trigger();
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("42"));
    EXPECT_FALSE(document()->isModified());
    EXPECT_EQ(contentOf(path), document()->getText());
    EXPECT_EQ(QApplication::focusWidget(), field) << "typing goes on";
}

TEST_F(WindowTest, whatIsStillBeingTypedIsAskedForAtClosingAndLeaving)
{
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), file("a.sskn")));
    select({ brick("Matte") });
    startTyping("Sigma", QStringLiteral("42"));
    EXPECT_TRUE(asks([this] { EXPECT_FALSE(m_window->close()); }));
    EXPECT_TRUE(document()->isModified());
    ASSERT_TRUE(m_window->getDocuments()->save(document()));
    startTyping("Sigma", QStringLiteral("43"));
    EXPECT_TRUE(asks([this] { command("close")->trigger(); }));
    EXPECT_NE(document(), nullptr);
}

TEST_F(WindowTest, aTitleThatIsStillBeingTypedOnTheCanvasCounts)
{
    const QString path = file("a.sskn");
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), path));
    m_window->activateWindow();
    m_window->getView()->setFocus();
    document()->getSelection()->set({ brick("Matte") });
    settle();
    QTest::keyClick(m_window->getView(), Qt::Key_F2);
    auto* title = m_window->getView()->findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(title, nullptr);
    QTest::keyClicks(title, QStringLiteral("Wall"));
    command("save")->trigger();
    settle();
    EXPECT_EQ(brick("Wall")->getPreferredName(), QStringLiteral("Matte"));
    EXPECT_TRUE(contentOf(path).contains("Wall"));
    EXPECT_FALSE(document()->isModified());
}

TEST_F(WindowTest, aFreshTabInWhichSomebodyTypesMakesNoRoom)
{
    select({ brick("Matte") });
    startTyping("Sigma", QStringLiteral("42"));
    ASSERT_TRUE(m_window->openFile(projectPath(QStringLiteral("examples/velvet.sskn"))));
    EXPECT_EQ(m_window->getTabs()->count(), 2);
}

TEST_F(WindowTest, whatIsStillBeingTypedIsAppliedAndCopied)
{
    m_settings->setApplyListShown(false);
    ASSERT_TRUE(m_window->openFile(scenePath()));
    materialNamed("Body")->select(true);
    select({ brick("Matte") });
    startTyping("Sigma", QStringLiteral("42"));
    command("apply")->trigger();
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("42"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
    startTyping("Sigma", QStringLiteral("17"));
    m_window->getTextPanel()->copyText();
    EXPECT_TRUE(
        QGuiApplication::clipboard()->text().contains(QLatin1String("\"float   sigma\" [17]")));
}

TEST_F(WindowTest, redoingAClosingKeepsWhatIsNotSaved)
{
    const QString path = file("a.sskn");
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("3"));
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), path));
    run("close");
    run("undo");
    run("undo");
    ASSERT_TRUE(m_window->getDocuments()->save(document()));
    run("redo");
    EXPECT_TRUE(document()->isModified());
    run("redo");
    ASSERT_EQ(document(), nullptr);
    for (int i = 0; i < 1000 && !holdsCopy(file("copies")); ++i)
        QTest::qWait(10);
    EXPECT_TRUE(holdsCopy(file("copies"))) << "a copy is kept of what is closed and not saved";
    EXPECT_TRUE(asks([this] { EXPECT_FALSE(m_window->close()); }));
    withDialog<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Save)->click(); });
    EXPECT_TRUE(m_window->close());
    run("undo");
    EXPECT_FALSE(document()->isModified());
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("3"));
    EXPECT_EQ(contentOf(path), document()->getText());
}

TEST_F(WindowTest, aNetworkIsNotSavedOverOneThatIsOpen)
{
    const QString path = file("a.sskn");
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), path));
    const QByteArray before = contentOf(path);
    run("new");
    EXPECT_FALSE(m_window->getDocuments()->saveTo(document(), path));
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->text().contains(path)) << box->text().toStdString();
    QTest::keyClick(box, Qt::Key_Return);
    settle();
    EXPECT_TRUE(document()->getPath().isEmpty());
    EXPECT_EQ(contentOf(path), before);
    // Its own file may be gone in the meantime.
    m_window->getTabs()->setCurrentIndex(0);
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(m_window->getDocuments()->save(document()));
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(WindowTest, aFileThatAnotherProgramChangedIsNotOverwrittenUnasked)
{
    const QString path = file("a.sskn");
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), path));
    const auto writeOther = [&path] {
        QFile other(path);
        ASSERT_TRUE(other.open(QIODevice::WriteOnly));
        other.write("of another program");
    };
    const auto press = [](const char* label) {
        withDialog<QMessageBox>([label](QMessageBox* box) {
            EXPECT_TRUE(box->text().contains(QLatin1String("a.sskn")));
            for (QAbstractButton* button : box->buttons())
                if (button->text().remove(QLatin1Char('&')) == QString::fromUtf8(label))
                    return button->click();
            ADD_FAILURE() << "no button " << label;
            box->reject();
        });
    };
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("3"));
    writeOther();
    press("Cancel");
    run("save");
    EXPECT_TRUE(document()->isModified());
    EXPECT_EQ(contentOf(path), QByteArray("of another program"));
    press("Overwrite");
    run("save");
    EXPECT_FALSE(document()->isModified());
    EXPECT_EQ(contentOf(path), document()->getText());
    // Nobody is asked about what was written here, nor about a file that is gone.
    EXPECT_FALSE(asks([this] { run("save"); }));
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_FALSE(asks([this] { run("save"); }));
    EXPECT_EQ(contentOf(path), document()->getText());
    // What was opened is remembered too.
    run("close");
    ASSERT_TRUE(m_window->openFile(path));
    EXPECT_FALSE(asks([this] { run("save"); }));
    writeOther();
    EXPECT_TRUE(asks([this] { run("save"); }));
}

TEST_F(WindowTest, scenesAreOpenedFromTheDialogOfNetworksToo)
{
    withDialog<QFileDialog>([](QFileDialog* dialog) {
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->clear();
        QTest::keyClicks(name, scenePath());
        QTest::keyClick(name, Qt::Key_Return);
    });
    run("open");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_GT(dzScene->getNumNodes(), 0);
}

TEST_F(WindowTest, severalFilesWithErrorsAreOneMessage)
{
    dropFiles(m_window.get(), { file("missing.sskn"), file("gone.duf"), file("lost.sskn") });
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    for (const char* name : { "missing.sskn", "gone.duf", "lost.sskn" })
        EXPECT_TRUE(box->informativeText().contains(file(name))) << name;
    box->accept();
    settle();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(WindowTest, theTextIsSavedUnderTheNetworksName)
{
    ASSERT_TRUE(m_window->getDocuments()->saveTo(document(), file("wall.sskn")));
    withDialog<QFileDialog>([this](QFileDialog* dialog) {
        EXPECT_EQ(dialog->directory().absolutePath(), m_dir.path());
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        EXPECT_EQ(name->text(), QStringLiteral("wall.lxm"));
        name->clear();
        QTest::keyClicks(name, QStringLiteral("other"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    m_window->getTextPanel()->saveText();
    EXPECT_EQ(contentOf(file("other.lxm")), m_window->getTextPanel()->getText().toUtf8());
}

TEST_F(WindowTest, otherProgramsTextOnTheClipboardDoesNoHarm)
{
    m_window->getView()->setFocus();
    for (const QString& text : { QString(), QStringLiteral("hello"), QStringLiteral("{}"),
             QStringLiteral("[[[[[[["), QString(100000, QLatin1Char('{')), QString(QChar(0)) }) {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(m_window->getView(), Qt::Key_V, Qt::ControlModifier);
        settle();
        EXPECT_EQ(document()->getUser()->getNumBricks(), 2);
        EXPECT_FALSE(document()->isModified());
    }
}

// History.

TEST_F(WindowTest, theHistoryListsStepsAndJumps)
{
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("1"));
    type("Sigma", QStringLiteral("2"));
    document()->getEdit()->setTitle(brick("Matte"), QStringLiteral("Wall"));
    QUndoView* history = m_window->getHistory();
    for (QDockWidget* dock : m_window->findChildren<QDockWidget*>())
        if (dock->objectName() == QLatin1String("History"))
            dock->raise();
    settle();
    ASSERT_EQ(history->model()->rowCount(), 4);
    EXPECT_TRUE(history->model()->index(1, 0).data().toString().contains(QLatin1String("Sigma")));
    const auto jump = [&](int row) {
        QTest::mouseClick(history->viewport(), Qt::LeftButton, Qt::NoModifier,
            history->visualRect(history->model()->index(row, 0)).center());
        settle();
    };
    jump(1);
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("1"));
    jump(3);
    EXPECT_EQ(property(brick("Wall"), "sigma")->getValueText(), QStringLiteral("2"));
    jump(0);
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("0"));
    EXPECT_FALSE(command("undo")->isEnabled());
}

TEST_F(WindowTest, undoingAChangeOfAHiddenNetworkShowsIt)
{
    MixerDocument* first = document();
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("1"));
    run("new");
    MixerDocument* second = document();
    run("undo");
    EXPECT_EQ(document(), first);
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("0"));
    EXPECT_EQ(m_window->getMessage(), QStringLiteral("Undone in Untitled: Change Sigma"));
    m_window->getTabs()->setCurrent(second);
    run("redo");
    EXPECT_EQ(document(), first);
    EXPECT_EQ(m_window->getMessage(), QStringLiteral("Redone in Untitled: Change Sigma"));
    // What is seen to change needs no word, and a new step is no undoing.
    m_window->showMessage(QString());
    run("undo");
    EXPECT_EQ(m_window->getMessage(), QString());
    m_window->getTabs()->setCurrent(second);
    first->getEdit()->setTitle(bricksOf(first->getUser()).first(), QStringLiteral("Wall"));
    settle();
    EXPECT_EQ(document(), second);
    EXPECT_EQ(m_window->getMessage(), QString());
    // The history always names networks.
    const auto* delegate = qobject_cast<HistoryDelegate*>(m_window->getHistory()->itemDelegate());
    ASSERT_NE(delegate, nullptr);
    const QModelIndex step = m_window->getHistory()->model()->index(1, 0);
    EXPECT_EQ(delegate->textOf(step), step.data().toString() + QStringLiteral(" — Untitled"));
    // A jump to the begin.
    dzUndoStack->getQtStack()->setIndex(0);
    settle();
    EXPECT_EQ(document(), first);
    m_window->getTabs()->close(second, false);
    EXPECT_EQ(delegate->textOf(step), step.data().toString() + QStringLiteral(" — Untitled"));
}

TEST_F(WindowTest, aDragThatWasTakenBackIsNoChangeOfTheShownNetwork)
{
    MixerDocument* first = document();
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("1"));
    run("new");
    dzUndoStack->beginHold();
    property(brick("Matte"), "sigma")->setValueText(QStringLiteral("7"), nullptr);
    dzUndoStack->cancel();
    run("undo");
    EXPECT_EQ(document(), first);
}

// The window itself.

TEST_F(WindowTest, everyCommandIsInAMenuAndSaysWhatItDoes)
{
    QSet<const QAction*> inMenus;
    QList<QMenu*> menus = m_window->menuBar()->findChildren<QMenu*>();
    for (const QMenu* menu : menus)
        for (const QAction* action : menu->actions())
            inMenus.insert(action);
    QHash<QString, QString> keys;
    for (const CommandSet::Group& group : m_window->getCommands()->getGroups()) {
        EXPECT_FALSE(group.actions.isEmpty()) << group.title.toStdString();
        for (const QAction* action : group.actions) {
            EXPECT_TRUE(inMenus.contains(action)) << action->text().toStdString();
            // Without a sentence of its own it is the text.
            const QString name = action->text().remove(QLatin1Char('&')).remove(QChar(0x2026));
            EXPECT_TRUE(!action->toolTip().isEmpty() && action->toolTip() != name)
                << name.toStdString();
            for (const QKeySequence& key : action->shortcuts()) {
                EXPECT_FALSE(keys.contains(key.toString()))
                    << key.toString().toStdString() << ": " << action->text().toStdString()
                    << " and " << keys.value(key.toString()).toStdString();
                keys.insert(key.toString(), action->text());
            }
        }
    }
    EXPECT_GT(keys.size(), 30);
}

TEST_F(WindowTest, shortcutsAreListedAndFound)
{
    run("shortcuts");
    auto* page = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(page, nullptr);
    auto* list = page->findChild<QTreeWidget*>();
    QTreeWidgetItem* undo
        = list->findItems(QStringLiteral("Undo"), Qt::MatchStartsWith | Qt::MatchRecursive)
              .value(0);
    ASSERT_NE(undo, nullptr);
    EXPECT_TRUE(undo->text(1).contains(QLatin1String("Ctrl+Z"))) << undo->text(1).toStdString();
    // What no command has is listed too.
    for (const char* keys : { "Tab", "Backspace", "Ctrl+Arrows", "Middle drag", "Double click" }) {
        const QList<QTreeWidgetItem*> lines
            = list->findItems(QString::fromLatin1(keys), Qt::MatchContains | Qt::MatchRecursive, 1);
        EXPECT_FALSE(lines.isEmpty()) << keys;
    }
    QTest::keyClicks(page->findChild<QLineEdit*>(), QStringLiteral("ctrl+w"));
    EXPECT_TRUE(undo->isHidden());
    EXPECT_FALSE(itemNamed(list, "Close")->isHidden());
    QTest::keyClick(page, Qt::Key_Escape);
    settle();
}

TEST_F(WindowTest, returnOnThePageOfKeysRunsTheCommand)
{
    select({ brick("Matte") });
    run("shortcuts");
    auto* page = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(page, nullptr);
    auto* field = page->findChild<QLineEdit*>();
    QTest::keyClicks(field, QStringLiteral("select all"));
    QTest::keyClick(field, Qt::Key_Return);
    settle();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(document()->getSelection()->size(), document()->getUser()->getNumBricks());
    // What has nothing to work on says so and stays.
    run("shortcuts");
    page = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(page, nullptr);
    auto* list = page->findChild<QTreeWidget*>();
    QTreeWidgetItem* apply = itemNamed(list, "Apply");
    ASSERT_NE(apply, nullptr);
    list->setCurrentItem(apply);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    settle();
    ASSERT_EQ(QApplication::activeModalWidget(), page);
    EXPECT_TRUE(
        page->findChild<QLabel*>(QStringLiteral("note"))->text().contains(QStringLiteral("Apply")));
    QTest::keyClick(page, Qt::Key_Escape);
    settle();
}

TEST_F(WindowTest, theKeyboardWalksThePartsOfTheWindow)
{
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    NetworkView* view = m_window->getView();
    view->setFocus();
    select({ brick("Matte") });
    const auto press = [this](int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(m_window->windowHandle(), Qt::Key(key), modifiers);
        settle();
    };
    const auto isIn = [](const QWidget* part) {
        const QWidget* focus = QApplication::focusWidget();
        return focus && (focus == part || part->isAncestorOf(focus));
    };
    press(Qt::Key_F6);
    EXPECT_TRUE(isIn(m_window->getBrickyard()));
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(isIn(view));
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(isIn(m_window->getTextPanel())) << "the last panel in view";
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(isIn(m_window->getProperties()));
    press(Qt::Key_Escape);
    EXPECT_TRUE(isIn(view));
}

TEST_F(WindowTest, editingGoesToTheValueOfTheRow)
{
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    select({ brick("Matte") });
    NetworkView* view = m_window->getView();
    view->setFocus();
    // The last row is the last value.
    const int rows = view->getNetworkScene()->getItem(brick("Matte"))->getRows().size();
    for (int i = 0; i < rows; ++i)
        QTest::keyClick(view, Qt::Key_Down);
    run("editValues");
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Sigma"));
}

TEST_F(WindowTest, aPanelBehindAnotherIsBroughtToTheFront)
{
    auto* history = m_window->findChild<QDockWidget*>(QStringLiteral("History"));
    const auto isSeen = [history] { return !history->visibleRegion().isEmpty(); };
    ASSERT_FALSE(isSeen());
    run("dockHistory");
    EXPECT_TRUE(isSeen());
    run("dockHistory");
    EXPECT_TRUE(history->isHidden());
    EXPECT_FALSE(command("dockHistory")->isChecked());
    run("dockHistory");
    EXPECT_TRUE(isSeen());
    EXPECT_TRUE(command("dockHistory")->isChecked());
}

TEST_F(WindowTest, aSceneThatOpensBringsItsSurfacesToTheFront)
{
    auto* surfaces = m_window->findChild<QDockWidget*>(QStringLiteral("Surfaces"));
    const auto isSeen = [surfaces] { return !surfaces->visibleRegion().isEmpty(); };
    run("dockHistory");
    ASSERT_FALSE(isSeen());
    ASSERT_TRUE(m_window->openFile(scenePath()));
    settle();
    EXPECT_TRUE(isSeen());
}

TEST_F(WindowTest, dialogsHaveTitlesThatSayWhatTheyAsk)
{
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("2"));
    QString title;
    withDialog<QMessageBox>([&title](QMessageBox* box) {
        title = box->windowTitle();
        box->button(QMessageBox::Cancel)->click();
    });
    run("close");
    EXPECT_EQ(title, QStringLiteral("Save the Network?"));
    EXPECT_FALSE(m_window->openFile(file("missing.sskn")));
    auto* error = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->windowTitle(), QStringLiteral("Not Done"));
    error->accept();
    settle();
}

TEST_F(WindowTest, whatCannotBeOpenedIsNotTakenByADrop)
{
    QMimeData data;
    data.setUrls({ QUrl::fromLocalFile(file("wood.png")) });
    QDragEnterEvent image(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &image);
    EXPECT_FALSE(image.isAccepted());
    data.setUrls({ QUrl::fromLocalFile(file("asset.dsf")) });
    QDragEnterEvent scene(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &scene);
    EXPECT_TRUE(scene.isAccepted());
}

TEST_F(WindowTest, theDialogOffersAllThatCanBeOpened)
{
    QStringList filters;
    withDialog<QFileDialog>([&](QFileDialog* dialog) {
        filters = dialog->nameFilters();
        dialog->reject();
    });
    run("open");
    ASSERT_FALSE(filters.isEmpty());
    for (const char* pattern : { "*.sskn", "*.duf", "*.dsf", "*.obj" })
        EXPECT_TRUE(filters.first().contains(QLatin1String(pattern))) << pattern;
}

TEST_F(WindowTest, everyMenuNamesCommandsThatExist)
{
    // Names that no command has are left out of menus, with a warning.
    const CommandSet* commands = m_window->getCommands();
    EXPECT_EQ(commands->find(QStringLiteral("no such command")), nullptr);
    testing::internal::CaptureStderr();
    openWindow();
    EXPECT_EQ(
        testing::internal::GetCapturedStderr().find("There is no command"), std::string::npos);
}

TEST_F(WindowTest, theLookIsSwitchedAndRemembered)
{
    run("theme-dark");
    EXPECT_TRUE(Theme::isDark(QApplication::palette()));
    EXPECT_EQ(ProgramSettings().getTheme(), QStringLiteral("dark"));
    openWindow();
    EXPECT_TRUE(command("theme-dark")->isChecked());
    run("theme-light");
    EXPECT_FALSE(Theme::isDark(QApplication::palette()));
    // Every item stands out from its ground, in any look.
    ChoosyUser choosy;
    choosy.ref(); // it stands on the stack
    BrickyardPanel* palette = m_window->getBrickyard();
    palette->setUser(&choosy);
    for (const char* look : { "theme-dark", "theme-light", "theme-dark" }) {
        run(look);
        const QPalette colors = palette->getTree()->palette();
        const int ground = colors.color(QPalette::Base).lightness();
        const auto contrast = [&](const char* className) {
            const QVariant brush
                = palette->findItem(QString::fromLatin1(className))->data(0, Qt::ForegroundRole);
            const QColor color
                = brush.isNull() ? colors.color(QPalette::Text) : brush.value<QBrush>().color();
            return qAbs(color.lightness() - ground) * color.alpha() / 255;
        };
        EXPECT_GT(contrast("VireoMatMatteBrick"), 120) << look;
        EXPECT_GT(contrast("VireoMatGlassBrick"), 40) << look;
    }
    palette->setUser(nullptr);
    run("theme-system");
    EXPECT_TRUE(command("theme-system")->isChecked());
}

TEST_F(WindowTest, theLayoutIsRememberedAndReset)
{
    const auto dock = [this](const char* name) {
        return m_window->findChild<QDockWidget*>(QString::fromLatin1(name));
    };
    EXPECT_TRUE(dock("Properties")->isVisible());
    run("dockProperties");
    EXPECT_FALSE(dock("Properties")->isVisible());
    m_window->addDockWidget(Qt::RightDockWidgetArea, dock("Surfaces"));
    settle();
    EXPECT_TRUE(m_window->close());
    openWindow();
    EXPECT_FALSE(dock("Properties")->isVisible());
    EXPECT_EQ(m_window->dockWidgetArea(dock("Surfaces")), Qt::RightDockWidgetArea);
    run("resetLayout");
    EXPECT_TRUE(dock("Properties")->isVisible());
    EXPECT_EQ(m_window->dockWidgetArea(dock("Surfaces")), Qt::LeftDockWidgetArea);
}

TEST_F(WindowTest, everythingTheKeyboardReachesHasAName)
{
    select({
        brick("Matte"),
    });
    for (QWidget* widget : focusable(m_window.get())) {
        const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(accessible, nullptr) << widget->metaObject()->className();
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << ' ' << widget->objectName().toStdString()
            << " in " << widget->parentWidget()->metaObject()->className();
    }
}

TEST_F(WindowTest, editingValuesShowsTheirPanel)
{
    select({ brick("Matte") });
    run("dockProperties");
    ASSERT_FALSE(m_window->getProperties()->isVisible());
    m_window->activateWindow();
    m_window->getView()->setFocus();
    const auto hasKeyboard = [this] {
        QWidget* focus = QApplication::focusWidget();
        return focus && m_window->getProperties()->isAncestorOf(focus);
    };
    run("editValues");
    EXPECT_TRUE(m_window->getProperties()->isVisible());
    EXPECT_TRUE(hasKeyboard());
    run("dockProperties");
    m_window->getView()->setFocus();
    QTest::keyClick(m_window->getView(), Qt::Key_Return);
    EXPECT_TRUE(hasKeyboard());
}

TEST_F(WindowTest, aTabThatComesBackManyTimesIsListenedToOnce)
{
    select({ brick("Matte") });
    type("Sigma", QStringLiteral("3"));
    struct Peek : QObject {
        using QObject::receivers;
    };
    const QObject* selection = document()->getSelection();
    const auto listeners
        = [selection] { return (selection->*(&Peek::receivers))(SIGNAL(selectionChanged())); };
    const int before = listeners();
    m_window->getTabs()->close(document(), true);
    for (int i = 0; i < 4; ++i) {
        settle();
        run("undo");
        EXPECT_EQ(listeners(), before);
        run("redo");
    }
}

TEST_F(WindowTest, valuesAreReachedAndChangedByTheKeyboardAlone)
{
    select({ brick("Matte") });
    run("editValues");
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    for (int i = 0; i < 40; ++i) {
        QWidget* widget = QApplication::focusWidget();
        if (widget && widget->accessibleName() == QLatin1String("Sigma")) {
            QTest::keyClicks(widget, QStringLiteral("7"));
            QTest::keyClick(widget, Qt::Key_Return);
            break;
        }
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    EXPECT_EQ(property(brick("Matte"), "sigma")->getValueText(), QStringLiteral("7"));
}

TEST_F(WindowTest, nothingMovesWhileIdle)
{
    addFromPalette("glass");
    QTest::qWait(500);
    int events = 0;
    class Counter : public QObject
    {
    public:
        explicit Counter(int* total)
            : m_total(total)
        {
        }
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            // A cursor that blinks in a field is the platform's.
            if (event->type() == QEvent::Paint
                || (event->type() == QEvent::Timer && !watched->inherits("QWidgetLineControl")))
                ++*m_total;
            return false;
        }

    private:
        int* m_total;
    } counter(&events);
    if (QWidget* focus = QApplication::focusWidget())
        focus->clearFocus();
    settle();
    qApp->installEventFilter(&counter);
    QTest::qWait(600);
    qApp->removeEventFilter(&counter);
    EXPECT_EQ(events, 0);
}
