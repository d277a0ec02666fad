// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ScriptRunner.h"
#include "dzmaterial.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzundostack.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

/// Leaves the scene as empty as it was.
class ScriptScene : public testing::Test
{
protected:
    ~ScriptScene() override
    {
        const DzUndoStackLock lock;
        dzScene->clear();
    }
};

} // namespace

TEST(ScriptProperty, eachKindIsReadAndWritten)
{
    EXPECT_PRINTS("0.1 true 0.25\n"
                  "-7 -7\n"
                  "true 1\n"
                  "#204080 32 64 128 255\n"
                  "#80ff0000 128\n"
                  "2 edgecolor 3 edgecolor 1\n"
                  "text \xc3\xbc\n"
                  "a.png a.png null\n"
                  "x.dat DzFileProperty 3\n",
        "var f = new DzFloatProperty('f', true, true, 0.25); f.setValue(0.1);"
        "print(f.getValue(), f.getValue() === 0.1, f.getDefaultValue());"
        "var i = new DzIntProperty('i'); i.setValue(-7); print(i.getValue(), i.getDoubleValue());"
        "var b = new DzBoolProperty('b'); b.setBoolValue(true);"
        "print(b.getBoolValue(), b.getValue());"
        "var c = new DzColorProperty('c'); c.setColorValue(new Color(32, 64, 128));"
        "var v = c.getColorValue(); print(v, v.red, v.green, v.blue, v.alpha);"
        "c.setColorValue([255, 0, 0, 128]); print(c.getColorValue(), c.getColorValue().alpha);"
        "var e = new DzEnumProperty('e');"
        "['none', 'mincolor', 'edgecolor'].forEach(function (item) { e.addItem(item); });"
        "e.setValueFromString('edgecolor');"
        "print(e.getValue(), e.getStringValue(), e.getNumItems(), e.getItem(2),"
        "    e.findItemString('mincolor'));"
        "var s = new DzStringProperty('s'); s.setValue('text \\u00fc'); print(s.getValue());"
        "var m = new DzImageProperty('m'); m.setValue('a.png');"
        "print(m.getFilename(), m.getValue().getFilename(), (m.setValue(null), m.getValue()));"
        "var d = new DzFileProperty('d'); d.setValue('x.dat'); d.setType(DzFileProperty.FileLoad);"
        "print(d.getValue(), d.className(), d.getType());");
}

TEST(ScriptProperty, limitsLocksDefaultsAndMaps)
{
    EXPECT_PRINTS("1 0 1 true\n"
                  "true 1 true\n"
                  "0 true\n"
                  "false\n"
                  "true a.png true false\n"
                  "/Group true F\n",
        "var f = new DzFloatProperty('f', true, true, 0);"
        "f.setMinMax(0, 1); f.setIsClamped(true); f.setValue(7);"
        "print(f.getValue(), f.getMin(), f.getMax(), f.isClamped());"
        "f.lock(true); f.setValue(0); print(f.isLocked(), f.getValue(), f.getMax() === 1);"
        "f.lock(false); f.resetToDefault(); print(f.getValue(), f.currentValueIsDefaultValue());"
        "print(f.setMap('a.png'));"
        "f.setIsMappable(true);"
        "print(f.setMap('a.png'), f.getMapValue().getFilename(), f.isMapped(),"
        "    (f.clearMap(), f.isMapped()));"
        "f.setPath('/Group'); f.setHidden(true); f.label = 'F';"
        "print(f.getPath(), f.isHidden(), f.getLabel());");
}

TEST(ScriptProperty, aTextIsReadAsAPersonTypesIt)
{
    EXPECT_PRINTS("#0a141e\n",
        "var c = new DzColorProperty('c'); c.setValueText('10 20 30');"
        "print(c.getColorValue());");
    const ScriptRunner run("new DzFloatProperty('f').setValueText('much')");
    EXPECT_FALSE(run.succeeded());
    EXPECT_TRUE(run.error().startsWith(QLatin1String("test.dsa:1: Error: setValueText: ")))
        << run.error().toStdString();
}

TEST(ScriptProperty, aMapCanBeSharedByItsTexture)
{
    EXPECT_PRINTS("true t.png\n",
        "var a = new DzFloatProperty('a'), b = new DzFloatProperty('b');"
        "a.setIsMappable(true); b.setIsMappable(true); a.setMap('t.png');"
        "b.setMap(a.getMapValue());"
        "print(a.getMapValue() === b.getMapValue(), b.getMapValue().getFilename());"
        "b.setMap(null); a.setMap(App.getImageMgr().getImage('other.png'));");
}

TEST(ScriptProperty, aDuplicateIsTheScripts)
{
    EXPECT_PRINTS("0.5 null 0\n",
        "var brick = new VireoMatMatteBrick();"
        "var sigma = brick.findParameterByName('sigma').getProperty(0); sigma.setValue(0.5);"
        "var copy = sigma.duplicate(); print(copy.getValue(), copy.getOwner(),"
        "    new DzNode('n').addProperty(copy));");
}

TEST(ScriptParam, vectorsAndMatricesHaveTheirParts)
{
    EXPECT_PRINTS("1 2 3 2 X\n0.1\n4 5 6\n",
        "var v1 = new VireoTexFltCheckerboardBrick().findParameterByName('v1');"
        "v1.setValue(new DzVec3(1, 2, 3));"
        "print(v1.getValue(), v1.getProperty(1).getValue(), v1.getProperty(0).name);"
        "v1.getProperty(2).setValue(0.1); print(v1.getValue().z);"
        "v1.setValue([4, 5, 6]); print(v1.getValue());");
}

