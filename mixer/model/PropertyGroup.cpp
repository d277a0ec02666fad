// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PropertyGroup.h"

#include "NetworkWalk.h"
#include "dzboolproperty.h"
#include "dzbrickparam.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"
#include "dzstringproperty.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace {

QString message(const char* source)
{
    return QCoreApplication::translate("PropertyGroup", source);
}

/// Limits that are further apart stand for "any number".
const double widestRange = 1e9;

/// The limits of a number; empty for what has none.
QString rangeOf(const DzProperty* property)
{
    if (qobject_cast<const DzEnumProperty*>(property)
        || qobject_cast<const DzBoolProperty*>(property)
        || qobject_cast<const DzColorProperty*>(property))
        return QString();
    double least = 0;
    double most = 0;
    if (const auto* real = qobject_cast<const DzFloatProperty*>(property)) {
        least = double(real->getMin());
        most = double(real->getMax());
    } else if (const auto* whole = qobject_cast<const DzIntProperty*>(property)) {
        least = whole->getMin();
        most = whole->getMax();
    }
    if (most <= least || most - least > widestRange)
        return QString();
    return message("%1 to %2").arg(QString::number(least), QString::number(most));
}

/// The default as a person would type it; empty for none.
QString defaultOf(const DzProperty* property)
{
    if (const auto* text = qobject_cast<const DzStringProperty*>(property))
        return text->getDefaultValue();
    const auto* number = qobject_cast<const DzNumericProperty*>(property);
    // The default of what cannot be animated is the value itself.
    if (!number || !number->canAnimate())
        return QString();
    if (const auto* choice = qobject_cast<const DzEnumProperty*>(property))
        return choice->getDefaultStringValue();
    if (const auto* flag = qobject_cast<const DzBoolProperty*>(property))
        return flag->getDefaultBoolValue() ? message("on") : message("off");
    if (const auto* color = qobject_cast<const DzColorProperty*>(property)) {
        const QColor standard = color->getDefaultColorValue();
        return QStringLiteral("%1 %2 %3")
            .arg(standard.red())
            .arg(standard.green())
            .arg(standard.blue());
    }
    return QString::number(number->getDoubleDefaultValue());
}

/// What properties of several bricks have in common that are one to the user. Vectors have three of
/// one key, and inputs may bear equal names.
struct PropertyKey {
    explicit PropertyKey(const DzProperty* property)
        : kind(property->metaObject())
        , name(property->getName())
    {
        if (const DzBrickParam* owner = property->getBrickParam())
            param = owner->getName();
        // The value of a choice is a place among its items, and means nothing among others.
        const auto* choice = qobject_cast<const DzEnumProperty*>(property);
        for (int i = 0; choice && i < choice->getNumItems(); ++i)
            items.append(choice->getItem(i));
    }

    const QMetaObject* kind;
    QString name;
    QString param;
    QStringList items;
};

bool operator==(const PropertyKey& a, const PropertyKey& b)
{
    return a.kind == b.kind && a.name == b.name && a.param == b.param && a.items == b.items;
}

uint qHash(const PropertyKey& key)
{
    return qHash(key.name) ^ (31 * qHash(key.param)) ^ qHash(key.kind);
}

/// A change of the whole state of a brick that was made step by step.
class BrickStateItem : public DzUndoItem
{
public:
    BrickStateItem(DzShaderBrick* brick, std::unique_ptr<DzBrickState> before)
        : m_brick(brick)
        , m_before(std::move(before))
        , m_after(new DzBrickState(brick))
    {
    }

    bool isChange() const { return *m_before != *m_after; }
    void undo() override
    {
        if (m_brick)
            m_before->restore(m_brick);
    }
    void redo() override
    {
        if (m_brick)
            m_after->restore(m_brick);
    }

private:
    QPointer<DzShaderBrick> m_brick;
    std::unique_ptr<DzBrickState> m_before;
    std::unique_ptr<DzBrickState> m_after;
};

/// All properties of the bricks, for commands that change everything.
PropertyGroup everything(const QVector<DzShaderBrick*>& bricks)
{
    QVector<DzProperty*> properties;
    for (const DzShaderBrick* brick : bricks)
        forEachProperty(brick, [&](DzProperty* property) { properties.append(property); });
    return PropertyGroup(properties);
}

} // namespace

namespace {

/// How many inputs there are, and how many wires lead to them.
struct InputCount {
    int inputs = 0;
    int wires = 0;

