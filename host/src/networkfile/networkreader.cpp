// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "networkreader.h"

#include "brickkepttrees.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzunknownbrick.h"
#include "dzwarning.h"
#include "keptmembers.h"
#include "networkkeys.h"
#include "settingstree.h"
#include "userkepttrees.h"

#include <QCoreApplication>

namespace {

/// Brick numbers of a file are taken over below this one, so that the next number exists.
const uint highestID = 0x7fffffff;

QString text(const char* source)
{
    return QCoreApplication::translate("DzNetworkReader", source);
}

template <typename Trees>
Trees& treesOf(std::unique_ptr<Trees>& kept)
{
    if (!kept)
        kept.reset(new Trees);
    return *kept;
}

/// Stores what is not understood, without making a holder for the common case of nothing.
template <typename Trees>
void keep(std::unique_ptr<Trees>& kept, std::unique_ptr<SettingsTree> Trees::*member,
    std::unique_ptr<SettingsTree> tree)
{
    if (tree || kept)
        treesOf(kept).*member = std::move(tree);
}

} // namespace

DzNetworkReader::DzNetworkReader(DzDefaultBrickUser& user)
    : m_user(user)
{
}

void DzNetworkReader::read(const SettingsTree& setup)
{
    m_user.m_kept.reset();
    const auto isTree = [](const QString& key) {
        return key == NetworkKeys::bricks() || key == NetworkKeys::connections();
    };
    const auto isText = [](const QString& key) {
        return key == NetworkKeys::userName() || key == NetworkKeys::identifier();
    };
    for (int i = 0; i < setup.getNumValues(); ++i)
        if (isText(setup.getKey(i)) && setup.getValueType(i) != DzSettings::StringValue)
            dzWarn({ setup.getKey(i), text("this is not text"), text("another one is used") });
    keep(m_user.m_kept, &DzDefaultBrickUser::KeptTrees::setup,
        DzKeptMembers::rememberTrees(
            setup, [&](const QString& key) { return isTree(key) || isText(key); }, isTree,
            QStringLiteral("BrickSetup")));
    m_user.setBrickUserName(
        setup.getStringValue(NetworkKeys::userName(), m_user.getBrickUserName()));
    const QString identifierText = setup.getStringValue(NetworkKeys::identifier());
    const QUuid identifier(identifierText);
    if (!identifier.isNull())
        m_user.setIdentifier(identifier);
    else if (!identifierText.isEmpty())
        dzWarn({ NetworkKeys::identifier(), text("\"%1\" is not an identifier").arg(identifierText),
            text("the network gets another") });
    const SettingsTree* connections = setup.getSettingsValue(NetworkKeys::connections());
    if (connections)
        keepNumbersIn(*connections);
    if (const SettingsTree* bricks = setup.getSettingsValue(NetworkKeys::bricks()))
        readBricks(*bricks);
    if (connections)
        readConnections(*connections);
}

void DzNetworkReader::readBricks(const SettingsTree& bricks)
{
    const auto isBrick = [](const SettingsTree* stored) {
        return stored && !stored->getStringValue(NetworkKeys::className()).isEmpty();
    };
    QVector<QPair<QString, DzShaderBrick*>> unnumbered;
    QVector<DzShaderBrick*> made;
    for (int i = 0; i < bricks.getNumValues(); ++i) {
        const QString name = bricks.getKey(i);
        const SettingsTree* stored = bricks.getSettingsValueAt(i);
        if (!isBrick(stored)) {
            dzWarn({ name, text("this is not a brick"), text("it is kept as it is") });
            keepNumber(name);
            continue;
        }
        DzShaderBrick* brick = makeBrick(name, *stored);
        m_bricks.insert(name, brick);
        made.append(brick);
        const uint id = NetworkKeys::brickID(name);
        if (id > 0 && id < highestID)
            m_user.attach(brick, id);
        else
            unnumbered.append(qMakePair(name, brick));
    }
    // Numbers of their own come after all numbers of the file.
    for (const auto& entry : qAsConst(unnumbered))
        m_user.attach(entry.second, m_user.takeNextID());
    for (DzShaderBrick* brick : qAsConst(made))
        if (!qobject_cast<DzUnknownBrick*>(brick))
            m_user.brickWasRestored(brick);
    if (made.size() == bricks.getNumValues())
        return;
    keep(m_user.m_kept, &DzDefaultBrickUser::KeptTrees::bricks,
        DzKeptMembers::remember(
            bricks, [&](const QString& key) { return isBrick(bricks.getSettingsValue(key)); }));
}

