// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/table.h>

#include <QTest>

using namespace lorix::cli;

class TestTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnsAreAsWideAsTheirWidestCell();
    void wideCharactersCountTwice();
    void cellsAreMadePrintable();
};

void TestTable::columnsAreAsWideAsTheirWidestCell()
{
    Table table;
    table.addColumn(QStringLiteral("id"), Table::Right);
    table.addColumn(QStringLiteral("name"));
    table.addColumn(QStringLiteral("type"));
    table.addRow({QStringLiteral("7"), QStringLiteral("a"), QStringLiteral("text")});
    table.addRow({QStringLiteral("1234"), QStringLiteral("longer")});
    QCOMPARE(table.text(Paint(false)), QStringLiteral("  id  name    type\n"
                                                      "   7  a       text\n"
                                                      "1234  longer\n"));
}

void TestTable::wideCharactersCountTwice()
{
    Table table;
    table.addColumn(QStringLiteral("n"));
    table.addColumn(QStringLiteral("x"));
    table.addRow({QString::fromUtf8("\xe6\xb8\xac"), QStringLiteral("1")});
    table.addRow({QStringLiteral("ab"), QStringLiteral("2")});
    QCOMPARE(table.text(Paint(false)), QStringLiteral("n   x\n") +
                                           QString::fromUtf8("\xe6\xb8\xac  1\n") +
                                           QStringLiteral("ab  2\n"));
}

void TestTable::cellsAreMadePrintable()
{
    Table table;
    table.addColumn(QStringLiteral("name"));
    table.addRow({QStringLiteral("a\nb\x1b[1m")});
    QCOMPARE(table.text(Paint(false)), QStringLiteral("name\na\\nb\\x1b[1m\n"));
}

QTEST_GUILESS_MAIN(TestTable)
#include "tst_table.moc"
