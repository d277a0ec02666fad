// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "networkwriter.h"

#include "brickkepttrees.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "dzwarning.h"
#include "keptmembers.h"
#include "networkkeys.h"
#include "paramkeys.h"
#include "settingstree.h"
#include "userkepttrees.h"

#include <QSet>

namespace {

/// From this many parameters on the keys of a brick are worth keeping.
const int largeBrick = 64;

/// True when `fresh` has the parameters of `brick`, one for one and in whatever order.
bool hasSameParameters(const ParamKeys& keys, const ParamKeys& freshKeys)
{
    if (keys.size() != freshKeys.size())
        return false;
    for (int i = 0; i < keys.size(); ++i)
        if (keys.key(i) != freshKeys.key(i) && !freshKeys.find(keys.key(i)))
            return false;
    return true;
}

} // namespace

DzNetworkWriter::DzNetworkWriter(const DzDefaultBrickUser& user)
    : m_user(user)
{
}

DzNetworkWriter::~DzNetworkWriter()
{
}

void DzNetworkWriter::write(
    SettingsTree* out, const QList<uint>& ids, QHash<const DzShaderBrick*, QString>* names)
{
    const DzDefaultBrickUser::KeptTrees* kept = m_user.m_kept.get();
    DzKeptMembers::begin(out, kept ? kept->setup.get() : nullptr);
    SettingsTree* bricks = out->setSettingsValue(NetworkKeys::bricks());
    DzKeptMembers::begin(bricks, kept ? kept->bricks.get() : nullptr);
    for (const uint id : ids) {
        const DzShaderBrick* brick = m_user.getBrick(id);
        if (!brick)
            continue;
        const QString name = NetworkKeys::brick(id);
        writeBrick(bricks->setSettingsValue(name), brick);
        if (names)
            names->insert(brick, name);
    }
    DzKeptMembers::end(bricks);
    writeConnections(out->setSettingsValue(NetworkKeys::connections()), ids);
    out->setStringValue(NetworkKeys::userName(), m_user.getBrickUserName());
    out->setStringValue(NetworkKeys::identifier(), m_user.getIdentifier().toString());
    DzKeptMembers::end(out);
}

void DzNetworkWriter::writeBrick(SettingsTree* out, const DzShaderBrick* brick)
{
    if (auto* unknown = qobject_cast<const DzUnknownBrick*>(brick)) {
        writeUnknownBrick(out, unknown);
        return;
    }
    DzKeptMembers::begin(out, brick->m_kept ? brick->m_kept->brick.get() : nullptr);
    const QString className = brick->getStoredClassName();
    out->setStringValue(NetworkKeys::className(), className);
    const DzShaderBrick* fresh = freshBrick(className);
    writeAttributes(out->setSettingsValue(NetworkKeys::attributes()), brick, fresh);
    writeParameters(out->setSettingsValue(NetworkKeys::parameters()), brick, fresh);
    DzKeptMembers::end(out);
}

void DzNetworkWriter::writeUnknownBrick(SettingsTree* out, const DzUnknownBrick* brick)
{
    *out = *brick->getStored()->tree();
    if (brick->getBrickSettings()->getNumValues() == 0)
        return;
    // The mixer may have moved the brick; nothing else of it can change.
    SettingsTree* attributes = out->getSettingsValue(NetworkKeys::attributes());
    if (!attributes)
        attributes = out->setSettingsValue(NetworkKeys::attributes());
    attributes->setSettingsValue(NetworkKeys::brickSettings(), *brick->getBrickSettings()->tree());
}

void DzNetworkWriter::writeAttributes(
    SettingsTree* out, const DzShaderBrick* brick, const DzShaderBrick* fresh)
{
    DzKeptMembers::begin(out, brick->m_kept ? brick->m_kept->attributes.get() : nullptr);
    brick->getAttributes(out->facade());
    if (brick->getNumProperties() > 0 && fresh) {
        SettingsTree* properties = out->setSettingsValue(NetworkKeys::brickProperties());
        DzKeptMembers::begin(properties, brick->m_kept ? brick->m_kept->properties.get() : nullptr);
        for (int i = 0; i < brick->getNumProperties(); ++i) {
            const DzProperty* property = brick->getProperty(i);
            DzKeptMembers::writeProperty(properties->setSettingsValue(property->getName()),
                property, fresh->findProperty(property->getName()));
        }
        DzKeptMembers::end(properties);
    }
    DzKeptMembers::end(out);
}