TEST(ScriptParam, linksAreMadeAndRemovedFromBothEnds)
{
    EXPECT_PRINTS("true 1 1 true true\n"
                  "false true\n"
                  "true 0 0\n"
                  "true 2 true\n"
                  "0 0\n",
        "var matte = new VireoMatMatteBrick(), a = new VireoTexClrMixBrick(),"
        "    b = new VireoTexClrMixBrick();"
        "var kd = matte.findParameterByName('Kd');"
        "var outA = a.findParameterByName('result'), outB = b.findParameterByName('result');"
        "print(kd.addConnection(outA), kd.getNumConnections(), outA.getNumConnections(),"
        "    kd.getConnection(0) === outA, outA.getConnection(0) === kd);"
        "print(kd.addConnection(outA), kd.isConnectedTo(outA));"
        "print(outA.removeConnection(kd), kd.getNumConnections(), outA.getNumConnections());"
        "outA.addConnection(kd);"
        "print(outB.addConnection(kd), kd.getNumConnections(), kd.getConnection(1) === outB);"
        "kd.removeAllConnections(); print(kd.getNumConnections(), outB.getNumConnections());");
}

TEST(ScriptParam, linksThatAreNotAllowedAreRefused)
{
    EXPECT_PRINTS("false false\nfalse false\nfalse\n",
        "var matte = new VireoMatMatteBrick(), mix = new VireoTexClrMixBrick(),"
        "    up = new VireoTexClrMixBrick(), number = new VireoTexFltAddBrick();"
        "function input(brick, name) { return brick.findParameterByName(name); }"
        "print(input(matte, 'Kd').canConnect(input(number, 'result')),"
        "    input(matte, 'Kd').addConnection(input(number, 'result')));"
        "input(mix, 'tex1').addConnection(input(up, 'result'));"
        "print(input(up, 'tex1').canConnect(input(mix, 'result')),"
        "    input(up, 'tex1').addConnection(input(mix, 'result')));"
        "print(input(matte, 'Kd').addConnection(null));");
}

TEST(ScriptSettings, aTreeIsBuiltAndWalked)
{
    EXPECT_PRINTS("name text 0\ncount 3 1\non true 2\nsize 0.5 3\nmore  4\n"
                  "deep 7 fallback true false\n",
        "var tree = new DzSettings(); tree.setStringValue('name', 'text');"
        "tree.setIntValue('count', 3); tree.setBoolValue('on', true);"
        "tree.setFloatValue('size', 0.5); tree.setSettingsValue('more').setIntValue('n', 7);"
        "for (var i = 0; i < tree.getNumValues(); ++i)"
        "    print(tree.getKey(i), tree.getValue(i), tree.getValueType(i));"
        "print('deep', tree.getSettingsValue('more').getIntValue('n'),"
        "    tree.getStringValue('none', 'fallback'),"
        "    tree.getSettingsValue('more') === tree.getSettingsValue('more'),"
        "    (tree.removeValue('on'), tree.hasKey('on')));");
}

TEST(ScriptSettings, aNestedTreeGoesWithItsParent)
{
    EXPECT_FAILS("test.dsa:1: TypeError: DzSettings.getNumValues: the DzSettings has been deleted",
        "var tree = new DzSettings(), inner = tree.setSettingsValue('a'); tree.clear();"
        "inner.getNumValues();");
}

TEST(ScriptOwnership, whatIsHandedToNobodyGoesWithTheScript)
{
    const int before = DzMaterial::getNumMaterials();
    EXPECT_PRINTS("3\n",
        QStringLiteral("var first = DzMaterial.getNumMaterials();"
                       "new VireoBrickUser(); new DzDefaultMaterial('m'); new VireoBrickUser();"
                       "print(DzMaterial.getNumMaterials() - first);"));
    EXPECT_EQ(DzMaterial::getNumMaterials(), before);
}

TEST(ScriptOwnership, anErrorLeavesNothingBehind)
{
    const int before = DzMaterial::getNumMaterials();
    const ScriptRunner run("var user = new VireoBrickUser();"
                           "user.addBrick(new VireoMatMatteBrick()); new DzNode('n'); missing();");
    EXPECT_FALSE(run.succeeded());
    dzUndoStack->clearAll();
    EXPECT_EQ(DzMaterial::getNumMaterials(), before);
}

TEST_F(ScriptScene, whatIsHandedOverStays)
{
    EXPECT_PRINTS("0 0 0\n",
        "var node = new DzNode('figure'), object = new DzObject('o'), shape = new DzShape('s');"
        "var user = new VireoBrickUser(); user.name = 'skin';"
        "user.addBrick(new VireoRootBrick());"
        "var added = shape.addMaterial(user);"
        "node.setObject(object); print(object.addShape(shape), added, Scene.addNode(node));");
    ASSERT_EQ(dzScene->getNumNodes(), 1);
    DzShape* shape = dzScene->findNode(QStringLiteral("figure"))->getObject()->getCurrentShape();
    auto* user = qobject_cast<VireoBrickUser*>(shape->findMaterial(QStringLiteral("skin")));
    ASSERT_NE(user, nullptr);
    EXPECT_EQ(user->getNumBricks(), 1);
}

