// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "NetworkText.h"
#include "ProblemFinder.h"

#include <QObject>
#include <QThreadPool>
#include <QVector>
#include <vector>

class IDzBrickUser;

/// What the renderer will do with a network that its user may not expect.
///
/// The text is written where it is asked for and read and checked in a thread of its own, so that
/// nobody waits for it.
class RendererFindings : public QObject
{
    Q_OBJECT

public:
    explicit RendererFindings(QObject* parent = nullptr);
    ~RendererFindings() override;

    /// Checks a network as it is now; null forgets what was found. What was found before stays
    /// until changed() tells of the new. The user is not kept.
    void check(const IDzBrickUser* user);
    /// Waits until the last check is done.
    void finish();

    /// In the order of the text. What a user can do nothing about, since every new brick has it and
    /// nothing is lost by it, is left out.
    const QVector<Problem>& getFindings() const { return m_findings; }

signals:
    void changed();

private:
    /// What is checked: a text, and where in it the parts of bricks are.
    struct Task {
        QString text;
        /// Where statements begin, and how long they are, in characters.
        QVector<QPair<int, int>> statements;
        int meshBegin = -1; ///< where the settings of the mesh begin; -1 for none
    };
    /// A finding, and the statement that it is in; -1 for what the root writes itself.
    struct Located {
        lux::Finding finding;
        int statement = -1;
    };

    static std::vector<Located> run(const Task& task);
    void take(int number, const std::vector<Located>& found);
    void addUnwrittenMaps();

    QVector<Problem> m_findings;
    /// Of the last text: its bricks, and the maps that it does not carry.
    NetworkText m_text;
    QPointer<DzShaderBrick> m_root;
    int m_number = 0; ///< of the last check: others come too late
    /// The last member: a check that runs while this goes is waited for first.
    QThreadPool m_thread;
};
