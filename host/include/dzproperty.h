// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbase.h"
#include "dzpropertycarrier.h"
#include "dzpropertysettings.h"

#include <functional>
#include <memory>

class DzBrickParam;
class DzElement;

/// A named, labelled value that a user can see and change.
///
/// Setters emit their signal once per change and leave one undo step when the property belongs to
/// an element and the undo stack takes items; so do copyFrom() and setAttributes(). Those of value
/// and map are a user's: they refuse a locked property, which the latter two write.
class DzProperty : public DzBase
{
    Q_OBJECT
    Q_PROPERTY(QString label READ getLabel WRITE setLabel NOTIFY labelChanged)

public:
    /// A property belongs to an element once added to it, or to a brick parameter.
    DzProperty(const QString& name, bool canAnimate, bool isUserProperty);
    ~DzProperty() override;

    /// Renames the property; refused (no change) when the owning element has that name already.
    void setName(const QString& name) override;

    Q_INVOKABLE QString getLabel() const { return m_label; }
    Q_INVOKABLE void setLabel(const QString& label);
    /// Slash-delimited group path under which the property is shown.
    Q_INVOKABLE QString getPath() const { return m_path; }
    Q_INVOKABLE void setPath(const QString& path);
    /// The element that the property belongs to; for a parameter's property, its brick.
    Q_INVOKABLE DzElement* getOwner() const;
    /// The brick parameter that carries the property; null for an element's own property.
    Q_INVOKABLE DzBrickParam* getBrickParam() const { return m_param; }

    Q_INVOKABLE bool isHidden() const { return m_hidden; }
    Q_INVOKABLE void setHidden(bool hidden);
    /// A locked property refuses new values from users.
    Q_INVOKABLE bool isLocked() const { return m_locked; }
    Q_INVOKABLE void lock(bool locked);
    /// A user property may be removed from its element.
    Q_INVOKABLE bool isUserProperty() const { return m_userProperty; }
    Q_INVOKABLE void setIsUserProperty(bool isUser);
    Q_INVOKABLE bool canAnimate() const { return m_canAnimate; }
    Q_INVOKABLE void setCanAnimate(bool canAnimate);
    Q_INVOKABLE virtual bool isNumeric() const { return false; }

    Q_INVOKABLE virtual bool currentValueIsDefaultValue() const = 0;
    /// Sets the current value to the recorded default, as a user would.
    Q_INVOKABLE virtual void resetToDefault() = 0;
    /// The current value as a person would type it.
    Q_INVOKABLE virtual QString getValueText() const = 0;
    /// Sets the value from such a text, as a user would. False, with the reason in `error`, when
    /// the text is not a value of this property or the property is locked.
    virtual bool setValueText(const QString& text, QString* error) = 0;

    /// Copies value and map of a property of the same kind.
    Q_INVOKABLE void copyFrom(const DzProperty* other);
    /// A copy without owner, owned by the caller: name, label, path, flags, limits, value and map.
    Q_INVOKABLE DzProperty* duplicate() const;

    /// Writes everything that describes the property, in the order of the host's files.
    Q_INVOKABLE virtual void getAttributes(DzPropertySettings* settings) const;
    /// Writes the member "Value" of getAttributes() alone.
    virtual void writeValue(SettingsTree* settings) const = 0;
    /// True when getAttributes() gives the same for both but for the value. `other` is of the same
    /// class. This is the fast form of writing and comparing both.
    virtual bool isDescribedLike(const DzProperty* other) const;
    /// Reads what getAttributes() wrote. The user flag is read only when the settings hold true
    /// under "ForceSetUser".
    Q_INVOKABLE void setAttributes(const DzPropertySettings* settings);
    /// Reads one member of such settings. False when the key is none of this property's or its
    /// value cannot be used.
    virtual bool readAttribute(const SettingsTree& settings, const QString& key);

    /// For the host's own sources.
    struct Access;

signals:
    void currentValueChanged();
    void labelChanged(const QString& label);
    void hiddenChanged(bool hidden);
    void lockStateChanged();
    void isUserPropertyChanged(bool isUser);
    void canAnimateChanged(bool canAnimate);
    void pathChanged(const QString& path);
    void propertyDeleted(DzProperty* property);

protected:
    /// Does what copyFrom() says, without undo.
    virtual void takeFrom(const DzProperty* other) = 0;
    /// A new property of the same class and name.
    virtual DzProperty* createSimilar() const = 0;
    /// Takes over everything of a new property's model, which is of the same class, without
    /// telling anybody.
    virtual void assignAll(const DzProperty* model);
    /// Tells everybody, the carrying parameter included, that the current value changed.
    void notifyValueChanged();
    /// True when a change is to leave an undo item.
    bool isRecorded() const;
    typedef std::function<void(DzProperty*)> Change;
    /// Leaves an undo item for a change that was just made. `kind` tells changes that may be
    /// merged within one hold. A step whose property has gone, or is off its element, is refused.
    void record(const char* kind, const QString& caption, const Change& undo, const Change& redo);
    /// Makes a change and leaves its undo item, if it is to leave one.
    void recordAround(const char* kind, const QString& caption, const std::function<void()>& change,
        const Change& undo, const Change& redo);
    /// Makes a change of many members at once, with one undo item for all of them.
    void changeDescription(const char* kind, const std::function<void()>& change);

private:
    /// All that describes the property, its value included.
    struct Description {
        DzPropertySettings settings;
        std::shared_ptr<const SettingsTree> kept;
    };

    Description describe() const;
    void assignDescription(const Description& all);
    void readSettings(const DzPropertySettings& settings);
    bool assignName(const QString& name);
    void assignLabel(const QString& label);
    void assignPath(const QString& path);
    void assignHidden(bool hidden);
    void assignLocked(bool locked);
    void assignUserProperty(bool isUser);
    void assignCanAnimate(bool canAnimate);

    QString m_label;
    QString m_path;
    DzElement* m_owner = nullptr;
    DzBrickParam* m_param = nullptr;
    DzPropertyCarrier* m_carrier = nullptr; ///< the same as `m_param`, as core knows it
    /// Members of the file that the property was read from and that it must be written back with.
    std::unique_ptr<SettingsTree> m_keptMembers;
    bool m_hidden = false;
    bool m_locked = false;
    bool m_userProperty;
    bool m_canAnimate;
};
