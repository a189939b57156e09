// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/text.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace lorix::cli {

/// Rows of text in columns as wide as their widest cell. Cells are made
/// printable; widths count characters, wide ones (CJK) twice.
class Table
{
public:
    enum Align { Left, Right };

    void addColumn(const QString& title, Align align = Left);
    /// One cell per column; missing ones are empty.
    void addRow(const QStringList& cells);
    bool isEmpty() const { return m_rows.isEmpty(); }
    /// The whole table with a title line; each line ends in a line feed.
    QString text(const Paint& paint) const;

private:
    QString line(const QStringList& cells, const QList<int>& widths) const;

    QStringList m_titles;
    QList<Align> m_aligns;
    QList<QStringList> m_rows;
};

} // namespace lorix::cli
