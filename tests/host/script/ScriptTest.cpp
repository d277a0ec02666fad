// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickTable.h"
#include "ScriptRunner.h"
#include "dzclassfactory.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

void writeText(const QString& path, const char* text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(text);
}

} // namespace

TEST(Script, printSeparatesWithBlanksAndIsUtf8)
{
    EXPECT_PRINTS("a 1 true null undefined\n\xc3\xbc\xe8\x9e\xa2\n\n",
        "print('a', 1, true, null, undefined); print('\xc3\xbc\\u87a2'); print();");
}

TEST(Script, aFailingPrinterIsAnErrorOfTheScript)
{
    DzScript script;
    script.setPrintHandler([](const QString&, QString* error) {
        *error = QStringLiteral("no paper");
        return false;
    });
    script.setCode(QStringLiteral("\nprint('x')"), QStringLiteral("p.dsa"));
    EXPECT_FALSE(script.execute());
    EXPECT_EQ(QStringLiteral("p.dsa:2: Error: print: no paper"), script.getErrorMessage());
}

TEST(Script, argumentsAreInArgs)
{
    const ScriptRunner run(QStringLiteral("print(args.length, args[1]); getArguments().push('c');"
                                          "print(getArguments().length, getScriptFileName())"),
        { QStringLiteral("a b"), QStringLiteral("\u00fc") });
    EXPECT_TEXT(QStringLiteral("2 \u00fc\n2 test.dsa\n"), run.output());
}

TEST(Script, eachExecutionStartsAnew)
{
    DzScript script;
    QString output;
    script.setPrintHandler([&output](const QString& text, QString*) {
        output += text;
        return true;
    });
    script.setCode(
        QStringLiteral("print(typeof count); var count = 1;"), QStringLiteral("again.dsa"));
    EXPECT_TRUE(script.execute());
    EXPECT_TRUE(script.execute());
    EXPECT_TEXT(QStringLiteral("undefined\nundefined\n"), output);
}

TEST(Script, everyRegisteredBrickIsMadeByName)
{
    QString expected;
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories())
        if (factory->getMetaObject().inherits(&VireoBrickBase::staticMetaObject))
            expected += factory->className() + QLatin1Char('\n');
    EXPECT_EQ(expected.count(QLatin1Char('\n')), brickTable().size());
    const ScriptRunner run("var all = this;"
                           "App.getClassNames('VireoBrickBase').forEach(function (name) {"
                           "    var brick = new all[name]();"
                           "    if (!(brick instanceof all[name]) || !(brick instanceof DzElement))"
                           "        throw new Error(name);"
                           "    print(brick.className());"
                           "});");
    EXPECT_TRUE(run.succeeded()) << run.error().toStdString();
    EXPECT_TEXT(expected, run.output());
}

TEST(Script, anObjectIsAlwaysTheSameValue)
{
    EXPECT_PRINTS("true true false kept\n",
        "var a = new VireoMatMatteBrick(), b = new VireoMatMatteBrick();"
        "var kd = a.findParameterByName('Kd'); kd.note = 'kept';"
        "print(kd === a.getParameter(2), kd.getTopBrickOwner() === a,"
        "    kd === b.findParameterByName('Kd'), a.findParameterByName('Kd').note);");
}

TEST(Script, anObjectSurvivesAnyAmountOfGarbage)
{
    EXPECT_PRINTS("Kd true\n",
        "var brick = new VireoMatMatteBrick();"
        "for (var i = 0; i < 200000; ++i) { brick.findParameterByName('Kd').x = [i, {}]; }"
        "var kd = brick.findParameterByName('Kd'); print(kd.name, kd.isInput());");
}

TEST(Script, objectsHaveATextForm)
{
    EXPECT_PRINTS("VireoMatMatteBrick DzColorProperty \"Kd\" in VireoMatMatteBrick\n",
        "var b = new VireoMatMatteBrick();"
        "print(b, b.getParameter(2).getProperty(0), 'in ' + b);");
}

TEST(Script, enumerationsStandOnTheirClass)
{
    EXPECT_PRINTS("1 7 2 4 1 7 true\n",
        "print(DzBrickParam.FloatType, DzBrickParam.StringType, DzBrickParam.OutputDirection,"
        "    DzSettings.SettingsValue, DzBrickSet.Surface, DzPropertyParam.StringType,"
        "    (function () { DzBrickParam.FloatType = 9; return DzBrickParam.FloatType === 1; "
        "})());");
}

