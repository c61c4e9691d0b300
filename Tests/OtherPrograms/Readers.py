"""Pictures as other programs read them from our files, and which of our layouts each of them knows."""

import struct

from Halvane import BYTE, FLOAT, INTEGER, LINEAR, SHORT, SRGB, program, run

# (layout, channel type): what is tested to look the same there as here.
_BYTES = [("rgb 8 8 8", BYTE), ("rgb 8 8 8", INTEGER), ("argb 8 8 8 8", BYTE), ("argb 8 8 8 8", INTEGER)]
_GREY = [("l 8", BYTE), ("l 8", INTEGER)]
_GREY_WITH_ALPHA = [("al 8 8", BYTE), ("al 8 8", INTEGER)]
_RGBA = [("rgba 8 8 8 8", BYTE), ("abgr 8 8 8 8", INTEGER)]
DDS_IMAGEMAGICK = _BYTES + _GREY
DDS_IMAGEMAGICK_SMALL = [(text, kind) for text in ("rgb 5 6 5", "argb 1 5 5 5", "argb 4 4 4 4") for kind in (SHORT, INTEGER)]
DDS_PILLOW = _BYTES + _GREY + _GREY_WITH_ALPHA + _RGBA
DDS_NVDECOMPRESS = _BYTES + DDS_IMAGEMAGICK_SMALL + [
    (text, kind) for text in ("xrgb 1 5 5 5", "argb 8 3 3 2", "gr 16 16") for kind in (SHORT, INTEGER)] + [
    ("rgb 3 3 2", BYTE), ("rgb 3 3 2", INTEGER)]
DDS_ASTCENC = DDS_PILLOW + [("rg 8 8", BYTE), ("r 8", BYTE)]
DDS_ASTCENC_16 = [("r 16", SHORT), ("rg 16 16", SHORT), ("rgba 16 16 16 16", SHORT)]
DDS_ASTCENC_FLOAT = [("rg 16 16", FLOAT)]
DDS_BLOCKS = ["7", "9", "11"]
# (layout, channel type, colour space)
KTX_ASTCENC = [(text, BYTE, space) for text in ("rgb 8 8 8", "rgba 8 8 8 8") for space in (LINEAR, SRGB)] + [
    (text, BYTE, LINEAR) for text in ("r 8", "rg 8 8", "bgra 8 8 8 8", "l 8", "la 8 8")]
KTX_ASTCENC_16 = [(text, SHORT, LINEAR) for text in ("r 16", "rg 16 16", "rgb 16 16 16", "rgba 16 16 16 16")]
KTX_ASTCENC_FLOAT = [(" ".join([letters] + [str(bits)] * len(letters)), FLOAT, LINEAR)
                     for letters in ("r", "rg", "rgb", "rgba", "l", "la") for bits in (16, 32)]
KTX_ASTCENC_BLOCKS = [(str(number), BYTE, space) for number in range(27, 41) for space in (LINEAR, SRGB)]


def imagemagick(path, index=0):
    """Red, green, blue and alpha, a byte each, of one of the pictures in the file."""
    return run(program("convert-im6.q16"), f"{path}[{index}]", "-depth", "8", "rgba:-")


def pillow(path):
    from PIL import Image

    with Image.open(path) as image:
        return image.convert("RGBA").tobytes()


def nvdecompress(path):
    """The top level, through the TGA file that the program puts beside its input.

    It looks for an extended header wherever the FourCC field says so, be the field in use or not, and our plain files leave that
    FourCC there: of a file whose flags do not name it, it gets a copy without.
    """
    from PIL import Image

    content = bytearray(path.read_bytes())
    if not content[80] & 4:
        content[84:88] = bytes(4)
    copy = path.with_suffix(".nv.dds")
    copy.write_bytes(content)
    target = copy.with_suffix(".tga")
    target.unlink(missing_ok=True)
    said = run(program("nvdecompress"), copy)
    if not target.exists():  # its status is 0 all the same
        raise AssertionError(f"nvdecompress does not read {path}: {said.decode(errors='replace')}")
    with Image.open(target) as image:
        return image.convert("RGBA").tobytes()


def astcenc_blocks(path, profile="-cl"):
    """Encodes a picture of 4 by 4 tiles of one colour each, with which the codec has nothing to lose.

    @return for each tile its four channels: 0 to 65535, or the bits of half floats with the profile "-ch"
    """
    target = path.with_suffix(".tiles.astc")
    run(program("astcenc"), profile, path, target, "4x4", "-fast", "-silent")
    data = target.read_bytes()[16:]
    blocks = []
    for at in range(0, len(data), 16):
        mark, *colour = struct.unpack("<H6x4H", data[at:at + 16])
        if mark != (0xFFFC if profile == "-ch" else 0xFDFC):
            raise AssertionError(f"{path}: block {at // 16} is not of one colour: {data[at:at + 16].hex()}")
        blocks.append(tuple(colour))
    return blocks


def tile_pixels(pixels, width, height, size):
    """The first pixel of each tile of 4 by 4, in the order of a codec's blocks; `size` bytes to a pixel."""
    places = [(x, y) for y in range(0, height, 4) for x in range(0, width, 4)]
    return [pixels[(y * width + x) * size:(y * width + x + 1) * size] for x, y in places]
