// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PropertyGroup.h"

#include <QWidget>
#include <memory>

/// Shows and changes the value of a group of properties; there is one for each class of property.
class PropertyEditor : public QWidget
{
    Q_OBJECT

public:
    /// The editor for the group's class; it shows nothing before the first refresh.
    static PropertyEditor* make(const PropertyGroup& group, QWidget* parent);
    ~PropertyEditor() override;

    /// The height that all lines of values have.
    static int lineHeight(const QWidget* widget);
    /// Shows what the properties are now.
    virtual void refresh() = 0;
    /// Where relative file names are looked for from the next refresh on.
    virtual void setFolder(const QString& folder);

signals:
    /// Why something typed was not taken, or what it did besides, in one line.
    void message(const QString& text);

protected:
    PropertyEditor(const PropertyGroup& group, QWidget* parent);

    PropertyGroup& getGroup() { return m_group; }
    /// Sets the value from a text, and tells when it is refused.
    void enter(const QString& text);
    void enterNumber(double value);
    // What happens between these is one undo step.
    void beginSession();
    void endSession(bool accepted);

private:
    void tell(const QString& notice);

    PropertyGroup m_group;
    std::unique_ptr<PropertySession> m_session;
};
