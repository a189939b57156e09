// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/markerremains.h>

#include <QByteArrayMatcher>

#include <algorithm>

namespace lorix::cli {

namespace {

constexpr qint64 pieceBytes = 1024 * 1024;
constexpr qint64 longestNeedle = 16;
// More would tell nothing new and could fill the memory.
constexpr qsizetype mostLines = 1000;

QByteArray bytesOf(const LorixParser& parser, qint64 from, qint64 to)
{
    return parser.getBytes(static_cast<int>(from), static_cast<int>(to - from));
}

// Finds lines that hold any of three pieces of a section marker: one wrong byte
// cannot spoil them all.
class RemainsScan
{
public:
    explicit RemainsScan(const LorixParser& parser) : m_parser(parser) {}

    void scan(qint64 from, qint64 to)
    {
        for (qint64 at = from; at < to && lines.size() < mostLines; at += pieceBytes) {
            // Reaches into the next piece, for what lies across the border.
            const qint64 end = std::min(to, at + pieceBytes + longestNeedle);
            scanPiece(at, bytesOf(m_parser, at, end));
        }
    }

    QList<qint64> lines;

private:
    void scanPiece(qint64 offset, const QByteArray& piece)
    {
        static const QByteArrayMatcher needles[] = {QByteArrayMatcher("$LORIX_SECTION"),
                                                    QByteArrayMatcher("[md5section:"),
                                                    QByteArrayMatcher("[previousmarker:")};
        QList<qint64> hits;
        for (const QByteArrayMatcher& needle : needles)
            for (qsizetype at = needle.indexIn(piece); at >= 0; at = needle.indexIn(piece, at + 1))
                hits.append(offset + at);
        std::sort(hits.begin(), hits.end());
        for (const qint64 hit : hits) {
            if (lines.size() >= mostLines)
                return;
            if (m_last < 0 || (hit > m_last && !sameLine(m_last, hit)))
                lines.append(hit);
            m_last = std::max(m_last, hit);
        }
    }

    bool sameLine(qint64 first, qint64 second) const
    {
        return second - first < pieceBytes && !bytesOf(m_parser, first, second).contains('\n');
    }

    const LorixParser& m_parser;
    qint64 m_last = -1;
};

qint64 firstNonBlank(const LorixParser& parser, qint64 from, qint64 to)
{
    for (qint64 at = from; at < to; at += pieceBytes) {
        const QByteArray piece = bytesOf(parser, at, std::min(to, at + pieceBytes));
        const auto found = std::find_if(piece.cbegin(), piece.cend(),
                                        [](char c) { return !QByteArray(" \t\r\n").contains(c); });
        if (found != piece.cend())
            return at + (found - piece.cbegin());
    }
    return -1;
}

} // namespace

MarkerRemains findMarkerRemains(const LorixParser& parser, qint64 fileBytes)
{
    MarkerRemains remains;
    const auto newest = parser.getSection(0);
    qint64 from = newest ? qint64(newest->position) + newest->taglen : 0;
    RemainsScan scan(parser);
    for (const FileTag& file : parser.getFiles()) {
        const qint64 block = qint64(file.position) + file.taglen;
        if (block < from)
            continue;
        scan.scan(from, std::min(block, fileBytes));
        from = std::max(from, block + std::max(file.blocksize, 0));
    }
    scan.scan(from, fileBytes);
    remains.damagedMarkers = scan.lines;
    if (newest) {
        const qint64 end = qint64(newest->position) - newest->left + newest->size;
        if (end >= newest->position && end < fileBytes)
            remains.trailingAt = firstNonBlank(parser, end, fileBytes);
    }
    return remains;
}

} // namespace lorix::cli
