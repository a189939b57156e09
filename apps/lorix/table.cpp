// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/table.h>

#include <algorithm>

namespace lorix::cli {

namespace {

bool isWide(char32_t c)
{
    return (c >= 0x1100 && c <= 0x115f) || (c >= 0x2e80 && c <= 0xa4cf) ||
           (c >= 0xac00 && c <= 0xd7a3) || (c >= 0xf900 && c <= 0xfaff) ||
           (c >= 0xfe30 && c <= 0xfe6f) || (c >= 0xff00 && c <= 0xff60) ||
           (c >= 0x1f300 && c <= 0x1faff) || (c >= 0x20000 && c <= 0x3fffd);
}

bool isPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x300; });
}

int width(const QString& text)
{
    if (isPlain(text))
        return static_cast<int>(text.size());
    int result = 0;
    for (const uint c : text.toUcs4()) {
        if (QChar::category(c) == QChar::Mark_NonSpacing)
            continue;
        result += isWide(c) ? 2 : 1;
    }
    return result;
}

} // namespace

void Table::addColumn(const QString& title, Align align)
{
    m_titles.append(title);
    m_aligns.append(align);
}

void Table::addRow(const QStringList& cells)
{
    QStringList row;
    row.reserve(m_titles.size());
    for (const QString& cell : cells)
        row.append(printable(cell));
    while (row.size() < m_titles.size())
        row.append(QString());
    m_rows.append(row);
}

QString Table::text(const Paint& paint) const
{
    QList<int> widths;
    for (const QString& title : m_titles)
        widths.append(width(title));
    for (const QStringList& row : m_rows) {
        for (qsizetype i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], width(row[i]));
    }
    QString result = paint.bold(line(m_titles, widths)) + QLatin1Char('\n');
    for (const QStringList& row : m_rows)
        result += line(row, widths) + QLatin1Char('\n');
    return result;
}

QString Table::line(const QStringList& cells, const QList<int>& widths) const
{
    QString result;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        const QString pad(widths[i] - width(cells[i]), QLatin1Char(' '));
        if (i > 0)
            result += QLatin1String("  ");
        result += m_aligns[i] == Right ? pad + cells[i] : cells[i] + pad;
    }
    while (result.endsWith(QLatin1Char(' ')))
        result.chop(1);
    return result;
}

} // namespace lorix::cli
