// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dznetworklayout.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QString>
#include <QVector>
#include <functional>

class DzBrickParam;
class DzElement;
class DzProperty;
class DzShaderBrick;
class IDzBrickUser;

/// A wire: an output and an input that it feeds.
struct BrickLink {
    DzBrickParam* output = nullptr;
    DzBrickParam* input = nullptr;

    bool isNull() const { return !output || !input; }
    bool operator==(const BrickLink& other) const
    {
        return output == other.output && input == other.input;
    }
};

/// A titled box around bricks. It reaches as far as its bricks and lives as long as one of them:
/// each keeps number and title of its frame in its settings.
struct BrickFrame {
    int number = 0;
    QString title;
    QVector<DzShaderBrick*> bricks; ///< ascending by number
};

/// What users do to the network of one brick user, each as one step on the application's undo
/// stack. It follows changes that others make, too: bricks that scripts add without a place get
/// one.
class NetworkEdit : public QObject
{
    Q_OBJECT

public:
    /// The brick user is not owned and may go first. All who show a network share one edit, whose
    /// signals tell of what the host has no signals for.
    explicit NetworkEdit(IDzBrickUser* user, QObject* parent = nullptr);

    /// Null when the brick user is gone.
    IDzBrickUser* getUser() const;
    /// All bricks, ascending by number.
    QVector<DzShaderBrick*> getBricks() const;
    /// The links among all bricks, in the order of the inputs.
    QVector<BrickLink> getLinks() const;

    // Bricks.
    /// Adds a new brick with its top left corner at `position`. Null, with the reason in `error`,
    /// when the class is no brick or this user refuses it.
    DzShaderBrick* addBrick(
        const QString& className, const QPointF& position, QString* error = nullptr);
    /// The same with the first parameter that fits linked to `pin`, and placed so that this
    /// parameter's pin comes to `position`.
    DzShaderBrick* addBrickLinked(const QString& className, const QPointF& position,
        DzBrickParam* pin, QString* error = nullptr);
    /// The same put into a wire; null also when it does not fit there.
    DzShaderBrick* addBrickOnLink(const QString& className, const QPointF& position,
        const BrickLink& link, QString* error = nullptr);
    /// With `reconnect` whatever the bricks fed is linked with what fed them, as far as it fits.
    void deleteBricks(const QVector<DzShaderBrick*>& bricks, bool reconnect = false);
    /// An empty title brings the preferred name back.
    void setTitle(DzShaderBrick* brick, const QString& title);
    void setHidesParams(const QVector<DzShaderBrick*>& bricks, bool hides);
    void setWidth(DzShaderBrick* brick, qreal width);
    /// Makes the bricks wider, or narrower for less than nothing, as far as bricks may be.
    void changeWidth(const QVector<DzShaderBrick*>& bricks, qreal by);

    // Links. The ends may be given in either order.
    /// Why these two cannot be linked, as one line; empty when they can.
    static QString refusalReason(DzBrickParam* output, DzBrickParam* input);
    enum LinkMode { ReplaceLinks, AddLink };
    /// Links the two. ReplaceLinks removes the links that the input has.
    bool connect(DzBrickParam* output, DzBrickParam* input, LinkMode mode = ReplaceLinks);
    bool disconnect(DzBrickParam* output, DzBrickParam* input);
    void disconnectAll(DzBrickParam* param);
    /// Takes the input's end of a wire to another input.
    bool moveLink(const BrickLink& link, DzBrickParam* input, LinkMode mode = ReplaceLinks);
    void cutLinks(const QVector<BrickLink>& links);
    /// True when the brick has an input for the wire's output and an output for its input.
    static bool canInsertOnLink(const DzShaderBrick* brick, const BrickLink& link);
    /// Puts the brick into the wire; with a `position` it is moved there in the same step.
    bool insertOnLink(
        DzShaderBrick* brick, const BrickLink& link, const QPointF* position = nullptr);