TEST_F(ScriptScene, whatIsGivenBackIsTheScriptsAgain)
{
    EXPECT_PRINTS("0 0 0 1\n",
        "var node = new DzNode('a'), child = new DzNode('b'); node.addNodeChild(child);"
        "Scene.addNode(node);"
        "print(Scene.removeNode(node), node.removeNodeChild(child), Scene.addNode(child),"
        "    Scene.getNumNodes());");
    EXPECT_EQ(dzScene->getNumNodes(), 1);
}

TEST_F(ScriptScene, nothingHasTwoOwners)
{
    EXPECT_FAILS("test.dsa:1: TypeError: DzNode.setObject: argument 1 belongs to another object "
                 "already",
        "var a = new DzNode('a'), b = new DzNode('b'); a.setObject(new DzObject('o'));"
        "b.setObject(a.getObject());");
    EXPECT_FAILS("test.dsa:1: TypeError: DzElement.addProperty: argument 1 belongs to another "
                 "object already",
        "new DzNode('n').addProperty("
        "new VireoMatMatteBrick().findParameterByName('Kd').getProperty(0));");
    EXPECT_FAILS("test.dsa:1: TypeError: DzScene.addNode: argument 1 belongs to another object "
                 "already",
        "var n = new DzNode('n'); Scene.addNode(n); Scene.addNode(n);");
}

TEST(ScriptOwnership, aRefusedObjectStaysTheScripts)
{
    EXPECT_PRINTS("0 2 1 0\n",
        "var node = new DzNode('n'), again = new DzFloatProperty('p');"
        "print(node.addProperty(new DzFloatProperty('p')), node.addProperty(again),"
        "    node.getNumProperties(), new DzNode('m').addProperty(again));");
}

TEST(ScriptOwnership, aDeletedObjectGivesAnError)
{
    EXPECT_FAILS("test.dsa:2: TypeError: DzBase.className: the VireoMatMatteBrick has been deleted",
        "UndoStack.lock();"
        "var user = new VireoBrickUser(), brick = new VireoMatMatteBrick(); user.addBrick(brick);"
        "user.deleteBrick(brick);\nbrick.className();");
    EXPECT_FAILS("test.dsa:2: TypeError: VireoBrickUser.addBrick: argument 1 is a "
                 "VireoMatMatteBrick that has been deleted",
        "var user = new VireoBrickUser(), brick = new VireoMatMatteBrick(); brick.deleteLater();\n"
        "user.addBrick(brick);");
    EXPECT_FAILS("test.dsa:2: TypeError: DzBrickParam.getLabel: the VireoExtPropertyParam has been "
                 "deleted",
        "var brick = new VireoMatMatteBrick(), kd = brick.getParameter(2); brick.deleteLater();\n"
        "kd.getLabel();");
    EXPECT_FAILS("test.dsa:2: TypeError: DzBase.name: the VireoMatMatteBrick has been deleted",
        "var brick = new VireoMatMatteBrick(); brick.deleteLater();\nbrick.name;");
    EXPECT_PRINTS("VireoMatMatteBrick (deleted)\n",
        "var brick = new VireoMatMatteBrick(); brick.deleteLater(); print(brick);");
}

TEST(ScriptOwnership, onlyItsOwnObjectsAreAScriptsToDelete)
{
    EXPECT_FAILS("test.dsa:1: TypeError: deleteLater: the DzScene belongs to another object",
        "Scene.deleteLater()");
    EXPECT_FAILS("test.dsa:1: TypeError: deleteLater: the VireoMatMatteBrick belongs to another "
                 "object",
        "var user = new VireoBrickUser(), brick = new VireoMatMatteBrick(); user.addBrick(brick);"
        "brick.deleteLater();");
}

TEST(ScriptBrickUser, allEntriesAreThere)
{
    EXPECT_PRINTS("42 4\n",
        "var user = new VireoBrickUser();"
        "var methods = ['setDiffuseColor', 'setBaseOpacity', 'setColorMap', 'setOpacityMap',"
        "    'getDiffuseColor', 'getBaseOpacity', 'isColorMappable', 'isOpacityMappable',"
        "    'getColorMap', 'getOpacityMap', 'getMaterialName', 'needsTangentSpaceParams',"
        "    'shouldAlwaysEmbed', 'getExtension', 'setAttributes', 'getAttributes',"
        "    'getBrickUserName', 'setBrickUserName', 'getNumBrickSets', 'getBrickSet', 'addBrick',"
        "    'getBrick', 'getBrickIDs', 'getBrickIDs', 'deleteBrick', 'deleteBrick',"
        "    'deleteAllBricks', 'invalidateSets', 'moveBrick', 'getIdentifier', 'setIdentifier',"
        "    'updateIdentifierOnSetInvalidate', 'isInEditMode', 'startEditMode', 'endEditMode',"
        "    'applyToScene', 'fromScene', 'applyElementPropsToSettings', 'usesLocalShaderSpace',"
        "    'removeSet', 'brickIDChanged', 'resolvePropertyOwnership'];"
        "var signals = ['brickRemoved', 'brickAdded', 'generateFilesStarted',"
        "    'generateFilesFinished'];"
        "print(methods.filter(function (name) {"
        "    return typeof VireoBrickUser.prototype[name] === 'function'; }).length,"
        "    signals.filter(function (name) { return user[name].connect; }).length);");
}

