// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "RendererFindings.h"

#include "FreshValue.h"
#include "NetworkWalk.h"
#include "RendererFacts.h"
#include "TextCheck.h"
#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

/// The property that stands for a parameter of a brick: the input's first, or the brick's own.
DzProperty* propertyOf(const DzShaderBrick* brick, const QString& parameter)
{
    if (parameter.isEmpty())
        return nullptr;
    const DzBrickParam* input = brick->findParameterByName(parameter);
    return input && input->getNumProperties() > 0 ? input->getProperty(0)
                                                  : brick->findProperty(parameter);
}

/// The value that a finding is of, or the one that its first remedy sets.
DzProperty* propertyOf(const DzShaderBrick* brick, const lux::Finding& finding)
{
    if (DzProperty* property = propertyOf(brick, finding.parameter))
        return property;
    for (const lux::Remedy& remedy : finding.remedies)
        for (const auto& value : remedy.values)
            if (DzProperty* property = propertyOf(brick, value.first))
                return property;
    return nullptr;
}

ProblemLevel levelOf(lux::Severity severity)
{
    switch (severity) {
    case lux::Severity::Crash:
    case lux::Severity::Refused:
        return ProblemLevel::Stops;
    case lux::Severity::Surprising:
        return ProblemLevel::Warns;
    case lux::Severity::Ignored:
    case lux::Severity::Portability:
        break;
    }
    return ProblemLevel::Notes;
}

/// With the names that users see rather than those of the text.
QString inWordsOf(const DzShaderBrick* brick, QString sentence, const QString& parameter)
{
    const DzProperty* property = brick ? propertyOf(brick, parameter) : nullptr;
    if (!property)
        return sentence;
    const DzBrickParam* input = property->getBrickParam();
    const QString label = input ? input->getLabel() : property->getLabel();
    return sentence.replace(
        QStringLiteral("\"%1\"").arg(parameter), QStringLiteral("\"%1\"").arg(label));
}