    // Copies.
    /// The bricks and the links among them as text, which is a network file of its own.
    QString copy(const QVector<DzShaderBrick*>& bricks) const;
    /// False for a text that surely holds no network, told without reading it as one.
    static bool mayPaste(const QString& text);
    /// Adds what such a text holds, with its middle at `position`, and returns the new bricks.
    /// None, with the reason in `error`, for any other text.
    QVector<DzShaderBrick*> paste(const QString& text, const QPointF& position, QString* error);
    /// Adds copies of the bricks, with the links among them, moved by `offset`.
    QVector<DzShaderBrick*> duplicate(
        const QVector<DzShaderBrick*>& bricks, const QPointF& offset, QString* error = nullptr);

    // Places.
    typedef DzNetworkLayout::Place Move;
    /// What a step that moves these is called.
    static QString moveCaption(const QVector<Move>& moves);
    void moveBricks(const QVector<Move>& moves);
    enum Alignment {
        AlignLeft,
        AlignRight,
        AlignTop,
        AlignBottom,
        AlignHorizontalCentres,
        AlignVerticalCentres,
        DistributeHorizontally,
        DistributeVertically
    };
    void align(const QVector<DzShaderBrick*>& bricks, Alignment alignment);
    /// Arranges the bricks in layers, about where they are; all when `bricks` is empty.
    void arrange(const QVector<DzShaderBrick*>& bricks);
    /// Arranges, once and without undo, the bricks whose settings ask for it and those that nobody
    /// has placed. To be called after loading; true when a brick was moved.
    bool arrangeUnplaced();
    /// Where the next bricks that come without a place are put.
    void setPlaceHint(const QPointF& place);

    // Frames.
    QVector<BrickFrame> getFrames() const;
    /// The frame of this number; without bricks when there is none.
    BrickFrame getFrame(int number) const;
    /// Puts a new frame around the bricks, out of any other, and returns its number.
    int frameBricks(const QVector<DzShaderBrick*>& bricks, const QString& title);
    void addToFrame(const QVector<DzShaderBrick*>& bricks, int frame);
    void removeFromFrames(const QVector<DzShaderBrick*>& bricks);
    void setFrameTitle(int frame, const QString& title);
    void removeFrame(int frame);

    // Other edits.
    /// Runs `change`, which may change attributes, values, inputs and links of this one brick in
    /// any way, as one step.
    void changeBrick(
        DzShaderBrick* brick, const QString& caption, const std::function<void()>& change);
    /// Sets a value from text as one step, along with the inputs that come and go by it.
    bool setPropertyText(DzProperty* property, const QString& text, QString* error);

    // Ways through the network.
    /// The bricks that feed these, or that these feed, directly or not, and these.
    static QVector<DzShaderBrick*> withUpstream(const QVector<DzShaderBrick*>& bricks);
    static QVector<DzShaderBrick*> withDownstream(const QVector<DzShaderBrick*>& bricks);

signals:
    void bricksMoved(const QVector<DzShaderBrick*>& bricks);
    /// Size, shown rows or frame changed.
    void brickSettingsChanged(DzShaderBrick* brick);

private slots:
    void placeNewBrick(DzShaderBrick* brick);

private:
    friend class BrickMoveItem;
    friend class BrickSettingsItem;

    DzShaderBrick* makeBrick(const QString& className, QString* error) const;
    bool makeLink(DzBrickParam* output, DzBrickParam* input, LinkMode mode);
    void reconnectAround(DzShaderBrick* brick);
    bool insertInto(DzShaderBrick* brick, const BrickLink& link);
    QVector<DzShaderBrick*> addCopies(const QString& text, const QString& caption,
        const std::function<QPointF(const QPointF& middle)>& offsetFor, QString* error);
    typedef std::function<void(DzShaderBrick*)> BrickChange;
    /// Changes settings of bricks, leaving undo items; in a hold of the caller's.
    void changeSettings(const QVector<DzShaderBrick*>& bricks, const BrickChange& change);
    void changeFrame(const QVector<DzShaderBrick*>& bricks, int frame, const QString& title);

    IDzBrickUser* m_user;
    QPointer<DzElement> m_element; ///< goes with the user, which is no QObject itself
    QPointF m_placeHint;
    int m_placedCount = 0;
};
