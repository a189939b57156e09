# SPDX-License-Identifier: BSD-3-Clause
"""At every moment there is the old file or the new one, whole."""

import fcntl
import os
import random
import resource
import shutil
import signal
import stat
import subprocess
import sys
import time
import unittest

from support import TOOLS, ToolCase, run, runs, start

FIXED = {"SOURCE_DATE_EPOCH": "1000000000"}
LARGEST = 2147483647


def part(name):
    return ".%s.lorix-part" % name


class Kills(ToolCase):
    def kill_while(self, moments, tool, arguments, old, new):
        """Kills the tool at random moments; returns how often it had ended before."""
        begin = time.monotonic()
        self.write("x", old)
        run(tool, *arguments, env=FIXED)
        self.assertEqual(self.read("x"), new)
        longest = time.monotonic() - begin
        choose = random.Random(5)
        finished = 0
        for number in range(moments):
            self.write("x", old)
            if number % 3 == 0 and os.path.exists(part("x")):
                # Left by the kill before: one that is asked to end early need not have met it.
                os.unlink(part("x"))
            process = start(tool, *arguments, env=dict(os.environ, **FIXED),
                            start_new_session=True)
            time.sleep(choose.uniform(0, longest))
            if number % 3:
                process.kill()
            else:
                process.terminate()
            process.communicate()
            finished += process.returncode == 0
            self.assertIn(self.read("x"), (old, new))
            if self.read("x") == old and number % 3 == 0 and process.returncode == 130:
                self.assertFalse(os.path.exists(part("x")), "not cleaned away when asked to end")
        self.write("x", old)
        run(tool, *arguments, env=FIXED)
        self.assertEqual(self.read("x"), new, "the run after a kill")
        self.assertFalse(os.path.exists(part("x")))
        return finished

    def test_kills_at_random_moments_leave_old_or_new(self):
        old = b"document\n" * 300000
        self.write("big", random.Random(1).randbytes(6000000))
        os.utime("big", (1000000000, 1000000000))
        self.write("x", old)
        self.add("-A", "x", "-i", "big", "-f", "compress", env=FIXED)
        new = self.read("x")
        self.kill_while(runs(20), "lorixadd", ["-A", "x", "-i", "big", "-f", "compress"], old, new)
        self.kill_while(runs(20), "lorixdel", ["x"], new, old)


class Writers(ToolCase):
    def test_a_second_writer_is_turned_away(self):
        self.add("-O", "x")
        before = self.read("x")
        with open(part("x"), "wb") as other:
            fcntl.flock(other, fcntl.LOCK_EX)
            for tool, arguments in (("lorixadd", ["-A", "x"]), ("lorixdel", ["x"])):
                outcome = run(tool, *arguments)
                self.assertEqual(outcome.code, 3)
                self.assertIn("***ERROR x: another process is writing it", outcome.output)
        self.assertEqual(self.read("x"), before)
        self.add("-A", "x")
        self.assertEqual(len(self.container("x").sections), 2)

    def test_writers_side_by_side_win_or_say_so(self):
        self.write("big", b"x" * 3000000)
        self.add("-O", "x", "-i", "big")
        expected = 1
        for _ in range(runs(3)):
            writers = [start("lorixadd", "-A", "x", "-s", "title", str(number), "-i", "big", "-f",
                             "compress") for number in range(4)]
            for writer in writers:
                output = writer.communicate()[0].decode()
                if writer.returncode:
                    self.assertEqual(writer.returncode, 3)
                    self.assertIn("another process is writing it", output)
                else:
                    expected += 1
            self.assertEqual(len(self.container("x").sections), expected)
        self.assertEqual(sorted(os.listdir()), ["big", "x"])

    def test_what_stands_in_the_way_is_not_harmed(self):
        self.write("precious", b"precious")
        os.symlink("precious", part("x"))
        self.add("-O", "x", code=3)
        os.unlink(part("x"))
        os.link("precious", part("x"))
        self.add("-O", "x", code=2)
        os.unlink(part("x"))
        os.mkdir(part("x"))
        self.add("-O", "x", code=3)
        self.assertEqual(self.read("precious"), b"precious")


