#!/usr/bin/env python3
"""Rewrites static libraries so that the linker can leave out functions that nobody calls.

    scripts/windows/collectable.py ARCHIVE TARGET    rewrites the objects of an archive
    scripts/windows/collectable.py --script LINKER   prints the linker script that such objects need

On 64-bit Windows each function has an entry in the table of functions (.pdata), which leads to its unwind
data (.xdata). GNU ld keeps all these entries, and each one keeps its function: --gc-sections drops nothing.
Here the direction is turned round. The entries' sections get names that the linker does not keep, and each
function refers to its own entry: an address of four bytes behind its end, which nothing reads.
The format: "PE Format" of Microsoft, COFF object files.
"""

import struct
import subprocess
import sys

AMD64 = 0x8664
STATIC = 3  # IMAGE_SYM_CLASS_STATIC
ADDRESS_WITHOUT_BASE = 3  # IMAGE_REL_AMD64_ADDR32NB
COMDAT = 0x1000  # IMAGE_SCN_LNK_COMDAT
ANY = 2  # IMAGE_COMDAT_SELECT_ANY
MORE_RELOCATIONS = 0x01000000  # IMAGE_SCN_LNK_NRELOC_OVFL
RENAMED = {b".pdata$": b".qdata$", b".xdata$": b".ydata$"}  # of equal length: names are changed in place


class Object:
    """A COFF object file whose symbol table is followed by its strings and nothing else."""

    SECTION = struct.Struct("<8sIIIIIIHHI")
    SYMBOL = struct.Struct("<8sIhHBB")
    RELOCATION = struct.Struct("<IIH")

    def __init__(self, data):
        self.body = bytearray(data)
        self.machine, self.sections, _, table, self.symbols, optional, _ = struct.unpack_from("<HHIIIHH", data)
        if self.machine != AMD64:
            sys.exit("an object of another machine")
        self.first_section = 20 + optional
        strings = table + self.symbols * self.SYMBOL.size
        self.table, self.strings = bytearray(data[table:strings]), bytearray(data[strings:])
        if struct.unpack_from("<I", self.strings)[0] != len(self.strings):
            sys.exit("an object with data behind its strings")
        del self.body[table:]

    def section(self, index):
        return self.SECTION.unpack_from(self.body, self.first_section + index * self.SECTION.size)

    def name(self, field):
        """The text that a name field stands for, and the buffer and place where it stands."""
        if field[:4] == bytes(4):
            place = struct.unpack_from("<I", field, 4)[0]
        elif field[:1] == b"/":
            place = int(field[1:].rstrip(b"\0"))
        else:
            return field.rstrip(b"\0"), None
        return bytes(self.strings[place:self.strings.index(0, place)]), place

    def rename(self, buffer, field_place):
        """Names of sections and symbols share their strings: the second time nothing is left to do."""
        name, place = self.name(bytes(buffer[field_place:field_place + 8]))
        new = RENAMED.get(name[:7])
        if new and place is None:
            buffer[field_place:field_place + 7] = new
        elif new:
            self.strings[place:place + 7] = new

    def symbol_table(self):
        """Yields place in the table, number and section of each symbol."""
        number = 0
        while number < self.symbols:
            place = number * self.SYMBOL.size
            _, _, section, _, _, auxiliary = self.SYMBOL.unpack_from(self.table, place)
            yield place, number, section
            number += 1 + auxiliary

    def add_section_symbol(self, index):
        """The number of a new symbol for a section that has none."""
        field, _, _, size, _, _, _, relocations, _, flags = self.section(index)
        _, place = self.name(field)
        if place is not None:
            field = struct.pack("<II", 0, place)
        self.table += self.SYMBOL.pack(field, 0, index + 1, 0, STATIC, 1)
        self.table += struct.pack("<IHHIHB3x", size, relocations, 0, 0, 0, ANY if flags & COMDAT else 0)
        self.symbols += 2
        return self.symbols - 2

    def refer(self, index, symbol):
        """Lets a section end with the address of a symbol."""
        name, virtual_size, address, size, data, relocations, lines, count, line_count, flags = self.section(index)
        if flags & MORE_RELOCATIONS or count >= 0xfffe:
            sys.exit("a section with too many relocations")
        content = self.body[data:data + size] + bytes(-size % 4)
        old = self.body[relocations:relocations + count * self.RELOCATION.size]
        data = len(self.body)
        self.body += content + bytes(4)
        relocations = len(self.body)
        self.body += old + self.RELOCATION.pack(len(content), symbol, ADDRESS_WITHOUT_BASE)
        self.SECTION.pack_into(self.body, self.first_section + index * self.SECTION.size,
                               name, virtual_size, address, len(content) + 4, data, relocations, lines, count + 1,
                               line_count, flags)

    def make_collectable(self):
        owners, of_section = {}, {}
        for _, number, section in self.symbol_table():
            owners[number] = section
            of_section.setdefault(section, number)
        references = []
        for index in range(self.sections):
            field, _, _, _, _, relocations, _, _, _, _ = self.section(index)
            if self.name(field)[0].startswith(b".pdata$"):
                function = owners[self.RELOCATION.unpack_from(self.body, relocations)[1]] - 1
                symbol = of_section.get(index + 1)
                references.append((function, self.add_section_symbol(index) if symbol is None else symbol))
        for place, _, _ in list(self.symbol_table()):
            self.rename(self.table, place)
        for index in range(self.sections):
            self.rename(self.body, self.first_section + index * self.SECTION.size)
        for function, symbol in references:
            self.refer(function, symbol)

    def bytes(self):
        struct.pack_into("<II", self.body, 8, len(self.body), self.symbols)
        return bytes(self.body + self.table + self.strings)


def collectable(data):
    if len(data) < 20 or struct.unpack_from("<H", data)[0] != AMD64:
        return data  # a member of another kind: import libraries have some
    if struct.unpack_from("<I", data, 12)[0] == 0:
        return data  # no symbols, no functions
    made = Object(data)
    made.make_collectable()
    return made.bytes()


def rewrite_archive(data):
    """The archive's members, rewritten, without its index, which ranlib makes anew."""
    magic, header, place = b"!<arch>\n", 60, 8
    if not data.startswith(magic):
        sys.exit("not an archive")
    made = bytearray(magic)
    while place < len(data):
        head = data[place:place + header]
        size = int(head[48:58])
        member = data[place + header:place + header + size]
        place += header + size + size % 2
        name = head[:16].rstrip()
        if name == b"/":
            continue
        if name != b"//":  # the long names
            member = collectable(member)
        made += head[:48] + b"%-10d" % len(member) + head[58:] + member + b"\n" * (len(member) % 2)
    return bytes(made)


def linker_script(linker):
    """The linker's own script, with a place for the renamed sections."""
    text = subprocess.run([linker, "--verbose"], check=True, capture_output=True, text=True).stdout
    script = text.split("=" * 50 + "\n")[1]
    for old, new in ("pdata", "qdata"), ("xdata", "ydata"):
        kept = f"KEEP(*(.{old}*))"
        if script.count(kept) != 1:
            sys.exit(f"{linker} does not keep .{old} as expected")
        script = script.replace(kept, f"{kept} *(.{new}*)")
    return script


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    if sys.argv[1] == "--script":
        print(linker_script(sys.argv[2]))
        return
    with open(sys.argv[1], "rb") as file:
        made = rewrite_archive(file.read())
    with open(sys.argv[2], "wb") as file:
        file.write(made)


if __name__ == "__main__":
    main()
