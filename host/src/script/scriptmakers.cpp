// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptmakers.h"

#include "dzapp.h"
#include "dzboolproperty.h"
#include "dzbrickaction.h"
#include "dzcolorproperty.h"
#include "dzdefaultmaterial.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimagemgr.h"
#include "dzimageproperty.h"
#include "dzmatrixparam.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzoutparam.h"
#include "dzpropertyparam.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzsimpleelementdata.h"
#include "dzstringproperty.h"
#include "dztexture.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "dzvec3param.h"
#include "scriptengine.h"

#include <QCoreApplication>
#include <QScriptContext>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

/// Reads the arguments of a constructor in order; those that are left out stay as they are.
class Arguments
{
public:
    Arguments(const ScriptEngine* engine, QScriptContext* context, QString* error)
        : m_engine(engine)
        , m_context(context)
        , m_error(error)
    {
    }

    Arguments& operator>>(QString& value)
    {
        return read("QString", [&](const ScriptStorage& given) { value = given.text; });
    }
    Arguments& operator>>(bool& value)
    {
        return read("bool", [&](const ScriptStorage& given) { value = given.boolean; });
    }
    Arguments& operator>>(int& value)
    {
        return read("int", [&](const ScriptStorage& given) { value = given.integer; });
    }
    Arguments& operator>>(float& value)
    {
        return read("float", [&](const ScriptStorage& given) { value = given.single; });
    }
    Arguments& operator>>(QColor& value)
    {
        return read("QColor", [&](const ScriptStorage& given) { value = given.color; });
    }

    /// The new object if all was read and nothing is left, else null.
    template <typename Make>
    QObject* make(const Make& make) const
    {
        if (m_error->isEmpty() && m_index < m_context->argumentCount())
            *m_error = text("takes %1 arguments at most").arg(m_index);
        return m_error->isEmpty() ? make() : nullptr;
    }

private:
    template <typename Take>
    Arguments& read(const char* typeName, const Take& take)
    {
        const int index = m_index++;
        if (!m_error->isEmpty() || index >= m_context->argumentCount())
            return *this;
        ScriptStorage storage;
        const ScriptType type = ScriptType::find(typeName, &QObject::staticMetaObject);
        QString problem;
        if (m_engine->conversion().read(
                m_context->argument(index), type, false, &storage, &problem))
            take(storage);
        else
            *m_error = text("argument %1 %2").arg(index + 1).arg(problem);
        return *this;
    }

    const ScriptEngine* m_engine;
    QScriptContext* m_context;
    QString* m_error;
    int m_index = 0;
};

/// The maker of an element or another object that takes a name alone.
template <typename T>
ScriptClasses::Maker namedMaker(const ScriptEngine* engine)
{
    return [engine](QScriptContext* context, QString* error) {
        QString name;
        Arguments arguments(engine, context, error);
        arguments >> name;
        return arguments.make([&] { return new T(name); });
    };
}

template <typename T>
ScriptClasses::Maker plainMaker(const ScriptEngine* engine)
{
    return scriptPlainMaker(engine, [] { return new T; });
}

/// The maker of a property that can be animated: name, can be animated, is a user's, default.
template <typename T, typename Value>
ScriptClasses::Maker numericMaker(const ScriptEngine* engine)
{
    return [engine](QScriptContext* context, QString* error) {
        QString name;
        bool canAnimate = true;
        bool isUser = true;
        Value value = Value();
        Arguments arguments(engine, context, error);
        arguments >> name >> canAnimate >> isUser >> value;
        return arguments.make([&] { return new T(name, canAnimate, isUser, value); });
    };
}

ScriptClasses::Maker enumMaker(const ScriptEngine* engine)
{
    return [engine](QScriptContext* context, QString* error) {
        QString name;
        bool canAnimate = true;
        bool isUser = true;
        Arguments arguments(engine, context, error);
        arguments >> name >> canAnimate >> isUser;
        return arguments.make([&] { return new DzEnumProperty(name, canAnimate, isUser); });
    };
}

