// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickyardPanel.h"

#include "BrickCatalogue.h"
#include "BrickHelp.h"
#include "LineIcon.h"
#include "LinkColors.h"
#include "idzbrickuser.h"

#include <QAction>
#include <QCoreApplication>
#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QSet>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum { ClassNameRole = Qt::UserRole, RefusedRole };

/// The colour of what the brick gives out, as on the canvas; roots have an empty ring.
QIcon iconFor(const BrickKind& kind)
{
    return kind.isRoot() ? LineIcon::makeDot(Qt::gray, true)
                         : LineIcon::makeDot(linkColor(kind.outputs.first().typeText), false);
}

/// What is dragged looks like a brick's title.
QPixmap dragPicture(const QString& name, const QWidget* widget)
{
    const qreal ratio = widget->devicePixelRatioF();
    const QSize size(widget->fontMetrics().horizontalAdvance(name) + 24, 26);
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(widget->palette().color(QPalette::Highlight));
    painter.setBrush(widget->palette().color(QPalette::Button));
    painter.drawRoundedRect(QRectF(QPointF(), QSizeF(size)).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    painter.setPen(widget->palette().color(QPalette::ButtonText));
    painter.setFont(widget->font());
    painter.drawText(QRect(QPoint(), size), Qt::AlignCenter, name);
    return pixmap;
}

class BrickTree : public QTreeWidget
{
protected:
    QMimeData* mimeData(const QList<QTreeWidgetItem*> items) const override
    {
        if (items.isEmpty() || BrickyardPanel::classNameOf(items.first()).isEmpty())
            return nullptr;
        auto* carried = new QMimeData;
        carried->setData(
            BrickCatalogue::mimeType(), BrickyardPanel::classNameOf(items.first()).toUtf8());
        return carried;
    }
    void startDrag(Qt::DropActions) override
    {
        QMimeData* carried = mimeData(selectedItems());
        if (!carried)
            return;
        auto* drag = new QDrag(this);
        drag->setMimeData(carried);
        drag->setPixmap(dragPicture(currentItem()->text(0), this));
        drag->setHotSpot(QPoint(20, 13));
        drag->exec(Qt::CopyAction);
    }
};

} // namespace

BrickyardPanel::BrickyardPanel(QWidget* parent)
    : QWidget(parent)
    , m_search(new QLineEdit)
    , m_tree(new BrickTree)
    , m_nothing(new QLabel(tr("No brick matches these words.")))
{
    m_search->setPlaceholderText(tr("Search bricks"));
    m_search->setAccessibleName(tr("Search bricks"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(LineIcon::make(LineIcon::Search), QLineEdit::LeadingPosition);
    m_search->installEventFilter(this);
    m_tree->setHeaderHidden(true);
    m_tree->setDragEnabled(true);
    m_tree->setDragDropMode(QAbstractItemView::DragOnly);
    m_tree->setUniformRowHeights(true);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setExpandsOnDoubleClick(true);
    m_tree->setAccessibleName(tr("Bricks"));
    m_tree->setMouseTracking(true);
    m_tree->viewport()->installEventFilter(this);
    m_nothing->setAlignment(Qt::AlignCenter);
    m_nothing->setForegroundRole(QPalette::PlaceholderText);
    m_nothing->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 0);
    layout->setSpacing(4);
    layout->addWidget(m_search);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_nothing, 1);

    connect(m_search, &QLineEdit::textChanged, this, &BrickyardPanel::search);
    connect(m_search, &QLineEdit::returnPressed, this, &BrickyardPanel::chooseFirst);
    // Enter and the double click of the platform come as "activated".
    connect(m_tree, &QTreeWidget::itemActivated, this, &BrickyardPanel::choose);
}

void BrickyardPanel::setUser(const IDzBrickUser* user)
{
    if (m_user == user)
        return;
    m_user = user;
    if (m_filled)
        updateRefusals();
}

void BrickyardPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    fill();
}

void BrickyardPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_filled)
        updateRefusals();
}

