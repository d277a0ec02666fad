// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WindowFixture.h"

#include "MixerDocument.h"
#include "ProgramSettings.h"
#include "SceneController.h"
#include "SceneSession.h"
#include "dzmaterial.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzsimpleelementdata.h"
#include "dzundostack.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageBox>
#include <QPushButton>

namespace {

class SceneSaving : public WindowTest
{
protected:
    /// Opens a scene of two surfaces that stands in a file of its own.
    void openScene()
    {
        ASSERT_TRUE(
            m_window->openFile(projectPath(QStringLiteral("examples/scenes/vase-on-table.obj"))));
        ASSERT_TRUE(m_window->getSceneController()->saveTo(path()));
    }
    QString path() const { return file("room.duf"); }
    SceneSession* session() const { return m_window->getSceneController()->getSession(); }

    static DzMaterial* surface(const char* name)
    {
        for (int i = 0; i < dzScene->getNumNodes(); ++i)
            if (const DzObject* object = dzScene->getNode(i)->getObject())
                if (DzMaterial* found
                    = object->getCurrentShape()->findMaterial(QString::fromLatin1(name)))
                    return found;
        ADD_FAILURE() << "no surface " << name;
        return nullptr;
    }
    static void changeScene(const char* name)
    {
        DzUndoStackHold hold;
        surface("Body")->addDataItem(new DzSimpleElementData(QString::fromLatin1(name), true));
        hold.accept(QStringLiteral("Change"));
    }
    static QByteArray contentOf(const QString& path)
    {
        QFile content(path);
        EXPECT_TRUE(content.open(QIODevice::ReadOnly)) << path.toStdString();
        return content.readAll();
    }
    static void write(const QString& path, const QByteArray& text)
    {
        QFile other(path);
        ASSERT_TRUE(other.open(QIODevice::WriteOnly));
        other.write(text);
    }
    static void press(const char* label)
    {
        withDialog<QMessageBox>([label](QMessageBox* box) {
            EXPECT_TRUE(box->text().contains(QLatin1String("room.duf")));
            for (QAbstractButton* button : box->buttons())
                if (button->text().remove(QLatin1Char('&')) == QString::fromUtf8(label))
                    return button->click();
            ADD_FAILURE() << "no button " << label;
            box->reject();
        });
    }
    /// The message box that is open and waits for nobody.
    QMessageBox* openMessage() const
    {
        for (QMessageBox* box : m_window->findChildren<QMessageBox*>())
            if (box->isVisible())
                return box;
        return nullptr;
    }
};

} // namespace

TEST_F(SceneSaving, aSceneThatAnotherProgramChangedIsNotOverwrittenUnasked)
{
    openScene();
    changeScene("First");
    run("saveScene");
    EXPECT_FALSE(session()->isModified()) << "what was written here is no change of others";
    changeScene("Second");
    const QByteArray others = contentOf(path()) + "\n";
    write(path(), others);
    press("Cancel");
    run("saveScene");
    EXPECT_TRUE(session()->isModified());
    EXPECT_EQ(contentOf(path()), others);
    press("Overwrite");
    run("saveScene");
    EXPECT_FALSE(session()->isModified());
    EXPECT_EQ(contentOf(path()), session()->getText());
    // A file that is gone is written again, and what was opened is remembered as well.
    ASSERT_TRUE(QFile::remove(path()));
    changeScene("Third");
    run("saveScene");
    EXPECT_TRUE(QFile::exists(path()));
    ASSERT_TRUE(m_window->openFile(path()));
    changeScene("Fourth");
    write(path(), others);
    press("Cancel");
    run("saveScene");
    EXPECT_EQ(contentOf(path()), others);
}

TEST_F(SceneSaving, aNetworkGoesBackToTheSurfaceThatItCameFrom)
{
    m_settings->setApplyListShown(false);
    openScene();
    SceneController* scene = m_window->getSceneController();
    EXPECT_EQ(scene->getOrigin(document()), nullptr);
    EXPECT_FALSE(command("applyBack")->isEnabled());
    EXPECT_FALSE(scene->applyBack(document()));
    DzMaterial* body = surface("Body");
    DzMaterial* rim = surface("Rim");
    body->select(true);
    settle();
    run("fromScene");
    settle();
    EXPECT_EQ(scene->getOrigin(document()), body);
    // Whatever is selected now.
    body->select(false);
    rim->select(true);
    settle();
    run("applyBack");
    const auto isApplied = [](const DzMaterial* material) {
        return material->findProperty(QStringLiteral("LuxRender_material_extrasettings"))
            != nullptr;
    };
    EXPECT_TRUE(isApplied(body));
    EXPECT_FALSE(isApplied(rim));
    EXPECT_FALSE(body->isSelected());
    EXPECT_TRUE(rim->isSelected());
    dzUndoStack->undo();
    EXPECT_FALSE(isApplied(body));
    // The scene that comes next has other surfaces, though they be called alike.
    ASSERT_TRUE(m_window->getSceneController()->saveTo(path()));
    ASSERT_TRUE(m_window->openFile(path()));
    EXPECT_EQ(scene->getOrigin(document()), nullptr);
    EXPECT_FALSE(scene->applyBack(document()));
}

TEST_F(SceneSaving, whatCouldNotBeSavedIsTold)
{
    openScene();
    QJsonObject document = QJsonDocument::fromJson(contentOf(path())).object();
    QJsonObject scene = document.value(QStringLiteral("scene")).toObject();
    QJsonArray materials;
    for (const QJsonValue& value : scene.value(QStringLiteral("materials")).toArray()) {
        QJsonObject material = value.toObject();
        // Data belongs into a list; there is none here that could be added to.
        material.insert(QStringLiteral("extra"), QJsonObject());
        materials.append(material);
    }
    scene.insert(QStringLiteral("materials"), materials);
    document.insert(QStringLiteral("scene"), scene);
    write(path(), QJsonDocument(document).toJson());
    ASSERT_TRUE(m_window->openFile(path()));
    settle();
    ASSERT_EQ(openMessage(), nullptr);
    changeScene("Lost");
    ASSERT_TRUE(m_window->getSceneController()->saveTo(path()));
    settle();
    QMessageBox* message = openMessage();
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(message->text().contains(QLatin1String("room.duf")))
        << message->text().toStdString();
    EXPECT_TRUE(message->informativeText().contains(QLatin1String("extra")))
        << message->informativeText().toStdString();
    message->close();
}

TEST_F(SceneSaving, aSceneThatIsChangedHasACopyUntilItIsSaved)
{
    openScene();
    const auto kept = [this] {
        // Another program sees copies only when this one is gone: look at the files.
        int count = 0;
        const QDir store(file("copies"));
        for (const QString& name : store.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            count += QDir(store.filePath(name)).entryList({ QStringLiteral("*.scene") }).size();
        return count;
    };
    EXPECT_EQ(kept(), 0);
    changeScene("Unsaved");
    ASSERT_TRUE(m_window->getSceneController()->keepNow());
    EXPECT_EQ(kept(), 1);
    run("undo");
    ASSERT_TRUE(m_window->getSceneController()->keepNow());
    EXPECT_EQ(kept(), 0) << "there is nothing to lose any more";
    run("redo");
    ASSERT_TRUE(m_window->getSceneController()->keepNow());
    EXPECT_EQ(kept(), 1);
    ASSERT_TRUE(m_window->getSceneController()->saveTo(path()));
    EXPECT_EQ(kept(), 0);
}
