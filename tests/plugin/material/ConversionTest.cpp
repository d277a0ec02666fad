// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestScene.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzelementsnapshot.h"
#include "dzmainwindow.h"
#include "dzpropertysettings.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <memory>
#include <vector>

namespace {

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

QString valueOf(const DzElement* element, const char* name)
{
    auto* string = qobject_cast<DzStringProperty*>(element->findProperty(text(name)));
    EXPECT_NE(string, nullptr) << name;
    return string ? string->getValue() : QString();
}

DzSimpleElementData* itemOf(const DzMaterial* material)
{
    return qobject_cast<DzSimpleElementData*>(material->findDataItem(text("VireoElementDataItem")));
}

/// Everything that is told of a surface, in its order.
DzSettings stateOf(const DzMaterial* material)
{
    DzSettings state;
    for (int i = 0; i < material->getNumProperties(); ++i) {
        const DzProperty* property = material->getProperty(i);
        DzPropertySettings attributes;
        property->getAttributes(&attributes);
        attributes.setStringValue(text("Class"), property->className());
        state.setSettingsValue(property->getName(), attributes);
    }
    for (int i = 0; i < material->getNumDataItems(); ++i) {
        auto* item = qobject_cast<DzSimpleElementData*>(material->getDataItem(i));
        if (item)
            state.setSettingsValue(text("data ") + item->getName(), *item->getSettings());
    }
    return state;
}

DzSettings attributesOf(const VireoBrickUser& user)
{
    DzSettings attributes;
    user.getAttributes(&attributes);
    return attributes;
}

/// Closes message boxes by their button and tells what they showed.
class MessageBoxes
{
public:
    struct Shown {
        QString title;
        QString message;
        QMessageBox::Icon icon;
        QMessageBox::StandardButtons buttons;
        const QWidget* parent;
    };

    MessageBoxes()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
        m_timer.start(5);
    }

    std::vector<Shown> shown;

private:
    void look()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (!box) {
            ADD_FAILURE() << "another window than a message box: "
                          << modal->metaObject()->className();
            modal->close();
            return;
        }
        shown.push_back({ box->windowTitle(), box->text(), box->icon(), box->standardButtons(),
            box->parentWidget() });
        ASSERT_EQ(box->buttons().size(), 1);
        QTest::mouseClick(box->buttons().first(), Qt::LeftButton);
    }

    QTimer m_timer;
};

class ApplyTest : public testing::Test
{
protected:
    ApplyTest()
    {
        const DzUndoStackLock lock;
        user.setBrickUserName(text("Old Wood"));
    }

    /// A root that a fresh matte feeds.
    void addNetwork()
    {
        const DzUndoStackLock lock;
        root = addBrick(user, "VireoRootBrick");
        matte = addBrick(user, "VireoMatMatteBrick");
        EXPECT_TRUE(link(matte, root, "material"));
    }

    TestScene scene;
    VireoBrickUser user;
    VireoBrickBase* root = nullptr;
    VireoBrickBase* matte = nullptr;
};

/// The properties that applying a fresh root and matte leaves, in order.
QStringList appliedNames()
{
    return { text("LuxRender_material_extrasettings"),
        text("LuxRender_material_extrasettings_mesh"), text("LuxRender_Lm_001_bumpmap"),
        text("LuxRender_Lm_002_Kd"), text("LuxRender_Lm_003_sigma"),
        text("LuxRender_Lm_004_generatetangents"), text("LuxRender_Lm_005_dmscale"),
        text("LuxRender_Lm_006_dmoffset"), text("LuxRender_Lm_007_dmnormalsmooth"),
        text("LuxRender_Lm_008_dmnormalsplit"), text("LuxRender_Lm_009_dmsharpboundary"),
        text("LuxRender_Lm_010_nsubdivlevels"), text("LuxRender_Lm_011_subdivscheme") };
}

} // namespace

// Applying ---------------------------------------------------------------------------------------

TEST_F(ApplyTest, aSurfaceGetsTheTextsThePropertiesAndTheNetwork)
{
    addNetwork();
    DzMaterial* surface = scene.addSelected();
    addFloat(surface, "Glossiness", 0.5f);
    MessageBoxes boxes;
    user.applyToScene();
    EXPECT_EQ(boxes.shown.size(), 0u);
    EXPECT_EQ(propertyNames(surface), QStringList({ text("Glossiness") }) + appliedNames());
    EXPECT_TEXT(text("\nMakeNamedMaterial \"Lm_material1\"\n"
                     "\t\"string  bumpmap\" [%(LuxRender_Lm_001_bumpmap)]\n"
                     "\t\"string  Kd\" [%(LuxRender_Lm_002_Kd)]\n"
                     "\t\"string  sigma\" [%(LuxRender_Lm_003_sigma)]\n"
                     "\t\"string  type\" [\"matte\"]\n"
                     "\n"
                     "NamedMaterial \"Lm_material1\"\n"),
        valueOf(surface, "LuxRender_material_extrasettings"));
    EXPECT_TEXT(text("\t\"bool    generatetangents\" [$(LuxRender_Lm_004_generatetangents)]\n"
                     "\t\"float   dmscale\" [$(LuxRender_Lm_005_dmscale)]\n"
                     "\t\"float   dmoffset\" [$(LuxRender_Lm_006_dmoffset)]\n"
                     "\t\"bool    dmnormalsmooth\" [$(LuxRender_Lm_007_dmnormalsmooth)]\n"
                     "\t\"bool    dmnormalsplit\" [$(LuxRender_Lm_008_dmnormalsplit)]\n"
                     "\t\"bool    dmsharpboundary\" [$(LuxRender_Lm_009_dmsharpboundary)]\n"
                     "\t\"integer nsubdivlevels\" [$(LuxRender_Lm_010_nsubdivlevels)]\n"
                     "\t\"string  subdivscheme\" [$(LuxRender_Lm_011_subdivscheme)]\n"),
        valueOf(surface, "LuxRender_material_extrasettings_mesh"));
    ASSERT_EQ(surface->getNumDataItems(), 1);
    ASSERT_NE(itemOf(surface), nullptr);
    EXPECT_TRUE(itemOf(surface)->isPersistent());
    const DzSettings* stored
        = itemOf(surface)->getSettings()->getSettingsValue(text("VireoSceneBrickInformation"));
    ASSERT_NE(stored, nullptr);
    EXPECT_TRUE(stored->isEqual(attributesOf(user)));
}

TEST_F(ApplyTest, theTextsAreLabelledUserPropertiesBelowLuxRender)
{
    addNetwork();
    DzMaterial* surface = scene.addSelected();
    user.applyToScene();
    const DzProperty* material = surface->findProperty(text("LuxRender_material_extrasettings"));
    EXPECT_EQ(material->className(), text("DzStringProperty"));
    EXPECT_EQ(material->getLabel(), text("LuxRender Extra Settings"));
    EXPECT_EQ(material->getPath(), text("LuxRender"));
    EXPECT_TRUE(material->isUserProperty());
    const DzProperty* mesh = surface->findProperty(text("LuxRender_material_extrasettings_mesh"));
    EXPECT_EQ(mesh->className(), text("DzStringProperty"));
    EXPECT_EQ(mesh->getLabel(), text("LuxRender Extra Mesh Settings"));
    EXPECT_EQ(mesh->getPath(), text("LuxRender"));
    EXPECT_TRUE(mesh->isUserProperty());
}

