// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkEdit.h"
#include "BrickAlignment.h"
#include "BrickAppearance.h"
#include "BrickSelection.h"
#include "LinkColors.h"
#include "NetworkCopies.h"
#include "NetworkFrames.h"
#include "NetworkWalk.h"
#include "PropertyGroup.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzbrickuserfile.h"
#include "dzcolorproperty.h"
#include "dzintproperty.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"

#include <QRectF>
#include <limits>

namespace {

class Edit : public testing::Test
{
protected:
    DzShaderBrick* add(const char* className, qreal x = 0, qreal y = 0)
    {
        DzUndoStackLock lock;
        return edit.addBrick(QString::fromLatin1(className), QPointF(x, y));
    }
    static DzBrickParam* output(DzShaderBrick* brick) { return param(brick, "result"); }
    void linkQuietly(DzShaderBrick* from, DzShaderBrick* to, const char* input)
    {
        DzUndoStackLock lock;
        EXPECT_TRUE(linkPins(output(from), param(to, input), AddLink));
    }
    static bool isLinked(DzShaderBrick* from, DzShaderBrick* to, const char* input)
    {
        return param(to, input)->isConnectedTo(output(from));
    }
    QByteArray text() const { return DzBrickUserFile().saveText(&user); }
    static QPointF place(const DzShaderBrick* brick) { return BrickAppearance::position(brick); }

    VireoBrickUser user;
    NetworkEdit edit { &user };
};

QString refusal(DzBrickParam* a, DzBrickParam* b)
{
    return linkRefusal(a, b);
}

} // namespace

// Bricks.

TEST_F(Edit, addsABrickAtAPlaceAsOneStep)
{
    const QByteArray before = text();
    DzShaderBrick* brick = edit.addBrick(QStringLiteral("VireoMatMatteBrick"), QPointF(12, -7));
    ASSERT_NE(brick, nullptr);
    EXPECT_EQ(place(brick), QPointF(12, -7));
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Add Matte"));
    const QByteArray after = text();
    EXPECT_TRUE(after.contains("\"PosX\": 12"));
    dzUndoStack->undo();
    EXPECT_EQ(text(), before);
    dzUndoStack->redo();
    EXPECT_EQ(text(), after);
}

TEST_F(Edit, whatIsNoBrickIsRefusedWithAReason)
{
    QString error;
    EXPECT_EQ(edit.addBrick(QStringLiteral("NoSuchClass"), QPointF(), &error), nullptr);
    EXPECT_EQ(error, QStringLiteral("There is no brick of class \"NoSuchClass\"."));
    EXPECT_EQ(edit.addBrick(QStringLiteral("VireoBrickUser"), QPointF(), &error), nullptr);
    EXPECT_EQ(user.getNumBricks(), 0);
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Edit, addsABrickLinkedToAPin)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* mix = edit.addBrickLinked(
        QStringLiteral("VireoTexClrMixBrick"), QPointF(-50, 40), param(matte, "Kd"));
    ASSERT_NE(mix, nullptr);
    EXPECT_TRUE(isLinked(mix, matte, "Kd"));
    EXPECT_EQ(place(mix) + BrickAppearance::pinOffset(mix, output(mix)), QPointF(-50, 40));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    DzShaderBrick* root
        = edit.addBrickLinked(QStringLiteral("VireoRootBrick"), QPointF(300, 0), output(matte));
    EXPECT_TRUE(isLinked(matte, root, "material"));
}

TEST_F(Edit, aBrickThatComesWithoutAPlaceGetsOne)
{
    edit.setPlaceHint(QPointF(500, 600));
    DzShaderBrick* first = addBrick(user, "VireoMatMatteBrick");
    DzShaderBrick* second = addBrick(user, "VireoMatMatteBrick");
    EXPECT_EQ(place(first), QPointF(500, 600));
    EXPECT_FALSE(QRectF(place(first), BrickAppearance::size(first))
                     .intersects(QRectF(place(second), BrickAppearance::size(second))));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
}

