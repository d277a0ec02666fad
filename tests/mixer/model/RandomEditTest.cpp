// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickAlignment.h"
#include "BrickAppearance.h"
#include "BrickItem.h"
#include "BrickSelection.h"
#include "NetworkCopies.h"
#include "NetworkEdit.h"
#include "NetworkFrames.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "PropertyGroup.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzbrickstate.h"
#include "dzbrickuserfile.h"
#include "dzclassfactory.h"
#include "dzintproperty.h"
#include "dznumericproperty.h"
#include "dzpluginmgr.h"
#include "dzproperty.h"
#include "dzundostack.h"

#include <QMap>
#include <algorithm>
#include <iterator>
#include <random>

namespace {

const int editCount = 10000;
/// Networks stay small enough that every edit meets others.
const int mostBricks = 40;

QByteArray bytesOf(const VireoBrickUser& user)
{
    return DzBrickUserFile().saveText(&user);
}

/// Does anything that a user may do, at random.
class RandomUser
{
public:
    RandomUser(VireoBrickUser* user, NetworkEdit* edit, quint32 seed)
        : m_user(user)
        , m_edit(*edit)
        , m_random(seed)
    {
        for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories())
            if (factory->getMetaObject().inherits(&VireoBrickBase::staticMetaObject))
                m_classes.append(factory->className());
    }

    void edit()
    {
        typedef void (RandomUser::*Edit)();
        static const Edit edits[] = { &RandomUser::add, &RandomUser::add, &RandomUser::add,
            &RandomUser::addLinked, &RandomUser::link, &RandomUser::link, &RandomUser::link,
            &RandomUser::link, &RandomUser::addSecondLink, &RandomUser::unlink,
            &RandomUser::moveLink, &RandomUser::insertOnLink, &RandomUser::set, &RandomUser::set,
            &RandomUser::set, &RandomUser::setMap, &RandomUser::lock, &RandomUser::setCount,
            &RandomUser::setCount, &RandomUser::addCustom, &RandomUser::addCustom,
            &RandomUser::removeCustom, &RandomUser::paste, &RandomUser::duplicate,
            &RandomUser::removeBricks, &RandomUser::moveBricks, &RandomUser::align,
            &RandomUser::arrange, &RandomUser::setTitle, &RandomUser::hideParams,
            &RandomUser::setWidth, &RandomUser::frame, &RandomUser::unframe,
            &RandomUser::setFrameTitle, &RandomUser::disconnectAll, &RandomUser::cutLinks,
            &RandomUser::addOnLink, &RandomUser::setInPanel, &RandomUser::setInPanel,
            &RandomUser::dragInPanel, &RandomUser::setAllValues, &RandomUser::undoAndRedo,
            &RandomUser::undoSome };
        if (m_user->getNumBricks() > mostBricks)
            removeMany();
        (this->*edits[below(sizeof edits / sizeof edits[0])])();
    }

private:
    int below(size_t limit) { return static_cast<int>(m_random() % limit); }
    bool oneIn(int chances) { return below(static_cast<size_t>(chances)) == 0; }
    QPointF anyPlace() { return QPointF(below(4000) - 2000, below(3000) - 1500); }

