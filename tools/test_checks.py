#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
"""Tests of the checks: each passes a good tree and fails a bad one, at the right line."""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import check_common  # noqa: E402
import check_headers  # noqa: E402
import check_qt48  # noqa: E402
import check_ranks  # noqa: E402
import check_runpaths  # noqa: E402

TOOLS = Path(__file__).resolve().parent
LICENCE = "".join(f"// {line}\n" for line in check_headers.SPDX_LINES)


class TreeTest(unittest.TestCase):
    """Gives each test an empty tree."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, path, text):
        target = self.root / path
        target.parent.mkdir(parents=True, exist_ok=True)
        if isinstance(text, bytes):
            target.write_bytes(text)
        else:
            target.write_text(text, encoding="utf-8")

    def assertOneFinding(self, findings, place, words):
        self.assertEqual(len(findings), 1, findings)
        self.assertTrue(findings[0].startswith(place + ": "), findings)
        self.assertIn(words, findings[0])


class CommonTest(TreeTest):
    def test_commentsAndLiteralsAreBlankedInPlace(self):
        text = 'a = "x // y"; // "z"\n/* b\n*/ c = R"(d" e)"; f = \'"\'; g = 1\'000; "h"\n'
        blanked = check_common.blank_cpp(text)
        self.assertEqual(len(blanked), len(text))
        self.assertEqual(blanked.count("\n"), text.count("\n"))
        for letter in "xyzbdeh":
            self.assertNotIn(letter, blanked.replace("e = ", ""))
        for letter in "acfg":
            self.assertIn(letter, blanked)

    def test_includesInCommentsDoNotCount(self):
        text = '// #include "a.h"\n/*\n#include "b.h"\n*/\n#  include "c.h"\n#include <d>\n'
        self.assertEqual(check_common.includes(text), [(5, "c.h", True), (6, "d", False)])

    def test_filesOfAGitCheckoutAreTrackedAndNewButNotIgnored(self):
        environment = dict(os.environ, GIT_CONFIG_GLOBAL=os.devnull)
        for name in ("GIT_DIR", "GIT_WORK_TREE", "GIT_INDEX_FILE"):
            environment.pop(name, None)
        subprocess.run(["git", "init", "-q", str(self.root)], check=True, env=environment)
        self.write(".gitignore", "/build/\n")
        for path in ("tracked.h", "deleted.h", "new.h", "build/made.h"):
            self.write(path, "")
        subprocess.run(["git", "-C", str(self.root), "add", "tracked.h", "deleted.h"], check=True,
                       env=environment)
        (self.root / "deleted.h").unlink()
        self.assertEqual(check_common.tree_files(self.root), [".gitignore", "new.h", "tracked.h"])

    def test_filesOfAnUnpackedArchiveLeaveOutTheBuild(self):
        for path in ("a.h", ".ci/run", ".cache/b.h", "build/c.h", "x/d.h"):
            self.write(path, "")
        self.assertEqual(check_common.tree_files(self.root), [".ci/run", "a.h", "x/d.h"])

    def test_programExitsByItsFindings(self):
        program = [sys.executable, str(TOOLS / "check_headers.py"), str(self.root)]
        self.write("a.h", LICENCE)
        good = subprocess.run(program, capture_output=True, text=True, check=False)
        self.assertEqual((good.returncode, good.stdout, good.stderr), (0, "", ""))
        self.write("a.h", "")
        bad = subprocess.run(program, capture_output=True, text=True, check=False)
        self.assertEqual(bad.returncode, 1)
        self.assertIn("a.h:1: ", bad.stdout)
        program[-1] += "/nowhere"
        broken = subprocess.run(program, capture_output=True, text=True, check=False)
        self.assertEqual(broken.returncode, 2)
        self.assertIn("no such folder", broken.stderr)


class RanksTest(TreeTest):
    def setUp(self):
        super().setUp()
        for path in ("host/include/dzbase.h", "host/include/dzscene.h", "host/include/dzvec3.h",
                     "host/src/core/dzbase.cpp", "host/src/core/ElementPrivate.h",
                     "host/src/files/jsontext.h", "host/src/scene/dzscene.cpp",
                     "host/src/bricks/paramkeys.h",
                     "plugin/codegen/SceneCodeWriter.h", "plugin/bricks/BrickCodeCache.h",
                     "plugin/bricks/VireoBrickBase.h", "plugin/bricks/VireoParam.h",
                     "plugin/bricks/catalogue/MaterialBricks.h",
                     "plugin/material/VireoBrickUser.h", "plugin/actions/MaterialReading.h",
                     "plugin/entry/ClassRegistration.h", "mixer/model/Graph.h",
                     "mixer/canvas/Canvas.h", "mixer/panels/Panel.h", "mixer/window/Window.h",
                     "cli/Commands.h"):
            self.write(path, "")

    def check(self):
        return check_ranks.check(self.root)

    def test_downwardIncludesPass(self):
        self.write("plugin/bricks/VireoBrickBase.h",
                   '#include "VireoParam.h"\n#include "SceneCodeWriter.h"\n'
                   '#include <dzbase.h>\n#include "dzbase.h"\n#include <QHash>\n'
                   '#include <QtCore/QString>\n#include <qmath.h>\n#include <vector>\n')
        self.write("plugin/bricks/VireoBrickBase.cpp",
                   '#include "VireoBrickBase.h"\n#include "moc_VireoBrickBase.cpp"\n')
        self.write("host/src/core/dzbase.cpp",
                   '#include "dzbase.h"\n#include "ElementPrivate.h"\n#include "jsontext.h"\n'
                   '#include <nlohmann/json.hpp>\n')
        self.write("host/src/core/ElementPrivate.h", '#include "dzbase.h"\n')
        self.write("mixer/window/Window.h", '#include "mixer/canvas/Canvas.h"\n')
        self.write("cli/main.cpp", '#include "ClassRegistration.h"\n#include <CLI/CLI.hpp>\n')
        self.write("tests/mixer/AnyTest.cpp", '#include "mixer/window/Window.h"\n')
        self.assertEqual(self.check(), [])

    def test_upwardIncludeFails(self):
        self.write("plugin/bricks/VireoBrickBase.cpp",
                   '#include "VireoBrickBase.h"\n\n#include "MaterialBricks.h"\n')
        self.assertOneFinding(self.check(), "plugin/bricks/VireoBrickBase.cpp:3", "has rank")

    def test_roomsOfOneRankDoNotKnowEachOther(self):
        for path in ("plugin/material/VireoBrickUser.h", "plugin/material/VireoBrickUser.cpp"):
            with self.subTest(path=path):
                self.write(path, '#include "MaterialReading.h"\n')
                self.assertOneFinding(self.check(), path + ":1", "do not know each other")
                self.write(path, "")

    def test_insideOfTheHostHasRanks(self):
        self.write("host/src/core/dzbase.cpp", '#include "dzscene.h"\n')
        self.assertOneFinding(self.check(), "host/src/core/dzbase.cpp:1", "has rank")
        self.write("host/src/core/dzbase.cpp", "")
        self.write("host/src/scene/dzscene.cpp", '#include "paramkeys.h"\n')
        self.assertOneFinding(self.check(), "host/src/scene/dzscene.cpp:1",
                              "do not know each other")

    def test_insideOfTheMixerHasRanks(self):
        self.write("mixer/panels/Panel.cpp", '#include "Window.h"\n')
        self.assertOneFinding(self.check(), "mixer/panels/Panel.cpp:1", "has rank")

    def test_publicHeaderStandsWhereItsSourceStands(self):
        self.write("host/include/dzbase.h", '#include "dzscene.h"\n')
        self.assertOneFinding(self.check(), "host/include/dzbase.h:1", "has rank")

    def test_publicHeaderWithoutASourceStandsAsHighAsWhatItIncludes(self):
        self.write("host/src/core/dzbase.cpp", '#include "dzvec3.h"\n')
        self.assertEqual(self.check(), [])
        self.write("host/include/dzvec3.h", '#include "dzbase.h"\n')
        self.assertEqual(self.check(), [])
        self.write("host/include/dzvec3.h", '#include "dzscene.h"\n')
        self.assertOneFinding(self.check(), "host/src/core/dzbase.cpp:1", "has rank")

    def test_folderWithoutARankFails(self):
        self.write("plugin/stray/Stray.cpp", "")
        self.assertOneFinding(self.check(), "plugin/stray/Stray.cpp:1", "no rank is stated")

    def test_hostIncludesNothingAbove(self):
        self.write("host/src/core/dzbase.cpp", '#include "VireoParam.h"\n')
        self.assertEqual(len(self.check()), 2)  # The name alone is one too.
        self.write("host/src/core/dzbase.cpp", '#include "plugin/bricks/Param.h"\n')
        self.write("plugin/bricks/Param.h", "")
        self.assertOneFinding(self.check(), "host/src/core/dzbase.cpp:1", "has rank")

    def test_publicHostHeaderDoesNotNeedPrivateOne(self):
        self.write("host/include/dzbase.h", '#include "ElementPrivate.h"\n')
        self.assertOneFinding(self.check(), "host/include/dzbase.h:1", "is private")

    def test_hostNamesNothingAbove(self):
        self.write("host/src/core/dzbase.cpp", LICENCE + 'const char* name = "vireo"; \n')
        self.assertOneFinding(self.check(), "host/src/core/dzbase.cpp:3", "does not name")
        self.write("host/src/core/dzbase.cpp", LICENCE + "\n// As LuxRender does.\n")
        self.assertOneFinding(self.check(), "host/src/core/dzbase.cpp:4", "does not name")

    def test_pluginTakesNoOtherLibrary(self):
        self.write("plugin/entry/PluginEntry.cpp", "#include <nlohmann/json.hpp>\n")
        self.assertOneFinding(self.check(), "plugin/entry/PluginEntry.cpp:1",
                              "is not a header of")

    def test_pluginTakesNoPrivateHostHeader(self):
        self.write("plugin/entry/PluginEntry.cpp", '#include "ElementPrivate.h"\n')
        self.assertOneFinding(self.check(), "plugin/entry/PluginEntry.cpp:1", "out of bounds")

    def test_mixerDoesNotReachIntoThePlugin(self):
        self.write("mixer/main.cpp", '#include "plugin/bricks/VireoBrickBase.h"\n')
        self.assertOneFinding(self.check(), "mixer/main.cpp:1", "host's interface")

    def test_testSupportIsOutsideTheLayers(self):
        self.write("tests/support/Compare.h", "")
        self.write("cli/main.cpp", '#include "tests/support/Compare.h"\n')
        self.assertOneFinding(self.check(), "cli/main.cpp:1", "outside the layers")

    def test_ambiguousNameFails(self):
        self.write("plugin/bricks/Rows.h", "")
        self.write("plugin/codegen/Rows.h", "")
        self.write("plugin/entry/PluginEntry.cpp", '#include "Rows.h"\n')
        self.assertOneFinding(self.check(), "plugin/entry/PluginEntry.cpp:1",
                              "write the folder too")


class Qt48Test(TreeTest):
    GOOD = """
        // QStringLiteral in a comment
        #include <QDialog>
        #include <QtGlobal>
        #include <vector>
        #include "dzbase.h"
        const char* word = "QStringLiteral"; // std::optional
        inline bool operator==(const A& a, const A& b) { return a.n == b.n; }
        inline int twice(int n)
        {
            return 2 * n;
        }
        class VireoThing : public DzBase
        {
            Q_OBJECT
            Q_ENUMS(Kind)
        public:
            static constexpr int limit = 10;
            int count() const override;
        };
        void f(QList<int> values)
        {
            for (auto value : values)
                use([value] { return value; });
            if (values.isEmpty() || (a && g(b)))
                return;
            switch (values[0]) { default: break; }
            using namespace std::chrono;
            QElapsedTimer timer;
            QObject::connect(button, SIGNAL(clicked()), this, SLOT(accept()));
            connect(&Manager::instance(), SIGNAL(done(QList<int>)), buttons[0], SLOT(go()));
            QTimer::singleShot(0, this, SLOT(update()));
            canConnect(&VireoThing::count);
            Qt::Alignment where = Qt::AlignLeft;
            DzProperty* p = nullptr;
        }
    """

    BAD = [
        ("QStringLiteral(\"a\");", "QLatin1String"),
        ("#include <QtWidgets/QDialog>", "use <QDialog>"),
        ("#include <QtCore/QString>", "use <QString>"),
        ("#include <QtWidgets>", "whole module"),
        ("#include <QtMath>", "<qmath.h>"),
        ("#include <optional>", "C++17"),
        ("connect(a, SIGNAL(x()), [this] { f(); });", "lambda"),
        ("connect(a, SIGNAL(x()), b, [&](int n) { f(n); });", "lambda"),
        ("connect(button, &QPushButton::clicked, this, SLOT(f()));", "pointer to member"),
        ("connect(a,\n        &ns::A::x,\n        b, SLOT(f()));", "pointer to member"),
        ("disconnect(a, &A::x, b, 0);", "pointer to member"),
        ("QTimer::singleShot(0, this, &A::x);", "SLOT(...)"),
        ("QTimer::singleShot(0, [] {});", "SLOT(...)"),
        ("auto s = QOverload<int>::of(x);", "SIGNAL(...)"),
        ("auto s = qOverload<int>(x);", "SIGNAL(...)"),
        ("QSaveFile file;", "rename"),
        ("QJsonObject object;", "DzSettings"),
        ("QStandardPaths::AppDataLocation;", "dzApp"),
        ("QCommandLineParser parser;", "cli/"),
        ("QRegularExpressionMatch match;", "QRegExp"),
        ("void f(QStringView text);", "QString"),
        ("int* p = Q_NULLPTR;", "nullptr"),
        ("Q_ENUM(Kind)", "Q_ENUMS"),
        ("for (int n : qAsConst(list)) {}", "const reference"),
        ("QSignalBlocker blocker(this);", "blockSignals"),
        ("text.split(a, Qt::SkipEmptyParts);", "QString::SkipEmptyParts"),
        ("stream << Qt::endl;", "flush"),
        ("std::optional<int> n;", "out parameter"),
        ("void f(std::string_view text);", "const char*"),
        ("std::to_chars(a, b, c);", "QByteArray::number"),
        ("std::filesystem::path p;", "QFileInfo"),
        ("std::clamp(1, 2, 3);", "qBound"),
        ("if constexpr (a) {}", "if constexpr"),
        ("if (int n = f(1); n > 0) {}", "initialiser"),
        ("auto [a, b] = f();", "structured bindings"),
        ("for (const auto& [a, b] : map) {}", "structured bindings"),
        ("[[nodiscard]] int f();", "attribute"),
        ("inline const int limit = 10;", "inline variables"),
        ("inline std::vector<int> list{1};", "inline variables"),
        ("static inline int count;", "inline variables"),
        ("namespace a::b {}", "nested namespace"),
        ("static_assert(std::is_same_v<A, B>, \"\");", "::value"),
    ]

    def test_commonGroundPasses(self):
        self.write("plugin/bricks/Good.cpp", self.GOOD)
        self.assertEqual(check_qt48.check(self.root), [])

    def test_whatOnlyOneVersionHasFails(self):
        for code, words in self.BAD:
            with self.subTest(code=code):
                self.write("plugin/codegen/Bad.cpp", "// first\n\n" + code + "\n")
                self.assertOneFinding(
                    check_qt48.check(self.root), "plugin/codegen/Bad.cpp:3", words)

    def test_everyPluginFolderIsChecked(self):
        for folder in ("plugin/entry", "plugin/bricks/catalogue", "plugin/actions"):
            with self.subTest(folder=folder):
                path = f"{folder}/Bad.h"
                self.write(path, "QSaveFile f;\n")
                self.assertOneFinding(check_qt48.check(self.root), path + ":1", "QSaveFile")
                (self.root / path).unlink()

    def test_otherFoldersAreFree(self):
        for path in ("host/src/A.cpp", "cli/main.cpp", "mixer/main.cpp", "tests/bricks/T.cpp"):
            self.write(path, "auto [a, b] = f(QStringLiteral(\"x\"));\n")
        self.assertEqual(check_qt48.check(self.root), [])


class HeadersTest(TreeTest):
    def check(self):
        return check_headers.check(self.root)

    def test_goodTreePasses(self):
        hashed = LICENCE.replace("// ", "# ")
        self.write("a.h", LICENCE)
        self.write("b.cpp", "/* " + LICENCE.replace("// ", " * ") + " */\n")
        self.write("c.py", "#!/usr/bin/env python3\n" + hashed)
        self.write(".ci/run", "#!/bin/bash\n" + hashed)
        self.write("CMakeLists.txt", hashed)
        self.write("Makefile", hashed)
        self.write("README.md", "Documents need none.\n")
        self.write("picture.png", b"\x89PNG\0")
        self.assertEqual(self.check(), [])

    def test_eachLicenceLineIsNeeded(self):
        for path in ("a.h", "b.cpp", "c.py", "d.sh", "e.cmake", "sub/CMakeLists.txt", "Makefile"):
            for line in check_headers.SPDX_LINES:
                with self.subTest(path=path, line=line):
                    rest = LICENCE.replace("// " + line + "\n", "")
                    self.write(path, rest)
                    self.assertOneFinding(self.check(), path + ":1", line)
            (self.root / path).unlink()

    def test_scriptWithoutASuffixNeedsTheLines(self):
        self.write(".ci/run", "#!/bin/bash\n")
        self.assertEqual(len(self.check()), 2)

    def test_licenceLinesStandAtTheTop(self):
        self.write("a.h", "\n" * 10 + LICENCE)
        self.assertEqual(len(self.check()), 2)


class RunpathsTest(TreeTest):
    def build(self, name, *options):
        self.write("empty.c", "int nothing;\n")
        target = self.root / "out" / name
        target.parent.mkdir(exist_ok=True)
        subprocess.run(["cc", "-shared", "-fPIC", "-o", str(target), *options,
                        str(self.root / "empty.c")], check=True)

    def findings(self):
        return check_runpaths.check([self.root / "out"])

    def test_onlyTheFilesOwnFolderMayBeNamed(self):
        self.build("none.so")
        self.build("own.so", "-Wl,-rpath,$ORIGIN")
        self.build("two.so", "-Wl,-rpath,$ORIGIN/../lib:$ORIGIN")
        self.write("out/text.so", "no library")
        self.assertEqual(self.findings(), [])

    def test_emptyEntriesFail(self):
        for path in (":$ORIGIN", "$ORIGIN:", "$ORIGIN::$ORIGIN/x"):
            with self.subTest(path=path):
                self.build("a.so", "-Wl,-rpath," + path)
                self.assertOneFinding(self.findings(), str(self.root / "out/a.so"), "an empty")

    def test_otherFoldersFail(self):
        for path in ("/usr/lib", "lib", "$ORIGINAL"):
            with self.subTest(path=path):
                self.build("a.so", "-Wl,-rpath," + path)
                self.assertOneFinding(self.findings(), str(self.root / "out/a.so"), path)

    def test_theOldKindOfPathIsReadToo(self):
        self.build("a.so", "-Wl,--disable-new-dtags,-rpath,$ORIGIN:")
        self.assertOneFinding(self.findings(), str(self.root / "out/a.so"), "an empty")

    def test_folderWithoutLibrariesIsNoSuccess(self):
        self.write("out/text.so", "no library")
        self.assertEqual(check_runpaths.main([str(self.root / "out")]), 2)


class DependenciesTest(TreeTest):
    """The script that installs packages, with stand-ins for the system's programs."""

    def setUp(self):
        super().setUp()
        script = (TOOLS / "install-deps.sh").read_text(encoding="utf-8")
        self.write("tools/install-deps.sh", script)
        self.write("tools/debian-packages.txt", "# list\nfirst\n\nsecond # why\n  third\n")
        self.write("installed", "first\n")
        self.program("dpkg-query",
                     f'grep -qx "${{@: -1}}" "{self.root}/installed" && echo installed')
        self.program("apt-get", f'echo "apt-get $*" >>"{self.root}/log"\n'
                                f'[[ " $* " == *" update "* ]] && exit ${{UPDATE_FAILS:-0}}\n'
                                f'exit ${{INSTALL_FAILS:-0}}')
        self.program("sudo", f'echo "sudo" >>"{self.root}/log"\nexec "$@"')
        self.program("id", "echo ${FAKE_UID:-0}")

    def program(self, name, body):
        self.write("bin/" + name, "#!/bin/bash\n" + body + "\n")
        (self.root / "bin" / name).chmod(0o755)

    def run_script(self, *arguments, **environment):
        result = subprocess.run(
            ["bash", str(self.root / "tools/install-deps.sh"), *arguments],
            capture_output=True, text=True, check=False, cwd="/",
            env={"PATH": f"{self.root}/bin:/usr/bin:/bin", **environment})
        log = self.root / "log"
        lines = log.read_text(encoding="utf-8").splitlines() if log.exists() else []
        return result, lines

    def test_nothingMissingDoesNothing(self):
        self.write("installed", "first\nsecond\nthird\n")
        for arguments in ((), ("--check",)):
            result, log = self.run_script(*arguments)
            self.assertEqual((result.returncode, result.stdout, result.stderr, log),
                             (0, "", "", []))

    def test_checkOnlyListsWhatIsMissing(self):
        result, log = self.run_script("--check")
        self.assertEqual((result.returncode, result.stdout, log), (1, "second\nthird\n", []))

    def test_missingPackagesAreInstalled(self):
        result, log = self.run_script()
        self.assertEqual((result.returncode, result.stdout), (0, ""))
        self.assertEqual(len(log), 2, log)
        self.assertIn("update", log[0])
        self.assertTrue(log[1].endswith("install second third"), log)

    def test_userBecomesRootBySudo(self):
        result, log = self.run_script(FAKE_UID="1000")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(log.count("sudo"), 2)

    def test_failedInstallationFails(self):
        result, _ = self.run_script(INSTALL_FAILS="100")
        self.assertEqual(result.returncode, 1)
        self.assertIn("could not install: second third", result.stderr)

    def test_failedRefreshStillTries(self):
        result, log = self.run_script(UPDATE_FAILS="100")
        self.assertEqual((result.returncode, len(log)), (0, 2))

    def test_skippingSkips(self):
        result, log = self.run_script(VIREO_SKIP_DEPS="1")
        self.assertEqual((result.returncode, log), (0, []))

    def test_unknownArgumentIsWrongUse(self):
        result, log = self.run_script("--install")
        self.assertEqual((result.returncode, log), (2, []))


if __name__ == "__main__":
    unittest.main()
