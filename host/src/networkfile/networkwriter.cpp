// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "networkwriter.h"

#include "brickaccess.h"
#include "dzapp.h"
#include "dzforeachlink.h"
#include "dzproperty.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "dzwarning.h"
#include "keptmembers.h"
#include "networkkeys.h"
#include "paramkeys.h"
#include "settingstree.h"
#include "useraccess.h"

#include <QSet>

namespace {

/// From this many parameters on the keys of a brick are worth keeping.
const int largeBrick = 64;

typedef DzShaderBrick::Access::KeptTrees BrickTrees;

/// What is kept of a brick's file in one of its trees; null when nothing is.
const SettingsTree* keptOf(
    const DzShaderBrick* brick, std::unique_ptr<SettingsTree> BrickTrees::*tree)
{
    const BrickTrees* trees = DzShaderBrick::Access::kept(brick);
    return trees ? (trees->*tree).get() : nullptr;
}

/// True when a fresh brick has the same parameters, one for one and in whatever order.
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
    const DzDefaultBrickUser::Access::KeptTrees* kept = DzDefaultBrickUser::Access::kept(m_user);
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
    DzKeptMembers::begin(out, keptOf(brick, &BrickTrees::brick));
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
    DzKeptMembers::begin(out, keptOf(brick, &BrickTrees::attributes));
    brick->getAttributes(out->facade());
    if (brick->getNumProperties() > 0 && fresh) {
        SettingsTree* properties = out->setSettingsValue(NetworkKeys::brickProperties());
        DzKeptMembers::begin(properties, keptOf(brick, &BrickTrees::properties));
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
    const ParamKeys originals = keys.areOriginal() ? keys : ParamKeys::original(brick);
    BrickPtr own;
    ParamKeys usualKeys = fresh ? freshKeys(fresh) : keys;
    if (fresh && !hasSameParameters(originals, usualKeys)) {
        own = freshWithAttributes(brick);
        fresh = own;
        usualKeys = ParamKeys::original(fresh);
    }
    int next = 0;
    const auto writeNext = [&] {
        const DzBrickParam* param = keys.param(next);
        const QString& key = keys.key(next);
        const QString original = keys.areOriginal() ? key : originals.keyOf(param);
        const bool isSamePlace = next < usualKeys.size() && usualKeys.key(next) == original;
        const DzBrickParam* usual = !fresh ? nullptr
            : isSamePlace                  ? usualKeys.param(next)
                                           : usualKeys.find(original);
        SettingsTree* entry = out->setSettingsValue(key);
        DzKeptMembers::writeParameter(entry, param, usual);
        if (original != key) {
            entry->setStringValue(NetworkKeys::originalName(), original);
            if (usual && usual->getName() != param->getName())
                entry->setStringValue(NetworkKeys::paramName(), param->getName());
        }
        ++next;
    };
    // The order of the entries is that of the parameters; what else the file had stands among them.
    if (const SettingsTree* kept = keptOf(brick, &BrickTrees::parameters)) {
        for (int i = 0; i < kept->getNumValues(); ++i) {
            const QString key = kept->getKey(i);
            if (!DzKeptMembers::isPlace(*kept, key)) {
                if (!keys.find(key))
                    kept->copySetting(key, out);
            } else if (next < keys.size()) {
                writeNext();
            }
        }
    }
    while (next < keys.size())
        writeNext();
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

ParamKeys DzNetworkWriter::freshKeys(const DzShaderBrick* fresh)
{
    auto keys = m_freshKeys.constFind(fresh);
    if (keys == m_freshKeys.constEnd())
        keys = m_freshKeys.insert(fresh, ParamKeys::original(fresh));
    return *keys;
}

QString DzNetworkWriter::keyOf(const DzBrickParam* param)
{
    const DzShaderBrick* brick = param->getTopBrickOwner();
    // Its inputs and outputs are known by the names that the file has for them.
    if (qobject_cast<const DzUnknownBrick*>(brick))
        return param->getArg(0);
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
    const DzDefaultBrickUser::Access::KeptTrees* kept = DzDefaultBrickUser::Access::kept(m_user);
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
        forEachInputLink(brick, [&](DzBrickParam* input, DzBrickParam* output) {
            const DzShaderBrick* source = output->getTopBrickOwner();
            if (source->getBrickUser() != &m_user || !included.contains(source->getBrickID()))
                return;
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
        });
    }
    if (kept && ids.size() == m_user.getNumBricks()) {
        const SettingsTree& dangling = kept->danglingLinks;
        for (int i = 0; i < dangling.getNumValues(); ++i) {
            const SettingsTree& entry = *dangling.getSettingsValueAt(i);
            SettingsTree* link = out->setSettingsValue(nextKey(), entry);
            if (wouldBeMade(entry))
                link->setBoolValue(NetworkKeys::inactive(), true);
        }
    }
    DzKeptMembers::end(out);
}

/// True when reading a link that has no effect here would give it one: the network has come to have
/// what the link names. What is written means what is here.
bool DzNetworkWriter::wouldBeMade(const SettingsTree& link)
{
    if (!link.hasKey(NetworkKeys::sourceParam()) || !link.hasKey(NetworkKeys::targetParam()))
        return false;
    const auto find = [&](const QString& brickKey, const QString& paramKey, bool isOutput) {
        const DzShaderBrick* brick
            = m_user.getBrick(NetworkKeys::brickID(link.getStringValue(brickKey)));
        const QString key = link.getStringValue(paramKey);
        for (int i = 0; brick && i < brick->getNumParameters(); ++i)
            if (brick->getParameter(i)->isOutput() == isOutput
                && keyOf(brick->getParameter(i)) == key)
                return brick->getParameter(i);
        return static_cast<DzBrickParam*>(nullptr);
    };
    const DzBrickParam* input = find(NetworkKeys::sourceBrick(), NetworkKeys::sourceParam(), false);
    const DzBrickParam* output = find(NetworkKeys::targetBrick(), NetworkKeys::targetParam(), true);
    return input && output && DzBrickParam::Access::mayBeLinked(input, output);
}
