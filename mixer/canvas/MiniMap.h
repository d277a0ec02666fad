// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTransform>
#include <QWidget>

class NetworkView;

/// A small picture of the whole network with the part that is in view; a click or drag in it goes
/// there.
class MiniMap : public QWidget
{
    Q_OBJECT

public:
    explicit MiniMap(NetworkView* view);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    /// From the scene to this widget.
    QTransform transformToMap() const;
    void goTo(const QPointF& place);

    NetworkView* m_view;
};
