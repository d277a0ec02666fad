// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickInputs.h"
#include "BrickKinds.h"
#include "Command.h"

#include "Explanations.h"
#include "VireoBrickBase.h"
#include "dzintproperty.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace {

std::string utf8(const QString& text)
{
    return text.toStdString();
}

QByteArray bricksAsJson(const QVector<BrickPtr>& bricks)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const BrickPtr& brick : bricks)
        list.push_back({ { "class", utf8(brick->className()) }, { "kind", utf8(brickKind(brick)) },
            { "type", utf8(brick->getLuxType()) }, { "label", utf8(brick->getPreferredName()) },
            { "category", utf8(brick->getDefaultCategory()) } });
    return QByteArray::fromStdString(list.dump(2)) + '\n';
}

QByteArray bricksAsTable(const QVector<BrickPtr>& bricks)
{
    QVector<QStringList> rows;
    rows.append({ QStringLiteral("class"), QStringLiteral("kind"), QStringLiteral("type"),
        QStringLiteral("label"), QStringLiteral("category") });
    for (const BrickPtr& brick : bricks)
        rows.append({ brick->className(), brickKind(brick), brick->getLuxType(),
            brick->getPreferredName(), brick->getDefaultCategory() });
    return formatTable(rows).toUtf8();
}

QString markdownCell(QString text)
{
    return text.isEmpty() ? QStringLiteral(" ")
                          : text.replace(QLatin1Char('|'), QLatin1String("\\|"));
}

QString markdownRow(const QStringList& cells)
{
    QStringList escaped;
    for (const QString& cell : cells)
        escaped.append(markdownCell(cell));
    return QStringLiteral("| ") + escaped.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

/// The table of the inputs with what each means; a brick with numbered pairs shows the first one.
QVector<QStringList> explainedInputs(VireoBrickBase* brick)
{
    QVector<QStringList> rows = inputTable(brick);
    if (auto* count = qobject_cast<DzIntProperty*>(brick->findProperty(QStringLiteral("count")))) {
        count->setValue(1);
        rows += inputTable(brick).mid(rows.size());
    }
    rows.first().append(QStringLiteral("meaning"));
    for (int i = 1; i < rows.size(); ++i)
        rows[i].append(Explanations::ofInput(brick->className(), rows.at(i).first()));
    return rows;
}

QString markdownSection(VireoBrickBase* brick)
{
    QString text = QStringLiteral("\n### %1\n\n%2\n\n")
                       .arg(brick->getPreferredName(), Explanations::ofBrick(brick->className()));
    text += QStringLiteral("`%1`, category \"%2\"")
                .arg(brick->className(), brick->getDefaultCategory());
    if (!brick->getLuxType().isEmpty())
        text += QStringLiteral(", written as \"%1\"").arg(brick->getLuxType());
    text += QLatin1Char('\n');
    const QVector<QStringList> rows = explainedInputs(brick);
    if (rows.size() == 1)
        return text + QStringLiteral("\nNo inputs.\n");
    text += QLatin1Char('\n') + markdownRow(rows.first()) + QStringLiteral("|")
        + QStringLiteral(" --- |").repeated(rows.first().size()) + QLatin1Char('\n');
    for (int i = 1; i < rows.size(); ++i)
        text += markdownRow(rows.at(i));
    return text;
}

QByteArray bricksAsMarkdown(const QVector<BrickPtr>& bricks)
{
    static const char* const headings[][2] = { { "root", "Root" }, { "material", "Materials" },
        { "volume", "Volumes" }, { "float", "Float textures" }, { "color", "Colour textures" },
        { "fresnel", "Fresnel textures" } };
    QString text = QStringLiteral(
        "# Bricks\n\n"
        "Every brick with its inputs. This page is made by `vireo bricks --markdown`; do not edit "
        "it.\n\n"
        "*takes* names the textures, materials or volumes that can be linked to an input; `-` "
        "marks a\n"
        "value that nothing can be linked to. *default* is what a reset gives: for the numbers of\n"
        "materials and volumes it is 0 whatever they start with. Of *limits*, those marked "
        "\"slider "
        "only\"\n"
        "say how far a slider goes; other numbers can be typed. Band and multi-mix textures have "
        "as many\n"
        "numbered pairs of inputs as \"count\" says; the first pair is listed.\n");
    for (const auto& heading : headings) {
        text += QStringLiteral("\n## %1\n").arg(QString::fromLatin1(heading[1]));
        for (const BrickPtr& brick : bricks)
            if (brickKind(brick) == QLatin1String(heading[0]))
                text += markdownSection(brick);
    }
    return text.toUtf8();
}

} // namespace

void addBricksCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand("bricks", "List every brick class");
    struct Options {
        bool json = false;
        bool markdown = false;
    };
    auto options = std::make_shared<Options>();
    CLI::Option* json = command->add_flag("--json", options->json, "Print JSON");
    command->add_flag("--markdown", options->markdown, "Print a reference page with all inputs")
        ->excludes(json);
    command->callback([options] {
        const QVector<BrickPtr> bricks = makeAllBricks();
        printText(options->json     ? bricksAsJson(bricks)
                : options->markdown ? bricksAsMarkdown(bricks)
                                    : bricksAsTable(bricks));
    });
}
