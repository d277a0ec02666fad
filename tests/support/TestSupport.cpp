// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"

#include "NetworkCode.h"
#include "dzbrickparam.h"
#include "dzproperty.h"

#include <QFile>

void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

BrickPtr makeBrick(const char* className)
{
    QObject* object = dzApp->createInstance(QString::fromLatin1(className));
    auto* brick = qobject_cast<VireoBrickBase*>(object);
    EXPECT_NE(brick, nullptr) << className;
    return brick;
}

VireoBrickBase* addBrick(VireoBrickUser& user, const char* className)
{
    const BrickPtr brick = makeBrick(className);
    EXPECT_NE(user.addBrick(brick), 0u) << className;
    return brick;
}

DzBrickParam* param(DzShaderBrick* brick, const char* name)
{
    DzBrickParam* found = brick->findParameterByName(QString::fromUtf8(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

DzProperty* property(DzShaderBrick* brick, const char* name)
{
    if (DzProperty* plain = brick->findProperty(QString::fromUtf8(name)))
        return plain;
    DzBrickParam* carrier = param(brick, name);
    return carrier ? carrier->getProperty(0) : nullptr;
}

bool link(DzShaderBrick* from, DzShaderBrick* to, const char* input)
{
    return param(to, input)->addConnection(param(from, "result"));
}

namespace {

QString textOf(VireoBrickBase* brick, bool literal)
{
    GenerateOptions options;
    options.literalValues = literal;
    const GeneratedCode code = generateCode(brick, options);
    return brick->inherits("VireoRootBrick") ? code.materialText + code.resultName
                                             : code.materialText;
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// The longest common subsequence decides which lines a diff keeps; texts here are short.
QString unifiedDiff(const QStringList& a, const QStringList& b)
{
    const int n = a.size();
    const int m = b.size();
    QVector<QVector<int>> common(n + 1, QVector<int>(m + 1, 0));
    for (int i = n - 1; i >= 0; --i)
        for (int k = m - 1; k >= 0; --k)
            common[i][k] = a.at(i) == b.at(k) ? common[i + 1][k + 1] + 1
                                              : qMax(common[i + 1][k], common[i][k + 1]);
    QString diff = QStringLiteral("--- expected\n+++ actual\n");
    int i = 0;
    int k = 0;
    while (i < n || k < m) {
        if (i < n && k < m && a.at(i) == b.at(k)) {
            diff += QLatin1Char(' ') + a.at(i++) + QLatin1Char('\n');
            ++k;
        } else if (k < m && (i == n || common[i][k + 1] >= common[i + 1][k])) {
            diff += QLatin1Char('+') + b.at(k++) + QLatin1Char('\n');
        } else {
            diff += QLatin1Char('-') + a.at(i++) + QLatin1Char('\n');
        }
    }
    return diff;
}

} // namespace

QString literalText(VireoBrickBase* brick)
{
    return textOf(brick, true);
}

QString placeholderText(VireoBrickBase* brick)
{
    return textOf(brick, false);
}

QString freshMeshText()
{
    return QStringLiteral("\t\"bool    generatetangents\" [\"false\"]\n"
                          "\t\"float   dmscale\" [0.1]\n"
                          "\t\"float   dmoffset\" [0]\n"
                          "\t\"bool    dmnormalsmooth\" [\"true\"]\n"
                          "\t\"bool    dmnormalsplit\" [\"false\"]\n"
                          "\t\"bool    dmsharpboundary\" [\"false\"]\n"
                          "\t\"integer nsubdivlevels\" [0]\n"
                          "\t\"string  subdivscheme\" [\"loop\"]\n");
}

void lockAll(DzShaderBrick* brick)
{
    for (DzProperty* plain : brick->getPropertyList())
        plain->lock(true);
    for (int i = 0; i < brick->getNumParameters(); ++i)
        for (int k = 0; k < brick->getParameter(i)->getNumProperties(); ++k)
            brick->getParameter(i)->getProperty(k)->lock(true);
}

Warnings::Warnings()
    : m_before(dzApp->getMessageHandler())
{
    dzApp->setMessageHandler([this](DzApp::MessageType type, const QString& message) {
        if (type == DzApp::WarningMessage)
            messages.append(message);
    });
}

Warnings::~Warnings()
{
    dzApp->setMessageHandler(m_before);
}

QString projectPath(const QString& relativePath)
{
    return QStringLiteral(VIREO_SOURCE_DIR "/") + relativePath;
}

QByteArray projectFile(const QString& relativePath)
{
    return readFile(projectPath(relativePath));
}

QByteArray testFile(const QString& relativePath)
{
    return projectFile(QStringLiteral("tests/") + relativePath);
}

testing::AssertionResult sameText(const QString& expected, const QString& actual)
{
    if (expected == actual)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
        << unifiedDiff(expected.split(QLatin1Char('\n')), actual.split(QLatin1Char('\n')))
               .toStdString();
}