TEST_F(Edit, deletesSeveralBricksAsOneStep)
{
    DzShaderBrick* root = add("VireoRootBrick");
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    linkQuietly(matte, root, "material");
    const QByteArray before = text();
    edit.deleteBricks({ root, matte });
    EXPECT_EQ(user.getNumBricks(), 0);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Delete 2 Bricks"));
    dzUndoStack->undo();
    EXPECT_EQ(text(), before);
}

TEST_F(Edit, reconnectsAroundAChainThatIsDeleted)
{
    DzShaderBrick* constant = add("VireoTexClrConstantBrick");
    DzShaderBrick* first = add("VireoTexClrMixBrick");
    DzShaderBrick* second = add("VireoTexClrMixBrick");
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* glossy = add("VireoMatGlossyBrick");
    linkQuietly(constant, first, "tex2");
    linkQuietly(first, second, "tex1");
    linkQuietly(second, matte, "Kd");
    linkQuietly(second, glossy, "Ks");
    const QByteArray before = text();
    edit.deleteBricks({ second, first }, true);
    EXPECT_TRUE(isLinked(constant, matte, "Kd"));
    EXPECT_TRUE(isLinked(constant, glossy, "Ks"));
    dzUndoStack->undo();
    EXPECT_EQ(text(), before);
}

TEST_F(Edit, whatDoesNotFitIsNotReconnected)
{
    DzShaderBrick* number = add("VireoTexFltConstantBrick");
    DzShaderBrick* mix = add("VireoTexClrMixBrick");
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    linkQuietly(number, mix, "amount");
    linkQuietly(mix, matte, "Kd");
    edit.deleteBricks({ mix }, true);
    EXPECT_EQ(param(matte, "Kd")->getNumConnections(), 0);
}

TEST_F(Edit, titlesArePartOfUndo)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    const QByteArray before = text();
    QStringList titles;
    QObject::connect(matte, &DzShaderBrick::brickTitleChanged, &edit,
        [&](const QString& title) { titles.append(title); });
    edit.setTitle(matte, QStringLiteral("  Wall\npaint "));
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Wall paint"));
    const QByteArray after = text();
    edit.setTitle(matte, QString());
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Matte"));
    dzUndoStack->undo();
    EXPECT_EQ(text(), after);
    dzUndoStack->undo();
    EXPECT_EQ(text(), before);
    EXPECT_EQ(titles,
        QStringList({ QStringLiteral("Wall paint"), QStringLiteral("Matte"),
            QStringLiteral("Wall paint"), QStringLiteral("Matte") }));
    edit.setTitle(matte, QStringLiteral("Matte"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 0) << "the same title is no step";
}

// Links.

TEST_F(Edit, refusalsNameTheReason)
{
    DzShaderBrick* root = add("VireoRootBrick");
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* mix = add("VireoTexClrMixBrick");
    DzShaderBrick* other = add("VireoTexClrMixBrick");
    linkQuietly(mix, other, "tex1");
    EXPECT_EQ(refusal(output(mix), param(matte, "Kd")), QString());
    EXPECT_EQ(refusal(param(matte, "Kd"), output(mix)), QString());
    EXPECT_EQ(refusal(output(mix), output(matte)),
        QStringLiteral("Both are outputs: a wire leads from an output to an input."));
    EXPECT_EQ(refusal(param(mix, "tex1"), param(matte, "Kd")),
        QStringLiteral("Both are inputs: a wire leads from an output to an input."));
    EXPECT_EQ(
        refusal(output(mix), param(mix, "tex1")), QStringLiteral("A brick cannot feed itself."));
    EXPECT_EQ(refusal(output(other), param(mix, "tex1")),
        QStringLiteral("This would close a loop: Mix (3) feeds Mix (4) already.")
            .replace("Mix", mix->getPreferredName()));
    EXPECT_EQ(refusal(output(mix), param(root, "material")),
        QStringLiteral("Material takes LuxMaterial, and this is LColor."));
    EXPECT_EQ(refusal(output(mix), param(other, "tex1")),
        QStringLiteral("These two are linked already."));
    EXPECT_EQ(refusal(output(matte), param(root, "dmscale")),
        QStringLiteral("dmscale is a setting: it takes no wire."));
    EXPECT_EQ(refusal(nullptr, output(mix)), QStringLiteral("There is nothing to link."));
    VireoBrickUser otherUser;
    DzShaderBrick* far = addBrick(otherUser, "VireoTexClrMixBrick");
    EXPECT_EQ(refusal(output(far), param(matte, "Kd")),
        QStringLiteral("The bricks are in different networks."));
}

