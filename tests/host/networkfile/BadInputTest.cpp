// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LinkTypes.h"
#include "NetworkCode.h"
#include "TestSupport.h"
#include "VireoRootBrick.h"
#include "dzbrickuserfile.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"

#include <QDir>
#include <QTemporaryDir>

#include <csignal>
#include <nlohmann/json.hpp>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

typedef nlohmann::ordered_json Json;

void exportAll(const VireoBrickUser& user)
{
    QList<uint> ids;
    user.getBrickIDs(ids);
    for (const uint id : qAsConst(ids)) {
        if (auto* brick = qobject_cast<VireoBrickBase*>(user.getBrick(id))) {
            GenerateOptions options;
            generateCode(brick, options);
            options.literalValues = false;
            generateCode(brick, options);
        }
    }
    if (VireoRootBrick* root = findRootBrick(&user))
        exportText(generateCode(root, GenerateOptions()));
}

enum Outcome { Refused, Loaded, Broken };

/// Loads a text. What loads is exported and saved twice; a failure of the test when it does not
/// come back with the same bytes, or when it is refused without one line that says why.
Outcome outcomeOf(const QByteArray& text, const QString& name = QStringLiteral("input"))
{
    VireoBrickUser user;
    DzBrickUserFile file;
    if (!file.loadText(text, name, &user)) {
        const QString error = file.getError();
        const bool isGood = error.startsWith(QStringLiteral("cannot read %1: ").arg(name))
            && !error.contains(QLatin1Char('\n')) && error.size() < 400;
        EXPECT_TRUE(isGood) << error.toStdString();
        EXPECT_EQ(user.getNumBricks(), 0);
        return isGood ? Refused : Broken;
    }
    exportAll(user);
    const QByteArray saved = file.saveText(&user);
    VireoBrickUser again;
    DzBrickUserFile fileAgain;
    if (!fileAgain.loadText(saved, name, &again)) {
        ADD_FAILURE() << fileAgain.getError().toStdString();
        return Broken;
    }
    const auto same
        = sameText(QString::fromUtf8(saved), QString::fromUtf8(fileAgain.saveText(&again)));
    EXPECT_TRUE(same);
    return same ? Loaded : Broken;
}

QByteArray example(const char* name)
{
    return projectFile(QStringLiteral("examples/%1.sskn").arg(QLatin1String(name)));
}

QByteArray repeated(const char* text, int count)
{
    return QByteArray(text).repeated(count);
}

/// A file with `member` beside its network.
QByteArray withMember(const QByteArray& member)
{
    return "{\"format\":\"sskn\",\"version\":1,\"x\":" + member
        + ",\"BrickSetup\":{\"type\":\"settings\",\"value\":{}}}";
}

/// The places of all values of a text, containers included.
void gatherPlaces(
    const Json& value, const Json::json_pointer& place, std::vector<Json::json_pointer>* places)
{
    if (!place.empty())
        places->push_back(place);
    if (value.is_object())
        for (const auto& member : value.items())
            gatherPlaces(member.value(), place / member.key(), places);
    if (value.is_array())
        for (size_t i = 0; i < value.size(); ++i)
            gatherPlaces(value[i], place / i, places);
}

/// Puts a value of every other type in the place of each value of a file, one at a time.
void mutateEveryValue(const QByteArray& text)
{
    const Json original = Json::parse(text.toStdString());
    const Json substitutes[]
        = { nullptr, true, 2.5, "x", Json::array({ 1 }), Json::array({ "i", 7 }), Json::object(),
              Json::object({ { "type", "settings" }, { "value", Json::object() } }) };
    std::vector<Json::json_pointer> places;
    gatherPlaces(original, Json::json_pointer(), &places);
    EXPECT_GT(places.size(), 100u);
    int loaded = 0;
    int refused = 0;
    for (const Json::json_pointer& place : places) {
        for (const Json& substitute : substitutes) {
            Json changed = original;
            if (changed[place] == substitute)
                continue;
            changed[place] = substitute;
            const Outcome outcome = outcomeOf(QByteArray::fromStdString(changed.dump()));
            ASSERT_NE(outcome, Broken) << place.to_string() << " = " << substitute.dump();
            ++(outcome == Loaded ? loaded : refused);
        }
    }
    EXPECT_GT(loaded, 500);
    EXPECT_GT(refused, 10);
}

/// Runs `save` in a process whose files cannot grow beyond `bytes`; its exit code.
template <typename Save>
int runWithFileLimit(rlim_t bytes, const Save& save)
{
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = { bytes, bytes };
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(save());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

} // namespace

