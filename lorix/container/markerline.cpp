// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/markerline.h>

#include <array>
#include <utility>

namespace lorix {

namespace {

const QString sectionTemplate = QStringLiteral(
    R"(^%<--! \$LORIX_SECTION \[version:%1\]\[creator:%1\]\[title:%1\]\[left:%2\]\[size:%2\])"
    R"(\[index:%2\]\[md5section:%3\]\[previousmd5:%3\]\[previousmarker:%2\]-->)");
const QString fileTemplate = QStringLiteral(
    R"(^%<--! \$LORIX_EMBEDDEDFILE_BEGIN \[filetype:%1\]\[filename:%1\]\[desc:%1\]\[comment:%1\])"
    R"(\[compression:%1\]\[filesize:%2\]\[cfilesize:%2\]\[blocksize:%2\]\[offset:%2\])"
    R"(\[md5file:%3\]\[md5cfile:%3\]-->)");

enum class Kind { Text, Number, Digest };
using Field = std::pair<const char*, Kind>;

constexpr std::array<Field, 9> sectionFields = {{{"[version:", Kind::Text},
                                                 {"[creator:", Kind::Text},
                                                 {"[title:", Kind::Text},
                                                 {"[left:", Kind::Number},
                                                 {"[size:", Kind::Number},
                                                 {"[index:", Kind::Number},
                                                 {"[md5section:", Kind::Digest},
                                                 {"[previousmd5:", Kind::Digest},
                                                 {"[previousmarker:", Kind::Number}}};
constexpr std::array<Field, 11> fileFields = {{{"[filetype:", Kind::Text},
                                               {"[filename:", Kind::Text},
                                               {"[desc:", Kind::Text},
                                               {"[comment:", Kind::Text},
                                               {"[compression:", Kind::Text},
                                               {"[filesize:", Kind::Number},
                                               {"[cfilesize:", Kind::Number},
                                               {"[blocksize:", Kind::Number},
                                               {"[offset:", Kind::Number},
                                               {"[md5file:", Kind::Digest},
                                               {"[md5cfile:", Kind::Digest}}};

constexpr int digestLength = 32;

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isDigestDigit(QChar c)
{
    return isDigit(c) || (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
}

qsizetype endOfText(const QString& line, qsizetype pos)
{
    for (; pos < line.size() && line[pos] != QLatin1Char(']'); ++pos) {
        if (line[pos] != QLatin1Char('\\'))
            continue;
        ++pos;
        if (pos == line.size() || (line[pos] != QLatin1Char('\\') &&
                                   line[pos] != QLatin1Char(']') && line[pos] != QLatin1Char('n')))
            return -1;
    }
    return pos;
}

qsizetype endOfNumber(const QString& line, qsizetype pos)
{
    while (pos < line.size() && isDigit(line[pos]))
        ++pos;
    return pos;
}

qsizetype endOfDigest(const QString& line, qsizetype pos)
{
    const qsizetype start = pos;
    while (pos < line.size() && pos - start < digestLength && isDigestDigit(line[pos]))
        ++pos;
    return pos == start || pos - start == digestLength ? pos : -1;
}

qsizetype endOfValue(const QString& line, qsizetype pos, Kind kind)
{
    switch (kind) {
    case Kind::Text:
        return endOfText(line, pos);
    case Kind::Number:
        return endOfNumber(line, pos);
    case Kind::Digest:
        return endOfDigest(line, pos);
    }
    return -1;
}

bool skip(const QString& line, qsizetype& pos, const char* text)
{
    const QLatin1String expected(text);
    if (QStringView(line).mid(pos, expected.size()) != expected)
        return false;
    pos += expected.size();
    return true;
}

template <typename Fields>
MarkerMatch matchMarker(const QString& line, const char* prefix, const Fields& fields)
{
    MarkerMatch match;
    qsizetype pos = 0;
    if (!skip(line, pos, prefix) || !skip(line, pos, " "))
        return {};
    match.fields.reserve(static_cast<int>(fields.size()));
    for (const Field& field : fields) {
        if (!skip(line, pos, field.first))
            return {};
        const qsizetype end = endOfValue(line, pos, field.second);
        if (end < 0)
            return {};
        match.fields.append(line.mid(pos, end - pos));
        pos = end;
        if (!skip(line, pos, "]"))
            return {};
    }
    if (!skip(line, pos, "-->"))
        return {};
    match.length = static_cast<int>(pos);
    return match;
}

} // namespace

const QString strRegex = QStringLiteral(R"(((?:[^\]\\]|(?:\\\\)|(?:\\\])|(?:\\n))*))");
const QString intRegex = QStringLiteral("([0-9]*)");
const QString md5Regex = QStringLiteral("((?:)|(?:[a-f0-9]{32}))");
const QString sectionRegexStr = sectionTemplate.arg(strRegex, intRegex, md5Regex);
const QString fileRegexStr = fileTemplate.arg(strRegex, intRegex, md5Regex);

MarkerMatch matchSectionMarker(const QString& line)
{
    return matchMarker(line, sectionPrefix, sectionFields);
}

MarkerMatch matchFileMarker(const QString& line)
{
    return matchMarker(line, filePrefix, fileFields);
}

int makeInt(const QString& text)
{
    return text.isEmpty() ? -1 : text.toInt();
}

QByteArray zeroedMarkerLine(QByteArray line, const QString& md5section)
{
    const QByteArray field("[md5section:");
    line.replace(field + md5section.toUtf8() + ']', field + QByteArray(digestLength, '0') + ']');
    return line.mid(1);
}

} // namespace lorix
