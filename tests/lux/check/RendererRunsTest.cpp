// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

// The check against what the renderer itself said of each brick's text.

#include "BrickTable.h"
#include "NetworkCode.h"
#include "TestSupport.h"
#include "TextCheck.h"
#include "dzbrickparam.h"
#include "dzintproperty.h"
#include "dznumericproperty.h"

#include <QMap>

using namespace lux;

namespace {

QList<QStringList> tableRows(const char* name)
{
    QList<QStringList> rows;
    const QString text = QString::fromUtf8(testFile(QLatin1String(name)));
    for (const QString& line : text.split(QLatin1Char('\n')))
        if (!line.isEmpty() && !line.startsWith(QLatin1Char('#')))
            rows.append(line.split(QLatin1Char('\t')));
    return rows;
}

/// "kind type" to class name, from the table of the bricks.
QMap<QString, QString> brickClasses()
{
    QMap<QString, QString> classes;
    for (const BrickRow& row : brickTable())
        classes.insert(row.kind + QLatin1Char(' ') + row.type, row.name);
    return classes;
}

std::vector<Finding> findingsOf(const QString& text)
{
    SceneText scene;
    scene.readText(text.toUtf8(), QString(), SceneOptions());
    CheckOptions options;
    options.isWhole = true;
    return checkScene(scene, options);
}

void linkMaterials(VireoBrickUser& user, VireoBrickBase* brick)
{
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        const QString name = brick->getParameter(i)->getName();
        if (name.contains(QLatin1String("material"))) {
            EXPECT_TRUE(link(matte, brick, qPrintable(name)));
        }
    }
}

/// The text that was rendered.
QString textOf(const QString& className, const QString& variant)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, qPrintable(className));
    GenerateOptions options;
    if (variant == QLatin1String("count 2"))
        propertyAs<DzIntProperty>(brick, "count")->setValue(2);
    if (variant.contains(QLatin1String("connected")))
        linkMaterials(user, brick);
    if (variant.contains(QLatin1String("filename"))) {
        propertyAs<DzNumericProperty>(brick, "filename")->setMap(QStringLiteral("map.png"));
        options.mapFiles = variant.contains(QLatin1String("as string"));
    }
    QStringList lines = generateCode(brick, options).materialText.split(QLatin1Char('\n'));
    if (variant.contains(QLatin1String("without")))
        lines = lines.filter(QRegExp(QStringLiteral("^(?!\\t\"vector)")));
    if (variant.contains(QLatin1String("into mix amount")))
        lines.append(QStringLiteral(
            "Texture \"user\" \"float\" \"mix\" \"texture amount\" [\"Lm_texture1\"]"));
    return lines.join(QLatin1Char('\n'));
}

struct Outcome {
    QString word = QStringLiteral("taken");
    QStringList unread;
};

/// What the check says of the statements of this type.
Outcome outcomeOf(const std::vector<Finding>& findings, const QString& type)
{
    Outcome outcome;
    for (const Finding& finding : findings) {
        if (finding.type != type)
            continue;
        if (finding.severity == Severity::Crash)
            outcome.word = QStringLiteral("crash");
        else if (finding.severity == Severity::Refused)
            outcome.word = QStringLiteral("refused");
        else if (finding.severity == Severity::Ignored)
            outcome.unread.append(finding.parameter);
    }
    outcome.unread.sort();
    return outcome;
}

} // namespace