// Texts ---------------------------------------------------------------------------------------

TEST(BadInput, truncatedFileIsRefusedWhereverItEnds)
{
    const QByteArray text = example("band-of-three").trimmed();
    ASSERT_EQ(outcomeOf(text), Loaded);
    for (int size = 0; size < text.size(); size += 97)
        ASSERT_EQ(outcomeOf(text.left(size)), Refused) << size;
    EXPECT_EQ(outcomeOf(text.left(text.size() - 1)), Refused);
}

TEST(BadInput, whatIsNoJsonIsRefused)
{
    const QByteArray cases[] = { "", " \n\t", "null", "12", "\"text\"", "[]", "format sskn",
        "<?xml version=\"1.0\"?>", "{\"format\":\"sskn\"", "{'format':'sskn'}", "{\"a\":1,}",
        "{\"a\" 1}", "{\"a\":01}", "{\"a\":+1}", "{\"a\":.5}", "{\"a\":\"\n\"}", "{\"a\":\"\\x\"}",
        "{\"a\":\"\\ud800\"}", "{} {}", "{}x", "{/**/}", QByteArray("\0", 1),
        QByteArray("{\"a\":1}\0{}", 10), "\xff\xfe{\0}\0", "{\"a\":\"\xff\"}",
        "{\"a\":\"\xc0\xaf\"}", QByteArray(5000, '\xef'), "\x89PNG\r\n\x1a\n" };
    for (const QByteArray& text : cases)
        EXPECT_EQ(outcomeOf(text), Refused) << text.toPercentEncoding().constData();
}

TEST(BadInput, byteOrderMarkAtTheStartIsSkipped)
{
    EXPECT_EQ(outcomeOf("\xef\xbb\xbf" + example("plain-matte")), Loaded);
}

TEST(BadInput, hundredThousandLevelsAreRefused)
{
    const int depth = 100000;
    EXPECT_EQ(outcomeOf(withMember(repeated("[", depth) + repeated("]", depth))), Refused);
    EXPECT_EQ(outcomeOf(withMember(repeated("[", depth))), Refused);
    EXPECT_EQ(
        outcomeOf(withMember(repeated("{\"a\":", depth) + '1' + repeated("}", depth))), Refused);
    EXPECT_EQ(outcomeOf(withMember(repeated("{\"a\":", depth))), Refused);
    EXPECT_EQ(outcomeOf(withMember(repeated("{\"type\":\"settings\",\"value\":{\"a\":", depth) + '1'
                  + repeated("}}", depth))),
        Refused);
}

TEST(BadInput, aHundredLevelsAreKept)
{
    const int depth = 100;
    EXPECT_EQ(outcomeOf(withMember(repeated("[", depth) + repeated("]", depth))), Loaded);
    EXPECT_EQ(outcomeOf(withMember(repeated("{\"type\":\"settings\",\"value\":{\"a\":", depth) + '1'
                  + repeated("}}", depth))),
        Loaded);
}

TEST(BadInput, numbersThatAreTooLargeAreRefusedAndSmallOnesAreNone)
{
    EXPECT_EQ(outcomeOf(withMember("1e400")), Refused);
    EXPECT_EQ(outcomeOf(withMember("-1e400")), Refused);
    EXPECT_EQ(outcomeOf(withMember('1' + repeated("0", 400))), Refused);
    EXPECT_EQ(outcomeOf(withMember("[1e400]")), Refused);
    EXPECT_EQ(outcomeOf(withMember("1e-400")), Loaded);
    EXPECT_EQ(outcomeOf(withMember("1e308")), Loaded);
    EXPECT_EQ(outcomeOf(withMember("123456789012345678901234567890")), Loaded);
    EXPECT_EQ(outcomeOf(withMember("18446744073709551615")), Loaded);
    EXPECT_EQ(outcomeOf(withMember("[\"i\",1e300]")), Loaded);
    EXPECT_EQ(outcomeOf(withMember("[\"i\",2147483648]")), Loaded);
}

TEST(BadInput, numberBeyondSinglePrecisionLoads)
{
    QByteArray text = example("plain-matte");
    text.replace("\"Value\": 0 ", "\"Value\": 1e308 ");
    ASSERT_NE(text, example("plain-matte"));
    EXPECT_EQ(outcomeOf(text), Loaded);
}

