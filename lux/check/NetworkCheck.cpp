// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkCheck.h"

#include "BrickCodeCache.h"
#include "RendererFacts.h"
#include "SceneCodeWriter.h"
#include "VireoBrickBase.h"
#include "VireoRootBrick.h"
#include "dzbrickparam.h"
#include "dznumericproperty.h"
#include "dztexture.h"
#include "idzbrickuser.h"

#include <QSet>

#include <algorithm>
#include <limits>

namespace lux {

namespace {

/// The text of all bricks of a network, the root's first, and who wrote what.
class WrittenNetwork
{
public:
    explicit WrittenNetwork(const IDzBrickUser* user);

    const QByteArray& text() const { return m_text; }
    /// The brick that wrote this byte; null if none did.
    VireoBrickBase* brickAt(std::uint32_t byte) const;
    bool isWritten(const VireoBrickBase* brick) const { return m_written.contains(brick); }
    const QList<DzNumericProperty*>& unwrittenMaps() const { return m_unwrittenMaps; }

private:
    struct Part {
        std::uint32_t end;
        VireoBrickBase* brick;
    };

    void addPart(const QString& text, VireoBrickBase* brick);

    QByteArray m_text;
    std::vector<Part> m_parts;
    QSet<const VireoBrickBase*> m_written;
    QList<DzNumericProperty*> m_unwrittenMaps;
};

WrittenNetwork::WrittenNetwork(const IDzBrickUser* user)
{
    BrickCodeCache::instance().clear();
    SceneCodeWriter writer;
    writer.literalValues = true;
    writer.mapFiles = true;
    VireoRootBrick* const root = findRootBrick(user);
    const QString mesh = root ? codeFor(root, &writer).name : QString();
    const int reached = writer.writtenStatements().size();
    // In the same run, so that each brick is written once however the network hangs together.
    QList<uint> ids;
    user->getBrickIDs(ids);
    for (const uint id : qAsConst(ids))
        if (auto* brick = qobject_cast<VireoBrickBase*>(user->getBrick(id)))
            codeFor(brick, &writer);

    const QString output = writer.outputText();
    const QVector<WrittenStatement>& statements = writer.writtenStatements();
    int begin = 0;
    for (int i = 0; i < statements.size(); ++i) {
        const WrittenStatement& statement = statements.at(i);
        addPart(output.mid(begin, statement.begin - begin), nullptr);
        addPart(output.mid(statement.begin, statement.length), statement.brick);
        begin = statement.begin + statement.length;
        if (i < reached)
            m_written.insert(statement.brick);
    }
    addPart(output.mid(begin), nullptr);
    if (root) {
        m_written.insert(root);
        addPart(QStringLiteral("\nShape \"mesh\"\n") + mesh, root);
    }
    m_unwrittenMaps = writer.unwrittenMaps;
}

void WrittenNetwork::addPart(const QString& text, VireoBrickBase* brick)
{
    if (text.isEmpty())
        return;
    m_text += text.toUtf8();
    m_parts.push_back({ static_cast<std::uint32_t>(m_text.size()), brick });
}

VireoBrickBase* WrittenNetwork::brickAt(std::uint32_t byte) const
{
    const auto part = std::upper_bound(m_parts.begin(), m_parts.end(), byte,
        [](std::uint32_t sought, const Part& candidate) { return sought < candidate.end; });
    return part == m_parts.end() ? nullptr : part->brick;
}

DzProperty* propertyOf(const DzShaderBrick* brick, const QString& name)
{
    if (name.isEmpty())
        return nullptr;
    const DzBrickParam* param = brick->findParameterByName(name);
    return param && param->getNumProperties() > 0 ? param->getProperty(0)
                                                  : brick->findProperty(name);
}

/// The value of a finding: its own, or the one that a remedy sets.
DzProperty* propertyOf(const DzShaderBrick* brick, const Finding& finding)
{
    if (DzProperty* property = propertyOf(brick, finding.parameter))
        return property;
    for (const Remedy& remedy : finding.remedies)
        for (const auto& value : remedy.values)
            if (DzProperty* property = propertyOf(brick, value.first))
                return property;
    return nullptr;
}

/// An image on a value that the text can only give as a number or color.
BrickFinding unwrittenMap(DzNumericProperty* property, const WrittenNetwork& network)
{
    const FactText& text = RendererFacts::renderer().general("image-not-written");
    const QString file = property->getMapValue()->getFilename();
    const auto fill = [&](QString sentence) {
        return sentence.replace(QLatin1String("{parameter}"), property->getName())
            .replace(QLatin1String("{value}"), file);
    };
    BrickFinding found;
    found.property = property;
    found.brick = qobject_cast<DzShaderBrick*>(property->getOwner());
    found.isWritten = network.isWritten(qobject_cast<VireoBrickBase*>(found.brick));
    Finding& finding = found.finding;
    finding.rule = text.rule;
    finding.severity = text.severity;
    finding.parameter = property->getName();
    finding.value = file;
    finding.sentence = fill(text.says);
    finding.advice = fill(text.advice);
    finding.remedies = text.remedies;
    for (Remedy& remedy : finding.remedies)
        remedy.parameter = property->getName();
    finding.source = text.source;
    return found;
}

} // namespace

std::vector<BrickFinding> checkNetwork(const IDzBrickUser* user, const NetworkCheckOptions& options)
{
    const WrittenNetwork network(user);
    SceneText scene;
    SceneOptions reading;
    reading.followsIncludes = false;
    scene.readText(network.text(), QString(), reading);
    CheckOptions check;
    check.tellsPortability = options.tellsPortability;
    check.imageFolder = options.imageFolder;
    check.isWhole = true;
    check.mostOfARule = std::numeric_limits<int>::max() - 1; // each brick has its own
    std::vector<BrickFinding> findings;
    for (const Finding& finding : checkScene(scene, check)) {
        BrickFinding found;
        found.finding = finding;
        VireoBrickBase* const brick = network.brickAt(finding.span.begin);
        found.brick = brick;
        if (brick) {
            found.property = propertyOf(brick, finding);
            found.isWritten = network.isWritten(brick);
        }
        findings.push_back(found);
    }
    for (DzNumericProperty* property : network.unwrittenMaps())
        findings.push_back(unwrittenMap(property, network));
    return findings;
}

} // namespace lux
