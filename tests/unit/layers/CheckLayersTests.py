#!/usr/bin/env python3
"""The check of the layers must fail on planted violations, and on having nothing to check.

    CheckLayersTests.py CXX AR NM
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).resolve().parents[3] / "scripts" / "check-layers"
CXX, AR, NM = sys.argv[1:4]

CLEAN = {
    "platform/Text.h": "#include <string>\n",
    "platform/Text.cpp": '#include "platform/Text.h"\n#include <unicode/coll.h>\n',
    "storage/Keys.h": '#pragma once\n#include "platform/Text.h"\n',
    "locking/Lock.cpp": '#include "storage/Keys.h"\n#include "app/Constants.h"\n#include <vector>\n',
    "locking/window/Window.cpp": '#include "locking/Lock.h"\n#include "ui_Window.h"\n#include <QWidget>\n',
    "ui/Popover.cpp": '#include "app/Hub.h"\n#include <QtWidgets/QWidget>\n',
    "linux/x11/Guard.cpp": '#include "linux/workspace/Seam.h"\n#include <xcb/xcb.h>\n',
    "linux/qt/Icons.cpp": '#include "toolkit/Icon.h"\n',
    "toolkit/Icon.h": '#include "platform/Text.h"\n#include <QIcon>\n',
    "toolkit/Keys.cpp": "#include <xkbcommon/xkbcommon-compose.h>\n",
    "linux/workspace/Seam.h": '#include "platform/Text.h"\n',
    "main.cpp": '#include "linux/x11/Guard.h"\n#include "ui/Popover.h"\n',
}


def run(*arguments):
    return subprocess.run([CHECK, *arguments], text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE)


class Includes(unittest.TestCase):
    def check(self, files):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in files.items():
                path = pathlib.Path(folder, name)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            return run("includes", folder)

    def assert_refused(self, path, line):
        done = self.check({**CLEAN, path: CLEAN.get(path, "") + line + "\n"})
        self.assertEqual(done.returncode, 1, f"{path}: {line} was let through")
        self.assertIn(path, done.stderr)

    def test_a_clean_tree_passes(self):
        done = self.check(CLEAN)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_the_core_may_not_include_the_toolkit(self):
        self.assert_refused("locking/Lock.cpp", "#include <QString>")
        self.assert_refused("app/Delegate.h", "#include <QtCore/QString>")

    def test_the_core_may_not_include_the_system(self):
        self.assert_refused("storage/Keys.h", "#include <unistd.h>")
        self.assert_refused("platform/Fatal.cpp", "  #  include <sys/socket.h>")

    def test_the_core_may_not_have_a_clock_of_its_own(self):
        self.assert_refused("applications/Monitor.cpp", "#include <chrono>")

    def test_only_the_text_port_may_include_icu(self):
        self.assert_refused("storage/Keys.h", "#include <unicode/unistr.h>")

    def test_the_core_may_not_include_adapters_or_what_draws(self):
        self.assert_refused("locking/Lock.cpp", '#include "linux/x11/Guard.h"')
        self.assert_refused("app/Delegate.h", '#include "ui/Popover.h"')
        self.assert_refused("locking/Lock.cpp", '#include "locking/window/Window.h"')

    def test_the_core_may_not_include_around_its_folders(self):
        self.assert_refused("locking/Lock.cpp", '#include "../linux/x11/Guard.h"')
        self.assert_refused("locking/Lock.cpp", '#include "Guard.h"')
        self.assert_refused("locking/Lock.cpp", "#include SOMETHING")

    def test_ports_know_nothing_above_them(self):
        self.assert_refused("platform/Text.h", '#include "app/Constants.h"')

    def test_the_rooms_of_the_core_know_those_below_them_alone(self):
        self.assert_refused("storage/Keys.h", '#include "locking/Lock.h"')
        self.assert_refused("applications/Record.h", '#include "storage/Keys.h"')
        self.assert_refused("locking/Lock.cpp", '#include "app/Delegate.h"')

    def test_what_adapters_and_windows_share_knows_neither(self):
        self.assert_refused("toolkit/Icon.h", '#include "linux/x11/Guard.h"')
        self.assert_refused("toolkit/Icon.h", '#include "locking/Lock.h"')
        self.assert_refused("locking/Lock.cpp", '#include "toolkit/Icon.h"')

    def test_only_what_adapters_and_windows_share_composes_keys(self):
        for path in ("ui/Popover.cpp", "locking/window/Window.cpp", "locking/Lock.cpp"):
            self.assert_refused(path, "#include <xkbcommon/xkbcommon.h>")
        self.assert_refused("toolkit/Icon.h", "#include <xcb/xcb.h>")

    def test_what_draws_may_not_include_adapters_or_the_system(self):
        self.assert_refused("ui/Popover.cpp", '#include "linux/x11/Guard.h"')
        self.assert_refused("locking/window/Window.cpp", '#include "linux/x11/Guard.h"')
        self.assert_refused("ui/Popover.cpp", "#include <xcb/xcb.h>")

    def test_adapters_may_not_include_the_logic(self):
        for name in ("app/Hub.h", "applications/Record.h", "storage/Keys.h", "locking/Lock.h", "ui/X.h"):
            self.assert_refused("linux/x11/Guard.cpp", f'#include "{name}"')

    def test_adapters_may_not_depend_on_each_other_in_a_circle(self):
        done = self.check({**CLEAN, "linux/workspace/Seam.cpp": '#include "linux/x11/Guard.h"\n'})
        self.assertEqual(done.returncode, 1)
        self.assertIn("workspace -> x11 -> workspace", done.stderr)

    def test_a_folder_of_no_layer_is_refused(self):
        self.assert_refused("utilities/Misc.h", "")
        self.assert_refused("Misc.h", "")

    def test_a_tree_without_sources_is_refused(self):
        self.assertEqual(self.check({"README": ""}).returncode, 1)


class Helper(unittest.TestCase):
    def check(self, line):
        with tempfile.TemporaryDirectory() as folder:
            for path, text in (("src/platform/Text.h", ""), ("helper/Watch.cpp", line + "\n")):
                file = pathlib.Path(folder, path)
                file.parent.mkdir(parents=True)
                file.write_text(text, encoding="utf-8")
            return run("includes", f"{folder}/src", f"{folder}/helper")

    def test_it_knows_the_session_and_its_own_files(self):
        for name in ("helper/Signals.h", "linux/session/SessionInstance.h", "platform/Call.h"):
            self.assertEqual(self.check(f'#include "{name}"').returncode, 0, name)
        self.assertEqual(self.check("#include <sys/socket.h>").returncode, 0)

    def test_it_knows_nothing_else_of_the_agent_and_no_toolkit(self):
        for name in ('"linux/x11/Guard.h"', '"platform/Platform.h"', '"app/Constants.h"', "<QString>"):
            done = self.check(f"#include {name}")
            self.assertEqual(done.returncode, 1, f"{name} was let through")
            self.assertIn("helper/Watch.cpp:1", done.stderr)


class Symbols(unittest.TestCase):
    def check(self, *sources):
        with tempfile.TemporaryDirectory() as folder:
            objects = []
            for number, source in enumerate(sources):
                objects.append(f"{folder}/{number}.o")
                subprocess.run([CXX, "-std=c++20", "-x", "c++", "-c", "-o", objects[-1], "-"],
                               input=source, text=True, check=True)
            library = f"{folder}/lib.a"
            subprocess.run([AR, "rcs", library, *objects], check=True)
            return run("symbols", library, NM)

    def assert_refused(self, symbol, source):
        done = self.check(source)
        self.assertEqual(done.returncode, 1, f"{symbol} was let through")
        self.assertIn(symbol, done.stderr)

    def test_a_clean_library_passes(self):
        done = self.check(
            "#include <iostream>\n#include <memory>\n#include <string>\n"
            "int other();\nstruct S { virtual ~S() = default; };\n"
            "std::unique_ptr<S> make() { std::cerr << std::string(40, 'x') << other(); throw 1; }",
            "int other() { static thread_local int calls = 0; return ++calls; }")
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_calls_of_the_system_are_refused(self):
        for name in ("socket", "open", "fork", "getenv", "time"):
            self.assert_refused(name, f'extern "C" int {name}(); int f() {{ return {name}(); }}')

    def test_the_toolkit_and_other_libraries_are_refused(self):
        self.assert_refused("QString", "struct QString { QString(); }; void f() { QString(); }")
        self.assert_refused("xcb_connect", 'extern "C" void xcb_connect(); void f() { xcb_connect(); }')
        self.assert_refused("dbus_bus_get", 'extern "C" void dbus_bus_get(); void f() { dbus_bus_get(); }')

    def test_the_librarys_own_clock_and_files_are_refused(self):
        self.assert_refused("chrono", "#include <chrono>\nauto f() { return std::chrono::steady_clock::now(); }")
        self.assert_refused("fstream", "#include <fstream>\nvoid f() { std::ofstream(\"x\") << 1; }")

    def test_a_missing_or_empty_library_is_refused(self):
        self.assertNotEqual(run("symbols", "/nowhere/lib.a", NM).returncode, 0)
        self.assertEqual(self.check("").returncode, 1)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