TEST_F(Edit, connectReplacesOrAdds)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* first = add("VireoTexClrConstantBrick");
    DzShaderBrick* second = add("VireoTexClrConstantBrick");
    EXPECT_TRUE(linkPins(param(matte, "Kd"), output(first)));
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Link Diffuse"));
    EXPECT_TRUE(linkPins(output(second), param(matte, "Kd"), AddLink));
    EXPECT_EQ(param(matte, "Kd")->getNumConnections(), 2);
    DzShaderBrick* third = add("VireoTexClrConstantBrick");
    EXPECT_TRUE(linkPins(output(third), param(matte, "Kd")));
    EXPECT_EQ(param(matte, "Kd")->getNumConnections(), 1);
    EXPECT_FALSE(linkPins(output(third), param(matte, "Kd")));
    EXPECT_FALSE(linkPins(output(matte), param(matte, "Kd")));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 3);
    dzUndoStack->undo();
    EXPECT_EQ(param(matte, "Kd")->getConnection(0), output(first));
    EXPECT_EQ(param(matte, "Kd")->getConnection(1), output(second));
}

TEST_F(Edit, aRefusedMoveOfALinkLeavesItWhereItIs)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* constant = add("VireoTexClrConstantBrick");
    linkQuietly(constant, matte, "Kd");
    const BrickLink link { output(constant), param(matte, "Kd") };
    EXPECT_FALSE(moveLink(link, param(matte, "sigma")));
    EXPECT_TRUE(isLinked(constant, matte, "Kd"));
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Edit, insertionKeepsOtherLinksOfTheInput)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* first = add("VireoTexClrConstantBrick");
    DzShaderBrick* second = add("VireoTexClrConstantBrick");
    DzShaderBrick* mix = add("VireoTexClrMixBrick");
    linkQuietly(first, matte, "Kd");
    linkQuietly(second, matte, "Kd");
    EXPECT_TRUE(edit.insertOnLink(mix, BrickLink { output(first), param(matte, "Kd") }));
    EXPECT_TRUE(isLinked(second, matte, "Kd"));
    EXPECT_TRUE(isLinked(mix, matte, "Kd"));
    EXPECT_TRUE(isLinked(first, mix, "tex1"));
    EXPECT_FALSE(canInsertOnLink(
        add("VireoMatGlossyBrick"), BrickLink { output(first), param(mix, "tex1") }));
}

// Copies.

TEST_F(Edit, whatIsCopiedCanBeMailedAndPastedElsewhere)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick", 100, 200);
    DzShaderBrick* mix = add("VireoTexClrMixBrick", -200, 200);
    linkQuietly(mix, matte, "Kd");
    propertyAs<DzColorProperty>(mix, "tex1")->setColorValue(QColor(10, 20, 30));
    dzUndoStack->clearAll();
    // Mail programs add lines around a text.
    const QString mailed
        = QStringLiteral("\n\n") + copyBricks(edit, { matte, mix }) + QStringLiteral("\n");
    VireoBrickUser otherUser;
    NetworkEdit other(&otherUser);
    QString error;
    const QVector<DzShaderBrick*> pasted = pasteBricks(&other, mailed, QPointF(1000, 1000), &error);
    EXPECT_EQ(error, QString());
    ASSERT_EQ(pasted.size(), 2);
    EXPECT_TRUE(isLinked(pasted.at(1), pasted.at(0), "Kd"));
    EXPECT_EQ(
        propertyAs<DzColorProperty>(pasted.at(1), "tex1")->getColorValue(), QColor(10, 20, 30));
    EXPECT_EQ(place(pasted.at(0)) - place(pasted.at(1)), QPointF(300, 0));
    const QRectF box
        = QRectF(place(pasted.at(0)), BrickAppearance::size(pasted.at(0)))
              .united(QRectF(place(pasted.at(1)), BrickAppearance::size(pasted.at(1))));
    EXPECT_EQ(box.center(), QPointF(1000, 1000));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_EQ(otherUser.getNumBricks(), 0);
}

