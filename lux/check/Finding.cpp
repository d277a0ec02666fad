// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Finding.h"

namespace lux {

namespace {

const char* const severityWords[] = { "crash", "refused", "surprising", "ignored", "portability" };

const char* const remedyWords[] = { "set", "link a texture", "link a material", "choose a file",
    "put an image map before", "use slashes" };

} // namespace

QString severityWord(Severity severity)
{
    return QLatin1String(severityWords[static_cast<int>(severity)]);
}

QString remedyWord(Remedy::Action action)
{
    return QLatin1String(remedyWords[action]);
}

bool findRemedy(const QString& word, Remedy::Action* action)
{
    for (int i = 0; i <= Remedy::UseSlashes; ++i) {
        if (word != QLatin1String(remedyWords[i]))
            continue;
        *action = static_cast<Remedy::Action>(i);
        return true;
    }
    return false;
}

} // namespace lux
