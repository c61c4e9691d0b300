"""DDS files by nvcompress, ImageMagick, Pillow and astcenc, opened by halvane-cli: the picture that went in, or the same blocks."""

import struct
import unittest

from Halvane import BYTE, INTEGER, Native, ProgramTest, convert, info, layout, program, random_bytes, rgba8, run, tiles
from Readers import imagemagick, pillow

WIDTH, HEIGHT = 13, 7
CHANNELS = {"L": 1, "LA": 2, "RGB": 3, "RGBA": 4}


class DdsOfOthers(ProgramTest):
    def picture(self, mode, ending, data=None, size=(WIDTH, HEIGHT)):
        """A picture without any loss, and what it looks like in four bytes a pixel."""
        from PIL import Image

        image = Image.frombytes(mode, size, data or random_bytes(size[0] * size[1] * CHANNELS[mode], 1))
        image.save(self.path("a" + ending))
        return self.path("a" + ending), image.convert("RGBA").tobytes()

    def assert_loads(self, dds, text, channel_type, levels=1, faces=1):
        header = info(dds)
        self.assertEqual((f"0x{layout(text):016x}", channel_type), (header["formatWord"], header["channelType"]))
        self.assertEqual((levels, faces, 1, 1), (header["mipLevels"], header["faces"], header["depth"], header["arrayMembers"]))

    def assert_holds_the_data_of(self, dds):
        """What stands behind the header is the texture's data, byte for byte."""
        native = Native.read(convert(dds, self.path("stored.mox"), "--as-stored"))
        self.assertEqual(dds.read_bytes()[128:], native.data)

    # nvcompress

    def nvcompress(self, picture, *words):
        run(program("nvcompress"), *words, picture, self.path("nv.dds"))
        return self.path("nv.dds")

    def test_nvcompress_without_compression(self):
        for mode, words in [("RGB", ()), ("RGBA", ("-alpha",))]:
            with self.subTest(mode=mode):
                picture, expected = self.picture(mode, ".tga")
                dds = self.nvcompress(picture, "-nomips", "-rgb", *words)
                self.assert_loads(dds, "argb 8 8 8 8", INTEGER)
                self.assertEqual(expected, rgba8(dds))

    def test_nvcompress_with_blocks(self):
        picture, _ = self.picture("RGBA", ".tga")
        for word, text in [("-bc1", "7"), ("-bc1a", "7"), ("-bc2", "9"), ("-bc3", "11")]:
            with self.subTest(word):
                dds = self.nvcompress(picture, "-nomips", "-alpha", word)
                self.assert_loads(dds, text, BYTE)
                self.assert_holds_the_data_of(dds)
                self.assert_same_pixels(pillow(dds), rgba8(dds), within=3)

    def test_nvcompress_with_levels(self):
        picture, _ = self.picture("RGB", ".tga", size=(24, 12))
        for word, text, channel_type in [("-bc1", "7", BYTE), ("-rgb", "argb 8 8 8 8", INTEGER)]:
            with self.subTest(word):
                dds = self.nvcompress(picture, word)
                self.assert_loads(dds, text, channel_type, levels=5)
                self.assert_holds_the_data_of(dds)  # one member with one face: levels stand in the same order in both

    # On purpose: its FourCCs of one and two channels, ATI1 and ATI2, are not among those that are read.
    def test_nvcompress_with_blocks_of_one_and_two_channels_is_refused(self):
        picture, _ = self.picture("RGB", ".tga")
        for word in ("-bc4", "-bc5"):
            dds = self.nvcompress(picture, "-nomips", word)
            with self.assertRaises(AssertionError):
                info(dds)

    # ImageMagick

    def imagemagick_writes(self, picture, compression, mipmaps=0):
        run(program("convert-im6.q16"), picture, "-define", f"dds:compression={compression}", "-define", f"dds:mipmaps={mipmaps}",
            self.path("im.dds"))
        return self.path("im.dds")

    def test_imagemagick_without_compression(self):
        rows = [("L", "rgb 8 8 8"), ("RGB", "rgb 8 8 8"), ("LA", "argb 8 8 8 8"), ("RGBA", "argb 8 8 8 8")]
        for mode, text in rows:
            with self.subTest(mode=mode):
                picture, expected = self.picture(mode, ".png")
                dds = self.imagemagick_writes(picture, "none")
                self.assert_loads(dds, text, INTEGER)
                self.assertEqual(expected, rgba8(dds))

    def test_imagemagick_with_levels(self):
        picture, _ = self.picture("RGBA", ".png", size=(16, 16))
        dds = self.imagemagick_writes(picture, "none", mipmaps=4)
        self.assert_loads(dds, "argb 8 8 8 8", INTEGER, levels=5)
        self.assert_holds_the_data_of(dds)

    def test_imagemagick_with_blocks(self):
        picture, _ = self.picture("RGBA", ".png")
        for compression, text in [("dxt1", "7"), ("dxt5", "11")]:
            with self.subTest(compression):
                dds = self.imagemagick_writes(picture, compression)
                self.assert_loads(dds, text, BYTE)
                self.assert_holds_the_data_of(dds)
                self.assert_same_pixels(imagemagick(dds), rgba8(dds), within=3)

    # Pillow

    def test_pillow(self):
        for mode, text in [("RGB", "rgb 8 8 8"), ("RGBA", "argb 8 8 8 8")]:
            with self.subTest(mode=mode):
                dds, expected = self.picture(mode, ".dds")
                self.assert_loads(dds, text, INTEGER)
                self.assertEqual(expected, rgba8(dds))

    # It says of grey that a pixel has 24 or 32 bits, which a file of that length does not hold.
    def test_grey_with_the_masks_of_colours_is_refused(self):
        for mode in ("L", "LA"):
            dds, _ = self.picture(mode, ".dds")
            with self.assertRaises(AssertionError):
                info(dds)

    # astcenc

    def test_astcenc_decodes_to_dds(self):
        rows = [("L", "l 8"), ("LA", "al 8 8"), ("RGBA", "abgr 8 8 8 8")]
        for mode, text in rows:
            with self.subTest(mode=mode):
                picture, expected = self.picture(mode, ".png", tiles(WIDTH, HEIGHT, CHANNELS[mode], 2))
                run(program("astcenc"), "-cl", picture, self.path("a.astc"), "4x4", "-fast", "-silent")
                run(program("astcenc"), "-dl", self.path("a.astc"), self.path("astcenc.dds"), "-silent")
                self.assert_loads(self.path("astcenc.dds"), text, INTEGER)
                self.assertEqual(expected, rgba8(self.path("astcenc.dds")))

    def test_astcenc_decodes_to_half_floats_in_dds(self):
        picture, expected = self.picture("RGBA", ".png", tiles(WIDTH, HEIGHT, 4, 3))
        run(program("astcenc"), "-cl", picture, self.path("a.astc"), "4x4", "-fast", "-silent")
        run(program("astcenc"), "-dh", self.path("a.astc"), self.path("astcenc.dds"), "-silent")
        self.assertEqual(10, struct.unpack_from("<I", self.path("astcenc.dds").read_bytes(), 128)[0])
        self.assert_loads(self.path("astcenc.dds"), "rgba 16 16 16 16", 12)
        self.assert_same_pixels(expected, rgba8(self.path("astcenc.dds")), within=1)


if __name__ == "__main__":
    unittest.main()
