// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "RandomNetwork.h"

#include "LinkTypes.h"
#include "TestSupport.h"
#include "VireoBrickBase.h"
#include "dzboolproperty.h"
#include "dzbrickparam.h"
#include "dzclassfactory.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzpluginmgr.h"
#include "dzstringproperty.h"
#include "dzundostack.h"

#include <random>

namespace {

class Builder
{
public:
    Builder(VireoBrickUser* user, quint32 seed)
        : m_user(user)
        , m_random(seed)
    {
    }

    void build()
    {
        DzUndoStackLock lock;
        addBrick(QStringLiteral("VireoRootBrick"));
        const int count = 3 + below(22);
        for (int i = 0; i < count; ++i)
            addBrick(anyClass());
        for (VireoBrickBase* brick : qAsConst(m_bricks))
            for (int i = 0; i < brick->getNumParameters(); ++i)
                linkSomething(brick->getParameter(i));
        m_user->setBrickUserName(QStringLiteral("Random ") + anyText());
    }

private:
    // std's distributions differ between libraries; remainders do not.
    int below(int limit) { return static_cast<int>(m_random() % static_cast<quint32>(limit)); }
    bool oneIn(int chances) { return below(chances) == 0; }

    QString anyClass()
    {
        const QList<const DzClassFactory*> factories = dzApp->getPluginMgr()->getClassFactories();
        for (;;) {
            const QMetaObject& candidate = factories.at(below(factories.size()))->getMetaObject();
            const QString name = QString::fromLatin1(candidate.className());
            if (candidate.inherits(&VireoBrickBase::staticMetaObject)
                && (name != QLatin1String("VireoRootBrick") || oneIn(3)))
                return name;
        }
    }

    QString anyText()
    {
        static const char* const texts[] = { "", "plain", "with blank", "50%", "a%1b", "%2", "%L1",
            "quo\"te", "back\\slash", "\xc3\xbc\xe8\x9e\xa2", "line\nend", "scale", "Kd" };
        return QString::fromUtf8(texts[below(static_cast<int>(sizeof texts / sizeof *texts))]);
    }

    float anyFloat()
    {
        switch (below(6)) {
        case 0:
            return static_cast<float>(below(7) - 3);
        case 1:
            return 1.0f;
        case 2:
            return static_cast<float>(below(2000001) - 1000000) / 1000.0f;
        case 3:
            return static_cast<float>(below(1000)) * 1e-9f;
        case 4:
            return static_cast<float>(below(1000)) * 1e30f;
        default:
            return static_cast<float>(below(1 << 24)) / static_cast<float>(1 << 24);
        }
    }

    void addBrick(const QString& className)
    {
        auto* brick = qobject_cast<VireoBrickBase*>(dzApp->createInstance(className));
        ASSERT_NE(m_user->addBrick(brick), 0u);
        if (auto* count
            = qobject_cast<DzIntProperty*>(brick->findProperty(QStringLiteral("count"))))
            count->setValue(below(6));
        const int customs = oneIn(3) ? 1 + below(4) : 0;
        for (int i = 0; i < customs; ++i) {
            const QString name = anyText();
            brick->addCustomInput(MaterialLink + below(10),
                name.isEmpty() ? QStringLiteral("x") : name,
                name.isEmpty() ? QStringLiteral("x") : name, DzBrickParam::InputDirection);
        }
        for (DzProperty* plain : brick->getPropertyList())
            if (plain->getName() != QLatin1String("count"))
                change(plain);
        for (int i = 0; i < brick->getNumParameters(); ++i)
            for (int k = 0; k < brick->getParameter(i)->getNumProperties(); ++k)
                change(brick->getParameter(i)->getProperty(k));
        if (oneIn(2))
            brick->setBrickTitle(anyText());
        brick->getBrickSettings()->setFloatValue(QStringLiteral("PosX"), below(2000) - 1000);
        brick->getBrickSettings()->setFloatValue(QStringLiteral("PosY"), below(2000) - 1000);
        m_bricks.append(brick);
    }

    void change(DzProperty* property)
    {
        if (oneIn(2))
            setValue(property);
        auto* numeric = qobject_cast<DzNumericProperty*>(property);
        if (numeric && numeric->isMappable() && oneIn(5))
            numeric->setMap(QStringLiteral("maps/") + anyText() + QStringLiteral(".png"));
        if (oneIn(5))
            property->lock(true);
    }

    void setValue(DzProperty* property)
    {
        if (auto* number = qobject_cast<DzFloatProperty*>(property))
            number->setValue(anyFloat());
        else if (auto* color = qobject_cast<DzColorProperty*>(property))
            color->setColorValue(
                QColor(below(256), below(256), below(256), oneIn(8) ? below(256) : 255));
        else if (auto* items = qobject_cast<DzEnumProperty*>(property))
            items->setValue(below(items->getNumItems()));
        else if (auto* onOff = qobject_cast<DzBoolProperty*>(property))
            onOff->setBoolValue(oneIn(2));
        else if (auto* whole = qobject_cast<DzIntProperty*>(property))
            whole->setValue(below(2001) - 1000);
        else if (auto* image = qobject_cast<DzImageProperty*>(property))
            image->setValue(QStringLiteral("images/") + anyText());
        else if (auto* text = qobject_cast<DzStringProperty*>(property))
            text->setValue(anyText());
    }

    /// Feeds an input from a brick that fits, if there is one; now and then from two.
    void linkSomething(DzBrickParam* input)
    {
        const bool isRoot = input->getTopBrickOwner()->inherits("VireoRootBrick");
        if (!input->isInput() || !(isRoot || oneIn(3)))
            return;
        QVector<DzBrickParam*> outputs;
        for (VireoBrickBase* brick : qAsConst(m_bricks)) {
            DzBrickParam* output = brick->findParameterByName(QStringLiteral("result"));
            if (output && output->getType() == input->getType())
                outputs.append(output);
        }
        for (int links = oneIn(12) ? 2 : 1; links > 0 && !outputs.isEmpty(); --links)
            input->addConnection(outputs.at(below(outputs.size())));
    }

    VireoBrickUser* m_user;
    std::mt19937 m_random;
    QList<VireoBrickBase*> m_bricks;
};

} // namespace

void buildRandomNetwork(VireoBrickUser* user, quint32 seed)
{
    Builder(user, seed).build();
}
