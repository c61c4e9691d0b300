#!/usr/bin/env python3
"""Makes the files of Tests/Data/BcBlocks: a surface of hard blocks, and what each type of block makes of it and back.

    MakeBcFixtures.py FOLDER            writes the files into FOLDER
    MakeBcFixtures.py FOLDER --check    writes nothing; fails if a file in FOLDER is not what would be written
    MakeBcFixtures.py --block PIXELS    prints the colour part of one opaque block: 16 colours as six hexadecimal digits each,
                                        red first

This is a second encoder and decoder, written for its own sake: it shares nothing with the library, so that the library's tests
compare it with something that is not itself. Only the standard library of Python is used, whose numbers are doubles. A sum,
product, quotient or root of two 32-bit floats that is computed in double and then rounded to 32 bits is what 32-bit arithmetic
gives (53 bits are more than twice 24 and two), so every operation below is one of doubles, rounded by f32().
"""

import math
import struct
import sys
from pathlib import Path

TYPES = (1, 2, 3, 4, 5)
WIDTH, HEIGHT = 31, 38  # 8 by 10 blocks, of which the last column and row are padded
STEPS, TOLERANCE = 100, 1e-5


def f32(value):
    """The nearest 32-bit float."""
    return struct.unpack("<f", struct.pack("<f", value))[0]


def dot(a, b):
    red, green, blue = (f32(x * y) for x, y in zip(a, b))
    return f32(f32(red + green) + blue)


def times(vector, factor):
    return [f32(x * factor) for x in vector]


def minus(a, b):
    return [f32(x - y) for x, y in zip(a, b)]


# Encoding


def to565(colour):
    red, green, blue = (int(x) for x in colour)
    return (red & 0xF8) << 8 | (green & 0xFC) << 3 | blue >> 3


def find_mean(colours):
    total = [0.0, 0.0, 0.0]
    for colour in colours:
        total = [f32(a + b) for a, b in zip(total, colour)]
    return times(total, 0.0625)


def find_axis(deviations):
    matrix = [[0.0] * 3 for _ in range(3)]
    for deviation in deviations:
        for i in range(3):
            for j in range(3):
                matrix[i][j] = f32(matrix[i][j] + f32(deviation[i] * deviation[j]))
    axis = [1.0, 1.0, 1.0]
    for _ in range(STEPS):
        product = [dot(row, axis) for row in matrix]
        length = f32(math.sqrt(dot(product, product)))
        if length == 0:
            break
        before, axis = axis, times(product, f32(1 / length))
        move = minus(axis, before)
        if f32(math.sqrt(dot(move, move))) < f32(TOLERANCE):
            break
    return axis


def fit_line(colours):
    """The end points of the line through the colours, clamped: that of the least projection, that of the greatest."""
    mean = find_mean(colours)
    deviations = [minus(colour, mean) for colour in colours]
    axis = find_axis(deviations)
    places = [0.0] + [dot(axis, deviation) for deviation in deviations]

    def end_point(place):
        return [min(max(f32(m + f32(place * a)), 0.0), 255.0) for m, a in zip(mean, axis)]

    return end_point(min(places)), end_point(max(places))


def fit(colours, transparent, slots):
    """Colours 0 and 1 of a block of three or more colours, and its sixteen indices."""
    three = any(transparent)
    least, greatest = fit_line(colours)
    first, second = (least, greatest) if (to565(least) < to565(greatest)) == three else (greatest, least)
    if to565(first) == to565(second):
        return to565(first), to565(second), [0] * 16
    way = minus(second, first)
    way = times(way, f32(1 / dot(way, way)))
    of_step = [0, 2, 1] if three else [0, 2, 3, 1]
    indices = list(slots)
    for i, colour in enumerate(colours):
        place = dot(minus(colour, first), way)
        step = int(f32(f32((len(of_step) - 1) * place) + 0.5))
        if transparent[i]:
            indices[i] = 3
        elif 0 <= step < len(of_step):
            indices[i] = of_step[step]
    return to565(first), to565(second), indices