TEST_F(Edit, whatIsPastedWithoutPlacesIsArranged)
{
    DzShaderBrick* root = add("VireoRootBrick", 5, 5);
    DzShaderBrick* matte = add("VireoMatMatteBrick", 5, 5);
    DzShaderBrick* mix = add("VireoTexClrMixBrick", 5, 5);
    linkQuietly(matte, root, "material");
    linkQuietly(mix, matte, "Kd");
    const auto areArranged = [](const QVector<DzShaderBrick*>& bricks) {
        const auto right = [](const DzShaderBrick* brick) {
            return place(brick).x() + BrickAppearance::width(brick);
        };
        return bricks.size() == 3 && right(bricks.at(2)) < place(bricks.at(1)).x()
            && right(bricks.at(1)) < place(bricks.at(0)).x();
    };
    QString error;
    for (DzShaderBrick* brick : edit.getBricks())
        brick->getBrickSettings()->setBoolValue(BrickAppearance::autoArrangeKey(), true);
    const QString asking = copyBricks(edit, edit.getBricks());
    const QVector<DzShaderBrick*> asked = pasteBricks(&edit, asking, QPointF(1000, 2000), &error);
    EXPECT_TRUE(areArranged(asked));
    EXPECT_FALSE(asked.first()->getBrickSettings()->hasKey(BrickAppearance::autoArrangeKey()));
    QRectF box;
    for (const DzShaderBrick* brick : asked)
        box |= QRectF(place(brick), BrickAppearance::size(brick));
    EXPECT_LE((box.center() - QPointF(1000, 2000)).manhattanLength(), 2);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    for (DzShaderBrick* brick : edit.getBricks()) {
        DzSettings* settings = brick->getBrickSettings();
        settings->removeValue(BrickAppearance::autoArrangeKey());
        settings->removeValue(BrickAppearance::xKey());
        settings->removeValue(BrickAppearance::yKey());
    }
    const QString unplaced = copyBricks(edit, edit.getBricks());
    EXPECT_TRUE(areArranged(pasteBricks(&edit, unplaced, QPointF(), &error)));
}

TEST_F(Edit, linksToBricksThatAreNotCopiedAreLeftOut)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* mix = add("VireoTexClrMixBrick");
    linkQuietly(mix, matte, "Kd");
    const QVector<DzShaderBrick*> copies = duplicateBricks(&edit, { matte }, QPointF(10, 10));
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(param(copies.first(), "Kd")->getNumConnections(), 0);
    EXPECT_EQ(output(mix)->getNumConnections(), 1);
}

TEST_F(Edit, pastingAnythingElseSaysSoAndChangesNothing)
{
    add("VireoMatMatteBrick");
    const QByteArray before = text();
    for (const char* clip : { "", "   ", "hello", "{", "{}", "[]", "null", "{\"format\": 3}",
             "{\"format\": \"other\", \"version\": 1, \"BrickSetup\": {}}" }) {
        QString error;
        EXPECT_TRUE(pasteBricks(&edit, QString::fromLatin1(clip), QPointF(), &error).isEmpty())
            << clip;
        EXPECT_FALSE(error.isEmpty()) << clip;
    }
    EXPECT_EQ(text(), before);
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Edit, bricksOfUnknownClassAreLeftOutOfCopiesAndSaidSo)
{
    const Warnings warnings;
    QByteArray file = projectFile(QStringLiteral("examples/plain-matte.sskn"));
    file.replace("VireoMatMatteBrick", "SomebodysMatteBrick");
    QString error;
    const QVector<DzShaderBrick*> pasted
        = pasteBricks(&edit, QString::fromUtf8(file), QPointF(), &error);
    EXPECT_EQ(error, QStringLiteral("A brick of unknown class cannot be copied and was left out."));
    ASSERT_EQ(pasted.size(), 1);
    EXPECT_EQ(pasted.first()->className(), QStringLiteral("VireoRootBrick"));
}

