"""What stands in the containers' headers for which texture: written down from the published tables, apart from the library's own.

An encoding is (layout or format number as text, channel type, colour space).
"""

LINEAR, SRGB = 0, 1
# Format number: bytes of a block, and its width, height and depth.
BLOCKS = {
    "0": (8, 8, 4, 1), "1": (8, 8, 4, 1), "2": (8, 4, 4, 1), "3": (8, 4, 4, 1), "4": (8, 8, 4, 1), "5": (8, 4, 4, 1), "6": (8, 4, 4, 1),
    "7": (8, 4, 4, 1), "8": (16, 4, 4, 1), "9": (16, 4, 4, 1), "10": (16, 4, 4, 1), "11": (16, 4, 4, 1), "12": (8, 4, 4, 1),
    "13": (16, 4, 4, 1),
    "16": (4, 2, 1, 1), "17": (4, 2, 1, 1), "18": (1, 8, 1, 1), "19": (4, 1, 1, 1), "20": (4, 2, 1, 1), "21": (4, 2, 1, 1),
    "22": (8, 4, 4, 1), "23": (16, 4, 4, 1), "24": (8, 4, 4, 1), "25": (8, 4, 4, 1), "26": (16, 4, 4, 1),
}
for _number, _footprint in enumerate("4x4 5x4 5x5 6x5 6x6 8x5 8x6 8x8 10x5 10x6 10x8 10x10 12x10 12x12".split(), 27):
    BLOCKS[str(_number)] = (16, *(int(side) for side in _footprint.split("x")), 1)
for _number, _footprint in enumerate("3x3x3 4x3x3 4x4x3 4x4x4 5x4x4 5x5x4 5x5x5 6x5x5 6x6x5 6x6x6".split(), 41):
    BLOCKS[str(_number)] = (16, *(int(side) for side in _footprint.split("x")))


def _rows(text):
    """Lines of "number layout | channel types [sRGB]", separated by ";"."""
    for entry in text.replace("\n", " ").split(";"):
        left, right = entry.split("|")
        number, layout = left.split(maxsplit=1)
        words = right.split()
        for channel_type in words[0].split(","):
            yield int(number), (layout.strip(), int(channel_type), SRGB if "sRGB" in words else LINEAR)


def _whole(letters, bits):
    return " ".join([letters] + [str(bits)] * len(letters))


