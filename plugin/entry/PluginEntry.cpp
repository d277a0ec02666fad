// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ClassRegistration.h"
#include "dzplugin.h"
#include "dzversion.h"

#if defined(_WIN32)
#define VIREO_MODULE_EXPORT extern "C" __declspec(dllexport)
#else
#define VIREO_MODULE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

/// The module's definition, complete once static initialisation has run.
class Definition : public DzPlugin
{
public:
    Definition()
        : DzPlugin(QLatin1String("Siskin"), QString(), QString())
    {
        setVersion(0, 0, 0, 5);
        setDescription(QLatin1String("Vireo ShaderMixer Extension"));
        registerClasses(this);
    }
};

Definition definition;

} // namespace

/// The host SDK version that the plug-in was written against.
VIREO_MODULE_EXPORT DzVersion getSDKVersion()
{
    return DzVersion(4, 5, 0, 100);
}

VIREO_MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    return &definition;
}