TEST(ScriptBrickUser, itsOwnValuesAreFixed)
{
    EXPECT_PRINTS("#000000 1 false false null null Vireo - LuxRender false true sskn\n"
                  "1007 1016\n",
        "var user = new VireoBrickUser(); user.setDiffuseColor('red'); user.setBaseOpacity(0.5);"
        "user.setColorMap(null); user.setOpacityMap(App.getImageMgr().getImage('a.png'));"
        "print(user.getDiffuseColor(), user.getBaseOpacity(), user.isColorMappable(),"
        "    user.isOpacityMappable(), user.getColorMap(), user.getOpacityMap(),"
        "    user.getMaterialName(), user.needsTangentSpaceParams(), user.shouldAlwaysEmbed(),"
        "    user.getExtension());"
        "print(VireoBrickUser.VireoExtMaterial, VireoBrickUser.VireoExtFresnel);");
}

TEST(ScriptBrickUser, bricksComeGoAndMove)
{
    EXPECT_PRINTS("1 2 0 1,2\n7,1,2\ntrue 1\ntrue 0 1 true\ntrue false null\n0\n",
        "var user = new VireoBrickUser(), other = new VireoBrickUser();"
        "var a = new VireoMatMatteBrick(), b = new VireoTexClrMixBrick();"
        "print(user.addBrick(a), user.addBrick(b), user.addBrick(a), user.getBrickIDs());"
        "var ids = [7]; user.getBrickIDs(ids); print(ids);"
        "print(user.deleteBrick(1), user.getBrickIDs().length);"
        "print(user.moveBrick(2, other), user.getBrickIDs().length, other.getBrickIDs().length,"
        "    b.getBrickUser() === other);"
        "print(other.deleteBrick(b), other.deleteBrick(99), other.getBrick(1));"
        "user.addBrick(new VireoMatMatteBrick()); user.deleteAllBricks();"
        "print(user.getBrickIDs().length);");
}

TEST(ScriptBrickUser, setsAndIdentifier)
{
    EXPECT_PRINTS("1 true true 1\nnull 0\n{11111111-2222-3333-4444-555555555555}\n",
        "UndoStack.lock(); var user = new VireoBrickUser(), root = new VireoRootBrick();"
        "user.addBrick(root); var set = user.getBrickSet(0);"
        "print(user.getNumBrickSets(), set.getRoot() === root, set.getBrickUserOwner() === user,"
        "    set.getShaderType());"
        "user.deleteBrick(root); print(set.getRoot(), set.getShaderType());"
        "user.setIdentifier('{11111111-2222-3333-4444-555555555555}');"
        "print(user.getIdentifier());");
    EXPECT_FAILS(
        "test.dsa:1: TypeError: VireoBrickUser.setIdentifier: argument 1 is \"x\"; a QUuid "
        "is wanted",
        "new VireoBrickUser().setIdentifier('x')");
}

TEST(ScriptBrickUser, theNetworkIsASettingsTree)
{
    EXPECT_PRINTS("2 true\n",
        "var user = new VireoBrickUser(), copy = new VireoBrickUser(), tree = new DzSettings();"
        "var root = new VireoRootBrick(), matte = new VireoMatMatteBrick();"
        "user.addBrick(root); user.addBrick(matte);"
        "root.findParameterByName('material').addConnection(matte.findParameterByName('result'));"
        "user.getAttributes(tree); copy.setAttributes(tree);"
        "print(copy.getBrickIDs().length, copy.getBrick(1).getSceneCode(true).exportText"
        "    === root.getSceneCode(true).exportText);");
}

TEST(ScriptBrick, imagesAreWrittenAsFilesWhenAsked)
{
    EXPECT_PRINTS("1 false\n0 true\n",
        "var image = new VireoTexClrImageMapBrick();"
        "image.findParameterByName('filename').getProperty(0).setMap('wood.png');"
        "[image.getSceneCode(true), image.getSceneCode(true, true)].forEach(function(code) {"
        "    print(code.unwrittenMaps.length, code.materialText.indexOf('[\"wood.png\"]') > 0);"
        "});");
}

TEST_F(ScriptScene, aNetworkIsAppliedAndComesBack)
{
    EXPECT_PRINTS("true 1 Apply Mine\n1 2 true\nnull\n",
        "var node = new DzNode('n'), object = new DzObject('o'), shape = new DzShape('s');"
        "var skin = new DzDefaultMaterial('skin'); shape.addMaterial(skin); object.addShape(shape);"
        "node.setObject(object); Scene.addNode(node); skin.select(true);"
        "var user = new VireoBrickUser(); user.setBrickUserName('Mine');"
        "var root = new VireoRootBrick(), matte = new VireoMatMatteBrick();"
        "user.addBrick(root); user.addBrick(matte);"
        "root.findParameterByName('material').addConnection(matte.findParameterByName('result'));"
        "UndoStack.clearAll(); user.applyToScene();"
        "print(skin.findProperty('LuxRender_Lm_002_Kd') !== null, UndoStack.getNumUndoItems(),"
        "    UndoStack.getUndoCaption());"
        "var back = user.fromScene();"
        "print(back.length, back[0].getBrickIDs().length,"
        "    back[0].getBrick(1).getSceneCode(true).exportText"
        "        === root.getSceneCode(true).exportText);"
        "UndoStack.undo(); print(skin.findProperty('LuxRender_Lm_002_Kd'));");
}

TEST(ScriptUndo, eachChangeIsOneStep)
{
    EXPECT_PRINTS("1 Change Color Band\n3 true 0\n2\n3\n",
        "var user = new VireoBrickUser();"
        "var band = new VireoTexClrBAndBrick(); user.addBrick(band); UndoStack.clearAll();"
        "band.setBrickTitle('Color Band'); UndoStack.clearAll();"
        "var count = band.findProperty('count'); var before = band.getNumParameters();"
        "count.setValue(2); count.setValue(3);"
        "UndoStack.undo(); print(UndoStack.getNumUndoItems(), UndoStack.getUndoCaption());"
        "UndoStack.redo(); var after = count.getValue();"
        "UndoStack.undo(); UndoStack.undo();"
        "print(after, band.getNumParameters() === before, count.getValue());"
        "UndoStack.redo(); print(count.getValue()); UndoStack.redo(); print(count.getValue());");
}

