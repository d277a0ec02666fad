// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickCatalogue.h"
#include "BrickTable.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzclassfactory.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

namespace {

QStringList namesOf(const QVector<const BrickKind*>& kinds)
{
    QStringList names;
    for (const BrickKind* kind : kinds)
        names.append(kind->name);
    return names;
}

const BrickCatalogue& catalogue()
{
    return *BrickCatalogue::instance();
}

} // namespace

TEST(BrickCatalogueTest, holdsEveryBrickThatModulesOffer)
{
    QStringList expected;
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories())
        if (factory->getMetaObject().inherits(&DzShaderBrick::staticMetaObject))
            expected.append(factory->className());
    QStringList found;
    for (const BrickKind& kind : catalogue().getKinds())
        found.append(kind.className);
    EXPECT_EQ(found, expected);
    EXPECT_EQ(found.size(), brickTable().size());
    EXPECT_EQ(BrickCatalogue::instance(), BrickCatalogue::instance());
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST(BrickCatalogueTest, knowsInputsAndOutputs)
{
    const BrickKind* matte = catalogue().find(QStringLiteral("VireoMatMatteBrick"));
    ASSERT_NE(matte, nullptr);
    EXPECT_EQ(matte->name, QStringLiteral("Matte"));
    ASSERT_EQ(matte->inputs.size(), 3);
    EXPECT_EQ(matte->inputs.at(1).name, QStringLiteral("Kd"));
    EXPECT_EQ(matte->inputs.at(1).label, QStringLiteral("Diffuse"));
    EXPECT_EQ(matte->inputs.at(1).typeText, QStringLiteral("LColor"));
    ASSERT_EQ(matte->outputs.size(), 1);
    EXPECT_EQ(matte->outputs.first().typeText, QStringLiteral("LuxMaterial"));
    EXPECT_FALSE(matte->isRoot());
    EXPECT_TRUE(catalogue().find(QStringLiteral("VireoRootBrick"))->isRoot());
    EXPECT_EQ(catalogue().find(QStringLiteral("VireoBrickUser")), nullptr);
}

TEST(BrickCatalogueTest, findsNamesThatBeginSoFirst)
{
    const QStringList all = namesOf(catalogue().search(QString(), {}));
    EXPECT_EQ(all.size(), brickTable().size());
    const QStringList found = namesOf(catalogue().search(QStringLiteral("GLASS"), {}));
    ASSERT_GE(found.size(), 2);
    EXPECT_TRUE(found.first().startsWith(QLatin1String("Glass")));
    EXPECT_TRUE(catalogue().search(QStringLiteral("no such brick"), {}).isEmpty());
    // Every word has to be found, in whatever order and in the category too.
    const QVector<const BrickKind*> two = catalogue().search(QStringLiteral(" mix  color "), {});
    ASSERT_FALSE(two.isEmpty());
    for (const BrickKind* kind : two)
        EXPECT_TRUE(
            (kind->name + kind->category).contains(QLatin1String("mix"), Qt::CaseInsensitive));
}

TEST(BrickCatalogueTest, findsOnlyWhatFitsAPin)
{
    VireoBrickUser user;
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    DzBrickParam* pin = param(matte, "Kd");
    BrickCatalogue::Filter filter;
    filter.user = &user;
    filter.accepts = [&](const DzShaderBrick* sample) {
        return BrickCatalogue::findFitting(sample, pin) != nullptr;
    };
    const QVector<const BrickKind*> kinds = catalogue().search(QString(), filter);
    ASSERT_FALSE(kinds.isEmpty());
    for (const BrickKind* kind : kinds)
        EXPECT_EQ(kind->outputs.first().typeText, QStringLiteral("LColor"))
            << kind->name.toStdString();
    int colorKinds = 0;
    for (const BrickKind& kind : catalogue().getKinds())
        colorKinds
            += !kind.outputs.isEmpty() && kind.outputs.first().typeText == QLatin1String("LColor");
    EXPECT_EQ(kinds.size(), colorKinds);
    pin = param(matte, "result");
    EXPECT_TRUE(namesOf(catalogue().search(QString(), filter))
                    .contains(catalogue().find(QStringLiteral("VireoRootBrick"))->name));
}

TEST(BrickCatalogueTest, knowsActionsThatNoBrickLists)
{
    EXPECT_EQ(
        catalogue().getUnlistedActions(), QStringList { QStringLiteral("VireoImporLbm2Action") });
}
