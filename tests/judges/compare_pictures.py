"""Compares pictures of pages as an eye would: letters may be drawn a little differently, everything else may not.

A pixel is as expected when its colour lies within what stands around its place in the other picture, or a little beyond. So
another hinting or smoothing of letters passes, and so does what is off by a pixel. A line that is missing, another colour, or a
column that moved leaves many pixels side by side that are not as expected, and these count: by squares, so that a few here and
there are nothing.

Needs PIL, which is Debian's python3-pil.
"""

import dataclasses

from PIL import Image, ImageChops, ImageFilter

AROUND = 5     # pixels, odd: the side of the square that is looked at around a place
TOLERANCE = 12  # of 255
SQUARE = 24    # pixels
MOST = 14      # pixels in one square that may be otherwise


@dataclasses.dataclass
class Difference:
    """What two pictures differ in; nothing when `reason` is empty."""

    reason: str = ""
    picture: Image.Image = None  # white on black


def unexpected(picture, expected):
    """Where the colour is none of those around its place in the other picture: 255, elsewhere 0."""
    low = expected.filter(ImageFilter.MinFilter(AROUND))
    high = expected.filter(ImageFilter.MaxFilter(AROUND))
    beyond = ImageChops.lighter(ImageChops.subtract(low, picture), ImageChops.subtract(picture, high))
    red, green, blue = beyond.split()
    worst = ImageChops.lighter(ImageChops.lighter(red, green), blue)
    return worst.point(lambda value: 255 if value > TOLERANCE else 0)


def compare(picture, expected):
    picture, expected = picture.convert("RGB"), expected.convert("RGB")
    if picture.size != expected.size:
        return Difference(f"is {picture.width} x {picture.height} pixels, and was {expected.width} x {expected.height}")
    marked = ImageChops.lighter(unexpected(picture, expected), unexpected(expected, picture))
    worst, place = worst_square(marked)
    if worst <= MOST:
        return Difference()
    return Difference(f"is otherwise around {place[0]}, {place[1]} ({worst} pixels of a square of {SQUARE})", marked)


def worst_square(marked):
    """The most marked pixels of a square, and its middle; squares overlap by half."""
    worst, place = 0, (0, 0)
    for left in range(0, marked.width, SQUARE // 2):
        for top in range(0, marked.height, SQUARE // 2):
            count = marked.crop((left, top, min(left + SQUARE, marked.width), min(top + SQUARE, marked.height))).histogram()[255]
            if count > worst:
                worst, place = count, (left + SQUARE // 2, top + SQUARE // 2)
    return worst, place


def write_small(picture, path):
    """As PNG, with a palette where that loses nothing."""
    picture = picture.convert("RGB")
    colors = picture.getcolors(256)
    if colors:
        numbers = {color: number for number, color in enumerate(sorted(color for _, color in colors))}
        numbered = Image.new("P", picture.size)
        numbered.putpalette([value for color in numbers for value in color])
        numbered.putdata([numbers[color] for color in picture.getdata()])
        picture = numbered
    picture.save(path, optimize=True)
