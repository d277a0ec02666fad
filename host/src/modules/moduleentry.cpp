// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "moduleentry.h"

#include <QCoreApplication>
#include <exception>

namespace {

typedef DzVersion (*GetVersion)();
typedef DzPlugin* (*GetDefinition)();

const char* const versionSymbol = "getSDKVersion";
const char* const definitionSymbol = "getPluginDefinition";

/// Characters of a module's own message that are shown.
const int longestMessage = 200;

QString text(const char* source)
{
    return QCoreApplication::translate("DzPluginMgr", source);
}

QString missing(const char* symbol)
{
    return text("it lacks the entry point \"%1\"").arg(QLatin1String(symbol));
}

} // namespace

ModuleEntry enterModule(const ModuleSymbols& symbols, const std::function<void(ModuleStage)>& begin)
{
    ModuleEntry entry;
    const auto getVersion = reinterpret_cast<GetVersion>(symbols(versionSymbol));
    const auto getDefinition = reinterpret_cast<GetDefinition>(symbols(definitionSymbol));
    if (!getVersion || !getDefinition) {
        entry.refusal = missing(getVersion ? definitionSymbol : versionSymbol);
        return entry;
    }
    try {
        begin(ModuleStage::Version);
        entry.sdkVersion = getVersion();
        if (DZ_SDK_VERSION < entry.sdkVersion) {
            entry.refusal = text("it needs SDK version %1, this program offers %2; use a newer "
                                 "program or an older module")
                                .arg(entry.sdkVersion.getLongVersionString(),
                                    DZ_SDK_VERSION.getLongVersionString());
            return entry;
        }
        begin(ModuleStage::Definition);
        entry.definition = getDefinition();
        if (!entry.definition)
            entry.refusal = text("it gives no definition");
    } catch (const std::exception& problem) {
        entry.refusal = text("it throws: %1").arg(moduleMessage(problem.what()));
    } catch (...) {
        entry.refusal = text("it throws");
    }
    return entry;
}

QString moduleMessage(const char* utf8)
{
    // Only as much as can be shown is read: what a module calls a message may be anything.
    const int most = 4 * longestMessage;
    const QString message
        = QString::fromUtf8(utf8, static_cast<int>(qstrnlen(utf8, most))).simplified();
    return message.size() > longestMessage ? message.left(longestMessage) + QStringLiteral("...")
                                           : message;
}