TEST_F(ApplyTest, publishedPropertiesAreCopiesOfTheNetworks)
{
    addNetwork();
    auto* sigma = propertyAs<DzFloatProperty>(matte, "sigma");
    {
        const DzUndoStackLock lock;
        sigma->setValue(0.75f);
        sigma->setLabel(text("Roughness"));
        sigma->setMinMax(0, 2);
        sigma->setIsClamped(true);
        sigma->setHidden(true);
        sigma->setMap(text("maps/rough.png"));
        propertyAs<DzColorProperty>(matte, "Kd")->setColorValue(QColor(1, 2, 3));
    }
    ASSERT_FALSE(sigma->isUserProperty());
    DzMaterial* surface = scene.addSelected();
    user.applyToScene();
    auto* copy
        = qobject_cast<DzFloatProperty*>(surface->findProperty(text("LuxRender_Lm_003_sigma")));
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, sigma);
    EXPECT_EQ(copy->getValue(), 0.75f);
    EXPECT_EQ(copy->getLabel(), text("Roughness"));
    EXPECT_EQ(copy->getMin(), 0);
    EXPECT_EQ(copy->getMax(), 2);
    EXPECT_TRUE(copy->isClamped());
    EXPECT_TRUE(copy->isHidden());
    EXPECT_TRUE(copy->isMappable());
    ASSERT_TRUE(copy->isMapped());
    EXPECT_EQ(copy->getMapValue()->getFilename(), text("maps/rough.png"));
    EXPECT_TRUE(copy->isUserProperty());
    EXPECT_EQ(copy->getOwner(), surface);
    auto* color
        = qobject_cast<DzColorProperty*>(surface->findProperty(text("LuxRender_Lm_002_Kd")));
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->getColorValue(), QColor(1, 2, 3));
    auto* scheme = qobject_cast<DzEnumProperty*>(
        surface->findProperty(text("LuxRender_Lm_011_subdivscheme")));
    ASSERT_NE(scheme, nullptr);
    EXPECT_EQ(scheme->getStringValue(), text("loop"));
    EXPECT_EQ(scheme->getNumItems(), 2);
    // The network's own stays as it was, and each goes its way from here.
    EXPECT_FALSE(sigma->isUserProperty());
    EXPECT_EQ(sigma->getName(), text("sigma"));
    EXPECT_EQ(sigma->getPath(), text("/General"));
    copy->setValue(1);
    EXPECT_EQ(sigma->getValue(), 0.75f);
}

TEST_F(ApplyTest, onlyPathsThatSayNothingBecomeLuxRender)
{
    static const struct {
        const char* path;
        const char* expected;
    } cases[] = {
        { "/General", "/LuxRender" },
        { "", "/LuxRender" },
        { "/", "/LuxRender" },
        { "x", "/LuxRender" },
        { "/x", "/x" },
        { "General", "General" },
        { "/general", "/general" },
        { "/General/", "/General/" },
        { "/General/Skin", "/General/Skin" },
        { "/Skin", "/Skin" },
    };
    addNetwork();
    DzMaterial* surface = scene.addSelected();
    for (const auto& one : cases) {
        property(matte, "sigma")->setPath(text(one.path));
        user.applyToScene();
        const DzProperty* published = surface->findProperty(text("LuxRender_Lm_003_sigma"));
        ASSERT_NE(published, nullptr);
        EXPECT_EQ(published->getPath(), text(one.expected)) << one.path;
    }
}

TEST_F(ApplyTest, lockedPropertiesAreWrittenAndNotPublished)
{
    addNetwork();
    {
        const DzUndoStackLock lock;
        propertyAs<DzFloatProperty>(matte, "sigma")->setValue(0.75f);
        property(matte, "sigma")->lock(true);
        lockAll(root);
    }
    DzMaterial* surface = scene.addSelected();
    user.applyToScene();
    EXPECT_EQ(propertyNames(surface), appliedNames().mid(0, 4));
    EXPECT_TEXT(text("\nMakeNamedMaterial \"Lm_material1\"\n"
                     "\t\"string  bumpmap\" [%(LuxRender_Lm_001_bumpmap)]\n"
                     "\t\"string  Kd\" [%(LuxRender_Lm_002_Kd)]\n"
                     "\t\"float   sigma\" [0.75]\n"
                     "\t\"string  type\" [\"matte\"]\n"
                     "\n"
                     "NamedMaterial \"Lm_material1\"\n"),
        valueOf(surface, "LuxRender_material_extrasettings"));
    EXPECT_TEXT(text("\t\"bool    generatetangents\" [\"false\"]\n"
                     "\t\"float   dmscale\" [0.1]\n"
                     "\t\"float   dmoffset\" [0]\n"
                     "\t\"bool    dmnormalsmooth\" [\"true\"]\n"
                     "\t\"bool    dmnormalsplit\" [\"false\"]\n"
                     "\t\"bool    dmsharpboundary\" [\"false\"]\n"
                     "\t\"integer nsubdivlevels\" [0]\n"
                     "\t\"string  subdivscheme\" [\"loop\"]\n"),
        valueOf(surface, "LuxRender_material_extrasettings_mesh"));
}

TEST_F(ApplyTest, withoutARootTheTextsAreEmptyAndTheNetworkIsStored)
{
    addBrick(user, "VireoMatMatteBrick");
    DzMaterial* surface = scene.addSelected();
    user.applyToScene();
    EXPECT_EQ(propertyNames(surface), appliedNames().mid(0, 2));
    EXPECT_EQ(valueOf(surface, "LuxRender_material_extrasettings"), QString());
    EXPECT_EQ(valueOf(surface, "LuxRender_material_extrasettings_mesh"), QString());
    ASSERT_NE(itemOf(surface), nullptr);
    EXPECT_TRUE(itemOf(surface)
                    ->getSettings()
                    ->getSettingsValue(text("VireoSceneBrickInformation"))
                    ->isEqual(attributesOf(user)));
}

TEST_F(ApplyTest, ofSeveralRootsTheLastCounts)
{
    addNetwork();
    VireoBrickBase* last = addBrick(user, "VireoRootBrick");
    ASSERT_TRUE(link(addBrick(user, "VireoMatNullBrick"), last, "material"));
    lockAll(last);
    DzMaterial* surface = scene.addSelected();
    user.applyToScene();
    EXPECT_TEXT(text("\nMakeNamedMaterial \"Lm_material1\"\n"
                     "\t\"string  bumpmap\" [%(LuxRender_Lm_001_bumpmap)]\n"
                     "\t\"string  type\" [\"null\"]\n"
                     "\n"
                     "NamedMaterial \"Lm_material1\"\n"),
        valueOf(surface, "LuxRender_material_extrasettings"));
    EXPECT_EQ(propertyNames(surface), appliedNames().mid(0, 3));
    // The whole network is stored all the same.
    EXPECT_EQ(itemOf(surface)
                  ->getSettings()
                  ->getSettingsValue(text("VireoSceneBrickInformation"))
                  ->getSettingsValue(text("BrickSetup"))
                  ->getSettingsValue(text("Bricks"))
                  ->getNumValues(),
        4);
}

