# SPDX-License-Identifier: BSD-3-Clause
"""Writing a file so that at every moment the old one or the new one is there, whole.

The new content grows in a file beside the target (".NAME.lorix-part"), which is
renamed over the target when it is complete and on the disk. An exclusive lock
on that same file keeps a second writer away; the system drops it when the
process ends, however that happens, so that neither a lock nor a part of a file
can ever stand in the way of the next run.
"""

import contextlib
import errno
import os
import signal
import stat

from .report import BAD_CALL, FAILED, ToolError, reason

try:
    import fcntl
except ImportError:  # Windows
    fcntl = None


@contextlib.contextmanager
def held_signals():
    """Keeps back the signals that ask for an end; what came is met when the block is left."""
    if not hasattr(signal, "pthread_sigmask"):
        yield
        return
    before = signal.pthread_sigmask(signal.SIG_BLOCK,
                                    {signal.SIGINT, signal.SIGTERM, signal.SIGHUP})
    try:
        yield
    finally:
        signal.pthread_sigmask(signal.SIG_SETMASK, before)


def part_name(target):
    """The file that grows beside `target`."""
    folder, name = os.path.split(target)
    part = ".%s.lorix-part" % name
    if len(os.fsencode(part)) > 255:
        import hashlib
        part = ".%s.lorix-part" % hashlib.md5(os.fsencode(name)).hexdigest()
    return os.path.join(folder, part)


class Replacement:
    """The coming content of one file.

    Opening it takes the lock, so that what is read of the target from then on
    is what will be replaced. It is made by open(); without commit() the target
    stays as it is, and the part is removed when the stack is left.
    """

    @classmethod
    def open(cls, stack, path):
        """The replacement of `path`, to be left with the contextlib.ExitStack."""
        # Asked to end between making the part and entering it, nobody would remove it.
        with held_signals():
            return stack.enter_context(cls(path))

    def __init__(self, path):
        self.path = path
        # A link stays a link; the file that it leads to is replaced.
        self.target = os.path.realpath(path)
        self._part = part_name(self.target)
        self.file = None
        self._done = False
        try:
            existing = os.stat(self.target)
            if not stat.S_ISREG(existing.st_mode):
                raise ToolError("%s: is not a regular file" % path)
            self._mode = stat.S_IMODE(existing.st_mode)
            self._owner = (existing.st_uid, existing.st_gid)
        except FileNotFoundError:
            self._mode = None
            self._owner = None
        except OSError as error:
            raise ToolError("%s: %s" % (path, reason(error)))
        self._lock()

    def _lock(self):
        flags = os.O_RDWR | os.O_CREAT | getattr(os, "O_NOFOLLOW", 0) \
            | getattr(os, "O_CLOEXEC", 0) | getattr(os, "O_BINARY", 0)
        if fcntl is None:
            flags |= os.O_EXCL
        while True:
            try:
                handle = os.open(self._part, flags, 0o600)
            except FileExistsError:
                raise ToolError("%s: another process is writing it (remove %s if none is)"
                                % (self.path, self._part), FAILED)
            except OSError as error:
                raise ToolError("%s: cannot write beside it: %s" % (self.path, reason(error)),
                                FAILED)
            if fcntl is not None and not self._own(handle):
                continue
            break
        self.file = os.fdopen(handle, "r+b", buffering=1 << 18)
        self.file.truncate(0)

    def _own(self, handle):
        """Whether the lock on the part could be had and the part is still in its place."""
        try:
            fcntl.flock(handle, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except OSError as error:
            os.close(handle)
            if error.errno in (errno.EWOULDBLOCK, errno.EACCES):
                raise ToolError("%s: another process is writing it; nothing was changed"
                                % self.path, FAILED)
            raise ToolError("%s: cannot lock: %s" % (self._part, reason(error)), FAILED)
        # The process that held the lock before may have renamed or removed it.
        mine = os.fstat(handle)
        try:
            there = os.lstat(self._part)
        except FileNotFoundError:
            there = None
        if there and (there.st_dev, there.st_ino) == (mine.st_dev, mine.st_ino) \
                and stat.S_ISREG(mine.st_mode) and mine.st_nlink == 1:
            return True
        os.close(handle)
        if there and (not stat.S_ISREG(there.st_mode) or there.st_nlink != 1):
            raise ToolError("%s: is in the way; remove it" % self._part, BAD_CALL)
        return False

    def open_old(self):
        """The file as it is now, opened for reading, or None where there is none."""
        try:
            return open(self.target, "rb")
        except FileNotFoundError:
            return None
        except OSError as error:
            raise ToolError("%s: %s" % (self.path, reason(error)))

    def finish(self):
        """Brings the complete content to the disk, so that commit() is a rename alone."""
        self.file.flush()
        if self._owner is not None and hasattr(os, "fchown"):
            try:
                os.fchown(self.file.fileno(), *self._owner)
            except OSError:
                pass  # only the system's administrator may give files away
        if hasattr(os, "fchmod"):
            if self._mode is None:
                mask = os.umask(0)
                os.umask(mask)
                self._mode = 0o666 & ~mask
            os.fchmod(self.file.fileno(), self._mode)
        os.fsync(self.file.fileno())

    def commit(self):
        """Puts the new content in the old one's place."""
        if fcntl is None:
            self.file.close()
        # Once renamed, a part of that name belongs to somebody else.
        self._done = True
        try:
            os.replace(self._part, self.target)
        except OSError:
            self._done = False
            raise
        self.file.close()
        sync_folder(os.path.dirname(self.target))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        with held_signals():
            if not self._done:
                # Removed before it is unlocked, so that nobody else's part is hit.
                try:
                    os.unlink(self._part)
                except OSError:
                    pass
            try:
                self.file.close()
            except OSError:
                pass


def sync_folder(folder):
    """Brings a rename in `folder` to the disk, where the system offers that."""
    try:
        handle = os.open(folder or ".", os.O_RDONLY)
    except OSError:
        return
    try:
        os.fsync(handle)
    except OSError:
        pass
    finally:
        os.close(handle)


def copy(source, start, end, file):
    """Appends the bytes [start, end) of `source` to `file`; by the kernel alone where it can.
    Returns how many there were."""
    file.flush()
    done = start
    if hasattr(os, "copy_file_range"):
        position = file.seek(0, os.SEEK_END)
        try:
            while done < end:
                count = os.copy_file_range(source.fileno(), file.fileno(),
                                           min(end - done, 1 << 26), done, position)
                if count == 0:
                    break
                done += count
                position += count
        except OSError as error:
            if error.errno in (errno.ENOSPC, errno.EDQUOT, errno.EIO, errno.EFBIG):
                raise
    file.seek(0, os.SEEK_END)
    source.seek(done)
    while done < end:
        data = source.read(min(1 << 20, end - done))
        if not data:
            break
        file.write(data)
        done += len(data)
    return done - start
