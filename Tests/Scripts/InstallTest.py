"""Installs a build into an empty prefix: all is there, and works from there.

InstallTest.py BUILD_FOLDER
"""

import re
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree
from pathlib import Path

BUILD = Path(sys.argv.pop(1))


class InstalledTree(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        cls.prefix = Path(cls.temporary.name) / "prefix"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.prefix], check=True, stdout=subprocess.DEVNULL)

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    def test_the_programs_run(self):
        version = subprocess.run([self.prefix / "bin" / "halvane-cli", "--version"], check=True, capture_output=True, text=True)
        self.assertRegex(version.stdout, r"\d")
        self.assertTrue((self.prefix / "bin" / "halvane").stat().st_mode & 0o111)

    def test_the_documents_stand_where_an_installed_program_looks(self):
        documents = self.prefix / "share" / "halvane" / "Documentation"
        self.assertTrue((documents / "MOX File Format.Specification.pdf").read_bytes().startswith(b"%PDF-"))
        manual = (documents / "Halvane User Manual.html").read_text(encoding="utf-8")
        for picture in re.findall(r'(?:src|srcset)="([^"]+)"', manual):
            self.assertTrue((documents / picture).is_file(), picture)

    def test_the_desktop_entry_opens_its_file_behind_a_filler_word(self):
        entry = (self.prefix / "share" / "applications" / "halvane.desktop").read_text(encoding="utf-8")
        self.assertIn("\nExec=halvane open %f\n", entry)
        self.assertIn("\nIcon=halvane\n", entry)
        types = re.search(r"\nMimeType=(.*;)\n", entry).group(1).split(";")
        self.assertLessEqual({"image/x-mox", "image/ktx", "image/x-dds", "image/astc", "image/png"}, set(types))

    def test_each_file_type_has_its_ending_and_its_first_bytes(self):
        path = self.prefix / "share" / "mime" / "packages" / "halvane.xml"
        name = "{http://www.freedesktop.org/standards/shared-mime-info}"
        kinds = {kind.get("type"): kind for kind in xml.etree.ElementTree.parse(path).getroot().iter(f"{name}mime-type")}
        for kind, (ending, start) in {"image/x-mox": ("*.mox", r"MOX\x03"), "image/ktx": ("*.ktx", r"\xabKTX 11\xbb\r\n\x1a\n"),
                                      "image/x-dds": ("*.dds", "DDS "), "image/astc": ("*.astc", "0x5CA1AB13")}.items():
            self.assertEqual(ending, kinds[kind].find(f"{name}glob").get("pattern"))
            self.assertEqual(start, kinds[kind].find(f"{name}magic/{name}match").get("value"))

    def test_the_icon_comes_in_its_sizes(self):
        icons = self.prefix / "share" / "icons" / "hicolor"
        for folder, size in [(f"{n}x{n}", n) for n in (16, 32, 48, 64, 128, 256)] + [("256x256@2", 512)]:
            header = (icons / folder / "apps" / "halvane.png").read_bytes()[:24]
            self.assertEqual((size, size), struct.unpack(">II", header[16:24]), folder)
        self.assertTrue((icons / "scalable" / "apps" / "halvane.svg").is_file())


if __name__ == "__main__":
    unittest.main()
