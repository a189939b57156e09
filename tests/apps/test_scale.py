# SPDX-License-Identifier: BSD-3-Clause
"""Many containers at once: memory that does not grow, runs that go on where they were killed."""

import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.environ["LORIX_PROGRAM"]
ROOT = Path(__file__).resolve().parents[2]
COUNT = 1200


def peak_memory(arguments):
    """Peak resident memory of a call in KiB."""
    # Where the address sanitizer is built in, it would keep what was freed.
    options = os.environ.get("ASAN_OPTIONS", "") \
        + ":quarantine_size_mb=0:thread_local_quarantine_size_kb=0"
    report = subprocess.run(["/usr/bin/time", "-f", "%M", *arguments], stdout=subprocess.DEVNULL,
                            stderr=subprocess.PIPE, check=False,
                            env=dict(os.environ, ASAN_OPTIONS=options)).stderr
    return int(report.split()[-1])


class ScaleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.dir = tempfile.TemporaryDirectory()
        cls.top = Path(cls.dir.name)
        subprocess.run([sys.executable, str(ROOT / "scripts" / "make-containers"), str(COUNT),
                        str(cls.top / "in"), "--bad", "20"], check=True)
        cls.call = [PROGRAM, "summary", "--json", "--quiet", "-r", "in"]
        cls.whole = cls.run_call(cls.call).stdout

    @classmethod
    def tearDownClass(cls):
        cls.dir.cleanup()

    @classmethod
    def run_call(cls, call, **options):
        return subprocess.run(call, cwd=cls.top, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              check=False, **options)

    def test_generated_containers_are_right_and_the_bad_ones_are_not(self):
        result = self.run_call([PROGRAM, "validate", "--json", "--quiet", "-r", "in"])
        self.assertEqual(result.returncode, 1)
        answers = [json.loads(line) for line in result.stdout.splitlines()]
        # The empty ones carry no history and are passed over in a folder.
        self.assertEqual(len(answers), COUNT - COUNT // 20 // 5)
        bad = {answer["file"] for answer in answers if not answer["valid"]}
        names = {f"in/{i // 1000:04}/{i:07}.pdf" for i in range(19, COUNT, 20)}
        self.assertLessEqual(bad, names)
        # Of those changed and cut a few are hit where nobody looks.
        self.assertGreaterEqual(len(bad), COUNT // 20 // 4)

    def test_killed_run_goes_on_byte_for_byte(self):
        lines = self.whole.splitlines(keepends=True)
        self.assertGreater(len(lines), COUNT * 9 // 10)
        for stop in (0, 1, 4096, len(self.whole) // 3, len(self.whole) - 1):
            with self.subTest(stop=stop):
                output = self.top / "out.jsonl"
                self.kill_after(stop, output)
                with open(output, "ab") as out:
                    subprocess.run([*self.call, "--skip-done", str(output)], cwd=self.top,
                                   stdout=out, check=True)
                self.assertEqual(output.read_bytes(), self.whole)

    def kill_after(self, stop, output):
        """Leaves in `output` the first `stop` bytes that a run wrote before it was killed."""
        with subprocess.Popen(self.call, cwd=self.top, stdout=subprocess.PIPE) as process:
            output.write_bytes(process.stdout.read(stop))
            process.send_signal(signal.SIGKILL)

    def test_cut_line_stays_where_output_goes_elsewhere(self):
        output = self.top / "cut.jsonl"
        output.write_bytes(self.whole[:5000])
        rest = self.run_call([*self.call, "--skip-done", str(output)]).stdout
        self.assertEqual(output.read_bytes(), self.whole[:5000])
        self.assertEqual(self.whole[:5000].rpartition(b"\n")[0] + b"\n" + rest, self.whole)

    def test_ended_run_has_whole_lines_and_goes_on(self):
        output = self.top / "ended.jsonl"
        with open(output, "wb") as out:
            with subprocess.Popen(self.call, cwd=self.top, stdout=out) as process:
                while not output.stat().st_size and process.poll() is None:
                    os.sched_yield()
                process.terminate()
        self.assertIn(process.returncode, (0, 130))
        part = output.read_bytes()
        self.assertTrue(part.endswith(b"\n"))
        self.assertTrue(self.whole.startswith(part))
        rest = self.run_call([*self.call, "--skip-done", str(output)]).stdout
        self.assertEqual(part + rest, self.whole)

    def test_names_come_from_a_pipe(self):
        names = sorted(str(path.relative_to(self.top)) for path in self.top.glob("in/*/*.pdf"))
        result = self.run_call([PROGRAM, "summary", "--json", "--quiet", "--files-from", "-", "-0"],
                               input="\0".join(names).encode())
        answers = [json.loads(line) for line in result.stdout.splitlines()]
        self.assertEqual([answer["file"] for answer in answers], names)
        readable = [line for line in result.stdout.splitlines(keepends=True)
                    if b'"errors"' not in line]
        self.assertEqual(b"".join(readable), self.whole)

    def test_one_name_at_a_time_gets_its_answer(self):
        with subprocess.Popen([PROGRAM, "info", "--json", "--files-from", "-"], cwd=self.top,
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
            for name in ("in/0000/0000003.pdf", "missing", "in/0001/0001003.pdf"):
                process.stdin.write(name.encode() + b"\n")
                process.stdin.flush()
                self.assertEqual(json.loads(process.stdout.readline())["file"], name)
            process.stdin.close()
        self.assertEqual(process.returncode, 2)

    def test_memory_does_not_grow_with_the_number(self):
        for command in ("summary", "tree"):
            with self.subTest(command=command):
                call = [PROGRAM, command, "--json", "-q", "--jobs", "2", "-r"]
                few = peak_memory([*call, str(self.top / "in" / "0001")])
                many = peak_memory([*call, *3 * [str(self.top / "in")]])
                # 200 against 3600 files; what each leaves behind would show.
                self.assertLess(many, few + 6 * 1024)

    def test_many_files_are_spread_over_folders_without_order_of_the_disk(self):
        shuffled = self.top / "shuffled"
        shuffled.mkdir()
        for i in (7, 3, 11, 5):
            shutil.copy(self.top / "in" / "0000" / f"{i:07}.pdf", shuffled)
        answers = self.run_call([PROGRAM, "info", "--json", "-r", "shuffled"]).stdout.splitlines()
        self.assertEqual([json.loads(line)["file"] for line in answers],
                         [f"shuffled/{i:07}.pdf" for i in (3, 5, 7, 11)])


if __name__ == "__main__":
    unittest.main()