def _ktx():
    rows = list(_rows("""
        10768 rgb 3 3 2 | 0; 32828 a 8 | 0; 32830 a 16 | 0; 32832 l 8 | 0; 32834 l 16 | 0; 32837 la 8 8 | 0; 32849 rgb 8 8 8 | 0;
        32850 rgbx 10 10 10 2 | 8; 32852 rgb 16 16 16 | 4; 32854 rgba 4 4 4 4 | 4; 32855 rgba 5 5 5 1 | 4; 32856 rgba 8 8 8 8 | 0;
        32857 abgr 2 10 10 10 | 8; 32859 rgba 16 16 16 16 | 4; 32993 bgra 8 8 8 8 | 0; 33321 r 8 | 0; 33323 rg 8 8 | 0; 33322 r 16 | 4;
        33324 rg 16 16 | 4; 33325 r 16 | 12; 33326 r 32 | 12; 33327 rg 16 16 | 12; 33328 rg 32 32 | 12; 33329 r 8 | 3; 33330 r 8 | 2;
        33331 r 16 | 7; 33332 r 16 | 6; 33333 r 32 | 11; 33334 r 32 | 10; 33335 rg 8 8 | 3; 33336 rg 8 8 | 2; 33337 rg 16 16 | 7;
        33338 rg 16 16 | 6; 33339 rg 32 32 | 11; 33340 rg 32 32 | 10; 33776 7 | 0; 33778 9 | 0; 33779 11 | 0; 34836 rgba 32 32 32 32 | 12;
        34837 rgb 32 32 32 | 12; 34838 a 32 | 12; 34840 l 32 | 12; 34841 la 32 32 | 12; 34842 rgba 16 16 16 16 | 12;
        34843 rgb 16 16 16 | 12; 34844 a 16 | 12; 34846 l 16 | 12; 34847 la 16 16 | 12; 35412 0 | 0 sRGB; 35413 2 | 0 sRGB;
        35414 1 | 0 sRGB; 35415 3 | 0 sRGB; 35840 2 | 0; 35841 0 | 0; 35842 3 | 0; 35843 1 | 0; 35898 bgr 10 11 11 | 13; 35901 19 | 13;
        35905 rgb 8 8 8 | 0 sRGB; 35907 rgba 8 8 8 8 | 0 sRGB; 36194 rgb 5 6 5 | 4; 36196 6 | 0; 36208 rgba 32 32 32 32 | 11;
        36209 rgb 32 32 32 | 10; 36214 rgba 16 16 16 16 | 6; 36215 rgb 16 16 16 | 6; 36220 rgba 8 8 8 8 | 2; 36221 rgb 8 8 8 | 2;
        36226 rgba 32 32 32 32 | 10; 36227 rgb 32 32 32 | 11; 36232 rgba 16 16 16 16 | 7; 36233 rgb 16 16 16 | 7; 36238 rgba 8 8 8 8 | 3;
        36239 rgb 8 8 8 | 3; 36756 r 8 | 1; 36757 rg 8 8 | 1; 36758 rgb 8 8 8 | 1; 36759 rgba 8 8 8 8 | 1; 36760 r 16 | 5;
        36761 rg 16 16 | 5; 36762 rgb 16 16 16 | 5; 36763 rgba 16 16 16 16 | 5; 36884 a 8 | 1; 36885 l 8 | 1; 36886 la 8 8 | 1;
        36888 a 16 | 1; 36889 l 16 | 1; 36975 rgba 10 10 10 2 | 10; 37175 4 | 0; 37176 5 | 0; 37488 25 | 0; 37489 25 | 1; 37490 26 | 0;
        37491 26 | 1; 37492 22 | 0; 37493 22 | 0 sRGB; 37494 24 | 0; 37495 24 | 0 sRGB; 37496 23 | 0; 37497 23 | 0 sRGB;
        37872 4 | 0 sRGB; 37873 5 | 0 sRGB"""))
    for first, number, count in [(37808, 27, 14), (37824, 41, 10)]:
        for i in range(count):
            rows += [(first + i, (str(number + i), 0, LINEAR)), (first + 32 + i, (str(number + i), 0, SRGB))]
    # Letters whose sizes glType tells: written where no sized number has them.
    written = {encoding for _, encoding in rows}
    for base, letters in [(6403, "r"), (6406, "a"), (6407, "rgb"), (6408, "rgba"), (6409, "l"), (6410, "la"), (33319, "rg")]:
        for channel_type, bits in [(0, 8), (1, 8), (4, 16), (5, 16), (8, 32), (9, 32)]:
            encoding = (_whole(letters, bits), channel_type, LINEAR)
            if encoding not in written:
                rows.append((base, encoding))
    return rows


KTX = _ktx()

# Number or FourCC of the plain header, and what is written under it; it loads as the first type that is told.
DDS_PLAIN = list(_rows("""
    20 rgb 8 8 8 | 8,0; 21 argb 8 8 8 8 | 8,0; 23 rgb 5 6 5 | 8,4; 24 xrgb 1 5 5 5 | 8,4; 25 argb 1 5 5 5 | 8,4; 26 argb 4 4 4 4 | 8,4;
    27 rgb 3 3 2 | 8,0; 28 a 8 | 8,0; 29 argb 8 3 3 2 | 8,4; 31 abgr 2 10 10 10 | 8; 34 gr 16 16 | 8,4; 35 argb 2 10 10 10 | 8;
    36 abgr 16 16 16 16 | 8,4; 50 l 8 | 8,0; 51 al 8 8 | 8,0; 52 al 4 4 | 8,0; 60 gr 8 8 | 9; 61 lgr 6 5 5 | 9; 62 xlgr 8 8 8 8 | 9;
    63 abgr 8 8 8 8 | 9; 64 gr 16 16 | 9; 67 abgr 2 10 10 10 | 9; 81 l 16 | 8,4; 112 gr 16 16 | 12; 113 rgba 16 16 16 16 | 12;
    114 r 32 | 12; 116 abgr 32 32 32 32 | 12""")) + [
    (int.from_bytes(code, "little"), (number, 0, LINEAR))
    for code, number in [(b"DXT1", "7"), (b"DXT2", "8"), (b"DXT3", "9"), (b"DXT4", "10"), (b"DXT5", "11"), (b"PTC2", "1"), (b"PTC4", "3"),
                         (b"UYVY", "16"), (b"YUY2", "17"), (b"RGBG", "20"), (b"GRGB", "21")]]