    DzShaderBrick* anyBrick()
    {
        const QVector<DzShaderBrick*> bricks = m_edit.getBricks();
        return bricks.isEmpty() ? nullptr : bricks.at(below(size_t(bricks.size())));
    }
    QVector<DzShaderBrick*> someBricks()
    {
        QVector<DzShaderBrick*> some;
        const QVector<DzShaderBrick*> bricks = m_edit.getBricks();
        for (DzShaderBrick* brick : bricks)
            if (oneIn(4))
                some.append(brick);
        return some;
    }
    DzBrickParam* anyParam()
    {
        const DzShaderBrick* brick = anyBrick();
        return brick ? brick->getParameter(below(size_t(brick->getNumParameters()))) : nullptr;
    }
    BrickLink anyLink()
    {
        const QVector<BrickLink> links = m_edit.getLinks();
        return links.isEmpty() ? BrickLink() : links.at(below(size_t(links.size())));
    }
    DzProperty* anyProperty()
    {
        const DzShaderBrick* brick = anyBrick();
        if (!brick)
            return nullptr;
        if (brick->getNumProperties() > 0 && oneIn(3))
            return brick->getProperty(below(size_t(brick->getNumProperties())));
        const DzBrickParam* param = brick->getParameter(below(size_t(brick->getNumParameters())));
        return param->getNumProperties() > 0
            ? param->getProperty(below(size_t(param->getNumProperties())))
            : nullptr;
    }
    QString anyText()
    {
        static const QString texts[] = { QStringLiteral("Kd"), QStringLiteral("A longer name"),
            QStringLiteral("zweite Größe"), QStringLiteral("name#2"), QString(),
            QStringLiteral("quote \" and \\ and\nline") };
        return texts[below(6)];
    }
    QString anyValueText()
    {
        static const char* const texts[] = { "0", "1", "0.25", "-3", "1e30", "true", "false", "2",
            "255 128 3", "#102030", "uv", "some text", "/tmp/a.png", "" };
        return QString::fromLatin1(texts[below(14)]);
    }

