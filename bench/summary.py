# SPDX-License-Identifier: BSD-3-Clause
"""Reading summaries and telling histories: growth, and Qt's reader of XML."""

import hashlib
import subprocess
import zlib

HEADER = b"%<--! $LORIX_PDF [version:1.0]\n"


def text_of_step(step):
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<loxchange>\n<Workflowstep>\n<Title>bench'
            f"</Title>\n{step}</Workflowstep>\n<MD5Signature></MD5Signature>\n</loxchange>\n")


def short_file(i):
    """A file of a step in some 100 bytes."""
    return (f"<InFile><Filename>input {i}.dat</Filename><UncompressedSize>{i}</UncompressedSize>"
            "<Embedded>0</Embedded></InFile>\n")


def whole_file(name, content):
    """A file of a step with all that a writer says of it."""
    md5 = hashlib.md5(content).hexdigest()
    return (f"<InFile>\n  <Filename>{name}</Filename>\n  <Filepath>/data/bench/</Filepath>\n"
            "  <Filetype>text/plain</Filetype>\n  <Description></Description>\n"
            "  <Comment></Comment>\n  <LastModified>2013-06-21 10:00:00 +0000</LastModified>\n"
            "  <GenerateMD5>1</GenerateMD5>\n  <Embedded>1</Embedded>\n  <Preview>0</Preview>\n"
            "  <PreviewWS>0</PreviewWS>\n  <Thumbnail>0</Thumbnail>\n"
            "  <ThumbnailOnly>0</ThumbnailOnly>\n"
            f"  <UncompressedSize>{len(content)}</UncompressedSize>\n"
            f"  <UncompressedMD5>{md5}</UncompressedMD5>\n"
            "  <CompressedMethod>none</CompressedMethod>\n"
            f"  <CompressedSize>{len(content)}</CompressedSize>\n"
            "  <CompressedMD5></CompressedMD5>\n</InFile>\n")


def embedded(name, content, flate=False):
    stored = zlib.compress(content, 1) if flate else content
    md5 = hashlib.md5(content).hexdigest()
    md5c = hashlib.md5(stored).hexdigest() if flate else ""
    method = "flate" if flate else "none"
    marker = (f"%<--! $LORIX_EMBEDDEDFILE_BEGIN [filetype:text/plain][filename:{name}][desc:]"
              f"[comment:][compression:{method}][filesize:{len(content)}][cfilesize:{len(stored)}]"
              f"[blocksize:{len(stored) + 2}][offset:1][md5file:{md5}][md5cfile:{md5c}]-->")
    return marker.encode() + b"\n" + stored + b"\n"


def write_section(out, blocks, title, previous):
    """One section of these blocks, chained to the marker at `previous`; where its marker begins."""
    body = b"".join(blocks)
    out.write(body)
    start = out.tell()
    back = "" if previous is None else start - previous
    head = f"%<--! $LORIX_SECTION [version:1.0][creator:bench][title:{title}]"
    tail = f"[index:0][md5section:{'0' * 32}][previousmd5:][previousmarker:{back}]-->\n"
    size = len(body)
    for _ in range(3):
        line = f"{head}[left:{len(body) + 1}][size:{size}]{tail}"
        size = len(body) + len(line)
    out.write(line.encode())
    return start


def history(path, sections, files, copies=False):
    """A container whose every section holds so many files and their summary.
    Digests of sections are left out: nobody asks for them here."""
    with open(path, "wb") as out:
        out.write(HEADER)
        previous = None
        for number in range(sections):
            blocks, step = [], []
            for i in range(files):
                content = b"copy" if copies else b"%d of %d" % (i, number)
                name = "copy" if copies else f"file {i}"
                blocks.append(embedded(name, content))
                step.append(whole_file(name, content))
            blocks.append(embedded("ws_summary.xml", text_of_step("".join(step)).encode(), True))
            previous = write_section(out, blocks, str(number), previous)
    return path


def found(command):
    return int(subprocess.run(command, check=True, capture_output=True, text=True).stdout)


def growth(bench, what, command, expected):
    """Notes how much longer the second of two commands takes, which has twice
    as much to do; both must find what is there."""
    for arguments, count in zip(command, expected):
        if found(arguments) != count:
            raise RuntimeError(f"{arguments}: not {count}")
    small, large = bench.best(*command)
    bench.row("summary", what, large / small, "half as much", 2.3, growth=True)


def reading(bench):
    program = bench.program("bench_summary")

    def text(name, step):
        path = bench.dir / name
        path.write_text(text_of_step(step), encoding="utf-8")
        return path

    files = [text(f"files{n}.xml", "".join(map(short_file, range(n)))) for n in (100_000, 200_000)]
    growth(bench, "read, 100 000 files of 100 bytes each, doubled",
           [[program, "read", "3", str(path)] for path in files], [100_000, 200_000])

    empty = [text(f"empty{n}.xml", "".join(f"<e{i}></e{i}>" for i in range(n)) + "<InFile/>")
             for n in (200_000, 400_000)]
    growth(bench, "read, 200 000 different empty elements, doubled",
           [[program, "read", "5", str(path)] for path in empty], [1, 1])

    usual = text("usual.xml", "".join(whole_file(f"file {i}", b"%d" % i) for i in range(15_000)))
    for path, what in ((usual, "written as usual"), (files[0], "100 000 files in brief")):
        mega = path.stat().st_size / 1e6
        mine, theirs = bench.best([program, "read", "5", str(path)],
                                  [program, "walk", "5", str(path)])
        bench.row("summary", f"read a summary of {mega:.0f} MB, {what}", mine / theirs,
                  "QXmlStreamReader walking it", 1.5)


def telling(bench):
    program = bench.program("bench_summary")
    base = history(bench.dir / "base.lorix", 1000, 100)
    sections = history(bench.dir / "sections.lorix", 2000, 100)
    growth(bench, "tell 1 000 sections of 100 files, twice the sections",
           [[program, "create", "1", str(path)] for path in (base, sections)], [100_000, 200_000])
    sections.unlink()
    files = history(bench.dir / "files.lorix", 1000, 200)
    growth(bench, "tell 1 000 sections of 100 files, twice the files",
           [[program, "create", "1", str(path)] for path in (base, files)], [100_000, 200_000])
    files.unlink()
    base.unlink()
    few = history(bench.dir / "few.lorix", 1, 50_000, True)
    many = history(bench.dir / "many.lorix", 1, 100_000, True)
    growth(bench, "tell one section of 50 000 copies of one file, doubled",
           [[program, "create", "1", str(path)] for path in (few, many)], [50_000, 100_000])


def run(bench):
    reading(bench)
    telling(bench)
