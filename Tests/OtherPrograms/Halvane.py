"""What the tests beside this file share: halvane-cli as a program, its native files as bytes, other programs, and small pictures.

A test of this folder is run as

    SomeTest.py HALVANE_CLI [TEST...]
"""

import json
import random
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BYTE, SIGNED_BYTE, SHORT, INTEGER, SIGNED_INTEGER, FLOAT = 0, 1, 4, 8, 9, 12  # channel types, all of them normalised but the last
LINEAR, SRGB = 0, 1

CLI = Path(sys.argv.pop(1)).resolve() if len(sys.argv) > 1 else None


def program(name):
    """The path of another program. One that is missing is a failure: a test that was not run has shown nothing."""
    path = shutil.which(name, path="/usr/bin:/bin")
    if path is None:
        raise AssertionError(f"{name} is missing: Scripts/install_packages.sh brings it")
    return path


def run(*words):
    """Runs a program of any origin; a status other than 0 fails the test with what it said."""
    words = [str(word) for word in words]
    done = subprocess.run(words, capture_output=True)
    if done.returncode != 0:
        said = (done.stdout + done.stderr).decode(errors="replace")
        raise AssertionError(f"{' '.join(words)}: status {done.returncode}\n{said}")
    return done.stdout


def convert(source, target, *words):
    run(CLI, "convert", source, "-o", target, *words)
    return Path(target)


def info(path):
    return json.loads(run(CLI, "info", path, "--json"))


def layout(text):
    """The format word of a layout, "argb 1 5 5 5", or of a format number, "7"."""
    letters, *bits = text.split()
    if not bits:
        return int(letters)
    return int.from_bytes(letters.encode().ljust(4, b"\0") + bytes(int(bit) for bit in bits).ljust(4, b"\0"), "little")


def bytes_per_pixel(text):
    return sum(int(bit) for bit in text.split()[1:]) // 8


class Native:
    """A native file as a record of its header and its data, without metadata unless it was read with some."""

    FIELDS = "version flags word space type height width depth members faces levels metaDataSize".split()
    HEADER = struct.Struct("<IIQ9I")

    def __init__(self, text="rgba 8 8 8 8", channel_type=BYTE, width=1, height=1, data=b"", space=LINEAR, flags=0, depth=1, members=1,
                 faces=1, levels=1):
        self.version, self.flags, self.word, self.space, self.type = 0x03584F4D, flags, layout(text), space, channel_type
        self.height, self.width, self.depth = height, width, depth
        self.members, self.faces, self.levels, self.metaDataSize = members, faces, levels, 0
        self.data = data

    @classmethod
    def read(cls, path):
        content = Path(path).read_bytes()
        native = cls()
        for name, value in zip(cls.FIELDS, cls.HEADER.unpack_from(content)):
            setattr(native, name, value)
        native.data = content[cls.HEADER.size + native.metaDataSize:]
        return native

    def write(self, path):
        Path(path).write_bytes(self.HEADER.pack(*(getattr(self, name) for name in self.FIELDS)) + self.data)
        return Path(path)

    def shape(self):
        return self.width, self.height, self.depth, self.members, self.faces, self.levels

    def encoding(self):
        return self.word, self.type, self.space


def rgba8(path, *words):
    """The pixels of any file as halvane-cli sees them: red, green, blue and alpha, a byte each, of all surfaces."""
    with tempfile.TemporaryDirectory() as folder:
        return Native.read(convert(path, Path(folder) / "p.mox", "--format", "r8g8b8a8", "--type", "0", *words)).data


def random_bytes(count, seed):
    return random.Random(seed).randbytes(count)


def half(values):
    return struct.pack(f"<{len(values)}e", *values)


def blocks(text, count, seed):
    """Random blocks of BC1, BC2 or BC3. Those of BC2 and BC3 have the greater of their two colours first: with the other order, which
    no encoder writes, decoders differ in what they see."""
    source = random.Random(seed)
    result = b""
    for _ in range(count):
        colours = sorted((source.randrange(65536), source.randrange(65536)), reverse=text != "7")
        result += source.randbytes(0 if text == "7" else 8) + struct.pack("<HH", *colours) + source.randbytes(4)
    return result


def tiles(width, height, size, seed):
    """A picture of uncompressed pixels of `size` bytes in which every tile of 4 by 4 has one value: what a block codec keeps exactly."""
    colours = {}
    source = random.Random(seed)
    rows = []
    for y in range(height):
        for x in range(width):
            tile = (x // 4, y // 4)
            if tile not in colours:
                colours[tile] = source.randbytes(size)
            rows.append(colours[tile])
    return b"".join(rows)


class ProgramTest(unittest.TestCase):
    """A test with a folder of its own."""

    longMessage = True

    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.addCleanup(self.temporary.cleanup)
        self.folder = Path(self.temporary.name)

    def path(self, name):
        return self.folder / name

    def assert_same_pixels(self, expected, seen, within=0, message=""):
        """Both are bytes; no two may be further apart than `within`."""
        self.assertEqual(len(expected), len(seen), message)
        worst = max((abs(a - b) for a, b in zip(expected, seen)), default=0)
        if worst > within:
            at = next(i for i, (a, b) in enumerate(zip(expected, seen)) if abs(a - b) > within)
            self.fail(f"{message}: first at byte {at}: expected {expected[at:at + 8].hex()}, seen {seen[at:at + 8].hex()}; worst {worst}")

    def assert_blocks_hold_16_bits(self, pixels, blocks):
        """The first channels of blocks of one colour each: astcenc reads 16 bits as half floats, which leave 2^-12 of a value open."""
        for pixel, block in zip(pixels, blocks):
            for value, seen in zip(struct.unpack(f"<{len(pixel) // 2}H", pixel), block):
                self.assertAlmostEqual(value, seen, delta=value / 2048 + 1)
