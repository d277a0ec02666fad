// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbase.h"
#include "dzpropertycarrier.h"

#include <QVector>
#include <memory>

class DzProperty;
class DzShaderBrick;
class SettingsTree;

/// An input, output or settings row of a brick.
///
/// A parameter belongs to the brick it was added to, owns its properties, and holds links to
/// parameters of other bricks. Both ends of a link know each other; deleting either end, or its
/// brick, removes the link.
class DzBrickParam : public DzBase, private DzPropertyCarrier
{
    Q_OBJECT

public:
    /// Kind of the value that a parameter carries; the host's own kinds are 0 to 9.
    typedef int ParamType;
    enum HostType {
        UnknownType = 0,
        FloatType = 1,
        ColorType = 2,
        PointType = 3,
        VectorType = 4,
        NormalType = 5,
        MatrixType = 6,
        StringType = 7,
        BooleanType = 8,
        IntegerType = 9
    };
    Q_ENUM(HostType)
    /// A settings row is shown and edited, but nothing can be linked to it.
    enum Direction { InputDirection = 0, SettingsDirection = 1, OutputDirection = 2 };
    Q_ENUM(Direction)

    explicit DzBrickParam(Direction direction);
    ~DzBrickParam() override;

    /// The word for a host type, such as "float"; empty for any other number.
    static QString typeToString(ParamType type);

    // Identity.
    /// Renames the parameter. Once it is on a brick, an argument name that is its name follows.
    void setName(const QString& name) override;
    Q_INVOKABLE QString getLabel() const { return m_label; }
    Q_INVOKABLE virtual void setLabel(const QString& label);
    Q_INVOKABLE DzShaderBrick* getTopBrickOwner() const { return m_brick; }
    Q_INVOKABLE int getDirection() const { return m_direction; }
    Q_INVOKABLE bool isInput() const { return m_direction == InputDirection; }
    Q_INVOKABLE bool isOutput() const { return m_direction == OutputDirection; }
    Q_INVOKABLE bool isArray() const { return m_isArray; }
    void setIsArray(bool isArray) { m_isArray = isArray; }

    // Arguments: the names under which the parameter is known in code and in files.
    Q_INVOKABLE virtual int getNumArgs() const { return 1; }
    /// Argument name `index`; the parameter's own name unless it has another.
    Q_INVOKABLE virtual QString getArg(int index) const;
    Q_INVOKABLE virtual ParamType getArgType(int index) const;
    virtual int getNumTokensNeeded() const { return 1; }
    virtual ParamType getTypeForToken(int index) const;
    /// The value as a term of the shading language.
    Q_INVOKABLE virtual QString getStringValue(int index) const;
    /// `text` as a quoted literal of the shading language.
    static QString getEscapedString(const QString& text);
    Q_INVOKABLE bool shouldWriteTokenInShader() const { return m_writeToken; }
    void setShouldWriteTokenInShader(bool write) { m_writeToken = write; }
    virtual bool needsPrepForCall(int index) const;

    // Properties.
    Q_INVOKABLE virtual int getNumProperties() const { return 0; }
    Q_INVOKABLE virtual DzProperty* getProperty(int index) const;
    /// Token under which property `index` is mapped; -1 for a parameter without property.
    virtual int getPropertyMapToken(int index) const;
    Q_INVOKABLE QString getPropertyPath(int index) const;
    Q_INVOKABLE void setPropertyPath(int index, const QString& path);

    // Types and links.
    Q_INVOKABLE virtual int getType() const = 0;
    /// True when a link between this parameter and `other` is allowed. An output asks the input.
    Q_INVOKABLE virtual bool canConnect(DzBrickParam* other) const;
    /// The type's name as users see it.
    Q_INVOKABLE virtual QString getTypeString(int index = 0) const;

    /// Makes a link, as a user would, and returns true; false when it is refused or exists.
    Q_INVOKABLE bool addConnection(DzBrickParam* other);
    Q_INVOKABLE int getNumConnections() const { return m_links.size() - m_deadLinks; }
    /// The parameter at the other end of link `index`, in order of linking; null when none.
    Q_INVOKABLE DzBrickParam* getConnection(int index) const;
    Q_INVOKABLE bool isConnectedTo(const DzBrickParam* other) const;
    Q_INVOKABLE bool removeConnection(DzBrickParam* other);
    Q_INVOKABLE void removeAllConnections();
    /// Removes links that canConnect() would refuse now.
    Q_INVOKABLE void clearInvalidConnections();

    /// For the host's own sources.
    struct Access;

signals:
    void connectionsChanged();
    void typeChanged();
    void directionChanged();
    void labelChanged();
    void propertyChanged(DzProperty* property);

protected:
    void changeDirection(int direction);
    /// Takes a property into the parameter's care: it shows this parameter as its carrier.
    void adoptProperty(DzProperty* property);
    /// Told after a change of the name on a brick, so that an argument name can follow.
    virtual void nameFollowed(const QString& before);

private:
    /// One end of a link: the parameter at the other end and the place of the link in its list.
    struct Link {
        DzBrickParam* peer;
        int peerSlot;
    };

    /// A parameter to link to, and the place of the link in its list.
    struct PeerPlace {
        DzBrickParam* peer;
        int slot;
    };

    // DzPropertyCarrier
    DzElement* getCarrierOwner() const override;
    std::unique_ptr<Address> makeAddress() override;
    void carriedPropertyChanged(DzProperty* property) override;

    void assignName(const QString& name);
    void assignLabel(const QString& label);
    bool mayMeet(const DzBrickParam* other) const;
    bool mayBeLinked(const DzBrickParam* other) const;
    /// Place of link `index` in the list of the parameter at its other end.
    int getPeerSlot(int index) const;
    /// Brings the links into the given state, without undo. Links that may not be made now are left
    /// out, with a word.
    void setConnections(const QVector<PeerPlace>& peers);
    /// Makes the link; false when it would close a loop, which is all that is asked. `slot` and
    /// `otherSlot` are places to insert at, -1 the end.
    bool link(DzBrickParam* other, int slot = -1, int otherSlot = -1);
    void unlinkSlot(int slot);
    int findSlot(const DzBrickParam* other) const;
    void insertLink(int slot, const Link& link);
    void removeLink(int slot);
    void compactLinks() const;
    void notifyConnectionsChanged();

    QString m_label;
    DzShaderBrick* m_brick = nullptr;
    /// The brick that owns the parameter while it is off, for undo steps to put it back on.
    DzShaderBrick* m_formerBrick = nullptr;
    int m_numAddresses = 0;
    const quint64 m_serial;
    QString m_originalArg;
    bool m_isRenamed = false;
    /// Links in order; a removed one leaves a null peer until the list is read again, so that
    /// removing many links costs no more than each of them.
    mutable QVector<Link> m_links;
    mutable int m_deadLinks = 0;
    /// Members of the file that the parameter was read from, see DzProperty.
    std::unique_ptr<SettingsTree> m_keptMembers;
    int m_direction;
    bool m_isArray = false;
    bool m_writeToken = true;
};
