"""KTX and .astc files, from halvane-cli to astcenc and back: the same pixels, or the same blocks."""

import struct
import unittest

import Readers
from Halvane import (BYTE, FLOAT, LINEAR, SRGB, Native, ProgramTest, bytes_per_pixel, convert, half, info, layout, program, random_bytes,
                     rgba8, run, tiles)
from Readers import astcenc_blocks, tile_pixels

WIDTH, HEIGHT = 13, 7
EVEN = 12  # a width with which no row needs padding: the encoder refuses files with any
FOOTPRINTS = "4x4 5x4 5x5 6x5 6x6 8x5 8x6 8x8 10x5 10x6 10x8 10x10 12x10 12x12".split()
SOLID_FOOTPRINTS = "3x3x3 4x3x3 4x4x3 4x4x4 5x4x4 5x5x4 5x5x5 6x5x5 6x6x5 6x6x6".split()
FIRST_FORMAT, FIRST_SOLID_FORMAT = 27, 41


def astcenc(*words):
    run(program("astcenc"), *words, "-silent")


class KtxAndAstc(ProgramTest):
    def picture(self, mode="RGBA", data=None):
        from PIL import Image

        channels = {"L": 1, "LA": 2, "RGB": 3, "RGBA": 4}[mode]
        image = Image.frombytes(mode, (WIDTH, HEIGHT), data or random_bytes(WIDTH * HEIGHT * channels, 1))
        image.save(self.path("a.png"))
        return self.path("a.png"), image.convert("RGBA").tobytes()

    def volume(self):
        """Six slices, as the numbered pictures that the encoder puts together."""
        from PIL import Image

        for slice in range(6):
            Image.frombytes("RGBA", (WIDTH, HEIGHT), random_bytes(WIDTH * HEIGHT * 4, slice)).save(self.path(f"v_{slice}.png"))
        return self.path("v.png")

    def assert_holds_blocks(self, path, number, blocks, space, depth=1):
        header = info(path)
        self.assertEqual((f"0x{number:016x}", 0, space), (header["formatWord"], header["channelType"], header["colourSpace"]))
        self.assertEqual((WIDTH, HEIGHT, depth, 1, 1, 1),
                         tuple(header[key] for key in ("width", "height", "depth", "arrayMembers", "faces", "mipLevels")))
        self.assertEqual(blocks, Native.read(convert(path, self.path("stored.mox"))).data)

    def test_an_astc_file_of_every_footprint_holds_its_blocks(self):
        picture, _ = self.picture()
        for number, footprint in enumerate(FOOTPRINTS, FIRST_FORMAT):
            with self.subTest(footprint):
                astcenc("-cl", picture, self.path("a.astc"), footprint, "-fastest")
                self.assert_holds_blocks(self.path("a.astc"), number, self.path("a.astc").read_bytes()[16:], LINEAR)

    def test_an_astc_file_of_every_solid_footprint_holds_its_blocks(self):
        picture = self.volume()
        for number, footprint in enumerate(SOLID_FOOTPRINTS, FIRST_SOLID_FORMAT):
            with self.subTest(footprint):
                astcenc("-cl", picture, self.path("a.astc"), footprint, "-fastest", "-zdim", "6")
                self.assert_holds_blocks(self.path("a.astc"), number, self.path("a.astc").read_bytes()[16:], LINEAR, depth=6)

    def test_a_ktx_file_of_every_footprint_goes_both_ways(self):
        picture, _ = self.picture()
        for profile, space in [("-cl", LINEAR), ("-cs", SRGB)]:
            for number, footprint in enumerate(FOOTPRINTS, FIRST_FORMAT):
                with self.subTest(footprint=footprint, profile=profile):
                    theirs, ours = self.path("theirs.ktx"), self.path("ours.ktx")
                    astcenc(profile, picture, theirs, footprint, "-fastest")
                    self.assert_holds_blocks(theirs, number, theirs.read_bytes()[68:], space)
                    convert(theirs, ours)
                    self.assertEqual(theirs.read_bytes()[28:32], ours.read_bytes()[28:32])  # the internal format
                    self.assertEqual(self.decoded(theirs, profile), self.decoded(ours, profile))

    def decoded(self, path, profile):
        target = path.with_suffix(".decoded.ktx")
        astcenc(profile.replace("c", "d"), path, target)
        return target.read_bytes()

    # Its rows of three bytes a pixel follow each other without padding, and its sizes say so.
    def test_uncompressed_ktx_files_of_astcenc_are_the_picture(self):
        rows = [("L", "r 8"), ("LA", "rg 8 8"), ("RGB", "rgb 8 8 8"), ("RGBA", "rgba 8 8 8 8")]
        for mode, text in rows:
            with self.subTest(mode=mode):
                data = tiles(WIDTH, HEIGHT, len(text.split()) - 1, 2)
                picture, _ = self.picture(mode, data)
                astcenc("-cl", picture, self.path("a.astc"), "4x4", "-fast")
                astcenc("-dl", self.path("a.astc"), self.path("a.ktx"))
                self.assertEqual(len(data), struct.unpack_from("<I", self.path("a.ktx").read_bytes(), 64)[0])
                native = Native.read(convert(self.path("a.ktx"), self.path("a.mox")))
                self.assertEqual((layout(text), BYTE, LINEAR), native.encoding())
                self.assertEqual(data, native.data)

    def test_half_floats_of_astcenc_are_the_picture(self):
        for mode, text in [("RGB", "rgb 16 16 16"), ("RGBA", "rgba 16 16 16 16")]:
            with self.subTest(mode=mode):
                picture, expected = self.picture(mode, tiles(WIDTH, HEIGHT, len(mode), 3))
                astcenc("-cl", picture, self.path("a.astc"), "4x4", "-fast")
                astcenc("-dh", self.path("a.astc"), self.path("a.ktx"))
                header = info(self.path("a.ktx"))
                self.assertEqual((f"0x{layout(text):016x}", FLOAT), (header["formatWord"], header["channelType"]))
                self.assert_same_pixels(expected, rgba8(self.path("a.ktx")), within=1)

    def our_tiles(self, text, channel_type, space, profile="-cl", data=None):
        data = data or tiles(EVEN, HEIGHT, bytes_per_pixel(text), 4)
        native = Native(text, channel_type, EVEN, HEIGHT, data, space).write(self.path("a.mox"))
        return native, astcenc_blocks(convert(native, self.path("ours.ktx")), profile)

    def test_astcenc_sees_the_bytes_of_whole_channels(self):
        for text, channel_type, space in Readers.KTX_ASTCENC:
            with self.subTest(layout=text, space=space):
                native, blocks = self.our_tiles(text, channel_type, space)
                expected = tile_pixels(rgba8(native, "--space", ["lrgb", "srgb"][space]), EVEN, HEIGHT, 4)
                self.assertEqual([tuple(257 * value for value in pixel) for pixel in expected], blocks)

    def test_astcenc_sees_the_16_bits_of_normalised_channels(self):
        for encoding in Readers.KTX_ASTCENC_16:
            with self.subTest(encoding):
                native, blocks = self.our_tiles(*encoding)
                self.assert_blocks_hold_16_bits(tile_pixels(Native.read(native).data, EVEN, HEIGHT, bytes_per_pixel(encoding[0])), blocks)

    def test_astcenc_sees_floats(self):
        for encoding in Readers.KTX_ASTCENC_FLOAT:
            with self.subTest(encoding):
                letters, bits = encoding[0].split()[:2]
                colours = [[(1 + tile * 4 + channel) / 8 for channel in range(len(letters))] for tile in range(6)]
                kind = "f" if bits == "32" else "e"
                pixels = [colours[y // 4 * 3 + x // 4] for y in range(HEIGHT) for x in range(EVEN)]
                data = b"".join(struct.pack(f"<{len(letters)}{kind}", *pixel) for pixel in pixels)
                _, blocks = self.our_tiles(*encoding, "-ch", data)
                for colour, block in zip(colours, blocks):
                    seen = block[::3] if letters == "la" else block[:len(letters)]
                    self.assertEqual(half(colour), struct.pack(f"<{len(seen)}H", *seen))


if __name__ == "__main__":
    unittest.main()
