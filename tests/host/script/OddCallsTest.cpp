// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ScriptRunner.h"
#include "dzscene.h"
#include "dzundostack.h"

namespace {

/// Calls whatever can be reached, in a random order, with whatever is at hand.
const char* const oddCalls = R"(
var seed = Number(args[0]);
function random(limit) {
    seed = (seed * 16807 + 11) % 2147483647;
    return seed % limit;
}
var all = this;
var classes = Object.getOwnPropertyNames(this).filter(function (name) {
    return /^(Dz|Vireo)/.test(name);
});
var values = [null, undefined, true, 0, 1, -1, 2.5, 1e10, NaN, '', 'Kd', 'result', 'count', 'a.png',
    '/', [], [1, 2, 3], [[]], {}, { x: 1, y: 2, z: 3 }, new Color(1, 2, 3), function () { ++calls; },
    App, Scene, UndoStack];
var calls = 0, errors = 0;
function anyOf(list) { return list[random(list.length)]; }
function keep(value) {
    if (values.length < 400)
        values.push(value);
    else
        values[25 + random(375)] = value;
}
function functionsOf(object) {
    var names = [];
    for (var type = object; type && type !== Object.prototype; type = Object.getPrototypeOf(type))
        names = names.concat(Object.getOwnPropertyNames(type));
    return names;
}
function attempt() {
    var given = [];
    for (var count = random(4); count > 0; --count)
        given.push(anyOf(values));
    if (random(8) === 0) {
        var type = all[anyOf(classes)];
        keep(random(2) ? new type() : new type(given[0], given[1], given[2]));
        return;
    }
    var target = anyOf(values);
    if (target === null || typeof target !== 'object' || Array.isArray(target))
        return;
    var names = functionsOf(target);
    // These open windows or write files.
    var name = anyOf(names);
    if (/^(applyToScene|saveScene|save|runAction|mkpath|remove|open|close)$/.test(name))
        return;
    var member = target[name];
    if (typeof member === 'function')
        keep(member.apply(target, given));
    else if (member && member.connect && random(2))
        member.connect(values[21]);
    else if (random(4) === 0)
        target[name] = given[0];
}
for (var round = 0; round < 4000; ++round) {
    try { attempt(); } catch (error) { ++errors; }
}
print(errors > 0, errors < 4000);
)";

class OddCalls : public testing::TestWithParam<int>
{
protected:
    ~OddCalls() override
    {
        const DzUndoStackLock lock;
        dzUndoStack->clearAll();
        dzScene->clear();
    }
};

} // namespace

TEST_P(OddCalls, doNoHarm)
{
    const Warnings warnings;
    const ScriptRunner run(QString::fromLatin1(oddCalls), { QString::number(GetParam()) });
    EXPECT_TRUE(run.succeeded()) << run.error().toStdString();
    EXPECT_TEXT(QStringLiteral("true true\n"), run.output());
}

INSTANTIATE_TEST_SUITE_P(Seeds, OddCalls, testing::Range(1, 9));