TEST_F(ApplyTest, everyRenderPropertyGoesWhetherUsersMayRemoveItOrNot)
{
    DzMaterial* surface = scene.addSelected();
    addFloat(surface, "LuxRender_first", 1);
    addFloat(surface, "Plain", 1);
    addFloat(surface, "LuxRender_", 1);
    addFloat(surface, "LuxRender", 1);
    addFloat(surface, "luxrender_small", 1);
    addFloat(surface, "My LuxRender_x", 1);
    addString(surface, "LuxRender_material_extrasettings", "old text")->setIsUserProperty(false);
    DzFloatProperty* fixed = addFloat(surface, "LuxRender_fixed", 1);
    fixed->setIsUserProperty(false);
    fixed->lock(true);
    addEnum(surface, "LuxRender_material_type", { text("matte") }, "matte");
    addFloat(surface, "Last", 1);
    user.applyToScene();
    EXPECT_EQ(propertyNames(surface),
        QStringList({ text("Plain"), text("LuxRender"), text("luxrender_small"),
            text("My LuxRender_x"), text("Last"), text("LuxRender_material_extrasettings"),
            text("LuxRender_material_extrasettings_mesh") }));
    EXPECT_EQ(valueOf(surface, "LuxRender_material_extrasettings"), QString());
}

TEST_F(ApplyTest, applyingTwiceLeavesWhatTheSecondTimeGives)
{
    addNetwork();
    DzMaterial* surface = scene.addSelected();
    user.applyToScene();
    VireoBrickUser later;
    VireoBrickBase* laterRoot = addBrick(later, "VireoRootBrick");
    lockAll(laterRoot);
    ASSERT_TRUE(link(addBrick(later, "VireoMatNullBrick"), laterRoot, "material"));
    later.applyToScene();
    EXPECT_EQ(propertyNames(surface), appliedNames().mid(0, 3));
    ASSERT_EQ(surface->getNumDataItems(), 1);
    EXPECT_TRUE(itemOf(surface)
                    ->getSettings()
                    ->getSettingsValue(text("VireoSceneBrickInformation"))
                    ->isEqual(attributesOf(later)));
    // Once more changes nothing.
    const DzSettings state = stateOf(surface);
    later.applyToScene();
    EXPECT_TRUE(stateOf(surface).isEqual(state));
}

TEST_F(ApplyTest, onlySelectedSurfacesOfCurrentShapesAreChanged)
{
    addNetwork();
    const auto isChanged = [](const DzMaterial* material) {
        return material->getNumProperties() > 0 || material->getNumDataItems() > 0;
    };
    auto* empty = new DzNode(text("no object"));
    auto* shapeless = new DzNode(text("no shape"));
    shapeless->setObject(new DzObject);
    dzScene->addNode(empty);
    dzScene->addNode(shapeless);
    DzShape* shape = scene.addFigure("figure");
    DzMaterial* first = scene.addSurface(shape, "first");
    DzMaterial* unselected = scene.addSurface(shape, "unselected", false);
    DzMaterial* second = scene.addSurface(shape, "second");
    auto* other = new DzShape(text("other"));
    dzScene->findNode(text("figure"))->getObject()->addShape(other);
    DzMaterial* hidden = scene.addSurface(other, "hidden");
    auto* child = new DzNode(text("child"));
    child->setObject(new DzObject);
    auto* childShape = new DzShape(text("shape"));
    child->getObject()->addShape(childShape);
    dzScene->findNode(text("figure"))->addNodeChild(child);
    DzMaterial* below = scene.addSurface(childShape, "below");
    const DzMaterialPtr nowhere(DzDefaultMaterial::createBare(text("nowhere")));
    nowhere->select(true);
    user.applyToScene();
    EXPECT_TRUE(isChanged(first));
    EXPECT_TRUE(isChanged(second));
    EXPECT_TRUE(isChanged(below));
    EXPECT_FALSE(isChanged(unselected));
    EXPECT_FALSE(isChanged(hidden));
    EXPECT_FALSE(isChanged(nowhere));
    // Whatever shape is the current one, it need not be the first.
    ASSERT_EQ(dzScene->findNode(text("figure"))->getObject()->setCurrentShape(other), DZ_NO_ERROR);
    user.applyToScene();
    EXPECT_TRUE(isChanged(hidden));
}

TEST_F(ApplyTest, surfacesAreChangedInTheOrderOfNodesAndSurfaces)
{
    DzShape* first = scene.addFigure("first");
    DzShape* second = scene.addFigure("second");
    QStringList order;
    const auto addWatched = [&](DzShape* shape, const char* name) {
        DzMaterial* material = scene.addSurface(shape, name);
        QObject::connect(material, &DzElement::propertyAdded, [&order, material] {
            if (order.isEmpty() || order.last() != material->getName())
                order.append(material->getName());
        });
    };
    // The list of all materials has another order.
    addWatched(second, "c");
    addWatched(first, "b");
    addWatched(second, "d");
    addWatched(first, "a");
    user.applyToScene();
    EXPECT_EQ(order, QStringList({ text("b"), text("a"), text("c"), text("d") }));
}

TEST_F(ApplyTest, aSurfaceOnTwoShapesIsChangedOnceAtItsFirstPlace)
{
    addNetwork();
    DzMaterial* surface = scene.addSelected();
    DzShape* second = scene.addFigure("second");
    ASSERT_EQ(second->addMaterial(surface), DZ_NO_ERROR);
    QSignalSpy added(surface, SIGNAL(propertyAdded(DzProperty*)));
    QSignalSpy removed(surface, SIGNAL(propertyRemoved(DzProperty*)));
    user.applyToScene();
    EXPECT_EQ(added.count(), appliedNames().size());
    EXPECT_EQ(removed.count(), 0);
    EXPECT_EQ(propertyNames(surface), appliedNames());
}

TEST_F(ApplyTest, aBrickUserThatLiesOnASurfaceMayBeAppliedToItself)
{
    DzShape* shape = scene.addFigure("figure");
    const DzTSharedPointer<VireoBrickUser> own(new VireoBrickUser);
    VireoBrickBase* ownRoot = addBrick(*own, "VireoRootBrick");
    lockAll(ownRoot);
    ASSERT_EQ(shape->addMaterial(own), DZ_NO_ERROR);
    own->select(true);
    own->applyToScene();
    EXPECT_EQ(propertyNames(own), appliedNames().mid(0, 2));
    EXPECT_EQ(own->getNumBricks(), 1);
    EXPECT_NE(itemOf(own), nullptr);
}

// Nothing selected -------------------------------------------------------------------------------

