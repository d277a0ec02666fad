// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>

class DzProperty;
class DzShaderBrick;
class QLabel;

/// Some lines under the properties that explain the value that the keyboard is on, or else the
/// brick. They keep their height, so that nothing jumps while one goes from value to value.
class HelpStrip : public QWidget
{
    Q_OBJECT

public:
    explicit HelpStrip(QWidget* parent = nullptr);

    /// The brick that is explained while no value is; null for none. Not owned.
    void setBrick(DzShaderBrick* brick);
    /// The value to explain, with the name that users see; null for none. Not owned.
    void setValue(DzProperty* property, const QString& label);
    /// What is shown, as plain text.
    QString getText() const { return m_shown; }

private:
    void refresh();

    QPointer<DzShaderBrick> m_brick;
    QPointer<DzProperty> m_property;
    QString m_label;
    QString m_shown;
    QLabel* m_text;
};
