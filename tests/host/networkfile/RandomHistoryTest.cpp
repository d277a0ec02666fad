// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ExportText.h"
#include "LinkTypes.h"
#include "TestSupport.h"
#include "dzboolproperty.h"
#include "dzbrickstate.h"
#include "dzbrickuserfile.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"
#include "dzpluginmgr.h"
#include "dzstringproperty.h"
#include "dzundostack.h"

#include <limits>
#include <random>

namespace {

/// A few classes that between them have every kind of input.
const char* const classNames[] = { "VireoMatMatteBrick", "VireoMatNullBrick", "VireoMatClothBrick",
    "VireoTexFltScaleBrick", "VireoTexClrScaleBrick", "VireoTexFltBAndBrick",
    "VireoTexClrMultiMixBrick", "VireoTexFnlBAndBrick", "VireoRootBrick",
    "VireoTexFltCheckerboardBrick", "VireoVolClearBrick" };

/// One random life of a network: edits, with and without undo, and steps back and forth. After
/// each stretch of it, what saving, loading and copying give is compared with what there is.
class History
{
public:
    explicit History(quint32 seed)
        : m_random(seed)
    {
        for (int i = 0; i < 4; ++i)
            addBrick();
        dzUndoStack->clearAll();
    }
    ~History() { dzUndoStack->clearAll(); }

    void run()
    {
        for (int stretch = 0; stretch < 4 && !testing::Test::HasFailure(); ++stretch) {
            edit();
            expectNothingIsLost();
        }
    }

private:
    // std's distributions differ between libraries; remainders do not.
    int below(int limit) { return static_cast<int>(m_random() % static_cast<quint32>(limit)); }
    bool oneIn(int chances) { return below(chances) == 0; }

    QString anyName()
    {
        static const char* const names[] = { "", "a", "a", "a", "A", "a#2", "a#3", "Kd", "tex1",
            "tex2", "offset1", "bumpmap", "result", "count", " ", "?x", "%1", "\x01\x1f", "\n",
            "quo\"te", "\xf0\x9d\x84\x9e", "Label", "Prop_0", "OriginalName" };
        const int count = static_cast<int>(sizeof names / sizeof *names);
        const int index = below(count + 2);
        if (index < count)
            return QString::fromUtf8(names[index]);
        // Halves of a character, which no file can hold.
        return index == count ? QString(QChar(0xd800)) + QLatin1Char('x')
                              : QLatin1Char('a') + QString(QChar(0xdc00));
    }

    VireoBrickBase* anyBrick()
    {
        QList<uint> ids;
        static_cast<const IDzBrickUser&>(m_user).getBrickIDs(ids);
        return ids.isEmpty()
            ? addBrick()
            : qobject_cast<VireoBrickBase*>(m_user.getBrick(ids.at(below(ids.size()))));
    }

    DzBrickParam* anyParam(DzShaderBrick* brick)
    {
        return brick->getParameter(below(brick->getNumParameters()));
    }

    VireoBrickBase* addBrick()
    {
        const int count = static_cast<int>(sizeof classNames / sizeof *classNames);
        return ::addBrick(m_user, classNames[below(count)]);
    }

    /// Several edits in a row: each by itself, all as one step, or without undo.
    void edit()
    {
        switch (below(4)) {
        case 0: {
            const DzUndoStackLock lock;
            editSome();
            break;
        }
        case 1: {
            DzUndoStackHold hold;
            editSome();
            if (oneIn(3))
                break; // all of it is taken back
            hold.accept(QStringLiteral("Several"));
            break;
        }
        default:
            expectStepsToLeadBack();
            for (int i = below(8); i > 0; --i)
                oneIn(2) ? dzUndoStack->undo() : dzUndoStack->redo();
            editSome();
            break;
        }
    }

    void editSome()
    {
        for (int i = 1 + below(8); i > 0; --i)
            editOnce();
    }

