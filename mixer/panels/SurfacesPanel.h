// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QTimer>
#include <QWidget>

class DzMaterial;
class DzNode;
class QAction;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

/// The scene's nodes and their surfaces, and which of them keep a network. The selection of
/// surfaces and that of their materials are one.
class SurfacesPanel : public QWidget
{
    Q_OBJECT

public:
    /// The actions stand as buttons below the list; not owned.
    explicit SurfacesPanel(const QVector<QAction*>& actions, QWidget* parent = nullptr);

    QTreeWidget* getTree() const { return m_tree; }
    /// Brings the list up to date now rather than with the next frame.
    void updateNow();

signals:
    void selectionChanged();

private:
    void rebuild();
    void fill();
    void addNode(DzNode* node, QTreeWidgetItem* parent);
    static void mark(QTreeWidgetItem* surface, const DzMaterial* material);
    void updateMarks();
    void takeSelectionFromScene();
    void giveSelectionToScene();

    QTreeWidget* m_tree;
    QLabel* m_empty;
    QTimer m_rebuild;
    QTimer m_updateMarks;
    QHash<const QTreeWidgetItem*, DzMaterial*> m_materials;
    bool m_exchanging = false;
};
