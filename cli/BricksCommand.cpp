// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickKinds.h"
#include "Command.h"

#include "VireoBrickBase.h"

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

} // namespace

void addBricksCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand("bricks", "List every brick class");
    auto asJson = std::make_shared<bool>(false);
    command->add_flag("--json", *asJson, "Print JSON");
    command->callback([asJson] {
        const QVector<BrickPtr> bricks = makeAllBricks();
        printText(*asJson ? bricksAsJson(bricks) : bricksAsTable(bricks));
    });
}
