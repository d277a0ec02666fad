// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PropertyEditor.h"

#include "FileField.h"
#include "NumberField.h"
#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"
#include "dzstringproperty.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOptionButton>
#include <QToolButton>
#include <QWheelEvent>

#include <cmath>
#include <limits>

namespace {

/// What stands where the values of several bricks differ.
QString mixedText()
{
    return PropertyEditor::tr("several values");
}

/// Scrolling the panel must not change what passes below the pointer.
class CalmComboBox : public QComboBox
{
public:
    CalmComboBox()
    {
        // Without this the wheel itself gives it the keyboard.
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        if (hasFocus())
            QComboBox::wheelEvent(event);
        else
            event->ignore();
    }
};

class NumberEditor : public PropertyEditor
{
public:
    NumberEditor(const PropertyGroup& group, QWidget* parent)
        : PropertyEditor(group, parent)
        , m_field(new NumberField)
    {
        layout()->addWidget(m_field);
        setFocusProxy(m_field);
        connect(m_field, &NumberField::dragStarted, this, &NumberEditor::beginSession);
        connect(m_field, &NumberField::dragged, this,
            [this](double value) { getGroup().setNumber(value); });
        connect(m_field, &NumberField::dragFinished, this, &NumberEditor::endSession);
        connect(m_field, &NumberField::entered, this, &NumberEditor::enterNumber);
        connect(m_field, &NumberField::refused, this, &NumberEditor::message);
    }

    void refresh() override
    {
        const auto* number = getGroup().firstAs<DzNumericProperty>();
        if (!number)
            return;
        if (auto* real = qobject_cast<const DzFloatProperty*>(number)) {
            m_field->setLimits(double(real->getMin()), double(real->getMax()));
            m_field->setStep(double(real->getSensitivity()));
        } else if (auto* whole = qobject_cast<const DzIntProperty*>(number)) {
            m_field->setLimits(whole->getMin(), whole->getMax());
            m_field->setStep(1);
            m_field->setWhole(true);
        }
        const bool mixed = getGroup().isMixed();
        m_field->setPlaceholderText(mixed ? mixedText() : QString());
        m_field->showValue(number->getDoubleValue(), mixed ? QString() : number->getValueText());
    }

private:
    void enterNumber(double value)
    {
        if (getGroup().firstAs<DzFloatProperty>()
            && std::abs(value) > double(std::numeric_limits<float>::max())) {
            emit message(tr("%1 is too large for this value.").arg(value));
            return;
        }
        PropertyEditor::enterNumber(value);
        refresh(); // the next key may come before the panel is up to date
    }

    NumberField* m_field;
};

/// A button that is a patch of colour.
class Swatch : public QToolButton
{
public:
    void setColor(const QColor& color)
    {
        m_color = color;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
        QColor fill = m_color;
        if (!isEnabled())
            fill.setAlpha(120);
        painter.setBrush(fill.isValid() ? QBrush(fill)
                                        : QBrush(palette().color(QPalette::Mid), Qt::BDiagPattern));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    }

private:
    QColor m_color;
};

class ColorEditor : public PropertyEditor
{
public:
    ColorEditor(const PropertyGroup& group, QWidget* parent)
        : PropertyEditor(group, parent)
        , m_swatch(new Swatch)
        , m_text(new QLineEdit)
    {
        m_swatch->setMinimumWidth(36);
        m_swatch->setMinimumHeight(lineHeight(this));
        m_swatch->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        m_swatch->setObjectName(QStringLiteral("swatch"));
        m_swatch->setToolTip(tr("Choose a colour"));
        // One Tab stop a value: the menu of its row has the rest.
        m_swatch->setFocusPolicy(Qt::NoFocus);
        m_swatch->setAccessibleName(tr("Choose %1").arg(group.getLabel()));
        m_text->setMinimumWidth(56);
        m_text->setToolTip(tr("Red, green and blue from 0 to 255, #rrggbb or a colour's name"));
        m_text->setAccessibleName(group.getLabel());
        layout()->addWidget(m_swatch);
        layout()->addWidget(m_text);
        setFocusProxy(m_text);
        connect(m_swatch, &QToolButton::clicked, this, &ColorEditor::openDialog);
        connect(m_text, &QLineEdit::editingFinished, this, [this] {
            if (m_text->isModified())
                enter(m_text->text());
            m_text->setModified(false);
            refresh();
        });
    }

