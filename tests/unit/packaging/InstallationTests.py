#!/usr/bin/env python3
"""What an installation puts where, looked at in a folder of its own.

    InstallationTests.py CMAKE BUILD
"""
import configparser
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

CMAKE, BUILD = sys.argv[1:3]
IDENTIFIER = "com.quorvent.Tarvel"
HELPER = "Contents/Library/LoginItems/OlvoHelper.app/OlvoHelper"
SKIPPED = 77
SIDES = (16, 22, 24, 32, 48, 64, 128, 256, 512)


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = pathlib.Path(tempfile.mkdtemp())
        subprocess.run([CMAKE, "--install", BUILD], check=True, stdout=subprocess.DEVNULL,
                       env={**os.environ, "DESTDIR": str(cls.root)})
        cls.share = next(cls.root.rglob("share"))

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.root)

    def entry(self, name):
        parser = configparser.ConfigParser(interpolation=None, delimiters="=", strict=True)
        parser.optionxform = str
        parser.read(self.share / "applications" / f"{name}.desktop", encoding="utf-8")
        return parser["Desktop Entry"]

    def installed(self, path):
        """The file that will be at `path` on the user's computer."""
        return self.root / pathlib.Path(path).relative_to("/")

    def test_the_entries_start_programs_that_are_installed(self):
        for name in (IDENTIFIER, "com.quorvent.OlvoHelper"):
            program = self.installed(self.entry(name)["Exec"].strip('"'))
            self.assertTrue(os.access(program, os.X_OK), program)

    def test_the_bundle_holds_the_helper_and_the_help_page(self):
        bundle = self.installed(self.entry(IDENTIFIER)["TryExec"]).parent
        self.assertTrue(os.access(bundle / HELPER, os.X_OK))
        page = (bundle / "Resources" / "Help.html").read_text(encoding="utf-8")
        self.assertIn("<title>Tarvel Help</title>", page)

    def test_the_bundle_of_the_build_holds_the_help_page_too(self):
        self.assertTrue(pathlib.Path(BUILD, "Tarvel.app", "Resources", "Help.html").is_file())

    def test_the_icon_of_the_entries_is_there_in_every_size(self):
        self.assertEqual(self.entry(IDENTIFIER)["Icon"], IDENTIFIER)
        self.assertEqual(self.entry("com.quorvent.OlvoHelper")["Icon"], IDENTIFIER)
        theme = self.share / "icons" / "hicolor"
        for side in SIDES:
            picture = (theme / f"{side}x{side}" / "apps" / f"{IDENTIFIER}.png").read_bytes()
            self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual(struct.unpack(">II", picture[16:24]), (side, side))
        self.assertTrue((theme / "scalable" / "apps" / f"{IDENTIFIER}.svg").is_file())
        self.assertTrue((theme / "symbolic" / "apps" / f"{IDENTIFIER}-symbolic.svg").is_file())

    def test_a_software_centre_finds_the_entry(self):
        text = self.share / "metainfo" / f"{IDENTIFIER}.metainfo.xml"
        component = xml.etree.ElementTree.parse(text).getroot()
        self.assertEqual(component.findtext("id"), IDENTIFIER)
        entry = component.findtext("launchable")
        self.assertTrue((self.share / "applications" / entry).is_file(), entry)
        self.assertEqual(component.findtext("name"), self.entry(IDENTIFIER)["Name"])


if __name__ == "__main__":
    # CMake notes in the build tree what it installs, so that only the tree's owner can.
    if not os.access(BUILD, os.W_OK):
        print(f"{BUILD} is not this user's to install from")
        sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1])