TEST(BadInput, keyThatStandsTwiceIsRefusedAtEveryLevel)
{
    EXPECT_EQ(outcomeOf("{\"format\":\"sskn\",\"format\":\"sskn\"}"), Refused);
    EXPECT_EQ(outcomeOf(withMember("{\"a\":1,\"a\":1}")), Refused);
    EXPECT_EQ(outcomeOf(withMember("[{\"a\":1,\"\\u0061\":1}]")), Refused);
    QByteArray text = example("plain-matte");
    text.replace("\"Brick_2\": {", "\"Brick_1\": {");
    EXPECT_EQ(outcomeOf(text), Refused);
    QByteArray many;
    for (int i = 0; i < 100; ++i)
        many += "\"k" + QByteArray::number(i) + "\":1,";
    EXPECT_EQ(outcomeOf(withMember('{' + many + "\"k200\":1}")), Loaded);
    EXPECT_EQ(outcomeOf(withMember('{' + many + "\"k57\":1}")), Refused);
}

TEST(BadInput, wordsForInfinityAndNotANumberAreNoJson)
{
    for (const char* word : { "NaN", "nan", "Infinity", "-Infinity", "inf", "-inf", "1.#INF" })
        EXPECT_EQ(outcomeOf(withMember(word)), Refused) << word;
}

TEST(BadInput, taggedInfinityAndNotANumberAreNumbers)
{
    QByteArray text = example("plain-matte");
    text.replace("\"Value\": 0 ", "\"Value\": [\"f\", \"nan\"] ");
    ASSERT_NE(text, example("plain-matte"));
    EXPECT_EQ(outcomeOf(text), Loaded);
    for (const char* word : { "inf", "-inf", "nan", "NaN", "x" })
        EXPECT_EQ(outcomeOf(withMember(QByteArray("[\"f\",\"") + word + "\"]")), Loaded) << word;
}

TEST(BadInput, valueOfAnotherTypeAnywhereInAnExampleIsKeptOrRefused)
{
    mutateEveryValue(example("plain-matte"));
}

TEST(BadInput, valueOfAnotherTypeAnywhereAmongPairsAndCustomInputsIsKeptOrRefused)
{
    VireoBrickUser user;
    VireoBrickBase* band = addBrick(user, "VireoTexFltBAndBrick");
    propertyAs<DzIntProperty>(band, "count")->setValue(1);
    VireoBrickBase* scale = addBrick(user, "VireoTexFltScaleBrick");
    for (const int type : { MaterialLink, ColorLink, VectorLink, StringLink })
        scale->addCustomInput(type, QStringLiteral("tex1"), QStringLiteral("l"), 0);
    propertyAs<DzFloatProperty>(scale, "tex2")->setMap(QStringLiteral("a.png"));
    ASSERT_TRUE(link(scale, band, "tex1"));
    mutateEveryValue(DzBrickUserFile().saveText(&user));
}

TEST(BadInput, countBeyondItsLimitsMakesNoMoreThanTheUsualPairs)
{
    VireoBrickUser user;
    propertyAs<DzIntProperty>(addBrick(user, "VireoTexFltBAndBrick"), "count")->setValue(3);
    QByteArray text = DzBrickUserFile().saveText(&user);
    text.replace("\"Value\": [\"i\", 3]",
        "\"Clamped\": false, \"Max\": [\"i\", 2000000000], \"Value\": [\"i\", 100000]");
    VireoBrickUser other;
    ASSERT_TRUE(DzBrickUserFile().loadText(text, QStringLiteral("input"), &other));
    EXPECT_LE(other.getBrick(1)->getNumParameters(), 22);
    EXPECT_EQ(outcomeOf(text), Loaded);
}

// Files ---------------------------------------------------------------------------------------

TEST(BadInput, pathsThatAreNoReadableFileAreRefusedWithTheirName)
{
    QTemporaryDir folder;
    const QString missing = folder.filePath(QString::fromUtf8("fehlt ä.sskn"));
    for (const QString& path : { folder.path(), missing, missing + QStringLiteral("/x"), QString(),
             QStringLiteral("/proc/self/mem") }) {
        VireoBrickUser user;
        addBrick(user, "VireoTexFltScaleBrick");
        DzBrickUserFile file;
        EXPECT_FALSE(file.load(path, &user)) << path.toStdString();
        EXPECT_TRUE(file.getError().startsWith(QStringLiteral("cannot read ") + path));
        EXPECT_FALSE(file.getError().contains(QLatin1Char('\n')));
        EXPECT_EQ(user.getNumBricks(), 1);
    }
}