# Flags, bit count and masks of red, green, blue and alpha.
DDS_MASKS = {
    (64, 24, 0xFF0000, 0xFF00, 0xFF, 0): 20, (65, 32, 0xFF0000, 0xFF00, 0xFF, 0xFF000000): 21, (64, 16, 0xF800, 0x7E0, 0x1F, 0): 23,
    (64, 16, 0x7C00, 0x3E0, 0x1F, 0): 24, (65, 16, 0x7C00, 0x3E0, 0x1F, 0x8000): 25, (65, 16, 0xF00, 0xF0, 0xF, 0xF000): 26,
    (64, 8, 0xE0, 0x1C, 0x3, 0): 27, (2, 8, 0, 0, 0, 0xFF): 28, (65, 16, 0xE0, 0x1C, 0x3, 0xFF00): 29,
    (65, 32, 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000): 31, (64, 32, 0xFFFF, 0xFFFF0000, 0, 0): 34,
    (65, 32, 0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000): 35, (0x20000, 8, 0xFF, 0, 0, 0): 50, (0x20001, 16, 0xFF, 0, 0, 0xFF00): 51,
    (0x20001, 8, 0xF, 0, 0, 0xF0): 52, (0x80000, 16, 0xFF, 0xFF00, 0, 0): 60, (0x40000, 16, 0x1F, 0x3E0, 0xFC00, 0): 61,
    (0x40000, 32, 0xFF, 0xFF00, 0xFF0000, 0): 62, (0x80000, 32, 0xFF, 0xFF00, 0xFF0000, 0xFF000000): 63,
    (0x80000, 32, 0xFFFF, 0xFFFF0000, 0, 0): 64, (0x80001, 32, 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000): 67,
    (0x20000, 16, 0xFFFF, 0, 0, 0): 81,
}
# On purpose loaded as another layout than was written: that of the number's row, told last. 16-bit floats become the first half of
# 32-bit ones, so that half of the data is missing.
DDS_PLAIN_OTHERWISE = [
    (111, ("r 16", 12, LINEAR), "r 32"), (115, ("rg 32 32", 12, LINEAR), "gr 32 32"),
    (int.from_bytes(b"PTC2", "little"), ("0", 0, LINEAR), "1"), (int.from_bytes(b"PTC4", "little"), ("2", 0, LINEAR), "3")]