class Disk(ToolCase):
    def test_a_limit_of_the_system_leaves_the_old_file(self):
        self.write("x", b"old\n")
        self.write("big", b"x" * 3000000)

        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (1000000, 1000000))
        process = start("lorixadd", "-A", "x", "-i", "big", preexec_fn=limit)
        output = process.communicate()[0].decode()
        self.assertEqual(process.returncode, 3, output)
        self.assertIn("***ERROR", output)
        self.assertEqual(self.read("x"), b"old\n")
        self.assertEqual(sorted(os.listdir()), ["big", "x"])

    def test_a_full_disk_leaves_the_old_file(self):
        os.mkdir("small")
        done = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", "small"],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False) \
            if shutil.which("mount") and os.getuid() == 0 else None
        if done is None or done.returncode:
            self.skipTest("NOT RUN: no small disk can be mounted here")
        try:
            self.write("small/x", b"old\n" * 1000)
            self.write("big", random.Random(1).randbytes(1040000))
            for flag in ("compress", "no-compress"):
                outcome = run("lorixadd", "-A", "small/x", "-i", "big", "-f", flag)
                self.assertEqual(outcome.code, 3, outcome)
                self.assertIn("No space left on device", outcome.output)
                self.assertEqual(self.read("small/x"), b"old\n" * 1000)
                self.assertEqual(os.listdir("small"), ["x"])
            self.write("half", random.Random(1).randbytes(600000))
            self.add("-A", "small/x", "-i", "half")
            before = self.read("small/x")
            self.write("small/filler", b"x" * 300000)
            outcome = run("lorixdel", "small/x")  # needs no more than the old document
            self.assertEqual(outcome.code, 0, outcome)
            self.assertNotEqual(self.read("small/x"), before)
        finally:
            subprocess.run(["umount", "small"], check=True)

    def test_a_folder_that_cannot_be_written_to(self):
        self.add("-O", "none/x", code=3)
        if os.getuid() == 0:
            self.skipTest("NOT RUN: nothing is closed to the administrator")
        os.mkdir("closed", 0o555)
        self.add("-O", "closed/x", code=3)

    def test_targets_that_are_no_files(self):
        os.mkdir("folder")
        self.add("-A", "folder", code=2)
        self.add("-O", "/dev/null", code=2)
        self.delete("folder", code=2)

    def test_links_stay_links_and_modes_stay(self):
        self.write("real", b"doc\n")
        os.chmod("real", 0o640)
        os.symlink("real", "link")
        self.add("-A", "link")
        self.assertTrue(os.path.islink("link"))
        self.assertEqual(stat.S_IMODE(os.stat("real").st_mode), 0o640)
        self.container("real")
        self.delete("link")
        self.assertEqual((self.read("real"), stat.S_IMODE(os.stat("real").st_mode)),
                         (b"doc\n", 0o640))
        os.umask(0o027)
        self.addCleanup(os.umask, 0o022)
        self.add("-O", "new")
        self.assertEqual(stat.S_IMODE(os.stat("new").st_mode), 0o640)

    def test_a_reader_of_the_output_that_goes_away_ends_nothing(self):
        process = start("lorixadd", "-A", "x", "-v")
        process.stdout.close()
        process.stdin.close()
        self.assertEqual(process.wait(), 0)
        self.container("x")


class Sizes(ToolCase):
    def sparse(self, name, size):
        with open(name, "wb") as file:
            file.truncate(size)

    def peak(self, *arguments):
        """Peak memory of the add tool's run, in bytes."""
        program = ("import resource, subprocess, sys\n"
                   "done = subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL)\n"
                   "print(done.returncode, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)")
        output = subprocess.run([sys.executable, "-c", program, sys.executable,
                                 os.path.join(TOOLS, "lorixadd.py")] + list(arguments),
                                stdout=subprocess.PIPE, check=True).stdout.split()
        self.assertEqual(output[0], b"0")
        return int(output[1]) * 1024

    def test_memory_does_not_grow_with_files(self):
        # LORIX_BIG_FILE=1073741824 makes it a full gibibyte.
        self.sparse("big", int(os.environ.get("LORIX_BIG_FILE", 200 << 20)))
        for flag in ("no-compress", "compress"):
            self.assertLess(self.peak("-A", "x", "-i", "big", "-f", flag), 64 << 20)
        self.assertLess(self.peak("-A", "x"), 64 << 20)

    def test_what_no_reader_could_open_is_refused_before_it_is_written(self):
        self.sparse("big", LARGEST - 100)
        self.sparse("larger", LARGEST + 1)
        for arguments in (["-i", "big"], ["-i", "larger", "-f", "compress"], ["-I", "larger"],
                          ["-I", "big", "-i", "big"], ["-i", "big", "-i", "big"]):
            outcome = run("lorixadd", "-O", "x", *arguments)
            self.assertEqual(outcome.code, 2, outcome)
            self.assertIn("larger than 2147483647 bytes", outcome.output)
            self.assertEqual(sorted(os.listdir()), ["big", "larger"])


class Inputs(ToolCase):
    def test_files_that_may_not_be_read(self):
        self.write("secret", b"x")
        os.chmod("secret", 0)
        if os.getuid() == 0:
            self.skipTest("NOT RUN: nothing is closed to the administrator")
        self.assertIn("Permission denied", self.add("-O", "x", "-i", "secret", code=2))

    def test_a_file_that_changes_while_it_is_read_is_refused(self):
        self.write("big", b"x" * 30000000)
        process = start("lorixadd", "-O", "x", "-i", "big", "-f", "compress")
        while not os.path.exists(part("x")) and process.poll() is None:
            time.sleep(0.001)
        with open("big", "r+b") as file:
            file.write(b"changed")
        output = process.communicate()[0].decode()
        self.assertEqual(process.returncode, 3, output)
        self.assertIn("changed while", output)
        self.assertEqual(os.listdir(), ["big"])

    def test_the_output_may_be_one_of_the_inputs(self):
        self.write("x", b"document\n")
        for _ in range(2):
            before = self.read("x")
            self.add("-A", "x", "-i", "x")
            container = self.container("x")
            self.assertEqual(container.content(container.files[-2]), before)

    def test_interrupted_from_the_keyboard(self):
        self.write("big", b"x" * 50000000)
        for _ in range(runs(5)):
            process = start("lorixadd", "-O", "x", "-i", "big", "-f", "compress")
            while not os.path.exists(part("x")) and process.poll() is None:
                pass  # as early as can be: the part has only just been made
            process.send_signal(signal.SIGINT)
            output = process.communicate()[0].decode()
            self.assertEqual(process.returncode, 130, output)
            self.assertIn("***ERROR interrupted", output)
            self.assertEqual(os.listdir(), ["big"])


if __name__ == "__main__":
    unittest.main()
