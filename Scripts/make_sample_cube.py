#!/usr/bin/env python3
"""Writes a cube map as a .mox file: sky, sun, hills and a chequered ground, as seen from the middle of the cube.

make_sample_cube.py OUTPUT.mox [SIZE]      SIZE: pixels along an edge, 256 where left out
"""

import math
import struct
import sys

# The direction of a point of each face, u to the right and v down, both -1 to 1; in the order +X -X +Y -Y +Z -Z.
FACES = [
    lambda u, v: (1, -v, -u),
    lambda u, v: (-1, -v, u),
    lambda u, v: (u, 1, v),
    lambda u, v: (u, -1, -v),
    lambda u, v: (u, -v, 1),
    lambda u, v: (-u, -v, -1),
]
SUN = (0.62, 0.36, 0.70)


def mix(a, b, t):
    return tuple(x + (y - x) * min(max(t, 0.0), 1.0) for x, y in zip(a, b))


def colour(direction):
    length = math.sqrt(sum(c * c for c in direction))
    x, y, z = (c / length for c in direction)
    turn = math.atan2(x, z)
    if y < 0:
        chequer = (math.floor(x / -y * 2) + math.floor(z / -y * 2)) % 2
        near = mix((88, 120, 84), (70, 100, 70), chequer)
        return mix((138, 160, 170), near, -y * 4)
    hill = 0.10 + 0.05 * math.sin(turn * 3 + 1) + 0.025 * math.sin(turn * 7)
    if y < hill:
        return mix((70, 104, 122), (44, 78, 98), (hill - y) * 8)
    sky = mix((206, 222, 232), (64, 118, 188), y * 1.6)
    towards = x * SUN[0] + y * SUN[1] + z * SUN[2]
    glow = max(towards - 0.8, 0.0) ** 2 * 12
    return mix(sky, (255, 236, 190), max(glow, (towards - 0.998) * 3000))


def main():
    path = sys.argv[1]
    size = int(sys.argv[2]) if len(sys.argv) > 2 else 256
    header = b"MOX\x03" + struct.pack("<I", 0) + b"rgba" + bytes([8] * 4) + struct.pack("<9I", 0, 0, size, size, 1, 1, 6, 1, 0)
    data = bytearray()
    for face in FACES:
        for row in range(size):
            v = (row + 0.5) / size * 2 - 1
            for column in range(size):
                u = (column + 0.5) / size * 2 - 1
                data += bytes([*(int(c) for c in colour(face(u, v))), 255])
    with open(path, "wb") as file:
        file.write(header + data)


if __name__ == "__main__":
    main()
