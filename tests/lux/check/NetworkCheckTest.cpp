// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

// The check against an independent reading of the table of what each type reads.

#include "NetworkCheck.h"

#include "NetworkCode.h"
#include "RandomNetwork.h"
#include "TestSupport.h"
#include "VireoRootBrick.h"
#include "dzbrickuserfile.h"
#include "dzintproperty.h"
#include "dznumericproperty.h"

#include <QDir>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

using namespace lux;

namespace {

const int networkCount = 2000;

struct Line {
    QString type;
    QString name;
    QString value;
};

/// A statement as our text has it, taken apart by its lines.
struct PlainStatement {
    QString kind; ///< material, volume, float, color or fresnel
    QString type;
    QString name;
    QList<Line> lines;
    bool isPlain = true; ///< false if some value breaks the form of a line
};

struct Verdict {
    bool isCrash = false;
    bool isRefused = false;
    QStringList unread;
};

/// The table, read by another hand than the check's.
class Oracle
{
public:
    Oracle()
    {
        for (const QString& line :
            QString::fromUtf8(testFile(QStringLiteral("data/renderer-parameters.tsv")))
                .split(QLatin1Char('\n'))) {
            const QStringList row = line.split(QLatin1Char('\t'));
            if (row.size() != 4 || line.startsWith(QLatin1Char('#')))
                continue;
            const QString key = row.at(0) + QLatin1Char(' ') + row.at(1);
            m_known.insert(key);
            m_takes.insert(key + QLatin1Char(' ') + row.at(2),
                m_takes.value(key + QLatin1Char(' ') + row.at(2)) + row.at(3) + QLatin1Char('|'));
        }
    }

    void forget() { m_names.clear(); }

    Verdict judge(const PlainStatement& statement)
    {
        Verdict verdict;
        const QString key = statement.kind + QLatin1Char(' ') + statement.type;
        if (!m_known.contains(key)) {
            verdict.isRefused = true;
        } else {
            for (const Line& line : statement.lines)
                if (!isRead(statement, line))
                    verdict.unread.append(line.name);
            judgeNeeds(statement, &verdict);
        }
        m_names.insert(statement.kind + QLatin1Char(' ') + statement.name);
        return verdict;
    }

private:
    static QString value(const PlainStatement& statement, const char* name, const char* standard)
    {
        QString found = QLatin1String(standard);
        for (const Line& line : statement.lines)
            if (line.name == QLatin1String(name))
                found = QString(line.value).remove(QLatin1Char('"'));
        return found;
    }

    bool isRead(const PlainStatement& statement, const Line& line) const
    {
        const QString key = statement.kind + QLatin1Char(' ') + statement.type;
        const QString type = statement.type;
        if (statement.kind == QLatin1String("material") && line.name == QLatin1String("type"))
            return true;
        QString name = line.name;
        const QRegularExpressionMatch number
            = QRegularExpression(QStringLiteral("^tex([1-9][0-9]*)$")).match(name);
        if (number.hasMatch() && m_takes.contains(key + QLatin1String(" tex1..N"))) {
            const QString list
                = value(statement, type == QLatin1String("band") ? "offsets" : "weights", "");
            const int count = list.isEmpty() ? 0 : list.split(QLatin1Char(' ')).size();
            if (number.captured(1).toInt() > count)
                return false;
            name = QStringLiteral("tex1..N");
        }
        if (isTaken(m_takes.value(key + QLatin1Char(' ') + name), line))
            return !line.name.startsWith(QLatin1String("backface_"))
                || value(statement, "onesided", "true") == QLatin1String("false");
        const QString dimension = value(statement, "dimension", "2");
        const bool isChecker = type == QLatin1String("checkerboard");
        if (m_takes.contains(key + QLatin1String(" <2D>"))
            && !(isChecker && dimension != QLatin1String("2")) && isReadOnSurface(statement, line))
            return true;
        return m_takes.contains(key + QLatin1String(" <3D>"))
            && !(isChecker && dimension != QLatin1String("3")) && isReadInSpace(line);
    }

    static bool isReadOnSurface(const PlainStatement& statement, const Line& line)
    {
        const QString mapping = value(statement, "mapping", "uv");
        const bool isPlanar = mapping == QLatin1String("planar");
        if (line.name == QLatin1String("mapping"))
            return line.type == QLatin1String("string");
        if (line.name == QLatin1String("uscale"))
            return line.type == QLatin1String("float") && !isPlanar;
        if (line.name == QLatin1String("vscale"))
            return line.type == QLatin1String("float") && !isPlanar
                && mapping != QLatin1String("cylindrical");
        if (line.name == QLatin1String("udelta") || line.name == QLatin1String("vdelta"))
            return line.type == QLatin1String("float");
        return (line.name == QLatin1String("v1") || line.name == QLatin1String("v2"))
            && line.type == QLatin1String("vector") && isPlanar;
    }

