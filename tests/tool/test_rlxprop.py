#!/usr/bin/env python3
"""Tests of the rlxprop command-line tool, run against the built binary.

Golden files live in tests/tool/golden; set RLX_UPDATE_GOLDEN=1 to rewrite them from the
current output (then review the diff before committing).
"""
import json
import os
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCE = os.environ.get("RLX_SOURCE_DIR", os.path.abspath(os.path.join(HERE, "..", "..")))
SAMPLES = os.path.join(SOURCE, "samples")
GOLDEN = os.path.join(HERE, "golden")
FIXTURES = os.path.join(HERE, "fixtures")
RLXPROP = os.environ.get("RLXPROP", "rlxprop")
# A command that runs the binary, e.g. Wine for a Windows build of the tool ("" runs it directly).
RUNNER = shlex.split(os.environ.get("RLXPROP_RUNNER", ""))
UPDATE = os.environ.get("RLX_UPDATE_GOLDEN") == "1"


def run(*args, env_extra=None, drop=(), executable=None):
    env = dict(os.environ)
    env.pop("KORVA_XMLDB", None)
    env.pop("NO_COLOR", None)
    for name in drop:
        env.pop(name, None)
    env.update(env_extra or {})
    result = subprocess.run([*RUNNER, executable or RLXPROP, *args], capture_output=True, text=True, env=env,
                            timeout=120)
    return result.returncode, result.stdout, result.stderr


