// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/text.h>

#include <QStringList>

namespace lorix::cli {

namespace {

bool isHarmless(const QString& text, qsizetype i)
{
    const QChar c = text[i];
    if (c.isHighSurrogate())
        return i + 1 < text.size() && text[i + 1].isLowSurrogate();
    if (c.isLowSurrogate())
        return i > 0 && text[i - 1].isHighSurrogate();
    const ushort u = c.unicode();
    if (u < 0x20 || (u >= 0x7f && u < 0xa0))
        return false;
    // Marks and overrides of direction, line and paragraph separators, byte order mark.
    return !(u == 0x61c || (u >= 0x200e && u <= 0x200f) || (u >= 0x2028 && u <= 0x202e) ||
             (u >= 0x2066 && u <= 0x2069) || u == 0xfeff);
}

QString escaped(ushort u)
{
    if (u == '\n')
        return QStringLiteral("\\n");
    if (u == '\r')
        return QStringLiteral("\\r");
    if (u == '\t')
        return QStringLiteral("\\t");
    if (u < 0x100)
        return QStringLiteral("\\x%1").arg(u, 2, 16, QLatin1Char('0'));
    return QStringLiteral("\\u{%1}").arg(u, 4, 16, QLatin1Char('0'));
}

} // namespace

QString printable(const QString& text)
{
    qsizetype i = 0;
    while (i < text.size() && isHarmless(text, i))
        ++i;
    if (i == text.size())
        return text;
    QString result = text.left(i);
    for (; i < text.size(); ++i) {
        if (isHarmless(text, i))
            result += text[i];
        else
            result += escaped(text[i].unicode());
    }
    return result;
}

QString decodedField(const QString& text)
{
    if (!text.contains(QLatin1Char('\\')))
        return text;
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        if (text[i] != QLatin1Char('\\')) {
            result += text[i];
        } else if (next == QLatin1Char('n')) {
            result += QLatin1Char('\n');
            ++i;
        } else if (next == QLatin1Char('\\') || next == QLatin1Char(']')) {
            result += next;
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

QString decodedEntities(const QString& text)
{
    if (!text.contains(QLatin1Char('&')))
        return text;
    QString result = text;
    result.replace(QLatin1String("&lt;"), QLatin1String("<"));
    result.replace(QLatin1String("&gt;"), QLatin1String(">"));
    result.replace(QLatin1String("&quot;"), QLatin1String("\""));
    result.replace(QLatin1String("&apos;"), QLatin1String("'"));
    // Last, or "&amp;lt;" would be undone twice.
    result.replace(QLatin1String("&amp;"), QLatin1String("&"));
    return result;
}

QString humanSize(qint64 bytes)
{
    if (bytes < 0)
        return QStringLiteral("?");
    if (bytes < 1024)
        return QStringLiteral("%1 B").arg(bytes);
    const QStringList units = {QStringLiteral("KiB"), QStringLiteral("MiB"), QStringLiteral("GiB"),
                               QStringLiteral("TiB")};
    double value = static_cast<double>(bytes) / 1024;
    qsizetype unit = 0;
    // What would be rounded to 1024.0 reads better as 1.0 of the next unit.
    for (; value >= 1023.95 && unit + 1 < units.size(); ++unit)
        value /= 1024;
    return QString::number(value, 'f', 1) + QLatin1Char(' ') + units[unit];
}

QString counted(qint64 count, const QString& one, const QString& many)
{
    return QString::number(count) + QLatin1Char(' ') + (count == 1 ? one : many);
}

QString quoted(const QString& name)
{
    return QLatin1Char('"') + printable(name) + QLatin1Char('"');
}

QString Paint::with(const char* code, const QString& text) const
{
    if (!m_colored || text.isEmpty())
        return text;
    return QStringLiteral("\x1b[") + QLatin1String(code) + QLatin1Char('m') + text +
           QStringLiteral("\x1b[0m");
}

} // namespace lorix::cli