    static bool isReadInSpace(const Line& line)
    {
        // The renderer's word is "globalnormal".
        if (line.name == QLatin1String("coordinates"))
            return line.type == QLatin1String("string")
                && line.value != QLatin1String("\"global normal\"");
        return line.type == QLatin1String("vector")
            && QStringList { "translate", "rotate", "scale" }.contains(line.name);
    }

    bool isTaken(const QString& takes, const Line& line) const
    {
        const QString name = QString(line.value).remove(QLatin1Char('"'));
        const QStringList forms = takes.split(QLatin1Char('|'), Qt::SkipEmptyParts);
        for (int i = 0; i < forms.size(); ++i) {
            const QString form = forms.at(i);
            if (form == QLatin1String("texture(fresnel)")) {
                if (line.type == QLatin1String("texture")
                    && m_names.contains(QLatin1String("fresnel ") + name))
                    return true;
            } else if (form == QLatin1String("texture")) {
                // Alone it takes what a bump is.
                const QString space = i > 0 ? forms.at(i - 1) : QStringLiteral("float");
                if (line.type == QLatin1String("texture")
                    && m_names.contains(space + QLatin1Char(' ') + name))
                    return true;
            } else if (form == QLatin1String("string(material)")) {
                if (line.type == QLatin1String("string"))
                    return true;
            } else if (line.type == QString(form).remove(QLatin1String("[]"))) {
                return true;
            }
        }
        return false;
    }

    void judgeNeeds(const PlainStatement& statement, Verdict* verdict) const
    {
        const auto hasLine = [&statement](const char* type, const char* name) {
            for (const Line& line : statement.lines)
                if (line.type == QLatin1String(type) && line.name == QLatin1String(name)
                    && line.value != QLatin1String("\"\""))
                    return true;
            return false;
        };
        if (statement.type == QLatin1String("band"))
            verdict->isCrash = !hasLine("float", "offsets");
        else if (statement.type == QLatin1String("multimix"))
            verdict->isCrash = !hasLine("float", "weights");
        if (statement.kind == QLatin1String("fresnel")
            && (statement.type == QLatin1String("sopra")
                || statement.type == QLatin1String("luxpop")))
            verdict->isRefused = !hasLine("string", "filename");
        if (statement.kind != QLatin1String("material"))
            return;
        if (statement.type == QLatin1String("mix"))
            verdict->isRefused
                = !hasLine("string", "namedmaterial1") || !hasLine("string", "namedmaterial2");
        else if (statement.type == QLatin1String("glossycoating"))
            verdict->isRefused = !hasLine("string", "basematerial");
        if (!verdict->isRefused)
            return;
        // A material that is given up reads nothing.
        verdict->unread.clear();
        for (const Line& line : statement.lines)
            if (line.name != QLatin1String("type")
                && !line.name.contains(QLatin1String("material")))
                verdict->unread.append(line.name);
    }

    QSet<QString> m_known;
    QMap<QString, QString> m_takes;
    QSet<QString> m_names;
};

/// The statements of one brick's text.
QList<PlainStatement> plainStatements(const QString& text)
{
    static const QRegularExpression head(QStringLiteral(
        "^(Texture|MakeNamedMaterial|MakeNamedVolume) \"([^\"\\\\]*)\"(?: \"([^\"]*)\")?(?: "
        "\"([^\"]*)\")?$"));
    static const QRegularExpression body(
        QStringLiteral("^\\t\"(\\w+) +([^\"\\\\]*)\" \\[([^\\\\]*)\\]$"));
    QList<PlainStatement> statements;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        const QRegularExpressionMatch begin = head.match(line);
        if (begin.hasMatch()) {
            PlainStatement statement;
            statement.name = begin.captured(2);
            statement.kind = begin.captured(1) == QLatin1String("Texture") ? begin.captured(3)
                : begin.captured(1) == QLatin1String("MakeNamedVolume")
                ? QStringLiteral("volume")
                : QStringLiteral("material");
            statement.type
                = statement.kind == QLatin1String("volume") ? begin.captured(3) : begin.captured(4);
            statements.append(statement);
            continue;
        }
        if (statements.isEmpty() || line.isEmpty() || line.startsWith(QLatin1String("NamedM"))
            || line.startsWith(QLatin1String("Interior"))
            || line.startsWith(QLatin1String("Exterior")))
            continue;
        const QRegularExpressionMatch parameter = body.match(line);
        const QString value = parameter.captured(3);
        const int quotes = value.count(QLatin1Char('"'));
        if (!parameter.hasMatch()
            || !(quotes == 0
                || (quotes == 2 && value.startsWith(QLatin1Char('"'))
                    && value.endsWith(QLatin1Char('"'))))) {
            statements.last().isPlain = false;
            continue;
        }
        statements.last().lines.append(
            { parameter.captured(1), parameter.captured(2), parameter.captured(3) });
        if (statements.last().kind == QLatin1String("material")
            && parameter.captured(2) == QLatin1String("type"))
            statements.last().type = value.mid(1, value.size() - 2);
    }
    return statements;
}