def encode_colours(pixels, one_bit_alpha, slots):
    """The colour part of a block; slots are the indices of the block before and become those of this one."""
    colours = [[float(x) for x in pixel[:3]] for pixel in pixels]
    transparent = [one_bit_alpha and pixel[3] < 128 for pixel in pixels]
    numbers = [to565(colour) for colour in colours]
    distinct = sorted(set(numbers))
    if len(distinct) > 2:
        colour0, colour1, indices = fit(colours, transparent, slots)
    elif any(transparent):
        colour0, colour1 = distinct if len(distinct) == 2 else (0, distinct[0])
        indices = [3 if hidden else int(number == colour1) for number, hidden in zip(numbers, transparent)]
    else:
        colour0, colour1 = reversed(distinct) if len(distinct) == 2 else (distinct[0], 0)
        indices = [int(len(distinct) == 2 and number == colour1) for number in numbers]
    slots[:] = indices
    return struct.pack("<HHI", colour0, colour1, sum(index << 2 * i for i, index in enumerate(indices)))


def encode_alphas(alphas, explicit):
    if explicit:
        return sum(alpha >> 4 << 4 * i for i, alpha in enumerate(alphas)).to_bytes(8, "little")
    greatest, least = max(alphas), min(alphas)
    bits = 0
    if greatest > least:
        for i, alpha in enumerate(alphas):
            sevenths = f32(f32((alpha - least) * 7.0) / (greatest - least))
            bits |= (1, 7, 6, 5, 4, 3, 2, 0)[sum(sevenths >= half + 0.5 for half in range(7))] << 3 * i
    return bytes([greatest, least]) + bits.to_bytes(6, "little")


