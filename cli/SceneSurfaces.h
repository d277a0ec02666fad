// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzmaterial.h"
#include "dzscenefile.h"

#include <QString>
#include <QVector>
#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI
class DzNode;
class DzScene;
class IDzBrickUser;

/// A surface of a scene, at its first place in it.
struct Surface {
    DzNode* node;
    DzMaterial* material;
    int numberOfName = 0; ///< from 0, among surfaces of the same path

    /// "NODE/SURFACE", as users choose it.
    QString path() const;
};

/// What a surface holds of ours.
enum class SurfaceState { None, Properties, Network };
SurfaceState stateOf(const DzMaterial* material);
/// "-", "properties" or "network".
QString stateWord(SurfaceState state);

/// A scene file that is open in the application's scene.
class OpenScene
{
public:
    /// Fails with the file's own message; what was put right while reading becomes notices.
    explicit OpenScene(const std::string& path);

    /// Every surface once, in the order of nodes and surfaces.
    const QVector<Surface>& surfaces() const { return m_surfaces; }
    /// Those that any of the patterns names, in the scene's order. A pattern is a surface's name,
    /// or node name or label, "/" and surface; * and ? stand for any text and character. Fails
    /// when one of them names none.
    QVector<Surface> matching(const std::vector<std::string>& patterns) const;
    /// Fails with the file's own message.
    void save(const std::string& path);
    /// What the scene would be after saving and opening it again: an owned scene
    /// with the same surfaces.
    std::unique_ptr<DzScene> asSaved();
    /// Those of the surfaces of which the last save() or asSaved() could not write all changes.
    QVector<Surface> incomplete(const QVector<Surface>& surfaces) const;
    /// A notice for each thing that the last save() or asSaved() could not write.
    void tellSaveWarnings() const;
    QString path() const { return m_path; }

private:
    QString m_path;
    DzSceneFile m_file;
    QVector<Surface> m_surfaces;
};

/// Which surfaces a command works on.
struct SurfaceChoice {
    std::vector<std::string> patterns;
    bool all = false;

    void addTo(CLI::App* command, const char* what);
    /// Fails as wrong use when nothing is chosen.
    QVector<Surface> in(const OpenScene& scene) const;
};

/// Some of the surfaces' names, for a message.
QString someNames(const QVector<Surface>& surfaces);

/// Selects these surfaces and no others.
void selectOnly(const OpenScene& scene, const QVector<Surface>& surfaces);

/// A new, empty brick user of the plug-in; fails when no module offers one.
struct BrickUserHandle {
    BrickUserHandle();

    DzTSharedPointer<DzMaterial> material;
    IDzBrickUser* user;
};

/// Tells at a terminal what a long run is doing; silent elsewhere.
class Progress
{
public:
    Progress();
    ~Progress();

    void tell(const QString& what);
    /// At most a few times a second.
    void tell(const QString& what, int done, int total);

private:
    bool m_isShown;
    qint64 m_last = 0;
    int m_width = 0;
};
