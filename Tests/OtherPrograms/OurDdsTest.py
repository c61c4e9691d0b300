"""DDS files by halvane-cli as ImageMagick, Pillow, nvdecompress and astcenc read them: the same colours as halvane-cli shows."""

import struct
import unittest

import Readers
from Halvane import BYTE, FLOAT, INTEGER, SRGB, Native, ProgramTest, blocks, bytes_per_pixel, convert, half, random_bytes, rgba8, tiles
from Readers import astcenc_blocks, imagemagick, nvdecompress, pillow, tile_pixels

WIDTH, HEIGHT = 13, 7
BLOCKS = 4 * 2


class OurDds(ProgramTest):
    def save(self, text, channel_type, data, **more):
        """A native file of that data, and the DDS file that is made of it."""
        native = Native(text, channel_type, WIDTH, HEIGHT, data, **more).write(self.path("a.mox"))
        return native, convert(native, self.path("a.dds"))

    def check(self, reader, rows, within=0):
        for text, channel_type in rows:
            with self.subTest(layout=text, type=channel_type):
                native, dds = self.save(text, channel_type, random_bytes(WIDTH * HEIGHT * bytes_per_pixel(text), 1))
                shown = rgba8(dds)
                if "x" not in text:  # spare bits count as alpha until a DDS file sets them to ones
                    self.assertEqual(rgba8(native), shown)
                self.assert_same_pixels(shown, reader(dds), within)

    def check_codecs(self, reader):
        for text in Readers.DDS_BLOCKS:
            with self.subTest(format=text):
                native, dds = self.save(text, BYTE, blocks(text, BLOCKS, 2))
                # On purpose: the colours at a third of the way are up to 3 levels off.
                self.assert_same_pixels(rgba8(native), reader(dds), within=3)

    def test_imagemagick_sees_the_bytes_of_whole_channels(self):
        self.check(imagemagick, Readers.DDS_IMAGEMAGICK)

    def test_imagemagick_sees_small_channels(self):
        # Every program widens them to 8 bits in its own way.
        self.check(imagemagick, Readers.DDS_IMAGEMAGICK_SMALL, within=1)

    def test_imagemagick_decodes_the_blocks(self):
        self.check_codecs(imagemagick)

    def test_imagemagick_sees_every_face_of_a_cube_with_levels(self):
        face = WIDTH * HEIGHT * 4
        chain = face + 6 * 3 * 4 + 3 * 4  # a level of one pixel more, and the program loses its place in any such file
        native, dds = self.save("argb 8 8 8 8", INTEGER, random_bytes(6 * chain, 5), faces=6, levels=3)
        for index in range(6):
            expected = Native("argb 8 8 8 8", INTEGER, WIDTH, HEIGHT, Native.read(native).data[index * face:(index + 1) * face])
            self.assert_same_pixels(rgba8(expected.write(self.path("face.mox"))), imagemagick(dds, index))

    def test_pillow_sees_the_bytes_of_whole_channels(self):
        self.check(pillow, Readers.DDS_PILLOW)

    def test_pillow_sees_the_extended_header_with_srgb(self):
        native, dds = self.save("rgba 8 8 8 8", BYTE, random_bytes(WIDTH * HEIGHT * 4, 3), space=SRGB)
        self.assertEqual(29, struct.unpack_from("<I", dds.read_bytes(), 128)[0])
        self.assert_same_pixels(Native.read(native).data, pillow(dds))

    def test_pillow_decodes_the_blocks(self):
        self.check_codecs(pillow)

    def test_pillow_sees_the_first_member_of_an_array(self):
        member = WIDTH * HEIGHT * 4
        native, dds = self.save("rgba 8 8 8 8", BYTE, random_bytes(3 * member, 6), members=3)
        self.assert_same_pixels(Native.read(native).data[:member], pillow(dds))

    def test_nvdecompress_sees_masks_of_every_kind(self):
        self.check(nvdecompress, Readers.DDS_NVDECOMPRESS, within=1)

    def test_nvdecompress_takes_the_masks_of_10_bits_at_their_word(self):
        # On purpose: red and blue of these masks stand in each other's place, as the first writers of such files had them, and
        # readers that know of it put them right. This one does not.
        native, dds = self.save("argb 2 10 10 10", INTEGER, random_bytes(WIDTH * HEIGHT * 4, 1))
        shown = bytearray(rgba8(dds))
        self.assertEqual(rgba8(native), shown)
        shown[0::4], shown[2::4] = shown[2::4], shown[0::4]
        self.assert_same_pixels(shown, nvdecompress(dds), within=1)

    def test_nvdecompress_decodes_the_blocks(self):
        self.check_codecs(nvdecompress)

    def tiles_through_astcenc(self, text, channel_type, profile="-cl", data=None):
        native, dds = self.save(text, channel_type, data or tiles(WIDTH, HEIGHT, bytes_per_pixel(text), 4))
        return native, astcenc_blocks(dds, profile)

    def test_astcenc_sees_the_bytes_of_whole_channels(self):
        for text, channel_type in Readers.DDS_ASTCENC:
            with self.subTest(layout=text, type=channel_type):
                native, seen = self.tiles_through_astcenc(text, channel_type)
                expected = tile_pixels(rgba8(native), WIDTH, HEIGHT, 4)
                self.assertEqual([tuple(257 * value for value in pixel) for pixel in expected], seen)

    def test_astcenc_sees_blue_first_though_without_its_alpha(self):
        native, seen = self.tiles_through_astcenc("bgra 8 8 8 8", BYTE)
        expected = tile_pixels(rgba8(native), WIDTH, HEIGHT, 4)
        self.assertEqual([tuple(257 * value for value in pixel[:3]) for pixel in expected], [block[:3] for block in seen])

    def test_astcenc_sees_the_16_bits_of_normalised_channels(self):
        for text, channel_type in Readers.DDS_ASTCENC_16:
            with self.subTest(layout=text):
                native, seen = self.tiles_through_astcenc(text, channel_type)
                self.assert_blocks_hold_16_bits(tile_pixels(Native.read(native).data, WIDTH, HEIGHT, bytes_per_pixel(text)), seen)

    def test_astcenc_sees_half_floats(self):
        colours = [[(1 + 4 * tile) / 8, (2 + 4 * tile) / 8] for tile in range(BLOCKS)]
        data = b"".join(half(colours[y // 4 * 4 + x // 4]) for y in range(HEIGHT) for x in range(WIDTH))
        _, seen = self.tiles_through_astcenc(*Readers.DDS_ASTCENC_FLOAT[0], "-ch", data)
        self.assertEqual([half(colour) for colour in colours], [struct.pack("<2H", *block[:2]) for block in seen])


if __name__ == "__main__":
    unittest.main()
