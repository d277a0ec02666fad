// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// A piece of shader source.
class DzShaderString
{
public:
    explicit DzShaderString(const QString& text = QString())
        : m_text(text)
    {
    }

    QString getText() const { return m_text; }

private:
    QString m_text;
};