    void refresh() override
    {
        const auto* color = getGroup().firstAs<DzColorProperty>();
        if (!color)
            return;
        const bool mixed = getGroup().isMixed();
        m_swatch->setColor(mixed ? QColor() : color->getColorValue());
        m_text->setPlaceholderText(mixed ? mixedText() : QString());
        if (!m_text->isModified())
            m_text->setText(mixed ? QString() : color->getValueText());
    }

private:
    void openDialog()
    {
        const auto* color = getGroup().firstAs<DzColorProperty>();
        if (!color)
            return;
        // All that happens in the dialog is one step; leaving it by Cancel takes it back.
        auto* dialog = new QColorDialog(color->getColorValue(), window());
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setOption(QColorDialog::DontUseNativeDialog);
        dialog->setWindowTitle(tr("Choose %1").arg(getGroup().getLabel()));
        beginSession();
        connect(dialog, &QColorDialog::currentColorChanged, this,
            [this](const QColor& chosen) { enter(chosen.name()); });
        connect(dialog, &QDialog::finished, this,
            [this](int result) { endSession(result == QDialog::Accepted); });
        dialog->open();
    }

    Swatch* m_swatch;
    QLineEdit* m_text;
};

class ChoiceEditor : public PropertyEditor
{
public:
    ChoiceEditor(const PropertyGroup& group, QWidget* parent)
        : PropertyEditor(group, parent)
        , m_box(new CalmComboBox)
    {
        const auto* property = group.firstAs<DzEnumProperty>();
        for (int i = 0; property && i < property->getNumItems(); ++i)
            m_box->addItem(property->getItem(i));
        m_box->setMinimumContentsLength(4);
        m_box->setMinimumWidth(56);
        m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        layout()->addWidget(m_box);
        setFocusProxy(m_box);
        connect(m_box, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { getGroup().setNumber(index); });
    }

    void refresh() override
    {
        const auto* property = getGroup().firstAs<DzEnumProperty>();
        if (property)
            m_box->setCurrentIndex(getGroup().isMixed() ? -1 : property->getValue());
    }

private:
    QComboBox* m_box;
};

class SwitchEditor : public PropertyEditor
{
public:
    SwitchEditor(const PropertyGroup& group, QWidget* parent)
        : PropertyEditor(group, parent)
        , m_box(new QCheckBox)
    {
        layout()->addWidget(m_box);
        setFocusProxy(m_box);
        connect(m_box, &QCheckBox::clicked, this, [this] {
            m_box->setTristate(false);
            getGroup().setNumber(m_box->isChecked() ? 1 : 0);
        });
    }

    void refresh() override
    {
        const auto* property = getGroup().firstAs<DzBoolProperty>();
        if (!property)
            return;
        const bool mixed = getGroup().isMixed();
        m_box->setTristate(mixed);
        if (mixed)
            m_box->setCheckState(Qt::PartiallyChecked);
        else
            m_box->setChecked(property->getBoolValue());
    }

private:
    QCheckBox* m_box;
};

class TextEditor : public PropertyEditor
{
public:
    TextEditor(const PropertyGroup& group, QWidget* parent)
        : PropertyEditor(group, parent)
        , m_edit(new QLineEdit)
    {
        layout()->addWidget(m_edit);
        setFocusProxy(m_edit);
        connect(m_edit, &QLineEdit::editingFinished, this, [this] {
            if (m_edit->isModified())
                enter(m_edit->text());
            m_edit->setModified(false);
        });
    }