    void add() { m_edit.addBrick(m_classes.at(below(size_t(m_classes.size()))), anyPlace()); }
    void addLinked()
    {
        if (DzBrickParam* param = anyParam())
            m_edit.addBrickLinked(m_classes.at(below(size_t(m_classes.size()))), anyPlace(), param);
    }
    void link() { linkSome(ReplaceLinks); }
    void addSecondLink() { linkSome(AddLink); }
    void linkSome(LinkMode mode)
    {
        // Few pairs fit: look for one for a while.
        for (int tries = 0; tries < 40; ++tries) {
            DzBrickParam* a = anyParam();
            DzBrickParam* b = anyParam();
            if (a && b && linkRefusal(a, b).isEmpty()) {
                EXPECT_TRUE(linkPins(a, b, mode));
                return;
            }
        }
    }
    void unlink()
    {
        const BrickLink link = anyLink();
        EXPECT_EQ(unlinkPins(link.output, link.input), !link.isNull());
    }
    void disconnectAll()
    {
        if (DzBrickParam* param = anyParam())
            unlinkAll(param);
    }
    void moveLink()
    {
        for (int tries = 0; tries < 20; ++tries)
            if (::moveLink(anyLink(), anyParam()))
                return;
    }
    void insertOnLink()
    {
        const QPointF place = anyPlace();
        for (int tries = 0; tries < 10; ++tries)
            if (DzShaderBrick* brick = anyBrick())
                if (m_edit.insertOnLink(brick, anyLink(), &place))
                    return;
    }
    void set()
    {
        QString error;
        if (DzProperty* property = anyProperty())
            PropertyGroup({ property }).setText(anyValueText(), &error);
    }
    void cutLinks()
    {
        QVector<BrickLink> links = m_edit.getLinks();
        std::shuffle(links.begin(), links.end(), m_random);
        links.resize(qMin(links.size(), below(4)));
        ::cutLinks(links);
    }
    void addOnLink()
    {
        for (int tries = 0; tries < 10; ++tries) {
            const BrickLink link = anyLink();
            if (link.isNull())
                return;
            if (m_edit.addBrickOnLink(
                    m_classes.at(below(size_t(m_classes.size()))), anyPlace(), link))
                return;
        }
    }
    /// What the panel does with what several bricks have in common.
    void setInPanel()
    {
        QString error;
        std::vector<PropertyGroup> groups = commonProperties(bricksForPanel());
        if (groups.empty())
            return;
        PropertyGroup& group = groups.at(size_t(below(groups.size())));
        switch (below(5)) {
        case 0:
            group.setNumber(below(9) - 2);
            break;
        case 1:
            group.setMap(oneIn(3) ? QString() : QStringLiteral("/maps/%1.png").arg(below(5)));
            break;
        case 2:
            group.reset();
            break;
        case 3:
            group.lock(!group.isLocked());
            break;
        default:
            group.setText(anyValueText(), &error);
        }
    }
    /// Several values one after another are one step, or none when the drag is taken back.
    void dragInPanel()
    {
        const std::vector<PropertyGroup> groups = commonProperties(bricksForPanel());
        if (groups.empty())
            return;
        const PropertyGroup& group = groups.at(size_t(below(groups.size())));
        const QByteArray before = bytesOf(*m_user);
        const int steps = dzUndoStack->getNumUndoItems();
        const bool isKept = oneIn(2);
        {
            PropertySession session(group);
            for (int i = below(4); i >= 0; --i)
                for (DzProperty* property : group.getAll())
                    if (auto* numeric = qobject_cast<DzNumericProperty*>(property))
                        numeric->setDoubleValue(below(6));
            if (isKept)
                session.accept(QStringLiteral("Drag"));
        }
        EXPECT_LE(dzUndoStack->getNumUndoItems(), steps + 1);
        if (!isKept) {
            EXPECT_TRUE(bytesOf(*m_user) == before);
        }
    }
    void setAllValues()
    {
        if (oneIn(3))
            resetAllValues(someBricks());
        else
            lockAllValues(someBricks(), oneIn(2));
    }
    /// Mostly one; else some of one class, which have much in common.
    QVector<DzShaderBrick*> bricksForPanel()
    {
        DzShaderBrick* first = anyBrick();
        QVector<DzShaderBrick*> chosen;
        const QVector<DzShaderBrick*> bricks = m_edit.getBricks();
        for (DzShaderBrick* brick : bricks)
            if (brick == first || (brick->className() == first->className() && oneIn(2)))
                chosen.append(brick);
        return chosen;
    }
    void setMap()
    {
        if (auto* numeric = qobject_cast<DzNumericProperty*>(anyProperty()))
            numeric->setMap(oneIn(3) ? QString() : QStringLiteral("/maps/%1.png").arg(below(5)));
    }
    void lock()
    {
        if (DzProperty* property = anyProperty())
            property->lock(!property->isLocked());
    }
    void setCount()
    {
        QString error;
        const QVector<DzShaderBrick*> bricks = m_edit.getBricks();
        QVector<DzProperty*> counts;
        for (const DzShaderBrick* brick : bricks)
            if (DzProperty* count = brick->findProperty(QStringLiteral("count")))
                counts.append(count);
        if (!counts.isEmpty())
            PropertyGroup({ counts.at(below(size_t(counts.size()))) })
                .setText(QString::number(below(6)), &error);
    }
    void addCustom()
    {
        auto* brick = qobject_cast<VireoBrickBase*>(anyBrick());
        if (!brick)
            return;
        const int type = 1008 + below(11);
        const QString name = anyText();
        DzBrickStateHold hold(brick);
        brick->addCustomInput(type, name, name, DzBrickParam::InputDirection);
        hold.accept(QStringLiteral("Add Input"));
    }
    void removeCustom()
    {
        const QVector<DzShaderBrick*> bricks = m_edit.getBricks();
        for (DzShaderBrick* candidate : bricks) {
            auto* brick = qobject_cast<VireoBrickBase*>(candidate);
            if (!brick || brick->getNumCustomParams() == 0 || !oneIn(3))
                continue;
            const int index = below(size_t(brick->getNumCustomParams()));
            DzBrickStateHold hold(brick);
            brick->removeCustomParam(brick->getCustomParam(index));
            hold.accept(QStringLiteral("Remove Input"));
            return;
        }
    }
    void paste()
    {
        QString error;
        if (oneIn(3) || m_clipboard.isEmpty())
            m_clipboard = copyBricks(m_edit, someBricks());
        pasteBricks(&m_edit, m_clipboard, anyPlace(), &error);
    }
    void duplicate() { duplicateBricks(&m_edit, someBricks(), QPointF(30, 30)); }
    void removeBricks()
    {
        if (DzShaderBrick* brick = anyBrick())
            m_edit.deleteBricks({ brick }, oneIn(2));
    }
    void removeMany() { m_edit.deleteBricks(someBricks() + someBricks(), oneIn(2)); }
    void moveBricks()
    {
        QVector<NetworkEdit::Move> moves;
        const QVector<DzShaderBrick*> bricks = someBricks();
        for (DzShaderBrick* brick : bricks)
            moves.append(NetworkEdit::Move { brick, anyPlace() });
        m_edit.moveBricks(moves);
    }
    void align() { alignBricks(&m_edit, someBricks(), static_cast<Alignment>(below(8))); }
    void arrange() { m_edit.arrange(oneIn(2) ? someBricks() : QVector<DzShaderBrick*>()); }
    void setTitle()
    {
        if (DzShaderBrick* brick = anyBrick())
            m_edit.setTitle(brick, anyText());
    }
    void hideParams() { m_edit.setHidesParams(someBricks(), oneIn(2)); }
    void setWidth()
    {
        if (DzShaderBrick* brick = anyBrick())
            m_edit.setWidth(brick, below(500));
    }
    void frame() { frameBricks(&m_edit, someBricks(), anyText()); }
    void unframe() { removeFromFrames(&m_edit, someBricks()); }
    void undoSome()
    {
        for (int i = below(4); i > 0; --i)
            dzUndoStack->undo();
    }
    void undoAndRedo()
    {
        const QByteArray before = bytesOf(*m_user);
        int steps = 0;
        for (int i = below(6); i > 0; --i)
            steps += dzUndoStack->undo();
        while (steps-- > 0)
            EXPECT_TRUE(dzUndoStack->redo());
        EXPECT_TRUE(bytesOf(*m_user) == before);
    }
    void setFrameTitle()
    {
        const QVector<BrickFrame> frames = framesOf(m_edit);
        if (!frames.isEmpty())
            ::setFrameTitle(&m_edit, frames.at(below(size_t(frames.size()))).number, anyText());
    }

