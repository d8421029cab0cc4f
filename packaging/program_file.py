"""What the release's tools must know of a program's file, of Windows (PE) or of Linux (ELF): its build id, where it wants to
be loaded, its machine, and its sections."""

import struct


class ProgramFile:
    """kind is "pei-i386", "pei-x86-64" or "elf64-x86-64"; sections are (name, data) in the order of the file."""

    def __init__(self, data):
        self.data = data
        self.sections = []
        self.base = 0
        self.build_id = None
        if data[:2] == b"MZ":
            self._read_pe()
        elif data[:4] == b"\x7fELF":
            self._read_elf()
        else:
            raise ValueError("neither a program of Windows nor of Linux")

    def _read_pe(self):
        data = self.data
        header, = struct.unpack_from("<I", data, 0x3C)
        machine, count, _, _, _, optional_size, _ = struct.unpack_from("<HHIIIHH", data, header + 4)
        self.kind = {0x14C: "pei-i386", 0x8664: "pei-x86-64"}[machine]
        optional = header + 24
        self.base, = struct.unpack_from("<I", data, optional + 28) if machine == 0x14C else \
            struct.unpack_from("<Q", data, optional + 24)
        self.places = []
        for index in range(count):
            name, virtual_size, address, size, offset = struct.unpack_from("<8sIIII", data, optional + optional_size + 40 * index)
            self.places.append((address, max(size, virtual_size), offset))
            self.sections.append((name.rstrip(b"\0").decode("ascii"), data[offset:offset + min(size, virtual_size)]))
        directories = optional + (96 if machine == 0x14C else 112)
        debug, debug_size = struct.unpack_from("<II", data, directories + 6 * 8)
        for entry in range(debug, debug + debug_size, 28):
            kind, size, _, offset = struct.unpack_from("<IIII", data, self._offset(entry) + 12)
            if kind == 2 and data[offset:offset + 4] == b"RSDS":
                # Written as the tools of Windows write it, its first three fields as numbers.
                fields = struct.unpack_from("<IHH", data, offset + 4)
                self.build_id = "%08x%04x%04x" % fields + data[offset + 12:offset + 20].hex()

    def _offset(self, address):
        for start, size, offset in self.places:
            if start <= address < start + size:
                return address - start + offset
        raise ValueError("an address outside of all sections")

    def _read_elf(self):
        data = self.data
        self.kind = "elf64-x86-64"
        if data[4:6] != b"\2\1":
            raise ValueError("only 64-bit programs of Linux are known")
        table, = struct.unpack_from("<Q", data, 0x28)
        size, count, names_index = struct.unpack_from("<HHH", data, 0x3A)
        rows = [struct.unpack_from("<IIQQQQ", data, table + size * index) for index in range(count)]
        names = rows[names_index][4]
        for name, kind, _, _, offset, length in rows:
            text = data[names + name:data.index(b"\0", names + name)].decode("ascii")
            content = b"" if kind == 8 else data[offset:offset + length]
            self.sections.append((text, content))
            if text == ".note.gnu.build-id" and content:
                self.build_id = content[16:].hex()


def read(path):
    with open(path, "rb") as file:
        return ProgramFile(file.read())
