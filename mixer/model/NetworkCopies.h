// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointF>
#include <QString>
#include <QVector>

class DzShaderBrick;
class NetworkEdit;

/// The bricks and the links among them as text, which is a network file of its own.
QString copyBricks(const NetworkEdit& edit, const QVector<DzShaderBrick*>& bricks);
/// False for a text that surely holds no network, told without reading it as one.
bool mayPaste(const QString& text);
/// Adds what such a text holds, with its middle at `position` or near it where it hides no brick,
/// as one step, and returns the new bricks. None, with the reason in `error`, for any other text.
QVector<DzShaderBrick*> pasteBricks(
    NetworkEdit* edit, const QString& text, const QPointF& position, QString* error);
/// Adds copies of the bricks, with the links among them, moved by `offset`, as one step.
QVector<DzShaderBrick*> duplicateBricks(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks,
    const QPointF& offset, QString* error = nullptr);