    VireoBrickUser* m_user;
    NetworkEdit& m_edit;
    std::mt19937 m_random;
    QVector<QString> m_classes;
    QString m_clipboard;
};

/// The text of a network at some of the steps that led to it.
class Checkpoints
{
public:
    explicit Checkpoints(const VireoBrickUser* user)
        : m_user(user)
    {
    }

    /// To be called after each edit; edits may have been undone before it.
    void note()
    {
        const int steps = dzUndoStack->getNumUndoItems();
        while (!m_texts.isEmpty() && m_texts.lastKey() >= steps)
            m_texts.erase(std::prev(m_texts.end()));
        if (m_texts.isEmpty() || m_texts.lastKey() + interval <= steps)
            m_texts.insert(steps, bytesOf(*m_user));
    }
    /// False when this step has another text than when it was made.
    bool isAsBefore() const
    {
        const auto text = m_texts.constFind(dzUndoStack->getNumUndoItems());
        return text == m_texts.constEnd() || *text == bytesOf(*m_user);
    }

private:
    static const int interval = 100;
    const VireoBrickUser* m_user;
    QMap<int, QByteArray> m_texts;
};

/// Undoes everything, redoes everything, and compares with what was there on the way.
void undoAndRedoAll(const VireoBrickUser& user, const QByteArray& start, const Checkpoints& points)
{
    const QByteArray end = bytesOf(user);
    // The last edits may have been undone: those stay so.
    const int steps = dzUndoStack->getNumUndoItems();
    while (dzUndoStack->canUndo()) {
        ASSERT_TRUE(dzUndoStack->undo());
        ASSERT_TRUE(points.isAsBefore()) << "undone to step " << dzUndoStack->getNumUndoItems();
    }
    EXPECT_TRUE(start == bytesOf(user));
    while (dzUndoStack->getNumUndoItems() < steps) {
        ASSERT_TRUE(dzUndoStack->redo());
        ASSERT_TRUE(points.isAsBefore()) << "redone to step " << dzUndoStack->getNumUndoItems();
    }
    EXPECT_TRUE(end == bytesOf(user));
}

