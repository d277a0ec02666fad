// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ApplyPreview.h"

#include <QDialog>

class QCheckBox;
class QTreeWidget;

/// Shows what applying a network would change on each surface, and asks whether to do it.
class ApplyDialog : public QDialog
{
    Q_OBJECT

public:
    ApplyDialog(const QString& network, const QVector<SurfacePreview>& surfaces, QWidget* parent);

    /// False when the user does not want to see this again.
    bool isToBeShownAgain() const;
    QTreeWidget* getTree() const { return m_tree; }
    QCheckBox* getShowAgain() const { return m_showAgain; }

private:
    QTreeWidget* m_tree;
    QCheckBox* m_showAgain;
};