// Places.

TEST_F(Edit, alignsAndDistributes)
{
    DzShaderBrick* a = add("VireoMatMatteBrick", 0, 0);
    DzShaderBrick* b = add("VireoMatMatteBrick", 50, 400);
    DzShaderBrick* c = add("VireoMatMatteBrick", 300, 100);
    alignBricks(&edit, { a, b, c }, AlignLeft);
    EXPECT_EQ(place(a), QPointF(0, 0));
    EXPECT_EQ(place(b), QPointF(0, 400));
    EXPECT_EQ(place(c), QPointF(0, 100));
    alignBricks(&edit, { a, b, c }, DistributeVertically);
    EXPECT_EQ(place(c), QPointF(0, 200));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
    dzUndoStack->undo();
    dzUndoStack->undo();
    EXPECT_EQ(place(b), QPointF(50, 400));
    alignBricks(&edit, { a, b, c }, AlignRight);
    EXPECT_EQ(place(a), QPointF(300, 0));
    alignBricks(&edit, { a, b, c }, AlignBottom);
    EXPECT_EQ(place(c), QPointF(300, 400));
    alignBricks(&edit, { a, b, c }, AlignTop);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2) << "aligning what is in line is no step";
}

TEST_F(Edit, aMoveIsNamedAfterTheBrickThatMoved)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick", 10, 10);
    DzShaderBrick* glass = add("VireoMatGlassBrick", 20, 20);
    edit.moveBricks({ { matte, QPointF(10, 10) }, { glass, QPointF(30, 30) } });
    EXPECT_EQ(
        dzUndoStack->getUndoCaption(), QStringLiteral("Move %1").arg(glass->getPreferredName()));
}

TEST_F(Edit, bricksThatAskForItAreArrangedOnceWithoutUndo)
{
    DzShaderBrick* root = add("VireoRootBrick", 5, 5);
    DzShaderBrick* matte = add("VireoMatMatteBrick", 5, 5);
    DzShaderBrick* placed = add("VireoTexClrMixBrick", -700, -40);
    linkQuietly(matte, root, "material");
    root->getBrickSettings()->setBoolValue(QStringLiteral("AutoArrange"), true);
    matte->getBrickSettings()->setBoolValue(QStringLiteral("AutoArrange"), true);
    EXPECT_TRUE(edit.arrangeUnplaced());
    EXPECT_LT(place(matte).x() + BrickAppearance::width(matte), place(root).x());
    EXPECT_EQ(place(placed), QPointF(-700, -40));
    EXPECT_FALSE(root->getBrickSettings()->hasKey(QStringLiteral("AutoArrange")));
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
    EXPECT_FALSE(edit.arrangeUnplaced());
}

TEST_F(Edit, damagedPlacesAndWidthsAreBroughtIntoReach)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzSettings* settings = matte->getBrickSettings();
    settings->setFloatValue(QStringLiteral("PosX"), std::numeric_limits<double>::infinity());
    settings->setFloatValue(QStringLiteral("PosY"), -1e300);
    settings->setFloatValue(QStringLiteral("Width"), std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(place(matte), QPointF(0, -BrickAppearance::farthestPlace));
    EXPECT_EQ(BrickAppearance::width(matte), BrickAppearance::defaultWidth);
    settings->setIntValue(QStringLiteral("Width"), 2000000000);
    EXPECT_EQ(BrickAppearance::width(matte), BrickAppearance::maximumWidth);
}

