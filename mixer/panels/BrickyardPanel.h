// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QWidget>

class IDzBrickUser;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/// The palette: every brick that the modules offer, in a tree of their categories, with a search.
/// Bricks are dragged to the canvas, or added by a double click or Enter.
class BrickyardPanel : public QWidget
{
    Q_OBJECT

public:
    explicit BrickyardPanel(QWidget* parent = nullptr);

    /// Bricks that this user does not take are shown so; null takes all. Not owned.
    void setUser(const IDzBrickUser* user);
    QTreeWidget* getTree() const { return m_tree; }
    QLineEdit* getSearch() const { return m_search; }
    /// Fills the tree, which makes a brick of every kind: the first time it is needed.
    void fill();
    /// The entry of a class, null when there is none.
    QTreeWidgetItem* findItem(const QString& className) const;
    bool isRefused(const QTreeWidgetItem* item) const;
    static QString classNameOf(const QTreeWidgetItem* item);

signals:
    void brickChosen(const QString& className);
    void message(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QTreeWidgetItem* categoryItem(const QString& path);
    void search(const QString& text);
    void choose(const QTreeWidgetItem* item);
    void chooseFirst();
    void updateRefusals();

    QLineEdit* m_search;
    QTreeWidget* m_tree;
    QLabel* m_nothing;
    QHash<QString, QTreeWidgetItem*> m_categories;
    QHash<QString, QTreeWidgetItem*> m_bricks;
    const IDzBrickUser* m_user = nullptr;
    bool m_filled = false;
};