Verdict verdictOf(const std::vector<BrickFinding>& findings, const QString& statement)
{
    Verdict verdict;
    for (const BrickFinding& found : findings) {
        if (found.finding.name != statement)
            continue;
        verdict.isCrash = verdict.isCrash || found.finding.severity == Severity::Crash;
        verdict.isRefused = verdict.isRefused || found.finding.severity == Severity::Refused;
        // A number for a bump is not read either, which is told as the surprise that it is.
        if (found.finding.severity == Severity::Ignored
            || found.finding.rule == QLatin1String("unread-value"))
            verdict.unread.append(found.finding.parameter);
    }
    verdict.unread.sort();
    return verdict;
}

class LuxNetworkCheck : public testing::Test
{
protected:
    std::vector<BrickFinding> check() const { return checkNetwork(&m_user, NetworkCheckOptions()); }

    /// Rules of what is told, unasked ones in brackets.
    QStringList rules() const
    {
        QStringList list;
        for (const BrickFinding& found : check())
            list.append(found.finding.isQuiet
                    ? QLatin1Char('(') + found.finding.rule + QLatin1Char(')')
                    : found.finding.rule);
        return list;
    }

    VireoBrickUser m_user;
};

} // namespace

TEST(RandomNetworkCheck, agreesWithTheTable)
{
    Oracle oracle;
    int numStatements = 0;
    int numRefused = 0;
    int numCrashes = 0;
    int numUnread = 0;
    int numBroken = 0;
    for (int seed = 0; seed < networkCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        VireoBrickUser user;
        buildRandomNetwork(&user, static_cast<quint32>(seed));
        const std::vector<BrickFinding> findings = checkNetwork(&user, NetworkCheckOptions());
        GenerateOptions options;
        options.mapFiles = true;
        const QList<PlainStatement> statements
            = plainStatements(generateCode(findRootBrick(&user), options).materialText);
        bool isPlain = true;
        for (const PlainStatement& statement : statements)
            isPlain = isPlain && statement.isPlain;
        if (!isPlain) {
            // A quote or backslash in a name: not what follows it is judged, but that it is told.
            bool isTold = false;
            for (const BrickFinding& found : findings)
                isTold = isTold || found.finding.severity <= Severity::Surprising;
            EXPECT_TRUE(isTold);
            ++numBroken;
            continue;
        }
        oracle.forget();
        for (const PlainStatement& statement : statements) {
            SCOPED_TRACE((statement.name + QLatin1Char(' ') + statement.kind + QLatin1Char(' ')
                + statement.type)
                             .toStdString());
            Verdict expected = oracle.judge(statement);
            expected.unread.sort();
            const Verdict actual = verdictOf(findings, statement.name);
            EXPECT_EQ(actual.isCrash, expected.isCrash);
            EXPECT_EQ(actual.isRefused, expected.isRefused);
            EXPECT_EQ(
                actual.unread.join(' ').toStdString(), expected.unread.join(' ').toStdString());
            ++numStatements;
            numRefused += expected.isRefused ? 1 : 0;
            numCrashes += expected.isCrash ? 1 : 0;
            numUnread += expected.unread.size();
        }
        if (testing::Test::HasFailure())
            break; // The first tells enough.
    }
    // It was worth asking.
    EXPECT_GT(numStatements, 5000);
    EXPECT_GT(numRefused, 200);
    EXPECT_GT(numCrashes, 20);
    EXPECT_GT(numUnread, 5000);
    EXPECT_LT(numBroken, networkCount / 2);
}

