# SPDX-License-Identifier: BSD-3-Clause
"""Opening, listing and extracting, against tools that do the like."""

import hashlib
import random
import shlex
import subprocess
import zlib

HEADER = b"%<--! $LORIX_PDF [version:1.0]\n"
MIB = 1024 * 1024


def file_marker(name, content, flate):
    stored = zlib.compress(content, 6) if flate else content
    md5 = hashlib.md5(content).hexdigest()
    md5c = hashlib.md5(stored).hexdigest() if flate else ""
    method = "flate" if flate else "none"
    # The line end behind the marker and the one behind the bytes belong to the block.
    marker = (f"%<--! $LORIX_EMBEDDEDFILE_BEGIN [filetype:text/plain][filename:{name}][desc:]"
              f"[comment:][compression:{method}][filesize:{len(content)}][cfilesize:{len(stored)}]"
              f"[blocksize:{len(stored) + 2}][offset:1][md5file:{md5}][md5cfile:{md5c}]-->")
    return marker.encode() + b"\n" + stored + b"\n"


def section(files, start):
    """One section that begins at offset `start`, its marker at its end."""
    left = len(files) + 1
    head = "%<--! $LORIX_SECTION [version:1.0][creator:bench][title:bench]"
    rest = "[index:0][md5section:{}][previousmd5:][previousmarker:]-->\n"

    def line(md5, size):
        return (head + f"[left:{left}][size:{size}]" + rest.format(md5)).encode()

    size = len(files)
    while size != len(files) + len(line("0" * 32, size)):
        size = len(files) + len(line("0" * 32, size))
    digest = hashlib.md5(files + line("0" * 32, size)).hexdigest()
    return files + line(digest, size)


def write_container(path, document, files):
    with open(path, "wb") as out:
        out.write(HEADER)
        for piece in document:
            out.write(piece)
        out.write(section(files, out.tell()))


def text_lines(total, seed):
    """About `total` bytes of lines of a few hundred printable bytes, in pieces."""
    rng = random.Random(seed)
    piece = b"".join(
        bytes(rng.choices(range(33, 127), k=rng.randrange(150, 450))) + b"\n" for _ in range(3500))
    for _ in range(total // len(piece) + 1):
        yield piece


def opening(bench):
    path = bench.dir / "gibibyte.lorix"
    write_container(path, text_lines(1024 * MIB, 1), file_marker("a.txt", b"content\n" * 100, True))
    tiny = bench.dir / "tiny.lorix"
    write_container(tiny, [], file_marker("a.txt", b"content\n" * 100, True))
    ours = [bench.program(), "sections", str(path)]
    grep = ["grep", "-a", "-c", r"^%<--! \$LORIX_EMBEDDEDFILE_BEGIN", str(path)]
    mine, theirs = bench.best(ours, grep)
    bench.row("container", "open, 1 GiB of lines of a few hundred bytes", mine / theirs, "grep -a -c",
              1.5)
    half = bench.dir / "half.lorix"
    write_container(half, text_lines(512 * MIB, 1), file_marker("a.txt", b"content\n" * 100, True))
    bench.growth("container", "open, 512 MiB doubled", [bench.program(), "sections", str(half)], ours)
    half.unlink()
    extra = bench.memory(ours) - bench.memory([bench.program(), "sections", str(tiny)])
    bench.row("container", "open, memory above that for a tiny document (MiB)", extra / 1024, "1 MiB",
              4)
    path.unlink()


def listing(bench):
    folder = bench.dir / "members"
    folder.mkdir()
    blocks = []
    for i in range(100_000):
        content = b"member %d\n" % i
        (folder / f"file{i:06}.txt").write_bytes(content)
        blocks.append(file_marker(f"file{i:06}.txt", content, False))
    path = bench.dir / "members.lorix"
    write_container(path, [], b"".join(blocks))
    archive = bench.dir / "members.zip"
    subprocess.run(f"cd {shlex.quote(str(folder))} && find . -name 'file*' | zip -q -0 -@ "
                   f"{shlex.quote(str(archive))}", shell=True, check=True)
    mine, theirs = bench.best([bench.program(), "files", str(path)], ["unzip", "-l", str(archive)])
    bench.row("container", "list 100 000 embedded files", mine / theirs, "unzip -l", 3)
    doubled = bench.dir / "doubled.lorix"
    write_container(doubled, [], b"".join(blocks + blocks))
    for command in (["files"], ["info"], ["validate", "-q", "--jobs", "1"]):
        bench.growth("container", f"{command[0]}, 100 000 embedded files doubled",
                     [bench.program(), *command, str(path)],
                     [bench.program(), *command, str(doubled)], repeat=3)
    doubled.unlink()
    subprocess.run(["rm", "-r", str(folder)], check=True)


def numbers(total):
    """`total` bytes of a table of numbers, which deflates as measured data do."""
    rng = random.Random(7)
    lines = "".join(f"{rng.random():.6f} {rng.randrange(10 ** 6)}\n" for _ in range(200_000))
    piece = lines.encode()
    return (piece * (total // len(piece) + 1))[:total]


def extracting(bench):
    content = numbers(230 * 1000 * 1000)
    data = bench.dir / "table.txt"
    data.write_bytes(content)
    path = bench.dir / "table.lorix"
    write_container(path, [], file_marker("table.txt", content, True))
    archive = bench.dir / "table.zip"
    subprocess.run(["zip", "-q", "-j", str(archive), str(data)], check=True)
    pdf = bench.dir / "table.pdf"
    subprocess.run(["qpdf", "--empty", "--add-attachment", str(data), "--key=table", "--",
                    "--compress-streams=y", str(pdf)], check=True)
    # Everybody writes a new file.
    out, peer_out = bench.dir / "out", bench.dir / "peer.out"
    peers = {
        "unzip -p > FILE": f"rm -f {peer_out}; unzip -p {archive} > {peer_out}",
        "qpdf --show-attachment > FILE":
            f"rm -f {peer_out}; qpdf {pdf} --show-attachment=table > {peer_out}",
        "pdfdetach -o FILE": f"rm -f {peer_out}; pdfdetach -save 1 -o {peer_out} {pdf}",
    }
    ours = f"rm -rf {out}; {bench.program()} extract -q {path} -d {out}"
    times = bench.best(ours, *peers.values(), repeat=3)
    for written in (out / "table.txt", peer_out):
        subprocess.run(["cmp", str(data), str(written)], check=True)
    fastest = min(range(1, len(times)), key=lambda i: times[i])
    for i, peer in enumerate(peers, 1):
        bench.row("container", "extract a flate file of 230 MB", times[0] / times[i], peer,
                  1.1 if i == fastest else None)
    for leftover in (data, path, archive, pdf, peer_out):
        leftover.unlink()


def extracting_many(bench):
    for count in (5_000, 10_000):
        blocks = [file_marker(f"file{i:06}.txt", b"number %d\n" % i * 200, i % 2 == 1)
                  for i in range(count)]
        write_container(bench.dir / f"{count}.lorix", [], b"".join(blocks))
    small, large = (f"rm -rf {bench.dir}/out; {bench.program()} extract -q --jobs 1 "
                    f"{bench.dir}/{count}.lorix -d {bench.dir}/out" for count in (5_000, 10_000))
    bench.growth("container", "extract 5 000 embedded files, doubled", small, large, repeat=3)


def run(bench):
    opening(bench)
    listing(bench)
    extracting(bench)
    extracting_many(bench)
