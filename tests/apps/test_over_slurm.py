# SPDX-License-Identifier: BSD-3-Clause
"""A cluster's array job prints what one call prints, also when tasks were killed.

Skipped where Slurm is not installed; 'scripts/setup slurm-client slurmctld slurmd' installs it.
"""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = Path(os.environ["LORIX_PROGRAM"])
ROOT = Path(__file__).resolve().parents[2]
COUNT = 40

# Is killed once in the second part of the list, in the middle of a line.
KILLED = """#!/bin/sh
case "$*" in
    *000001.names*)
        if mkdir "$KILLED" 2> /dev/null; then
            "$LORIX" "$@" | head -c 5000
            kill -9 $$
        fi ;;
esac
exec "$LORIX" "$@"
"""


@unittest.skipUnless(shutil.which("slurmctld") and shutil.which("slurmd"),
                     "Slurm is not installed; "
                     "'scripts/setup slurm-client slurmctld slurmd' installs it")
class OverSlurm(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        self.addCleanup(self.dir.cleanup)
        self.top = Path(self.dir.name)
        for name in ("bin", "tmp"):
            (self.top / name).mkdir()
        self.environment = dict(os.environ, TMPDIR=str(self.top / "tmp"), LORIX=str(PROGRAM),
                                KILLED=str(self.top / "killed"),
                                PATH=f"{self.top / 'bin'}:{os.environ['PATH']}")
        subprocess.run([sys.executable, str(ROOT / "scripts" / "make-containers"), str(COUNT),
                        str(self.top / "in"), "--bad", "9"], check=True)
        # An odd name is one all the same.
        (self.top / "in" / "0000" / "0000003.pdf").rename(self.top / "in" / "0000" / "a\rb 'c'.pdf")
        names = sorted(str(path.relative_to(self.top)) for path in (self.top / "in").rglob("*.pdf"))
        (self.top / "names").write_text("\n".join([*names, "missing"]) + "\n")

    def over_slurm(self, *arguments):
        return subprocess.run([sys.executable, str(ROOT / "scripts" / "over-slurm"), "names",
                               "the answers", "--tasks", "3", "--single-machine", *arguments],
                              cwd=self.top, env=self.environment, capture_output=True, text=True,
                              check=False)

    def in_one_call(self, *command):
        return subprocess.run([PROGRAM, *command, "--json", "-q", "--files-from", "names"],
                              cwd=self.top, stdout=subprocess.PIPE, check=False)

    def test_killed_tasks_are_made_up_for(self):
        wrapper = self.top / "bin" / "lorix"
        wrapper.write_text(KILLED)
        wrapper.chmod(0o755)
        first = self.over_slurm()
        self.assertEqual(first.returncode, 3, first.stderr)
        self.assertIn("1 of 3 tasks failed", first.stderr)
        self.assertFalse((self.top / "the answers").exists())
        other = self.over_slurm("validate")
        self.assertEqual(other.returncode, 2)
        self.assertIn("is of another call", other.stderr)
        again = self.over_slurm()
        whole = self.in_one_call("summary")
        self.assertEqual((again.returncode, again.stderr), (whole.returncode, ""))
        self.assertEqual((self.top / "the answers").read_bytes(), whole.stdout)
        self.assertFalse((self.top / "the answers.parts").exists())
        self.assertEqual(list((self.top / "tmp").iterdir()), [])

    def test_stopping_it_stops_the_tasks(self):
        wrapper = self.top / "bin" / "lorix"
        wrapper.write_text('#!/bin/sh\necho $$ > "$KILLED"\nexec sleep 1000\n')
        wrapper.chmod(0o755)
        call = [sys.executable, str(ROOT / "scripts" / "over-slurm"), "--single-machine", "names",
                "the answers", "--tasks", "1"]
        with subprocess.Popen(call, cwd=self.top, env=self.environment, stderr=subprocess.PIPE,
                              text=True, start_new_session=True,
                              # Where the tests run in the background it would be ignored.
                              preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL)
                              ) as running:
            task = self.top / "killed"
            while running.poll() is None and not (task.exists() and task.read_text()):
                os.sched_yield()
            os.killpg(running.pid, signal.SIGINT)
            said = running.communicate(timeout=120)[1]
        self.assertEqual(running.returncode, 130, said)
        self.assertIn("stopped; the same call again goes on", said)
        self.assertFalse(Path(f"/proc/{int(task.read_text())}").exists())
        self.assertEqual(list((self.top / "tmp").iterdir()), [])

    def test_a_job_that_was_left_behind_is_told(self):
        queue = self.top / "bin" / "squeue"
        queue.write_text("#!/bin/sh\necho 7\n")
        queue.chmod(0o755)
        done = self.over_slurm()
        self.assertEqual(done.returncode, 2, done.stderr)
        self.assertIn("the job of an earlier call still runs", done.stderr)
        self.assertEqual(list((self.top / "the answers.parts").glob("*.jsonl")), [])

    def test_other_commands_run_as_well(self):
        (self.top / "bin" / "lorix").symlink_to(PROGRAM)
        command = ["find", "a:title %contains 'mesh'"]
        done = self.over_slurm(*command)
        whole = self.in_one_call(*command)
        self.assertEqual(done.returncode, whole.returncode, done.stderr)
        self.assertGreater(len(whole.stdout.splitlines()), 5)
        self.assertEqual((self.top / "the answers").read_bytes(), whole.stdout)


if __name__ == "__main__":
    unittest.main()
