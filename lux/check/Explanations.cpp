// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Explanations.h"

#include <QFile>
#include <QHash>

#include <nlohmann/json.hpp>

// The macro must stand outside every namespace: a static library's data is left out of the program
// unless somebody asks for it.
static void keepExplanations()
{
    Q_INIT_RESOURCE(explanations);
}

namespace {

QString text(const nlohmann::json& value)
{
    return QString::fromStdString(value.get_ref<const std::string&>());
}

class Sentences
{
public:
    Sentences()
    {
        keepExplanations();
        QFile file(QStringLiteral(":/vireo/explanations.json"));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("the explanations are not compiled in");
        const auto content = nlohmann::json::parse(file.readAll().toStdString());
        for (const auto& [className, sentence] : content.at("bricks").items())
            m_bricks.insert(QString::fromStdString(className), text(sentence));
        for (const auto& [name, sentence] : content.at("inputs").items())
            m_inputs.insert(QString::fromStdString(name), text(sentence));
        for (const auto& exception : content.at("exceptions"))
            for (const auto& className : exception.at("bricks"))
                for (const auto& name : exception.at("inputs"))
                    m_inputs.insert(key(text(className), text(name)), text(exception.at("text")));
    }

    QString ofBrick(const QString& className) const { return m_bricks.value(className); }

    QString ofInput(const QString& className, const QString& name) const
    {
        const auto exception = m_inputs.constFind(key(className, name));
        if (exception != m_inputs.constEnd())
            return *exception;
        int digits = name.size();
        while (digits > 0 && name.at(digits - 1).isDigit())
            --digits;
        const QString pattern = name.left(digits) + QLatin1String("%1");
        const auto numbered = m_inputs.constFind(key(className, pattern));
        if (digits < name.size() && numbered != m_inputs.constEnd())
            return QString(*numbered).replace(QLatin1String("%1"), name.mid(digits));
        return m_inputs.value(name);
    }

private:
    static QString key(const QString& className, const QString& name)
    {
        return className + QLatin1Char('.') + name;
    }

    QHash<QString, QString> m_bricks;
    QHash<QString, QString> m_inputs; ///< by name, or by class and name for the exceptions
};

const Sentences& sentences()
{
    static const Sentences all;
    return all;
}

} // namespace

QString Explanations::ofBrick(const QString& className)
{
    return sentences().ofBrick(className);
}

QString Explanations::ofInput(const QString& className, const QString& inputName)
{
    return sentences().ofInput(className, inputName);
}
