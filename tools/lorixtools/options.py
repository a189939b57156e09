# SPDX-License-Identifier: BSD-3-Clause
"""The options of the add tool and what they describe: one step and its files."""

import os
from collections import namedtuple

from . import argfile, report
from .report import ToolError, reason

INPUT, OUTPUT = "InFile", "OutFile"

# long name, short name, what its parameters are, what it says
OPTIONS = (
    ("--append-to-lorixfile", "-A", "FILE", "add the step to FILE, which is made if it is missing"),
    ("", "-O", "FILE", "write the result to FILE; may be given several times"),
    ("", "-I", "FILE", "the document to which the step is added"),
    ("", "-J", "FILE", "the same, but FILE may be missing"),
    ("--infile", "-i", "FILE", "a file that the step used; options for it follow"),
    ("--outfile", "-o", "FILE", "a file that the step made; options for it follow"),
    ("--file-attr", "-a", "NAME TEXT", "of the last file: filetype, description, comment, md5file"),
    ("--file-flag", "-f", "FLAG", "of the last file: embed, compress, optional, automd5, preview,"
     " previewws, thumbnail, thumbnailonly; no-FLAG clears it"),
    ("--file-user", "-u", "KEY VALUE", "a user attribute of the last file"),
    ("--file-unit", "", "KEY UNIT", "the unit of that user attribute"),
    ("--step", "-s", "NAME TEXT", "of the step: title, description, comment, tool, toolversion,"
     " toolpath, host, user, command"),
    ("--step-user", "-U", "KEY VALUE", "a user attribute of the step"),
    ("--step-unit", "", "KEY UNIT", "the unit of that user attribute"),
    ("--doc", "-d", "NAME TEXT", "of the document: title, author, subject, keywords, creator,"
     " producer"),
    ("--firstpage", "-1", "TEXT", "the first page of a document made from nothing"),
    ("--readme", "-r", "TEXT", "the pages after it"),
    ("", "-c", "FILE", "read further options from an argument file"),
    ("--stdin", "", "", "read further options, as in an argument file, from standard input"),
    ("--sync-cwd", "", "", "relative paths in an argument file count from its own directory"),
    ("--pretend", "-p", "", "check everything and say what would be done, but write nothing"),
    ("--verbose", "-v", "", "say more"),
    ("--quiet", "-q", "", "say nothing but warnings and errors"),
    ("--debug", "", "", "on a failure show where in the program it arose"),
    ("--version", "-V", "", "print the version and end"),
    ("--help", "-h", "", "print this text and end"),
)

FILE_FLAGS = ("optional", "compress", "embed", "automd5", "previewws", "preview",
              "thumbnail", "thumbnailonly")
FILE_ATTRIBUTES = ("filetype", "description", "comment", "md5file")
STEP_ATTRIBUTES = {name: name for name in
                   ("comment", "description", "title", "tool", "toolpath", "host", "command",
                    "user")}
# A tool and its version are one text in a step's record.
STEP_ATTRIBUTES["toolversion"] = "tool"
DOC_ATTRIBUTES = ("title", "author", "subject", "keywords", "creator", "producer")

_COUNTS = {name: len(parameters.split()) for row in OPTIONS
           for name in row[:2] if name for parameters in [row[2]]}
_LONG = {short: long for long, short, _, _ in OPTIONS if long and short}

# Argument files that name one another.
DEEPEST_ARGFILE = 16

# `given` is the text that the user wrote, `place` the directory it counts from.
Path = namedtuple("Path", "given place")


class FileEntry:
    """One file of the step."""

    def __init__(self, path, purpose):
        self.path = path
        self.purpose = purpose
        self.flags = dict.fromkeys(FILE_FLAGS, False)
        self.flags["embed"] = self.flags["automd5"] = True
        self.attributes = dict.fromkeys(FILE_ATTRIBUTES, "")
        self.user = []  # (key, value), in order
        self.units = {}

    @property
    def filename(self):
        return self.path.given.rpartition("/")[2]

    @property
    def filepath(self):
        """The directory as it was given, with a slash at its end."""
        folder, slash, _ = self.path.given.rpartition("/")
        return folder + "/" if slash else "./"


class Invocation:
    """Everything that one call of the add tool asks for."""

    def __init__(self):
        self.outputs = []
        self.root = None
        self.root_optional = False
        self.files = []
        self.step = dict.fromkeys(STEP_ATTRIBUTES.values(), "")
        self.doc = {}
        self.user = []
        self.units = {}
        self.firstpage = ""
        self.readme = ""
        self.verbosity = report.NORMAL
        self.pretend = self.debug = self.help = self.version = False

    def location(self, path):
        """Where `path` is, seen from the current directory."""
        return os.path.join(path.place, path.given) if path.place else path.given


def help_text():
    lines = ["usage: lorixadd.py [OPTION ...]", "",
             "Adds a step and copies of its files to the history that a document carries.", ""]
    for long, short, parameters, text in OPTIONS:
        names = ", ".join(name for name in (short, long) if name)
        lines.append("  " + (names + " " + parameters).rstrip())
        lines.append("        " + text)
    lines += ["", "The exit code is 0 when everything was done, 2 when the call or an input",
              "cannot be used, 3 when the work failed; what was there before is then unchanged."]
    return "\n".join(lines)


class _Source:
    """One list of arguments: the command line, standard input or an argument file."""

    def __init__(self, name, arguments, folder=None, depth=0):
        self.name = name
        self.arguments = arguments
        self.folder = folder
        self.depth = depth


