// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PlaceholderModel.h"

#include "BrickAppearance.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"

#include <QHash>

namespace {

QString valueOf(const DzProperty* property)
{
    auto* numeric = qobject_cast<const DzNumericProperty*>(property);
    return numeric && numeric->isMapped()
        ? property->getValueText() + QStringLiteral("  ·  ") + numeric->getMapValue()->getFilename()
        : property->getValueText();
}

/// A value, and which of its placeholders: colours have several.
typedef QPair<const DzProperty*, int> RowKey;

QVector<RowKey> keysOf(const QVector<TextPlaceholder>& placeholders)
{
    QVector<RowKey> keys;
    QHash<const DzProperty*, int> seen;
    for (const TextPlaceholder& placeholder : placeholders)
        keys.append(RowKey(placeholder.property, seen[placeholder.property]++));
    return keys;
}

} // namespace

void PlaceholderModel::setPlaceholders(const QVector<TextPlaceholder>& placeholders)
{
    const QVector<RowKey> before = keysOf(m_placeholders);
    const QVector<RowKey> after = keysOf(placeholders);
    if (before == after) {
        m_placeholders = placeholders; // names may be others
        if (!placeholders.isEmpty())
            emit dataChanged(index(0, 0), index(placeholders.size() - 1, columns - 1));
        return;
    }
    // A value that is locked loses its placeholder, and with it its place: whoever is on its row
    // goes along.
    emit layoutAboutToBeChanged();
    QHash<RowKey, int> rowOf;
    for (int i = 0; i < after.size(); ++i)
        rowOf.insert(after.at(i), i);
    m_placeholders = placeholders;
    for (const QModelIndex& place : persistentIndexList()) {
        const int row = rowOf.value(before.at(place.row()), -1);
        changePersistentIndex(place, row < 0 ? QModelIndex() : index(row, place.column()));
    }
    emit layoutChanged();
}

DzShaderBrick* PlaceholderModel::getBrick(int row) const
{
    return m_placeholders.value(row).brick;
}

int PlaceholderModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_placeholders.size();
}

int PlaceholderModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant PlaceholderModel::data(const QModelIndex& index, int role) const
{
    const TextPlaceholder& placeholder = m_placeholders.at(index.row());
    if (!placeholder.property || !placeholder.brick)
        return QVariant();
    if (index.column() == LockedColumn && role == Qt::CheckStateRole)
        return placeholder.property->isLocked() ? Qt::Checked : Qt::Unchecked;
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
    switch (index.column()) {
    case NameColumn:
        return placeholder.name.isEmpty() ? tr("(written as value)") : placeholder.name;
    case BrickColumn:
        return BrickAppearance::titleText(placeholder.brick);
    case PropertyColumn:
        return placeholder.property->getLabel();
    case ValueColumn:
        return valueOf(placeholder.property);
    default:
        return QVariant();
    }
}

bool PlaceholderModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    DzProperty* property = m_placeholders.at(index.row()).property;
    if (!property || index.column() != LockedColumn || role != Qt::CheckStateRole)
        return false;
    property->lock(value.toInt() == Qt::Checked);
    return true;
}

QVariant PlaceholderModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case NameColumn:
        return tr("Placeholder");
    case BrickColumn:
        return tr("Brick");
    case PropertyColumn:
        return tr("Property");
    case ValueColumn:
        return tr("Value");
    default:
        return tr("Locked");
    }
}

Qt::ItemFlags PlaceholderModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == LockedColumn ? flags | Qt::ItemIsUserCheckable : flags;
}