    void add(const DzShaderBrick* brick)
    {
        for (int i = 0; i < brick->getNumParameters(); ++i) {
            const DzBrickParam* param = brick->getParameter(i);
            if (!param->isInput())
                continue;
            ++inputs;
            wires += param->getNumConnections();
        }
    }
};

QString countText(int count, const char* one, const char* several)
{
    return count == 1 ? message(one) : message(several).arg(count);
}

/// What a person may not see at once: the inputs can be far down a brick, and out of sight.
QString noticeOf(const InputCount& before, const InputCount& after)
{
    const int inputs = qAbs(after.inputs - before.inputs);
    const int wires = qAbs(after.wires - before.wires);
    const QString inputText = countText(inputs, "1 input", "%1 inputs");
    const QString wireText = countText(wires, "1 wire", "%1 wires");
    if (after.inputs < before.inputs)
        return wires > 0
            ? message("%1 went, and %2 to them. Setting the old value brings back what "
                      "they held.")
                  .arg(inputText, wireText)
            : message("%1 went. Setting the old value brings back what they held.").arg(inputText);
    if (after.inputs > before.inputs && after.wires > before.wires)
        return message("%1 came back, and %2 to them.").arg(inputText, wireText);
    return QString();
}

} // namespace

struct PropertySession::Kept {
    QPointer<DzShaderBrick> brick;
    std::unique_ptr<DzBrickState> before;
    InputCount inputs;
};

PropertyGroup::PropertyGroup(const QVector<DzProperty*>& properties)
{
    m_properties.reserve(properties.size());
    for (DzProperty* property : properties)
        m_properties.append(property);
}

DzProperty* PropertyGroup::getFirst() const
{
    for (const QPointer<DzProperty>& property : m_properties)
        if (property)
            return property;
    return nullptr;
}

QVector<DzProperty*> PropertyGroup::getAll() const
{
    QVector<DzProperty*> present;
    for (const QPointer<DzProperty>& property : m_properties)
        if (property)
            present.append(property);
    return present;
}

QString PropertyGroup::getLabel() const
{
    const DzProperty* property = getFirst();
    if (!property)
        return QString();
    const DzBrickParam* param = property->getBrickParam();
    return param && param->getNumProperties() > 1 && !param->getLabel().isEmpty()
        ? message("%1 · %2").arg(param->getLabel(), property->getLabel())
        : property->getLabel();
}

QString PropertyGroup::describe() const
{
    const DzProperty* property = getFirst();
    if (!property)
        return QString();
    QString name = property->getName();
    const DzBrickParam* param = property->getBrickParam();
    if (param && param->getNumProperties() > 1)
        name = param->getName() + QLatin1Char(' ') + name;
    QStringList lines { getLabel(), message("Name: %1").arg(name) };
    const QString range = rangeOf(property);
    if (!range.isEmpty())
        lines.append(message("Range: %1").arg(range));
    const QString standard = defaultOf(property);
    if (!standard.isEmpty())
        lines.append(message("Default: %1").arg(standard));
    return lines.join(QLatin1Char('\n'));
}

bool PropertyGroup::isMixed() const
{
    const QVector<DzProperty*> all = getAll();
    if (all.isEmpty())
        return false;
    const QString value = all.first()->getValueText();
    const QString map = mapFileOf(all.first());
    return std::any_of(all.begin() + 1, all.end(), [&](const DzProperty* property) {
        return property->getValueText() != value || mapFileOf(property) != map;
    });
}

bool PropertyGroup::isLocked() const
{
    const QVector<DzProperty*> all = getAll();
    return std::any_of(
        all.begin(), all.end(), [](const DzProperty* property) { return property->isLocked(); });
}

bool PropertyGroup::isDefault() const
{
    const QVector<DzProperty*> all = getAll();
    return std::all_of(all.begin(), all.end(),
        [](const DzProperty* property) { return property->currentValueIsDefaultValue(); });
}

bool PropertyGroup::isMappable() const
{
    const QVector<DzProperty*> all = getAll();
    return !all.isEmpty() && std::all_of(all.begin(), all.end(), [](const DzProperty* property) {
        auto* numeric = qobject_cast<const DzNumericProperty*>(property);
        return numeric && numeric->isMappable();
    });
}

QString PropertyGroup::getMap() const
{
    const QVector<DzProperty*> all = getAll();
    if (all.isEmpty())
        return QString();
    const QString map = mapFileOf(all.first());
    const bool same = std::all_of(all.begin(), all.end(),
        [&](const DzProperty* property) { return mapFileOf(property) == map; });
    return same ? map : QString();
}

bool PropertyGroup::isMapped() const
{
    const QVector<DzProperty*> all = getAll();
    return std::any_of(all.begin(), all.end(),
        [](const DzProperty* property) { return !mapFileOf(property).isEmpty(); });
}

DzShaderBrick* PropertyGroup::getSource() const
{
    const DzProperty* property = getFirst();
    const DzBrickParam* param = property ? property->getBrickParam() : nullptr;
    const DzBrickParam* source = param ? param->getConnection(0) : nullptr;
    return source ? source->getTopBrickOwner() : nullptr;
}

bool PropertyGroup::setText(const QString& text, QString* error)
{
    PropertySession session(*this);
    for (const QPointer<DzProperty>& property : qAsConst(m_properties))
        if (property && !property->isLocked() && !property->setValueText(text, error))
            return false;
    session.accept(message("Change %1").arg(getLabel()));
    m_notice = session.getNotice();
    return true;
}