    /// Edits that all leave steps are taken back and made again without a difference.
    void expectStepsToLeadBack()
    {
        const QByteArray before = state();
        const int steps = dzUndoStack->getNumUndoItems();
        editSome();
        const QByteArray after = state();
        const int more = dzUndoStack->getNumUndoItems() - steps;
        for (int i = 0; i < more; ++i)
            ASSERT_TRUE(dzUndoStack->undo());
        EXPECT_TEXT(QString::fromUtf8(before), QString::fromUtf8(state()));
        for (int i = 0; i < more; ++i)
            ASSERT_TRUE(dzUndoStack->redo());
        EXPECT_TEXT(QString::fromUtf8(after), QString::fromUtf8(state()));
    }

    void editOnce()
    {
        VireoBrickBase* brick = anyBrick();
        switch (below(14)) {
        case 0:
            addBrick();
            break;
        case 1:
            if (oneIn(3))
                m_user.deleteBrick(brick);
            break;
        case 2:
        case 3: {
            DzBrickStateHold hold(brick);
            brick->addCustomInput(MaterialLink + below(10), anyName(), anyName(),
                oneIn(4) ? DzBrickParam::SettingsDirection : DzBrickParam::InputDirection);
            finish(&hold);
            break;
        }
        case 4: {
            DzBrickStateHold hold(brick);
            if (brick->getNumCustomParams() > 0)
                brick->removeCustomParam(brick->getCustomParam(below(brick->getNumCustomParams())));
            finish(&hold);
            break;
        }
        case 5:
            if (auto* count
                = qobject_cast<DzIntProperty*>(brick->findProperty(QStringLiteral("count")))) {
                DzBrickStateHold hold(brick);
                count->setValue(below(5));
                finish(&hold);
            }
            break;
        case 6:
            anyParam(brick)->setName(anyName());
            break;
        case 7:
            anyParam(brick)->setLabel(anyName());
            break;
        case 8:
            brick->changeParamIndex(anyParam(brick), below(brick->getNumParameters()));
            break;
        case 9:
        case 10:
            linkSomething(brick);
            break;
        case 11: {
            DzBrickParam* param = anyParam(brick);
            if (param->getNumConnections() > 0)
                param->removeConnection(param->getConnection(below(param->getNumConnections())));
            break;
        }
        case 12:
            if (oneIn(2)) {
                brick->setBrickTitle(anyName());
            } else if (oneIn(3)) {
                DzBrickStateHold hold(brick);
                DzSettings attributes;
                anyBrick()->getAttributes(&attributes);
                brick->setAttributes(&attributes);
                finish(&hold);
            }
            break;
        default:
            changeSomething(anyParam(brick));
            break;
        }
    }

    void finish(DzBrickStateHold* hold)
    {
        if (!oneIn(8))
            hold->accept(QStringLiteral("Change"));
    }

    void linkSomething(VireoBrickBase* brick)
    {
        DzBrickParam* input = anyParam(brick);
        VireoBrickBase* source = anyBrick();
        for (int i = 0; i < source->getNumParameters(); ++i)
            if (source->getParameter(i)->isOutput())
                input->addConnection(source->getParameter(i));
    }

    void changeSomething(DzBrickParam* param)
    {
        if (param->getNumProperties() == 0)
            return;
        DzProperty* property = param->getProperty(below(param->getNumProperties()));
        static const float numbers[]
            = { 0, -0.0f, 1, -2.5f, 1e-40f, 3e38f, std::numeric_limits<float>::max(),
                  std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN() };
        if (auto* number = qobject_cast<DzFloatProperty*>(property))
            number->setValue(numbers[below(static_cast<int>(sizeof numbers / sizeof *numbers))]);
        else if (auto* color = qobject_cast<DzColorProperty*>(property))
            color->setColorValue(QColor(below(256), below(256), below(256)));
        else if (auto* items = qobject_cast<DzEnumProperty*>(property))
            items->setValue(below(items->getNumItems()));
        else if (auto* onOff = qobject_cast<DzBoolProperty*>(property))
            onOff->setBoolValue(oneIn(2));
        else if (auto* whole = qobject_cast<DzIntProperty*>(property))
            whole->setValue(below(2001) - 1000);
        else if (auto* image = qobject_cast<DzImageProperty*>(property))
            image->setValue(anyName());
        else if (auto* words = qobject_cast<DzStringProperty*>(property))
            words->setValue(anyName());
        auto* numeric = qobject_cast<DzNumericProperty*>(property);
        if (numeric && oneIn(4))
            numeric->setMap(QStringLiteral("maps/") + anyName());
        if (oneIn(6))
            property->lock(!property->isLocked());
    }

