// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickInputs.h"
#include "BrickKinds.h"
#include "Command.h"
#include "ImageFiles.h"

#include "Explanations.h"
#include "NetworkCode.h"
#include "VireoRootBrick.h"
#include "dzbrickparam.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dznumericproperty.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <QRegularExpression>
#include <limits>

namespace {

struct ShowOptions {
    std::string className;
    std::vector<std::string> values;
    std::vector<std::string> maps;
    std::vector<std::string> locks;
    bool placeholders = false;
    bool inputs = false;
    ImageOptions images;
};

/// The two halves of NAME=VALUE.
struct Assignment {
    QString name;
    QString value;
};

Assignment readAssignment(const char* option, const std::string& argument)
{
    const QString text = argumentText(argument);
    const int equals = text.indexOf(QLatin1Char('='));
    if (equals < 1)
        failWrongUse(QStringLiteral("%1 %2: give NAME=VALUE").arg(QLatin1String(option), text));
    return Assignment { text.left(equals), text.mid(equals + 1) };
}

BrickInput findInput(const VireoBrickBase* brick, const QString& name)
{
    for (const BrickInput& input : brickInputs(brick))
        if (input.name == name)
            return input;
    failWrongUse(QStringLiteral("%1 has no input \"%2\"; vireo show %1 --inputs lists them")
                     .arg(brick->className(), name));
}

/// Why a text that is a number cannot be a value of a number's property; empty when it may be one.
QString rangeError(const DzProperty* property, const QString& text)
{
    const QString number = text.trimmed();
    const auto refusal = [&](const QString& least, const QString& most) {
        return QStringLiteral("%1 is out of range; give a number from %2 to %3")
            .arg(number, least, most);
    };
    static const QRegularExpression numberForm(
        QStringLiteral("^[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?$"));
    static const QRegularExpression wholeForm(QStringLiteral("^[+-]?[0-9]+$"));
    bool isTaken = false;
    if (qobject_cast<const DzFloatProperty*>(property) && number.contains(numberForm)) {
        // One that is too near to zero is none of the range's business.
        if (number.toFloat(&isTaken) != 0.0f && !isTaken) {
            const QString most
                = QString::number(static_cast<double>(std::numeric_limits<float>::max()), 'g', 6);
            return refusal(QLatin1Char('-') + most, most);
        }
    } else if (qobject_cast<const DzIntProperty*>(property) && number.contains(wholeForm)) {
        number.toInt(&isTaken);
        if (!isTaken)
            return refusal(QString::number(std::numeric_limits<int>::min()),
                QString::number(std::numeric_limits<int>::max()));
    }
    return QString();
}

void setValue(const VireoBrickBase* brick, const Assignment& assignment)
{
    const BrickInput input = findInput(brick, assignment.name);
    const auto refuse = [&](const QString& reason) {
        failWrongUse(QStringLiteral("cannot set %1: %2").arg(assignment.name, reason));
    };
    if (input.properties.isEmpty())
        refuse(QStringLiteral("it has no value; bricks are linked to it in a network file"));
    QStringList parts(assignment.value);
    if (input.properties.size() > 1)
        parts = assignment.value.simplified().split(QLatin1Char(' '));
    if (parts.size() != input.properties.size())
        refuse(QStringLiteral("give %1 numbers with blanks between").arg(input.properties.size()));
    for (int i = 0; i < parts.size(); ++i) {
        QString error = rangeError(input.properties.at(i), parts.at(i));
        if (!error.isEmpty() || !input.properties.at(i)->setValueText(parts.at(i), &error))
            refuse(error);
    }
}

void setMap(const VireoBrickBase* brick, const Assignment& assignment)
{
    const BrickInput input = findInput(brick, assignment.name);
    auto* numeric = input.properties.size() == 1
        ? qobject_cast<DzNumericProperty*>(input.properties.first())
        : nullptr;
    if (!numeric || !numeric->setMap(assignment.value))
        failWrongUse(QStringLiteral("%1 takes no map").arg(assignment.name));
}

void lockInput(const VireoBrickBase* brick, const QString& name)
{
    const BrickInput input = findInput(brick, name);
    if (input.properties.isEmpty())
        failWrongUse(QStringLiteral("cannot lock %1: it has no value").arg(name));
    for (DzProperty* property : input.properties)
        property->lock(true);
}

/// The table of the inputs, and below it what the brick and each input are for: sentences would
/// make the lines of the table too long.
QByteArray inputsText(const VireoBrickBase* brick)
{
    const QString className = brick->className();
    const QVector<QStringList> table = inputTable(brick);
    // The first row is the headline.
    if (table.size() == 1)
        return QStringLiteral("%1 has no inputs\n").arg(className).toUtf8();
    QString text
        = formatTable(table) + QStringLiteral("\n%1\n\n").arg(Explanations::ofBrick(className));
    for (int i = 1; i < table.size(); ++i) {
        const QString name = table.at(i).first();
        text += QStringLiteral("%1: %2\n").arg(name, Explanations::ofInput(className, name));
    }
    return text.toUtf8();
}

void runShow(const ShowOptions& options)
{
    const QString className = argumentText(options.className);
    const BrickPtr brick = makeBrick(className);
    if (!brick)
        failWrongUse(
            QStringLiteral("\"%1\" is not a brick class; vireo bricks lists them").arg(className));
    for (const std::string& value : options.values)
        setValue(brick, readAssignment("--set", value));
    for (const std::string& map : options.maps)
        setMap(brick, readAssignment("--map", map));
    for (const std::string& lock : options.locks)
        lockInput(brick, argumentText(lock));
    if (options.inputs) {
        printText(inputsText(brick));
        return;
    }
    GenerateOptions generate;
    generate.literalValues = !options.placeholders;
    useImageOptions(options.images, QDir::currentPath(), std::string(), &generate);
    const GeneratedCode code = generateCode(brick, generate);
    const bool isRoot = qobject_cast<VireoRootBrick*>(brick);
    printText((isRoot ? code.materialText + code.resultName : code.materialText).toUtf8());
    noticeImages(options.images, code);
}

} // namespace

void addShowCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand(
        "show", "Print the text that a fresh brick of a class writes alone");
    auto options = std::make_shared<ShowOptions>();
    command->add_option("CLASS", options->className, "Brick class, see vireo bricks")->required();
    command
        ->add_option("--set", options->values,
            "NAME=VALUE: set a value first; in the order given, may be repeated")
        ->allow_extra_args(false);
    command->add_option("--map", options->maps, "NAME=FILE: set an image map, after all values")
        ->allow_extra_args(false);
    command->add_option("--lock", options->locks, "NAME: lock an input, after all maps")
        ->allow_extra_args(false);
    command->add_flag("--placeholders", options->placeholders,
        "Write placeholders for values that are not locked");
    addImageOptions(command, &options->images);
    command->add_flag("--inputs", options->inputs,
        "List the inputs with kind, value, default, limits and meaning instead");
    command->callback([options] { runShow(*options); });
}
