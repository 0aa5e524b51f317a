"""PNG as browsers write it (8 bits, RGB or RGBA, not interlaced) read, cut to what is not white, and written with a palette."""

import collections
import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
WHITE = (255, 255, 255)


def read(data):
    """Rows of (red, green, blue); what is transparent is taken as it lies on white."""
    if data[:8] != SIGNATURE:
        raise ValueError("no PNG")
    place, packed, width, height, channels = 8, b"", 0, 0, 0
    while place < len(data):
        length, kind = struct.unpack(">I4s", data[place:place + 8])
        content = data[place + 8:place + 8 + length]
        if kind == b"IHDR":
            width, height, depth, color, _, _, interlaced = struct.unpack(">IIBBBBB", content)
            if depth != 8 or color not in (2, 6) or interlaced:
                raise ValueError("a PNG of another kind than browsers write")
            channels = 3 if color == 2 else 4
        elif kind == b"IDAT":
            packed += content
        place += 12 + length
    lines = unfiltered(zlib.decompress(packed), width * channels, height, channels)
    return [[on_white(line[i:i + channels]) for i in range(0, len(line), channels)] for line in lines]


def unfiltered(data, length, height, channels):
    above = bytearray(length)
    for row in range(height):
        start = row * (length + 1)
        line = bytearray(data[start + 1:start + 1 + length])
        restore(data[start], line, above, channels)
        yield line
        above = line


def restore(kind, line, above, channels):
    """Adds to each byte what its filter took away."""
    for i in range(len(line) if kind else 0):
        left = line[i - channels] if i >= channels else 0
        corner = above[i - channels] if i >= channels else 0
        line[i] = (line[i] + (left, above[i], (left + above[i]) // 2, nearest(left, above[i], corner))[kind - 1]) & 255


def nearest(left, above, corner):
    guess = left + above - corner
    return min((abs(guess - left), 0, left), (abs(guess - above), 1, above), (abs(guess - corner), 2, corner))[2]


def on_white(pixel):
    if len(pixel) == 3 or pixel[3] == 255:
        return tuple(pixel[:3])
    return tuple((value * pixel[3] + 255 * (255 - pixel[3])) // 255 for value in pixel[:3])


def trimmed(rows, margin):
    """Without the white around, but for a margin."""
    used_rows = [y for y, row in enumerate(rows) if any(pixel != WHITE for pixel in row)]
    if not used_rows:
        raise ValueError("an empty picture")
    inner = rows[used_rows[0]:used_rows[-1] + 1]
    used = [x for x in range(len(rows[0])) if any(row[x] != WHITE for row in inner)]
    width = used[-1] - used[0] + 1 + 2 * margin
    sides = [WHITE] * margin
    empty = [[WHITE] * width for _ in range(margin)]
    return empty + [sides + row[used[0]:used[-1] + 1] + sides for row in inner] + empty


def with_few_colors(rows, most=64):
    """Rare colours that are close to each other become one, until there are at most so many; the common ones stay."""
    counts = collections.Counter(pixel for row in rows for pixel in row)
    kept = {pixel for pixel, _ in counts.most_common(most // 4)}
    step, new = 1, {pixel: pixel for pixel in counts}
    while len(set(new.values())) > most:
        step *= 2
        new = {pixel: pixel if pixel in kept else tuple(min(255, (value + step // 2) // step * step) for value in pixel)
               for pixel in counts}
    return [[new[pixel] for pixel in row] for row in rows]


def write(rows):
    """With a palette; at most 256 colours."""
    palette = sorted({pixel for row in rows for pixel in row})
    depth = next(bits for bits in (1, 2, 4, 8) if len(palette) <= 1 << bits)
    numbers = {pixel: number for number, pixel in enumerate(palette)}
    lines = b"".join(b"\0" + packed_line([numbers[pixel] for pixel in row], depth) for row in rows)
    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), depth, 3, 0, 0, 0)
    return SIGNATURE + b"".join(chunk(kind, content) for kind, content in (
        (b"IHDR", header), (b"PLTE", bytes(value for pixel in palette for value in pixel)),
        (b"IDAT", zlib.compress(lines, 9)), (b"IEND", b"")))


def packed_line(numbers, depth):
    """Several pixels in a byte where they fit."""
    each = 8 // depth
    numbers = numbers + [0] * (-len(numbers) % each)
    return bytes(sum(number << (8 - depth * (i + 1)) for i, number in enumerate(numbers[start:start + each]))
                 for start in range(0, len(numbers), each))


def chunk(kind, content):
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
