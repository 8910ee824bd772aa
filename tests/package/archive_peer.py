#!/usr/bin/env python3
"""Reads and writes package archives with the zlib and bz2 of Python, by the byte tables of the format.

    archive_peer.py write FORM FILE    writes an archive of two files; FORM is 1, plain, 2-zlib or 2-bzip2
    archive_peer.py read FILE          prints "NAME MODE TIME CONTENTS" for each file; MODE is 1 or 0 in version 1
"""
import bz2
import struct
import sys
import zlib

FILES = [("dir/first.txt", b"first file\n" * 1000, 0o100644, 1700000000), ("second", b"2", 0o100444, 1)]


def stream1():
    offset = 8 + 1040 * len(FILES)
    table = struct.pack("<II", 0x4152C3C8, len(FILES))
    for name, contents, mode, time in FILES:
        table += name.encode().ljust(1024, b"\0")
        table += struct.pack("<IIII", offset, len(contents), not mode & 0o222, time)
        offset += len(contents)
    return table + b"".join(contents for _, contents, _, _ in FILES)


def stream2():
    offset = 20 + sum(18 + len(name) for name, _, _, _ in FILES)
    table = struct.pack("<I16x", len(FILES))
    for name, contents, mode, time in FILES:
        table += struct.pack("<HIIII", len(name), offset, len(contents), mode, time) + name.encode()
        offset += len(contents)
    return table + b"".join(contents for _, contents, _, _ in FILES)


def size_bound():
    size = 2 * 1040 * len(FILES) + sum(len(contents) for _, contents, _, _ in FILES)
    return size + size // 100 + 13


FORMS = {
    "1": lambda: struct.pack("<II", 0xB231F47A, 1) + struct.pack(">I", size_bound()) + zlib.compress(stream1()),
    "plain": stream1,
    "2-zlib": lambda: struct.pack("<IHH", 0x71F5C6B1, 2, 0) + zlib.compress(stream2()),
    "2-bzip2": lambda: struct.pack("<IHH", 0x71F5C6B1, 0x1002, 0) + bz2.compress(stream2()),
}


def read1(data):
    stream = zlib.decompress(data[12:])
    magic, count = struct.unpack_from("<II", stream)
    assert magic == 0x4152C3C8 and struct.unpack_from("<I", data, 4) == (1,)
    total = 0
    for i in range(count):
        entry = 8 + 1040 * i
        offset, size, read_only, time = struct.unpack_from("<IIII", stream, entry + 1024)
        name, _, rest = stream[entry:entry + 1024].partition(b"\0")
        assert not rest.strip(b"\0") and offset == 8 + 1040 * count + total
        total += size
        yield name, read_only, time, stream[offset:offset + size]
    assert struct.unpack_from(">I", data, 8) == ((n := 2080 * count + total) + n // 100 + 13,)
    assert len(stream) == 8 + 1040 * count + total


def read2(data):
    form, zero = struct.unpack_from("<HH", data, 4)
    assert form in (2, 0x1002) and zero == 0
    stream = (bz2 if form >> 12 else zlib).decompress(data[8:])
    count, = struct.unpack_from("<I", stream)
    assert stream[4:20] == bytes(16)
    place = 20
    for _ in range(count):
        length, offset, size, mode, time = struct.unpack_from("<HIIII", stream, place)
        yield stream[place + 18:place + 18 + length], mode, time, stream[offset:offset + size]
        place += 18 + length


def read(path):
    with open(path, "rb") as file:
        data = file.read()
    for name, mode, time, contents in (read2 if data[0] == 0xB1 else read1)(data):
        print(name.decode(), f"{mode:o}", time, contents.decode())


if sys.argv[1] == "write":
    with open(sys.argv[3], "wb") as output:
        output.write(FORMS[sys.argv[2]]())
else:
    read(sys.argv[2])