TEST_F(ApplyTest, withoutASelectedSurfaceABoxTellsSoAndNothingChanges)
{
    addNetwork();
    DzMaterial* surface = scene.addSurface(scene.addFigure("figure"), "surface", false);
    DzMainWindow window;
    dzApp->setInterface(&window);
    MessageBoxes boxes;
    user.applyToScene();
    dzApp->setInterface(nullptr);
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_EQ(boxes.shown[0].title, text("Vireo Mixer"));
    EXPECT_EQ(boxes.shown[0].message, text("No material(s) selected"));
    EXPECT_EQ(boxes.shown[0].icon, QMessageBox::Warning);
    EXPECT_EQ(boxes.shown[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    EXPECT_EQ(boxes.shown[0].parent, &window);
    EXPECT_EQ(surface->getNumProperties(), 0);
    EXPECT_EQ(surface->getNumDataItems(), 0);
    EXPECT_FALSE(dzUndoStack->hasItems());
    EXPECT_EQ(dzUndoStack->getHoldDepth(), 0);
}

TEST_F(ApplyTest, theBoxNeedsNeitherSceneNorWindow)
{
    MessageBoxes boxes;
    user.applyToScene();
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_EQ(boxes.shown[0].message, text("No material(s) selected"));
    EXPECT_EQ(boxes.shown[0].parent, nullptr);
}

// Undo -------------------------------------------------------------------------------------------

TEST_F(ApplyTest, oneStepTakesEverythingBackAndMakesItAgain)
{
    addNetwork();
    DzShape* shape = scene.addFigure("figure");
    DzMaterial* surfaces[] = { scene.addSurface(shape, "old"), scene.addSurface(shape, "fresh") };
    DzMaterial* old = surfaces[0];
    {
        const DzUndoStackLock lock;
        addFloat(old, "LuxRender_a", 1);
        addFloat(old, "Plain", 1);
        DzFloatProperty* fixed = addFloat(old, "LuxRender_b", 2, "maps/b.png");
        fixed->setLabel(text("B"));
        fixed->setPath(text("/B"));
        fixed->setIsUserProperty(false);
        fixed->lock(true);
        addString(old, "LuxRender_material_extrasettings", "old text")->setHidden(true);
        addEnum(old, "LuxRender_material_type", { text("glass"), text("matte") }, "matte");
        addBool(old, "Specular2 Active", true);
        auto* item = new DzSimpleElementData(text("VireoElementDataItem"), true);
        item->getSettings()->setStringValue(text("Author"), text("somebody"));
        item->getSettings()->setSettingsValue(text("VireoSceneBrickInformation"));
        old->addDataItem(item);
        auto* foreign = new DzSimpleElementData(text("Foreign"), true);
        foreign->getSettings()->setIntValue(text("n"), 1);
        old->addDataItem(foreign);
    }
    dzUndoStack->clearAll();
    std::vector<DzSettings> before;
    std::vector<DzElementSnapshot> snapshotsBefore;
    for (DzMaterial* surface : surfaces) {
        before.push_back(stateOf(surface));
        snapshotsBefore.emplace_back(surface);
    }
    user.applyToScene();
    ASSERT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), text("Apply Old Wood"));
    std::vector<DzSettings> after;
    std::vector<DzElementSnapshot> snapshotsAfter;
    for (DzMaterial* surface : surfaces) {
        after.push_back(stateOf(surface));
        snapshotsAfter.emplace_back(surface);
    }
    EXPECT_FALSE(after[0].isEqual(before[0]));
    EXPECT_FALSE(after[1].isEqual(before[1]));
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(dzUndoStack->undo());
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_TRUE(stateOf(surfaces[i]).isEqual(before[i])) << round << i;
            EXPECT_TRUE(snapshotsBefore[i].changesTo(DzElementSnapshot(surfaces[i])).isEmpty());
        }
        EXPECT_FALSE(dzUndoStack->canUndo());
        EXPECT_FALSE(old->findProperty(text("LuxRender_b"))->isUserProperty());
        EXPECT_TRUE(old->findProperty(text("LuxRender_b"))->isLocked());
        EXPECT_TRUE(old->findProperty(text("LuxRender_a"))->isUserProperty());
        ASSERT_TRUE(dzUndoStack->redo());
        EXPECT_EQ(dzUndoStack->getUndoCaption(), text("Apply Old Wood"));
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_TRUE(stateOf(surfaces[i]).isEqual(after[i])) << round << i;
            EXPECT_TRUE(snapshotsAfter[i].changesTo(DzElementSnapshot(surfaces[i])).isEmpty());
        }
        EXPECT_FALSE(dzUndoStack->canRedo());
    }
}

TEST_F(ApplyTest, severalAppliesAreTakenBackOneByOne)
{
    addNetwork();
    DzMaterial* surface = scene.addSelected();
    dzUndoStack->clearAll();
    std::vector<DzSettings> states { stateOf(surface) };
    for (const char* name : { "One", "Two", "Three" }) {
        const DzUndoStackLock lock;
        user.setBrickUserName(text(name));
        addBrick(user, "VireoRootBrick");
        dzUndoStack->unlock();
        user.applyToScene();
        dzUndoStack->lock();
        states.push_back(stateOf(surface));
    }
    ASSERT_EQ(dzUndoStack->getNumUndoItems(), 3);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), text("Apply Three"));
    for (int i = 2; i >= 0; --i) {
        ASSERT_TRUE(dzUndoStack->undo());
        EXPECT_TRUE(stateOf(surface).isEqual(states[static_cast<std::size_t>(i)])) << i;
    }
    for (std::size_t i = 1; i < 4; ++i) {
        ASSERT_TRUE(dzUndoStack->redo());
        EXPECT_TRUE(stateOf(surface).isEqual(states[i])) << i;
    }
}

TEST_F(ApplyTest, theStepOutlivesTheBrickUser)
{
    DzMaterial* surface = scene.addSelected();
    const DzSettings before = stateOf(surface);
    {
        const DzUndoStackLock lock;
        VireoBrickUser passing;
        addBrick(passing, "VireoRootBrick");
        dzUndoStack->unlock();
        passing.applyToScene();
        dzUndoStack->lock();
    }
    const DzSettings after = stateOf(surface);
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_TRUE(stateOf(surface).isEqual(before));
    ASSERT_TRUE(dzUndoStack->redo());
    EXPECT_TRUE(stateOf(surface).isEqual(after));
}

