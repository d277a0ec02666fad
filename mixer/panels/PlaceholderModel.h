// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "NetworkText.h"

#include <QAbstractTableModel>

/// The placeholders of a text as a table: locked, name, brick, property, value. The lock can be
/// changed.
class PlaceholderModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { LockedColumn, NameColumn, BrickColumn, PropertyColumn, ValueColumn };
    static const int columns = 5;

    using QAbstractTableModel::QAbstractTableModel;

    void setPlaceholders(const QVector<TextPlaceholder>& placeholders);
    DzShaderBrick* getBrick(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QVector<TextPlaceholder> m_placeholders;
};
