// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ProblemFinder.h"
#include "BrickAppearance.h"
#include "BrickCatalogue.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzbrickuserfile.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dznumericproperty.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

struct MatteNetwork {
    VireoBrickUser user;
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");

    MatteNetwork() { link(matte, root, "material"); }
};

/// Kinds and bricks, in order.
QVector<QPair<Problem::Kind, DzShaderBrick*>> kindsOf(const QVector<Problem>& problems)
{
    QVector<QPair<Problem::Kind, DzShaderBrick*>> kinds;
    for (const Problem& problem : problems) {
        EXPECT_FALSE(problem.text.isEmpty());
        EXPECT_FALSE(problem.text.contains(QLatin1Char('\n')));
        kinds.append({ problem.kind, problem.brick });
    }
    return kinds;
}

typedef QVector<QPair<Problem::Kind, DzShaderBrick*>> Kinds;

} // namespace

TEST(ProblemFinder, aSoundNetworkHasNone)
{
    MatteNetwork network;
    EXPECT_TRUE(findProblems(&network.user, QString()).isEmpty());
}

TEST(ProblemFinder, anEmptyNetworkHasNone)
{
    VireoBrickUser user;
    EXPECT_TRUE(findProblems(&user, QString()).isEmpty());
}

TEST(ProblemFinder, aNetworkWithoutRootIsSaidOnce)
{
    VireoBrickUser user;
    addBrick(user, "VireoMatMatteBrick");
    addBrick(user, "VireoMatGlassBrick");
    EXPECT_EQ(kindsOf(findProblems(&user, QString())), (Kinds { { Problem::NoRoot, nullptr } }));
}

TEST(ProblemFinder, ofSeveralRootsOnlyTheLastCounts)
{
    MatteNetwork network;
    VireoBrickBase* last = addBrick(network.user, "VireoRootBrick");
    ASSERT_TRUE(link(network.matte, last, "material"));
    EXPECT_EQ(kindsOf(findProblems(&network.user, QString())),
        (Kinds { { Problem::SeveralRoots, network.root } }));
}

TEST(ProblemFinder, whoFollowsItsAdviceOnSeveralRootsLosesNothing)
{
    MatteNetwork network;
    VireoBrickBase* spare = addBrick(network.user, "VireoRootBrick");
    const QString written = BrickAppearance::titleText(spare);
    const QVector<Problem> problems = findProblems(&network.user, QString());
    ASSERT_EQ(problems.size(), 2);
    EXPECT_EQ(problems.at(0).brick, network.root);
    EXPECT_TEXT(problems.at(0).text,
        QStringLiteral("This root is not written: \"%1\", the last root, is. Delete the one that "
                       "you do not want.")
            .arg(written));
    EXPECT_EQ(problems.at(1).brick, network.matte);
    EXPECT_TEXT(problems.at(1).text,
        QStringLiteral("It leads only to a root that is not written; link it to \"%1\" or delete "
                       "that root.")
            .arg(written));
    network.user.deleteBrick(spare);
    EXPECT_TRUE(findProblems(&network.user, QString()).isEmpty());
}

TEST(ProblemFinder, whatLeadsOnlyToARootThatIsNotWrittenIsNamed)
{
    MatteNetwork network;
    VireoBrickBase* written = addBrick(network.user, "VireoRootBrick");
    VireoBrickBase* glass = addBrick(network.user, "VireoMatGlassBrick");
    ASSERT_TRUE(link(glass, written, "material"));
    EXPECT_EQ(kindsOf(findProblems(&network.user, QString())),
        (Kinds { { Problem::SeveralRoots, network.root },
            { Problem::UnreachableBrick, network.matte } }));
}

TEST(ProblemFinder, bricksThatLeadNowhereAreNamed)
{
    MatteNetwork network;
    VireoBrickBase* idle = addBrick(network.user, "VireoTexFltCheckerboardBrick");
    VireoBrickBase* behind = addBrick(network.user, "VireoTexFltScaleBrick");
    ASSERT_TRUE(link(behind, idle, "tex1"));
    EXPECT_EQ(kindsOf(findProblems(&network.user, QString())),
        (Kinds { { Problem::UnreachableBrick, idle }, { Problem::UnreachableBrick, behind } }));
}