# DXGI numbers; every array has one, and a single texture that no plain header can tell.
DDS_EXTENDED = list(_rows("""
    2 rgba 32 32 32 32 | 12; 3 rgba 32 32 32 32 | 10; 4 rgba 32 32 32 32 | 11; 6 rgb 32 32 32 | 12; 7 rgb 32 32 32 | 10;
    8 rgb 32 32 32 | 11; 10 rgba 16 16 16 16 | 12; 11 rgba 16 16 16 16 | 4; 12 rgba 16 16 16 16 | 6; 13 rgba 16 16 16 16 | 5;
    14 rgba 16 16 16 16 | 7; 16 rg 32 32 | 12; 17 rg 32 32 | 10; 18 rg 32 32 | 11; 24 rgba 10 10 10 2 | 8; 25 rgba 10 10 10 2 | 10;
    26 bgr 10 11 11 | 13; 28 rgba 8 8 8 8 | 0; 29 rgba 8 8 8 8 | 0 sRGB; 30 rgba 8 8 8 8 | 2; 31 rgba 8 8 8 8 | 1; 32 rgba 8 8 8 8 | 3;
    34 rg 16 16 | 12; 35 rg 16 16 | 4; 36 rg 16 16 | 6; 37 rg 16 16 | 5; 38 rg 16 16 | 7; 41 r 32 | 12; 42 r 32 | 10; 43 r 32 | 11;
    49 rg 8 8 | 0; 50 rg 8 8 | 2; 51 rg 8 8 | 1; 52 rg 8 8 | 3; 54 r 16 | 12; 56 r 16 | 4; 57 r 16 | 6; 58 r 16 | 5; 59 r 16 | 7;
    61 r 8 | 0; 62 r 8 | 2; 63 r 8 | 1; 64 r 8 | 3; 66 18 | 0; 67 19 | 12; 68 20 | 0; 69 21 | 0; 71 7 | 8; 72 7 | 8 sRGB; 74 9 | 8;
    75 9 | 8 sRGB; 77 11 | 8; 78 11 | 8 sRGB; 80 12 | 8 sRGB; 81 12 | 9; 83 13 | 8; 84 13 | 9; 85 rgb 5 6 5 | 4; 86 argb 1 5 5 5 | 4;
    87 bgra 8 8 8 8 | 0; 88 bgrx 8 8 8 8 | 0; 91 bgra 8 8 8 8 | 0 sRGB; 93 bgrx 8 8 8 8 | 0 sRGB; 107 17 | 8; 111 ai 4 4 | 0;
    112 ia 4 4 | 0; 115 argb 4 4 4 4 | 4"""))