class RlxpropTest(unittest.TestCase):
    maxDiff = None

    def ok(self, *args, **kwargs):
        code, out, err = run(*args, **kwargs)
        self.assertEqual(code, 0, f"rlxprop {' '.join(args)} failed: {err}")
        self.assertEqual(err, "")
        return out

    def fails(self, code, message_part, *args, **kwargs):
        got, out, err = run(*args, **kwargs)
        self.assertEqual(got, code, f"exit code of rlxprop {' '.join(args)}; stderr: {err}")
        self.assertEqual(out, "", "nothing on standard output when failing")
        lines = err.splitlines()
        self.assertEqual(len(lines), 1, f"exactly one line on standard error, got: {err!r}")
        self.assertTrue(lines[0].startswith("rlxprop: "), lines[0])
        self.assertIn(message_part, lines[0])
        return lines[0]

    def golden(self, name, text):
        text = text.replace(SAMPLES, "<SAMPLES>")
        path = os.path.join(GOLDEN, name)
        if UPDATE:
            with open(path, "w", encoding="utf-8") as f:
                f.write(text)
        with open(path, encoding="utf-8") as f:
            self.assertEqual(text, f.read(), f"output differs from golden file {name}")

    # ---- the driver table -------------------------------------------------------------

    def test_cpus_lists_the_driver_table(self):
        self.golden("cpus.txt", self.ok("cpus", "--no-color"))

    def test_cpus_json_has_every_row(self):
        doc = json.loads(self.ok("cpus", "--format", "json"))
        self.assertEqual(doc["directory"], SAMPLES)
        rows = {row["cpuType"]: row for row in doc["drivers"]}
        self.assertEqual(set(rows), {"4120", "64x", "5601_2", "3300", "4130", "4140"})
        self.assertEqual(rows["4130"]["propertyFile"], "rlx_trace_job.xml")
        self.assertTrue(rows["4120"]["supportsTrace"])
        self.assertFalse(rows["64x"]["supportsTrace"])

    def test_server_names_the_driver_through_the_wildcard_rows(self):
        self.assertEqual(self.ok("server", "--cpu", "4120"), "DemoEventServerA\n")
        self.assertEqual(self.ok("server", "--cpu", "6474"), "DemoEventServerB\n")
        self.assertEqual(self.ok("server", "--cpu", "0x1022"), "DemoTraceServer\n")

    # ---- trees ------------------------------------------------------------------------

    CPU_TYPES = {"4120": "core", "645": "wildcard", "56012": "revision", "3300": "lite",
                 "4130": "trace", "4140": "counter"}

    def test_tree_of_every_bundled_cpu_type(self):
        for cpu, label in self.CPU_TYPES.items():
            with self.subTest(cpu=cpu):
                self.golden(f"tree_{label}.txt", self.ok("tree", "--cpu", cpu, "--no-color"))

    def test_tree_json_of_every_bundled_cpu_type(self):
        for cpu, label in self.CPU_TYPES.items():
            with self.subTest(cpu=cpu):
                self.golden(f"tree_{label}.json", self.ok("tree", "--cpu", cpu, "--format", "json"))

    def test_tree_dot_of_every_bundled_cpu_type(self):
        for cpu, label in self.CPU_TYPES.items():
            with self.subTest(cpu=cpu):
                self.golden(f"tree_{label}.dot", self.ok("tree", "--cpu", cpu, "--format", "dot"))

    def test_dot_output_draws_with_graphviz(self):
        dot = os.environ.get("RLX_DOT") or shutil.which("dot")
        self.assertTrue(dot, "graphviz's dot is required (scripts/install-deps.sh installs it)")
        for cpu in self.CPU_TYPES:
            graph = self.ok("tree", "--cpu", cpu, "--format", "dot", "--set", "Type=Data Match") if cpu == "4120" \
                else self.ok("tree", "--cpu", cpu, "--format", "dot")
            svg = subprocess.run([dot, "-Tsvg"], input=graph, capture_output=True, text=True, timeout=60)
            self.assertEqual(svg.returncode, 0, svg.stderr)
            self.assertIn("<svg", svg.stdout)

    def test_set_changes_the_choice_and_relinks(self):
        self.golden("set_core_data_match.txt",
                    self.ok("tree", "--cpu", "4120", "--no-color", "--set", "Type=Data Match"))
        self.golden("set_trace_external_clock.txt",
                    self.ok("tree", "--cpu", "4130", "--no-color", "--set", "Type=Data trace",
                            "--set", "Timestamp source=External"))
        self.golden("set_trace_values_off.json",
                    self.ok("tree", "--cpu", "4130", "--format", "json", "--set", "Type=Data trace",
                            "--set", "Trace data values=false"))

    def test_set_edits_every_kind(self):
        out = self.ok("tree", "--cpu", "4130", "--no-color",
                      "--set", "Buffer size=0x8000", "--set", "Buffer base=0x1234567890",
                      "--set", "Start address=4096", "--set", "Type=Data trace",
                      "--set", "Trace data values=off")
        self.golden("set_every_kind.txt", out)
        self.assertIn("Buffer size  integer = 0x8000", out)
        self.assertIn("Buffer base  location64 = 0x0000001234567890", out)
        self.assertNotIn("Window low", out)  # a switched-off Boolean hides its children

    def test_last_false_child_switches_the_boolean_group_off(self):
        out = self.ok("tree", "--cpu", "4140", "--no-color", "--set", "Halt CPU=false")
        self.assertIn("On overflow  bool = false", out)
        self.assertNotIn("Signal cross trigger", out)

    def test_path_names_a_node_below_another(self):
        out = self.ok("tree", "--cpu", "4130", "--no-color", "--set", "Type=Data trace",
                      "--set", "Type/Trace data values/Window low=0x20001000")
        self.assertIn("Window low  location = 0x20001000", out)

    def test_depth_limits_the_levels_shown(self):
        full = self.ok("tree", "--cpu", "4120", "--no-color")
        top = self.ok("tree", "--cpu", "4120", "--no-color", "--depth", "1")
        root = self.ok("tree", "--cpu", "4120", "--no-color", "--depth", "0")
        self.assertEqual(len(root.splitlines()), 1)
        self.assertLess(len(top.splitlines()), len(full.splitlines()))
        self.assertNotIn("│   ", top)

    def test_modules_extend_the_job(self):
        out = self.ok("tree", "--cpu", "4120", "--no-color", "--attach", "rlx_trace_types.xml",
                      "--cti", "rlx_cti.xml", "--set", "Type=Trace")
        self.golden("modules_trace.txt", out)
        self.assertIn("*Trace", out)
        self.assertIn("Cross Trigger", out)
        out = self.ok("tree", "--cpu", "4120", "--no-color", "--sctm", "rlx_sctm_type.xml")
        self.golden("modules_sctm_type.txt", out)
        out = self.ok("tree", "--cpu", "4120", "--no-color", "--ocp", "rlx_ocp.xml")
        self.golden("modules_ocp.txt", out)

    def test_db_and_file_choose_the_same_database(self):
        by_cpu = self.ok("tree", "--cpu", "4140", "--no-color")
        by_db = self.ok("tree", "--db", "rlx_counter_job.xml", "--no-color")
        by_file = self.ok("tree", "--file", os.path.join(SAMPLES, "rlx_counter_job.xml"), "--no-color")
        self.assertEqual(by_cpu, by_db)
        self.assertEqual(by_cpu, by_file)

    def test_get_shows_one_property_in_full(self):
        self.golden("get_event.txt", self.ok("get", "Event", "--cpu", "4140", "--no-color"))
        doc = json.loads(self.ok("get", "Counter width", "--db", "rlx_counter_job.xml", "--format", "json"))
        node = doc["root"]
        self.assertEqual(node["kind"], "string")
        self.assertFalse(node["editable"])
        self.assertEqual(node["allowedValues"], [])  # a read-only string presents no allowed values

    # ---- JSON schema ------------------------------------------------------------------

    def test_json_validates_against_its_schema(self):
        import jsonschema  # Debian's python3-jsonschema
        with open(os.path.join(SOURCE, "docs", "rlxprop-tree.schema.json"), encoding="utf-8") as f:
            schema = json.load(f)
        validator = jsonschema.Draft202012Validator(schema)
        documents = [self.ok("tree", "--cpu", cpu, "--format", "json") for cpu in self.CPU_TYPES]
        documents.append(self.ok("tree", "--cpu", "4120", "--format", "json", "--attach", "rlx_trace_types.xml",
                                 "--cti", "rlx_cti.xml", "--set", "Type=Trace"))
        documents.append(self.ok("get", "Type", "--cpu", "4130", "--format", "json"))
        for text in documents:
            errors = sorted(validator.iter_errors(json.loads(text)), key=str)
            self.assertEqual(errors, [], "\n".join(e.message for e in errors[:5]))
        # The schema really constrains: a node without its children field is refused.
        broken = json.loads(documents[0])
        del broken["root"]["children"]
        self.assertTrue(list(validator.iter_errors(broken)))

    # ---- errors -----------------------------------------------------------------------

    def test_unknown_cpu_type_names_the_keys_tried(self):
        self.fails(4, "unknown CPU type 6474: no row of", "tree", "--cpu", "6474", "--xmldb", FIXTURES)
        self.fails(4, "matches the keys 9999, 999x, 99x, 9x, 0x", "tree", "--cpu", "9999")
        self.fails(4, "matches the keys 5603_4, 560x_4, 56x_4, 5x_4, 0x_4", "tree", "--cpu", "56034")
        self.fails(4, "unknown CPU type 9999", "server", "--cpu", "9999")

    def test_directory_without_driver_table(self):
        with tempfile.TemporaryDirectory() as empty:
            self.fails(3, f"no driver table rlxdvrs.xml in {empty}", "cpus", "--xmldb", empty)
            self.fails(3, "no driver table rlxdvrs.xml", "tree", "--cpu", "4120", "--xmldb", empty)

    def test_broken_driver_table_gives_the_readers_text(self):
        self.fails(3, "does not load: Undefined exception occurred while parsing RLX target configuration file "
                      "(severity Error)", "cpus", "--xmldb", os.path.join(FIXTURES, "broken_table"))

    def test_missing_database_file(self):
        self.fails(5, "missing.xml does not exist", "tree", "--db", "missing.xml")
        self.fails(5, f"{FIXTURES}/missing_db/nowhere.xml does not exist", "tree", "--cpu", "4120",
                   "--xmldb", os.path.join(FIXTURES, "missing_db"))

    def test_database_that_does_not_parse_gives_the_readers_text(self):
        self.fails(5, "does not load: Undefined exception occurred while parsing RLX target configuration file "
                      "(severity Error)", "tree", "--file", os.path.join(FIXTURES, "truncated.xml"))

    def test_module_file_missing(self):
        self.fails(5, "trace-type file", "tree", "--cpu", "4120", "--attach", "nowhere.xml")
        self.fails(5, "CTI file", "tree", "--cpu", "4120", "--cti", "nowhere.xml")

    def test_set_with_an_unknown_name(self):
        self.fails(6, 'no property named "Window low" in the tree', "tree", "--cpu", "4130", "--set", "Window low=1")
        self.fails(6, 'no top-level property named "Nothing"', "get", "Nothing", "--cpu", "4130")

    def test_refused_values_list_what_is_allowed(self):
        self.fails(7, 'Type refused the value "Nothing": allowed values are "Program flow trace", "Data trace", '
                      '"Timestamps only"', "tree", "--cpu", "4130", "--set", "Type=Nothing")
        self.fails(7, 'Threshold refused the value "70000": the range is 1..65535', "tree", "--cpu", "4140",
                   "--set", "Threshold=70000")
        self.fails(7, 'Buffer size refused the value "0x10": the range is 0x400..0x100000', "tree", "--cpu", "4130",
                   "--set", "Buffer size=0x10")
        self.fails(7, "only page 0 is offered", "tree", "--cpu", "4130", "--set", "Start address=0x10@1")
        self.fails(7, "a 32-bit location takes", "tree", "--cpu", "4130", "--set", "Start address=0x100000000")

    def test_malformed_numbers_and_arguments(self):
        self.fails(2, 'malformed number "12x" for Threshold', "tree", "--cpu", "4140", "--set", "Threshold=12x")
        self.fails(2, 'malformed number "0x" for --cpu', "tree", "--cpu", "0x")
        self.fails(2, "is too large", "tree", "--cpu", "4140", "--set", "Threshold=99999999999999999999")
        self.fails(2, '"maybe" is not a boolean', "tree", "--cpu", "4140", "--set", "Halt CPU=maybe")
        self.fails(2, "--set expects NAME=VALUE", "tree", "--cpu", "4140", "--set", "Threshold")
        self.fails(2, "exactly one of --cpu, --db or --file", "tree")
        code, out, err = run("tree", "--cpu", "1", "--db", "x.xml")
        self.assertEqual(code, 2)
        self.assertIn("excludes", err)
        code, out, err = run("frobnicate")
        self.assertEqual(code, 2)

    def test_every_input_file_ends_in_a_clear_result(self):
        # No input file may crash the tool: it either shows a tree or says why not.
        roots = [os.path.join(SOURCE, "tests", "fixtures"), SAMPLES, FIXTURES]
        files = sorted({os.path.join(d, f) for root in roots for d, _, fs in os.walk(root) for f in fs
                        if f.endswith(".xml")})
        self.assertGreater(len(files), 40)
        for path in files:
            with self.subTest(path=path):
                code, out, err = run("tree", "--file", path, "--no-color")
                self.assertIn(code, (0, 5), f"{path}: exit {code}: {err}")
                if code == 5:
                    self.assertEqual(len(err.splitlines()), 1, err)

    # ---- help, colour, directory ------------------------------------------------------

    def test_help_on_every_subcommand(self):
        for args in ([], ["cpus"], ["tree"], ["server"], ["get"]):
            with self.subTest(args=args):
                out = self.ok(*args, "--help")
                self.assertIn("--help", out)
        self.assertIn("Exit codes", self.ok("--help"))

    def test_colour_only_on_a_terminal_and_never_with_no_color(self):
        plain = self.ok("tree", "--cpu", "4120")
        self.assertNotIn("\x1b[", plain)
        self.assertIn("\x1b[", self.on_terminal("tree", "--cpu", "4120"))
        self.assertNotIn("\x1b[", self.on_terminal("tree", "--cpu", "4120", "--no-color"))
        self.assertNotIn("\x1b[", self.on_terminal("tree", "--cpu", "4120", env_extra={"NO_COLOR": "1"}))

    def on_terminal(self, *args, env_extra=None):
        import pty
        primary, secondary = pty.openpty()
        env = dict(os.environ)
        env.pop("KORVA_XMLDB", None)
        env.pop("NO_COLOR", None)
        env.update(env_extra or {})
        process = subprocess.Popen([*RUNNER, RLXPROP, *args], stdout=secondary, stderr=subprocess.PIPE, env=env)
        os.close(secondary)
        chunks = []
        while True:
            try:
                chunk = os.read(primary, 65536)
            except OSError:
                break
            if not chunk:
                break
            chunks.append(chunk)
        os.close(primary)
        self.assertEqual(process.wait(timeout=60), 0)
        return b"".join(chunks).decode("utf-8")

    def test_xmldb_option_and_environment_choose_the_directory(self):
        with tempfile.TemporaryDirectory() as scratch:
            shutil.copy(os.path.join(SAMPLES, "rlxdvrs.xml"), scratch)
            shutil.copy(os.path.join(SAMPLES, "rlx_counter_job.xml"), scratch)
            by_env = self.ok("cpus", env_extra={"KORVA_XMLDB": scratch})
            self.assertIn(f"in {scratch} (KORVA_XMLDB)", by_env)
            by_option = self.ok("cpus", "--xmldb", scratch, env_extra={"KORVA_XMLDB": "/nowhere"})
            self.assertIn(f"in {scratch} (--xmldb)", by_option)
            self.assertIn("(bundled samples)", self.ok("cpus"))

    def test_installed_tool_uses_the_bundled_samples(self):
        build = os.environ["RLX_BUILD_DIR"]
        with tempfile.TemporaryDirectory() as prefix:
            subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True, capture_output=True)
            installed = os.path.join(prefix, "bin", "rlxprop")
            samples = os.path.join(prefix, "share", "RLXPropertyHelper", "samples")
            self.assertTrue(os.path.isfile(os.path.join(samples, "rlxdvrs.xml")))
            code, out, err = run("cpus", executable=installed)
            self.assertEqual(code, 0, err)
            self.assertIn(f"in {samples} (bundled samples)", out)
            code, out, err = run("tree", "--cpu", "4130", "--no-color", executable=installed)
            self.assertEqual(code, 0, err)
            self.assertEqual(out, self.ok("tree", "--cpu", "4130", "--no-color"))

    def test_documented_example_prints_what_the_guide_shows(self):
        with open(os.path.join(SOURCE, "docs", "database-format.md"), encoding="utf-8") as f:
            guide = f.read()
        marker = '$ rlxprop tree --file example_job.xml --set "Type=Data watchpoint" --set "Counter mode=Count"\n'
        self.assertIn(marker, guide)
        shown = guide.split(marker, 1)[1].split("```", 1)[0]
        out = self.ok("tree", "--file", os.path.join(SOURCE, "docs", "example_job.xml"), "--no-color",
                      "--set", "Type=Data watchpoint", "--set", "Counter mode=Count")
        self.assertEqual(out, shown)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[1:]], verbosity=2)