namespace {

/// Links the brick to the matte's colour.
void feedColor(MatteNetwork& network, VireoBrickBase* brick)
{
    ASSERT_TRUE(link(brick, network.matte, "Kd"));
}

} // namespace

TEST(ProblemFinder, bricksThatFeedOnlyWhatIsNeverWrittenAreNamed)
{
    MatteNetwork network;
    VireoBrickBase* band = addBrick(network.user, "VireoTexClrBAndBrick");
    propertyAs<DzIntProperty>(band, "count")->setValue(1);
    feedColor(network, band);
    VireoBrickBase* idle = addBrick(network.user, "VireoTexFltScaleBrick");
    ASSERT_TRUE(link(idle, band, "offset1"));
    VireoBrickBase* behind = addBrick(network.user, "VireoTexFltConstantBrick");
    ASSERT_TRUE(link(behind, idle, "tex1"));
    const QVector<Problem> problems = findProblems(&network.user, QString());
    EXPECT_EQ(kindsOf(problems),
        (Kinds { { Problem::WithoutEffect, idle }, { Problem::WithoutEffect, behind } }));
    EXPECT_TRUE(problems.at(0).text.contains(BrickAppearance::titleText(band)))
        << problems.at(0).text.toStdString();
    // The same brick linked to what is written as well has an effect, and what feeds it too.
    ASSERT_TRUE(link(idle, network.matte, "sigma"));
    EXPECT_TRUE(findProblems(&network.user, QString()).isEmpty());
}

TEST(ProblemFinder, aConstantsScaleIsNeverWrittenFromALink)
{
    MatteNetwork network;
    VireoBrickBase* constant = addBrick(network.user, "VireoTexClrConstantBrick");
    feedColor(network, constant);
    VireoBrickBase* scale = addBrick(network.user, "VireoTexFltScaleBrick");
    ASSERT_TRUE(link(scale, constant, "scale"));
    VireoBrickBase* value = addBrick(network.user, "VireoTexClrScaleBrick");
    ASSERT_TRUE(link(value, constant, "value"));
    // A linked colour is written with placeholders, and so has an effect.
    EXPECT_EQ(kindsOf(findProblems(&network.user, QString())),
        (Kinds { { Problem::WithoutEffect, scale } }));
}

TEST(ProblemFinder, customInputsOfBandsWriteNothing)
{
    MatteNetwork network;
    VireoBrickBase* band = addBrick(network.user, "VireoTexClrBAndBrick");
    feedColor(network, band);
    const QString name = QStringLiteral("extra");
    band->addCustomInput(1009, name, name, DzBrickParam::InputDirection);
    VireoBrickBase* idle = addBrick(network.user, "VireoTexFltScaleBrick");
    ASSERT_TRUE(link(idle, band, "extra"));
    EXPECT_EQ(kindsOf(findProblems(&network.user, QString())),
        (Kinds { { Problem::WithoutEffect, idle } }));
}

TEST(ProblemFinder, everyBrickThatIsWrittenHasAnEffect)
{
    // Inputs of every kind that bricks can be linked to.
    const QVector<QPair<const char*, const char*>> ends { { "VireoRootBrick", "material" },
        { "VireoRootBrick", "Interior" }, { "VireoMatMatteBrick", "Kd" },
        { "VireoMatMatteBrick", "sigma" }, { "VireoMatMetal2Brick", "fresnel" } };
    for (const BrickKind& kind : BrickCatalogue::instance()->getKinds()) {
        if (kind.isRoot())
            continue;
        const QByteArray className = kind.className.toLatin1();
        bool isLinked = false;
        for (const auto& end : ends) {
            VireoBrickUser user;
            VireoBrickBase* root = addBrick(user, "VireoRootBrick");
            VireoBrickBase* target = root;
            if (end.first != QByteArray("VireoRootBrick")) {
                target = addBrick(user, end.first);
                ASSERT_TRUE(link(target, root, "material"));
            }
            VireoBrickBase* brick = addBrick(user, className.constData());
            if (!link(brick, target, end.second))
                continue;
            isLinked = true;
            EXPECT_TRUE(findProblems(&user, QString()).isEmpty()) << className.constData();
        }
        EXPECT_TRUE(isLinked) << className.constData();
    }
}