TEST(ScriptUndo, holdsGatherChanges)
{
    EXPECT_PRINTS("1 Both 0 0\n0.5 2\n0 0 0\n",
        "var brick = new VireoMatMatteBrick();"
        "var sigma = brick.findParameterByName('sigma').getProperty(0);"
        "var bump = brick.findParameterByName('bumpmap').getProperty(0);"
        "UndoStack.beginHold(); sigma.setValue(0.5); bump.setValue(2); UndoStack.accept('Both');"
        "var steps = UndoStack.getNumUndoItems(), caption = UndoStack.getUndoCaption();"
        "UndoStack.undo(); print(steps, caption, sigma.getValue(), bump.getValue());"
        "UndoStack.redo(); print(sigma.getValue(), bump.getValue());"
        "UndoStack.undo(); UndoStack.beginHold(); sigma.setValue(0.5); UndoStack.cancel();"
        "UndoStack.lock(); bump.setValue(3); bump.setValue(0); UndoStack.unlock();"
        "print(sigma.getValue(), bump.getValue(), UndoStack.getNumUndoItems());");
}

TEST(ScriptUndo, whatAScriptLeavesOpenIsClosed)
{
    const ScriptRunner locked("UndoStack.lock(); UndoStack.lock(); missing();");
    EXPECT_FALSE(dzUndoStack->isLocked());
    const ScriptRunner held("UndoStack.beginHold(); UndoStack.beginHold();");
    EXPECT_EQ(dzUndoStack->getHoldDepth(), 0);
    const DzUndoStackLock lock;
    const ScriptRunner unlocked("UndoStack.unlock(); UndoStack.unlock(); UndoStack.drop();");
    EXPECT_TRUE(unlocked.succeeded());
    EXPECT_EQ(dzUndoStack->getLockCount(), 1);
}

TEST(ScriptSignal, functionsRunAfterTheCallThatEmits)
{
    EXPECT_PRINTS("changed 0.5\nafter\nlabel New\nname Other\nagain\n",
        "var f = new DzFloatProperty('f');"
        "function changed() { print('changed', f.getValue()); }"
        "f.currentValueChanged.connect(changed);"
        "f.labelChanged.connect({ word: 'label' }, function (text) { print(this.word, text); });"
        "f.nameChanged.connect(function (text) { print('name', text); });"
        "f.setValue(0.5); print('after'); f.label = 'New'; f.setName('Other');"
        "f.currentValueChanged.disconnect(changed); f.setValue(1); print('again');");
}

TEST(ScriptSignal, objectsArriveAsTheyAre)
{
    EXPECT_PRINTS("true 1\n",
        "var user = new VireoBrickUser(), brick = new VireoMatMatteBrick();"
        "user.brickAdded.connect(function (added) { print(added === brick, brick.getBrickID()); });"
        "user.addBrick(brick);");
}

TEST(ScriptSignal, aFunctionMayDeleteTheSender)
{
    EXPECT_PRINTS("0\n",
        "var user = new VireoBrickUser(), brick = new VireoTexClrBAndBrick(); user.addBrick(brick);"
        "brick.findProperty('count').currentValueChanged.connect(function () {"
        "    UndoStack.clearAll(); UndoStack.lock(); user.deleteAllBricks(); });"
        "brick.findProperty('count').setValue(3); print(user.getBrickIDs().length);");
}

TEST(ScriptSignal, anErrorInAFunctionIsAnErrorOfTheScript)
{
    EXPECT_FAILS("test.dsa:2: Error: inside",
        "var f = new DzFloatProperty('f'); f.currentValueChanged.connect(function () {\n"
        "    throw new Error('inside'); });\n f.setValue(1); print('not reached');");
    EXPECT_PRINTS("caught inside\n1\n",
        "var f = new DzFloatProperty('f');"
        "f.currentValueChanged.connect(function () { throw new Error('inside'); });"
        "try { f.setValue(1); } catch (error) { print('caught', error.message); }"
        "print(f.getValue());");
}

TEST(ScriptSignal, functionsThatSetEachOtherOffEndWithAnError)
{
    EXPECT_FAILS(
        "test.dsa:1: Error: the functions connected to signals keep setting each other off",
        "UndoStack.lock(); var f = new DzFloatProperty('f'); f.setMinMax(0, 1e9);"
        "f.currentValueChanged.connect(function () { f.setValue(1 - f.getValue()); });"
        "f.setValue(1);");
}

TEST(ScriptSignal, anyNumberOfFunctionsMayBeConnected)
{
    // More than Qt has slot numbers for.
    EXPECT_PRINTS("70000 70001\n0\n",
        "var f = new DzFloatProperty('f'), calls = 0, all = [];"
        "for (var i = 0; i < 70000; ++i) {"
        "    all.push((function () { return function () { ++calls; }; })());"
        "    f.currentValueChanged.connect(all[i]); }"
        "f.setValue(0.5); var before = calls;"
        "f.currentValueChanged.connect(function () { ++calls; });"
        "calls = 0; f.setValue(0.25); print(before, calls);"
        "for (i = 0; i < 70000; ++i) f.currentValueChanged.disconnect(all[i]);"
        "calls = -1; f.setValue(0.75); print(calls);");
    EXPECT_PRINTS("100\n",
        "var calls = 0; for (var i = 0; i < 70000; ++i) { var n = new DzNode('n');"
        "n.labelChanged.connect(function () { ++calls; });"
        "if (i >= 69900) n.label = 'x'; n.deleteLater(); } print(calls);");
}

