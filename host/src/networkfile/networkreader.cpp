// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "networkreader.h"

#include "brickaccess.h"
#include "dzapp.h"
#include "dzunknownbrick.h"
#include "dzwarning.h"
#include "keptmembers.h"
#include "networkkeys.h"
#include "settingstree.h"
#include "useraccess.h"

#include <QCoreApplication>

namespace {

typedef DzShaderBrick::Access::KeptTrees BrickTrees;
typedef DzDefaultBrickUser::Access Users;

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
    , m_kept(Users::kept(user))
{
}

void DzNetworkReader::read(const SettingsTree& setup)
{
    m_kept.reset();
    const auto isTree = [](const QString& key) {
        return key == NetworkKeys::bricks() || key == NetworkKeys::connections();
    };
    const auto isText = [](const QString& key) {
        return key == NetworkKeys::userName() || key == NetworkKeys::identifier();
    };
    for (int i = 0; i < setup.getNumValues(); ++i)
        if (isText(setup.getKey(i)) && setup.getValueType(i) != DzSettings::StringValue)
            dzWarn({ setup.getKey(i), text("this is not text"), text("another one is used") });
    keep(m_kept, &Users::KeptTrees::setup,
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
            Users::attach(m_user, brick, id);
        else
            unnumbered.append(qMakePair(name, brick));
    }
    // Numbers of their own come after all numbers of the file.
    for (const auto& entry : qAsConst(unnumbered))
        Users::attach(m_user, entry.second, Users::takeNextID(m_user));
    for (DzShaderBrick* brick : qAsConst(made))
        if (!qobject_cast<DzUnknownBrick*>(brick))
            Users::tellRestored(m_user, brick);
    if (made.size() == bricks.getNumValues())
        return;
    keep(m_kept, &Users::KeptTrees::bricks,
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
    keep(DzShaderBrick::Access::kept(brick), &BrickTrees::brick,
        DzKeptMembers::rememberTrees(
            stored,
            [&](const QString& key) { return key == NetworkKeys::className() || isTree(key); },
            isTree, name));
    if (const SettingsTree* attributes = stored.getSettingsValue(NetworkKeys::attributes()))
        readAttributes(name, brick, *attributes);
    if (const SettingsTree* parameters = stored.getSettingsValue(NetworkKeys::parameters()))
        readParameters(name, brick, *parameters);
    else
        m_keys.insert(brick, ParamKeys(brick));
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
    keep(DzShaderBrick::Access::kept(brick), &BrickTrees::attributes,
        DzKeptMembers::rememberTrees(tree, isOwn, isOwn, name));
}

void DzNetworkReader::readParameters(
    const QString& name, DzShaderBrick* brick, const SettingsTree& tree)
{
    const ParamKeys keys = ParamKeys::original(brick);
    QVector<DzBrickParam*> found;
    found.reserve(tree.getNumValues());
    QSet<const DzBrickParam*> taken;
    taken.reserve(tree.getNumValues());
    QSet<QString> unread;
    bool areKeysNew = !keys.areOriginal();
    for (int i = 0; i < tree.getNumValues(); ++i) {
        const QString key = tree.getKey(i);
        const SettingsTree* members = tree.getSettingsValueAt(i);
        QSet<QString> others;
        DzBrickParam* param = members ? findOriginal(keys, *members, &others) : nullptr;
        if (!param) {
            const bool isSamePlace = i < keys.size() && keys.key(i) == key;
            param = isSamePlace ? keys.param(i) : keys.find(key);
        }
        if (param && taken.contains(param))
            param = nullptr;
        if (param) {
            found.append(param);
            taken.insert(param);
        }
        const FilePlace place { name, key, QString() };
        if (!param || !members) {
            dzWarn({ place.text(), text("this brick has no such parameter"),
                text("its data is kept") });
            unread.insert(key);
            continue;
        }
        areKeysNew = areKeysNew || !others.isEmpty();
        if (others.contains(NetworkKeys::paramName()))
            DzBrickParam::Access::setName(param, members->getStringValue(NetworkKeys::paramName()));
        DzKeptMembers::readParameter(param, *members, others, place);
    }
    auto& kept = DzShaderBrick::Access::kept(brick);
    if (!unread.isEmpty() || kept)
        keep(kept, &BrickTrees::parameters, DzKeptMembers::remember(tree, [&](const QString& key) {
            return !unread.contains(key);
        }));
    restoreOrder(brick, found);
    m_keys.insert(brick, areKeysNew ? ParamKeys(brick) : keys);
    addMissingPlaces(brick);
}

/// The parameter that an entry says it is of, where that is not what its key says.
DzBrickParam* DzNetworkReader::findOriginal(
    const ParamKeys& keys, const SettingsTree& members, QSet<QString>* others) const
{
    const auto isText = [&](const QString& key) {
        const int index = members.getSettingIndex(key);
        return index >= 0 && members.getValueType(index) == DzSettings::StringValue;
    };
    if (!isText(NetworkKeys::originalName()))
        return nullptr;
    DzBrickParam* param = keys.find(members.getStringValue(NetworkKeys::originalName()));
    if (!param)
        return nullptr;
    others->insert(NetworkKeys::originalName());
    if (isText(NetworkKeys::paramName()))
        others->insert(NetworkKeys::paramName());
    return param;
}

void DzNetworkReader::restoreOrder(DzShaderBrick* brick, const QVector<DzBrickParam*>& order)
{
    for (int i = 0; i < order.size(); ++i) {
        if (brick->getParameter(i) == order.at(i))
            continue;
        brick->setParameterOrder(order);
        return;
    }
}

/// Parameters that the file leaves out stand where the brick has them, not behind what is kept.
void DzNetworkReader::addMissingPlaces(DzShaderBrick* brick)
{
    const auto& trees = DzShaderBrick::Access::kept(brick);
    if (!trees || !trees->parameters)
        return;
    const SettingsTree& kept = *trees->parameters;
    const ParamKeys& keys = *m_keys.constFind(brick);
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
    trees->parameters = std::move(whole);
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
                treesOf(m_kept).linkEntries.insert(NetworkKeys::linkName(*link), *link);
            continue;
        }
        if (!warning.text.isEmpty())
            dzWarn(warning);
        if (isKept)
            keepLink(key, *link);
    }
    keep(m_kept, &Users::KeptTrees::connections,
        DzKeptMembers::remember(connections,
            [&](const QString& key) { return connections.getSettingsValue(key) != nullptr; }));
}

