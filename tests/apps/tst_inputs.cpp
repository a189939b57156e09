// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/inputs.h>
#include <apps/lorix/pathlist.h>
#include <apps/lorix/sortedentries.h>

#include <support/containerbuilder.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lorix::cli;

class TestInputs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void foldersAreWalkedInOrderOfNames();
    void folderWithoutLeaveIsHandedOutAsOne();
    void linksToFoldersAreNotFollowed();
    void walkEndsWhenNobodyTakesMore();
    void portionsGiveTheSameOrderAsAWhole_data();
    void portionsGiveTheSameOrderAsAWhole();
    void listsAreReadAfterTheNames_data();
    void listsAreReadAfterTheNames();
    void listThatIsNotThereIsHandedOut();
    void overlongNameInAListIsCut();
    void singleIsOneFileAndNoFolder();

private:
    QStringList collect(const Inputs& inputs) const;
    QScopedPointer<QTemporaryDir> m_dir;
};

void TestInputs::init()
{
    m_dir.reset(new QTemporaryDir);
    const QDir top(m_dir->path());
    QVERIFY(top.mkpath(QStringLiteral("top/b/deep")));
    for (const char* name : {"top/z", "top/a", "top/b/m", "top/b/deep/k", "top/.hidden"})
        ContainerBuilder::writeFile(top.filePath(QLatin1String(name)), "x");
}

QStringList TestInputs::collect(const Inputs& inputs) const
{
    QStringList found;
    inputs.forEach([&](const Input& input) {
        found.append(QDir(m_dir->path()).relativeFilePath(input.path) +
                     (input.named ? QStringLiteral(" named") : QString()));
        return true;
    });
    return found;
}

void TestInputs::foldersAreWalkedInOrderOfNames()
{
    Inputs inputs;
    inputs.recursive = true;
    inputs.paths = {m_dir->filePath(QStringLiteral("top/z")),
                    m_dir->filePath(QStringLiteral("top"))};
    QCOMPARE(collect(inputs), QStringList({"top/z named", "top/.hidden", "top/a", "top/z",
                                           "top/b/m", "top/b/deep/k"}));
}

void TestInputs::folderWithoutLeaveIsHandedOutAsOne()
{
    Inputs inputs;
    inputs.paths = {m_dir->filePath(QStringLiteral("top"))};
    bool folder = false;
    inputs.forEach([&](const Input& input) { return folder = input.folder; });
    QVERIFY(folder);
    QCOMPARE(collect(inputs), QStringList({"top named"}));
}

void TestInputs::linksToFoldersAreNotFollowed()
{
    QVERIFY(QFile::link(m_dir->path(), m_dir->filePath(QStringLiteral("top/b/loop"))));
    Inputs inputs;
    inputs.recursive = true;
    inputs.paths = {m_dir->filePath(QStringLiteral("top/b"))};
    QCOMPARE(collect(inputs), QStringList({"top/b/m", "top/b/deep/k"}));
}

void TestInputs::walkEndsWhenNobodyTakesMore()
{
    Inputs inputs;
    inputs.recursive = true;
    inputs.paths = {m_dir->filePath(QStringLiteral("top"))};
    int taken = 0;
    inputs.forEach([&](const Input&) { return ++taken < 2; });
    QCOMPARE(taken, 2);
}

void TestInputs::portionsGiveTheSameOrderAsAWhole_data()
{
    QTest::addColumn<int>("portion");
    for (const int portion : {1, 2, 3, 7, 40, 41, 65536})
        QTest::addRow("%d", portion) << portion;
}

void TestInputs::portionsGiveTheSameOrderAsAWhole()
{
    QFETCH(int, portion);
    const QString folder = m_dir->filePath(QStringLiteral("many"));
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/below")));
    for (int i = 0; i < 40; ++i)
        ContainerBuilder::writeFile(
            QStringLiteral("%1/%2%3").arg(folder, QString(QChar(0xe0 + i % 7)), QString::number(i)),
            "x");
    QStringList expected = QDir(folder).entryList(QDir::Files);
    expected.sort();
    QCOMPARE(expected.size(), 40);
    SortedEntries entries(folder, QDir::Files, portion);
    QStringList found;
    for (QString name; entries.next(name);)
        found.append(name);
    QCOMPARE(found, expected);
    QString name;
    QVERIFY(!entries.next(name));
}

void TestInputs::listsAreReadAfterTheNames_data()
{
    QTest::addColumn<bool>("zeroDelimited");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("lines") << false << QByteArray("top/z\n\ntop/b/m\n");
    QTest::newRow("last line open") << false << QByteArray("top/z\ntop/b/m");
    QTest::newRow("zero bytes") << true << QByteArray("top/z\0top/b/m\0", 14);
    QTest::newRow("last one open") << true << QByteArray("top/z\0\0top/b/m", 14);
}

void TestInputs::listsAreReadAfterTheNames()
{
    QFETCH(bool, zeroDelimited);
    QFETCH(QByteArray, content);
    content.replace("top", m_dir->filePath(QStringLiteral("top")).toUtf8());
    Inputs inputs;
    inputs.zeroDelimited = zeroDelimited;
    inputs.list = m_dir->filePath(QStringLiteral("list"));
    inputs.paths = {m_dir->filePath(QStringLiteral("top/a"))};
    ContainerBuilder::writeFile(inputs.list, content);
    QCOMPARE(collect(inputs), QStringList({"top/a named", "top/z named", "top/b/m named"}));
}

void TestInputs::listThatIsNotThereIsHandedOut()
{
    Inputs inputs;
    inputs.list = m_dir->filePath(QStringLiteral("missing"));
    QCOMPARE(collect(inputs), QStringList({"missing named"}));
    inputs.list = m_dir->filePath(QStringLiteral("top"));
    QCOMPARE(collect(inputs), QStringList({"top named"}));
}

void TestInputs::overlongNameInAListIsCut()
{
    Inputs inputs;
    inputs.list = m_dir->filePath(QStringLiteral("list"));
    ContainerBuilder::writeFile(inputs.list,
                                QByteArray(10 * PathList::mostBytes, 'x') + "\nlast\n");
    QStringList names;
    inputs.forEach([&](const Input& input) {
        names.append(input.path);
        return true;
    });
    for (const QString& name : names)
        QVERIFY(name.size() <= 2 * PathList::mostBytes);
    QVERIFY(names.size() > 5);
    QCOMPARE(names.last(), QStringLiteral("last"));
}

void TestInputs::singleIsOneFileAndNoFolder()
{
    Inputs inputs;
    inputs.paths = {m_dir->filePath(QStringLiteral("top"))};
    QVERIFY(inputs.isSingle());
    inputs.recursive = true;
    QVERIFY(!inputs.isSingle());
    inputs.paths = {m_dir->filePath(QStringLiteral("top/a"))};
    QVERIFY(inputs.isSingle());
    inputs.list = QStringLiteral("-");
    QVERIFY(!inputs.isSingle());
}

QTEST_GUILESS_MAIN(TestInputs)
#include "tst_inputs.moc"
