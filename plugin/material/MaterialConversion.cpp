// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MaterialConversion.h"

#include "ImageAndConstantTextureBricks.h"
#include "MaterialBricks.h"
#include "NetworkCode.h"
#include "NetworkPersistence.h"
#include "SurfaceProperties.h"
#include "VireoBrickUser.h"
#include "VireoRootBrick.h"
#include "dzapp.h"
#include "dzboolproperty.h"
#include "dzbrickparam.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzmainwindow.h"
#include "dzscene.h"
#include "dzstringproperty.h"
#include "dzundostack.h"

#include <QCoreApplication>
#include <QMessageBox>

namespace {

// Applying ----------------------------------------------------------------------------------

void removeRenderProperties(DzMaterial* material)
{
    for (int i = material->getNumProperties() - 1; i >= 0; --i)
        if (isRenderProperty(material->getProperty(i)->getName()))
            removeAnyProperty(material, material->getProperty(i));
}

/// Adds a property in place of one of the same name.
void replaceProperty(DzMaterial* material, DzProperty* property)
{
    // A name that is taken is refused, which is rare.
    if (material->addProperty(property) == DZ_NO_ERROR)
        return;
    removeAnyProperty(material, material->findProperty(property->getName()));
    material->addProperty(property);
}

void addText(DzMaterial* material, const QString& name, const char* label, const QString& text)
{
    DzStringProperty* property = new DzStringProperty(name, true);
    property->setLabel(QLatin1String(label));
    property->setPath(QLatin1String("LuxRender"));
    property->setValue(text);
    replaceProperty(material, property);
}

/// Puts a copy of a network's property on the surface, under the name that the text refers to.
void publish(DzMaterial* material, const DzProperty* property, const QString& name)
{
    DzProperty* copy = property->duplicate();
    copy->setIsUserProperty(true);
    copy->setName(name);
    const QString path = copy->getPath();
    if (path.size() < 2 || path == QLatin1String("/General"))
        copy->setPath(QLatin1String("/LuxRender"));
    replaceProperty(material, copy);
}

void applyTo(DzMaterial* material, const GeneratedCode& code, const DzSettings& attributes)
{
    removeRenderProperties(material);
    addText(material, RenderNames::materialText(), "LuxRender Extra Settings", code.materialText);
    addText(material, RenderNames::meshText(), "LuxRender Extra Mesh Settings", code.resultName);
    for (int i = 0; i < code.placeholderKeys.size(); ++i)
        publish(material, code.placeholderKeys.at(i), code.placeholderNames.at(i));
    storeNetwork(material, attributes);
}

// Converting --------------------------------------------------------------------------------

VireoMaterialBrick* createMaterialBrick(const QString& type)
{
    if (type == QLatin1String("cloth"))
        return new VireoMatClothBrick;
    if (type == QLatin1String("glass"))
        return new VireoMatGlassBrick;
    if (type == QLatin1String("glass2"))
        return new VireoMatGlass2Brick;
    if (type == QLatin1String("glossy"))
        return new VireoMatGlossyBrick;
    if (type == QLatin1String("glossytranslucent"))
        return new VireoMatGlossyTranslucentBrick;
    if (type == QLatin1String("layered"))
        return new VireoMatLayeredBrick;
    if (type == QLatin1String("matte"))
        return new VireoMatMatteBrick;
    if (type == QLatin1String("mattetranslucent"))
        return new VireoMatMatteTranslucentBrick;
    if (type == QLatin1String("metal2"))
        return new VireoMatMetal2Brick;
    if (type == QLatin1String("mirror"))
        return new VireoMatMirrorBrick;
    if (type == QLatin1String("mix"))
        return new VireoMatMixBrick;
    if (type == QLatin1String("null"))
        return new VireoMatNullBrick;
    if (type == QLatin1String("roughglass"))
        return new VireoMatRoughGlassBrick;
    if (type == QLatin1String("scatter"))
        return new VireoMatScatterBrick;
    if (type == QLatin1String("velvet"))
        return new VireoMatVelvetBrick;
    return nullptr;
}

/// The property that names a surface's type; null when there is none.
const DzEnumProperty* typeProperty(const DzMaterial* material)
{
    return qobject_cast<DzEnumProperty*>(material->findProperty(RenderNames::materialType()));
}

/// The type of a surface that neither names its type nor keeps a network. The second word has no
/// brick, for the bricks' own word is spelt without the underscore.
QString guessedType(const DzMaterial* material)
{
    const DzBoolProperty* translucent
        = qobject_cast<DzBoolProperty*>(material->findProperty(QLatin1String("Specular2 Active")));
    return QLatin1String(
        translucent && translucent->getBoolValue() ? "glossy_translucent" : "glossy");
}

/// The property when it holds a whole number and nothing that looks like one; else null.
const DzIntProperty* asInteger(const DzProperty* property)
{
    const bool isOther = qobject_cast<const DzBoolProperty*>(property)
        || qobject_cast<const DzColorProperty*>(property)
        || qobject_cast<const DzEnumProperty*>(property);
    return isOther ? nullptr : qobject_cast<const DzIntProperty*>(property);
}

/// Items are known by their texts: numbers may differ from one material to the next. A whole
/// number serves where a float is wanted.
void copyValue(DzProperty* target, const DzProperty* source)
{
    DzFloatProperty* number = qobject_cast<DzFloatProperty*>(target);
    const DzIntProperty* integer = asInteger(source);
    if (number && integer)
        number->setValue(static_cast<float>(integer->getValue()));
    const DzEnumProperty* sourceItems = qobject_cast<const DzEnumProperty*>(source);
    DzEnumProperty* targetItems = qobject_cast<DzEnumProperty*>(target);
    if (!sourceItems || !targetItems) {
        target->copyFrom(source);
        return;
    }
    const int item = targetItems->findItemString(sourceItems->getStringValue());
    if (item >= 0)
        targetItems->setValue(item);
}

/// The texture brick that stands for a mapped property; null for any other property.
VireoTextureBrick* createImageMap(const DzProperty* source)
{
    const DzNumericProperty* numeric = qobject_cast<const DzNumericProperty*>(source);
    if (!numeric || !numeric->isMapped())
        return nullptr;
    if (qobject_cast<const DzFloatProperty*>(source) || asInteger(source))
        return new VireoTexFltImageMapBrick;
    if (qobject_cast<const DzColorProperty*>(source))
        return new VireoTexClrImageMapBrick;
    return nullptr;
}

/// Brings one of a surface's properties into a brick: a mapped one by an image map that feeds the
/// input, any other by its value.
void readProperty(
    VireoBrickUser* user, DzBrickParam* input, DzProperty* target, const DzProperty* source)
{
    DzTSharedPointer<VireoTextureBrick> image(createImageMap(source));
    DzBrickParam* result = image ? image->findParameterByArg(QLatin1String("result")) : nullptr;
    if (!image || !input->canConnect(result)) {
        copyValue(target, source);
        // Where the input takes no such texture, the value comes alone.
        DzNumericProperty* numeric = qobject_cast<DzNumericProperty*>(target);
        if (image && numeric)
            numeric->clearMap();
        return;
    }
    copyValue(image->findParameterByArg(QLatin1String("filename"))->getProperty(0), source);
    user->addBrick(image);
    input->addConnection(result);
}

void readProperties(VireoBrickUser* user, VireoMaterialBrick* brick, const DzMaterial* material,
    const QString& type)
{
    const QString prefix = RenderNames::prefix() + type + QLatin1Char('_');
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* param = brick->getParameter(i);
        for (int k = 0; k < param->getNumProperties(); ++k)
            if (const DzProperty* source = material->findProperty(prefix + param->getArg(k)))
                readProperty(user, param, param->getProperty(k), source);
    }
}

