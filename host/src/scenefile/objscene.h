// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

class DzWarningList;

/// Makes a document in the host's form from an .obj file: its mesh, a surface for each of its
/// materials, and what the material files beside it say of colours, opacities and maps. `path`
/// tells where these are. On failure false and the cause in `error`.
bool sceneFromObj(const QString& path, const QByteArray& obj, QByteArray* document,
    DzWarningList* warnings, QString* error);