TEST(ScriptSignal, aFunctionIsCalledAsOftenAsItIsConnectedAndInThatOrder)
{
    EXPECT_PRINTS("a\nb\na\nb\n",
        "var f = new DzFloatProperty('f');"
        "function a() { print('a'); } function b() { print('b'); }"
        "f.currentValueChanged.connect(a); f.currentValueChanged.connect(b);"
        "f.currentValueChanged.connect(a); f.setValue(0.5);"
        "f.currentValueChanged.disconnect(a); f.setValue(1);");
    EXPECT_FAILS("test.dsa:1: Error: disconnect: this function is not connected",
        "var f = new DzFloatProperty('f'); function a() {}"
        "f.currentValueChanged.connect(a); f.currentValueChanged.connect(a);"
        "f.currentValueChanged.disconnect(a); f.currentValueChanged.disconnect(a);");
}

TEST(ScriptSignal, onlyFunctionsCanBeConnected)
{
    EXPECT_FAILS("test.dsa:1: TypeError: connect: a function is wanted, or an object and a "
                 "function",
        "new DzNode('n').labelChanged.connect('text')");
    EXPECT_FAILS("test.dsa:1: Error: disconnect: this function is not connected",
        "new DzNode('n').labelChanged.disconnect(print)");
}

TEST_F(ScriptScene, nodesAndSelection)
{
    EXPECT_PRINTS("3 a b c\n1 b true\nb\n3\nnull\n",
        "['a', 'b', 'c'].forEach(function (name) { Scene.addNode(new DzNode(name)); });"
        "print(Scene.getNumNodes(), Scene.getNodeList().map(function (node) {"
        "    return node.name; }).join(' '));"
        "Scene.findNode('b').select(true);"
        "print(Scene.getNumSelectedNodes(), Scene.getSelectedNode(0).name,"
        "    Scene.findNode('b').isSelected());"
        "print(Scene.getPrimarySelection().name);"
        "Scene.selectAllNodes(true); print(Scene.getSelectedNodeList().length);"
        "print(Scene.findNode('none'));");
}

TEST_F(ScriptScene, aSceneFileIsLoadedAndSaved)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("box.obj"));
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("o Box\nv 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\n"
                   "usemtl Red\nf 1 2 3\nusemtl Blue\nf 1 2 4\n");
    }
    const ScriptRunner run(
        QStringLiteral("Scene.loadScene(args[0]);"
                       "var shape = Scene.getNode(0).getObject().getCurrentShape();"
                       "print(shape.getAllMaterials().map(function (material) {"
                       "    return material.name; }).join(' '));"
                       "var blue = shape.findMaterial('Blue'); blue.select(true);"
                       "print(shape.getAllSelectedMaterials().length,"
                       "    shape.getSelectedMaterial(0) === blue);"
                       "blue.setDiffuseColor('#102030');"
                       "Scene.saveScene(args[1]);"
                       "Scene.loadScene(args[1]);"
                       "print(Scene.getNode(0).getObject().getShape(0)"
                       "    .findMaterial('Blue').getDiffuseColor());"),
        { path, folder.filePath(QStringLiteral("box.duf")) });
    EXPECT_TRUE(run.succeeded()) << run.error().toStdString();
    EXPECT_TEXT(QStringLiteral("Red Blue\n1 true\n#102030\n"), run.output());
    const ScriptRunner missing("\nScene.loadScene('none.duf')");
    EXPECT_EQ(missing.error(),
        QStringLiteral("test.dsa:2: Error: loadScene: cannot read none.duf: No such file or "
                       "directory; check its name and its permissions"));
}

TEST(ScriptFiles, textIsWrittenAsAWholeAndRead)
{
    QTemporaryDir folder;
    const ScriptRunner run(
        QStringLiteral("var path = args[0] + '/t.txt'; var file = new DzFile(path);"
                       "print(file.exists(), file.open(DzFile.WriteOnly), file.isOpen());"
                       "file.writeLine('one \\u00fc'); file.write('two'); print(file.exists());"
                       "print(file.close(), file.exists());"
                       "file.open(DzFile.Append); file.write('\\r\\n\\nlast'); file.close();"
                       "file.open(DzFile.ReadOnly);"
                       "print(file.readLine(), '|', file.readLines().join('|'), file.eof());"
                       "file.close();"
                       "print(readFile(path).length, file.remove(), file.exists());"
                       "writeFile(path, 'short'); print(readFile(path));"),
        { folder.path() });
    EXPECT_TRUE(run.succeeded()) << run.error().toStdString();
    EXPECT_TEXT(QStringLiteral("false true true\nfalse\ntrue true\n"
                               "one \u00fc | two||last true\n16 true false\nshort\n"),
        run.output());
}

