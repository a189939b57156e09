// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/targetnames.h>

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

using namespace lorix;
using namespace lorix::cli;

namespace {

QStringList namesFor(const QStringList& embedded)
{
    QList<FileTag> files;
    for (const QString& name : embedded) {
        FileTag file;
        file.id = static_cast<int>(files.size());
        file.filename = name;
        files.append(file);
    }
    const TargetNames names(files);
    QStringList result;
    for (const FileTag& file : files)
        result.append(names.nameOf(file.id));
    return result;
}

} // namespace

class TestTargetNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesAreHarmless_data();
    void namesAreHarmless();
    void longNamesKeepTheirSuffix();
    void hugeNamesTakeNoTime();
    void laterFilesOfANameAreNumbered_data();
    void laterFilesOfANameAreNumbered();
    void manyFilesOfANameTakeLinearTime();
    void unknownIdHasNoName();
    void noRandomNameLeadsOutside();
};

void TestTargetNames::namesAreHarmless_data()
{
    QTest::addColumn<QString>("embedded");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* embedded, const char* expected) {
        QTest::addRow("%s", QByteArray(embedded).toPercentEncoding(" /\\:*").constData())
            << QString::fromUtf8(embedded) << QString::fromUtf8(expected);
    };
    row("mesh.txt", "mesh.txt");
    row("a/b/c.txt", "a/b/c.txt");
    row("a\\b\\c.txt", "a/b/c.txt");
    row("/etc/passwd", "etc/passwd");
    row("//server/share/x", "server/share/x");
    row("../../x", "x");
    row("a/../../x", "a/x");
    row("a/./x", "a/x");
    row("..\\..\\x", "x");
    row("...", "file");
    row("..", "file");
    row("", "file");
    row("/", "file");
    row(" ", "file");
    row("C:\\temp\\x", "temp/x");
    row("c:x", "x");
    row("x:y", "y");
    row("xx:y", "xx_y");
    row("a\nb\tc\x7f", "a_b_c_");
    row("a\x1b[31mb", "a_[31mb");
    row("what?*<>|\".txt", "what______.txt");
    row("CON", "_CON");
    row("con.txt", "_con.txt");
    row("nul", "_nul");
    row("aux .h", "_aux .h");
    row("COM1.log", "_COM1.log");
    row("LPT9", "_LPT9");
    row("COM", "COM");
    row("console", "console");
    row("COM10", "COM10");
    row("CONOUT$", "_CONOUT$");
    row("name.", "name");
    row("name. . ", "name");
    row("  name", "name");
    row("dir./x", "dir/x");
    row("-rf", "-rf");
    row(".hidden", ".hidden");
    row("a\xe2\x80\xaegpj.exe", "a_gpj.exe");
    row("x\xef\xbb\xbfy", "x_y");
    row("\xc3\xa4\xe6\xbc\xa2\xf0\x9f\x98\x80.txt", "\xc3\xa4\xe6\xbc\xa2\xf0\x9f\x98\x80.txt");
}

void TestTargetNames::namesAreHarmless()
{
    QFETCH(QString, embedded);
    QTEST(harmlessName(embedded), "expected");
}

void TestTargetNames::longNamesKeepTheirSuffix()
{
    const QString name = harmlessName(QString(500, QLatin1Char('x')) + QStringLiteral(".tar"));
    QCOMPARE(name.toUtf8().size(), 200);
    QVERIFY(name.endsWith(QLatin1String("x.tar")));
    const QString wide = harmlessName(QString(300, QChar(0x6f22)) + QStringLiteral(".t"));
    QVERIFY(wide.toUtf8().size() <= 200 && wide.toUtf8().size() > 190);
    QVERIFY(wide.endsWith(QLatin1String(".t")));
    QString pairs;
    for (int i = 0; i < 200; ++i)
        pairs += QStringLiteral("\U0001F600");
    QVERIFY(!harmlessName(pairs).contains(QChar::ReplacementCharacter));
    QCOMPARE(QString::fromUtf8(harmlessName(pairs).toUtf8()), harmlessName(pairs));
}

void TestTargetNames::hugeNamesTakeNoTime()
{
    const QString deep = QStringLiteral("a/").repeated(1000000);
    QCOMPARE(harmlessName(deep).count(QLatin1Char('/')), 31);
    QCOMPARE(harmlessName(QString(4000000, QLatin1Char('y'))).size(), 200);
}