TEST(Script, classesThatCannotBeMadeSaySo)
{
    EXPECT_FAILS(
        "test.dsa:1: TypeError: DzShaderBrick cannot be made by a script", "new DzShaderBrick()");
    EXPECT_FAILS("test.dsa:1: TypeError: DzScene cannot be made by a script", "new DzScene()");
    EXPECT_FAILS("test.dsa:1: TypeError: VireoMatMatteBrick is a class: write \"new "
                 "VireoMatMatteBrick(...)\"",
        "VireoMatMatteBrick()");
    EXPECT_FAILS("test.dsa:1: TypeError: new VireoMatMatteBrick: takes 0 arguments at most",
        "new VireoMatMatteBrick(1)");
    EXPECT_FAILS("test.dsa:1: TypeError: new DzFloatProperty: argument 4 is \"x\"; a number is "
                 "wanted",
        "new DzFloatProperty('a', true, true, 'x')");
}

TEST(Script, wrongArgumentsAreNamed)
{
    const QString setup
        = QStringLiteral("var brick = new VireoMatMatteBrick();"
                         "var sigma = brick.findParameterByName('sigma').getProperty(0);"
                         "var kd = brick.findParameterByName('Kd').getProperty(0);\n");
    const QList<QStringList> cases {
        { "sigma.setValue()", "DzFloatProperty.setValue: it was given 0 arguments; it takes 1" },
        { "sigma.setValue(1, 2)",
            "DzFloatProperty.setValue: it was given 2 arguments; it takes 1" },
        { "sigma.setValue('x')",
            "DzFloatProperty.setValue: argument 1 is \"x\"; a number is wanted" },
        { "sigma.setValue(0 / 0)",
            "DzFloatProperty.setValue: argument 1 is NaN; a number from -3.40282e+38 to "
            "3.40282e+38 is wanted" },
        { "brick.getParameter(1.5)",
            "DzShaderBrick.getParameter: argument 1 is 1.5; a whole number is wanted" },
        { "brick.getParameter(1e10)",
            "DzShaderBrick.getParameter: argument 1 is 10000000000; a number from -2.14748e+09 to "
            "2.14748e+09 is wanted" },
        { "brick.findParameterByName(brick)",
            "DzShaderBrick.findParameterByName: argument 1 is a VireoMatMatteBrick; a text is "
            "wanted" },
        { "brick.canBeFedBy(sigma)",
            "DzShaderBrick.canBeFedBy: argument 1 is a DzFloatProperty; a DzShaderBrick is "
            "wanted" },
        { "brick.canBeFedBy(undefined)",
            "DzShaderBrick.canBeFedBy: argument 1 is undefined; a DzShaderBrick is wanted" },
        { "brick.canBeFedBy({})",
            "DzShaderBrick.canBeFedBy: argument 1 is an Object; a DzShaderBrick is wanted" },
        { "kd.setColorValue('no colour')",
            "DzColorProperty.setColorValue: argument 1 is \"no colour\"; a Color is wanted" },
        { "kd.setColorValue([1, 2, 300])",
            "DzColorProperty.setColorValue: argument 1 is an Array; a Color is wanted" },
        { "kd.lock('yes')", "DzProperty.lock: argument 1 is \"yes\"; true or false is wanted" },
        { "kd.setMap([])", "DzNumericProperty.setMap: none of its forms takes an Array" },
        { "kd.setMap.call(brick, 'x')",
            "DzNumericProperty.setMap: it is called for a VireoMatMatteBrick; a DzNumericProperty "
            "is wanted" },
        { "kd.setMap.call(3, 'x')",
            "DzNumericProperty.setMap: it is called for 3; a DzNumericProperty is "
            "wanted" },
        { "kd.label = brick",
            "DzProperty.label: the new value is a VireoMatMatteBrick; a text is wanted" },
    };
    for (const QStringList& entry : cases) {
        const ScriptRunner run(setup + entry.at(0));
        EXPECT_FALSE(run.succeeded()) << entry.at(0).toStdString();
        EXPECT_EQ(QStringLiteral("test.dsa:2: TypeError: ") + entry.at(1), run.error());
    }
}

TEST(Script, thereIsNoWayAroundTheClassOfAnObject)
{
    EXPECT_FAILS("test.dsa:1: TypeError: DzScene.clear: it is called for a VireoMatMatteBrick; a "
                 "DzScene is wanted",
        "DzScene.prototype.clear.call(new VireoMatMatteBrick())");
    EXPECT_FAILS("test.dsa:1: TypeError: DzScene.clear: it is called for an Object; a DzScene is "
                 "wanted",
        "DzScene.prototype.clear()");
}

TEST(ScriptErrors, nameFileLineAndMessage)
{
    EXPECT_FAILS("test.dsa:3: ReferenceError: Can't find variable: nothing", "\n\nnothing();");
    EXPECT_FAILS("test.dsa:2: SyntaxError: Parse error", "print('x');\nvar x = ;");
    EXPECT_FAILS("test.dsa:2: a text", "\nthrow 'a text'");
    EXPECT_FAILS("test.dsa:2: 17", "\nthrow 17");
    EXPECT_FAILS("test.dsa:2: Error: two lines", "\nthrow new Error('two\\nlines')");
    EXPECT_FAILS("test.dsa:1: undefined", "throw undefined");
}

