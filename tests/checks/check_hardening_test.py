#!/usr/bin/env python3
"""Tests of tools/check_hardening.py: it finds each protection that a program lacks.

    tests/checks/check_hardening_test.py COMPILER
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
import check_hardening  # noqa: E402

PROGRAM = r"""
#include <cstdlib>
#include <cstring>
int main(int count, char** arguments) {
    char buffer[64];
    std::memcpy(buffer, arguments[0], static_cast<std::size_t>(std::atoi(arguments[1])));
    return buffer[count];
}
"""
HARDENED = ("-O2", "-fPIE", "-pie", "-Wl,-z,relro", "-Wl,-z,now", "-Wl,-z,noexecstack",
            "-fstack-protector-strong", "-D_FORTIFY_SOURCE=2")
# What is put in the place of one of them, and what the check then says.
WEAKENED = {
    "-pie": (("-no-pie",), "not position-independent (-pie)"),
    "-Wl,-z,relro": (("-Wl,-z,norelro",), "relocations stay writable (-z relro)"),
    "-Wl,-z,now": (("-Wl,-z,lazy",), "relocations are resolved late (-z now)"),
    "-Wl,-z,noexecstack": (("-Wl,-z,execstack",), "the stack is executable (-z noexecstack)"),
    "-fstack-protector-strong": (("-fno-stack-protector",),
                                 "no stack protector (-fstack-protector-strong)"),
    "-D_FORTIFY_SOURCE=2": (("-U_FORTIFY_SOURCE",), "no checking functions (-D_FORTIFY_SOURCE)"),
    "-O2": (("-O2", "-Wl,-rpath,/nowhere"), "a search path for libraries (RPATH, RUNPATH)"),
    "-fPIE": (("-fPIE", "-Wl,--disable-new-dtags,-rpath,/nowhere"),
              "a search path for libraries (RPATH, RUNPATH)"),
}
compiler = "c++"


class HardeningTest(unittest.TestCase):
    """Builds a small program in each way and reads it."""

    def faults(self, flags, **options):
        with tempfile.TemporaryDirectory() as folder:
            source, program = pathlib.Path(folder, "a.cpp"), pathlib.Path(folder, "a")
            source.write_text(PROGRAM, encoding="ascii")
            subprocess.run([compiler, *flags, str(source), "-o", str(program)], check=True,
                           timeout=60)
            return check_hardening.faults(check_hardening.Elf(program.read_bytes()), **options)

    def test_hardened_program_has_no_fault(self):
        self.assertEqual(self.faults(HARDENED), [])

    def test_each_protection_taken_away_is_one_fault(self):
        for taken, (given, fault) in WEAKENED.items():
            flags = [f for flag in HARDENED for f in (given if flag == taken else (flag,))]
            with self.subTest(taken):
                self.assertEqual(self.faults(flags), [fault])

    def test_missing_fortification_can_be_let_pass(self):
        flags = [flag for flag in HARDENED if "FORTIFY" not in flag] + ["-U_FORTIFY_SOURCE"]
        self.assertEqual(self.faults(flags, fortified=False), [])

    def test_what_is_no_program_is_refused(self):
        with self.assertRaises(ValueError):
            check_hardening.Elf(b"#!/bin/sh\n" + bytes(100))


if __name__ == "__main__":
    compiler = sys.argv.pop(1)
    unittest.main()
