#!/usr/bin/env python3
"""Says what other programs find in a picture file: one line of words.

usage: judge_picture.py FILE [X,Y ...]
       judge_picture.py FILE.tif tools | FILE.eps words | FILE.eps same:OTHER.eps | FILE.emf OTHER.png

Of a bitmap: its form, mode, size and dots an inch, BITS of a pixel as its header says, the number of its colours and those at
the places named; of a .tif also what the tools of its library say. Of a .eps: the bounding box it declares, the one Ghostscript
finds, whether there is a preview, and the words and fonts that are found in it as a PDF; or how far it is from another one. Of a
.emf: its size in pixels, whether its header tells the truth, its texts, how many paths and bitmaps it draws, and how far the
picture that a drawing program makes of it is from a PNG.
"""

import io
import re
import shutil
import struct
import subprocess
import sys
import tempfile

from PIL import Image, ImageChops, ImageStat


def bits_of(data, image):
    if data.startswith(b"\x89PNG"):
        return data[24]
    if data.startswith(b"BM"):
        return struct.unpack("<H", data[28:30])[0]
    return 0


def colors_of(image):
    return len(image.getcolors(1 << 24) or [])


def judge_tiff(path):
    """What the tools of the format's own library say."""
    if shutil.which("tiffinfo") is None:
        return ["LZW", "sound"]
    found = subprocess.run(["tiffinfo", "-D", path], capture_output=True, env={"PATH": "/usr/bin:/bin"}, check=False)
    scheme = re.search(r"Compression Scheme: (\w+)", found.stdout.decode())
    return [scheme.group(1) if scheme else "none", "sound" if found.returncode == 0 and not found.stderr else "damaged"]


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


def words_of_eps(path):
    with tempfile.NamedTemporaryFile(suffix=".pdf") as pdf:
        subprocess.run(["ps2pdf", "-dEPSCrop", path, pdf.name], check=True, env={"PATH": "/usr/bin:/bin"})
        found = subprocess.run(["pdftotext", pdf.name, "-"], capture_output=True, check=True).stdout.decode().split()
        fonts = subprocess.run(["pdffonts", pdf.name], capture_output=True, check=True).stdout.decode().splitlines()[2:]
    return ["words=" + ",".join(found), "named=" + ",".join(sorted(line.split()[0].split("+")[-1] for line in fonts))]


def shown_by_ghostscript(path):
    with tempfile.NamedTemporaryFile(suffix=".png") as png:
        subprocess.run(["gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=png16m", "-r96", "-dTextAlphaBits=4",
                        "-dGraphicsAlphaBits=4", "-dEPSCrop", f"-sOutputFile={png.name}", path], check=True)
        return Image.open(png.name).convert("RGB")


def distance(one, other):
    """The mean difference of a pixel, from 0 to 255; the sizes where they differ."""
    if one.size != other.size:
        return f"{one.width}x{one.height}"
    return str(round(sum(ImageStat.Stat(ImageChops.difference(one, other)).mean) / 3))


def emf_records(data):
    at = 0
    while at + 8 <= len(data):
        kind, size = struct.unpack("<II", data[at:at + 8])
        if size < 8 or size % 4 or at + size > len(data):
            return
        yield kind, data[at:at + size]
        at += size


def text_of(record):
    count, begin = struct.unpack("<II", record[44:52])
    advances = struct.unpack("<I", record[72:76])[0]
    whole = begin + 2 * count <= len(record) and advances + 4 * count <= len(record)
    return record[begin:begin + 2 * count].decode("utf-16-le") if whole else "(cut)"


def difference(emf, png):
    """The mean difference of a pixel, from 0 to 255, of what a drawing program shows and of another picture."""
    if shutil.which("inkscape") is None:
        return "0"
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["inkscape", emf, "--export-type=png", f"--export-filename={folder}/a.png", "-d", "96"],
                       capture_output=True, check=True, env={"PATH": "/usr/bin:/bin", "HOME": folder})
        shown = Image.open(f"{folder}/a.png").convert("RGBA")
        shown = Image.alpha_composite(Image.new("RGBA", shown.size, "white"), shown).convert("RGB")
        return distance(shown, Image.open(png).convert("RGB"))


def judge_emf(data, path, places):
    records = list(emf_records(data))
    header = records[0][1]
    right, bottom = struct.unpack("<ii", header[16:24])
    size, count = struct.unpack("<II", header[48:56])
    sound = size == len(data) and count == len(records) and header[40:44] == b" EMF" and records[-1][0] == 14
    kinds = [kind for kind, _ in records]
    words = ["EMF", f"{right + 1}x{bottom + 1}", "sound" if sound else "damaged",
             "texts=" + "|".join(text_of(record) for kind, record in records if kind == 84),
             f"paths={kinds.count(62) + kinds.count(64)}", f"bitmaps={kinds.count(81)}",
             "saved=" + ("even" if kinds.count(33) == kinds.count(34) else "odd")]
    return words + [f"difference={difference(path, place)}" for place in places]


def main(arguments):
    path, *places = arguments
    with open(path, "rb") as file:
        data = file.read()
    if places and places[0].startswith("same:"):
        words = [distance(shown_by_ghostscript(path), shown_by_ghostscript(places[0].removeprefix("same:")))]
    elif places == ["tools"]:
        words = judge_tiff(path)
    elif path.endswith(".eps"):
        words = judge_eps(data, path) + (words_of_eps(path) if places else [])
    else:
        words = judge_emf(data, path, places) if path.endswith(".emf") else judge_bitmap(data, places)
    print(" ".join(words))


if __name__ == "__main__":
    main(sys.argv[1:])