TEST(ScriptErrors, theCallsThatLedThereAreKept)
{
    const ScriptRunner run("function inner(a) { missing(); }\n"
                           "function outer() {\n    inner(1);\n}\n"
                           "outer();");
    EXPECT_EQ(run.script().getErrorFile(), QStringLiteral("test.dsa"));
    EXPECT_EQ(run.script().getErrorLine(), 1);
    const QStringList calls = run.script().getErrorBacktrace();
    ASSERT_EQ(calls.size(), 3);
    EXPECT_TRUE(calls.at(0).contains(QLatin1String("inner"))) << calls.at(0).toStdString();
    EXPECT_TRUE(calls.at(0).endsWith(QLatin1String("test.dsa:1"))) << calls.at(0).toStdString();
    EXPECT_TRUE(calls.at(1).endsWith(QLatin1String("test.dsa:3"))) << calls.at(1).toStdString();
    EXPECT_TRUE(calls.at(2).endsWith(QLatin1String("test.dsa:5"))) << calls.at(2).toStdString();
}

TEST(ScriptErrors, canBeCaught)
{
    EXPECT_PRINTS("TypeError DzShaderBrick.getParameter: argument 1 is \"x\"; a number is wanted\n"
                  "after\n",
        "try { new VireoMatMatteBrick().getParameter('x'); }"
        "catch (error) { print(error.name, error.message); }"
        "print('after');");
}

TEST(ScriptErrors, aScriptThatEndsWithAnErrorAsItsValueIsFine)
{
    EXPECT_PRINTS("", "new Error('only a value')");
}

TEST(ScriptErrors, endlessRecursionOfAnyKindIsAnError)
{
    for (const char* code : { "function f() { return f() + 1; } f();",
             "var list = [2, 1]; function f() { list.sort(f); } f();",
             "var o = { toString: function () { return '' + o; } }; print(o);",
             "var o = { toString: function () { print(o); return ''; } }; print(o);",
             "function f() { new DzNode('' + { toString: f }); } f();",
             "function f() { eval('f()'); } f();", "function f() { return new f(); } f();",
             "function f() { 'x'.replace(/x/, f); } f();", "function f() { [1].forEach(f); } f();",
             "function f() { f.apply(null, [1]); } f();",
             "var o = {}; o.__defineGetter__('x', function () { return o.x; }); o.x;" }) {
        const ScriptRunner run(code);
        EXPECT_FALSE(run.succeeded()) << code;
        EXPECT_TRUE(run.error().contains(QLatin1String("Maximum call stack size exceeded")))
            << code << ": " << run.error().toStdString();
    }
}

TEST(ScriptErrors, deeplyNestedCodeIsAnError)
{
    for (const QStringList& part : QList<QStringList> { { "(", "1", ")" }, { "[", "", "]" },
             { "{", "", "}" }, { "-", "1", "" }, { "f(", "", ")" }, { "if (1) ", "1", "" },
             { "a = ", "1", "" }, { "function f() {", "", "}" }, { "1+", "1", "" },
             { "!", "1", "" }, { "a.", "a", "" }, { "new ", "a", "" }, { "a ? ", "1", " : 1" } }) {
        const int depth = 100000;
        const ScriptRunner run(
            part.at(0).repeated(depth) + part.at(1) + part.at(2).repeated(depth));
        // Long chains may work; none may end the program.
        EXPECT_TRUE(run.succeeded() || run.error().startsWith(QLatin1String("test.dsa:1: ")))
            << part.at(0).toStdString() << run.error().left(200).toStdString();
    }
}

TEST(ScriptErrors, deeplyNestedValuesAreNoTrouble)
{
    EXPECT_PRINTS("done\n",
        "var list = []; list.push(list); var object = {}; object.self = object;"
        "[list, object].forEach(function (value) {"
        "    try { new DzSettings().setStringValue('a', value); } catch (error) {}"
        "    try { new DzNode('n').copyFrom(value); } catch (error) {}"
        "    try { '' + value } catch (error) {}"
        "});"
        "print('done');");
}

TEST(ScriptInclude, startsAtTheIncludingFile)
{
    QTemporaryDir folder;
    QDir(folder.path()).mkpath(QStringLiteral("lib/more"));
    writeText(folder.filePath(QStringLiteral("lib/a.dsa")),
        "include('more/b.dsa'); function fromA() { return 'a' + fromB(); }");
    writeText(folder.filePath(QStringLiteral("lib/more/b.dsa")),
        "var count = 1; function fromB() { return 'b'; }");
    const ScriptRunner run(
        QStringLiteral("(function () { include('lib/a.dsa'); })(); print(fromA(), count);"
                       "count = 5; include('lib/more/b.dsa'); print(count);"),
        {}, folder.filePath(QStringLiteral("main.dsa")));
    EXPECT_TRUE(run.succeeded()) << run.error().toStdString();
    EXPECT_TEXT(QStringLiteral("ab 1\n5\n"), run.output());
}

