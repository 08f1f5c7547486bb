"""Reads the program's data files, byte by byte, by their pages in docs/. Shares no code with the
program, so that both can't be wrong in the same way."""
import struct

MARK = b"\xef\xbb\xbf"


def text(raw):
    """A data-file text: code page 1252, or UTF-8 behind the mark."""
    if raw.startswith(MARK):
        return raw[len(MARK):].decode("utf-8", "surrogatepass")
    return "".join(bytes([b]).decode("cp1252") if b not in (0x81, 0x8D, 0x8F, 0x90, 0x9D) else chr(b)
                   for b in raw)


def catalogue(path):
    """The records of FileLocNames.lmz as dictionaries."""
    data = open(path, "rb").read()
    records, at = [], 0
    while at < len(data):
        strings = []
        for _ in range(12):
            if at + 2 > len(data):
                raise ValueError(f"{path}: cut at byte {at}")
            (length,) = struct.unpack_from("<H", data, at)
            at += 2
            if at + length > len(data):
                raise ValueError(f"{path}: a string of {length} bytes at {at} reaches beyond the end")
            strings.append(text(data[at:at + length]))
            at += length
        name, folder, number, present, rank = strings[:5]
        records.append({"name": name, "folder": folder, "number": number, "present": present,
                        "rank": rank, "spares": strings[5:]})
    return records


def lines(path):
    """The lines of a text file in which every line ends in CR LF."""
    data = open(path, "rb").read()
    if not data:
        return []
    if not data.endswith(b"\r\n"):
        raise ValueError(f"{path}: the last line has no end")
    return [text(line) for line in data[:-2].split(b"\r\n")]