void DzNetworkWriter::writeParameters(
    SettingsTree* out, const DzShaderBrick* brick, const DzShaderBrick* fresh)
{
    const ParamKeys keys(brick);
    BrickPtr own;
    if (fresh && !hasSameParameters(keys, ParamKeys(fresh))) {
        own = freshWithAttributes(brick);
        fresh = own;
    }
    DzKeptMembers::begin(out, brick->m_kept ? brick->m_kept->parameters.get() : nullptr);
    if (fresh) {
        const ParamKeys freshKeys(fresh);
        for (int i = 0; i < keys.size(); ++i) {
            const bool isSamePlace = i < freshKeys.size() && freshKeys.key(i) == keys.key(i);
            const DzBrickParam* usual
                = isSamePlace ? freshKeys.param(i) : freshKeys.find(keys.key(i));
            DzKeptMembers::writeParameter(out->setSettingsValue(keys.key(i)), keys.param(i), usual);
        }
    } else {
        for (int i = 0; i < keys.size(); ++i)
            DzKeptMembers::writeParameter(
                out->setSettingsValue(keys.key(i)), keys.param(i), nullptr);
    }
    DzKeptMembers::end(out);
}

const DzShaderBrick* DzNetworkWriter::freshBrick(const QString& className)
{
    const auto known = m_fresh.constFind(className);
    if (known != m_fresh.constEnd())
        return *known;
    DzUndoStackLock lock;
    QObject* object = dzApp->createInstance(className);
    auto* brick = qobject_cast<DzShaderBrick*>(object);
    if (!brick)
        delete object;
    m_fresh.insert(className, BrickPtr(brick));
    return brick;
}

DzNetworkWriter::BrickPtr DzNetworkWriter::freshWithAttributes(const DzShaderBrick* brick)
{
    DzUndoStackLock lock;
    // What cannot be understood was told when it was read.
    DzWarningList toldBefore;
    const DzWarningScope scope(&toldBefore);
    BrickPtr fresh(
        qobject_cast<DzShaderBrick*>(dzApp->createInstance(brick->getStoredClassName())));
    DzSettings attributes;
    brick->getAttributes(&attributes);
    fresh->setAttributes(&attributes);
    return fresh;
}

QString DzNetworkWriter::keyOf(const DzBrickParam* param)
{
    const DzShaderBrick* brick = param->getTopBrickOwner();
    if (brick->getNumParameters() <= largeBrick)
        return ParamKeys::keyOf(brick, param);
    auto keys = m_largeBricks.constFind(brick);
    if (keys == m_largeBricks.constEnd())
        keys = m_largeBricks.insert(brick, ParamKeys(brick));
    return keys->keyOf(param);
}

void DzNetworkWriter::writeConnections(SettingsTree* out, const QList<uint>& ids)
{
    QSet<uint> included;
    for (const uint id : ids)
        included.insert(id);
    const DzDefaultBrickUser::KeptTrees* kept = m_user.m_kept.get();
    DzKeptMembers::begin(out, kept ? kept->connections.get() : nullptr);
    // The places of the file come first and in their order, for that is the order of the links.
    QStringList places;
    for (int i = 0; i < out->getNumValues(); ++i)
        if (DzKeptMembers::isPlace(*out, out->getKey(i)))
            places.append(out->getKey(i));
    int count = 0;
    const auto nextKey = [&places, &count, out] {
        if (!places.isEmpty())
            return places.takeFirst();
        QString key;
        do {
            key = QStringLiteral("Connection_%1").arg(count++);
        } while (out->hasKey(key));
        return key;
    };
    for (const uint id : ids) {
        const DzShaderBrick* brick = m_user.getBrick(id);
        if (!brick)
            continue;
        for (int i = 0; i < brick->getNumParameters(); ++i) {
            const DzBrickParam* input = brick->getParameter(i);
            if (input->isOutput())
                continue;
            for (int k = 0; k < input->getNumConnections(); ++k) {
                const DzBrickParam* output = input->getConnection(k);
                const DzShaderBrick* source = output->getTopBrickOwner();
                if (source->getBrickUser() != &m_user || !included.contains(source->getBrickID()))
                    continue;
                SettingsTree* link = out->setSettingsValue(nextKey());
                link->setStringValue(NetworkKeys::sourceBrick(), NetworkKeys::brick(id));
                link->setStringValue(
                    NetworkKeys::targetBrick(), NetworkKeys::brick(source->getBrickID()));
                link->setStringValue(NetworkKeys::sourceParam(), keyOf(input));
                link->setStringValue(NetworkKeys::targetParam(), keyOf(output));
                if (kept && !kept->linkEntries.isEmpty()) {
                    const auto entry = kept->linkEntries.constFind(NetworkKeys::linkName(*link));
                    if (entry != kept->linkEntries.constEnd())
                        *link = *entry;
                }
            }
        }
    }
    if (kept && ids.size() == m_user.getNumBricks()) {
        const SettingsTree& dangling = kept->danglingLinks;
        for (int i = 0; i < dangling.getNumValues(); ++i)
            out->setSettingsValue(nextKey(), *dangling.getSettingsValue(dangling.getKey(i)));
    }
    DzKeptMembers::end(out);
}