def padded(size):
    """For each place of a side padded to whole blocks, the place that it repeats."""
    whole = -(-size // 4) * 4
    return [place if place < size else max(place + size - whole, 0) for place in range(whole)]


def encode(image, width, height, block_type):
    columns, rows = padded(width), padded(height)
    slots = [0] * 16
    stream = b""
    for top in range(0, len(rows), 4):
        for left in range(0, len(columns), 4):
            pixels = [image[y * width + x] for y in rows[top : top + 4] for x in columns[left : left + 4]]
            if block_type != 1:
                stream += encode_alphas([pixel[3] for pixel in pixels], block_type in (2, 3))
            stream += encode_colours(pixels, block_type == 1, slots)
    return stream


# Decoding


def expand565(number):
    red, green, blue = number >> 11, number >> 5 & 63, number & 31
    return red << 3 | red >> 2, green << 2 | green >> 4, blue << 3 | blue >> 2


def decode_alphas(part, explicit):
    bits = int.from_bytes(part, "little")
    if explicit:
        return [(bits >> 4 * i & 15) * 17 for i in range(16)]
    a0, a1 = part[:2]
    between = [((7 - i) * a0 + i * a1) // 7 for i in range(1, 7)] if a0 > a1 else [((5 - i) * a0 + i * a1) // 5 for i in range(1, 5)]
    palette = [a0, a1] + between + [0, 255]
    return [palette[bits >> 16 + 3 * i & 7] for i in range(16)]


def decode_block(block, block_type):
    colour0, colour1, bits = struct.unpack("<HHI", block[-8:])
    a, b = expand565(colour0), expand565(colour1)
    if block_type in (2, 3) or colour0 > colour1:
        mixed = [tuple(u * x + v * y >> 6 for x, y in zip(a, b)) + (255,) for u, v in ((42, 22), (22, 42))]
    else:
        mixed = [tuple(x + y >> 1 for x, y in zip(a, b)) + (255,), (0, 0, 0, 0)]
    palette = [a + (255,), b + (255,)] + mixed
    pixels = [palette[bits >> 2 * i & 3] for i in range(16)]
    if block_type == 1:
        return pixels
    return [pixel[:3] + (alpha,) for pixel, alpha in zip(pixels, decode_alphas(block[:8], block_type in (2, 3)))]


def decode(stream, width, height, block_type):
    size, across = (8 if block_type == 1 else 16), -(-width // 4)
    blocks = [decode_block(stream[i : i + size], block_type) for i in range(0, len(stream), size)]
    return [blocks[y // 4 * across + x // 4][y % 4 * 4 + x % 4] for y in range(height) for x in range(width)]


# The surface


class Random:
    """A linear congruential generator: the same numbers with every Python."""

    def __init__(self, seed):
        self.state = seed

    def below(self, count):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) % count

    def between(self, least, most):
        return least + self.below(most - least + 1)


def clamp(colour):
    return [min(max(x, 0), 255) for x in colour]


def anything(random):
    return [[random.below(256) for _ in range(3)] for _ in range(16)]


def one_colour(random):
    return [[random.below(256) for _ in range(3)]] * 16


def two_colours(random):
    pair = [[random.below(256) for _ in range(3)] for _ in range(2)]
    return [pair[random.below(2)] for _ in range(16)]


def near_one_colour(random):
    base = [random.below(256) for _ in range(3)]
    return [clamp([x + random.between(-9, 9) for x in base]) for _ in range(16)]


def along_a_line(random):
    base = [random.below(256) for _ in range(3)]
    way = [random.between(-255, 255) for _ in range(3)]
    return [clamp([x + place * w // 16 for x, w in zip(base, way)]) for place in [random.between(-8, 8) for _ in range(16)]]


def corners(random):
    return [[random.below(2) * 255 for _ in range(3)] for _ in range(16)]


def one_sum(random):
    """Red rises as green falls: the iteration cannot leave its start."""
    blue = random.below(256)
    return [[20 * place, 255 - 20 * place, blue] for place in [random.below(12) for _ in range(16)]]


def two_directions(random):
    """Two directions of nearly the same spread: many steps."""
    base, apart = [random.between(80, 150) for _ in range(3)], random.between(6, 20)
    return [[base[0] + i // 4 * apart + random.below(2), base[1] + i % 4 * apart + random.below(2), base[2]] for i in range(16)]


def one_outlier(random):
    colours = near_one_colour(random)
    colours[random.below(16)] = [random.below(256) for _ in range(3)]
    return colours


def beyond_the_end(random):
    """A line that leaves the cube, so that an end point is clamped and a pixel lies so far beyond it that its index is left out.

    Red and green are symmetrical, which keeps the iteration on (1, 1, 0) although the colours spread more across it.
    """
    places = [(0, 51), (140, 191)] + [(190, 1)] * 6 + [(130, 1)] * 4 + [(190, 61)] * 4
    turned, blue = random.below(2), random.below(256)
    if turned:
        places = [(255 - red, 256 - green) for red, green in places]
    colours = [[*pair, blue] for pair in places]
    first = random.below(16)
    return colours[first:] + colours[:first]


KINDS = (anything, one_colour, two_colours, near_one_colour, along_a_line, corners, one_sum, two_directions, one_outlier, beyond_the_end)


def some_alphas(random):
    kind = random.below(5)
    if kind == 0:
        return [255] * 16
    if kind == 1:
        return [random.below(256) for _ in range(16)]
    if kind == 2:
        base = random.below(253)
        return [base + random.below(4) for _ in range(16)]
    if kind == 3:
        return [random.between(126, 129) for _ in range(16)]
    hidden = random.below(16)
    return [0 if i == hidden else 255 for i in range(16)]


def make_surface():
    """Blocks of every kind, and those that leave an index out after all the others."""
    random = Random(20)
    image = [None] * (WIDTH * HEIGHT)
    for number in range(len(padded(WIDTH)) * len(padded(HEIGHT)) // 16):
        kind = beyond_the_end if number % 3 == 2 else KINDS[number % len(KINDS)]
        colours = kind(random)
        alphas = some_alphas(random)
        left, top = number % 8 * 4, number // 8 * 4
        for i in range(16):
            x, y = left + i % 4, top + i // 4
            if x < WIDTH and y < HEIGHT:
                image[y * WIDTH + x] = (*colours[i], alphas[i])
    return image


def to_bytes(image):
    return b"".join(bytes(pixel) for pixel in image)


def make_files():
    image = make_surface()
    files = {"surface.rgba": to_bytes(image)}
    for block_type in TYPES:
        stream = encode(image, WIDTH, HEIGHT, block_type)
        files[f"type{block_type}.blocks"] = stream
        files[f"type{block_type}.rgba"] = to_bytes(decode(stream, WIDTH, HEIGHT, block_type))
    return files


def main(arguments):
    if len(arguments) == 17 and arguments[0] == "--block":
        pixels = [(*bytes.fromhex(text), 255) for text in arguments[1:]]
        print("colours %04x %04x, indices %08x" % struct.unpack("<HHI", encode_colours(pixels, True, [0] * 16)))
        return 0
    if len(arguments) not in (1, 2) or arguments[1:] not in ([], ["--check"]):
        print(__doc__, file=sys.stderr)
        return 2
    folder = Path(arguments[0])
    others = []
    for name, data in make_files().items():
        if not arguments[1:]:
            (folder / name).write_bytes(data)
        elif not (folder / name).is_file() or (folder / name).read_bytes() != data:
            others.append(name)
    for name in others:
        print(f"{folder / name}: not what this program makes", file=sys.stderr)
    return 1 if others else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
