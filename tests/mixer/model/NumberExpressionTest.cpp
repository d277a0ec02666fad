// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NumberExpression.h"
#include "TestSupport.h"

namespace {

double valueOf(const char* text)
{
    double value = -12345;
    QString error;
    EXPECT_TRUE(evaluateNumber(QString::fromUtf8(text), &value, &error))
        << text << ": " << error.toStdString();
    return value;
}

QString refusalOf(const QString& text)
{
    double value = 7;
    QString error;
    EXPECT_FALSE(evaluateNumber(text, &value, &error)) << text.toStdString();
    EXPECT_EQ(value, 7.0);
    return error;
}

} // namespace

TEST(NumberExpression, readsNumbersAndArithmetic)
{
    EXPECT_DOUBLE_EQ(valueOf("0.25"), 0.25);
    EXPECT_DOUBLE_EQ(valueOf(" -3 "), -3);
    EXPECT_DOUBLE_EQ(valueOf("1e-3"), 0.001);
    EXPECT_DOUBLE_EQ(valueOf("2*0.3+1"), 1.6);
    EXPECT_DOUBLE_EQ(valueOf("(1+2)*3"), 9);
    EXPECT_DOUBLE_EQ(valueOf("1/4"), 0.25);
    EXPECT_DOUBLE_EQ(valueOf("sqrt(16)"), 4);
    EXPECT_DOUBLE_EQ(valueOf("max(1,2)"), 2);
}

TEST(NumberExpression, readsADecimalCommaInAPlainNumber)
{
    EXPECT_DOUBLE_EQ(valueOf("0,5"), 0.5);
    EXPECT_DOUBLE_EQ(valueOf("-1,25e2"), -125);
}

TEST(NumberExpression, refusesWhatHasNoFiniteValueAndSaysWhy)
{
    EXPECT_TRUE(refusalOf(QStringLiteral("1/0")).contains(QLatin1String("finite")));
    EXPECT_TRUE(refusalOf(QStringLiteral("0/0")).contains(QLatin1String("finite")));
    EXPECT_TRUE(refusalOf(QStringLiteral("1e999")).contains(QLatin1String("1e999")));
    EXPECT_TRUE(refusalOf(QString()).contains(QLatin1String("Type a number")));
    EXPECT_TRUE(refusalOf(QStringLiteral("red")).contains(QLatin1String("red")));
    EXPECT_TRUE(refusalOf(QStringLiteral("2*")).contains(QLatin1String("2*")));
    EXPECT_TRUE(refusalOf(QStringLiteral("\u65e5\u672c")).contains(QStringLiteral("\u65e5")));
    EXPECT_FALSE(refusalOf(QString(100000, QLatin1Char('('))).isEmpty());
    EXPECT_FALSE(refusalOf(QString(900, QLatin1Char('('))).isEmpty());
}
