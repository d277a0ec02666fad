// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Dialogs.h"
#include "MaterialReading.h"
#include "MaterialText.h"
#include "TestSupport.h"
#include "VireoImporLbm2Action.h"
#include "dzbrickuserfile.h"
#include "dzmainwindow.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QScriptEngine>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>
#include <sys/stat.h>

namespace {

/// A material as other programs write it.
const char* const realMaterial = R"({
    "name": "Red \"car\" paint",
    "category_id": 5,
    "objects": [
        { "type": "MakeNamedMaterial", "name": "paint", "extra_tag": "",
          "paramset": [
            { "name": "Kd", "type": "color", "value": [0.8, 1e-3, -.5] },
            { "name": "twosided", "type": "bool", "value": true },
            { "name": "note", "type": "string", "value": null }
        ] }
    ]
}
)";

/// Texts that are code, or that an engine would choke on.
QByteArray nested(const char* open, const char* close, int depth)
{
    return QByteArray(open).repeated(depth) + QByteArray(close).repeated(depth);
}

class MaterialImportTest : public testing::Test
{
protected:
    MaterialImportTest()
    {
        dzApp->setInterface(&window);
        window.show();
        matte = addBrick(user, "VireoMatMatteBrick");
        dzUndoStack->clearAll();
        action.reset(new VireoImporLbm2Action);
        action->setBrick(matte);
    }
    ~MaterialImportTest() override { dzApp->setInterface(nullptr); }

    QString write(const QByteArray& text)
    {
        const QString path = folder.filePath("material.lbm2");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(text), text.size());
        return path;
    }
    MaterialReading* running() const
    {
        return window.findChild<MaterialReading*>(QString(), Qt::FindDirectChildrenOnly);
    }
    /// Triggers the action, chooses the file, and waits for the end with events flowing. The
    /// longest time between two events, in milliseconds.
    qint64 import(const QString& path)
    {
        const DialogAnswers dialogs({ fileByKeyboard(path) });
        dzTriggerBrickAction(action.get(), matte);
        QElapsedTimer sinceEvent;
        qint64 longest = 0;
        sinceEvent.start();
        while (running()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            longest = qMax(longest, sinceEvent.restart());
        }
        return longest;
    }

    QTemporaryDir folder;
    DzMainWindow window;
    VireoBrickUser user;
    VireoBrickBase* matte;
    std::unique_ptr<VireoImporLbm2Action> action;
};

bool isAccepted(const QString& path)
{
    MaterialReading reading(path);
    reading.start();
    EXPECT_TRUE(reading.wait(60000));
    return reading.isAccepted();
}

} // namespace

// Which texts are evaluated --------------------------------------------------------------------

TEST(MaterialTextTest, materialsAreObjects)
{
    for (const char* text : { realMaterial, "{}", "[]", " {} ; ", "{a: 1, 'b': 2, 3: 4,}",
             "// note\n{ /* x */ \"a\" /**/ : [1, 2, {}, ] } // end", "{\"a\": \"\\\"}\\\\\"}",
             "{a: [true, false, null, undefined, NaN, -Infinity, +1, 0x1F, 1.5e-3, .5]}",
             "{\"a\": \"f() while (1) /* \"}", "{a:\"\xe4\xff\"}", "\t\r\n{}", "{get: 1, set: 2}" })
        EXPECT_TRUE(MaterialText::isObject(text)) << text;
}

TEST(MaterialTextTest, otherDataIsNoObject)
{
    for (const char* text : { "1", "\"text\"", "true", "null", "NaN", "-1" }) {
        EXPECT_TRUE(MaterialText::isData(text)) << text;
        EXPECT_FALSE(MaterialText::isObject(text)) << text;
    }
}

TEST(MaterialTextTest, whatLooksLikeDataAndIsNoneIsNoObject)
{
    for (const char* text : { "{a: 1.2.3}", "{a: 0x}", "{a: 5e}", "{a: \"\\u12\"}", "{a: 1abc}" })
        EXPECT_FALSE(MaterialText::isObject(text)) << text;
}

