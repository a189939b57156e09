# SPDX-License-Identifier: BSD-3-Clause
"""Types into real shells on a terminal of their own and tells what the line became."""

import os
import pty
import select
import time

# A key prints the line between two marks; "" keeps the echo of typing this from
# looking like the answer.
BASH = ["PS1='> '", "bind -x '\"\\C-g\": echo \"BEG\"\"IN[$READLINE_LINE]E\"\"ND\"'",
        "bind 'set bell-style none'", "source <(lorix completion bash)", "echo REA\"\"DY"]
ZSH = ["PS1='> '", "unsetopt beep",
       "show() { print -r -- \"BEG\"\"IN[$BUFFER]E\"\"ND\" }; zle -N show; bindkey '^g' show",
       "autoload -U compinit; compinit -u -D", "source <(lorix completion zsh)", "echo REA\"\"DY"]
SHELLS = {"bash": (["bash", "--norc", "--noprofile", "-i"], BASH), "zsh": (["zsh", "-f", "-i"], ZSH)}
PATIENCE = 60


class Shell:
    """A shell with its completion loaded; to be closed by "with"."""

    def __init__(self, name, folder, path):
        command, lines = SHELLS[name]
        self.child, self.terminal = pty.fork()
        if self.child == 0:
            os.chdir(folder)
            os.environ.update(TERM="dumb", PATH=path, HOME=folder, INPUTRC="/dev/null",
                              LC_ALL="C.UTF-8")
            os.execvp(command[0], command)
        self.seen = b""
        self.type("".join(line + "\n" for line in lines))
        self.wait(b"READY")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self.terminal)
        os.waitpid(self.child, 0)

    def type(self, text):
        os.write(self.terminal, text.encode())

    def wait(self, mark):
        """Everything up to the mark; an error where it does not come."""
        end = time.monotonic() + PATIENCE
        while mark not in self.seen:
            if time.monotonic() > end:
                raise TimeoutError(f"no {mark!r} in {self.seen!r}")
            if select.select([self.terminal], [], [], 1)[0]:
                self.seen += os.read(self.terminal, 65536)
        before, _, self.seen = self.seen.partition(mark)
        return before

    def completed(self, line):
        """What the line is after it was typed with a tab behind it."""
        self.type("\x15" + line + "\t\x07")
        self.wait(b"BEGIN[")
        return self.wait(b"]END").decode()
