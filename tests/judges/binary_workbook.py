"""Reads binary workbooks (BIFF8 in a compound file) record by record, for the programs here that judge them."""

import struct

MINI_CUTOFF = 4096
END_OF_CHAIN = 0xFFFFFFFE


class CompoundFile:
    """streams: the bytes of every stream by its path; storages: (path, class, state) of every storage."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self.bytes = file.read()
        assert self.bytes[:8] == b"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", "no compound file"
        self.sector = 1 << struct.unpack_from("<H", self.bytes, 30)[0]
        self.fat = self.numbers(self.fat_sectors())
        directory = b"".join(self.at(each) for each in self.chain(struct.unpack_from("<I", self.bytes, 48)[0], self.fat))
        self.entries = [directory[at:at + 128] for at in range(0, len(directory), 128)]
        root = self.entries[0]
        start, size = struct.unpack_from("<IQ", root, 116)
        self.mini = b"".join(self.at(each) for each in self.chain(start, self.fat))[:size] if size else b""
        mini_start, mini_count = struct.unpack_from("<II", self.bytes, 60)
        self.mini_fat = self.numbers(self.chain(mini_start, self.fat)) if mini_count else []
        self.streams, self.storages = {}, []
        self.walk(struct.unpack_from("<I", root, 76)[0], "")

    def at(self, number):
        return self.bytes[(number + 1) * self.sector:(number + 2) * self.sector].ljust(self.sector, b"\0")

    def numbers(self, sectors):
        joined = b"".join(self.at(each) for each in sectors)
        return struct.unpack("<%dI" % (len(joined) // 4), joined)

    def fat_sectors(self):
        count = struct.unpack_from("<I", self.bytes, 44)[0]
        places = list(struct.unpack_from("<109I", self.bytes, 76))
        following = struct.unpack_from("<I", self.bytes, 68)[0]
        while len(places) < count:
            part = self.numbers([following])
            places += part[:-1]
            following = part[-1]
        return places[:count]

    @staticmethod
    def chain(start, table):
        chain = []
        while start != END_OF_CHAIN:
            chain.append(start)
            start = table[start]
        return chain

    def walk(self, number, folder):
        if number == 0xFFFFFFFF:
            return
        entry = self.entries[number]
        left, right, child = struct.unpack_from("<III", entry, 68)
        self.walk(left, folder)
        name = folder + entry[:struct.unpack_from("<H", entry, 64)[0] - 2].decode("utf-16-le")
        if entry[66] == 1:
            self.storages.append((name, entry[80:96], entry[96:100]))
            self.walk(child, name + "/")
        else:
            self.streams[name] = self.content(*struct.unpack_from("<II", entry, 116))
        self.walk(right, folder)

    def content(self, start, size):
        if size == 0:
            return b""
        if size < MINI_CUTOFF:
            return b"".join(self.mini[each * 64:each * 64 + 64] for each in self.chain(start, self.mini_fat))[:size]
        return b"".join(self.at(each) for each in self.chain(start, self.fat))[:size]


class Record:
    """One record; `content` is that of the CONTINUE records behind it, too."""

    def __init__(self, number, at, raw):
        self.id, self.at, self.raw = number, at, raw

    @property
    def parts(self):
        parts, at = [], 0
        while at < len(self.raw):
            length = struct.unpack_from("<H", self.raw, at + 2)[0]
            parts.append(self.raw[at + 4:at + 4 + length])
            at += 4 + length
        return parts

    @property
    def content(self):
        return b"".join(self.parts)

    def unpack(self, form, at=0):
        return struct.unpack_from(form, self.content, at)


BOF, EOF, CONTINUE = 0x809, 0x0A, 0x3C


def records_at(stream, at):
    """The records of one substream from its BOF to its EOF; a chart within a sheet is one."""
    records, depth, nested = [], 0, 0
    while True:
        number, length = struct.unpack_from("<HH", stream, at)
        assert length <= 8224 and at + 4 + length <= len(stream), "a record is too long"
        if number == BOF:
            depth += 1
            if depth == 2:
                nested = at
        end = at + 4 + length
        if depth == 1:
            if number == CONTINUE:
                records[-1].raw += stream[at:end]
            else:
                records.append(Record(number, at, stream[at:end]))
        elif number == EOF and depth == 2:
            records.append(Record(BOF, nested, stream[nested:end]))
        if number == EOF:
            depth -= 1
            if depth == 0:
                return records
        at = end


def text_at(content, at, length_bytes):
    count = content[at] if length_bytes == 1 else struct.unpack_from("<H", content, at)[0]
    flags, at = content[at + length_bytes], at + length_bytes + 1
    return content[at:at + 2 * count].decode("utf-16-le") if flags & 1 else content[at:at + count].decode("latin-1")


class Texts:
    """The shared texts: each as (text, runs of fonts), and where it begins in the stream."""

    def __init__(self, record):
        self.parts, self.starts, at = [], [], record.at
        for part in record.parts:
            self.parts.append(part)
            self.starts.append(at)
            at += 4 + len(part)
        self.part, self.at = 0, 8
        self.total, unique = struct.unpack_from("<II", record.parts[0])
        self.texts, self.places = [], []
        for _ in range(unique):
            self.read()
        assert self.part == len(self.parts) - 1 and self.at == len(self.parts[-1]), "bytes behind the last text"

    def following(self):
        self.part, self.at = self.part + 1, 0

    def take(self, count):
        taken = b""
        while len(taken) < count:
            if self.at == len(self.parts[self.part]):
                self.following()
            piece = self.parts[self.part][self.at:self.at + count - len(taken)]
            taken += piece
            self.at += len(piece)
        return taken

    def read(self):
        if self.at == len(self.parts[self.part]):
            self.following()
        self.places.append((self.starts[self.part] + 4 + self.at, 4 + self.at))
        count, flags = struct.unpack("<HB", self.take(3))
        runs = struct.unpack("<H", self.take(2))[0] if flags & 8 else 0
        extra = struct.unpack("<I", self.take(4))[0] if flags & 4 else 0
        text = ""
        while len(text.encode("utf-16-le", "surrogatepass")) < 2 * count:
            if self.at == len(self.parts[self.part]):
                self.following()
                flags = self.take(1)[0]
            width = 2 if flags & 1 else 1
            left = count - len(text.encode("utf-16-le", "surrogatepass")) // 2
            taken = min(left, (len(self.parts[self.part]) - self.at) // width)
            assert taken > 0, "half a character at the end of a record"
            text += self.take(taken * width).decode("utf-16-le" if width == 2 else "latin-1", "surrogatepass")
        self.texts.append((text, [struct.unpack("<HH", self.take(4)) for _ in range(runs)]))
        self.take(extra)


class Workbook:
    """The records of the globals, and of each sheet by its name, in the order of the tabs."""

    def __init__(self, path):
        self.file = CompoundFile(path)
        self.stream = self.file.streams["Workbook"]
        self.globals = records_at(self.stream, 0)
        self.sheets, self.kinds = {}, {}
        for record in self.all(0x85):
            place, state, kind = record.unpack("<IBB")
            name = text_at(record.content, 6, 1)
            assert name not in self.sheets, "two sheets of one name"
            self.sheets[name] = records_at(self.stream, place)
            self.kinds[name] = (state, kind)
        shared = self.all(0xFC)
        self.texts = Texts(shared[0]) if shared else None

    def all(self, number):
        return [each for each in self.globals if each.id == number]


def rk_value(bits):
    value = float(bits >> 2 if bits < 1 << 31 else (bits >> 2) - (1 << 30)) if bits & 2 else \
        struct.unpack("<d", struct.pack("<Q", (bits & 0xFFFFFFFC) << 32))[0]
    return value / 100 if bits & 1 else value


CELLS = {0x06, 0xBD, 0xBE, 0xD6, 0xFD, 0x201, 0x203, 0x204, 0x205, 0x27E}
WITH_FORMULAS = {0x207, 0x221, 0x236, 0x4BC}


def cells_of(records, texts):
    """(row, column) -> (format, kind, value); of a formula the value is its tokens, result and text."""
    cells, host = {}, None
    for record in records:
        content = record.content
        if record.id in WITH_FORMULAS:
            cells[host] = cells[host][:2] + (cells[host][2] + (record.id, content),)
        if record.id not in CELLS:
            continue
        row, column = struct.unpack_from("<HH", content)
        if record.id == 0xBD:
            for i in range((len(content) - 6) // 6):
                form, bits = struct.unpack_from("<HI", content, 4 + 6 * i)
                cells[row, column + i] = (form, "number", rk_value(bits))
        elif record.id == 0xBE:
            for i in range((len(content) - 6) // 2):
                cells[row, column + i] = (struct.unpack_from("<H", content, 4 + 2 * i)[0], "blank", None)
        else:
            form = struct.unpack_from("<H", content, 4)[0]
            host = row, column
            if record.id == 0x27E:
                cells[host] = (form, "number", rk_value(struct.unpack_from("<I", content, 6)[0]))
            elif record.id == 0x203:
                cells[host] = (form, "number", struct.unpack_from("<d", content, 6)[0])
            elif record.id == 0xFD:
                cells[host] = (form, "text", texts[struct.unpack_from("<I", content, 6)[0]])
            elif record.id == 0x06:
                cells[host] = (form, "formula", (content[6:14], content[14:16], content[20:]))
            else:
                cells[host] = (form, "blank", None) if record.id == 0x201 else (form, "other", content[6:])
    return cells


def merged_of(records):
    ranges = []
    for record in records:
        if record.id == 0xE5:
            count = record.unpack("<H")[0]
            ranges += [struct.unpack_from("<HHHH", record.content, 2 + 8 * i) for i in range(count)]
    return ranges
