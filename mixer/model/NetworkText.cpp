// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkText.h"

#include "NetworkWalk.h"
#include "dzbrickcodekeys.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "idzbrickuser.h"

#include <QCoreApplication>
#include <QSet>
#include <QVariantMap>

#include <algorithm>

namespace {

QString message(const char* source)
{
    return QCoreApplication::translate("NetworkText", source);
}

QString key(const char* word)
{
    return QString::fromLatin1(word);
}

template <typename T>
T* objectIn(const QVariantMap& map, const char* word)
{
    return qobject_cast<T*>(map.value(key(word)).value<QObject*>());
}

NetworkText failure(const QString& cause)
{
    NetworkText code;
    code.error = cause;
    return code;
}

QVector<TextPlaceholder> placeholdersIn(const QVariantMap& answer)
{
    QVector<TextPlaceholder> placeholders;
    for (const QVariant& item : answer.value(key(DzBrickCodeKeys::placeholders)).toList()) {
        const QVariantMap map = item.toMap();
        placeholders.append(TextPlaceholder { map.value(key(DzBrickCodeKeys::name)).toString(),
            objectIn<DzShaderBrick>(map, DzBrickCodeKeys::brick),
            objectIn<DzProperty>(map, DzBrickCodeKeys::property) });
    }
    return placeholders;
}

QVector<UnwrittenMap> unwrittenMapsIn(const QVariantMap& answer)
{
    QVector<UnwrittenMap> maps;
    for (const QVariant& item : answer.value(key(DzBrickCodeKeys::unwrittenMaps)).toList()) {
        const QVariantMap map = item.toMap();
        maps.append(UnwrittenMap { objectIn<DzShaderBrick>(map, DzBrickCodeKeys::brick),
            objectIn<DzProperty>(map, DzBrickCodeKeys::property) });
    }
    return maps;
}

/// The placeholders, and after those of each brick its values that are locked and therefore
/// written as they are.
QVector<TextPlaceholder> withLockedValues(
    const QVector<TextPlaceholder>& placeholders, const QVector<TextStatement>& statements)
{
    QHash<const DzShaderBrick*, int> lastOf;
    QSet<const DzProperty*> known;
    for (int i = 0; i < placeholders.size(); ++i) {
        lastOf.insert(placeholders.at(i).brick, i);
        known.insert(placeholders.at(i).property);
    }
    QSet<const DzShaderBrick*> done;
    QVector<TextPlaceholder> result;
    const auto addLocked = [&](DzShaderBrick* brick) {
        if (!brick || done.contains(brick))
            return;
        done.insert(brick);
        forEachProperty(brick, [&](DzProperty* property) {
            if (property->isLocked() && !known.contains(property))
                result.append(TextPlaceholder { QString(), brick, property });
        });
    };
    for (int i = 0; i < placeholders.size(); ++i) {
        result.append(placeholders.at(i));
        if (lastOf.value(placeholders.at(i).brick) == i)
            addLocked(placeholders.at(i).brick);
    }
    for (const TextStatement& statement : statements)
        addLocked(statement.brick);
    return result;
}

QVector<TextStatement> statementsIn(const QVariantMap& answer)
{
    QVector<TextStatement> statements;
    for (const QVariant& item : answer.value(key(DzBrickCodeKeys::statements)).toList()) {
        const QVariantMap map = item.toMap();
        statements.append(TextStatement { map.value(key(DzBrickCodeKeys::begin)).toInt(),
            map.value(key(DzBrickCodeKeys::length)).toInt(),
            objectIn<DzShaderBrick>(map, DzBrickCodeKeys::brick) });
    }
    std::stable_sort(statements.begin(), statements.end(),
        [](const TextStatement& a, const TextStatement& b) { return a.begin < b.begin; });
    return statements;
}

} // namespace

DzShaderBrick* NetworkText::brickAt(int position) const
{
    const auto after = std::upper_bound(statements.begin(), statements.end(), position,
        [](int place, const TextStatement& statement) { return place < statement.begin; });
    if (after == statements.begin())
        return nullptr;
    const TextStatement& statement = *(after - 1);
    return position < statement.begin + statement.length ? statement.brick.data() : nullptr;
}

NetworkText textOf(const IDzBrickUser* user, const NetworkTextForm& form)
{
    DzShaderBrick* root = rootOf(user);
    if (!root)
        return failure(message("There is no text: the network has no root brick."));
    if (root->metaObject()->indexOfMethod("getSceneCode(bool,bool,QString)") < 0)
        return failure(message("There is no text: \"%1\" writes none.").arg(root->getBrickTitle()));
    QVariantMap answer;
    QMetaObject::invokeMethod(root, "getSceneCode", Qt::DirectConnection,
        Q_RETURN_ARG(QVariantMap, answer), Q_ARG(bool, form.literalValues),
        Q_ARG(bool, form.mapFiles), Q_ARG(QString, form.imageFolder));
    NetworkText code;
    code.text = answer.value(key(DzBrickCodeKeys::exportText)).toString();
    code.statements = statementsIn(answer);
    code.placeholders = placeholdersIn(answer);
    code.unwrittenMaps = unwrittenMapsIn(answer);
    if (!form.literalValues)
        code.placeholders = withLockedValues(code.placeholders, code.statements);
    return code;
}