// Frames.

TEST_F(Edit, framesAreSavedAndLoadedWithTheNetwork)
{
    DzShaderBrick* root = add("VireoRootBrick");
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    const int frame = frameBricks(&edit, { root, matte }, QStringLiteral("Paint \"A\""));
    const QByteArray saved = text();
    VireoBrickUser loaded;
    ASSERT_TRUE(DzBrickUserFile().loadText(saved, QStringLiteral("test"), &loaded));
    EXPECT_EQ(DzBrickUserFile().saveText(&loaded), saved);
    const NetworkEdit other(&loaded);
    ASSERT_EQ(framesOf(other).size(), 1);
    EXPECT_EQ(framesOf(other).first().number, frame);
    EXPECT_EQ(framesOf(other).first().title, QStringLiteral("Paint \"A\""));
    EXPECT_EQ(framesOf(other).first().bricks.size(), 2);
}

TEST_F(Edit, copiesOfFramedBricksGetAFrameOfTheirOwn)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    frameBricks(&edit, { matte }, QStringLiteral("Paint"));
    const QVector<DzShaderBrick*> copies = duplicateBricks(&edit, { matte }, QPointF(5, 5));
    ASSERT_EQ(copies.size(), 1);
    ASSERT_EQ(framesOf(edit).size(), 2);
    EXPECT_EQ(framesOf(edit).at(1).title, QStringLiteral("Paint"));
    setFrameTitle(&edit, framesOf(edit).at(1).number, QStringLiteral("Other"));
    EXPECT_EQ(framesOf(edit).at(0).title, QStringLiteral("Paint"));
    removeFromFrames(&edit, { matte });
    EXPECT_EQ(framesOf(edit).size(), 1);
    dzUndoStack->undo();
    EXPECT_EQ(framesOf(edit).size(), 2);
}

TEST_F(Edit, frameNumbersOfAFileLeaveRoomForOthers)
{
    DzShaderBrick* matte = add("VireoMatMatteBrick");
    DzShaderBrick* glass = add("VireoMatGlassBrick");
    const int largest = std::numeric_limits<int>::max();
    matte->getBrickSettings()
        ->setSettingsValue(BrickAppearance::frameKey())
        ->setIntValue(BrickAppearance::frameNumberKey(), largest);
    ASSERT_EQ(framesOf(edit).size(), 1);
    const int frame = frameBricks(&edit, { glass }, QStringLiteral("Window"));
    EXPECT_GT(frame, 0);
    EXPECT_NE(frame, largest);
    ASSERT_EQ(framesOf(edit).size(), 2);
    const QVector<DzShaderBrick*> copies = duplicateBricks(&edit, { matte, glass }, QPointF(5, 5));
    ASSERT_EQ(copies.size(), 2);
    const QVector<BrickFrame> frames = framesOf(edit);
    ASSERT_EQ(frames.size(), 4);
    for (const BrickFrame& known : frames)
        EXPECT_EQ(known.bricks.size(), 1) << known.number;
}

// Values.

TEST_F(Edit, aValueThatMakesInputsIsOneStep)
{
    DzShaderBrick* band = add("VireoTexClrBAndBrick");
    DzShaderBrick* constant = add("VireoTexClrConstantBrick");
    const int before = band->getNumParameters();
    const QByteArray start = text();
    QString error;
    EXPECT_TRUE(PropertyGroup({ property(band, "count") }).setText(QStringLiteral("3"), &error));
    EXPECT_EQ(band->getNumParameters(), before + 6);
    EXPECT_TRUE(linkPins(output(constant), param(band, "tex3")));
    EXPECT_TRUE(PropertyGroup({ property(band, "count") }).setText(QStringLiteral("1"), &error));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 3);
    dzUndoStack->undo();
    EXPECT_TRUE(isLinked(constant, band, "tex3"));
    dzUndoStack->undo();
    dzUndoStack->undo();
    EXPECT_EQ(text(), start);
}

// Selection and colours.

