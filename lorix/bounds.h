// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

namespace lorix {

/// Every bound that keeps hostile input from eating time or memory, with its
/// default and the reason for the number. A container comes from anywhere: what
/// lies beyond a bound is left out, never a crash. Classes that work under a
/// bound take a Bounds through setBounds(); callers change the members they
/// want and leave the others.
struct Bounds
{
    /// Largest file that LorixParser::open() takes, in bytes. The format's
    /// offsets are signed 32-bit numbers.
    qint64 fileBytes = 2147483647;

    /// Longest line, in bytes, that is looked at as a marker. Real markers have
    /// some hundred bytes; this leaves room for a description of book length
    /// while a file without line ends still opens within fixed memory.
    qint64 markerLineBytes = 16 * 1024 * 1024;

    /// Bytes of lines that may be read while the chain of sections is followed,
    /// beyond twice the file's size. A container whose links are right needs
    /// its marker lines only; one whose every link leads into the same long
    /// lines would otherwise cost sections times length, in time and memory.
    qint64 chainBytes = 64 * 1024 * 1024;

    /// Bytes of XML summaries that are read for one container, in all. A real
    /// one has about 1 KiB per file of its step; text and records take some
    /// eight times as much memory.
    qint64 summaryBytes = 256 * 1024 * 1024;

    /// Files that are listed for the steps of one container, in all, those from
    /// its markers and those from its XML summaries each; about 1 KiB of memory
    /// each. Sections may overlap and share files, so that the number can grow
    /// with the square of the container's size.
    int summaryFiles = 1000000;

    /// Nested containers below one another in a tree. Each level holds the
    /// levels below it whole, so that real histories stay far below.
    int treeDepth = 64;

    /// Nodes of one tree; about 2 KiB of memory each.
    int treeNodes = 1000000;

    /// Bytes that one tree may extract to temporary files, in all.
    qint64 treeExtractedBytes = Q_INT64_C(16) * 1024 * 1024 * 1024;

    /// Pairs of steps that a comparison of two trees looks at, which is the
    /// product of their numbers of steps; about 16 bytes of memory each.
    qint64 comparedPairs = 25000000;

    /// Clauses of one query's normal form, which can grow exponentially with
    /// the query; about 200 bytes of memory each.
    int queryClauses = 100000;

    /// Literals of all clauses of one normal form, since a few clauses can be
    /// long; about 100 bytes of memory each. Sixteen pairs joined by "||", just
    /// below queryClauses, make half as many.
    int queryLiterals = 2000000;

    /// Largest argument file that the command line tool reads, in bytes. A
    /// million words have some ten megabytes; reading takes about thirty times
    /// a text's size in memory.
    qint64 argfileBytes = 32 * 1024 * 1024;
};

} // namespace lorix