void BrickyardPanel::fill()
{
    if (m_filled)
        return;
    m_filled = true;
    QHash<QString, QIcon> icons;
    for (const BrickKind& kind : BrickCatalogue::instance()->getKinds()) {
        auto* item = new QTreeWidgetItem(categoryItem(kind.category), { kind.name });
        item->setData(0, ClassNameRole, kind.className);
        QIcon& icon = icons[kind.isRoot() ? QString() : kind.outputs.first().typeText];
        if (icon.isNull())
            icon = iconFor(kind);
        item->setIcon(0, icon);
        const QString help = BrickHelp::ofBrick(kind.sample);
        item->setToolTip(0, BrickHelp::tipOf(help.isEmpty() ? kind.category : help));
        m_bricks.insert(kind.className, item);
    }
    m_tree->sortItems(0, Qt::AscendingOrder);
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        m_tree->topLevelItem(i)->setExpanded(true);
    updateRefusals();
}

QTreeWidgetItem* BrickyardPanel::categoryItem(const QString& path)
{
    QTreeWidgetItem* parent = m_tree->invisibleRootItem();
    QString walked;
    for (const QString& part : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        walked += QLatin1Char('/') + part;
        QTreeWidgetItem*& item = m_categories[walked];
        if (!item) {
            item = new QTreeWidgetItem(parent, { part });
            item->setFlags(Qt::ItemIsEnabled);
        }
        parent = item;
    }
    return parent;
}

void BrickyardPanel::updateRefusals()
{
    for (const BrickKind& kind : BrickCatalogue::instance()->getKinds()) {
        QTreeWidgetItem* item = m_bricks.value(kind.className);
        if (!item)
            continue;
        const bool refused = m_user && !m_user->canUseBrick(kind.sample);
        item->setData(0, RefusedRole, refused);
        // Those that are taken have no brush of their own, and follow the look.
        item->setData(0, Qt::ForegroundRole,
            refused ? QVariant(palette().brush(QPalette::PlaceholderText)) : QVariant());
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable
            | (refused ? Qt::NoItemFlags : Qt::ItemIsDragEnabled));
    }
}

QTreeWidgetItem* BrickyardPanel::findItem(const QString& className) const
{
    return m_bricks.value(className);
}

bool BrickyardPanel::isRefused(const QTreeWidgetItem* item) const
{
    return item && item->data(0, RefusedRole).toBool();
}

QString BrickyardPanel::classNameOf(const QTreeWidgetItem* item)
{
    return item ? item->data(0, ClassNameRole).toString() : QString();
}

void BrickyardPanel::search(const QString& text)
{
    fill();
    const bool all = text.trimmed().isEmpty();
    QSet<const QTreeWidgetItem*> shown;
    QTreeWidgetItem* best = nullptr;
    for (const BrickKind* kind :
        BrickCatalogue::instance()->search(text, BrickCatalogue::Filter())) {
        QTreeWidgetItem* item = m_bricks.value(kind->className);
        if (!best)
            best = item;
        for (const QTreeWidgetItem* up = item; up; up = up->parent())
            shown.insert(up);
    }
    const auto apply = [&](QTreeWidgetItem* item) { item->setHidden(!shown.contains(item)); };
    for (QTreeWidgetItem* item : qAsConst(m_bricks))
        apply(item);
    for (QTreeWidgetItem* item : qAsConst(m_categories)) {
        apply(item);
        item->setExpanded(!all || !item->parent());
    }
    m_tree->setVisible(!shown.isEmpty());
    m_nothing->setVisible(shown.isEmpty());
    m_tree->setCurrentItem(all ? nullptr : best);
}

void BrickyardPanel::chooseFirst()
{
    choose(m_tree->currentItem());
}

void BrickyardPanel::choose(const QTreeWidgetItem* item)
{
    const QString className = classNameOf(item);
    if (className.isEmpty())
        return;
    if (isRefused(item))
        emit message(tr("This kind of network does not take \"%1\".").arg(item->text(0)));
    else
        emit brickChosen(className);
}

bool BrickyardPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_tree->viewport() && event->type() == QEvent::MouseMove) {
        const QTreeWidgetItem* item = m_tree->itemAt(static_cast<const QMouseEvent*>(event)->pos());
        m_tree->viewport()->setCursor(isRefused(item) ? Qt::ForbiddenCursor : Qt::ArrowCursor);
    }
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape && !m_search->text().isEmpty()) {
            m_search->clear();
            return true;
        }
        if (key->key() == Qt::Key_Down || key->key() == Qt::Key_Up) {
            m_tree->setFocus();
            QCoreApplication::sendEvent(m_tree, event);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
