// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/inputs.h>

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

QTEST_GUILESS_MAIN(TestInputs)
#include "tst_inputs.moc"