TEST(ScriptFiles, failuresAreTold)
{
    QTemporaryDir folder;
    const QStringList arguments { folder.path() };
    const ScriptRunner run(
        QStringLiteral("var file = new DzFile(args[0] + '/no/t.txt');"
                       "print(file.open(DzFile.ReadOnly), file.error().length > 20);"
                       "print(file.open(DzFile.WriteOnly), file.write('x'), file.close());"
                       "print(file.error().replace(args[0], 'DIR'));"
                       "print(file.write('x'), file.open(99), file.read() === '');"
                       "new DzFile('a').open(DzFile.WriteOnly);"),
        arguments);
    EXPECT_TEXT(QStringLiteral("false true\ntrue true false\n"
                               "cannot write DIR/no/t.txt: there is no such folder; make the "
                               "folder or choose another place\n"
                               "false false true\n"),
        run.output());
    EXPECT_EQ(ScriptRunner(QStringLiteral("readFile(args[0])"), arguments).error(),
        QStringLiteral("test.dsa:1: Error: readFile: cannot read %1: it is a folder; name a file")
            .arg(folder.path()));
    EXPECT_EQ(ScriptRunner(QStringLiteral("writeFile(args[0], 'x')"), arguments).error(),
        QStringLiteral("test.dsa:1: Error: writeFile: cannot write %1: it is a folder; name a file")
            .arg(folder.path()));
    EXPECT_EQ(ScriptRunner("readFile(3)").error(),
        QStringLiteral("test.dsa:1: TypeError: readFile: argument 1 must be a text"));
    EXPECT_EQ(ScriptRunner("new DzFile()").error(),
        QStringLiteral("test.dsa:1: TypeError: new DzFile: a path is wanted"));
}

TEST(ScriptFiles, foldersAreListedInOrder)
{
    QTemporaryDir folder;
    const ScriptRunner run(
        QStringLiteral("var dir = new DzDir(args[0]); dir.mkpath('sub/deep');"
                       "['b.txt', 'B.txt', 'a.dat', '\\u00fc.txt'].forEach(function (name) {"
                       "    writeFile(dir.filePath(name), name); });"
                       "print(dir.entryList().join(' '));"
                       "print(dir.entryList('*.txt').join(' '));"
                       "print(dir.entryList('*.dat *.none', DzDir.Files).join(' '));"
                       "print(dir.entryList('', DzDir.Dirs).join(' '));"
                       "print(dir.cd('sub'), dir.dirName(), dir.exists(), dir.cdUp());"
                       "var info = new DzFileInfo(dir.filePath('b.txt'));"
                       "print(info.exists(), info.isFile(), info.isDir(), info.size(),"
                       "    info.fileName(), info.baseName(), info.extension(),"
                       "    info.path() === args[0], info.absFilePath() === info.filePath());"),
        { folder.path() });
    EXPECT_TRUE(run.succeeded()) << run.error().toStdString();
    EXPECT_TEXT(QStringLiteral("B.txt a.dat b.txt sub \u00fc.txt\nB.txt b.txt \u00fc.txt\na.dat\n"
                               "sub\ntrue sub true true\n"
                               "true true false 5 b.txt b txt true true\n"),
        run.output());
}

TEST(ScriptFiles, networksAreLoadedAndSaved)
{
    QTemporaryDir folder;
    const ScriptRunner run(
        QStringLiteral("var user = new VireoBrickUser(), file = new DzNetworkFile();"
                       "file.load(args[0], user);"
                       "print(user.getBrickIDs().length, user.getBrickUserName(),"
                       "    file.getWarnings().length);"
                       "file.save(args[1], user);"
                       "print(readFile(args[0]) === readFile(args[1]));"),
        { projectPath(QStringLiteral("examples/velvet.sskn")),
            folder.filePath(QStringLiteral("v.sskn")) });
    EXPECT_TRUE(run.succeeded()) << run.error().toStdString();
    EXPECT_TEXT(QStringLiteral("2 Velvet 0\ntrue\n"), run.output());
    EXPECT_FAILS("test.dsa:1: Error: cannot read none.sskn: No such file or directory; check its "
                 "name and its permissions",
        "new DzNetworkFile().load('none.sskn', new VireoBrickUser())");
    EXPECT_FAILS("test.dsa:1: TypeError: DzNetworkFile.load: argument 2 is a "
                 "VireoMatMatteBrick; a brick user is wanted",
        "new DzNetworkFile().load('none.sskn', new VireoMatMatteBrick())");
    EXPECT_FAILS("test.dsa:1: Error: load: a brick user is wanted",
        "new DzNetworkFile().load('none.sskn', null)");
}

TEST(ScriptApplication, messagesGoToTheApplication)
{
    const Warnings warnings;
    EXPECT_PRINTS("", "App.warning('be careful'); App.log('noted');");
    EXPECT_EQ(warnings.messages, QStringList { QStringLiteral("be careful") });
    EXPECT_PRINTS(
        "true true\n", "print(App.getScene() === Scene, App.getUndoStack() === UndoStack);");
}

// Arguments ----------------------------------------------------------------------------------

TEST(ScriptArguments, enumerationsTakeTheirItemsAlone)
{
    EXPECT_PRINTS("2\n",
        "var f = new DzFileProperty('f'); f.setType(DzFileProperty.Directory); "
        "print(f.getType());");
    for (const char* type : { "2147483647", "-1", "4" })
        EXPECT_FAILS(QStringLiteral("test.dsa:1: TypeError: DzFileProperty.setType: argument 1 is "
                                    "%1; one of DzFileProperty.FileSave, DzFileProperty.FileOpen, "
                                    "DzFileProperty.Directory, DzFileProperty.FileLoad is wanted")
                         .arg(QLatin1String(type))
                         .toUtf8()
                         .constData(),
            QStringLiteral("new DzFileProperty('f').setType(%1)").arg(QLatin1String(type)));
}

