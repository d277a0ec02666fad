// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzstringproperty.h"

/// The name of a file or folder.
class DzFileProperty : public DzStringProperty
{
    Q_OBJECT

public:
    enum FileType { FileSave, FileOpen, Directory, FileLoad };
    Q_ENUM(FileType)

    DzFileProperty(const QString& name, bool isUserProperty);

    Q_INVOKABLE FileType getType() const { return m_type; }
    Q_INVOKABLE void setType(FileType type) { m_type = type; }
    /// File dialog filter, such as "Name (*.a *.b)".
    Q_INVOKABLE QString getFilter() const { return m_filter; }
    Q_INVOKABLE void setFilter(const QString& filter);

signals:
    void filterChanged();

protected:
    DzProperty* createSimilar() const override;
    void assignAll(const DzProperty* model) override;

private:
    FileType m_type = FileOpen;
    QString m_filter;
};
