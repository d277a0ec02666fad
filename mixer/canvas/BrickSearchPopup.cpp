// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickSearchPopup.h"

#include "BrickHelp.h"
#include "LinkColors.h"
#include "NetworkEdit.h"
#include "NetworkWalk.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QScreen>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const int popupWidth = 320;
const int popupHeight = 340;
const int linesPerPage = 8;
const int helpLines = 3;

enum ItemRole { ClassRole = Qt::UserRole, CategoryRole, ColorRole, HelpRole };

/// The last two parts of a category's path say enough.
QString shortCategory(const QString& category)
{
    const QStringList parts = category.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return QStringList(parts.mid(qMax(0, parts.size() - 2))).join(QStringLiteral(" › "));
}

/// Name on the left, category in faint letters on the right, a dot in the colour of the output.
class KindDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override
    {
        QStyleOptionViewItem item(option);
        initStyleOption(&item, index);
        const QString name = item.text;
        item.text.clear();
        const QStyle* style = item.widget ? item.widget->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
        const bool isSelected = item.state & QStyle::State_Selected;
        const QPalette::ColorGroup group
            = item.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
        const QColor text
            = item.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        QRectF box = QRectF(item.rect).adjusted(8, 0, -8, 0);
        const QColor dot = index.data(ColorRole).value<QColor>();
        if (dot.isValid()) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(dot);
            painter->drawEllipse(QPointF(box.left() + 4, box.center().y()), 4, 4);
        }
        box.setLeft(box.left() + 16);
        painter->setPen(text);
        painter->drawText(box, Qt::AlignLeft | Qt::AlignVCenter, name);
        const qreal taken = item.fontMetrics.horizontalAdvance(name) + 12;
        QColor faint = text;
        faint.setAlphaF(0.6);
        painter->setPen(faint);
        box.setLeft(box.left() + taken);
        painter->drawText(box, Qt::AlignRight | Qt::AlignVCenter,
            item.fontMetrics.elidedText(
                index.data(CategoryRole).toString(), Qt::ElideLeft, int(box.width())));
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return QSize(size.width(), option.fontMetrics.height() + 8);
    }
};

} // namespace

BrickSearchPopup::BrickSearchPopup(
    NetworkEdit* edit, const QString& prompt, const Test& accepts, QWidget* parent)
    : QFrame(parent, Qt::Popup)
    , m_network(edit)
    , m_accepts(accepts)
    , m_edit(new QLineEdit)
    , m_list(new QListWidget)
    , m_none(new QLabel(tr("No brick fits.")))
    , m_help(new QLabel)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    setObjectName(QStringLiteral("brickSearch"));
    setAccessibleName(tr("Add a brick"));
    m_edit->setPlaceholderText(prompt);
    m_edit->setAccessibleName(prompt);
    m_edit->setClearButtonEnabled(true);
    m_list->setAccessibleName(tr("Bricks found"));
    m_list->setItemDelegate(new KindDelegate(m_list));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Typing goes on while the list is walked.
    m_list->setFocusPolicy(Qt::NoFocus);
    m_none->setAlignment(Qt::AlignCenter);
    m_none->hide();
    m_help->setObjectName(QStringLiteral("brickHelp"));
    m_help->setTextFormat(Qt::PlainText);
    m_help->setWordWrap(true);
    m_help->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_help->setForegroundRole(QPalette::PlaceholderText);
    m_help->setFixedHeight(fontMetrics().lineSpacing() * helpLines);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(4);
    layout->addWidget(m_edit);
    layout->addWidget(m_list);
    layout->addWidget(m_none, 1);
    layout->addWidget(m_help);
    setFocusProxy(m_edit);
    m_edit->installEventFilter(this);
    connect(m_edit, &QLineEdit::textChanged, this, &BrickSearchPopup::search);
    connect(m_list, &QListWidget::itemClicked, this, &BrickSearchPopup::choose);
    connect(m_list, &QListWidget::currentItemChanged, this, &BrickSearchPopup::explain);
    resize(popupWidth, popupHeight);
    search(QString());
}

