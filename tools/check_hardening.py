#!/usr/bin/env python3
"""Checks that a program is linked hardened, by reading the program itself.

    tools/check_hardening.py [--no-fortify] PROGRAM

It must be position-independent, with its relocations resolved at the start and read-only from then
on, without an executable stack, without a memory region that is both writable and executable,
without a search path for libraries of its own, with stack protectors and, unless the build cannot
have them (--no-fortify), with the checking variants of the C library's functions.

A program that calls no function that has a checking variant would fail the last: it is for
programs that do. Control-flow protection (CET) is not asked for: the C library's own start code
must have it too, and Debian 12's has not.
"""
import pathlib
import struct
import sys

ET_DYN = 3
PT_LOAD, PT_DYNAMIC, PT_INTERP, PT_GNU_STACK, PT_GNU_RELRO = 1, 2, 3, 0x6474E551, 0x6474E552
PF_X, PF_W = 1, 2
DT_STRTAB, DT_RPATH, DT_BIND_NOW, DT_TEXTREL, DT_RUNPATH = 5, 15, 24, 22, 29
DT_STRSZ, DT_FLAGS, DT_FLAGS_1 = 10, 30, 0x6FFFFFFB
DF_TEXTREL, DF_BIND_NOW, DF_1_NOW, DF_1_PIE = 4, 8, 1, 0x08000000
STACK_PROTECTORS = {"__stack_chk_fail", "__stack_chk_guard", "__stack_chk_fail_local"}


class Elf:
    """What a little-endian 64-bit program says of itself."""

    def __init__(self, data):
        if data[:6] != b"\x7fELF\x02\x01":
            raise ValueError("not a little-endian 64-bit ELF file")
        self.data = data
        self.type = struct.unpack_from("<H", data, 16)[0]
        offset, = struct.unpack_from("<Q", data, 32)
        size, count = struct.unpack_from("<HH", data, 54)
        # (type, flags, offset, address, size in the file)
        self.segments = []
        for i in range(count):
            kind, flags, at, address, _, length = struct.unpack_from("<IIQQQQ", data,
                                                                     offset + i * size)
            self.segments.append((kind, flags, at, address, length))
        self.dynamic = self._dynamic()

    def flags(self, kind):
        """The flags of all segments of a kind."""
        return [segment[1] for segment in self.segments if segment[0] == kind]

    def _dynamic(self):
        entries = {}
        for kind, _, at, _, length in self.segments:
            if kind == PT_DYNAMIC:
                for position in range(at, at + length, 16):
                    tag, value = struct.unpack_from("<QQ", self.data, position)
                    if tag == 0:
                        break
                    entries[tag] = value
        return entries

    def _file_offset(self, address):
        for kind, _, at, start, length in self.segments:
            if kind == PT_LOAD and start <= address < start + length:
                return at + address - start
        raise ValueError(f"nothing is loaded at {address:#x}")

    def names(self):
        """All names in the table of dynamic strings, those of the imported functions among
        them."""
        start = self._file_offset(self.dynamic[DT_STRTAB])
        table = self.data[start:start + self.dynamic[DT_STRSZ]]
        return {name.decode(errors="replace") for name in table.split(b"\0")}


def faults(elf, fortified=True):
    """What is missing, in words."""
    found = []
    dynamic, names = elf.dynamic, elf.names()
    flags, flags_1 = dynamic.get(DT_FLAGS, 0), dynamic.get(DT_FLAGS_1, 0)

    def need(condition, what):
        if not condition:
            found.append(what)
    need(elf.type == ET_DYN and elf.flags(PT_INTERP) and flags_1 & DF_1_PIE,
         "not position-independent (-pie)")
    need(elf.flags(PT_GNU_RELRO), "relocations stay writable (-z relro)")
    need(DT_BIND_NOW in dynamic or flags & DF_BIND_NOW or flags_1 & DF_1_NOW,
         "relocations are resolved late (-z now)")
    need(elf.flags(PT_GNU_STACK) and not any(f & PF_X for f in elf.flags(PT_GNU_STACK)),
         "the stack is executable (-z noexecstack)")
    need(not any(f & PF_X and f & PF_W for f in elf.flags(PT_LOAD)),
         "memory is writable and executable at once")
    need(DT_TEXTREL not in dynamic and not flags & DF_TEXTREL, "relocations in the code (-fPIE)")
    need(DT_RPATH not in dynamic and DT_RUNPATH not in dynamic,
         "a search path for libraries (RPATH, RUNPATH)")
    need(names & STACK_PROTECTORS, "no stack protector (-fstack-protector-strong)")
    if fortified:
        need(any(name.startswith("__") and name.endswith("_chk") for name in names),
             "no checking functions (-D_FORTIFY_SOURCE)")
    return found


def main():
    arguments = sys.argv[1:]
    fortified = "--no-fortify" not in arguments
    path = pathlib.Path([a for a in arguments if a != "--no-fortify"][0])
    found = faults(Elf(path.read_bytes()), fortified)
    for fault in found:
        print(f"{path.name}: {fault}")
    if not found:
        print(f"{path.name} is hardened")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