TEST(RendererRuns, theCheckSaysWhatTheRendererSaid)
{
    const QMap<QString, QString> classes = brickClasses();
    const QList<QStringList> rows = tableRows("data/renderer-runs.tsv");
    ASSERT_EQ(rows.size(), 134);
    QStringList seen;
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 5);
        SCOPED_TRACE(row.join(QLatin1Char(' ')).toStdString());
        const QString key = row.at(0) + QLatin1Char(' ') + row.at(1);
        ASSERT_TRUE(classes.contains(key));
        seen.append(key);
        const QString text = textOf(classes.value(key), row.at(2));
        // Without an image the brick is written as a constant, of which nothing was said.
        const QString type = row.at(2).contains(QLatin1String("constant"))
            ? QStringLiteral("constant")
            : row.at(1);
        ASSERT_TRUE(text.contains(type)) << text.toStdString();
        const std::vector<Finding> findings = findingsOf(text);
        const Outcome outcome = outcomeOf(findings, type);
        EXPECT_EQ(outcome.word.toStdString(), row.at(3).toStdString());
        EXPECT_EQ(outcome.unread.join(QLatin1Char(' ')).toStdString(),
            row.at(4) == QLatin1String("-") ? std::string() : row.at(4).toStdString());
        for (const Finding& finding : findings) {
            EXPECT_NE(finding.name, QStringLiteral("user")) << finding.sentence.toStdString();
            EXPECT_FALSE(finding.sentence.contains(QLatin1Char('{')))
                << finding.sentence.toStdString();
            EXPECT_FALSE(finding.source.isEmpty());
        }
    }
    seen.removeDuplicates();
    EXPECT_EQ(seen.size(), brickTable().size() - 1); // all but the root
}

/// Values of fresh bricks that say one thing and do another, or differ from the renderer's own.
TEST(RendererRuns, freshBricksTellTheirSurprises)
{
    const struct {
        const char* className;
        QStringList loud;
        QStringList quiet;
    } expected[] = {
        { "VireoMatGlassBrick", { "index" }, { "filmindex" } },
        { "VireoMatMirrorBrick", {}, { "filmindex" } },
        { "VireoMatMatteTranslucentBrick", {}, { "sigma" } },
        { "VireoMatGlossyBrick", {}, { "Ka" } },
        { "VireoMatLayeredBrick", {}, { "type" } },
        { "VireoMatCarpaintBrick", {}, { "M1", "M2", "M3", "R1", "R2", "R3" } },
        { "VireoVolHomogeneousBrick", {}, { "fresnel" } },
        { "VireoTexFnlCauchyBrick", { "cauchyb" }, { "index" } },
        { "VireoTexFnlMixBrick", {}, { "tex1", "tex2" } },
        { "VireoTexFnlBiLerpBrick", {}, { "v00", "v01", "v10", "v11" } },
        { "VireoTexFltBrickBrick", {}, { "brickbond" } },
        { "VireoTexClrBrickBrick", {}, { "brickbond" } },
        { "VireoTexFltFbmBrick", { "scale" }, {} },
        { "VireoTexFltWindyBrick", { "scale" }, {} },
        { "VireoTexFltWrinkledBrick", { "scale" }, {} },
        { "VireoTexFnlPresetBrick", { "name" }, {} },
        { "VireoTexFnlFresnelNameBrick", {}, { "filename" } },
        { "VireoTexFltNormalMapBrick", { "filename" }, {} },
        { "VireoMatMatteBrick", {}, {} },
        { "VireoMatVelvetBrick", {}, {} },
        { "VireoMatRoughGlassBrick", {}, {} },
        { "VireoTexFltCheckerboardBrick", {}, {} },
        { "VireoTexClrMarbleBrick", {}, {} },
        { "VireoTexFltBlenderBlendBrick", {}, {} },
    };
    for (const auto& row : expected) {
        SCOPED_TRACE(row.className);
        QStringList loud;
        QStringList quiet;
        for (const Finding& finding : findingsOf(literalText(makeBrick(row.className)))) {
            if (finding.severity == Severity::Surprising)
                (finding.isQuiet ? quiet : loud).append(finding.parameter);
            else
                EXPECT_TRUE(finding.isQuiet) << finding.sentence.toStdString();
            EXPECT_FALSE(finding.advice.isEmpty());
        }
        loud.sort();
        quiet.sort();
        EXPECT_EQ(loud, row.loud);
        EXPECT_EQ(quiet, row.quiet);
    }
}