    void refresh() override
    {
        const DzProperty* property = getGroup().getFirst();
        if (!property)
            return;
        const bool mixed = getGroup().isMixed();
        m_edit->setPlaceholderText(mixed ? mixedText() : QString());
        if (!m_edit->isModified())
            m_edit->setText(mixed ? QString() : property->getValueText());
    }

private:
    QLineEdit* m_edit;
};

class FileEditor : public PropertyEditor
{
public:
    FileEditor(const PropertyGroup& group, QWidget* parent)
        : PropertyEditor(group, parent)
        , m_field(new FileField)
    {
        layout()->addWidget(m_field);
        setFocusProxy(m_field);
        if (auto* file = group.firstAs<DzFileProperty>()) {
            m_field->setFilter(file->getFilter());
            m_field->setChoosesFolder(file->getType() == DzFileProperty::Directory);
            m_field->setSavesFile(file->getType() == DzFileProperty::FileSave);
        } else {
            m_field->setFilter(imageFilter());
            m_field->setShowsPicture(true);
        }
        connect(m_field, &FileField::chosen, this, [this](const QString& file) { enter(file); });
    }

    void refresh() override
    {
        const DzProperty* property = getGroup().getFirst();
        if (!property)
            return;
        const bool mixed = getGroup().isMixed();
        m_field->getLineEdit()->setPlaceholderText(mixed ? mixedText() : tr("no file"));
        m_field->showFile(mixed ? QString() : property->getValueText(), m_folder);
    }

    void setFolder(const QString& folder) override { m_folder = folder; }

private:
    FileField* m_field;
    QString m_folder;
};

} // namespace

PropertyEditor::PropertyEditor(const PropertyGroup& group, QWidget* parent)
    : QWidget(parent)
    , m_group(group)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    setFixedHeight(lineHeight(this));
}

void PropertyEditor::setFolder(const QString&)
{
    // Most values are no files.
}

int PropertyEditor::lineHeight(const QWidget* widget)
{
    return widget->fontMetrics().height() + 10;
}

PropertyEditor::~PropertyEditor()
{
    // What was done while the editor went counts.
    endSession(true);
}

PropertyEditor* PropertyEditor::make(const PropertyGroup& group, QWidget* parent)
{
    PropertyEditor* editor = nullptr;
    const DzProperty* property = group.getFirst();
    if (qobject_cast<const DzEnumProperty*>(property))
        editor = new ChoiceEditor(group, parent);
    else if (qobject_cast<const DzBoolProperty*>(property))
        editor = new SwitchEditor(group, parent);
    else if (qobject_cast<const DzColorProperty*>(property))
        editor = new ColorEditor(group, parent);
    else if (qobject_cast<const DzNumericProperty*>(property))
        editor = new NumberEditor(group, parent);
    else if (qobject_cast<const DzFileProperty*>(property)
        || qobject_cast<const DzImageProperty*>(property))
        editor = new FileEditor(group, parent);
    else
        editor = new TextEditor(group, parent);
    if (editor->focusProxy())
        editor->focusProxy()->setAccessibleName(group.getLabel());
    return editor;
}

void PropertyEditor::enter(const QString& text)
{
    QString error;
    tell(m_group.setText(text, &error) ? m_group.getNotice() : error);
}

void PropertyEditor::enterNumber(double value)
{
    m_group.setNumber(value);
    tell(m_group.getNotice());
}

void PropertyEditor::tell(const QString& notice)
{
    if (!notice.isEmpty())
        emit message(notice);
}

void PropertyEditor::beginSession()
{
    if (!m_session)
        m_session = std::make_unique<PropertySession>(m_group);
}

void PropertyEditor::endSession(bool accepted)
{
    if (!m_session)
        return;
    const std::unique_ptr<PropertySession> session = std::move(m_session);
    if (!accepted)
        return;
    session->accept(tr("Change %1").arg(m_group.getLabel()));
    tell(session->getNotice());
}
