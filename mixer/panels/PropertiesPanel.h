// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProblemFinder.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <vector>

class DzProperty;
class DzShaderBrick;
class HelpStrip;
class MixerDocument;
class ProblemActions;
class PropertyGroup;
class PropertyRow;
class QLabel;
class QLineEdit;
class QScrollArea;
class QVBoxLayout;

/// The values of the selected bricks: those that all of them have, changed on all together.
class PropertiesPanel : public QWidget
{
    Q_OBJECT

public:
    explicit PropertiesPanel(QWidget* parent = nullptr);
    ~PropertiesPanel() override;

    /// Shows this document's selection; null for none. Not owned.
    void setDocument(MixerDocument* document);
    /// The row of this label, null when there is none.
    PropertyRow* findRow(const QString& label) const;
    /// Brings the rows up to date now rather than with the next frame.
    void updateNow();
    /// Shows these beside the values that they are about. The actions are not owned and outlive it.
    void showProblems(const QVector<Problem>& problems, ProblemActions* actions);
    /// Takes the keyboard to the first value.
    void focusFirst();
    /// Takes it to the row of this value.
    void focusOn(DzProperty* property);

signals:
    void brickActivated(DzShaderBrick* brick);
    void message(const QString& text);

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void scheduleRebuild();
    void scheduleRefresh();
    void rebuild();
    void refreshHead();
    void enterTitle();
    void showRows(const std::vector<PropertyGroup>& groups);
    void alignNames();
    void explainFocus();

    QPointer<MixerDocument> m_document;
    QTimer m_update;
    bool m_needsRebuild = false;
    bool m_needsRefresh = false;
    /// Whose title the field shows: what is typed is for this one, whatever is selected meanwhile.
    QPointer<DzShaderBrick> m_titled;
    QPointer<MixerDocument> m_titledDocument;
    QLineEdit* m_title;
    QLabel* m_kind;
    QLabel* m_empty;
    QWidget* m_tools;
    QScrollArea* m_scroll;
    QVBoxLayout* m_layout;
    HelpStrip* m_help;
    QVector<Problem> m_problems;
    ProblemActions* m_actions = nullptr;
    QVector<QWidget*> m_headings;
    std::vector<PropertyRow*> m_rows;
};