void PropertyGroup::setNumber(double value)
{
    PropertySession session(*this);
    for (const QPointer<DzProperty>& property : qAsConst(m_properties))
        if (auto* numeric = qobject_cast<DzNumericProperty*>(property.data()))
            if (!numeric->isLocked())
                numeric->setDoubleValue(value);
    session.accept(message("Change %1").arg(getLabel()));
    m_notice = session.getNotice();
}

void PropertyGroup::setMap(const QString& file)
{
    PropertySession session(*this);
    for (const QPointer<DzProperty>& property : qAsConst(m_properties))
        if (auto* numeric = qobject_cast<DzNumericProperty*>(property.data()))
            numeric->setMap(file);
    session.accept(file.isEmpty() ? message("Clear Map of %1").arg(getLabel())
                                  : message("Set Map of %1").arg(getLabel()));
}

void PropertyGroup::reset(const QString& caption)
{
    PropertySession session(*this);
    // One may make others go.
    for (const QPointer<DzProperty>& property : qAsConst(m_properties))
        if (property && !property->isLocked())
            property->resetToDefault();
    session.accept(caption.isEmpty() ? message("Reset %1").arg(getLabel()) : caption);
    m_notice = session.getNotice();
}

void PropertyGroup::lock(bool locked)
{
    DzUndoStackHold hold;
    for (const QPointer<DzProperty>& property : qAsConst(m_properties))
        if (property)
            property->lock(locked);
    hold.accept((locked ? message("Lock %1") : message("Unlock %1")).arg(getLabel()));
}

std::vector<PropertyGroup> commonProperties(const QVector<DzShaderBrick*>& bricks)
{
    std::vector<PropertyGroup> groups;
    if (bricks.isEmpty())
        return groups;
    // One for each property of the first brick, and where those of a key are.
    std::vector<QVector<DzProperty*>> members;
    QHash<PropertyKey, QVector<size_t>> places;
    forEachProperty(bricks.first(), [&](DzProperty* property) {
        places[PropertyKey(property)].append(members.size());
        members.push_back({ property });
    });
    for (int i = 1; i < bricks.size(); ++i) {
        bool hasCommon = false;
        forEachProperty(bricks.at(i), [&](DzProperty* property) {
            const auto found = places.constFind(PropertyKey(property));
            if (found == places.constEnd())
                return;
            // The next of the key that all bricks before had, and this one has not yet.
            const auto next = std::find_if(found->begin(), found->end(),
                [&](size_t place) { return members[place].size() == i; });
            if (next == found->end())
                return;
            members[*next].append(property);
            hasCommon = true;
        });
        if (!hasCommon)
            return groups;
    }
    for (const QVector<DzProperty*>& group : members)
        if (group.size() == bricks.size())
            groups.emplace_back(group);
    return groups;
}

PropertySession::PropertySession(const PropertyGroup& group)
{
    const QVector<DzProperty*> all = group.getAll();
    const bool mayMakeInputs = std::any_of(all.begin(), all.end(),
        [](const DzProperty* property) { return !property->getBrickParam(); });
    if (!mayMakeInputs)
        return;
    QSet<DzShaderBrick*> seen;
    for (const DzProperty* property : all) {
        auto* brick = qobject_cast<DzShaderBrick*>(property->getOwner());
        if (!brick || seen.contains(brick))
            continue;
        seen.insert(brick);
        InputCount inputs;
        inputs.add(brick);
        m_kept.push_back(Kept { brick, std::make_unique<DzBrickState>(brick), inputs });
    }
    m_lock = std::make_unique<DzUndoStackLock>();
}

PropertySession::~PropertySession()
{
    for (const Kept& kept : m_kept)
        if (kept.brick && kept.before)
            kept.before->restore(kept.brick);
}

void PropertySession::accept(const QString& caption)
{
    m_lock.reset();
    InputCount before;
    InputCount after;
    for (Kept& kept : m_kept) {
        if (kept.brick) {
            before.inputs += kept.inputs.inputs;
            before.wires += kept.inputs.wires;
            after.add(kept.brick);
        }
        if (!kept.brick || !dzUndoStack->canPushItems()) {
            kept.before.reset();
            continue;
        }
        auto item = std::make_unique<BrickStateItem>(kept.brick, std::move(kept.before));
        if (item->isChange())
            dzUndoStack->push(item.release(), caption);
    }
    m_notice = noticeOf(before, after);
    m_hold.accept(caption);
}

void lockAllValues(const QVector<DzShaderBrick*>& bricks, bool locked)
{
    DzUndoStackHold hold;
    for (const DzShaderBrick* brick : bricks)
        forEachProperty(brick, [&](DzProperty* property) { property->lock(locked); });
    hold.accept(locked ? message("Lock All Values") : message("Unlock All Values"));
}

void resetAllValues(const QVector<DzShaderBrick*>& bricks)
{
    everything(bricks).reset(message("Reset All Values"));
}
