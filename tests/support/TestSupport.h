// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickBase.h"
#include "VireoBrickUser.h"
#include "dzapp.h"
#include "dzrefcounteditem.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>
#include <ostream>

class DzBrickParam;
class DzProperty;
class SceneCodeWriter;

/// Shows texts in failure messages.
void PrintTo(const QString& text, std::ostream* out);

typedef DzTSharedPointer<VireoBrickBase> BrickPtr;

/// A fresh brick through its factory; a failure of the test when there is none.
BrickPtr makeBrick(const char* className);

/// A fresh brick in a user's network, which owns it.
VireoBrickBase* addBrick(VireoBrickUser& user, const char* className);

/// The parameter or property of this name; a failure of the test when there is none.
DzBrickParam* param(DzShaderBrick* brick, const char* name);
DzProperty* property(DzShaderBrick* brick, const char* name);
template <typename Property>
Property* propertyAs(DzShaderBrick* brick, const char* name)
{
    auto* found = qobject_cast<Property*>(property(brick, name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

/// Links a brick's output "result" to an input and tells whether that was allowed.
bool link(DzShaderBrick* from, DzShaderBrick* to, const char* input);

/// What a brick writes alone, in a fresh run.
QString literalText(VireoBrickBase* brick);
QString placeholderText(VireoBrickBase* brick);

/// The mesh section of a fresh root.
QString freshMeshText();

/// Locks every property of a brick.
void lockAll(DzShaderBrick* brick);

/// The application's warnings while it lives.
class Warnings
{
public:
    Warnings();
    ~Warnings();

    QStringList messages;

private:
    DzApp::MessageHandler m_before;
};

/// The content of a file below the tests' folder, and of one below the project's.
QByteArray testFile(const QString& relativePath);
QByteArray projectFile(const QString& relativePath);
QString projectPath(const QString& relativePath);

/// Compares texts line by line; a difference is shown as a unified diff.
testing::AssertionResult sameText(const QString& expected, const QString& actual);

#define EXPECT_TEXT(expected, actual) EXPECT_TRUE(sameText(expected, actual))