TEST(MaterialTextTest, brokenTextsAreNoData)
{
    for (const char* text : { "", " ", ";", "{", "[", "}", "{a}", "{a:}", "{:1}", "{,}",
             "{a:1 b:2}", "[1 2]", "[,]", "[1,,2]", "[}", "{]", "{}}", "{} {}", "{a:1}}", "\"",
             "'x", "{\"a\n\":1}", "/", "/*", "/* *", "{} /", "{} /*", "-", "+-1", "--1", "- 1",
             "-x", "TRUE", "None", "\xef\xbb\xbf{}", "{a:\\u0061}" })
        EXPECT_FALSE(MaterialText::isData(text)) << text;
    EXPECT_FALSE(MaterialText::isData(QByteArray("{}\0", 3)));
    EXPECT_FALSE(MaterialText::isData(QByteArray("\0{}", 3)));
}

TEST(MaterialTextTest, codeIsNeverEvaluated)
{
    for (const char* text :
        { "(function() { while (true); })()", "{}; while (true);",
            "{a: (function f() { return f(); })()}", "{} + function() {}", "new Array(1e9)",
            "{a: [].constructor}", "{a: f()}", "{get a() { for (;;); }}", "{a: b = 1}",
            "{a: 1 + 1}", "{a: /(x+x+)+y/}", "{a: \"x\".length}", "{a: this}", "{a: [1][0]}",
            "{a: 1, b: !a}", "eval(\"1\")", "{}\nwhile (true);", "{a: 1}, {b: 2}", "{a: 1 ? 2 : 3}",
            "{a: `x`}", "{a: (1)}", "{a: -\n-1}", "{a: 1/2}", "<!-- x", "{a: 1 /* */ in 2}" })
        EXPECT_FALSE(MaterialText::isData(text)) << text;
}

TEST(MaterialTextTest, nestingIsLimited)
{
    const int limit = MaterialText::maximumDepth;
    EXPECT_TRUE(MaterialText::isObject(nested("[", "]", limit)));
    EXPECT_FALSE(MaterialText::isData(nested("[", "]", limit + 1)));
    EXPECT_TRUE(MaterialText::isObject("{a:" + nested("{a:[", "]}", limit / 2 - 1) + "}"));
    EXPECT_FALSE(MaterialText::isData(nested("{a:", "}", 1000000)));
    EXPECT_FALSE(MaterialText::isData(nested("[", "]", 1000000)));
    EXPECT_FALSE(MaterialText::isData(QByteArray(1000000, '[')));
}

TEST(MaterialTextTest, theNumberOfValuesIsLimited)
{
    // The list is a value too.
    const int limit = MaterialText::maximumValues;
    EXPECT_TRUE(MaterialText::isData("[" + QByteArray("0,").repeated(limit - 1) + "]"));
    EXPECT_FALSE(MaterialText::isData("[" + QByteArray("0,").repeated(limit) + "]"));
}

TEST(MaterialTextTest, theLargestTextsAreEvaluatedInShortTime)
{
    QByteArray names = "{";
    for (int i = 0; i < MaterialText::maximumValues - 1; ++i)
        names += "name" + QByteArray::number(i) + ":0,";
    const QByteArray lists
        = "[" + QByteArray("[],").repeated(MaterialText::maximumValues - 1) + "]";
    const QByteArray objects
        = "[" + QByteArray("{a:\"b\"},").repeated((MaterialText::maximumValues - 1) / 2) + "]";
    const QByteArray text = "{a:\"" + QByteArray(MaterialReading::maximumSize - 8, 'x') + "\"}";
    const QByteArray escapes
        = "{a:\"" + QByteArray("\\n").repeated(MaterialReading::maximumSize / 2 - 8) + "\"}";
    for (const QByteArray& hostile : { names + "}", lists, objects, text, escapes }) {
        QElapsedTimer time;
        time.start();
        EXPECT_TRUE(MaterialText::isObject(hostile)) << hostile.left(20).toStdString();
        EXPECT_LT(time.elapsed(), 10000) << hostile.left(20).toStdString();
    }
}