DzShaderBrick* DzNetworkReader::makeBrick(const QString& name, const SettingsTree& stored)
{
    const QString className = stored.getStringValue(NetworkKeys::className());
    QObject* object = dzApp->createInstance(className);
    auto* brick = qobject_cast<DzShaderBrick*>(object);
    if (!brick || !m_user.canUseBrick(brick)) {
        delete object;
        dzWarn({ name, text("no brick of class \"%1\" can be used here").arg(className),
            text("its data and links are kept, and it writes no text") });
        return new DzUnknownBrick(*stored.facade());
    }
    const auto isTree = [](const QString& key) {
        return key == NetworkKeys::attributes() || key == NetworkKeys::parameters();
    };
    keep(brick->m_kept, &DzShaderBrick::KeptTrees::brick,
        DzKeptMembers::rememberTrees(
            stored,
            [&](const QString& key) { return key == NetworkKeys::className() || isTree(key); },
            isTree, name));
    if (const SettingsTree* attributes = stored.getSettingsValue(NetworkKeys::attributes()))
        readAttributes(name, brick, *attributes);
    const auto keys = m_keys.insert(brick, ParamKeys(brick));
    if (const SettingsTree* parameters = stored.getSettingsValue(NetworkKeys::parameters())) {
        restoreOrder(brick, *keys, readParameters(name, brick, *parameters));
        addMissingPlaces(brick);
    }
    return brick;
}

void DzNetworkReader::readAttributes(
    const QString& name, DzShaderBrick* brick, const SettingsTree& tree)
{
    const QString className = brick->getStoredClassName();
    if (!m_ownAttributes.contains(className)) {
        QVector<QString>& own = m_ownAttributes[className];
        DzSettings written;
        brick->getAttributes(&written);
        for (int i = 0; i < written.getNumValues(); ++i)
            own.append(written.getKey(i));
    }
    brick->setAttributes(tree.facade());
    const QVector<QString>& own = m_ownAttributes[className];
    const auto isOwn = [&](const QString& key) { return own.contains(key); };
    keep(brick->m_kept, &DzShaderBrick::KeptTrees::attributes,
        DzKeptMembers::rememberTrees(tree, isOwn, isOwn, name));
}

QVector<DzBrickParam*> DzNetworkReader::readParameters(
    const QString& name, DzShaderBrick* brick, const SettingsTree& tree)
{
    const ParamKeys& keys = m_keys.constFind(brick).value();
    QVector<DzBrickParam*> found;
    found.reserve(tree.getNumValues());
    int numRead = 0;
    for (int i = 0; i < tree.getNumValues(); ++i) {
        const QString key = tree.getKey(i);
        const SettingsTree* members = tree.getSettingsValueAt(i);
        const bool isSamePlace = i < keys.size() && keys.key(i) == key;
        DzBrickParam* param = isSamePlace ? keys.param(i) : keys.find(key);
        if (param)
            found.append(param);
        const FilePlace place { name, key, QString() };
        if (!param || !members) {
            dzWarn({ place.text(), text("this brick has no such parameter"),
                text("its data is kept") });
            continue;
        }
        DzKeptMembers::readParameter(param, *members, place);
        ++numRead;
    }
    if (numRead < tree.getNumValues() || brick->m_kept)
        keep(brick->m_kept, &DzShaderBrick::KeptTrees::parameters,
            DzKeptMembers::remember(tree,
                [&](const QString& key) { return tree.getSettingsValue(key) && keys.find(key); }));
    return found;
}

void DzNetworkReader::restoreOrder(
    DzShaderBrick* brick, const ParamKeys& keys, QVector<DzBrickParam*> order)
{
    bool isChanged = false;
    for (int i = 0; i < order.size() && !isChanged; ++i)
        isChanged = i >= keys.size() || keys.param(i) != order.at(i);
    if (!isChanged)
        return;
    // Parameters of equal names stay in the order in which they were made: their keys count on it.
    QHash<QString, QVector<DzBrickParam*>> ofName;
    for (int i = keys.size() - 1; i >= 0; --i)
        ofName[keys.param(i)->getArg(0)].append(keys.param(i));
    for (DzBrickParam*& param : order)
        param = ofName[param->getArg(0)].takeLast();
    brick->setParameterOrder(order);
}