TEST_F(ApplyTest, whatIsHeldAndCancelledLeavesNoTrace)
{
    addNetwork();
    DzMaterial* surface = scene.addSelected();
    addFloat(surface, "LuxRender_old", 1)->setIsUserProperty(false);
    dzUndoStack->clearAll();
    const DzSettings before = stateOf(surface);
    const DzElementSnapshot snapshot(surface);
    {
        DzUndoStackHold hold;
        user.applyToScene();
        const QVector<DzElementChange> changes = snapshot.changesTo(DzElementSnapshot(surface));
        ASSERT_EQ(changes.size(), 1 + appliedNames().size() + 1);
        EXPECT_EQ(changes.first().kind, DzElementChange::Vanishes);
        EXPECT_EQ(changes.first().name, text("LuxRender_old"));
        EXPECT_EQ(changes.first().before, text("1"));
        EXPECT_EQ(changes.at(1).kind, DzElementChange::Appears);
        EXPECT_EQ(changes.at(1).name, text("LuxRender_material_extrasettings"));
        EXPECT_EQ(changes.at(1).label, text("LuxRender Extra Settings"));
        EXPECT_EQ(changes.last().kind, DzElementChange::Appears);
        EXPECT_EQ(changes.last().name, text("VireoElementDataItem"));
        EXPECT_TRUE(changes.last().isData);
    }
    EXPECT_TRUE(stateOf(surface).isEqual(before));
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST(ElementSnapshot, tellsChangesOfValueMapFlagsLabelPathAndData)
{
    const DzMaterialPtr surface(DzDefaultMaterial::createBare(text("surface")));
    DzFloatProperty* number = addFloat(surface, "number", 1);
    auto* item = new DzSimpleElementData(text("data"), true);
    surface->addDataItem(item);
    const auto changesOf = [&](const std::function<void()>& change) {
        const DzElementSnapshot before(surface);
        change();
        const QVector<DzElementChange> changes = before.changesTo(DzElementSnapshot(surface));
        EXPECT_EQ(changes.size(), 1);
        return changes.isEmpty() ? DzElementChange() : changes.first();
    };
    const DzElementChange value = changesOf([&] { number->setValue(0.5f); });
    EXPECT_EQ(value.kind, DzElementChange::Changes);
    EXPECT_EQ(value.before, text("1"));
    EXPECT_EQ(value.after, text("0.5"));
    EXPECT_FALSE(value.isData);
    EXPECT_EQ(changesOf([&] { number->setMap(text("a.png")); }).after, text("0.5, map a.png"));
    changesOf([&] { number->setHidden(true); });
    changesOf([&] { number->lock(true); });
    changesOf([&] { number->setIsUserProperty(false); });
    changesOf([&] { number->setPath(text("/x")); });
    EXPECT_EQ(changesOf([&] { number->setLabel(text("Label")); }).label, text("Label"));
    const DzElementChange data = changesOf([&] { item->getSettings()->setIntValue(text("n"), 1); });
    EXPECT_EQ(data.kind, DzElementChange::Changes);
    EXPECT_EQ(data.name, text("data"));
    EXPECT_TRUE(data.isData);
    const DzElementSnapshot before(surface);
    number->setName(text("other"));
    const QVector<DzElementChange> renamed = before.changesTo(DzElementSnapshot(surface));
    ASSERT_EQ(renamed.size(), 2);
    EXPECT_EQ(renamed.at(0).kind, DzElementChange::Vanishes);
    EXPECT_EQ(renamed.at(0).name, text("number"));
    EXPECT_EQ(renamed.at(1).kind, DzElementChange::Appears);
    EXPECT_EQ(renamed.at(1).name, text("other"));
}

// Converting -------------------------------------------------------------------------------------

namespace {

typedef DzTSharedPointer<VireoBrickUser> UserPtr;

class ConvertTest : public testing::Test
{
protected:
    /// What converting the selected surfaces gives, in order.
    std::vector<UserPtr> convert()
    {
        std::vector<UserPtr> users;
        VireoBrickUser caller;
        for (IDzBrickUser* user : caller.fromScene()) {
            users.emplace_back(dynamic_cast<VireoBrickUser*>(user));
            EXPECT_NE(users.back(), nullptr);
        }
        return users;
    }
    /// What converting gives for the only surface.
    UserPtr convertOne()
    {
        const std::vector<UserPtr> users = convert();
        EXPECT_EQ(users.size(), 1u);
        return users.size() == 1 ? users.front() : UserPtr(new VireoBrickUser);
    }
    /// A selected surface that names its type.
    DzMaterial* addTyped(const char* type)
    {
        DzMaterial* surface = scene.addSelected();
        addEnum(surface, "LuxRender_material_type", { text("other"), text(type) }, type);
        return surface;
    }

    TestScene scene;
};

QStringList classesOf(const VireoBrickUser* user)
{
    QList<uint> ids;
    user->getBrickIDs(ids);
    QStringList names;
    for (const uint id : qAsConst(ids))
        names.append(user->getBrick(id)->className());
    return names;
}

/// The first brick of a class; null, and a failure, when there is none.
VireoBrickBase* brickOf(const VireoBrickUser* user, const char* className)
{
    QList<uint> ids;
    user->getBrickIDs(ids);
    for (const uint id : qAsConst(ids))
        if (user->getBrick(id)->className() == text(className))
            return qobject_cast<VireoBrickBase*>(user->getBrick(id));
    ADD_FAILURE() << className;
    return nullptr;
}

/// True when a brick's "result" feeds an input, and nothing else does.
bool feeds(DzShaderBrick* from, DzShaderBrick* to, const char* input)
{
    return param(to, input)->getNumConnections() == 1
        && param(to, input)->isConnectedTo(param(from, "result"));
}

const QString rootClass = QStringLiteral("VireoRootBrick");

} // namespace

TEST_F(ConvertTest, withoutASelectedSurfaceTheListIsEmptyAndNoBoxIsShown)
{
    scene.addSurface(scene.addFigure("figure"), "surface", false);
    MessageBoxes boxes;
    EXPECT_TRUE(convert().empty());
    EXPECT_EQ(boxes.shown.size(), 0u);
}

TEST_F(ConvertTest, aPlainSurfaceGivesARootFedByADefaultGlossy)
{
    scene.addSelected();
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user), QStringList({ rootClass, text("VireoMatGlossyBrick") }));
    VireoBrickBase* root = brickOf(user, "VireoRootBrick");
    VireoBrickBase* glossy = brickOf(user, "VireoMatGlossyBrick");
    EXPECT_TRUE(feeds(glossy, root, "material"));
    EXPECT_TRUE(root->getBrickSettings()->getBoolValue(text("AutoArrange")));
    EXPECT_EQ(user->getBrickUserName(), text("Vireo Brick User"));
    EXPECT_TEXT(text("\nMakeNamedMaterial \"Lm_material1\"\n"
                     "\t\"float   bumpmap\" [0]\n"
                     "\t\"color   Kd\" [1 1 1]\n"
                     "\t\"color   Ks\" [1 1 1]\n"
                     "\t\"float   index\" [0]\n"
                     "\t\"float   uroughness\" [0.1]\n"
                     "\t\"float   vroughness\" [0.1]\n"
                     "\t\"color   Ka\" [1 1 1]\n"
                     "\t\"bool    multibounce\" [\"false\"]\n"
                     "\t\"float   d\" [0]\n"
                     "\t\"string  type\" [\"glossy\"]\n"),
        literalText(glossy));
}

TEST_F(ConvertTest, propertiesAreNotReadWithoutAType)
{
    DzMaterial* surface = scene.addSelected();
    addFloat(surface, "LuxRender_glossy_index", 5);
    addFloat(surface, "LuxRender_glossy_d", 5, "maps/d.png");
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user), QStringList({ rootClass, text("VireoMatGlossyBrick") }));
    EXPECT_EQ(
        propertyAs<DzFloatProperty>(brickOf(user, "VireoMatGlossyBrick"), "index")->getValue(), 0);
}

TEST_F(ConvertTest, theSecondSpecularLayerGivesARootAlone)
{
    DzBoolProperty* active = addBool(scene.addSelected(), "Specular2 Active", true);
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user), QStringList({ rootClass }));
    EXPECT_TRUE(
        brickOf(user, "VireoRootBrick")->getBrickSettings()->getBoolValue(text("AutoArrange")));
    active->setBoolValue(false);
    EXPECT_EQ(classesOf(convertOne()), QStringList({ rootClass, text("VireoMatGlossyBrick") }));
}