// Reading files --------------------------------------------------------------------------------

TEST_F(MaterialImportTest, aFileWithAnObjectIsAccepted)
{
    EXPECT_TRUE(isAccepted(write(realMaterial)));
    EXPECT_TRUE(isAccepted(write(QByteArray(realMaterial).replace('\n', "\r\n"))));
    EXPECT_FALSE(isAccepted(write("{\"a\": ")));
    EXPECT_FALSE(isAccepted(write("")));
}

TEST_F(MaterialImportTest, filesThatCannotBeReadEndSilently)
{
    EXPECT_FALSE(isAccepted(folder.filePath("missing.lbm2")));
    EXPECT_FALSE(isAccepted(folder.path()));
    const QByteArray pipe = QFile::encodeName(folder.filePath("pipe.lbm2"));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    EXPECT_FALSE(isAccepted(folder.filePath("pipe.lbm2")));
    EXPECT_FALSE(isAccepted("/dev/zero"));
    EXPECT_FALSE(isAccepted(QString()));
}

TEST_F(MaterialImportTest, aGiantFileIsNotRead)
{
    const QString path = folder.filePath("giant.lbm2");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(Q_INT64_C(1) << 40));
    file.close();
    EXPECT_FALSE(isAccepted(path));
    // The largest that is read, and one byte more.
    const int rest = static_cast<int>(MaterialReading::maximumSize) - 2;
    EXPECT_TRUE(isAccepted(write("{}" + QByteArray(rest, ' '))));
    EXPECT_FALSE(isAccepted(write("{}" + QByteArray(rest + 1, ' '))));
}

TEST_F(MaterialImportTest, aReadingThatIsStoppedEndsWithoutResult)
{
    MaterialReading reading(write(realMaterial));
    reading.stop();
    reading.start();
    ASSERT_TRUE(reading.wait(60000));
    EXPECT_FALSE(reading.isAccepted());
}

TEST_F(MaterialImportTest, filesAreReadWhileAScriptRunsInTheProgram)
{
    const QString path = write(realMaterial);
    for (int i = 0; i < 20; ++i) {
        std::vector<std::unique_ptr<MaterialReading>> readings;
        for (int k = 0; k < 8; ++k) {
            readings.emplace_back(new MaterialReading(path));
            readings.back()->start();
        }
        QScriptEngine engine;
        const QScriptValue sum
            = engine.evaluate("var a = {}; var sum = 0; for (var i = 0; i < 2000;"
                              "++i) { a['n' + i] = i; sum += a['n' + i]; } sum");
        EXPECT_EQ(sum.toInt32(), 1999000);
        for (const auto& reading : readings) {
            EXPECT_TRUE(reading->wait(60000));
            EXPECT_TRUE(reading->isAccepted());
        }
    }
}

// The action -----------------------------------------------------------------------------------

TEST_F(MaterialImportTest, theDialogIsWordedAsItShould)
{
    EXPECT_EQ(action->text(), QString("Import Lbm2 Material"));
    const DialogAnswers dialogs({ [this](QDialog* dialog) {
        EXPECT_EQ(dialog->windowTitle(), QString("Import LuxRender Lmb2"));
        EXPECT_EQ(dialog->parentWidget(), &window);
        const auto* files = qobject_cast<QFileDialog*>(dialog);
        ASSERT_NE(files, nullptr);
        EXPECT_EQ(files->nameFilters(), QStringList({ "LuxRender Material(*.lbm2)" }));
        EXPECT_EQ(files->fileMode(), QFileDialog::ExistingFile);
        cancelByMouse()(dialog);
    } });
    action->trigger();
    EXPECT_EQ(running(), nullptr);
}

