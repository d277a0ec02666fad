// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkCode.h"
#include "RandomNetwork.h"
#include "TestSupport.h"
#include "VireoRootBrick.h"
#include "dzcolorproperty.h"
#include "dznode.h"
#include "dznumericproperty.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzscenefile.h"
#include "dzshape.h"
#include "dzundostack.h"

#include <vector>

namespace {

#ifdef __SANITIZE_ADDRESS__
const int numNetworks = 500;
#else
const int numNetworks = 2000;
#endif
const int surfacesPerScene = 50;

/// A scene in the host's format with one node and surfaces "S0", "S1", ...
QByteArray sceneText(int numSurfaces)
{
    QByteArray library;
    QByteArray instances;
    for (int i = 0; i < numSurfaces; ++i) {
        const QByteArray comma(i > 0 ? "," : "");
        const QByteArray name = "S" + QByteArray::number(i);
        library += comma + "{\"id\":\"" + name + "\",\"extra\":[]}";
        instances += comma + "{\"id\":\"" + name + "-1\",\"url\":\"#" + name
            + "\",\"geometry\":\"#Mesh-1\",\"groups\":[\"" + name + "\"]}";
    }
    return "{\"file_version\":\"0.6.0.0\",\"asset_info\":{\"type\":\"scene\"},"
           "\"material_library\":["
        + library
        + "],\"scene\":{\"nodes\":[{\"id\":\"Node\",\"geometries\":[{\"id\":\"Mesh-1\",\"url\":"
          "\"#Mesh\"}]}],\"materials\":["
        + instances + "]}}";
}

DzShape* shapeOf(DzScene* scene)
{
    return scene->getNode(0)->getObject()->getCurrentShape();
}

/// What a network exports: both texts, and every placeholder with what it stands for.
struct Exported {
    QString literal;
    QString placeholders;
    QStringList list;
};

int placeOf(const IDzBrickUser& user, const DzElement* brick)
{
    QList<uint> ids;
    user.getBrickIDs(ids);
    for (int i = 0; i < ids.size(); ++i)
        if (user.getBrick(ids.at(i)) == brick)
            return i;
    return -1;
}

/// The host's files keep no alpha of a colour, and the text never has one.
QString valueText(const DzProperty* property)
{
    auto* color = qobject_cast<const DzColorProperty*>(property);
    return color ? color->getColorValue().name(QColor::HexRgb) : property->getValueText();
}

QString valueAndMap(const DzProperty* property)
{
    auto* numeric = qobject_cast<const DzNumericProperty*>(property);
    return valueText(property)
        + (numeric && numeric->isMapped()
                ? QStringLiteral(" map ") + numeric->getMapValue()->getFilename()
                : QString());
}

Exported exportOf(const IDzBrickUser& user)
{
    Exported exported;
    GenerateOptions options;
    VireoRootBrick* root = findRootBrick(&user);
    exported.literal = exportText(generateCode(root, options));
    options.literalValues = false;
    const GeneratedCode code = generateCode(root, options);
    exported.placeholders = exportText(code);
    for (int i = 0; i < code.placeholderKeys.size(); ++i) {
        const DzProperty* property = code.placeholderKeys.at(i);
        // Joined, not filled in: names may hold place markers.
        exported.list.append(code.placeholderNames.at(i) + QStringLiteral(": brick ")
            + QString::number(placeOf(user, property->getOwner())) + QLatin1Char(' ')
            + property->getName() + QStringLiteral(" = ") + valueAndMap(property));
    }
    return exported;
}

void applyTo(DzMaterial* material, VireoBrickUser& user)
{
    material->select(true);
    user.applyToScene();
    material->select(false);
}

void expectSame(const Exported& before, const Exported& after)
{
    EXPECT_TEXT(before.literal, after.literal);
    EXPECT_TEXT(before.placeholders, after.placeholders);
    EXPECT_TEXT(before.list.join(QLatin1Char('\n')), after.list.join(QLatin1Char('\n')));
}

/// The values on the surface, read back from the file, are those that the text refers to.
void expectPublished(const Exported& exported, const DzMaterial* material)
{
    for (const QString& line : exported.list) {
        const QString name = line.section(QLatin1String(": "), 0, 0);
        const DzProperty* property = material->findProperty(name);
        ASSERT_NE(property, nullptr) << line.toStdString();
        EXPECT_TRUE(line.endsWith(QStringLiteral(" = ") + valueAndMap(property)))
            << line.toStdString() << " is on the surface: " << valueAndMap(property).toStdString();
    }
}

} // namespace

/// Networks of all kinds go onto surfaces, into a file, out of it and back into networks.
TEST(SceneRoundTrip, randomNetworksExportTheSameAfterApplySaveOpenAndRebuild)
{
    DzUndoStackLock lock;
    VireoBrickUser maker;
    int compared = 0;
    for (int first = 0; first < numNetworks; first += surfacesPerScene) {
        DzSceneFile file;
        ASSERT_TRUE(
            file.loadText(sceneText(surfacesPerScene), QStringLiteral("scene"), dzApp->getScene()))
            << file.getError().toStdString();
        std::vector<Exported> before;
        for (int i = 0; i < surfacesPerScene; ++i) {
            VireoBrickUser user;
            buildRandomNetwork(&user, static_cast<quint32>(first + i));
            before.push_back(exportOf(user));
            applyTo(shapeOf(dzApp->getScene())->getMaterial(i), user);
        }
        const QByteArray saved = file.saveText();
        ASSERT_FALSE(saved.isEmpty()) << file.getError().toStdString();

        DzSceneFile opened;
        ASSERT_TRUE(opened.loadText(saved, QStringLiteral("saved"), dzApp->getScene()))
            << opened.getError().toStdString();
        EXPECT_EQ(opened.getWarnings(), QStringList());
        DzShape* shape = shapeOf(dzApp->getScene());
        ASSERT_EQ(shape->getNumMaterials(), surfacesPerScene);
        for (int i = 0; i < surfacesPerScene; ++i)
            shape->getMaterial(i)->select(true);
        const QList<IDzBrickUser*> rebuilt = maker.fromScene();
        ASSERT_EQ(rebuilt.size(), surfacesPerScene);
        for (int i = 0; i < surfacesPerScene; ++i) {
            SCOPED_TRACE("seed " + std::to_string(first + i));
            const DzTSharedPointer<DzMaterial> owner(
                qobject_cast<DzMaterial*>(rebuilt.at(i)->getBrickUserElement()));
            expectSame(before.at(static_cast<std::size_t>(i)), exportOf(*rebuilt.at(i)));
            expectPublished(before.at(static_cast<std::size_t>(i)), shape->getMaterial(i));
            ++compared;
        }
    }
    dzApp->getScene()->clear();
    EXPECT_EQ(compared, numNetworks);
}