TEST_F(ConvertTest, onlyASwitchCountsAsTheSecondSpecularLayer)
{
    addFloat(scene.addSelected(), "Specular2 Active", 1);
    EXPECT_EQ(classesOf(convertOne()), QStringList({ rootClass, text("VireoMatGlossyBrick") }));
}

TEST_F(ConvertTest, eachTypeGivesItsBrick)
{
    static const struct {
        const char* type;
        const char* brick;
    } cases[] = {
        { "cloth", "VireoMatClothBrick" },
        { "glass", "VireoMatGlassBrick" },
        { "glass2", "VireoMatGlass2Brick" },
        { "glossy", "VireoMatGlossyBrick" },
        { "glossytranslucent", "VireoMatGlossyTranslucentBrick" },
        { "layered", "VireoMatLayeredBrick" },
        { "matte", "VireoMatMatteBrick" },
        { "mattetranslucent", "VireoMatMatteTranslucentBrick" },
        { "metal2", "VireoMatMetal2Brick" },
        { "mirror", "VireoMatMirrorBrick" },
        { "mix", "VireoMatMixBrick" },
        { "null", "VireoMatNullBrick" },
        { "roughglass", "VireoMatRoughGlassBrick" },
        { "scatter", "VireoMatScatterBrick" },
        { "velvet", "VireoMatVelvetBrick" },
    };
    for (const auto& one : cases) {
        TestScene own;
        addTyped(one.type);
        const UserPtr user = convertOne();
        ASSERT_EQ(classesOf(user), QStringList({ rootClass, text(one.brick) })) << one.type;
        EXPECT_TRUE(feeds(brickOf(user, one.brick), brickOf(user, "VireoRootBrick"), "material"))
            << one.type;
        EXPECT_EQ(brickOf(user, one.brick)->getLuxType(), text(one.type));
    }
}

TEST_F(ConvertTest, otherWordsGiveARootAlone)
{
    for (const char* type : { "Matte", "MATTE", " matte", "carpaint", "glossycoating",
             "glossy_translucent", "mat\xc3\xa9riel" }) {
        TestScene own;
        DzMaterial* surface = addTyped(type);
        // Not asked: the type is named.
        addBool(surface, "Specular2 Active", false);
        EXPECT_EQ(classesOf(convertOne()), QStringList({ rootClass })) << type;
    }
}

TEST_F(ConvertTest, aTypeWithoutItemsGivesARootAlone)
{
    addTo(scene.addSelected(), new DzEnumProperty(text("LuxRender_material_type"), true, true));
    EXPECT_EQ(classesOf(convertOne()), QStringList({ rootClass }));
}

TEST_F(ConvertTest, aTypeThatIsNoEnumerationIsNone)
{
    DzMaterial* surface = scene.addSelected();
    addString(surface, "LuxRender_material_type", "matte");
    addFloat(surface, "LuxRender_matte_sigma", 1);
    EXPECT_EQ(classesOf(convertOne()), QStringList({ rootClass, text("VireoMatGlossyBrick") }));
}

TEST_F(ConvertTest, valuesAreCopiedByNameAndAllElseStaysAtItsDefault)
{
    DzMaterial* surface = addTyped("glossytranslucent");
    addColor(surface, "LuxRender_glossytranslucent_Kt", QColor(10, 20, 30));
    addFloat(surface, "LuxRender_glossytranslucent_index", 1.5f);
    addBool(surface, "LuxRender_glossytranslucent_onesided", false);
    addFloat(surface, "LuxRender_glossytranslucent_bumpmap", 0.5f);
    addFloat(surface, "LuxRender_glossytranslucent_D", 7);
    addFloat(surface, "LuxRender_matte_d", 7);
    addFloat(surface, "luxrender_glossytranslucent_d", 7);
    addFloat(surface, "glossytranslucent_d", 7);
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user), QStringList({ rootClass, text("VireoMatGlossyTranslucentBrick") }));
    VireoBrickBase* brick = brickOf(user, "VireoMatGlossyTranslucentBrick");
    EXPECT_TEXT(text("\nMakeNamedMaterial \"Lm_material1\"\n"
                     "\t\"float   bumpmap\" [0.5]\n"
                     "\t\"color   Kd\" [1 1 1]\n"
                     "\t\"color   Kt\" [0.0392157 0.0784314 0.117647]\n"
                     "\t\"color   Ks\" [1 1 1]\n"
                     "\t\"float   index\" [1.5]\n"
                     "\t\"color   Ka\" [0 0 0]\n"
                     "\t\"float   d\" [0]\n"
                     "\t\"float   uroughness\" [0.1]\n"
                     "\t\"float   vroughness\" [0.1]\n"
                     "\t\"bool    multibounce\" [\"false\"]\n"
                     "\t\"bool    onesided\" [\"false\"]\n"
                     "\t\"color   backface_Ks\" [0 0 0]\n"
                     "\t\"float   backface_index\" [0]\n"
                     "\t\"color   backface_Ka\" [0 0 0]\n"
                     "\t\"float   backface_d\" [0]\n"
                     "\t\"float   backface_uroughness\" [0]\n"
                     "\t\"float   backface_vroughness\" [0]\n"
                     "\t\"bool    backface_multibounce\" [\"false\"]\n"
                     "\t\"string  type\" [\"glossytranslucent\"]\n"),
        literalText(brick));
    EXPECT_EQ(property(brick, "Kt")->getLabel(), text("Kt"));
    EXPECT_FALSE(property(brick, "Kt")->isUserProperty());
}

TEST_F(ConvertTest, lockedPropertiesAreReadAndLeaveTheBrickUnlocked)
{
    addFloat(addTyped("matte"), "LuxRender_matte_sigma", 0.5f)->lock(true);
    const UserPtr user = convertOne();
    auto* sigma = propertyAs<DzFloatProperty>(brickOf(user, "VireoMatMatteBrick"), "sigma");
    EXPECT_EQ(sigma->getValue(), 0.5f);
    EXPECT_FALSE(sigma->isLocked());
}

TEST_F(ConvertTest, aPropertyOfAnotherKindLeavesTheDefault)
{
    DzMaterial* surface = addTyped("matte");
    addString(surface, "LuxRender_matte_sigma", "1");
    addFloat(surface, "LuxRender_matte_Kd", 1);
    addColor(surface, "LuxRender_matte_bumpmap", QColor(1, 2, 3));
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user), QStringList({ rootClass, text("VireoMatMatteBrick") }));
    EXPECT_TEXT(text("\nMakeNamedMaterial \"Lm_material1\"\n"
                     "\t\"float   bumpmap\" [0]\n"
                     "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                     "\t\"float   sigma\" [0]\n"
                     "\t\"string  type\" [\"matte\"]\n"),
        literalText(brickOf(user, "VireoMatMatteBrick")));
}