TEST_F(MaterialImportTest, anAcceptedMaterialChangesNothing)
{
    Warnings warnings;
    const QByteArray before = DzBrickUserFile().saveText(&user);
    import(write(realMaterial));
    EXPECT_EQ(DzBrickUserFile().saveText(&user), before);
    EXPECT_FALSE(dzUndoStack->hasItems());
    EXPECT_EQ(warnings.messages, QStringList());
}

TEST_F(MaterialImportTest, hostileFilesEndSilentlyWhileEventsFlow)
{
    Warnings warnings;
    const QByteArray before = DzBrickUserFile().saveText(&user);
    const QByteArray numbers
        = "[" + QByteArray("0,").repeated(MaterialText::maximumValues - 1) + "]";
    for (const QByteArray& text : { QByteArray("(function() { for (;;); })()"),
             QByteArray("(function f() { return f() + f(); })()"),
             QByteArray("{}; var s = 'x'; while (true) s += s;"),
             QByteArray("{}; var a = [0]; while (true) a = a.concat(a);"),
             QByteArray("new Array(4294967295).join('xxxxxxxxxxxxxxxx')"),
             QByteArray("/(x+x+)+y/.exec('xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx')"),
             QByteArray("{a: "), QByteArray("\0\xff\xfe", 3), QByteArray(1000000, '['),
             QByteArray(1000000, '('), QByteArray(1000000, '-'), QByteArray(1000000, '!'),
             nested("{a:", "}", 1000000), numbers }) {
        EXPECT_LT(import(write(text)), 1000) << text.left(30).toStdString();
    }
    EXPECT_EQ(DzBrickUserFile().saveText(&user), before);
    EXPECT_FALSE(dzUndoStack->hasItems());
    EXPECT_EQ(warnings.messages, QStringList());
}

TEST_F(MaterialImportTest, aSecondTriggerMeanwhileDoesNothing)
{
    const QString path = write(realMaterial);
    const DialogAnswers dialogs({ [&](QDialog* dialog) {
        action->trigger();
        fileByKeyboard(path)(dialog);
    } });
    action->trigger();
    ASSERT_NE(running(), nullptr);
    action->trigger();
    EXPECT_EQ(window.findChildren<MaterialReading*>().size(), 1);
}

TEST_F(MaterialImportTest, afterItsEndItCanBeTriggeredAgain)
{
    import(write(realMaterial));
    import(write(realMaterial));
}

TEST_F(MaterialImportTest, brickAndActionMayGoWhileTheDialogIsOpen)
{
    const QString path = write(realMaterial);
    const DialogAnswers dialogs({ [&](QDialog* dialog) {
                                     DzUndoStackLock lock;
                                     user.deleteBrick(matte);
                                     fileByKeyboard(path)(dialog);
                                 },
        [&](QDialog* dialog) {
            action.reset();
            fileByKeyboard(path)(dialog);
        } });
    action->trigger();
    EXPECT_EQ(running(), nullptr);
    action->setBrick(addBrick(user, "VireoMatMatteBrick"));
    action->trigger();
    EXPECT_EQ(running(), nullptr);
}

TEST_F(MaterialImportTest, brickActionAndWindowMayGoWhileTheFileIsRead)
{
    const QByteArray largest
        = "[" + QByteArray("[],").repeated(MaterialText::maximumValues - 1) + "]";
    const QString path = write(largest);
    std::unique_ptr<DzMainWindow> other(new DzMainWindow);
    dzApp->setInterface(other.get());
    {
        const DialogAnswers dialogs({ fileByKeyboard(path) });
        action->trigger();
    }
    const QPointer<MaterialReading> reading = other->findChild<MaterialReading*>();
    ASSERT_NE(reading, nullptr);
    action.reset();
    user.deleteAllBricks();
    dzUndoStack->clearAll();
    dzApp->setInterface(nullptr);
    other.reset();
    EXPECT_EQ(reading, nullptr);
}

TEST_F(MaterialImportTest, withoutABrickNothingIsAsked)
{
    const DialogAnswers none({});
    action->setBrick(nullptr);
    action->trigger();
    action->doTrigger();
}
