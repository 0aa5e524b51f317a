#!/usr/bin/env python3
"""Says what other programs find in a picture file: one line of words.

usage: judge_picture.py FILE [X,Y ...]

Of a bitmap: its form, mode, size and dots an inch, BITS of a pixel as its header says, the number of its colours and those at
the places named. Of a .eps: the bounding box it declares, the one Ghostscript finds, and whether there is a preview.
"""

import io
import re
import struct
import subprocess
import sys

from PIL import Image


def bits_of(data, image):
    if data.startswith(b"\x89PNG"):
        return data[24]
    if data.startswith(b"BM"):
        return struct.unpack("<H", data[28:30])[0]
    return 0


def colors_of(image):
    return len(image.getcolors(1 << 24) or [])


def judge_bitmap(data, places):
    image = Image.open(io.BytesIO(data))
    image.load()
    dots = image.info.get("dpi", (0, 0))
    words = [image.format, image.mode, f"{image.width}x{image.height}", f"dots={round(float(dots[0]))}",
             f"bits={bits_of(data, image)}", f"colors={colors_of(image)}"]
    if image.format == "BMP":
        words.append(f"compression={image.info.get('compression', 0)}")
    if image.format == "TIFF":
        words.append(f"compression={image.info.get('compression')}")
    shown = image.convert("RGBA")
    for place in places:
        x, y = (int(part) for part in place.split(","))
        words.append(",".join(str(part) for part in shown.getpixel((x, y))))
    return words


def judge_eps(data, path):
    words = ["EPS"]
    if data.startswith(b"\xc5\xd0\xd3\xc6"):
        start, length, _, _, tiff, tiff_length, check = struct.unpack("<IIIIIIH", data[4:30])
        preview = Image.open(io.BytesIO(data[tiff:tiff + tiff_length]))
        preview.load()
        whole = tiff + tiff_length == len(data) and check == 0xFFFF
        words.append(f"preview={preview.format}:{preview.width}x{preview.height}:{'whole' if whole else 'cut'}")
        data = data[start:start + length]
    text = data.decode("latin-1")
    words.append("level=" + re.search(r"%%LanguageLevel: (\d)", text).group(1))
    words.append("pages=" + re.search(r"%%Pages: (\d+)", text).group(1))
    words.append("dated=" + ("yes" if "%%CreationDate" in text else "no"))
    words.append("fonts=" + ("yes" if re.search(r"%%BeginResource: font|/FontType ", text) else "no"))
    declared = re.search(r"%%BoundingBox: ([-\d ]+)", text).group(1).split()
    found = subprocess.run(["gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=bbox", "-"], input=data,
                           capture_output=True, check=True).stderr.decode()
    measured = re.search(r"%%BoundingBox: ([-\d ]+)", found).group(1).split()
    words.append("box=" + ",".join(declared))
    near = all(abs(int(one) - int(other)) <= 1 for one, other in zip(declared, measured))
    words.append("ghostscript=" + ("near" if near else ",".join(measured)))
    return words


def main(arguments):
    path, *places = arguments
    with open(path, "rb") as file:
        data = file.read()
    is_eps = path.endswith(".eps")
    print(" ".join(judge_eps(data, path) if is_eps else judge_bitmap(data, places)))


if __name__ == "__main__":
    main(sys.argv[1:])