void BrickSearchPopup::popupAt(const QPoint& globalPlace)
{
    QPoint place = globalPlace;
    if (const QScreen* screen = QGuiApplication::screenAt(globalPlace)) {
        const QRect free = screen->availableGeometry();
        place.setX(qBound(free.left(), place.x(), qMax(free.left(), free.right() - width())));
        place.setY(qBound(free.top(), place.y(), qMax(free.top(), free.bottom() - height())));
    }
    move(place);
    show();
    m_edit->setFocus(Qt::PopupFocusReason);
}

void BrickSearchPopup::search(const QString& text)
{
    m_list->clear();
    BrickCatalogue::Filter filter;
    filter.user = m_network ? m_network->getUser() : nullptr;
    filter.accepts = m_accepts;
    if (!filter.user)
        return;
    const QVector<const BrickKind*> kinds
        = withRootsLast(BrickCatalogue::instance()->search(text, filter), text);
    for (const BrickKind* kind : kinds) {
        const bool isSecondRoot = kind->isRoot() && rootOf(filter.user);
        const QString name = isSecondRoot
            ? tr("%1 (another root: only one is written)").arg(kind->name)
            : kind->name;
        auto* item = new QListWidgetItem(name, m_list);
        item->setData(ClassRole, kind->className);
        item->setData(CategoryRole, shortCategory(kind->category));
        if (!kind->outputs.isEmpty())
            item->setData(ColorRole, linkColor(kind->outputs.first().typeText));
        item->setData(
            Qt::AccessibleTextRole, tr("%1, in %2").arg(kind->name, shortCategory(kind->category)));
        const QString help = BrickHelp::ofBrick(kind->sample);
        item->setData(HelpRole, help);
        item->setData(Qt::AccessibleDescriptionRole, help);
        item->setToolTip(BrickHelp::tipOf(help.isEmpty() ? kind->description : help));
    }
    m_list->setCurrentRow(0);
    m_list->setVisible(!kinds.isEmpty());
    m_none->setVisible(kinds.isEmpty());
}

/// A network wants one root: nobody gets a second one by accident.
QVector<const BrickKind*> BrickSearchPopup::withRootsLast(
    QVector<const BrickKind*> kinds, const QString& text) const
{
    const auto roots = std::stable_partition(
        kinds.begin(), kinds.end(), [](const BrickKind* kind) { return !kind->isRoot(); });
    if (text.trimmed().isEmpty() && rootOf(m_network->getUser()))
        kinds.erase(roots, kinds.end());
    return kinds;
}

/// Says what the brick is for that would be taken.
void BrickSearchPopup::explain()
{
    const QListWidgetItem* item = m_list->currentItem();
    m_help->setText(item ? item->data(HelpRole).toString() : QString());
}

void BrickSearchPopup::choose()
{
    const QListWidgetItem* item = m_list->currentItem();
    if (!item)
        return;
    const QString className = item->data(ClassRole).toString();
    close();
    emit chosen(className);
}

void BrickSearchPopup::moveInList(int steps)
{
    m_isWalked = true;
    m_list->setCurrentRow(qBound(0, m_list->currentRow() + steps, m_list->count() - 1));
}

bool BrickSearchPopup::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QFrame::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
        moveInList(-1);
        return true;
    case Qt::Key_Down:
        moveInList(1);
        return true;
    case Qt::Key_PageUp:
        moveInList(-linesPerPage);
        return true;
    case Qt::Key_PageDown:
        moveInList(linesPerPage);
        return true;
    case Qt::Key_Tab:
        // Whoever goes through the window by Tab wants no brick.
        if (m_isWalked || !m_edit->text().isEmpty())
            choose();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose();
        return true;
    case Qt::Key_Escape:
        close();
        return true;
    default:
        return QFrame::eventFilter(watched, event);
    }
}
