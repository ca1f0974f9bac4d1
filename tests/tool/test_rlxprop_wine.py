#!/usr/bin/env python3
"""rlxprop.exe, the Windows build of the tool, run under Wine: its trees of the bundled samples
are the trees the Linux build prints.

RLXPROP names rlxprop.exe and RLXPROP_RUNNER the command that runs it under Wine. The Linux
build's output is pinned by the golden files (the Linux suite checks it against them); when
RLX_LINUX_RLXPROP names a Linux rlxprop, its output is compared directly as well. Text read
from the tool has its line ends normalised, as Windows writes "\\r\\n" to text streams.
"""
import os
import subprocess
import sys
import unittest

import test_rlxprop
from test_rlxprop import GOLDEN, run

LINUX_RLXPROP = os.environ.get("RLX_LINUX_RLXPROP", "")


class RlxpropUnderWineTest(unittest.TestCase):
    maxDiff = None

    def tree(self, *args, executable=None):
        code, out, err = run(*args, executable=executable)
        self.assertEqual(code, 0, f"rlxprop {' '.join(args)} failed: {err}")
        self.assertEqual(err, "")
        return out

    def test_runs_under_wine(self):
        self.assertTrue(test_rlxprop.RUNNER, "RLXPROP_RUNNER must name the Wine command")
        self.assertTrue(test_rlxprop.RLXPROP.endswith(".exe"), test_rlxprop.RLXPROP)

    def test_tree_of_every_bundled_cpu_type_matches_linux(self):
        for cpu, label in test_rlxprop.RlxpropTest.CPU_TYPES.items():
            with self.subTest(cpu=cpu):
                out = self.tree("tree", "--cpu", cpu, "--no-color")
                with open(os.path.join(GOLDEN, f"tree_{label}.txt"), encoding="utf-8") as f:
                    self.assertEqual(out, f.read())
                if LINUX_RLXPROP:
                    linux = subprocess.run([LINUX_RLXPROP, "tree", "--cpu", cpu, "--no-color"], capture_output=True,
                                           text=True, timeout=120, env={**os.environ, "KW_TRACE_LOGGING": "0"})
                    self.assertEqual(linux.returncode, 0, linux.stderr)
                    self.assertEqual(out, linux.stdout)

    def test_tree_after_a_choice_matches_linux(self):
        out = self.tree("tree", "--cpu", "4120", "--no-color", "--set", "Type=Data Match")
        with open(os.path.join(GOLDEN, "set_core_data_match.txt"), encoding="utf-8") as f:
            self.assertEqual(out, f.read())


if __name__ == "__main__":
    sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
    unittest.main(argv=[sys.argv[0], *sys.argv[1:]], verbosity=2)