    QByteArray state() const { return DzBrickUserFile().saveText(&m_user); }

    /// What a reader of the file sees of a text.
    static QString inFile(const QString& text) { return QString::fromUtf8(text.toUtf8()); }

    static QString describe(const VireoBrickUser& user)
    {
        QString text;
        QList<uint> ids;
        static_cast<const IDzBrickUser&>(user).getBrickIDs(ids);
        for (const uint id : ids) {
            auto* brick = qobject_cast<VireoBrickBase*>(user.getBrick(id));
            text += QStringLiteral("== %1 %2 %3\n")
                        .arg(id)
                        .arg(brick->className(), inFile(brick->getBrickTitle()));
            text += inFile(literalText(brick)) + inFile(placeholderText(brick));
            for (DzProperty* own : brick->getPropertyList())
                text += own->getName() + QLatin1Char('=') + own->getValueText() + QLatin1Char('\n');
            const QList<DzBrickParam*> customs = brick->getCustomParams();
            for (int i = 0; i < brick->getNumParameters(); ++i) {
                DzBrickParam* param = brick->getParameter(i);
                text += QStringLiteral("-- %1 %2|%3|%4 %5\n")
                            .arg(inFile(param->getName()), inFile(param->getLabel()),
                                inFile(param->getArg(0)))
                            .arg(param->getType())
                            .arg(param->getDirection());
                text += customs.contains(param) ? QStringLiteral("custom\n") : QString();
                for (int k = 0; k < param->getNumProperties(); ++k) {
                    DzProperty* property = param->getProperty(k);
                    auto* numeric = qobject_cast<DzNumericProperty*>(property);
                    text += inFile(property->getValueText())
                        + (property->isLocked() ? QStringLiteral(" locked") : QString())
                        + (numeric && numeric->isMapped()
                                ? inFile(numeric->getMapValue()->getFilename())
                                : QString())
                        + QLatin1Char('\n');
                }
                for (int k = 0; param->isInput() && k < param->getNumConnections(); ++k) {
                    const DzBrickParam* output = param->getConnection(k);
                    const DzShaderBrick* source = output->getTopBrickOwner();
                    text += QStringLiteral("<- %1.%2\n")
                                .arg(source->getBrickID())
                                .arg(source->findParameterIndex(output));
                }
            }
        }
        return text;
    }

    void expectNothingIsLost()
    {
        const QString there = describe(m_user);
        DzBrickUserFile file;
        const QByteArray bytes = file.saveText(&m_user);
        VireoBrickUser loaded;
        ASSERT_TRUE(file.loadText(bytes, QStringLiteral("network"), &loaded))
            << file.getError().toStdString() << bytes.toStdString();
        EXPECT_EQ(file.getWarnings(), QStringList());
        EXPECT_TEXT(there, describe(loaded));
        EXPECT_TEXT(QString::fromUtf8(bytes), QString::fromUtf8(file.saveText(&loaded)));
        VireoBrickUser copy;
        copy.copyFrom(&m_user);
        EXPECT_TEXT(there, describe(copy));
        // The one that was loaded goes on living, as one that was opened does.
        if (oneIn(3) && !testing::Test::HasFailure())
            file.loadText(bytes, QStringLiteral("network"), &m_user);
    }

    VireoBrickUser m_user;
    std::mt19937 m_random;
};

int numberFrom(const char* variable, int usual)
{
    bool ok = false;
    const int number = qEnvironmentVariableIntValue(variable, &ok);
    return ok ? number : usual;
}

} // namespace

/// VIREO_TEST_SEEDS and VIREO_TEST_FIRST_SEED run more of them, or others.
TEST(RandomHistory, nothingIsLostByUndoSavingLoadingAndCopying)
{
    const int first = numberFrom("VIREO_TEST_FIRST_SEED", 0);
    const int count = numberFrom("VIREO_TEST_SEEDS", 2000);
    Warnings warnings;
    for (int seed = first; seed < first + count; ++seed) {
        SCOPED_TRACE(seed);
        History(static_cast<quint32>(seed)).run();
        warnings.messages.clear();
        if (HasFailure())
            return;
    }
}
