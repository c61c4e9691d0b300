"""Every layout of every container, written by halvane-cli and read back: the right number in the header, the same data, the same pixels.

    ContainerTable.py HALVANE_CLI              as tests
    ContainerTable.py HALVANE_CLI --table      as a table of what was found
"""

import struct
import subprocess
import sys
import unittest

import Readers
import Rows
from Halvane import BYTE, CLI, FLOAT, LINEAR, SRGB, Native, ProgramTest, bytes_per_pixel, layout, program, random_bytes, run

# Pixels of any kind as floats, to compare what has other letters or another type now.
AS_FLOATS = ("--format", "r32g32b32a32", "--type", str(FLOAT))
CODECS_TO_COME = {str(number) for number in [*range(0, 7), 12, 13, *range(22, 51)]}

TABLE = "--table" in sys.argv
if TABLE:
    sys.argv.remove("--table")
FOUND = {}  # container: how many rows were written, and how many came back as they were


def texture(encoding, flags=0, members=1):
    """A texture of that encoding with random data. Floats are none that compare unequal to themselves."""
    text, channel_type, space = encoding
    if " " in text:
        width, height = 13, 7
        count = width * height * members
        if channel_type == FLOAT:
            bits = int(text.split()[1])
            values = [n / 8 - 40 for n in random_bytes(count * len(text.split()[0]), 1)]
            data = struct.pack(f"<{len(values)}{'e' if bits == 16 else 'f'}", *values)
        else:
            data = random_bytes(count * bytes_per_pixel(text), 1)
    else:
        width, height = (32, 16) if int(text) < 27 else (13, 7)
        size, *block = Rows.BLOCKS[text]
        data = random_bytes(-(-width // block[0]) * -(-height // block[1]) * size * members, 1)
    return Native(text, channel_type, width, height, data, space, flags, members=members)


class Batch:
    """Native files in a folder, by their place in a list, and what becomes of all of them in one call."""

    def __init__(self, folder, textures):
        self.folder = folder
        self.textures = list(textures)
        (folder / "in").mkdir()
        self.names = [f"t{i}" for i in range(len(self.textures))]
        for name, native in zip(self.names, self.textures):
            native.write(folder / "in" / f"{name}.mox")

    def convert(self, source, target, extension, *words):
        """@return for each texture its new file, or None where that could not be made"""
        inputs = [path for name in self.names for path in (self.folder / source).glob(f"{name}.*")]
        done = subprocess.run([CLI, "convert", *inputs, "--out-dir", self.folder / target, "--ext", extension, "--quiet", *words],
                              capture_output=True)
        if done.returncode not in (0, 1):
            raise AssertionError(done.stderr.decode(errors="replace"))
        made = [self.folder / target / f"{name}.{extension}" for name in self.names]
        return [path if path.exists() else None for path in made]


def same_pixels(encoding, before, after):
    """Two files of four floats a pixel; of a layout with spare bits the alpha, which those stand for, is left out."""
    if before is None or after is None:
        return False
    a, b = Native.read(before).data, Native.read(after).data
    if "x" not in encoding[0]:
        return a == b
    return len(a) == len(b) and all(a[i:i + 12] == b[i:i + 12] for i in range(0, len(a), 16))


class ContainerTable(ProgramTest):
    def there_and_back(self, rows, extension, get_number, members=1, *words):
        """Writes and reads the rows as they stand.

        @return by row: whether the file was made, with the row's number in it, and the data came back as it was under the same
                letters; and what was loaded
        """
        batch = Batch(self.folder, (texture(encoding, members=members) for _, encoding in rows))
        files = batch.convert("in", "out", extension, "--as-stored", *words)
        loaded = batch.convert("out", "back", "mox", "--as-stored")
        good, natives = [], []
        for (number, encoding), native, file, back in zip(rows, batch.textures, files, loaded):
            content = Native.read(back) if back else None
            natives.append(content)
            good.append(file is not None and get_number(file.read_bytes()) == number and content is not None and
                        content.shape() == native.shape() and content.data == native.data and content.word == native.word)
        return good, natives

    def assert_all(self, container, rows, good):
        FOUND[container] = len(rows), sum(good)
        self.assertEqual([], [row for row, is_good in zip(rows, good) if not is_good])

    def test_every_ktx_row(self):
        good, natives = self.there_and_back(Rows.KTX, "ktx", lambda content: struct.unpack_from("<I", content, 28)[0])
        self.assert_all("KTX", Rows.KTX, good)
        for (number, (text, channel_type, space)), native in zip(Rows.KTX, natives):
            self.assertEqual((layout(text), channel_type, space), native.encoding(), number)

    @staticmethod
    def plain_number(content):
        """The FourCC field where the flags say so, else that of the first row with those masks."""
        flags, fourcc, bits, *masks = struct.unpack_from("<7I", content, 80)
        return fourcc if flags & 4 else Rows.DDS_MASKS.get((flags, bits, *masks))

    def test_every_plain_dds_row(self):
        good, natives = self.there_and_back(Rows.DDS_PLAIN, "dds", self.plain_number)
        self.assert_all("DDS, plain header", Rows.DDS_PLAIN, good)
        first = {number: (text, channel_type) for number, (text, channel_type, _) in reversed(Rows.DDS_PLAIN)}
        for (number, _), native in zip(Rows.DDS_PLAIN, natives):
            text, channel_type = first[number]
            self.assertEqual((layout(text), channel_type, LINEAR), native.encoding(), number)

    def test_plain_dds_rows_that_load_as_another_layout(self):
        batch = Batch(self.folder, (texture(encoding) for _, encoding, _ in Rows.DDS_PLAIN_OTHERWISE))
        files = batch.convert("in", "out", "dds", "--as-stored")
        loaded = batch.convert("out", "back", "mox", "--as-stored")
        for (number, _, text), native, file, back in zip(Rows.DDS_PLAIN_OTHERWISE, batch.textures, files, loaded):
            self.assertEqual(number, self.plain_number(file.read_bytes()))
            read = Native.read(back)
            self.assertEqual(layout(text), read.word, number)
            self.assertEqual(native.data, read.data[:len(native.data)], number)

    def test_every_extended_dds_row(self):
        good, natives = self.there_and_back(Rows.DDS_EXTENDED, "dds", lambda content: struct.unpack_from("<I", content, 128)[0], 2)
        self.assert_all("DDS, extended header", Rows.DDS_EXTENDED, good)
        for (number, (text, channel_type, space)), native in zip(Rows.DDS_EXTENDED, natives):
            self.assertEqual((layout(text), channel_type, space), native.encoding(), number)

    def pixels_for_others(self, encodings, extension):
        """Writes and reads as everybody does, without --as-stored.

        @return by encoding: True, or what was wrong: "refused" or "other pixels"
        """
        batch = Batch(self.folder, map(texture, encodings))
        files = batch.convert("in", "out", extension)
        batch.convert("out", "back", "mox")
        before, after = batch.convert("in", "before", "mox", *AS_FLOATS), batch.convert("back", "after", "mox", *AS_FLOATS)
        results = []
        for encoding, native, file, a, b in zip(encodings, batch.textures, files, before, after):
            if file is None:
                results.append("refused")
            elif encoding[0] in CODECS_TO_COME:
                back = Native.read(self.folder / "back" / f"{file.stem}.mox")
                results.append(back.data == native.data or "other data")
            else:
                results.append(same_pixels(encoding, a, b) or "other pixels")
        return results

    def test_dds_files_for_others_come_back_with_the_same_pixels(self):
        encodings = dict.fromkeys(encoding for _, encoding in Rows.DDS_PLAIN + Rows.DDS_EXTENDED)
        for text in ("abgr 8 8 8 8", "xrgb 8 8 8 8", "xbgr 8 8 8 8"):
            encodings[(text, 8, LINEAR)] = None
        encodings = list(encodings)
        results = self.pixels_for_others(encodings, "dds")
        FOUND["DDS, layouts put right"] = len(encodings), results.count(True)
        self.assertEqual([], [pair for pair in zip(encodings, results) if pair[1] is not True])

    def test_ktx_files_for_others_come_back_with_the_same_pixels(self):
        encodings = list(dict.fromkeys(encoding for _, encoding in Rows.KTX))
        for text, channel_type in [("argb 8 8 8 8", 0), ("abgr 8 8 8 8", 0), ("xrgb 8 8 8 8", 0), ("rgb 8 8 8", 8), ("argb 8 8 8 8", 8)]:
            encodings.append((text, channel_type, LINEAR))
        results = self.pixels_for_others(encodings, "ktx")
        FOUND["KTX, layouts put right"] = len(encodings), results.count(True)
        self.assertEqual([], [pair for pair in zip(encodings, results) if pair[1] is not True])

    def legacy(self):
        """@return by type: the API numbers with which a texture of that row was written and came back with its data"""
        batch = Batch(self.folder, (texture(encoding, flags=2 if premultiplied else 0) for _, encoding, premultiplied in Rows.LEGACY))
        types = {number: encoding for number, encoding, _ in Rows.LEGACY}
        apis = {number: [] for number, _, _ in Rows.LEGACY}
        for api in range(1, 8):
            files = batch.convert("in", f"out{api}", "mox", "--legacy", str(api))
            loaded = batch.convert(f"out{api}", f"back{api}", "mox")
            for (number, encoding, premultiplied), native, file, back in zip(Rows.LEGACY, batch.textures, files, loaded):
                if file is None:
                    continue
                size, flags = struct.unpack_from("<I12xI", file.read_bytes())
                written = flags & 0xFF
                read = Native.read(back)
                same = read.data == native.data and read.shape() == native.shape() and size == 52
                # Types that share a row stand for each other; a few are written for another layout than they are read as.
                row = types.get(written)
                if same and row and read.encoding() == (layout(row[0]), *row[1:]):
                    apis[number].append(api)
                else:
                    self.fail(f"type {number}, API {api}: written as {written}, loaded as {read.encoding()}")
        return apis

    def test_every_legacy_row(self):
        apis = self.legacy()
        only_read = [number for number, written in apis.items() if not written]
        FOUND["older native files"] = len(apis), len(apis) - len(only_read)
        self.assertEqual(Rows.LEGACY_ONLY_READ, only_read)

    def test_every_native_row(self):
        encodings = self.all_encodings()
        batch = Batch(self.folder, map(texture, encodings))
        files = batch.convert("in", "out", "mox")
        good = [file is not None and file.read_bytes() == (self.folder / "in" / f"{name}.mox").read_bytes()
                for name, file in zip(batch.names, files)]
        self.assert_all("native", encodings, good)

    @staticmethod
    def all_encodings():
        rows = Rows.KTX + Rows.DDS_PLAIN + Rows.DDS_EXTENDED + [(number, encoding) for number, encoding, _ in Rows.LEGACY]
        return list(dict.fromkeys(encoding for _, encoding in rows))

    def test_every_c_header(self):
        encodings = self.all_encodings()
        batch = Batch(self.folder, map(texture, encodings))
        self.assertNotIn(None, batch.convert("in", "out", "h"))
        source = self.path("print.c")
        source.write_text("#include <stdio.h>\n" + "".join(f'#include "out/{name}.h"\n' for name in batch.names) + "int main(void)\n{\n" +
                          "".join(f"    fwrite({name}, 1, sizeof({name}), stdout);\n" for name in batch.names) + "    return 0;\n}\n")
        run(program("gcc"), "-o", self.path("print"), source)
        FOUND["C header"] = len(encodings), len(encodings)
        self.assertEqual(b"".join((self.folder / "in" / f"{name}.mox").read_bytes() for name in batch.names), run(self.path("print")))


def print_table():
    """What was found, with the number of layouts that a test beside this one compares through another program."""
    ktx, plain, extended = ({encoding for _, encoding in rows} for rows in (Rows.KTX, Rows.DDS_PLAIN, Rows.DDS_EXTENDED))
    ktx_others = {*Readers.KTX_ASTCENC, *Readers.KTX_ASTCENC_16, *Readers.KTX_ASTCENC_FLOAT, *Readers.KTX_ASTCENC_BLOCKS}
    dds_others = {(text, kind, LINEAR) for text, kind in Readers.DDS_IMAGEMAGICK + Readers.DDS_IMAGEMAGICK_SMALL + Readers.DDS_PILLOW +
                  Readers.DDS_NVDECOMPRESS + Readers.DDS_ASTCENC + Readers.DDS_ASTCENC_16 + Readers.DDS_ASTCENC_FLOAT}
    dds_others |= {(text, BYTE, LINEAR) for text in Readers.DDS_BLOCKS} | {("rgba 8 8 8 8", BYTE, SRGB)}
    others = {"KTX": len(ktx & ktx_others), "DDS, plain header": len(plain & dds_others),
              "DDS, extended header": len((extended - plain) & dds_others), "DDS, layouts put right": len(dds_others),
              "C header": FOUND.get("C header", (0, 0))[1]}
    print("| Container | Layouts written | Read back equal | Read by another program and found equal |\n|---|---|---|---|")
    for container, (written, equal) in sorted(FOUND.items()):
        print(f"| {container} | {written} | {equal} | {others.get(container, '-')} |")


if __name__ == "__main__":
    outcome = unittest.main(exit=False).result
    if TABLE:
        print_table()
    sys.exit(not outcome.wasSuccessful())
