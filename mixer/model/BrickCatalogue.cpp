// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickCatalogue.h"

#include "dzapp.h"
#include "dzbrickaction.h"
#include "dzbrickparam.h"
#include "dzclassfactory.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QPointer>
#include <QSet>
#include <algorithm>

namespace {

const int noMatch = 1000;

/// How well a word fits a kind: the less the better.
int rate(const BrickKind& kind, const QString& word)
{
    const QString& name = kind.name;
    if (name.startsWith(word, Qt::CaseInsensitive))
        return 0;
    int place = name.indexOf(word, 0, Qt::CaseInsensitive);
    if (place > 0)
        return name.at(place - 1).isLetterOrNumber() ? 2 : 1;
    if (kind.category.contains(word, Qt::CaseInsensitive))
        return 3;
    return noMatch;
}

int rateAll(const BrickKind& kind, const QStringList& words)
{
    int sum = 0;
    for (const QString& word : words) {
        const int rating = rate(kind, word);
        if (rating == noMatch)
            return noMatch;
        sum += rating;
    }
    return sum;
}

bool passes(const BrickKind& kind, const BrickCatalogue::Filter& filter)
{
    return (!filter.user || filter.user->canUseBrick(kind.sample))
        && (!filter.accepts || filter.accepts(kind.sample));
}

} // namespace

const BrickCatalogue* BrickCatalogue::instance()
{
    static QPointer<BrickCatalogue> catalogue;
    // Modules come and never go, so their number tells whether there are new ones.
    if (catalogue && catalogue->m_factoryCount == dzApp->getPluginMgr()->getClassFactories().size())
        return catalogue;
    delete catalogue;
    catalogue = new BrickCatalogue;
    return catalogue;
}

BrickCatalogue::BrickCatalogue()
{
    // The samples go while their modules are there.
    connect(dzApp, &DzApp::closing, this, [this] { delete this; });
    // A brick that sets its values while it is made must not leave steps.
    const DzUndoStackLock lock;
    const QList<const DzClassFactory*> factories = dzApp->getPluginMgr()->getClassFactories();
    m_factoryCount = factories.size();
    for (const DzClassFactory* factory : factories) {
        if (!factory->getMetaObject().inherits(&DzShaderBrick::staticMetaObject))
            continue;
        QObject* object = factory->createInstance();
        if (auto* sample = qobject_cast<DzShaderBrick*>(object))
            addKind(sample, factory->className());
        else
            delete object;
    }
    QSet<QString> listed;
    for (const BrickKind& kind : qAsConst(m_kinds))
        for (const QString& action : kind.sample->getBrickActionList())
            listed.insert(action);
    for (const DzClassFactory* factory : factories)
        if (factory->getMetaObject().inherits(&DzBrickAction::staticMetaObject)
            && !listed.contains(factory->className()))
            m_unlistedActions.append(factory->className());
}

void BrickCatalogue::addKind(DzShaderBrick* sample, const QString& className)
{
    BrickKind kind;
    kind.sample = sample;
    kind.className = className;
    kind.name = sample->getPreferredName();
    kind.category = sample->getDefaultCategory();
    kind.description = sample->getDescription();
    for (int i = 0; i < sample->getNumParameters(); ++i) {
        const DzBrickParam* param = sample->getParameter(i);
        const BrickPin pin { param->getName(), param->getLabel(), param->getTypeString() };
        if (param->isInput())
            kind.inputs.append(pin);
        else if (param->isOutput())
            kind.outputs.append(pin);
    }
    m_kinds.append(kind);
}

const BrickKind* BrickCatalogue::find(const QString& className) const
{
    for (const BrickKind& kind : m_kinds)
        if (kind.className == className)
            return &kind;
    return nullptr;
}

QVector<const BrickKind*> BrickCatalogue::search(const QString& text, const Filter& filter) const
{
    const QStringList words = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVector<QPair<int, const BrickKind*>> found;
    for (const BrickKind& kind : m_kinds) {
        const int rating = rateAll(kind, words);
        if (rating < noMatch && passes(kind, filter))
            found.append(qMakePair(rating, &kind));
    }
    // Equally good ones stay in the order in which the modules name them.
    std::stable_sort(
        found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    QVector<const BrickKind*> kinds;
    kinds.reserve(found.size());
    for (const auto& entry : qAsConst(found))
        kinds.append(entry.second);
    return kinds;
}

DzBrickParam* BrickCatalogue::findFitting(const DzShaderBrick* brick, DzBrickParam* pin)
{
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* param = brick->getParameter(i);
        // The input decides.
        DzBrickParam* input = pin->isOutput() ? param : pin;
        if (input->isInput() && input->canConnect(input == param ? pin : param))
            return param;
    }
    return nullptr;
}

QString BrickCatalogue::mimeType()
{
    return QStringLiteral("application/x-shader-brick-class");
}
