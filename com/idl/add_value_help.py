"""Adds the help strings of enumeration values to a type library, since widl does not write them,
and takes out when it was made, so that it is the same each time.

Usage: add_value_help.py SOURCE.idl LIBRARY.tlb    changes the library in place

The texts are those of VALUE(name, number, "text") in the source. A library (the format of "MSFT")
has a header, the places of its descriptions, a directory of segments, the segments, and the
members of each description: the size of their records, the records, and for each of them its
number, its name and the place of its record. The record of a value grows by two fields.
"""

import re
import struct
import sys

SEGMENT_DIRECTORY_ENTRY = 16
DESCRIPTIONS, NAMES, STRINGS = 0, 7, 8
ENUMERATION = 0
SHORT_RECORD, HELP_FIELDS = 20, 8
SHORTEST_STRING = 8
NO_HELP_CONTEXT = 0
HAS_HELP_LIBRARY = 0x100


class Library:
    def __init__(self, data):
        self.data = bytearray(data)
        self.insertions = []  # places and bytes
        count = self.number(0x20)
        header = 0x54 + (4 if self.number(0x14) & HAS_HELP_LIBRARY else 0)
        self.directory = header + 4 * count
        start = self.segment(DESCRIPTIONS)[0]
        self.descriptions = [start + self.number(header + 4 * i) for i in range(count)]
        self.strings_added = b""

    def number(self, place):
        return struct.unpack_from("<i", self.data, place)[0]

    def put(self, place, number):
        struct.pack_into("<i", self.data, place, number)

    def segment(self, index):
        """Its place and its size."""
        entry = self.directory + SEGMENT_DIRECTORY_ENTRY * index
        return self.number(entry), self.number(entry + 4)

    def name(self, offset):
        place = self.segment(NAMES)[0] + offset
        return self.data[place + 12 : place + 12 + self.data[place + 8]].decode("ascii")

    def add_string(self, text):
        """Returns its offset among the strings."""
        offset = self.segment(STRINGS)[1] + len(self.strings_added)
        entry = struct.pack("<H", len(text)) + text.encode("ascii")
        entry = entry.ljust(SHORTEST_STRING, b"W")
        self.strings_added += entry + b"W" * (-len(entry) % 4)
        return offset

    def forget_time(self):
        """It is in a text, and behind that in a number of seconds."""
        made = re.search(rb"Created by WIDL \D+[0-9.]+ at (.{24})\nW*\x13\0(.{4})", self.data, re.DOTALL)
        self.data[made.start(1) : made.end(1)] = b"Thu Jan  1 00:00:00 1970"
        self.data[made.start(2) : made.end(2)] = bytes(4)

    def add_help(self, texts):
        for description in self.descriptions:
            if self.number(description) & 0xF == ENUMERATION:
                self.add_help_to_values(description, texts)
        place, size = self.segment(STRINGS)
        self.insertions.append((place + size, self.strings_added))
        self.put(self.directory + SEGMENT_DIRECTORY_ENTRY * STRINGS + 4, size + len(self.strings_added))

    def add_help_to_values(self, description, texts):
        start = self.number(description + 4)
        count = self.number(description + 0x18) >> 16
        size = self.number(start)
        if size != count * SHORT_RECORD:
            sys.exit("add_value_help: the values have other records than expected")
        records, names = start + 4, start + 4 + size + 4 * count
        for i in range(count):
            record = records + i * SHORT_RECORD
            self.put(record, self.number(record) + HELP_FIELDS)
            self.put(names + 4 * (count + i), i * (SHORT_RECORD + HELP_FIELDS))
            text = self.add_string(texts[self.name(self.number(names + 4 * i))])
            self.insertions.append((record + SHORT_RECORD, struct.pack("<ii", NO_HELP_CONTEXT, text)))
        self.put(start, size + count * HELP_FIELDS)

    def written(self):
        """The library with its additions, and with the places of what comes behind them."""
        segments = [self.directory + SEGMENT_DIRECTORY_ENTRY * i for i in range(15)]
        for field in segments + [description + 4 for description in self.descriptions]:
            place = self.number(field)
            moved = sum(len(added) for at, added in self.insertions if at <= place)
            self.put(field, place + moved)
        result, done = b"", 0
        for place, added in sorted(self.insertions):
            result += self.data[done:place] + added
            done = place
        return result + self.data[done:]


def main():
    source, library = sys.argv[1:]
    with open(source, encoding="ascii") as file:
        texts = dict(re.findall(r'VALUE\((\w+), \d+, "([^"]*)"\)', file.read()))
    with open(library, "rb") as file:
        described = Library(file.read())
    described.forget_time()
    described.add_help(texts)
    with open(library, "wb") as file:
        file.write(described.written())


main()
