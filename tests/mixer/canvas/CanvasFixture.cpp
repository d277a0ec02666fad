// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasFixture.h"

#include "BrickItem.h"
#include "CanvasCommands.h"
#include "dzbrickparam.h"
#include "dzundostack.h"

#include <QLineEdit>
#include <QListWidget>
#include <QWheelEvent>

CanvasFixture::CanvasFixture()
    : m_edit(&m_user)
    , m_view(&m_edit, &m_selection)
    , m_commands(&m_view)
{
    m_commands.beginGroup(QStringLiteral("Canvas"));
    CanvasCommands::addTo(&m_commands, [this] { return &m_view; });
    m_view.setCommands(&m_commands);
    QObject::connect(&m_view, &NetworkView::statusMessage, &m_view,
        [this](const QString& text) { m_messages.append(text); });
    m_view.resize(1000, 700);
    m_view.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_view));
    m_view.activateWindow();
    m_view.setFocus();
    lookAt(0, 0);
}

CanvasFixture::~CanvasFixture()
{
    // Nothing of a test reaches into the next.
    m_view.hide();
    dzUndoStack->clearAll();
}

VireoBrickBase* CanvasFixture::add(const char* className, qreal x, qreal y)
{
    DzUndoStackLock lock;
    auto* brick = qobject_cast<VireoBrickBase*>(
        m_edit.addBrick(QString::fromLatin1(className), QPointF(x, y)));
    EXPECT_NE(brick, nullptr) << className;
    m_view.getNetworkScene()->flush();
    return brick;
}

DzBrickParam* CanvasFixture::output(DzShaderBrick* brick)
{
    return param(brick, "result");
}

bool CanvasFixture::isLinked(DzShaderBrick* from, DzShaderBrick* to, const char* input) const
{
    return param(to, input)->isConnectedTo(output(from));
}

void CanvasFixture::lookAt(qreal x, qreal y)
{
    m_view.zoomAt(QPointF(), 1 / m_view.getZoom());
    m_view.goTo(QPointF(x, y));
    QCoreApplication::processEvents();
}

QPoint CanvasFixture::at(const QPointF& scenePlace) const
{
    const QPoint place = m_view.viewport()->mapTo(m_view.window(), m_view.mapFromScene(scenePlace));
    EXPECT_TRUE(m_view.rect().contains(place)) << "the place is not in view";
    return place;
}

QPoint CanvasFixture::titleOf(DzShaderBrick* brick) const
{
    return at(m_view.getNetworkScene()->getItem(brick)->pos() + QPointF(60, 12));
}

QPoint CanvasFixture::pinOf(DzBrickParam* pin) const
{
    m_view.getNetworkScene()->flush();
    return at(m_view.getNetworkScene()->getItem(pin->getTopBrickOwner())->pinPlace(pin));
}

QPoint CanvasFixture::pinOf(DzShaderBrick* brick, const char* name) const
{
    return pinOf(param(brick, name));
}

QPoint CanvasFixture::middleOfWire(DzShaderBrick* from, DzShaderBrick* to, const char* input) const
{
    return (pinOf(from, "result") + pinOf(to, input)) / 2;
}

void CanvasFixture::press(
    const QPoint& place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QTest::mousePress(window(), button, modifiers, place);
}

void CanvasFixture::moveTo(const QPoint& place)
{
    QTest::mouseMove(window(), place);
}

void CanvasFixture::release(
    const QPoint& place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseRelease(window(), button, modifiers, place);
    QCoreApplication::processEvents();
}

void CanvasFixture::drag(
    const QPoint& from, const QPoint& to, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    moveTo(from);
    press(from, button, modifiers);
    moveTo(from + (to - from) / 3);
    moveTo(from + (to - from) * 2 / 3);
    moveTo(to);
    release(to, button, modifiers);
}

void CanvasFixture::click(const QPoint& place, Qt::KeyboardModifiers modifiers)
{
    moveTo(place);
    press(place, Qt::LeftButton, modifiers);
    release(place, Qt::LeftButton, modifiers);
}

void CanvasFixture::doubleClick(const QPoint& place)
{
    moveTo(place);
    QTest::mouseDClick(window(), Qt::LeftButton, Qt::NoModifier, place);
    QCoreApplication::processEvents();
}

void CanvasFixture::key(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window(), Qt::Key(key), modifiers);
    QCoreApplication::processEvents();
}

void CanvasFixture::wheel(const QPoint& place, int turn, Qt::KeyboardModifiers modifiers)
{
    const QPointF local = m_view.viewport()->mapFrom(&m_view, place);
    QWheelEvent event(local, m_view.viewport()->mapToGlobal(local.toPoint()), QPoint(),
        QPoint(0, turn), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_view.viewport(), &event);
}

QAction* CanvasFixture::command(const char* id) const
{
    QAction* action = m_commands.find(QString::fromLatin1(id));
    EXPECT_NE(action, nullptr) << id;
    return action;
}

QWidget* CanvasFixture::search() const
{
    return m_view.findChild<QWidget*>(QStringLiteral("brickSearch"));
}

QStringList CanvasFixture::foundInSearch() const
{
    QStringList names;
    if (const QWidget* popup = search()) {
        const auto* list = popup->findChild<QListWidget*>();
        for (int i = 0; i < list->count(); ++i)
            names.append(list->item(i)->text());
    }
    return names;
}

void CanvasFixture::typeInSearch(const QString& text)
{
    QWidget* popup = search();
    ASSERT_NE(popup, nullptr) << "no search is open";
    auto* edit = popup->findChild<QLineEdit*>();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
