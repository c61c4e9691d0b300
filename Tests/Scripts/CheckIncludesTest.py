"""Small trees with one fault each: the include check must name it, and must be silent about a good tree."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "Scripts"))
from check_includes import check  # noqa: E402


class IncludeRule(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.root = Path(self.temporary.name)

    def tearDown(self):
        self.temporary.cleanup()

    def folder(self, name, uses="", **files):
        directory = self.root / "Library" / "Source" / name
        directory.mkdir(parents=True)
        (directory / "CMakeLists.txt").write_text(f"halvane_folder({name}\n    USES {uses} # a remark\n    SOURCES X)\n")
        for stem, text in files.items():
            (directory / f"{stem}.h").write_text(text)

    def test_a_folder_may_include_itself_and_what_it_names(self):
        self.folder("Core", Bits="#include <cstdint>\n")
        self.folder("Codecs/BC", "Core", A='#include "Core/Bits.h"\n#include "Codecs/BC/B.h"\n', B="")
        self.assertEqual([], check(self.root))

    def test_a_folder_that_is_not_named_is_refused(self):
        self.folder("Core", Bits="")
        self.folder("Formats", "", Word='#include "Core/Bits.h"\n')
        self.assertEqual(1, len(check(self.root)))
        self.assertIn("Core does not stand in the USES line of Formats", check(self.root)[0])

    def test_a_cycle_is_refused(self):
        self.folder("Core", "Formats", A="")
        self.folder("Formats", "Texture", B="")
        self.folder("Texture", "Core", C="")
        self.assertIn("cycle: Core -> Formats -> Texture -> Core", check(self.root))

    def test_a_used_folder_must_exist(self):
        self.folder("Core", "Nowhere", A="")
        self.assertIn("Core: USES names Nowhere, which is no folder", check(self.root))

    def test_a_header_is_named_by_its_folder(self):
        self.folder("Core", A='#include "B.h"\n', B="")
        self.assertEqual(1, len(check(self.root)))

    def test_qt_stays_out_of_the_library(self):
        self.folder("Core", A="#include <QImage>\n")
        self.assertIn("Qt does not belong here", check(self.root)[0])

    def test_vector_headers_stay_in_vector_sources(self):
        self.folder("Core", RowSimd="#include <hwy/highway.h>\n", Row="#include <hwy/highway.h>\n")
        faults = check(self.root)
        self.assertEqual(1, len(faults))
        self.assertIn("Row.h", faults[0])

    def test_threads_start_in_core_only(self):
        self.folder("Core", A="#include <thread>\n")
        self.folder("Codecs", "Core", B="#include <thread>\n")
        self.assertEqual(1, len(check(self.root)))

    def test_an_empty_tree_is_not_taken_for_a_good_one(self):
        self.assertEqual(1, len(check(self.root)))


if __name__ == "__main__":
    unittest.main()