TEST(ExampleCheck, givesNoFalseAlarm)
{
    const QDir folder(projectPath(QStringLiteral("examples")));
    const QStringList names = folder.entryList({ QStringLiteral("*.sskn") }, QDir::Files);
    EXPECT_EQ(names.size(), 13);
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        VireoBrickUser user;
        DzBrickUserFile file;
        ASSERT_TRUE(file.load(folder.filePath(name), &user));
        NetworkCheckOptions options;
        options.imageFolder = folder.path();
        for (const BrickFinding& found : checkNetwork(&user, options))
            EXPECT_TRUE(found.finding.isQuiet) << found.finding.sentence.toStdString();
    }
}

TEST_F(LuxNetworkCheck, findingsKnowTheirBrickAndValue)
{
    VireoBrickBase* root = addBrick(m_user, "VireoRootBrick");
    VireoBrickBase* glass = addBrick(m_user, "VireoMatGlassBrick");
    VireoBrickBase* fbm = addBrick(m_user, "VireoTexFltFbmBrick");
    VireoBrickBase* band = addBrick(m_user, "VireoTexFltBAndBrick");
    VireoBrickBase* alone = addBrick(m_user, "VireoTexFltWindyBrick");
    ASSERT_TRUE(link(glass, root, "material"));
    ASSERT_TRUE(link(fbm, glass, "bumpmap"));
    ASSERT_TRUE(link(band, glass, "film"));
    int numSeen = 0;
    for (const BrickFinding& found : check()) {
        const QString rule = found.finding.rule;
        if (rule == QLatin1String("mirror-glass")) {
            EXPECT_EQ(found.brick, glass);
            EXPECT_EQ(found.property, property(glass, "index"));
            EXPECT_TRUE(found.isWritten);
            ASSERT_EQ(found.finding.remedies.size(), 1);
            EXPECT_EQ(found.finding.remedies.at(0).action, Remedy::Set);
            EXPECT_EQ(found.finding.remedies.at(0).values.at(0).first, QStringLiteral("index"));
            EXPECT_EQ(found.finding.remedies.at(0).values.at(0).second, QStringLiteral("1.5"));
        } else if (rule == QLatin1String("collapsed-space")) {
            EXPECT_EQ(found.isWritten, found.brick == fbm);
            EXPECT_TRUE(found.brick == fbm || found.brick == alone);
            EXPECT_EQ(found.finding.remedies.at(0).values.size(), 3);
        } else if (rule == QLatin1String("no-offsets")) {
            EXPECT_EQ(found.brick, band);
            EXPECT_EQ(found.property, property(band, "count"));
            EXPECT_EQ(found.finding.severity, Severity::Crash);
        } else {
            continue;
        }
        ++numSeen;
    }
    EXPECT_EQ(numSeen, 4);
}

TEST_F(LuxNetworkCheck, remediesEndTheirFindings)
{
    VireoBrickBase* root = addBrick(m_user, "VireoRootBrick");
    VireoBrickBase* glass = addBrick(m_user, "VireoMatGlassBrick");
    ASSERT_TRUE(link(glass, root, "material"));
    EXPECT_TRUE(rules().contains(QStringLiteral("mirror-glass")));
    propertyAs<DzNumericProperty>(glass, "index")->setDoubleValue(1.5);
    EXPECT_FALSE(rules().contains(QStringLiteral("mirror-glass")));
    VireoBrickBase* band = addBrick(m_user, "VireoTexFltBAndBrick");
    EXPECT_TRUE(rules().contains(QStringLiteral("no-offsets")));
    propertyAs<DzIntProperty>(band, "count")->setValue(2);
    EXPECT_FALSE(rules().contains(QStringLiteral("no-offsets")));
}

TEST_F(LuxNetworkCheck, anImageOnAValueIsToldOf)
{
    VireoBrickBase* root = addBrick(m_user, "VireoRootBrick");
    VireoBrickBase* matte = addBrick(m_user, "VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    propertyAs<DzNumericProperty>(matte, "Kd")->setMap(QStringLiteral("skin.png"));
    const std::vector<BrickFinding> findings = check();
    ASSERT_FALSE(findings.empty());
    const BrickFinding& found = findings.back();
    EXPECT_EQ(found.finding.rule, QStringLiteral("image-not-written"));
    EXPECT_EQ(found.property, property(matte, "Kd"));
    EXPECT_TRUE(found.finding.sentence.contains(QStringLiteral("skin.png")));
    EXPECT_EQ(found.finding.remedies.at(0).action, Remedy::InsertImageMap);
    EXPECT_EQ(found.finding.remedies.at(0).parameter, QStringLiteral("Kd"));
}

TEST_F(LuxNetworkCheck, anEmptyNetworkHasNoFindings)
{
    EXPECT_TRUE(check().empty());
    addBrick(m_user, "VireoRootBrick");
    EXPECT_TRUE(check().empty());
}
