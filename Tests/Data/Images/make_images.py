#!/usr/bin/python3
"""Makes the images of this folder with Pillow (Debian: python3-pil), so that another program than the one under test wrote them."""
import pathlib
import struct
import zlib

from PIL import Image

HERE = pathlib.Path(__file__).parent
# Two by two pixels: red, green, blue, alpha.
PIXELS = [(1, 2, 3, 4), (250, 100, 50, 255), (0, 255, 0, 0), (255, 254, 253, 128)]


def picture(mode, pixels):
    image = Image.new(mode, (2, 2))
    image.putdata(pixels)
    return image


def png_of_size_only(name, width, height):
    """A header that is right and claims any size, and eight bytes of a picture."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    data = zlib.compress(bytes(16))
    (HERE / name).write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", data) + chunk(b"IEND", b""))


rgba = picture("RGBA", PIXELS)
rgb = picture("RGB", [pixel[:3] for pixel in PIXELS])
rgba.save(HERE / "rgba.png")
rgb.save(HERE / "rgb.png")
rgb.save(HERE / "rgb.bmp")
rgb.save(HERE / "rgb.tga")
rgba.save(HERE / "rgba.tga")
picture("L", [0, 1, 128, 255]).save(HERE / "grey.png")
palette = picture("P", [0, 1, 2, 1])
palette.putpalette([10, 20, 30, 40, 50, 60, 70, 80, 90])
palette.save(HERE / "palette.png", transparency=1)
Image.new("RGB", (16, 16), (200, 100, 50)).save(HERE / "flat.jpg", quality=100)
png_of_size_only("claims-4-gib.png", 32768, 32768)
png_of_size_only("claims-3.6-gb.png", 30000, 30000)
