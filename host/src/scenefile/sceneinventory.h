// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzsettings.h"

#include <QPointer>
#include <QString>
#include <utility>
#include <vector>

class DzMaterial;
class DzNode;
class DzScene;
class DzWarningList;

/// What a scene was when it was read, beside what its surfaces hold: saving writes none of that, so
/// that a change of it must be told.
class SceneInventory
{
public:
    /// Notes what is in the scene.
    void read(const DzScene& scene);
    /// A warning for everything that is other now: nodes, their names and data, surfaces and their
    /// names. Surfaces that left the scene are told by whoever writes their entries.
    void tellUnsaved(const DzScene& scene, DzWarningList* warnings) const;

private:
    typedef std::vector<std::pair<QString, DzSettings>> Data;

    struct Node {
        QPointer<DzNode> node;
        QString name;
        QString label;
        const DzNode* parent; ///< compared only
        Data data;
    };
    struct Surface {
        QPointer<DzMaterial> material;
        QString name;
        QString label;
    };

    static Data dataOf(const DzNode* node);
    void tellNodes(const DzScene& scene, DzWarningList* warnings) const;
    void tellSurfaces(const DzScene& scene, DzWarningList* warnings) const;

    std::vector<Node> m_nodes;
    std::vector<Surface> m_surfaces;
};
