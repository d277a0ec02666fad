// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickCatalogue.h"

#include <QFrame>
#include <QPointer>
#include <functional>

class DzShaderBrick;
class NetworkEdit;
class QLabel;
class QLineEdit;
class QListWidget;

/// A small window at the cursor in which a brick is found by typing. It closes itself, and
/// deletes itself after that.
class BrickSearchPopup : public QFrame
{
    Q_OBJECT

public:
    typedef std::function<bool(const DzShaderBrick* sample)> Test;
    /// Offers what the edited network takes and, with a test, only what passes. The prompt stands
    /// where the user types.
    BrickSearchPopup(
        NetworkEdit* edit, const QString& prompt, const Test& accepts, QWidget* parent);

    /// Opens as near to the place as the screen allows.
    void popupAt(const QPoint& globalPlace);

signals:
    /// The user chose a kind of brick.
    void chosen(const QString& className);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void search(const QString& text);
    QVector<const BrickKind*> withRootsLast(
        QVector<const BrickKind*> kinds, const QString& text) const;
    void choose();
    void moveInList(int steps);
    void explain();

    QPointer<NetworkEdit> m_network;
    Test m_accepts;
    QLineEdit* m_edit;
    QListWidget* m_list;
    QLabel* m_none;
    bool m_isWalked = false;
    QLabel* m_help;
};
