import struct
import unittest
import zlib

import tool

png_picture = tool.load("png_picture.py")
W, R, G = (255, 255, 255), (250, 0, 0), (0, 120, 0)


def picture(width, lines, color=2):
    """A PNG of filtered lines, each beginning with the number of its filter."""
    header = struct.pack(">IIBBBBB", width, len(lines), 8, color, 0, 0, 0)
    return png_picture.SIGNATURE + b"".join(png_picture.chunk(kind, content) for kind, content in (
        (b"IHDR", header), (b"IDAT", zlib.compress(b"".join(map(bytes, lines)))), (b"IEND", b"")))


class PngPicture(unittest.TestCase):
    def test_every_filter_is_undone(self):
        plain = [9, 8, 7, 19, 18, 17]
        lines = [[0, *plain], [1, 9, 8, 7, 10, 10, 10], [2, 0, 0, 0, 0, 0, 0], [3, 5, 4, 4, 5, 5, 5], [4, 0, 0, 0, 0, 0, 0]]
        self.assertEqual(png_picture.read(picture(2, lines)), [[(9, 8, 7), (19, 18, 17)]] * 5)

    def test_what_is_transparent_lies_on_white(self):
        self.assertEqual(png_picture.read(picture(2, [[0, 10, 20, 30, 255, 0, 0, 0, 0]], 6)), [[(10, 20, 30), W]])

    def test_others_are_refused(self):
        for data in (b"GIF89a..", picture(1, [[0, 1]], 0)):
            self.assertRaises(ValueError, png_picture.read, data)
        self.assertRaises(ValueError, png_picture.trimmed, [[W, W]], 1)

    def test_white_around_is_cut_but_for_the_margin(self):
        self.assertEqual(png_picture.trimmed([[W, W, W, W], [W, R, G, W], [W, W, W, W], [W, W, W, W]], 1),
                         [[W, W, W, W], [W, R, G, W], [W, W, W, W]])

    def test_rare_colors_that_are_close_become_one(self):
        common = [(237, 242, 247)] * 2
        rows = png_picture.with_few_colors([[(i, i, i) for i in range(256)] + common], 40)
        self.assertLessEqual(len(set(rows[0])), 40)
        self.assertLess(abs(rows[0][100][0] - 100), 9)
        self.assertEqual(rows[0][-2:], common)

    def test_few_colors_stay(self):
        self.assertEqual(png_picture.with_few_colors([[R, (251, 0, 0), W]], 3), [[R, (251, 0, 0), W]])

    def test_what_is_written_has_a_palette_with_as_few_bits_as_it_needs(self):
        data = png_picture.write([[W, R, R, W, R]])
        width, height, depth, color = struct.unpack(">IIBB", data[16:26])
        self.assertEqual((width, height, depth, color), (5, 1, 1, 3))
        self.assertIn(b"PLTE" + bytes(R) + bytes(W), data)
        packed = data[data.index(b"IDAT") + 4:data.index(b"IEND") - 8]
        self.assertEqual(zlib.decompress(packed), bytes([0, 0b10010000]))


if __name__ == "__main__":
    unittest.main()