/// The maker of an object with a name and a flag.
template <typename T>
ScriptClasses::Maker flaggedMaker(const ScriptEngine* engine, bool flag)
{
    return [engine, flag](QScriptContext* context, QString* error) {
        QString name;
        bool given = flag;
        Arguments arguments(engine, context, error);
        arguments >> name >> given;
        return arguments.make([&] { return new T(name, given); });
    };
}

} // namespace

const std::vector<const QMetaObject*>& scriptHostClasses()
{
    static const std::vector<const QMetaObject*> classes { &DzApp::staticMetaObject,
        &DzBase::staticMetaObject, &DzBoolProperty::staticMetaObject,
        &DzBrickAction::staticMetaObject, &DzBrickParam::staticMetaObject,
        &DzBrickSet::staticMetaObject, &DzColorProperty::staticMetaObject,
        &DzDefaultMaterial::staticMetaObject, &DzElement::staticMetaObject,
        &DzElementData::staticMetaObject, &DzEnumProperty::staticMetaObject,
        &DzFileProperty::staticMetaObject, &DzFloatProperty::staticMetaObject,
        &DzImageMgr::staticMetaObject, &DzImageProperty::staticMetaObject,
        &DzIntProperty::staticMetaObject, &DzMaterial::staticMetaObject,
        &DzMatrixParam::staticMetaObject, &DzNode::staticMetaObject,
        &DzNumericProperty::staticMetaObject, &DzObject::staticMetaObject,
        &DzOutParam::staticMetaObject, &DzProperty::staticMetaObject,
        &DzPropertyParam::staticMetaObject, &DzPropertySettings::staticMetaObject,
        &DzScene::staticMetaObject, &DzSettings::staticMetaObject, &DzShaderBrick::staticMetaObject,
        &DzShape::staticMetaObject, &DzSimpleElementData::staticMetaObject,
        &DzStringProperty::staticMetaObject, &DzTexture::staticMetaObject,
        &DzUndoStack::staticMetaObject, &DzUnknownBrick::staticMetaObject,
        &DzVec3Param::staticMetaObject };
    return classes;
}

ScriptClasses::Maker scriptPlainMaker(
    const ScriptEngine* engine, const std::function<QObject*()>& make)
{
    return [engine, make](QScriptContext* context, QString* error) {
        return Arguments(engine, context, error).make(make);
    };
}

QHash<const QMetaObject*, ScriptClasses::Maker> scriptHostMakers(const ScriptEngine* engine)
{
    return {
        { &DzSettings::staticMetaObject, plainMaker<DzSettings>(engine) },
        { &DzPropertySettings::staticMetaObject, plainMaker<DzPropertySettings>(engine) },
        { &DzNode::staticMetaObject, namedMaker<DzNode>(engine) },
        { &DzObject::staticMetaObject, namedMaker<DzObject>(engine) },
        { &DzShape::staticMetaObject, namedMaker<DzShape>(engine) },
        { &DzElement::staticMetaObject, namedMaker<DzElement>(engine) },
        { &DzDefaultMaterial::staticMetaObject, namedMaker<DzDefaultMaterial>(engine) },
        { &DzSimpleElementData::staticMetaObject,
            flaggedMaker<DzSimpleElementData>(engine, false) },
        { &DzFloatProperty::staticMetaObject, numericMaker<DzFloatProperty, float>(engine) },
        { &DzIntProperty::staticMetaObject, numericMaker<DzIntProperty, int>(engine) },
        { &DzBoolProperty::staticMetaObject, numericMaker<DzBoolProperty, bool>(engine) },
        { &DzColorProperty::staticMetaObject, numericMaker<DzColorProperty, QColor>(engine) },
        { &DzEnumProperty::staticMetaObject, enumMaker(engine) },
        { &DzStringProperty::staticMetaObject, flaggedMaker<DzStringProperty>(engine, true) },
        { &DzFileProperty::staticMetaObject, flaggedMaker<DzFileProperty>(engine, true) },
        { &DzImageProperty::staticMetaObject, flaggedMaker<DzImageProperty>(engine, true) },
    };
}
