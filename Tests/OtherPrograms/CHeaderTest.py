"""C sources by halvane-cli, compiled: the array is the native file, byte for byte, and a loader of that file takes it as it is."""

import unittest

from Halvane import BYTE, Native, ProgramTest, convert, info, program, random_bytes, run

PRINTER = """#include <stdio.h>
#include "%s.h"
int main(void)
{
    return fwrite(%s, 1, sizeof(%s), stdout) != sizeof(%s);
}
"""


class CHeader(ProgramTest):
    def compiled(self, native, name="texture", *options):
        """The bytes of the array that is made of a native file, as a compiled program prints them."""
        convert(native, self.path(f"{name}.h"))
        self.path("print.c").write_text(PRINTER % ((name,) * 4))
        strict = ("-std=c89", "-pedantic", "-Wall", "-Wextra", "-Werror")
        run(program("gcc"), *strict, *options, "-o", self.path("print"), self.path("print.c"))
        return run(self.path("print"))

    def test_the_array_is_the_native_file(self):
        for size in (1, 7, 33):
            with self.subTest(size=size):
                native = Native("rgba 8 8 8 8", BYTE, size, size, random_bytes(size * size * 4, size)).write(self.path("a.mox"))
                self.assertEqual(native.read_bytes(), self.compiled(native))

    def test_blocks_levels_faces_and_members_go_out_as_they_stand(self):
        native = Native("7", BYTE, 8, 8, random_bytes(2 * 6 * (32 + 8 + 8 + 8), 1), members=2, faces=6, levels=4).write(self.path("a.mox"))
        self.assertEqual(native.read_bytes(), self.compiled(native))

    def test_metadata_stands_between_header_and_data(self):
        plain = Native("rgba 8 8 8 8", BYTE, 3, 5, random_bytes(60, 2)).write(self.path("plain.mox"))
        native = convert(plain, self.path("a.mox"), "--pad", "64")
        self.assertNotEqual(0, info(native)["metaDataSize"])
        self.assertEqual(native.read_bytes(), self.compiled(native))

    def test_what_the_program_prints_loads_as_a_texture(self):
        native = Native("rgb 5 6 5", 4, 9, 4, random_bytes(72, 3)).write(self.path("a.mox"))
        self.path("printed.mox").write_bytes(self.compiled(native))
        self.assertEqual({**info(native), "file": ""}, {**info(self.path("printed.mox")), "file": ""})

    def test_a_program_chooses_what_the_array_is_made_of(self):
        native = Native("l 8", BYTE, 4, 4, random_bytes(16, 4)).write(self.path("a.mox"))
        self.assertEqual(native.read_bytes(), self.compiled(native, "texture", "-DA8BIT=const unsigned char"))


if __name__ == "__main__":
    unittest.main()
