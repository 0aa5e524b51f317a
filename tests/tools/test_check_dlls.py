import os
import pathlib
import shutil
import tempfile
import unittest
import unittest.mock

import tool

OBJDUMP = """#!/bin/sh
[ "$1" = --private-headers ] && cat "$2"
"""


def listing(imports, exports):
    """What objdump says of a library, as far as it is read."""
    lines = ["The Import Tables (interpreted .idata section contents)"]
    for name in imports:
        lines += [f"\tDLL Name: {name}", "\tvma:  Hint/Ord Member-Name Bound-To", "\t3bdcf8\t 1327  strlen", ""]
    lines += ["Export Address Table -- Ordinal Base 1", "\t[   0] +base[   1] 3ba0 Export RVA", "",
              "[Ordinal/Name Pointer] Table"]
    lines += [f"\t[   {i}] {name}" for i, name in enumerate(exports)]
    return "\n".join(lines + ["", "The Function Table (interpreted .pdata section contents)", "  [ 1] no name", ""])


class Dlls(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        objdump = self.folder / "tools" / "x86_64-w64-mingw32-objdump"
        tool.write_tree(self.folder, {"tools/x86_64-w64-mingw32-objdump": OBJDUMP})
        objdump.chmod(0o755)
        path = unittest.mock.patch.dict(os.environ, {"PATH": f"{objdump.parent}:{os.environ['PATH']}"})
        path.start()
        self.addCleanup(path.stop)


class CheckExports(Dlls):
    def result(self, exports, names):
        tool.write_tree(self.folder, {"a.dll": listing(["KERNEL32.dll"], exports), "names": names})
        return tool.run("check_exports", self.folder / "a.dll", self.folder / "names")

    def test_same_names(self):
        result = self.result(["OUTFIRST", "OUTSECOND"], "OUTFIRST\nOUTSECOND\n")
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_a_decorated_name_is_another_one(self):
        result = self.result(["_Z8OUTFIRSTv"], "OUTFIRST\n")
        self.assertEqual(result.returncode, 1)
        self.assertIn("OUTFIRST is listed but not exported\n_Z8OUTFIRSTv is exported but not listed", result.stdout)

    def test_one_more(self):
        self.assertEqual(self.result(["OUTFIRST", "DllMain"], "OUTFIRST\n").returncode, 1)


class CheckImports(Dlls):
    def result(self, **more):
        imports = {"vexabackend.dll": ["KERNEL32.dll", "msvcrt.dll"], "vexaoutput.dll": ["KERNEL32.dll", "vexabackend.dll"],
                   "vexa.exe": ["vexabackend.dll", "ADVAPI32.dll"]}
        imports.update({name.replace("_", "."): names for name, names in more.items()})
        tool.write_tree(self.folder, {f"bin/{name}": listing(names, []) for name, names in imports.items()})
        return tool.run("check_imports", self.folder / "bin")

    def test_the_system_and_the_back_end(self):
        result = self.result()
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_any_other_library(self):
        result = self.result(vexaoutput_dll=["vexabackend.dll", "libstdc++-6.dll"])
        self.assertEqual(result.returncode, 1)
        self.assertIn("vexaoutput.dll needs libstdc++-6.dll", result.stdout)

    def test_a_module_without_the_back_end(self):
        self.assertIn("vexaoutput.dll does not use vexabackend.dll", self.result(vexaoutput_dll=["msvcrt.dll"]).stdout)

    def test_nothing_there(self):
        self.assertEqual(tool.run("check_imports", self.folder / "none").returncode, 1)


if __name__ == "__main__":
    unittest.main()
