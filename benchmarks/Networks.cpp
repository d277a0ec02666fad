// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Networks.h"

#include "VireoRootBrick.h"
#include "dzapp.h"
#include "dzbrickparam.h"

#include <QVector>
#include <cstdio>
#include <cstdlib>

namespace {

DzShaderBrick* add(Network& network, const char* className)
{
    auto* brick
        = qobject_cast<DzShaderBrick*>(dzApp->createInstance(QString::fromLatin1(className)));
    require(brick && network.user->addBrick(brick) != 0, className);
    return brick;
}

void link(DzShaderBrick* from, DzShaderBrick* to, const char* input)
{
    DzBrickParam* param = to->findParameterByName(QString::fromLatin1(input));
    require(
        param && param->addConnection(from->findParameterByName(QStringLiteral("result"))), input);
}

Network newNetwork(int textures, DzShaderBrick** material)
{
    Network network { std::make_unique<VireoBrickUser>(), nullptr, textures };
    network.root = static_cast<VireoRootBrick*>(add(network, "VireoRootBrick"));
    *material = add(network, "VireoMatMatteBrick");
    link(*material, network.root, "material");
    return network;
}

} // namespace

void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "benchmark network is wrong: %s\n", what);
    std::exit(1);
}

Network buildMixTree(int textures)
{
    DzShaderBrick* material = nullptr;
    Network network = newNetwork(textures, &material);
    QVector<DzShaderBrick*> bricks;
    for (int i = 0; i < textures; ++i) {
        bricks.append(add(network, "VireoTexClrMixBrick"));
        if (i == 0)
            link(bricks.at(0), material, "Kd");
        else
            link(bricks.at(i), bricks.at((i - 1) / 2), i % 2 == 1 ? "tex1" : "tex2");
    }
    return network;
}

Network buildScaleChain(int textures)
{
    DzShaderBrick* material = nullptr;
    Network network = newNetwork(textures, &material);
    DzShaderBrick* last = material;
    for (int i = 0; i < textures; ++i) {
        DzShaderBrick* brick = add(network, "VireoTexFltScaleBrick");
        link(brick, last, i == 0 ? "bumpmap" : "tex1");
        last = brick;
    }
    return network;
}

Network buildMixedNetwork(int textures)
{
    DzShaderBrick* material = nullptr;
    Network network = newNetwork(textures, &material);
    // Each mix carries a checkerboard, an image map and the next mix; the constant is the spare
    // part that users leave lying about.
    DzShaderBrick* mix = nullptr;
    for (int i = 0; i < textures; i += 4) {
        DzShaderBrick* next = add(network, "VireoTexClrMixBrick");
        link(next, mix ? mix : material, mix ? "tex1" : "Kd");
        mix = next;
        link(add(network, "VireoTexFltCheckerboardBrick"), mix, "amount");
        link(add(network, "VireoTexClrImageMapBrick"), mix, "tex2");
        add(network, "VireoTexClrConstantBrick");
    }
    return network;
}