TEST_F(Edit, theSelectionForgetsDeletedBricks)
{
    BrickSelection selection;
    int changes = 0;
    QObject::connect(&selection, &BrickSelection::selectionChanged, &selection, [&] { ++changes; });
    DzShaderBrick* kept = add("VireoMatMatteBrick");
    DzShaderBrick* gone = add("VireoMatMatteBrick");
    selection.set({ kept, gone });
    EXPECT_EQ(selection.getCurrent(), gone);
    selection.add({ kept, nullptr });
    EXPECT_EQ(changes, 1);
    {
        DzUndoStackLock lock;
        user.deleteBrick(gone);
    }
    EXPECT_EQ(selection.getBricks(), QVector<DzShaderBrick*> { kept });
    EXPECT_EQ(changes, 2);
    selection.toggle(kept);
    EXPECT_TRUE(selection.isEmpty());
    EXPECT_EQ(selection.getCurrent(), nullptr);
}

TEST_F(Edit, theSelectionTellsOnlyWhatChanges)
{
    BrickSelection selection;
    int changes = 0;
    QObject::connect(&selection, &BrickSelection::selectionChanged, &selection, [&] { ++changes; });
    DzShaderBrick* a = add("VireoMatMatteBrick");
    DzShaderBrick* b = add("VireoMatMatteBrick");
    DzShaderBrick* c = add("VireoMatMatteBrick");
    selection.set({ a, b });
    selection.set({ a, nullptr, b, a });
    EXPECT_EQ(changes, 1);
    selection.set({ b, c });
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(selection.getBricks(), (QVector<DzShaderBrick*> { b, c }));
    EXPECT_FALSE(selection.contains(a));
    selection.set({ c, b });
    EXPECT_EQ(selection.getCurrent(), b) << "the order is part of it";
    EXPECT_EQ(changes, 3);
    {
        DzUndoStackLock lock;
        user.deleteBrick(a);
        EXPECT_EQ(changes, 3) << "what left it is not followed";
        user.deleteBrick(c);
    }
    EXPECT_EQ(selection.getBricks(), QVector<DzShaderBrick*> { b });
    EXPECT_EQ(changes, 4);
}

TEST_F(Edit, upstreamAndDownstreamAreFollowedThroughSharedBricks)
{
    DzShaderBrick* a = add("VireoTexClrConstantBrick");
    DzShaderBrick* b = add("VireoTexClrMixBrick");
    DzShaderBrick* c = add("VireoTexClrMixBrick");
    DzShaderBrick* d = add("VireoTexClrMixBrick");
    linkQuietly(a, b, "tex1");
    linkQuietly(a, c, "tex1");
    linkQuietly(b, d, "tex1");
    linkQuietly(c, d, "tex2");
    EXPECT_EQ(withUpstream({ d }), (QVector<DzShaderBrick*> { d, b, c, a }));
    EXPECT_EQ(withDownstream({ a }), (QVector<DzShaderBrick*> { a, b, c, d }));
    EXPECT_EQ(withUpstream({ b }), (QVector<DzShaderBrick*> { b, a }));
}

TEST(LinkColors, areStableAndTellTypesApart)
{
    EXPECT_EQ(linkColor(QStringLiteral("float")), linkColor(QStringLiteral("LFloat")));
    EXPECT_EQ(linkColor(QStringLiteral("color[]")), linkColor(QStringLiteral("color")));
    EXPECT_NE(linkColor(QStringLiteral("float")), linkColor(QStringLiteral("color")));
    // Written down once: the same in every run and on every machine.
    EXPECT_EQ(linkColor(QStringLiteral("Alpha")), linkColor(QStringLiteral("Alpha")));
    QSet<QRgb> colors;
    for (const char* type : { "LFloat", "LColor", "LPoint", "LVector", "LNormal", "LMatrix",
             "LString", "LuxMaterial", "LuxVolume", "LuxFresnel" })
        colors.insert(linkColor(QString::fromLatin1(type)).rgb());
    EXPECT_EQ(colors.size(), 10);
}