class Reader:
    """Reads command lines and argument files into an Invocation."""

    def __init__(self, warn, stdin, environment):
        self._warn = warn
        self._stdin = stdin
        self._environment = environment
        self._invocation = Invocation()
        self._synced = False

    def read(self, arguments):
        source = _Source("command line", arguments)
        # Where paths count from must be known before the first of them is read.
        flat = list(self._flatten(source))
        self._synced = any(option == "--sync-cwd" for _, option, _ in flat)
        for source, option, parameters in flat:
            self._apply(source, option, parameters)
        return self._invocation

    def _flatten(self, source):
        """(source, option, parameters) of `source` and of what it takes in."""
        index = 0
        arguments = source.arguments
        while index < len(arguments):
            option = arguments[index]
            if option not in _COUNTS:
                raise ToolError("%s: unknown option found: %s" % (source.name, option))
            count = _COUNTS[option]
            parameters = arguments[index + 1:index + 1 + count]
            if len(parameters) < count:
                raise ToolError("%s: not enough parameters for option: %s" % (source.name, option))
            index += 1 + count
            if option == "-c":
                yield from self._flatten(self._argfile(source, parameters[0]))
            elif option == "--stdin":
                if self._stdin is None:
                    raise ToolError("%s: standard input was already read" % source.name)
                data, self._stdin = self._stdin(), None
                yield from self._flatten(self._parsed("standard input", data, None,
                                                      source.depth + 1))
            else:
                yield source, option, parameters

    def _argfile(self, source, path):
        if source.depth >= DEEPEST_ARGFILE:
            raise ToolError("%s: %s: argument files name one another more than %d deep"
                            % (source.name, path, DEEPEST_ARGFILE))
        # An argument file finds those that it names from where it stands itself
        # only with --sync-cwd, which may stand anywhere; so both are tried.
        candidates = [path]
        if source.folder:
            candidates.append(os.path.join(source.folder, path))
        for candidate in candidates:
            try:
                with open(candidate, "rb") as file:
                    data = file.read()
                return self._parsed(candidate, data, os.path.dirname(candidate),
                                    source.depth + 1)
            except FileNotFoundError:
                continue
            except OSError as error:
                raise ToolError("%s: %s" % (candidate, reason(error)))
        raise ToolError("%s: no such argument file" % path)

    def _parsed(self, name, data, folder, depth):
        text = argfile.decode(data, name)
        return _Source(name, argfile.split(text, self._environment, name), folder, depth)

    def _path(self, source, text):
        if not text:
            raise ToolError("%s: an empty file name" % source.name)
        if "\0" in text:
            raise ToolError("%s: a file name with a zero byte" % source.name)
        return Path(text, source.folder if self._synced and source.folder else "")

    def _apply(self, source, option, parameters):
        result = self._invocation
        name = _LONG.get(option, option)
        if name in ("--append-to-lorixfile", "-O", "-I", "-J"):
            path = self._path(source, parameters[0])
            if name in ("--append-to-lorixfile", "-O"):
                result.outputs.append(path)
            if name != "-O":
                result.root = path
                result.root_optional = name != "-I"
        elif name in ("--infile", "--outfile"):
            purpose = INPUT if name == "--infile" else OUTPUT
            result.files.append(FileEntry(self._path(source, parameters[0]), purpose))
        elif name in ("--file-attr", "--file-flag", "--file-user", "--file-unit"):
            if result.files:
                self._apply_to_file(source, name, option, parameters, result.files[-1])
            else:
                self._warn("%s: %s stands before the first file and is ignored"
                           % (source.name, option))
        elif name == "--step":
            self._known(source, option, parameters[0], STEP_ATTRIBUTES)
            result.step[STEP_ATTRIBUTES[parameters[0]]] = parameters[1]
        elif name == "--doc":
            self._known(source, option, parameters[0], DOC_ATTRIBUTES)
            result.doc[parameters[0]] = parameters[1]
        elif name == "--step-user":
            result.user.append(tuple(parameters))
        elif name == "--step-unit":
            result.units[parameters[0]] = parameters[1]
        elif name == "--firstpage":
            result.firstpage = parameters[0]
        elif name == "--readme":
            result.readme = parameters[0]
        else:
            self._apply_switch(name)

    def _apply_switch(self, name):
        result = self._invocation
        if name == "--verbose":
            result.verbosity = report.VERBOSE
        elif name == "--quiet":
            result.verbosity = report.QUIET
        elif name in ("--pretend", "--debug", "--help", "--version"):
            setattr(result, name[2:], True)

    def _apply_to_file(self, source, name, option, parameters, entry):
        if name == "--file-flag":
            flag = parameters[0]
            value = not flag.startswith("no-")
            self._known(source, option, flag if value else flag[3:], FILE_FLAGS)
            entry.flags[flag if value else flag[3:]] = value
        elif name == "--file-attr":
            self._known(source, option, parameters[0], FILE_ATTRIBUTES)
            entry.attributes[parameters[0]] = parameters[1]
        elif name == "--file-user":
            entry.user.append(tuple(parameters))
        else:
            entry.units[parameters[0]] = parameters[1]

    @staticmethod
    def _known(source, option, name, names):
        if name not in names:
            raise ToolError("%s: first parameter (%s) of option %s is invalid"
                            % (source.name, name, option))
