// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProblemFinder.h"

#include <QWidget>

class ProblemActions;

/// A problem beside the value that it is about, with a button for each remedy.
class ProblemNote : public QWidget
{
    Q_OBJECT

public:
    /// The actions are not owned and outlive it.
    ProblemNote(const Problem& problem, ProblemActions* actions, QWidget* parent = nullptr);

    const Problem& getProblem() const { return m_problem; }

private:
    Problem m_problem;
};
