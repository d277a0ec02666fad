// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbase.h"
#include "dzerror.h"
#include "dzitemlist.h"

#include <QHash>
#include <QVector>
#include <vector>

class DzMaterial;
class DzNode;

/// A surface of a scene: a material at its first place.
struct DzSurface {
    DzNode* node;
    DzMaterial* material;
};

/// All nodes, in one list, and what of them is selected.
///
/// The first scene that is made becomes `dzScene`.
class DzScene : public DzBase
{
    Q_OBJECT

public:
    DzScene();
    /// Deletes the nodes.
    ~DzScene() override;

    Q_INVOKABLE int getNumNodes() const { return m_nodes.size(); }
    Q_INVOKABLE DzNode* getNode(int index) const { return m_nodes.at(index); }
    /// The first node of this name, null when there is none.
    Q_INVOKABLE DzNode* findNode(const QString& name) const;
    /// Adds a node that has no parent, with everything below it, and takes ownership.
    Q_INVOKABLE DzError addNode(DzNode* node);
    /// Takes a node off with everything below it, and gives it back to the caller.
    Q_INVOKABLE DzError removeNode(DzNode* node);

    Q_INVOKABLE int getNumSelectedNodes() const { return static_cast<int>(selectedNodes().size()); }
    Q_INVOKABLE DzNode* getSelectedNode(int index) const;
    /// The node that was selected last; null when none is.
    Q_INVOKABLE DzNode* getPrimarySelection() const { return m_primary; }
    /// Selects a node, null for none, and makes it the primary one.
    Q_INVOKABLE void setPrimarySelection(DzNode* node);
    Q_INVOKABLE void selectAllNodes(bool onOff);

    /// The materials of the nodes' current shapes, each once, in the order of nodes and surfaces.
    QVector<DzSurface> getSurfaces() const;

    /// Those of them that are selected: what a network is applied to.
    QVector<DzSurface> getSelectedSurfaces() const;
    /// The selected materials that are on any shape, in the order in which materials were made:
    /// what networks are taken from. The node is null for one that is no surface of `dzScene`.
    static QVector<DzSurface> getSelectedMaterials();

    /// Deletes all nodes.
    Q_INVOKABLE void clear();
    /// File that the scene was loaded from or saved to; empty for none.
    Q_INVOKABLE QString getFilename() const { return m_filename; }
    void setFilename(const QString& filename) { m_filename = filename; }

signals:
    void sceneClearStarting();
    void sceneCleared();
    /// Everything of a file is in the scene.
    void sceneLoaded();
    void nodeAdded(DzNode* node);
    void nodeRemoved(DzNode* node);
    void nodeListChanged();
    void nodeSelectionListChanged();
    void primarySelectionChanged(DzNode* node);
    void materialListChanged();
    void materialSelectionChanged();

private:
    friend class DzNode;
    friend class DzSceneMaker;

    /// Adds a node and everything below it to the list, or takes them off.
    void enlist(DzNode* top);
    void enlistAlone(DzNode* node);
    void delist(DzNode* top);
    void nodeSelectionStateChanged(DzNode* node, bool onOff);
    const std::vector<DzNode*>& selectedNodes() const;

    DzItemList<DzNode> m_nodes;
    DzNode* m_primary = nullptr;
    QString m_filename;
    mutable QHash<QString, DzNode*> m_nameIndex; ///< first of each name; made when asked for
    mutable std::vector<DzNode*> m_selected;     ///< made when asked for
    mutable bool m_hasNameIndex = false;
    mutable bool m_hasSelected = false;
};

/// The first scene; null before it is made and after it is gone.
extern DzScene* dzScene;