TEST(BadInput, fileWithoutPermissionIsRefused)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "nothing is forbidden to this user";
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.sskn"));
    VireoBrickUser user;
    DzBrickUserFile file;
    ASSERT_TRUE(file.save(path, &user));
    QFile::setPermissions(path, QFileDevice::Permissions());
    EXPECT_FALSE(file.load(path, &user));
    EXPECT_TRUE(file.getError().contains(path));
    QFile::setPermissions(path, QFileDevice::ReadOwner);
    EXPECT_FALSE(file.save(path, &user));
    EXPECT_TRUE(file.getError().contains(path));
}

TEST(BadInput, savingWhereNothingCanBeWrittenFailsWithTheName)
{
    QTemporaryDir folder;
    const VireoBrickUser user;
    DzBrickUserFile file;
    for (const QString& path : { folder.path(), folder.filePath(QStringLiteral("no/such/a.sskn")),
             QString(), QStringLiteral("/dev/full") }) {
        EXPECT_FALSE(file.save(path, &user)) << path.toStdString();
        EXPECT_TRUE(file.getError().startsWith(QStringLiteral("cannot write ") + path))
            << file.getError().toStdString();
        EXPECT_FALSE(file.getError().contains(QLatin1Char('\n')));
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 0);
}

TEST(BadInput, fullDiskLeavesTheOldFile)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.sskn"));
    VireoBrickUser user;
    DzBrickUserFile file;
    ASSERT_TRUE(file.save(path, &user));
    const QByteArray before = contentOf(path);
    for (int i = 0; i < 40; ++i)
        addBrick(user, "VireoTexFltScaleBrick");
    const auto saveAndReport = [&] {
        const bool isSaved = file.save(path, &user);
        return isSaved ? 1 : file.getError().contains(path) ? 42 : 2;
    };
    // At the start of the file, and after a part of it.
    EXPECT_EQ(runWithFileLimit(0, saveAndReport), 42);
    EXPECT_EQ(runWithFileLimit(5000, saveAndReport), 42);
    EXPECT_EQ(contentOf(path), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    // The same with room for it.
    EXPECT_EQ(runWithFileLimit(RLIM_INFINITY, saveAndReport), 1);
    EXPECT_NE(contentOf(path), before);
}

// Large files ---------------------------------------------------------------------------------

TEST(BadInput, fiveThousandCustomInputsOnOneBrickLoad)
{
    VireoBrickUser user;
    VireoBrickBase* scale = addBrick(user, "VireoTexFltScaleBrick");
    for (int i = 0; i < 5000; ++i)
        scale->addCustomInput(FloatLink, QStringLiteral("in%1").arg(i), QStringLiteral("l"), 0);
    const QByteArray text = DzBrickUserFile().saveText(&user);
    VireoBrickUser other;
    DzBrickUserFile file;
    ASSERT_TRUE(file.loadText(text, QStringLiteral("input"), &other));
    EXPECT_EQ(qobject_cast<VireoBrickBase*>(other.getBrick(1))->getNumCustomParams(), 5000);
    EXPECT_TRUE(file.saveText(&other) == text);
}

TEST(BadInput, fiveThousandCustomInputsOfOneNameLoad)
{
    VireoBrickUser user;
    VireoBrickBase* scale = addBrick(user, "VireoTexFltScaleBrick");
    for (int i = 0; i < 5000; ++i)
        scale->addCustomInput(FloatLink, QStringLiteral("same"), QStringLiteral("l"), 0);
    const QByteArray text = DzBrickUserFile().saveText(&user);
    VireoBrickUser other;
    DzBrickUserFile file;
    ASSERT_TRUE(file.loadText(text, QStringLiteral("input"), &other));
    EXPECT_EQ(other.getBrick(1)->getNumParameters(), 5003);
    EXPECT_TRUE(file.saveText(&other) == text);
}

// The corpus ----------------------------------------------------------------------------------

TEST(BadInput, everyFileOfTheCorpusIsRefusedOrSurvives)
{
    const QDir folder(projectPath(QStringLiteral("tests/data/fuzz-corpus")));
    const QStringList names = folder.entryList(QDir::Files);
    EXPECT_GE(names.size(), 25);
    int loaded = 0;
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const Outcome outcome = outcomeOf(contentOf(folder.filePath(name)), name);
        EXPECT_NE(outcome, Broken);
        loaded += outcome == Loaded ? 1 : 0;
    }
    EXPECT_GE(loaded, 15);
}
