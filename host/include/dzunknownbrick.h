// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"
#include "dzshaderbrick.h"

/// Stands for a brick whose class no module offers: it keeps the brick's data and links, so that
/// they are saved again, and writes no text. Only loading makes one.
class DzUnknownBrick : public DzShaderBrick
{
    Q_OBJECT

public:
    /// `stored` is everything that the file says of the brick.
    explicit DzUnknownBrick(const DzSettings& stored);
    ~DzUnknownBrick() override;

    /// What the file says of the brick, to be written back.
    const DzSettings* getStored() const { return &m_stored; }
    /// The parameter of this name and direction, made when there is none.
    DzBrickParam* paramFor(const QString& name, DzBrickParam::Direction direction);

    QString getPreferredName() const override;
    QString getDefaultCategory() const override { return QString(); }
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
    QString getStoredClassName() const override;

private:
    DzSettings m_stored;
    QHash<QString, DzBrickParam*> m_paramIndex;
};