Problem problemOf(const lux::Finding& finding, DzShaderBrick* brick, DzProperty* property)
{
    QString text = finding.sentence;
    if (!finding.advice.isEmpty())
        text += QLatin1Char(' ') + finding.advice;
    text = inWordsOf(brick, text, finding.parameter);
    for (const lux::Remedy& remedy : finding.remedies)
        for (const auto& value : remedy.values)
            text = inWordsOf(brick, text, value.first);
    Problem problem { Problem::Rendering, brick, text };
    problem.property = property;
    problem.level = levelOf(finding.severity);
    problem.rule = finding.rule;
    // Of lines that are not read, those of each parameter are a sort of their own.
    if (finding.rule == QLatin1String("unread-value"))
        problem.rule += QLatin1Char(' ') + finding.parameter;
    problem.remedies = finding.remedies;
    // Values are set, and named, in the brick's own order.
    const auto placeOf = [brick](const QPair<QString, QString>& value) {
        return brick->findParameterIndex(brick->findParameterByName(value.first));
    };
    for (lux::Remedy& remedy : problem.remedies)
        std::stable_sort(remedy.values.begin(), remedy.values.end(),
            [&](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
    return problem;
}

/// True when nobody has touched the value, or any other of its input.
bool isUntouched(const DzProperty* property)
{
    const DzBrickParam* input = property->getBrickParam();
    if (!input)
        return isFreshValue(property);
    bool isFresh = input->getNumConnections() == 0;
    for (int i = 0; isFresh && i < input->getNumProperties(); ++i)
        isFresh = isFreshValue(input->getProperty(i));
    return isFresh;
}

} // namespace

RendererFindings::RendererFindings(QObject* parent)
    : QObject(parent)
{
    m_thread.setMaxThreadCount(1);
}

RendererFindings::~RendererFindings()
{
    m_thread.clear();
}

void RendererFindings::check(const IDzBrickUser* user)
{
    const int number = ++m_number;
    // What has not begun is of a text that is not there any more.
    m_thread.clear();
    NetworkTextForm form;
    form.mapFiles = true;
    m_text = user ? textOf(user, form) : NetworkText();
    if (m_text.text.isEmpty()) {
        m_findings.clear();
        emit changed();
        return;
    }
    Task task;
    task.text = m_text.text;
    for (const TextStatement& statement : qAsConst(m_text.statements))
        task.statements.append({ statement.begin, statement.length });
    m_root = rootOf(user);
    if (!m_text.statements.isEmpty() && m_text.statements.last().brick == m_root)
        task.meshBegin = m_text.statements.last().begin;
    m_thread.start([this, number, task] {
        const std::vector<Located> found = run(task);
        QMetaObject::invokeMethod(
            this, [this, number, found] { take(number, found); }, Qt::QueuedConnection);
    });
}

void RendererFindings::finish()
{
    m_thread.waitForDone();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

std::vector<RendererFindings::Located> RendererFindings::run(const Task& task)
{
    // The settings of the mesh stand without the statement that reads them.
    QByteArray text;
    std::vector<std::uint32_t> begins;
    std::vector<std::uint32_t> ends;
    int done = 0;
    const auto addUpTo = [&](int end) {
        text += task.text.midRef(done, end - done).toUtf8();
        done = end;
        return static_cast<std::uint32_t>(text.size());
    };
    for (const QPair<int, int>& statement : task.statements) {
        begins.push_back(addUpTo(statement.first));
        if (statement.first == task.meshBegin)
            text += "Shape \"mesh\"\n";
        ends.push_back(addUpTo(statement.first + statement.second));
    }
    addUpTo(task.text.size());

    lux::SceneOptions reading;
    reading.followsIncludes = false;
    lux::SceneText scene;
    scene.readText(text, QString(), reading);
    lux::CheckOptions options;
    options.isWhole = true;
    std::vector<Located> located;
    for (lux::Finding& finding : lux::checkScene(scene, options)) {
        if (finding.isQuiet)
            continue;
        const auto after = std::upper_bound(begins.begin(), begins.end(), finding.span.begin);
        int statement = static_cast<int>(after - begins.begin()) - 1;
        if (statement >= 0 && finding.span.begin >= ends.at(static_cast<size_t>(statement)))
            statement = -1;
        located.push_back({ std::move(finding), statement });
    }
    return located;
}

void RendererFindings::take(int number, const std::vector<Located>& found)
{
    if (number != m_number)
        return;
    m_findings.clear();
    for (const Located& located : found) {
        DzShaderBrick* brick = located.statement < 0
            ? m_root.data()
            : m_text.statements.at(located.statement).brick.data();
        // Nobody is told of a brick that is gone: the next check is on its way.
        if (!brick)
            continue;
        DzProperty* property = propertyOf(brick, located.finding);
        const Problem problem = problemOf(located.finding, brick, property);
        // A line that is not read is no news to somebody who never touched it.
        if (problem.level == ProblemLevel::Notes && property && isUntouched(property))
            continue;
        m_findings.append(problem);
    }
    addUnwrittenMaps();
    emit changed();
}

/// Images on values that the text can only give as a number or color.
void RendererFindings::addUnwrittenMaps()
{
    const lux::FactText& fact = lux::RendererFacts::renderer().general("image-not-written");
    for (const UnwrittenMap& map : qAsConst(m_text.unwrittenMaps)) {
        if (!map.brick || !map.property)
            continue;
        const auto fill = [&](QString sentence) {
            return sentence.replace(QLatin1String("{parameter}"), map.property->getName())
                .replace(QLatin1String("{value}"), mapFileOf(map.property));
        };
        lux::Finding finding;
        finding.rule = fact.rule;
        finding.severity = fact.severity;
        finding.parameter = map.property->getName();
        finding.sentence = fill(fact.says);
        finding.advice = fill(fact.advice);
        finding.remedies = fact.remedies;
        for (lux::Remedy& remedy : finding.remedies)
            remedy.parameter = finding.parameter;
        m_findings.append(problemOf(finding, map.brick, map.property));
    }
}