TEST(ScriptInclude, aFileThatIncludesItselfIsAnError)
{
    QTemporaryDir folder;
    writeText(folder.filePath(QStringLiteral("a.dsa")), "include('./b.dsa');");
    writeText(folder.filePath(QStringLiteral("b.dsa")), "\ninclude('../%1/a.dsa');");
    writeText(folder.filePath(QStringLiteral("b.dsa")), "\ninclude('a.dsa');");
    const QString main = folder.filePath(QStringLiteral("main.dsa"));
    writeText(main, "include('main.dsa')");
    const ScriptRunner run(QStringLiteral("include('a.dsa')"), {}, main);
    EXPECT_EQ(run.error(),
        folder.filePath(QStringLiteral("./b.dsa"))
            + QStringLiteral(":2: Error: include: a.dsa includes itself, by way of b.dsa"));
    const ScriptRunner self(QStringLiteral("include('main.dsa')"), {}, main);
    EXPECT_EQ(self.error(),
        main + QStringLiteral(":1: Error: include: main.dsa includes itself, by way of main.dsa"));
}

TEST(ScriptInclude, errorsNameTheirOwnFile)
{
    QTemporaryDir folder;
    const QString lib = folder.filePath(QStringLiteral("lib.dsa"));
    const QString main = folder.filePath(QStringLiteral("main.dsa"));
    writeText(lib, "function f() {\n    missing();\n}");
    EXPECT_EQ(ScriptRunner(QStringLiteral("include('lib.dsa');\n\nf();"), {}, main).error(),
        lib + QStringLiteral(":2: ReferenceError: Can't find variable: missing"));
    writeText(lib, "function f() {\n    throw 'text';\n}");
    EXPECT_EQ(ScriptRunner(QStringLiteral("include('lib.dsa');\n\nf();"), {}, main).error(),
        lib + QStringLiteral(":2: text"));
    writeText(lib, "\n\nvar = 3;");
    EXPECT_EQ(ScriptRunner(QStringLiteral("include('lib.dsa')"), {}, main).error(),
        lib + QStringLiteral(":3: SyntaxError: Parse error"));
    EXPECT_EQ(ScriptRunner(QStringLiteral("\ninclude('none.dsa')"), {}, main).error(),
        main
            + QStringLiteral(":2: Error: include: cannot read %1: No such file or directory; check "
                             "its name and its permissions")
                  .arg(folder.filePath(QStringLiteral("none.dsa"))));
    writeText(lib, "print('\xff')");
    EXPECT_EQ(ScriptRunner(QStringLiteral("include('lib.dsa')"), {}, main).error(),
        main
            + QStringLiteral(":1: Error: include: cannot read %1: it is not UTF-8 text; save it as "
                             "UTF-8")
                  .arg(lib));
}

TEST(ScriptInclude, anErrorInAnIncludedFileCanBeCaught)
{
    QTemporaryDir folder;
    writeText(folder.filePath(QStringLiteral("lib.dsa")), "throw new Error('inside')");
    const ScriptRunner run(QStringLiteral("try { include('lib.dsa'); print('not reached'); }"
                                          "catch (error) { print(error.message); }"),
        {}, folder.filePath(QStringLiteral("main.dsa")));
    EXPECT_TRUE(run.succeeded()) << run.error().toStdString();
    EXPECT_TEXT(QStringLiteral("inside\n"), run.output());
}

TEST(ScriptFile, aByteOrderMarkIsLeftOut)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bom.dsa"));
    writeText(path, "\xef\xbb\xbfthrow 1");
    DzScript script;
    EXPECT_TRUE(script.loadFromFile(path));
    EXPECT_FALSE(script.execute());
    EXPECT_EQ(script.getErrorMessage(), path + QStringLiteral(":1: 1"));
}

TEST(ScriptFile, whatCannotBeReadIsNamed)
{
    QTemporaryDir folder;
    DzScript script;
    EXPECT_FALSE(script.loadFromFile(folder.filePath(QStringLiteral("none.dsa"))));
    EXPECT_EQ(script.getErrorMessage(),
        QStringLiteral("cannot read %1: No such file or directory; check its name and its "
                       "permissions")
            .arg(folder.filePath(QStringLiteral("none.dsa"))));
    EXPECT_FALSE(script.loadFromFile(folder.path()));
    EXPECT_TRUE(script.getErrorMessage().contains(QLatin1String("it is a folder")));
}