TEST_F(ConvertTest, enumerationsAreCopiedByText)
{
    DzMaterial* surface = addTyped("cloth");
    // Other numbers than those of the brick's own items.
    DzEnumProperty* preset = addEnum(surface, "LuxRender_cloth_presetname",
        { text("silk_shantung"), text("linen"), text("cotton_twill") }, "silk_shantung");
    const auto convertedPreset = [this] {
        const UserPtr user = convertOne();
        auto* found = propertyAs<DzEnumProperty>(brickOf(user, "VireoMatClothBrick"), "presetname");
        EXPECT_EQ(found->getNumItems(), 6);
        return found->getStringValue();
    };
    EXPECT_EQ(convertedPreset(), text("silk_shantung"));
    preset->setValue(2);
    EXPECT_EQ(convertedPreset(), text("cotton_twill"));
    // An item that the brick does not have leaves its default.
    preset->setValue(1);
    EXPECT_EQ(convertedPreset(), text("denim"));
}

TEST_F(ConvertTest, aMappedFloatBecomesAnImageMapOfFloats)
{
    addFloat(addTyped("matte"), "LuxRender_matte_sigma", 0.5f, "maps/rough.png");
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user),
        QStringList({ rootClass, text("VireoTexFltImageMapBrick"), text("VireoMatMatteBrick") }));
    VireoBrickBase* image = brickOf(user, "VireoTexFltImageMapBrick");
    VireoBrickBase* matte = brickOf(user, "VireoMatMatteBrick");
    EXPECT_TRUE(feeds(image, matte, "sigma"));
    EXPECT_TRUE(feeds(matte, brickOf(user, "VireoRootBrick"), "material"));
    auto* filename = propertyAs<DzFloatProperty>(image, "filename");
    EXPECT_EQ(filename->getValue(), 0.5f);
    ASSERT_TRUE(filename->isMapped());
    EXPECT_EQ(filename->getMapValue()->getFilename(), text("maps/rough.png"));
    // Value and map went to the texture.
    EXPECT_EQ(propertyAs<DzFloatProperty>(matte, "sigma")->getValue(), 0);
    EXPECT_FALSE(propertyAs<DzFloatProperty>(matte, "sigma")->isMapped());
}

TEST_F(ConvertTest, everyMappedColourAndFloatGetsItsImageMapInOrder)
{
    DzMaterial* surface = addTyped("matte");
    addFloat(surface, "LuxRender_matte_sigma", 0.5f, "maps/shared.png");
    addColor(surface, "LuxRender_matte_Kd", QColor(10, 20, 30), "maps/shared.png");
    addFloat(surface, "LuxRender_matte_bumpmap", 0.25f, "maps/bump.png");
    const UserPtr user = convertOne();
    // The order of the brick's inputs, not of the surface's properties.
    ASSERT_EQ(classesOf(user),
        QStringList({ rootClass, text("VireoTexFltImageMapBrick"), text("VireoTexClrImageMapBrick"),
            text("VireoTexFltImageMapBrick"), text("VireoMatMatteBrick") }));
    VireoBrickBase* matte = brickOf(user, "VireoMatMatteBrick");
    EXPECT_TRUE(feeds(user->getBrick(2), matte, "bumpmap"));
    EXPECT_TRUE(feeds(user->getBrick(3), matte, "Kd"));
    EXPECT_TRUE(feeds(user->getBrick(4), matte, "sigma"));
    auto* color = propertyAs<DzColorProperty>(user->getBrick(3), "filename");
    EXPECT_EQ(color->getColorValue(), QColor(10, 20, 30));
    ASSERT_TRUE(color->isMapped());
    EXPECT_EQ(color->getMapValue()->getFilename(), text("maps/shared.png"));
}

TEST_F(ConvertTest, aMapThatNothingTakesIsLeftOutAndTheValueIsCopied)
{
    // An input of Fresnel textures takes no texture of floats.
    addFloat(addTyped("metal2"), "LuxRender_metal2_fresnel", 3, "maps/f.png");
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user), QStringList({ rootClass, text("VireoMatMetal2Brick") }));
    auto* fresnel = propertyAs<DzFloatProperty>(brickOf(user, "VireoMatMetal2Brick"), "fresnel");
    EXPECT_EQ(fresnel->getValue(), 3);
    EXPECT_FALSE(fresnel->isMapped());
}

TEST_F(ConvertTest, aMapOfAnotherKindIsLeftOut)
{
    DzMaterial* surface = addTyped("glass");
    addColor(surface, "LuxRender_glass_index", QColor(1, 2, 3), "maps/a.png");
    addFloat(surface, "LuxRender_glass_Kr", 0.5f, "maps/b.png");
    addFloat(surface, "LuxRender_glass_architectural", 1, "maps/c.png");
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user), QStringList({ rootClass, text("VireoMatGlassBrick") }));
    VireoBrickBase* glass = brickOf(user, "VireoMatGlassBrick");
    EXPECT_EQ(propertyAs<DzFloatProperty>(glass, "index")->getValue(), 0);
    EXPECT_FALSE(propertyAs<DzFloatProperty>(glass, "index")->isMapped());
    EXPECT_EQ(propertyAs<DzColorProperty>(glass, "Kr")->getColorValue(), QColor(255, 255, 255));
    EXPECT_FALSE(propertyAs<DzColorProperty>(glass, "Kr")->isMapped());
    EXPECT_FALSE(propertyAs<DzBoolProperty>(glass, "architectural")->getBoolValue());
    EXPECT_FALSE(propertyAs<DzBoolProperty>(glass, "architectural")->isMapped());
}

TEST_F(ConvertTest, aMapWithoutAFileIsNone)
{
    addFloat(addTyped("matte"), "LuxRender_matte_sigma", 0.5f)
        ->setMap(DzTexturePtr(new DzTexture(QString())));
    const UserPtr user = convertOne();
    ASSERT_EQ(classesOf(user), QStringList({ rootClass, text("VireoMatMatteBrick") }));
    EXPECT_EQ(propertyAs<DzFloatProperty>(brickOf(user, "VireoMatMatteBrick"), "sigma")->getValue(),
        0.5f);
}

