// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

class DzShaderBrick;
class NetworkEdit;

/// A titled box around bricks. It reaches as far as its bricks and lives as long as one of them:
/// each keeps number and title of its frame in its settings.
struct BrickFrame {
    int number = 0;
    QString title;
    QVector<DzShaderBrick*> bricks; ///< ascending by number
};

QVector<BrickFrame> framesOf(const NetworkEdit& edit);
/// The frame of this number; without bricks when there is none.
BrickFrame findFrame(const NetworkEdit& edit, int number);

// What users do to frames, each as one step on the application's undo stack.

/// Puts a new frame around the bricks, out of any other, and returns its number.
int frameBricks(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks, const QString& title);
void addToFrame(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks, int frame);
void removeFromFrames(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks);
void setFrameTitle(NetworkEdit* edit, int frame, const QString& title);
void removeFrame(NetworkEdit* edit, int frame);

/// Gives the frames of bricks that are about to join the network numbers that are free in it, so
/// that frames of copies are frames of their own. Without undo.
void renumberFrames(const NetworkEdit& edit, const QVector<DzShaderBrick*>& bricks);