# Types of the older native files: by the table, a pre-multiplied one in a list of its own.
_LEGACY = """
    0 argb 4 4 4 4 | 4; 1 argb 1 5 5 5 | 4; 2 rgb 5 6 5 | 4; 3 xrgb 1 5 5 5 | 4; 4 rgb 8 8 8 | 8; 5 argb 8 8 8 8 | 8; 6 argb 8 3 3 2 | 4;
    7 i 8 | 0; 8 ai 8 8 | 4; 9 18 | 0; 10 17 | 0; 11 16 | 0; 12 1 | 0; 13 3 | 0; 16 rgba 4 4 4 4 | 4; 17 rgba 5 5 5 1 | 4;
    18 rgba 8 8 8 8 | 0; 19 rgb 5 6 5 | 4; 20 rgbx 5 5 5 1 | 4; 21 rgb 8 8 8 | 0; 22 l 8 | 0; 23 la 8 8 | 0; 24 1 | 0; 25 3 | 0;
    26 bgra 8 8 8 8 | 0; 27 a 8 | 0; 28 5 | 0; 29 4 | 0; 32 7 | 0; 34 9 | 0; 36 11 | 0; 37 rgb 3 3 2 | 8; 38 al 4 4 | 8; 39 lgr 6 5 5 | 9;
    40 xlgr 8 8 8 8 | 9; 41 abgr 8 8 8 8 | 9; 42 abgr 2 10 10 10 | 8; 43 argb 2 10 10 10 | 8; 44 argb 2 10 10 10 | 8; 45 gr 16 16 | 8;
    46 gr 16 16 | 9; 47 abgr 16 16 16 16 | 8; 48 r 16 | 12; 49 gr 16 16 | 12; 50 abgr 16 16 16 16 | 12; 51 r 32 | 12; 52 gr 32 32 | 12;
    53 abgr 32 32 32 32 | 12; 54 6 | 0; 64 a 8 | 8; 65 gr 8 8 | 9; 66 l 16 | 8; 67 l 8 | 8; 68 al 8 8 | 8; 69 16 | 0; 70 17 | 0;
    80 rgba 32 32 32 32 | 12; 81 rgba 32 32 32 32 | 10; 82 rgba 32 32 32 32 | 11; 83 rgb 32 32 32 | 12; 84 rgb 32 32 32 | 10;
    85 rgb 32 32 32 | 11; 86 rgba 16 16 16 16 | 12; 87 rgba 16 16 16 16 | 4; 88 rgba 16 16 16 16 | 6; 89 rgba 16 16 16 16 | 5;
    90 rgba 16 16 16 16 | 7; 91 rg 32 32 | 12; 92 rg 32 32 | 10; 93 rg 32 32 | 11; 94 rgba 10 10 10 2 | 8; 95 rgba 10 10 10 2 | 10;
    96 bgr 10 11 11 | 13; 97 rgba 8 8 8 8 | 0; 98 rgba 8 8 8 8 | 0 sRGB; 99 rgba 8 8 8 8 | 2; 100 rgba 8 8 8 8 | 1;
    101 rgba 8 8 8 8 | 3; 102 rg 16 16 | 12; 103 rg 16 16 | 4; 104 rg 16 16 | 6; 105 rg 16 16 | 5; 106 rg 16 16 | 7; 107 r 32 | 12;
    108 r 32 | 10; 109 r 32 | 11; 110 rg 8 8 | 0; 111 rg 8 8 | 2; 112 rg 8 8 | 1; 113 rg 8 8 | 3; 114 r 16 | 12; 115 r 16 | 4;
    116 r 16 | 6; 117 r 16 | 5; 118 r 16 | 7; 119 r 8 | 0; 120 r 8 | 2; 121 r 8 | 1; 122 r 8 | 3; 123 r 8 | 0; 124 18 | 0; 125 19 | 12;
    126 20 | 0; 127 21 | 0; 128 7 | 8; 129 7 | 8 sRGB; 130 9 | 8; 131 9 | 8 sRGB; 132 11 | 8; 133 11 | 8 sRGB; 134 12 | 8 sRGB;
    135 12 | 9; 136 13 | 8; 137 13 | 9; 144 rgbx 8 8 8 8 | 0 sRGB; 145 rgba 8 8 8 8 | 0 sRGB; 147 rgb 5 6 5 | 4 sRGB;
    148 rgba 5 5 5 1 | 4 sRGB; 149 rgba 4 4 4 4 | 4 sRGB; 150 l 8 | 0 sRGB; 151 rgbx 8 8 8 8 | 0; 152 rgba 8 8 8 8 | 0; 154 l 8 | 0;
    155 a 8 | 0; 156 18 | 0; 157 xrgb 8 8 8 8 | 0 sRGB; 158 argb 8 8 8 8 | 0 sRGB; 160 argb 1 5 5 5 | 4 sRGB; 161 argb 4 4 4 4 | 4 sRGB;
    162 xrgb 8 8 8 8 | 0; 163 argb 8 8 8 8 | 0; 165 bgrx 8 8 8 8 | 0 sRGB; 166 bgra 8 8 8 8 | 0 sRGB; 168 bgr 5 6 5 | 4 sRGB;
    169 bgra 5 5 5 1 | 4 sRGB; 170 bgrx 4 4 4 4 | 4 sRGB; 171 bgrx 8 8 8 8 | 0; 172 bgra 8 8 8 8 | 0; 174 xbgr 8 8 8 8 | 0 sRGB;
    175 abgr 8 8 8 8 | 0 sRGB; 177 abgr 1 5 5 5 | 4 sRGB; 178 xbgr 4 4 4 4 | 4 sRGB; 179 xbgr 8 8 8 8 | 0; 180 abgr 8 8 8 8 | 0"""
_LEGACY_PREMULTIPLIED = """
    33 8 | 0; 35 10 | 0; 146 rgba 8 8 8 8 | 0 sRGB; 153 rgba 8 8 8 8 | 0; 159 argb 8 8 8 8 | 0 sRGB; 164 argb 8 8 8 8 | 0;
    167 bgra 8 8 8 8 | 0 sRGB; 173 bgra 8 8 8 8 | 0; 176 abgr 8 8 8 8 | 0 sRGB; 181 abgr 8 8 8 8 | 0"""
LEGACY = [(number, encoding, False) for number, encoding in _rows(_LEGACY)] + [
    (number, encoding, True) for number, encoding in _rows(_LEGACY_PREMULTIPLIED)]
LEGACY_ONLY_READ = [96, 125]  # types that no API writes