TEST(ProblemFinder, anInputWithSeveralLinksIsNamed)
{
    MatteNetwork network;
    VireoBrickBase* other = addBrick(network.user, "VireoMatGlassBrick");
    ASSERT_TRUE(link(other, network.root, "material"));
    const QVector<Problem> problems = findProblems(&network.user, QString());
    EXPECT_EQ(kindsOf(problems), (Kinds { { Problem::SeveralLinks, network.root } }));
    EXPECT_TRUE(problems.first().text.contains(QLatin1String("2 links")));
}

TEST(ProblemFinder, aBrickOfUnknownClassIsNamed)
{
    QByteArray text = projectFile(QStringLiteral("examples/plain-matte.sskn"));
    text.replace("VireoMatMatteBrick", "StrangeBrick");
    VireoBrickUser user;
    DzBrickUserFile file;
    ASSERT_TRUE(file.loadText(text, QStringLiteral("test"), &user));
    const QVector<Problem> problems = findProblems(&user, QString());
    EXPECT_EQ(kindsOf(problems), (Kinds { { Problem::UnknownBrick, user.getBrick(2) } }));
    EXPECT_TRUE(problems.first().text.contains(QLatin1String("StrangeBrick")));
}

TEST(ProblemFinder, filesAreLookedForInTheDocumentsFolder)
{
    MatteNetwork network;
    QTemporaryDir dir;
    QFile present(dir.filePath(QStringLiteral("there.png")));
    ASSERT_TRUE(present.open(QIODevice::WriteOnly));
    auto* color = static_cast<DzNumericProperty*>(property(network.matte, "Kd"));
    color->setMap(QStringLiteral("there.png"));
    EXPECT_EQ(kindsOf(findProblems(&network.user, QString())),
        (Kinds { { Problem::MissingFile, network.matte } }));
    EXPECT_TRUE(findProblems(&network.user, dir.path()).isEmpty());
    color->setMap(present.fileName());
    EXPECT_TRUE(findProblems(&network.user, QString()).isEmpty());
    color->setMap(dir.filePath(QStringLiteral("gone.png")));
    const QVector<Problem> problems = findProblems(&network.user, dir.path());
    EXPECT_EQ(kindsOf(problems), (Kinds { { Problem::MissingFile, network.matte } }));
    EXPECT_TRUE(problems.first().text.contains(QLatin1String("gone.png")));
}

TEST(ProblemFinder, namesThatTheFormatCannotCarryAreNamed)
{
    const auto problemsWithInput = [](const QString& name) {
        MatteNetwork network;
        network.matte->addCustomInput(1009, name, name, DzBrickParam::InputDirection);
        return findProblems(&network.user, QString());
    };
    for (const QString& name : { QStringLiteral("a \"quoted\" name"), QStringLiteral("back\\slash"),
             QString(1024, QLatin1Char('x')), QString(342, QChar(0x65e5)) }) {
        const QVector<Problem> problems = problemsWithInput(name);
        ASSERT_EQ(problems.size(), 1) << name.left(20).toStdString();
        EXPECT_EQ(problems.first().kind, Problem::UnwritableText);
    }
    for (const QString& name :
        { QString(1023, QLatin1Char('x')), QString(341, QChar(0x65e5)), QStringLiteral("it's") })
        EXPECT_TRUE(problemsWithInput(name).isEmpty()) << name.left(20).toStdString();
}

TEST(ProblemFinder, titlesAreNotWrittenAndMayBeAnything)
{
    MatteNetwork network;
    network.matte->setBrickTitle(QStringLiteral("5\" tile"));
    EXPECT_TRUE(findProblems(&network.user, QString()).isEmpty());
}

TEST(ProblemFinder, valuesThatAreNotFiniteAreNamed)
{
    MatteNetwork network;
    propertyAs<DzFloatProperty>(network.matte, "sigma")
        ->setValue(std::numeric_limits<float>::infinity());
    EXPECT_EQ(kindsOf(findProblems(&network.user, QString())),
        (Kinds { { Problem::NotFinite, network.matte } }));
}

TEST(ProblemFinder, theTextIsNotTouchedByLooking)
{
    MatteNetwork network;
    const QString before = literalText(network.root);
    const QByteArray saved = DzBrickUserFile().saveText(&network.user);
    findProblems(&network.user, QString());
    EXPECT_EQ(literalText(network.root), before);
    EXPECT_EQ(DzBrickUserFile().saveText(&network.user), saved);
}