/// Parameters that the file leaves out stand where the brick has them, not behind what is kept.
void DzNetworkReader::addMissingPlaces(DzShaderBrick* brick)
{
    if (!brick->m_kept || !brick->m_kept->parameters)
        return;
    const SettingsTree& kept = *brick->m_kept->parameters;
    const ParamKeys keys(brick);
    std::unique_ptr<SettingsTree> whole(new SettingsTree);
    int next = 0;
    const auto addMissingUpTo = [&](const DzBrickParam* param) {
        for (; next < keys.size() && keys.param(next) != param; ++next)
            if (!kept.hasKey(keys.key(next)))
                whole->setOpaqueValue(keys.key(next), QByteArray());
    };
    for (int i = 0; i < kept.getNumValues(); ++i) {
        const QString key = kept.getKey(i);
        if (const DzBrickParam* param = keys.find(key))
            addMissingUpTo(param);
        kept.copySetting(key, whole.get());
    }
    addMissingUpTo(nullptr);
    brick->m_kept->parameters = std::move(whole);
}

void DzNetworkReader::readConnections(const SettingsTree& connections)
{
    for (int i = 0; i < connections.getNumValues(); ++i) {
        const QString key = connections.getKey(i);
        const SettingsTree* link = connections.getSettingsValueAt(i);
        if (!link) {
            dzWarn({ key, text("this is not a link"), text("it is kept as it is") });
            continue;
        }
        DzWarning warning { key, QString(), QString() };
        bool isKept = true;
        if (readConnection(*link, &warning, &isKept)) {
            if (link->getNumValues() > 4)
                treesOf(m_user.m_kept).linkEntries.insert(NetworkKeys::linkName(*link), *link);
            continue;
        }
        dzWarn(warning);
        if (isKept)
            keepLink(key, *link);
    }
    keep(m_user.m_kept, &DzDefaultBrickUser::KeptTrees::connections,
        DzKeptMembers::remember(connections,
            [&](const QString& key) { return connections.getSettingsValue(key) != nullptr; }));
}

bool DzNetworkReader::readConnection(const SettingsTree& link, DzWarning* warning, bool* isKept)
{
    const QString inputBrick = link.getStringValue(NetworkKeys::sourceBrick());
    const QString inputKey = link.getStringValue(NetworkKeys::sourceParam());
    const QString outputBrick = link.getStringValue(NetworkKeys::targetBrick());
    const QString outputKey = link.getStringValue(NetworkKeys::targetParam());
    const auto what = [&] {
        return text("the link from %1/%2 to %3/%4")
            .arg(outputBrick, outputKey, inputBrick, inputKey);
    };
    DzBrickParam* input = findParam(inputBrick, inputKey, false);
    DzBrickParam* output = findParam(outputBrick, outputKey, true);
    const auto refuse = [&](const char* cause, const char* remedy) {
        warning->text = text(cause).arg(what());
        warning->remedy = text(remedy);
        return false;
    };
    if (!input || !output)
        return refuse("%1 leads to a brick or parameter that is not there", "it is kept");
    const DzShaderBrick* to = input->getTopBrickOwner();
    const DzShaderBrick* from = output->getTopBrickOwner();
    if (!to->canBeFedBy(from)) {
        *isKept = false;
        return refuse("%1 would close a loop", "it is dropped");
    }
    if (input->isConnectedTo(output)) {
        *isKept = false;
        return refuse("%1 appears twice", "it is made once");
    }
    const bool isUnknown
        = qobject_cast<const DzUnknownBrick*>(to) || qobject_cast<const DzUnknownBrick*>(from);
    if (!isUnknown && !input->canConnect(output))
        return refuse("%1 joins what cannot be joined", "it is kept but has no effect");
    input->link(output);
    return true;
}

DzBrickParam* DzNetworkReader::findParam(
    const QString& brickName, const QString& key, bool isOutput)
{
    DzShaderBrick* brick = m_bricks.value(brickName);
    if (!brick || key.isEmpty())
        return nullptr;
    if (auto* unknown = qobject_cast<DzUnknownBrick*>(brick))
        return unknown->paramFor(
            key, isOutput ? DzBrickParam::OutputDirection : DzBrickParam::InputDirection);
    DzBrickParam* param = m_keys.constFind(brick)->find(key);
    return param && param->isOutput() == isOutput ? param : nullptr;
}

void DzNetworkReader::keepLink(const QString& key, const SettingsTree& link)
{
    treesOf(m_user.m_kept).danglingLinks.setSettingsValue(key, link);
}

void DzNetworkReader::keepNumbersIn(const SettingsTree& connections)
{
    for (int i = 0; i < connections.getNumValues(); ++i) {
        const SettingsTree* link = connections.getSettingsValueAt(i);
        if (!link)
            continue;
        keepNumber(link->getStringValue(NetworkKeys::sourceBrick()));
        keepNumber(link->getStringValue(NetworkKeys::targetBrick()));
    }
}

void DzNetworkReader::keepNumber(const QString& brickName)
{
    const uint id = NetworkKeys::brickID(brickName);
    if (id < highestID)
        m_user.m_nextID = qMax(m_user.m_nextID, id + 1);
}