bool DzNetworkReader::readConnection(const SettingsTree& link, DzWarning* warning, bool* isKept)
{
    // It has no effect, which was told when that came to be.
    if (link.getBoolValue(NetworkKeys::inactive()))
        return false;
    const QString inputBrick = link.getStringValue(NetworkKeys::sourceBrick());
    const QString inputKey = link.getStringValue(NetworkKeys::sourceParam());
    const QString outputBrick = link.getStringValue(NetworkKeys::targetBrick());
    const QString outputKey = link.getStringValue(NetworkKeys::targetParam());
    const auto what = [&] {
        return text("the link from %1/%2 to %3/%4")
            .arg(outputBrick, outputKey, inputBrick, inputKey);
    };
    const bool isWhole
        = link.hasKey(NetworkKeys::sourceParam()) && link.hasKey(NetworkKeys::targetParam());
    DzBrickParam* input = isWhole ? findParam(inputBrick, inputKey, false) : nullptr;
    DzBrickParam* output = isWhole ? findParam(outputBrick, outputKey, true) : nullptr;
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
    if (!DzBrickParam::Access::mayBeLinked(input, output))
        return refuse("%1 joins what cannot be joined", "it is kept but has no effect");
    return DzBrickParam::Access::link(input, output);
}

DzBrickParam* DzNetworkReader::findParam(
    const QString& brickName, const QString& key, bool isOutput)
{
    DzShaderBrick* brick = m_bricks.value(brickName);
    if (!brick)
        return nullptr;
    if (auto* unknown = qobject_cast<DzUnknownBrick*>(brick))
        return unknown->paramFor(
            key, isOutput ? DzBrickParam::OutputDirection : DzBrickParam::InputDirection);
    DzBrickParam* param = m_keys.constFind(brick)->find(key);
    return param && param->isOutput() == isOutput ? param : nullptr;
}

void DzNetworkReader::keepLink(const QString& key, const SettingsTree& link)
{
    treesOf(m_kept).danglingLinks.setSettingsValue(key, link);
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
        Users::passID(m_user, id);
}
