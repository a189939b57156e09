# SPDX-License-Identifier: BSD-3-Clause
"""lorixdel takes off exactly what lorixadd put on."""

import os
import random
import unittest

import reader
from support import ToolCase, runs
from test_lorixadd import TRAPS


class Delete(ToolCase):
    def setUp(self):
        super().setUp()
        self.write("doc", b"document\r\nwithout a line end")
        self.add("-I", "doc", "-O", "one", "-i", "doc", "-s", "title", "one")
        self.add("-I", "one", "-O", "two", "-i", "one", "-s", "title", "two")

    def test_newest_step_goes_and_the_rest_stays_byte_for_byte(self):
        self.write("x", self.read("two"))
        self.assertIn('x: removed the newest step, "two", ', self.delete("x"))
        self.assertEqual(self.read("x"), self.read("one"))
        self.assertIn("; 0 steps are left", self.delete("x"))
        self.assertEqual(self.read("x"), self.read("doc"))
        self.assertIn("***ERROR x: carries no history", self.delete("x", code=2))
        self.assertEqual(self.read("x"), self.read("doc"))

    def test_undo_description(self):
        os.mkdir("a <b>")
        for name in ("x", "a <b>/y&amp;z"):
            self.write(name, self.read("two"))
        self.delete("<DelWorkflowStep>x</DelWorkflowStep>"
                    "<DelWorkflowStep>a <b>/y&amp;z</DelWorkflowStep>")
        self.assertEqual(self.read("x"), self.read("one"))
        self.assertEqual(self.read("a <b>/y&amp;z"), self.read("one"))

    def test_several_files_go_together_or_not_at_all(self):
        self.write("x", self.read("two"))
        self.delete("x", "doc", code=2)
        self.delete("x", "none", code=2)
        self.assertEqual(self.read("x"), self.read("two"))
        self.write("y", self.read("one"))
        self.delete("x", "./x", "y")
        self.assertEqual(self.read("x"), self.read("one"))
        self.assertEqual(self.read("y"), self.read("doc"))

    def test_every_changed_byte_of_the_step_is_noticed(self):
        data = self.read("two")
        begin = len(self.read("one"))
        choose = random.Random(3)
        for position in [begin, len(data) - 1] + [choose.randrange(begin, len(data))
                                                  for _ in range(runs(20))]:
            changed = bytearray(data)
            changed[position] ^= 1
            self.write("x", bytes(changed))
            container = reader.Container(bytes(changed))
            if container.sections and container.sections[0].title == "one":
                # The newest marker itself is gone; the step before is not at the end.
                self.assertIn("follow behind", self.delete("x", code=2))
            else:
                self.delete("x", code=2)
            self.assertEqual(self.read("x"), bytes(changed))

    def test_a_changed_step_goes_by_force(self):
        self.write("x", self.read("two").replace(b"[title:two]", b"[title:too]"))
        self.assertIn("was changed after it was added", self.delete("x", code=2))
        self.assertIn("***WARNING", self.delete("x", "--force"))
        self.assertEqual(self.read("x"), self.read("one"))

    def test_what_follows_behind_the_step_is_kept_by_force(self):
        self.write("x", self.read("two") + b"more\n")
        self.assertIn("5 bytes follow", self.delete("x", code=2))
        self.delete("-f", "x")
        self.assertEqual(self.read("x"), self.read("one") + b"more\n")

    def test_a_marker_that_lies_is_never_followed(self):
        two = self.read("two")
        section = reader.Container(two).sections[0]
        for field, value in (("size", 0), ("size", 2147483647), ("left", 0), ("left", 2147483647),
                             ("left", section.left + 300), ("size", section.left - 1)):
            name = field.encode()
            old = b"[%s:%d]" % (name, getattr(section, field))
            at = two.rindex(old)
            self.write("x", two[:at] + b"[%s:%d]" % (name, value) + two[at + len(old):])
            before = self.read("x")
            with self.subTest(field=field, value=value):
                self.delete("x", code=2)
                self.delete("--force", "x", code=2)
                self.assertEqual(self.read("x"), before)

    def test_pretend_quiet_help_version(self):
        self.write("x", self.read("two"))
        size = len(self.read("two")) - len(self.read("one"))
        self.assertEqual('x: would remove the newest step, "two", %d bytes; 1 step is left\n' % size,
                         self.delete("-p", "x"))
        self.assertEqual(self.read("x"), self.read("two"))
        self.assertEqual(self.delete("-q", "x"), "")
        self.assertIn("--force", self.delete("--help"))
        self.assertEqual(self.delete("--version"), "lorixdel 1.83.0\n")
        self.assertIn("unknown option", self.delete("--bogus", "x", code=2))
        self.delete(code=2)

    def test_names_with_a_hyphen(self):
        self.write("-x", self.read("two"))
        self.delete("--", "-x")
        self.assertEqual(self.read("-x"), self.read("one"))

    def test_nothing_is_left_beside_the_file(self):
        before = sorted(os.listdir())
        self.delete("two")
        self.delete("doc", code=2)
        self.delete("none", code=2)
        self.assertEqual(sorted(os.listdir()), before)


class Circle(ToolCase):
    """Add some steps, remove them all: every state comes back, byte for byte."""

    def data(self, choose):
        return b"".join(choose.choice(TRAPS[1:] + [choose.randbytes(50)])
                        for _ in range(choose.choice([0, 1, 4, 200])))

    def test_the_way_back_passes_every_state(self):
        for seed in range(runs(8)):
            choose = random.Random(seed)
            states = [self.data(choose)]
            self.write("x", states[0])
            for number in range(choose.randrange(1, 5 if runs(8) < 50 else 11)):
                arguments = ["-A", "x", "-s", "title", "step %d" % number]
                for count in range(choose.randrange(4)):
                    self.write("f%d" % count, self.data(choose))
                    arguments += ["-i", "f%d" % count, "-f", choose.choice(["", "no-"]) + "compress"]
                if number and choose.random() < 0.3:
                    arguments += ["-o", "x"]  # the history so far, within itself
                self.add(*arguments)
                states.append(self.read("x"))
                self.container("x", strangers=True)
            for state in reversed(states[:-1]):
                self.delete("x")
                self.assertEqual(self.read("x"), state, seed)
            self.delete("x", code=2)


if __name__ == "__main__":
    unittest.main()
