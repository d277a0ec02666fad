// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzelement.h"
#include "dzrefcounteditem.h"

#include <QColor>
#include <QVector>

class DzDrawStyle;
class DzShape;
class DzTexture;
struct DzRenderSettings;

/// A surface's material. All materials that exist stand in one list, in order of creation.
class DzMaterial : public DzElement, public DzRefCountedItem
{
    Q_OBJECT

public:
    explicit DzMaterial(const QString& name = QString());
    ~DzMaterial() override;

    static int getNumMaterials();
    static DzMaterial* getMaterial(int index);

    Q_INVOKABLE bool isSelected() const { return m_selected; }
    Q_INVOKABLE void select(bool onOff);

    /// The shapes that the material lies on.
    Q_INVOKABLE int getNumShapes() const { return m_shapes.size(); }
    Q_INVOKABLE DzShape* getShape(int index) const { return m_shapes.value(index); }

    /// Name of the kind of material, as users see it.
    Q_INVOKABLE virtual QString getMaterialName() const = 0;
    Q_INVOKABLE virtual void setDiffuseColor(QColor color) = 0;
    Q_INVOKABLE virtual QColor getDiffuseColor() const = 0;
    Q_INVOKABLE virtual void setBaseOpacity(float opacity) = 0;
    Q_INVOKABLE virtual float getBaseOpacity() const = 0;
    Q_INVOKABLE virtual void setColorMap(const DzTexture* map) = 0;
    Q_INVOKABLE virtual DzTexture* getColorMap() const = 0;
    Q_INVOKABLE virtual void setOpacityMap(const DzTexture* map) = 0;
    Q_INVOKABLE virtual DzTexture* getOpacityMap() const = 0;
    Q_INVOKABLE virtual bool isColorMappable() const = 0;
    Q_INVOKABLE virtual bool isOpacityMappable() const = 0;
    virtual bool needsTangentSpaceParams() const { return false; }
    /// True when the definition is to be saved with the scene rather than referred to.
    virtual bool shouldAlwaysEmbed() const { return false; }
    /// Called by a renderer before and after it renders what the material lies on.
    virtual void setRender(DzRenderSettings* settings) { setShader(settings); }
    virtual void unsetRender(DzRenderSettings*) {}
    /// True when the material may be baked into images without being asked.
    virtual bool allowsAutoBake() const { return true; }
    /// Called by a shape after it took the material and before it gives it up.
    virtual void addedTo(DzShape* shape);
    virtual void removedFrom(DzShape* shape);

signals:
    void selectionStateChanged(DzMaterial* material, bool onOff);

protected:
    // For the viewport.
    virtual void setGLMat(DzDrawStyle*) {}
    virtual void unsetGLMat(DzDrawStyle*) {}
    /// Hands the surface's shader to the render engine of `settings`.
    virtual void setShader(DzRenderSettings*) {}
    virtual void setTextureConvertShader(DzRenderSettings*) {}

private:
    QVector<DzShape*> m_shapes;
    int m_listSlot;
    bool m_selected = false;
};

typedef DzTSharedPointer<DzMaterial> DzMaterialPtr;