TEST(ScriptArguments, theLargestFloatComesBack)
{
    EXPECT_PRINTS("true true true\n",
        "var p = new DzFloatProperty('p'); p.setMinMax(-3.4028235e+38, 3.4028235e+38);"
        "p.setValue(3.4028235e+38); var most = p.getValue(); p.setValue(most);"
        "var equal = p.getValue() === most; p.setValue(-most);"
        "var user = new VireoBrickUser(), brick = new VireoMatMatteBrick(); user.addBrick(brick);"
        "var v = brick.addCustomInput(VireoBrickUser.VireoExtVector, 'v', 'v', 0);"
        "v.setValue([most, -most, 0]); v.setValue(v.getValue());"
        "print(equal, p.getValue() === -most, v.getValue().x === most);");
    EXPECT_FAILS(
        "test.dsa:1: TypeError: DzFloatProperty.setValue: argument 1 is 3.41e+38; a number "
        "from -3.40282e+38 to 3.40282e+38 is wanted",
        "new DzFloatProperty('p').setValue(3.41e38)");
}

TEST(ScriptArguments, settingsThatAreReadMayBeMissingAndOthersNot)
{
    EXPECT_PRINTS("1\n",
        "var user = new VireoBrickUser(), brick = new VireoMatMatteBrick(); user.addBrick(brick);"
        "user.setAttributes(null); brick.setAttributes(null);"
        "user.applyElementPropsToSettings({ a: brick }, null, brick);"
        "print(user.getBrickIDs().length);");
    EXPECT_FAILS("test.dsa:1: TypeError: VireoBrickUser.getAttributes: argument 1 is null; a "
                 "DzSettings is wanted",
        "new VireoBrickUser().getAttributes(null)");
}

TEST(ScriptArguments, aVectorIsSetInOneStep)
{
    EXPECT_PRINTS("1 4 5 6\n0 1 2 3\n",
        "var brick = new VireoMatMatteBrick(), user = new VireoBrickUser(); user.addBrick(brick);"
        "UndoStack.lock(); var v = brick.addCustomInput(VireoBrickUser.VireoExtVector, 'v', 'v', "
        "0); v.setValue([1, 2, 3]);"
        "UndoStack.unlock(); UndoStack.clearAll(); v.setValue([4, 5, 6]);"
        "print(UndoStack.getNumUndoItems(), v.getValue()); UndoStack.undo();"
        "print(UndoStack.getNumUndoItems(), v.getValue());");
}

TEST(ScriptArguments, aPathWithNulIsAnErrorWhereverItIsGiven)
{
    const char* const cause = "argument 1 contains a NUL character, which no path can";
    for (const char* call : { "readFile", "writeFile", "include", "loadScene" }) {
        const QString code = QLatin1String(call) == QLatin1String("loadScene")
            ? QStringLiteral("Scene.loadScene('a\\0b')")
            : QStringLiteral("%1('a\\0b', 'x')").arg(QLatin1String(call));
        EXPECT_FAILS(QStringLiteral("test.dsa:1: TypeError: %1: %2")
                         .arg(QLatin1String(call), QLatin1String(cause))
                         .toUtf8()
                         .constData(),
            code);
    }
    for (const char* name : { "DzFile", "DzFileInfo", "DzDir" })
        EXPECT_FAILS(QStringLiteral("test.dsa:1: TypeError: new %1: %2")
                         .arg(QLatin1String(name), QLatin1String(cause))
                         .toUtf8()
                         .constData(),
            QStringLiteral("new %1('a\\0b')").arg(QLatin1String(name)));
    EXPECT_FAILS(QStringLiteral("test.dsa:1: TypeError: DzDir.mkpath: %1")
                     .arg(QLatin1String(cause))
                     .toUtf8()
                     .constData(),
        "new DzDir('.').mkpath('a\\0b')");
    EXPECT_FAILS(QStringLiteral("test.dsa:1: TypeError: DzNetworkFile.save: %1")
                     .arg(QLatin1String(cause))
                     .toUtf8()
                     .constData(),
        "new DzNetworkFile().save('a\\0b', new VireoBrickUser())");
}

TEST(ScriptArguments, settingsMayBeDeepAndAreNotWrittenThen)
{
#ifdef __SANITIZE_ADDRESS__
    const int depth = 20000; // its frames are larger too
#else
    const int depth = 200000;
#endif
    const QTemporaryDir folder;
    EXPECT_PRINTS("true true\n",
        QStringLiteral(
            "var a = new DzSettings(), b = new DzSettings(), s = a;"
            "for (var i = 0; i < %2; ++i) { s.setIntValue('n', i); s = "
            "s.setSettingsValue('s'); }"
            "a.copySetting('s', b); var brick = new VireoMatMatteBrick();"
            "a.copySetting('s', brick.getBrickSettings()); a.clear();"
            "var user = new VireoBrickUser(), said = ''; user.addBrick(brick);"
            "try { new DzNetworkFile().save('%1/x.sskn', user); } catch (e) { said = e.message; }"
            "print(said.indexOf('nested within each other') > 0,"
            "    !new DzFileInfo('%1/x.sskn').exists());")
            .arg(folder.path())
            .arg(depth));
}

TEST(ScriptArguments, aListThatContainsItselfIsNamed)
{
    EXPECT_FAILS(
        "test.dsa:1: TypeError: VireoBrickUser.setIdentifier: argument 1 is a list of more "
        "than 64 levels, or contains itself",
        "var list = []; list.push(list, list); new VireoBrickUser().setIdentifier(list)");
}
