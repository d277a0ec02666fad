// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>
#include <functional>

class DzProperty;
class DzShaderBrick;
class IDzBrickUser;

/// The bricks of a network in order of their numbers.
QVector<DzShaderBrick*> bricksOf(const IDzBrickUser* user);

/// The brick that ends a network: the last whose kind of shader is a surface. Null without one.
DzShaderBrick* rootOf(const IDzBrickUser* user);

/// Calls `visit` for each property of a brick: its own, then those of its parameters in order.
void forEachProperty(const DzShaderBrick* brick, const std::function<void(DzProperty*)>& visit);
