// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/sumlist.h>

#include <QFile>

namespace lorix::cli {

namespace {

constexpr qsizetype digestLength = 32;

bool isDigest(const QByteArray& text)
{
    if (text.size() != digestLength)
        return false;
    for (const char c : text)
        if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')))
            return false;
    return true;
}

QByteArray unescaped(const QByteArray& name)
{
    QByteArray result;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const char next = i + 1 < name.size() ? name.at(i + 1) : '\0';
        if (name.at(i) != '\\' || (next != '\\' && next != 'n' && next != 'r')) {
            result += name.at(i);
            continue;
        }
        result += next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
        ++i;
    }
    return result;
}

bool readEntry(QByteArray line, SumEntry& entry)
{
    const bool escaped = line.startsWith('\\');
    if (escaped)
        line.remove(0, 1);
    QByteArray digest = line.left(digestLength);
    QByteArray name;
    const qsizetype closing = line.lastIndexOf(") = ");
    if (line.startsWith("MD5 (") && closing >= 5) {
        name = line.mid(5, closing - 5);
        digest = line.mid(closing + 4);
    } else if (line.size() > digestLength + 2 && line.at(digestLength) == ' ' &&
               (line.at(digestLength + 1) == ' ' || line.at(digestLength + 1) == '*')) {
        name = line.mid(digestLength + 2);
    }
    if (name.isEmpty() || !isDigest(digest))
        return false;
    entry.md5 = QString::fromLatin1(digest.toLower());
    entry.path = QFile::decodeName(escaped ? unescaped(name) : name);
    return true;
}

} // namespace

SumList SumList::parse(const QByteArray& bytes)
{
    SumList list;
    int number = 0;
    for (QByteArray line : bytes.split('\n')) {
        ++number;
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        SumEntry entry;
        entry.line = number;
        if (readEntry(line, entry))
            list.entries.append(entry);
        else
            list.badLines.append(number);
    }
    return list;
}

} // namespace lorix::cli