/// Builds root and material brick from a surface's type and properties.
void convertProperties(VireoBrickUser* user, const DzMaterial* material)
{
    const DzEnumProperty* named = typeProperty(material);
    const QString type = named ? named->getStringValue() : guessedType(material);
    VireoRootBrick* root = new VireoRootBrick;
    root->getBrickSettings()->setBoolValue(QLatin1String("AutoArrange"), true);
    user->addBrick(root);
    VireoMaterialBrick* brick = createMaterialBrick(type);
    if (!brick)
        return;
    if (named)
        readProperties(user, brick, material, type);
    user->addBrick(brick);
    root->findParameterByArg(QLatin1String("material"))
        ->addConnection(brick->findParameterByArg(QLatin1String("result")));
}

/// In a window; programs without windows have the host's messages.
void tellNothingIsSelected()
{
    const QString message = QLatin1String("No material(s) selected");
    if (QCoreApplication::instance()->inherits("QApplication"))
        QMessageBox::warning(
            dzApp->getInterface(), QLatin1String("Vireo Mixer"), message, QMessageBox::Ok);
    else
        dzApp->warning(message);
}

} // namespace

void applyToSelectedMaterials(VireoBrickUser* user)
{
    const QVector<DzSurface> surfaces
        = dzScene ? dzScene->getSelectedSurfaces() : QVector<DzSurface>();
    if (surfaces.isEmpty()) {
        tellNothingIsSelected();
        return;
    }
    DzSettings written;
    user->getAttributes(&written);
    // Copies of a copy share one tree: all surfaces together keep the network once.
    const DzSettings attributes(written);
    DzUndoStackHold hold;
    GeneratedCode code;
    if (VireoRootBrick* root = findRootBrick(user)) {
        GenerateOptions options;
        options.literalValues = false;
        code = generateCode(root, options);
    }
    for (int i = 0; i < surfaces.size(); ++i)
        applyTo(surfaces.at(i).material, code, attributes);
    hold.accept(QLatin1String("Apply ") + user->getBrickUserName());
}

QList<VireoBrickUser*> convertSelectedMaterials()
{
    // What is built belongs to nobody's history.
    DzUndoStackLock lock;
    QList<VireoBrickUser*> users;
    const QVector<DzSurface> surfaces = DzScene::getSelectedMaterials();
    for (int i = 0; i < surfaces.size(); ++i) {
        const DzMaterial* material = surfaces.at(i).material;
        VireoBrickUser* user = new VireoBrickUser;
        if (typeProperty(material) || !rebuildStoredNetwork(material, user))
            convertProperties(user, material);
        users.append(user);
    }
    return users;
}