void TestTargetNames::laterFilesOfANameAreNumbered_data()
{
    QTest::addColumn<QStringList>("embedded");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("twice the same")
        << QStringList({"a.txt", "a.txt", "a.txt"}) << QStringList({"a.txt", "a-2.txt", "a-3.txt"});
    QTest::newRow("without suffix") << QStringList({"a", "a"}) << QStringList({"a", "a-2"});
    QTest::newRow("hidden") << QStringList({".a", ".a"}) << QStringList({".a", ".a-2"});
    QTest::newRow("number taken") << QStringList({"a-2.txt", "a.txt", "a.txt"})
                                  << QStringList({"a-2.txt", "a.txt", "a-3.txt"});
    QTest::newRow("case") << QStringList({"A.txt", "a.TXT"}) << QStringList({"A.txt", "a-2.TXT"});
    QTest::newRow("accents") << QStringList({QString(QChar(0xe4)), QStringLiteral("a\u0308")})
                             << QStringList({QString(QChar(0xe4)), QStringLiteral("a\u0308-2")});
    QTest::newRow("in a folder") << QStringList({"d/a.txt", "d/a.txt", "e/a.txt"})
                                 << QStringList({"d/a.txt", "d/a-2.txt", "e/a.txt"});
    QTest::newRow("file where a folder is")
        << QStringList({"d/a", "d"}) << QStringList({"d/a", "d-2"});
    QTest::newRow("folder where a file is")
        << QStringList({"d", "d/a"}) << QStringList({"d", "d-2/a"});
    QTest::newRow("several in such a folder")
        << QStringList({"D", "d/a", "d/b", "d-2", "d/a"})
        << QStringList({"D", "d-2/a", "d-2/b", "d-2-2", "d-2/a-2"});
    QTest::newRow("folder clash further down") << QStringList({"x/d", "x/d/e/a", "x/d/e/a"})
                                               << QStringList({"x/d", "x/d-2/e/a", "x/d-2/e/a-2"});
    QTest::newRow("made the same")
        << QStringList({"../x", "x", "c:\\x"}) << QStringList({"x", "x-2", "x-3"});
    QTest::newRow("dot in a folder")
        << QStringList({"v1.0/a", "v1.0/a"}) << QStringList({"v1.0/a", "v1.0/a-2"});
    QTest::newRow("escapes undone") << QStringList({"a\\]b"}) << QStringList({"a]b"});
}

void TestTargetNames::laterFilesOfANameAreNumbered()
{
    QFETCH(QStringList, embedded);
    QTEST(namesFor(embedded), "expected");
}

void TestTargetNames::manyFilesOfANameTakeLinearTime()
{
    QStringList embedded;
    for (int i = 0; i < 50000; ++i)
        embedded.append(QStringLiteral("same.txt"));
    QCOMPARE(namesFor(embedded).constLast(), QStringLiteral("same-50000.txt"));
}

void TestTargetNames::unknownIdHasNoName()
{
    QVERIFY(TargetNames({}).nameOf(0).isEmpty());
}

void TestTargetNames::noRandomNameLeadsOutside()
{
    const QString alphabet = QStringLiteral("./\\:aC\n \u202e$1~");
    QRandomGenerator random(3);
    QStringList embedded;
    for (int i = 0; i < 20000; ++i) {
        QString name;
        for (int length = random.bounded(12); length > 0; --length)
            name += alphabet.at(random.bounded(static_cast<int>(alphabet.size())));
        embedded.append(name);
    }
    // Not only escapes, but all that decoding them can lead to.
    QStringList seen = namesFor(embedded);
    for (const QString& name : seen) {
        QVERIFY2(!name.isEmpty() && !QDir::isAbsolutePath(name), qPrintable(name));
        QCOMPARE(QDir::cleanPath(name), name);
        QVERIFY2(name != QLatin1String("..") && !name.startsWith(QLatin1String("../")),
                 qPrintable(name));
        QVERIFY2(!name.contains(QLatin1Char('\n')) && !name.contains(QChar(0x202e)) &&
                     !name.contains(QLatin1Char(':')) && !name.contains(QLatin1Char('\\')),
                 qPrintable(name));
    }
    for (QString& name : seen)
        name = name.toCaseFolded();
    seen.sort();
    QCOMPARE(seen.removeDuplicates(), 0);
}

QTEST_GUILESS_MAIN(TestTargetNames)
#include "tst_targetnames.moc"