TEST_F(ConvertTest, aStoredNetworkWinsOverTheGuess)
{
    DzMaterial* surface = scene.addSelected();
    addBool(surface, "Specular2 Active", true);
    VireoBrickUser user;
    user.setBrickUserName(text("Käse"));
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    VireoBrickBase* mix = addBrick(user, "VireoMatMixBrick");
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    ASSERT_TRUE(link(mix, root, "material"));
    ASSERT_TRUE(link(matte, mix, "namedmaterial1"));
    ASSERT_TRUE(link(addBrick(user, "VireoMatNullBrick"), mix, "namedmaterial2"));
    ASSERT_TRUE(link(addBrick(user, "VireoVolClearBrick"), root, "Interior"));
    property(matte, "sigma")->lock(true);
    propertyAs<DzColorProperty>(matte, "Kd")->setMap(text("maps/wood.png"));
    user.applyToScene();
    dzUndoStack->clearAll();
    const std::vector<UserPtr> first = convert();
    const std::vector<UserPtr> second = convert();
    ASSERT_EQ(first.size(), 1u);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(classesOf(first[0]), classesOf(&user));
    EXPECT_TEXT(literalText(root), literalText(brickOf(first[0], "VireoRootBrick")));
    EXPECT_TEXT(placeholderText(root), placeholderText(brickOf(first[0], "VireoRootBrick")));
    EXPECT_EQ(first[0]->getBrickUserName(), text("Käse"));
    // Each is another user.
    EXPECT_NE(first[0]->getIdentifier(), user.getIdentifier());
    EXPECT_NE(first[0]->getIdentifier(), second[0]->getIdentifier());
    EXPECT_FALSE(first[0]->getIdentifier().isNull());
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_F(ConvertTest, aTypeWinsOverAStoredNetwork)
{
    DzMaterial* surface = scene.addSelected();
    VireoBrickUser user;
    addBrick(user, "VireoVolClearBrick");
    user.applyToScene();
    addEnum(surface, "LuxRender_material_type", { text("null") }, "null");
    const UserPtr converted = convertOne();
    EXPECT_EQ(classesOf(converted), QStringList({ rootClass, text("VireoMatNullBrick") }));
    EXPECT_EQ(converted->getBrickUserName(), text("Vireo Brick User"));
}

TEST_F(ConvertTest, aStoredNetworkWithoutBricksIsStillTheNetwork)
{
    scene.addSelected();
    VireoBrickUser user;
    user.applyToScene();
    EXPECT_EQ(classesOf(convertOne()), QStringList());
}

TEST_F(ConvertTest, theStoredMapBringsTheSurfacesValuesIn)
{
    DzMaterial* surface = scene.addSelected();
    VireoBrickUser user;
    addBrick(user, "VireoMatMatteBrick");
    user.applyToScene();
    addColor(surface, "Skin Colour", QColor(10, 20, 30), "maps/skin.png");
    DzSettings* entry = itemOf(surface)
                            ->getSettings()
                            ->getSettingsValue(text("VireoSceneBrickInformation"))
                            ->setSettingsValue(text("MyExtBrickSetProperties"))
                            ->setSettingsValue(text("0"));
    entry->setStringValue(text("SourceBrick"), text("Brick_1"));
    entry->setStringValue(text("SourceParam"), text("Kd"));
    entry->setStringValue(text("PropertyName"), text("Skin Colour"));
    entry->setFloatValue(text("PropertyIndex"), 0);
    const UserPtr converted = convertOne();
    auto* color = propertyAs<DzColorProperty>(brickOf(converted, "VireoMatMatteBrick"), "Kd");
    EXPECT_EQ(color->getColorValue(), QColor(10, 20, 30));
    ASSERT_TRUE(color->isMapped());
    EXPECT_EQ(color->getMapValue()->getFilename(), text("maps/skin.png"));
}

TEST_F(ConvertTest, anIncompleteStoreLeadsToTheGuess)
{
    DzMaterial* surface = scene.addSelected();
    auto* item = new DzSimpleElementData(text("VireoElementDataItem"), true);
    item->getSettings()->setSettingsValue(text("VireoSceneBrickInformation"));
    surface->addDataItem(item);
    EXPECT_EQ(classesOf(convertOne()), QStringList({ rootClass, text("VireoMatGlossyBrick") }));
}

TEST_F(ConvertTest, unselectedSurfacesAndThoseOnNoShapeAreIgnored)
{
    DzShape* shape = scene.addFigure("figure");
    scene.addSurface(shape, "unselected", false);
    const DzMaterialPtr nowhere(DzDefaultMaterial::createBare(text("nowhere")));
    nowhere->select(true);
    EXPECT_TRUE(convert().empty());
    scene.addSurface(shape, "selected");
    EXPECT_EQ(convert().size(), 1u);
}

TEST_F(ConvertTest, usersStandInTheOrderOfTheHostsListAndTheNewOnesAreNotAsked)
{
    DzShape* first = scene.addFigure("first");
    DzShape* second = scene.addFigure("second");
    const auto addOfType = [&](DzShape* shape, const char* type) {
        addEnum(scene.addSurface(shape, type), "LuxRender_material_type", { text(type) }, type);
    };
    addOfType(second, "velvet");
    addOfType(first, "matte");
    addOfType(second, "glass");
    // On two shapes, and converted once.
    ASSERT_EQ(first->addMaterial(second->getMaterial(1)), DZ_NO_ERROR);
    addOfType(first, "unknown");
    const int before = DzMaterial::getNumMaterials();
    const std::vector<UserPtr> users = convert();
    ASSERT_EQ(users.size(), 4u);
    EXPECT_EQ(classesOf(users[0]), QStringList({ rootClass, text("VireoMatVelvetBrick") }));
    EXPECT_EQ(classesOf(users[1]), QStringList({ rootClass, text("VireoMatMatteBrick") }));
    EXPECT_EQ(classesOf(users[2]), QStringList({ rootClass, text("VireoMatGlassBrick") }));
    EXPECT_EQ(classesOf(users[3]), QStringList({ rootClass }));
    EXPECT_EQ(DzMaterial::getNumMaterials(), before + 4);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(DzMaterial::getMaterial(before + static_cast<int>(i)), users[i]);
    EXPECT_EQ(convert().size(), 4u);
}

TEST_F(ConvertTest, convertingLeavesTheSurfacesAndTheUndoStackAlone)
{
    DzMaterial* surface = addTyped("matte");
    addFloat(surface, "LuxRender_matte_sigma", 0.5f, "maps/rough.png");
    addFloat(surface, "LuxRender_matte_bumpmap", 0.5f)->lock(true);
    dzUndoStack->clearAll();
    const DzSettings before = stateOf(surface);
    const std::vector<UserPtr> users = convert();
    EXPECT_EQ(users.size(), 1u);
    EXPECT_TRUE(stateOf(surface).isEqual(before));
    EXPECT_FALSE(dzUndoStack->hasItems());
    EXPECT_FALSE(dzUndoStack->isLocked());
    EXPECT_EQ(dzUndoStack->getHoldDepth(), 0);
}

TEST_F(ConvertTest, appliedAndConvertedAgainANetworkGivesTheSameTexts)
{
    DzMaterial* surface = scene.addSelected();
    VireoBrickUser user;
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    VireoBrickBase* image = addBrick(user, "VireoTexClrImageMapBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    ASSERT_TRUE(link(image, matte, "Kd"));
    propertyAs<DzColorProperty>(image, "filename")->setMap(text("maps/a b.png"));
    matte->addCustomInput(1009, text("mine"), text("mine"), 0);
    user.applyToScene();
    DzSettings applied = stateOf(surface);
    const UserPtr converted = convertOne();
    EXPECT_TEXT(placeholderText(root), placeholderText(brickOf(converted, "VireoRootBrick")));
    converted->applyToScene();
    DzSettings again = stateOf(surface);
    // Another user, and the same in all else.
    const QString dataKey = text("data VireoElementDataItem");
    for (DzSettings* state : { &applied, &again })
        state->getSettingsValue(dataKey)
            ->getSettingsValue(text("VireoSceneBrickInformation"))
            ->getSettingsValue(text("BrickSetup"))
            ->removeValue(text("Identifier"));
    EXPECT_TRUE(again.isEqual(applied));
}
