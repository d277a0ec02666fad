// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Explanations.h"
#include "BrickTable.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzclassfactory.h"
#include "dzintproperty.h"
#include "dzpluginmgr.h"

#include <QMap>
#include <QSet>

#include <nlohmann/json.hpp>

namespace {

const int LONGEST_SENTENCE = 240;

/// Names of the inputs and values of every registered brick class, each as it is when new, bricks
/// with pairs having two of them.
class ExplanationsTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories())
            if (factory->getMetaObject().inherits(&VireoBrickBase::staticMetaObject))
                inputs.insert(
                    factory->className(), inputsOf(factory->className().toLatin1().constData()));
    }

    static QSet<QString> inputsOf(const char* className)
    {
        const BrickPtr brick = makeBrick(className);
        if (auto* count = qobject_cast<DzIntProperty*>(brick->findProperty("count")))
            count->setValue(2);
        QSet<QString> names;
        for (const DzProperty* property : brick->getPropertyList())
            names.insert(property->getName());
        for (int i = 0; i < brick->getNumParameters(); ++i)
            if (!brick->getParameter(i)->isOutput())
                names.insert(brick->getParameter(i)->getName());
        return names;
    }

    static nlohmann::json table()
    {
        return nlohmann::json::parse(
            projectFile(QStringLiteral("lux/check/explanations.json")).toStdString());
    }

    static QString text(const nlohmann::json& value)
    {
        return QString::fromStdString(value.get<std::string>());
    }

    /// Every sentence with the place at which it is shown.
    static QMap<QString, QString> allSentences()
    {
        QMap<QString, QString> sentences;
        for (auto it = inputs.constBegin(); it != inputs.constEnd(); ++it) {
            sentences.insert(it.key(), Explanations::ofBrick(it.key()));
            for (const QString& name : *it)
                sentences.insert(
                    it.key() + QLatin1Char('.') + name, Explanations::ofInput(it.key(), name));
        }
        return sentences;
    }

    static QMap<QString, QSet<QString>> inputs;
};

QMap<QString, QSet<QString>> ExplanationsTest::inputs;

} // namespace

TEST_F(ExplanationsTest, everyBrickAndEveryInputHasASentence)
{
    ASSERT_EQ(inputs.size(), brickTable().size());
    const QMap<QString, QString> sentences = allSentences();
    ASSERT_GT(sentences.size(), 300);
    for (auto it = sentences.constBegin(); it != sentences.constEnd(); ++it)
        EXPECT_FALSE(it->isEmpty())
            << it.key().toStdString() << " has no sentence in lux/check/explanations.json";
}

TEST_F(ExplanationsTest, sentencesAreShortPlainTextAndWhole)
{
    const QMap<QString, QString> sentences = allSentences();
    for (auto it = sentences.constBegin(); it != sentences.constEnd(); ++it) {
        EXPECT_LE(it->size(), LONGEST_SENTENCE) << it.key().toStdString();
        EXPECT_EQ(*it, it->simplified()) << it.key().toStdString();
        EXPECT_TRUE(it->endsWith(QLatin1Char('.'))) << it.key().toStdString();
        for (const char* markup : { "<", ">", "&", "`", "%1" })
            EXPECT_FALSE(it->contains(QLatin1String(markup))) << it.key().toStdString();
    }
}

TEST_F(ExplanationsTest, noSentenceIsForABrickThatDoesNotExist)
{
    const nlohmann::json content = table();
    for (const auto& brick : content.at("bricks").items())
        EXPECT_TRUE(inputs.contains(QString::fromStdString(brick.key()))) << brick.key();
}

TEST_F(ExplanationsTest, everySentenceOnAnInputIsShownSomewhere)
{
    const nlohmann::json content = table();
    for (const auto& input : content.at("inputs").items()) {
        const QString name = QString::fromStdString(input.key());
        bool isShown = false;
        for (auto it = inputs.constBegin(); it != inputs.constEnd(); ++it)
            isShown |= it->contains(name)
                && Explanations::ofInput(it.key(), name) == text(input.value());
        EXPECT_TRUE(isShown) << input.key();
    }
}

TEST_F(ExplanationsTest, everyExceptionIsForAnInputThatItsBrickHasAndIsMadeOnce)
{
    QSet<QString> places;
    const nlohmann::json content = table();
    for (const auto& exception : content.at("exceptions"))
        for (const auto& brick : exception.at("bricks"))
            for (const auto& input : exception.at("inputs")) {
                const QString place = text(brick) + QLatin1Char('.') + text(input);
                EXPECT_FALSE(places.contains(place)) << place.toStdString();
                places.insert(place);
                const QString name = text(input).replace(QLatin1String("%1"), QLatin1String("2"));
                EXPECT_TRUE(inputs.value(text(brick)).contains(name)) << place.toStdString();
                EXPECT_EQ(Explanations::ofInput(text(brick), name),
                    text(exception.at("text")).replace(QLatin1String("%1"), QLatin1String("2")));
            }
    EXPECT_FALSE(places.isEmpty());
}

TEST_F(ExplanationsTest, aNameThatMeansSomethingElseInAClassIsExplainedThere)
{
    const auto of = [](const char* className, const char* input) {
        return Explanations::ofInput(QString::fromLatin1(className), QString::fromLatin1(input));
    };
    EXPECT_TRUE(of("VireoMatGlassBrick", "index").contains(QLatin1String("mirror")));
    EXPECT_TRUE(of("VireoMatGlossyBrick", "index").contains(QLatin1String("coat")));
    EXPECT_NE(of("VireoTexClrConstantBrick", "scale"), of("VireoTexFltFbmBrick", "scale"));
    EXPECT_NE(of("VireoMatScatterBrick", "g"), of("VireoVolHomogeneousBrick", "g"));
    EXPECT_NE(of("VireoMatMixBrick", "amount"), of("VireoTexFltMixBrick", "amount"));
    EXPECT_NE(of("VireoTexFltAddBrick", "tex1"), of("VireoTexFltSubtractBrick", "tex1"));
}

TEST_F(ExplanationsTest, pairsAreExplainedUnderTheirNumber)
{
    const QString band = QStringLiteral("VireoTexClrBAndBrick");
    EXPECT_TRUE(Explanations::ofInput(band, QStringLiteral("offset10"))
                    .contains(QLatin1String("texture 10 ")));
    EXPECT_TRUE(
        Explanations::ofInput(band, QStringLiteral("tex3")).contains(QLatin1String("offset3")));
}

TEST_F(ExplanationsTest, whatIsUnknownHasNoSentence)
{
    EXPECT_EQ(Explanations::ofBrick(QStringLiteral("VireoMatMadeUpBrick")), QString());
    EXPECT_EQ(Explanations::ofBrick(QString()), QString());
    const QString matte = QStringLiteral("VireoMatMatteBrick");
    EXPECT_EQ(Explanations::ofInput(matte, QStringLiteral("madeUp")), QString());
    EXPECT_EQ(Explanations::ofInput(matte, QStringLiteral("12")), QString());
    EXPECT_EQ(Explanations::ofInput(matte, QString()), QString());
    EXPECT_EQ(Explanations::ofInput(matte, QStringLiteral("offset%1")), QString());
}