void loadExample(VireoBrickUser* user)
{
    DzUndoStackLock lock;
    ASSERT_TRUE(DzBrickUserFile().load(
        projectPath(QStringLiteral("examples/glossy-checkerboard.sskn")), user));
}

/// True when the canvas shows the bricks, links and places that the network has.
testing::AssertionResult showsTheNetwork(NetworkScene* scene, NetworkEdit* edit)
{
    scene->flush();
    const QVector<DzShaderBrick*> bricks = edit->getBricks();
    if (scene->getItems().size() != bricks.size())
        return testing::AssertionFailure() << scene->getItems().size() << " items";
    QVector<BrickLink> shown;
    for (DzShaderBrick* brick : bricks) {
        const BrickItem* item = scene->getItem(brick);
        if (!item || item->pos() != BrickAppearance::position(brick)
            || item->getSize() != BrickAppearance::size(brick))
            return testing::AssertionFailure() << "brick " << brick->getBrickID();
        for (const CanvasWire& wire : item->getWires()) {
            const bool isPlaced = wire.to == item->pinPlace(wire.input)
                && wire.from == wire.source->pinPlace(wire.output);
            if (!isPlaced)
                return testing::AssertionFailure() << "a wire of brick " << brick->getBrickID();
            shown.append(BrickLink { wire.output, wire.input });
        }
    }
    const QVector<BrickLink> links = edit->getLinks();
    for (const BrickLink& link : links)
        if (!shown.contains(link))
            return testing::AssertionFailure() << "a link is not shown";
    return shown.size() == links.size()
        ? testing::AssertionSuccess()
        : testing::AssertionFailure() << shown.size() << " wires, " << links.size() << " links";
}

class RandomEdits : public testing::TestWithParam<quint32>
{
};

} // namespace

TEST_P(RandomEdits, areUndoneAndRedoneToTheByte)
{
    const Warnings warnings;
    VireoBrickUser user;
    loadExample(&user);
    const QByteArray start = bytesOf(user);
    Checkpoints points(&user);
    NetworkEdit edit(&user);
    RandomUser random(&user, &edit, GetParam());
    for (int i = 0; i < editCount; ++i) {
        random.edit();
        ASSERT_EQ(dzUndoStack->getHoldDepth(), 0);
        points.note();
    }
    EXPECT_GT(dzUndoStack->getNumUndoItems(), editCount / 2);
    undoAndRedoAll(user, start, points);
}

TEST_P(RandomEdits, areFollowedByTheCanvas)
{
    const Warnings warnings;
    VireoBrickUser user;
    loadExample(&user);
    NetworkEdit edit(&user);
    BrickSelection selection;
    NetworkView view(&edit, &selection);
    view.resize(900, 700);
    view.show();
    RandomUser random(&user, &edit, GetParam() + 5);
    const auto check = [&](int step) {
        if (step % 50 == 0) {
            const QImage atOnce = view.grab().toImage();
            view.getNetworkScene()->flush();
            EXPECT_TRUE(view.grab().toImage() == atOnce) << "step " << step;
        }
        if (step % 10 == 0) {
            EXPECT_TRUE(showsTheNetwork(view.getNetworkScene(), &edit)) << "step " << step;
            const QVector<DzShaderBrick*> bricks = edit.getBricks();
            for (DzShaderBrick* brick : selection.getBricks())
                EXPECT_TRUE(bricks.contains(brick)) << "step " << step;
            selection.set(bricks.mid(bricks.size() / 2));
        }
        return !testing::Test::HasFailure();
    };
    for (int i = 0; i < 1000; ++i) {
        random.edit();
        ASSERT_TRUE(check(i));
    }
    for (int i = 0; dzUndoStack->undo(); ++i)
        ASSERT_TRUE(check(i));
    for (int i = 0; dzUndoStack->redo(); ++i)
        ASSERT_TRUE(check(i));
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdits, testing::Values(1u, 20u, 300u, 4000u));
