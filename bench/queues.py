# SPDX-License-Identifier: BSD-3-Clause
"""Checking and extracting against md5sum and unzip on the same bytes.

One section with 50 files of about 10 MB each, every other one compressed to
half its size. LORIX_BENCH_MB changes the 500 MB of the whole.
"""

import hashlib
import os
import random
import subprocess
import zipfile
import zlib
from pathlib import Path

FILES = 50


def words(size, seed):
    """Text that compresses to about half."""
    dice = random.Random(seed)
    letters = "abcdefghijklmnopqrstuvwxyz"
    stock = ["".join(dice.choices(letters, k=dice.randint(2, 10))) for _ in range(5000)]
    piece = " ".join(dice.choices(stock, k=200_000)).encode()
    lines = []
    done = 0
    while done < size:
        start = dice.randrange(len(piece) // 2)
        lines.append(piece[start:start + 2_000_000] + b"%d\n" % done)
        done += len(lines[-1])
    return b"".join(lines)[:size]


def marker(kind, fields):
    return b"%<--! $LORIX_" + kind + b" " + b"".join(b"[%s:%s]" % pair for pair in fields) + b"-->\n"


def file_block(name, content, flate):
    stored = zlib.compress(content, 6) if flate else content
    digest = hashlib.md5(content).hexdigest().encode()
    stored_digest = hashlib.md5(stored).hexdigest().encode() if flate else b""
    head = marker(b"EMBEDDEDFILE_BEGIN", [
        (b"filetype", b"text"), (b"filename", name), (b"desc", b""), (b"comment", b""),
        (b"compression", b"flate" if flate else b"none"), (b"filesize", b"%d" % len(content)),
        (b"cfilesize", b"%d" % len(stored)), (b"blocksize", b"%d" % (len(stored) + 2)),
        (b"offset", b"1"), (b"md5file", digest), (b"md5cfile", stored_digest)])
    return head + stored + b"\n", stored


def section_marker(left, size, digest):
    return marker(b"SECTION", [
        (b"version", b"1.0"), (b"creator", b"bench"), (b"title", b"bench"), (b"left", b"%d" % left),
        (b"size", b"%d" % size), (b"index", b"0"), (b"md5section", digest), (b"previousmd5", b""),
        (b"previousmarker", b"")])


def make_data(folder, megabytes):
    """Writes the container, the bytes that its check has to hash, a zip file of
    the compressed files, and a container without files."""
    size = megabytes * 1_000_000 // FILES
    hashed = folder / "hashed"
    hashed.mkdir()
    body_path = folder / "body"
    with open(body_path, "wb") as body, \
            zipfile.ZipFile(folder / "files.zip", "w", zipfile.ZIP_DEFLATED) as archive:
        for i in range(FILES):
            flate = i % 2 == 1
            content = words(size * 2 if flate else size, i)
            block, stored = file_block(b"file%02d.txt" % i, content, flate)
            body.write(block)
            (hashed / f"stored{i:02}").write_bytes(stored)
            if flate:
                (hashed / f"content{i:02}").write_bytes(content)
                archive.writestr(f"file{i:02}.txt", content, compresslevel=6)
    body = body_path.read_bytes()
    total = len(body) + len(section_marker(len(body) + 1, 10 ** 8, b"0" * 32))
    total = len(body) + len(section_marker(len(body) + 1, total, b"0" * 32))
    zeroed = body + section_marker(len(body) + 1, total, b"0" * 32)
    digest = hashlib.md5(zeroed).hexdigest().encode()
    header = b"%<--! $LORIX_PDF [version:1.0]\n%PDF-1.4\n%%EOF\n"
    container = folder / "big.lorix"
    container.write_bytes(header + body + section_marker(len(body) + 1, total, digest))
    body_path.rename(hashed / "section")
    (folder / "small.lorix").write_bytes(header)
    return container, hashed


INFLATE = """
import sys, zlib
for path in sys.argv[1:]:
    d = zlib.decompressobj()
    with open(path, "rb") as f:
        while piece := f.read(100000):
            d.decompress(piece)
"""


def run(bench):
    folder = Path(bench.dir) / "queues"
    folder.mkdir()
    container, hashed = make_data(folder, int(os.environ.get("LORIX_BENCH_MB", "500")))
    lorix = bench.program()
    out = folder / "out"
    flate = [str(p) for p in sorted(hashed.glob("stored*"))[1::2]]
    assert subprocess.run([lorix, "validate", "-q", container], check=False,
                          stdout=subprocess.DEVNULL).returncode == 0

    one, two, sums, inflating = bench.best(
        [lorix, "validate", "-q", "--jobs", "1", str(container)],
        [lorix, "validate", "-q", "--jobs", "2", str(container)],
        ["md5sum"] + [str(p) for p in sorted(hashed.iterdir())],
        ["python3", "-c", INFLATE] + flate, repeat=3)
    peer = "md5sum of the same + inflating"
    bench.row("queues", "validate, 1 job", one / (sums + inflating), peer, 1.15)
    bench.row("queues", "validate, 2 jobs", two / (sums + inflating), peer, 0.6)

    clear = f"rm -rf {out}; "
    extract = f"{clear}{lorix} extract -q {container} -d {out} "
    one, two, verified, unzip = bench.best(
        extract + "--jobs 1 'file?[13579].txt'", extract + "--jobs 2 'file?[13579].txt'",
        extract + "--jobs 2 --verify 'file?[13579].txt'",
        f"{clear}unzip -q {folder}/files.zip -d {out}", repeat=3)
    bench.row("queues", "extract 25 flate files, 2 jobs", two / unzip, "unzip of the same", 0.5)
    bench.row("queues", "extract 25 flate files, 1 job", one / unzip, "unzip of the same", None)
    bench.row("queues", "extract --verify, 2 jobs", verified / unzip, "unzip of the same", None)

    base = bench.memory([lorix, "validate", "-q", str(folder / "small.lorix")])
    for what, command in (
            ("validate", f"{lorix} validate -q --jobs 1 {container}"),
            ("extract", extract + "--jobs 1")):
        above = (bench.memory(command) - base) / 1024
        bench.row("queues", f"{what}: MiB above base", above, "1 MiB", 16)

    latency = subprocess.run([bench.program("bench_queues"), str(container)], check=True,
                             capture_output=True, text=True).stdout.split()
    bench.row("queues", "process(), 99th percentile", float(latency[0]),
              "hashing 100000 bytes", None)
    bench.row("queues", "process(), 99th percentile, stored files", float(latency[1]),
              "hashing 100000 bytes", None)
