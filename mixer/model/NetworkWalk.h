// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>
#include <functional>

class DzProperty;
class DzShaderBrick;
class IDzBrickUser;

/// The bricks of a network in order of their numbers.
QVector<DzShaderBrick*> bricksOf(const IDzBrickUser* user);

/// True for a brick that ends a network: one whose kind of shader is a surface.
bool isRoot(const DzShaderBrick* brick);

/// The root that is written, which is the last. Null without one.
DzShaderBrick* rootOf(const IDzBrickUser* user);

/// The file of the image that a property is mapped with; empty without one.
QString mapFileOf(const DzProperty* property);

/// Calls `visit` for each property of a brick: its own, then those of its parameters in order.
void forEachProperty(const DzShaderBrick* brick, const std::function<void(DzProperty*)>& visit);

/// The bricks that feed these, or that these feed, directly or not, and these.
QVector<DzShaderBrick*> withUpstream(const QVector<DzShaderBrick*>& bricks);
QVector<DzShaderBrick*> withDownstream(const QVector<DzShaderBrick*>& bricks);
