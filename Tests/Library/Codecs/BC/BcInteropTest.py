#!/usr/bin/env python3
"""Decodes our block streams in other programs and compares their pixels with ours.

    BcInteropTest.py WRITE_BC_STREAMS DECODER

WRITE_BC_STREAMS is the program of WriteBcStreams.cpp. DECODER is "pillow" or the path of ImageMagick's convert; a decoder that
is missing is a failure. The end points and the index of each pixel are read from the blocks here, so that each pixel is held to
what its place in the palette promises:

- end points, and all colours of BC1's form of three: equal;
- the two colours at the thirds: at most 3 levels apart in a channel, and exactly as far as 42 and 22 sixty-fourths are from what
  the other program has, which is that third rounded down or to nearest;
- BC3 whose first end point is not the greater: ours are the middle and black, others still read four colours;
- alpha: equal, interpolated ones too, whose fraction these programs drop as we do.
"""

import subprocess
import sys
import tempfile
from pathlib import Path

FORMATS = {"DXT1": 8, "DXT3": 16, "DXT5": 16}
MOST_APART = 3


def decode_with_pillow(path):
    from PIL import Image

    with Image.open(path) as image:
        return image.size, image.convert("RGBA").tobytes()


def decode_with_imagemagick(convert, path):
    if not Path(convert).is_file():
        sys.exit(f"{convert} is missing: install the package imagemagick")
    pixels = subprocess.run([convert, str(path), "-depth", "8", "rgba:-"], check=True, capture_output=True).stdout
    header = path.read_bytes()[:128]
    return (int.from_bytes(header[16:20], "little"), int.from_bytes(header[12:16], "little")), pixels


def expand565(value):
    red, green, blue = value >> 11, value >> 5 & 63, value & 31
    return (red << 3 | red >> 2, green << 2 | green >> 4, blue << 3 | blue >> 2)


class Block:
    """One block's end points and indices."""

    def __init__(self, data):
        colours = data[-8:]
        self.ends_in_order = int.from_bytes(colours[0:2], "little") > int.from_bytes(colours[2:4], "little")
        self.ends = [expand565(int.from_bytes(colours[i : i + 2], "little")) for i in (0, 2)]
        bits = int.from_bytes(colours[4:8], "little")
        self.indices = [bits >> 2 * i & 3 for i in range(16)]


def thirds(near, far):
    """What published decoders give at a third of the way: the exact value rounded down, or to nearest."""
    exact = 2 * near + far
    return {exact // 3, (exact + 1) // 3}


class Comparison:
    def __init__(self, name):
        self.name = name
        self.four_cc = name.split("-")[0]
        self.faults = []
        self.counts = dict.fromkeys(["end point", "third", "three colours", "unordered"], 0)
        self.furthest = 0

    def require(self, condition, where, text):
        if not condition:
            self.faults.append(f"{self.name}: pixel {where}: {text}")

    def compare_pixel(self, where, block, i, ours, theirs):
        index = block.indices[i]
        near, far = block.ends if index % 2 == 0 else reversed(block.ends)
        middle = tuple((a + b) // 2 for a, b in zip(near, far)) if index == 2 else (0, 0, 0)
        sixty_fourths = tuple((42 * a + 22 * b) >> 6 for a, b in zip(near, far))
        four_colours = block.ends_in_order or self.four_cc == "DXT3"

        if index < 2:
            self.counts["end point"] += 1
            self.require(ours[:3] == theirs[:3] == near, where, f"end point {near}: ours {ours}, theirs {theirs}")
        elif four_colours or self.four_cc == "DXT5":
            apart = max(abs(a - b) for a, b in zip(sixty_fourths, theirs))
            self.require(apart <= MOST_APART, where, f"third: expected {sixty_fourths}, theirs {theirs}")
            for channel in range(3):
                self.require(theirs[channel] in thirds(near[channel], far[channel]), where, f"theirs is no third: {theirs}")
            if four_colours:
                self.counts["third"] += 1
                self.furthest = max(self.furthest, apart)
                self.require(ours[:3] == sixty_fourths, where, f"third: ours {ours}, expected {sixty_fourths}")
            else:
                self.counts["unordered"] += 1
                self.require(ours[:3] == middle, where, f"form of three: ours {ours}, expected {middle}")
        else:
            self.counts["three colours"] += 1
            self.require(ours[:3] == theirs[:3] == middle, where, f"form of three: ours {ours}, theirs {theirs}, {middle}")

        self.require(ours[3] == theirs[3], where, f"alpha: ours {ours[3]}, theirs {theirs[3]}")

    def run(self, stream, size, ours, theirs):
        width, height = size
        block_bytes = FORMATS[self.four_cc]
        expected = width * height * 4
        if not len(ours) == len(theirs) == expected:
            self.faults.append(f"{self.name}: {len(ours)} and {len(theirs)} bytes of pixels, not {expected}")
            return
        for y in range(height):
            for x in range(width):
                if x % 4 == 0:
                    number = y // 4 * (width // 4) + x // 4
                    block = Block(stream[number * block_bytes : (number + 1) * block_bytes])
                at = (y * width + x) * 4
                self.compare_pixel((x, y), block, y % 4 * 4 + x % 4, tuple(ours[at : at + 4]), tuple(theirs[at : at + 4]))
        # A comparison that met none of a kind has shown nothing.
        self.require(self.counts["end point"] > 0 and self.counts["third"] > 0, "-", f"kinds met: {self.counts}")
        if self.name.endswith("random"):
            self.require(self.furthest == MOST_APART, "-", f"the furthest third is {self.furthest} levels off")
            kind = {"DXT1": "three colours", "DXT3": "third", "DXT5": "unordered"}[self.four_cc]
            self.require(self.counts[kind] > 0, "-", f"no pixel of the kind: {kind}")


def main():
    program, decoder = sys.argv[1:]
    faults = []
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([program, folder], check=True)
        paths = sorted(Path(folder).glob("*.dds"))
        if len(paths) != 2 * len(FORMATS):
            faults.append(f"{len(paths)} streams were written")
        for path in paths:
            size, theirs = decode_with_pillow(path) if decoder == "pillow" else decode_with_imagemagick(decoder, path)
            comparison = Comparison(path.stem)
            comparison.run(path.read_bytes()[128:], size, path.with_suffix(".rgba").read_bytes(), theirs)
            print(f"{path.stem}: {comparison.counts}, furthest third {comparison.furthest}, {len(comparison.faults)} faults")
            faults += comparison.faults
    for fault in faults[:20]:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
