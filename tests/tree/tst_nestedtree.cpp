// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/lorixparser.h>
#include <lorix/tree/lorixfilemanager.h>
#include <lorix/tree/templorixfile.h>
#include <lorix/tree/temporaryfolder.h>
#include <lorix/tree/workflowtree.h>
#include <support/containerbuilder.h>
#include <support/logrecorder.h>
#include <tree/nestedcontainer.h>
#include <tree/randomtrees.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace lorix;

namespace {

using Texts = QStringList;

// "id<parent title@container" for each node in the order of nodeIds().
QStringList shape(const WorkflowTree& tree)
{
    QStringList lines;
    for (const int id : tree.nodeIds())
        lines.append(QStringLiteral("%1<%2 %3@%4")
                         .arg(QString::number(id), QString::number(tree.parent(id)),
                              tree.workflowStep(id).title,
                              QFileInfo(tree.lorixfile(id)).fileName()));
    return lines;
}

WrittenStep step(const QString& title, const QList<FileSpec>& files = QList<FileSpec>())
{
    return {title, QStringLiteral("tool"), QStringLiteral("what"), files};
}

// A container with one step that embeds another such, `depth` times.
QByteArray nestedChain(int depth)
{
    QByteArray bytes = containerOf({step(QStringLiteral("innermost"))});
    for (int i = depth - 1; i >= 0; --i)
        bytes = containerOf({step(QStringLiteral("level %1").arg(i),
                                  {nestedFile(QStringLiteral("in.lorix"), bytes).flate()})});
    return bytes;
}

// Everything below a folder, folders included.
QStringList listing(const QString& folder)
{
    QStringList result;
    const QDir dir(folder);
    for (const QFileInfo& info :
         dir.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)) {
        result.append(info.filePath());
        if (info.isDir())
            result.append(listing(info.filePath()));
    }
    return result;
}

int openDescriptors()
{
    return int(QDir(QStringLiteral("/proc/self/fd"))
                   .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                   .size());
}

} // namespace

class TestNestedTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void sectionsOfOneContainerFormAChain();
    void unmatchedFilesComeFirst();
    void nestedStepsHangBelowTheStepThatEmbedsThem();
    void nodesTellTheirContainer();
    void onlyEmbeddedFilesWithTheExtensionAreFollowed();
    void damagedNestedContainerAddsNoNodes();
    void unreadableContainerGivesAnEmptyTree();
    void readingAnotherContainerReplacesTheTree();
    void writtenTreeIsReadBack();
    void temporaryFilesArePrivateAndInOneFolder();
    void temporaryFilesGoWithTheLastCopy();
    void extractedFileHasTheContent();
    void depthIsBounded();
    void nodesAreBounded();
    void extractedBytesAreBounded();
    void containerThatContainsItselfIsReadOnce();
    void fanningOutEndsAtTheBoundWithOneWarning();
    void cancelLeavesWhatWasRead();
    void managerKeepsOneParserPerPath();
    void managerDoesNotKeepWhatItCannotOpen();
    void temporaryFileGoesWithItsObject();
    void allTemporaryFilesCanBeRemovedAtOnce();
    void nothingIsLeftAfterManyTrees();

private:
    QString write(const QByteArray& bytes, const QString& name = QStringLiteral("a.lorix"))
    {
        return ContainerBuilder::writeFile(m_files->filePath(name), bytes);
    }

    QScopedPointer<QTemporaryDir> m_files;
    QScopedPointer<QTemporaryDir> m_temporary; // stands for the system's own
};

void TestNestedTree::initTestCase()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

void TestNestedTree::init()
{
    qputenv("TMPDIR", "/tmp");
    m_files.reset(new QTemporaryDir);
    m_temporary.reset(new QTemporaryDir);
    qputenv("TMPDIR", m_temporary->path().toUtf8());
    QCOMPARE(QDir::tempPath(), m_temporary->path());
}

void TestNestedTree::cleanup()
{
    QCOMPARE(listing(m_temporary->path()), QStringList());
}

void TestNestedTree::sectionsOfOneContainerFormAChain()
{
    WorkflowTree tree;
    QVERIFY(tree.treeFromLorixFile(
        write(containerOf({step(QStringLiteral("one")), step(QStringLiteral("two")),
                           step(QStringLiteral("three"))}))));
    QCOMPARE(shape(tree),
             Texts({QStringLiteral("0<-1 three@a.lorix"), QStringLiteral("1<0 two@a.lorix"),
                    QStringLiteral("2<1 one@a.lorix")}));
    QCOMPARE(tree.root(), 0);
    QCOMPARE(tree.workflowStep(0).tagId, 0);
    QCOMPARE(tree.workflowStep(2).tagId, 2);
    QCOMPARE(tree.workflowStep(2).tool, QStringLiteral("tool"));
}

void TestNestedTree::unmatchedFilesComeFirst()
{
    ContainerBuilder builder;
    builder.start();
    builder.file(FileSpec(QStringLiteral("loose.txt"), "x"));
    appendStep(builder, step(QStringLiteral("one")));
    WorkflowTree tree;
    QVERIFY(tree.treeFromLorixFile(write(builder.bytes())));
    QCOMPARE(shape(tree), Texts({QStringLiteral("0<-1 <unmatched files>@a.lorix"),
                                 QStringLiteral("1<0 one@a.lorix")}));
}

void TestNestedTree::nestedStepsHangBelowTheStepThatEmbedsThem()
{
    const QByteArray inner = containerOf({step(QStringLiteral("i1")), step(QStringLiteral("i2"))});
    const QByteArray other = containerOf({step(QStringLiteral("o1"))});
    const QByteArray outer = containerOf(
        {step(QStringLiteral("one")),
         step(QStringLiteral("two"), {nestedFile(QStringLiteral("in.lorix"), inner).flate(),
                                      FileSpec(QStringLiteral("x.txt"), "x"),
                                      nestedFile(QStringLiteral("other.lorix"), other)}),
         step(QStringLiteral("three"))});
    WorkflowTree tree;
    QVERIFY(tree.treeFromLorixFile(write(outer)));
    QCOMPARE(shape(tree),
             Texts({QStringLiteral("0<-1 three@a.lorix"), QStringLiteral("1<0 two@a.lorix"),
                    QStringLiteral("2<1 i2@in.lorix"), QStringLiteral("3<2 i1@in.lorix"),
                    QStringLiteral("4<1 o1@other.lorix"), QStringLiteral("5<1 one@a.lorix")}));
    QCOMPARE(tree.children(1), QList<int>({2, 4, 5}));
    QVERIFY(tree.skippedContainers().isEmpty());
}

void TestNestedTree::nodesTellTheirContainer()
{
    const QByteArray inner = containerOf({step(QStringLiteral("i"))});
    const QString path = write(
        containerOf({step(QStringLiteral("o"), {nestedFile(QStringLiteral("in.lorix"), inner)})}));
    WorkflowTree tree;
    QVERIFY(tree.treeFromLorixFile(path));
    QCOMPARE(tree.lorixfile(0), path);
    QCOMPARE(tree.fileOnDisk(0), path);
    QCOMPARE(tree.lorixfile(1), QStringLiteral("in.lorix"));
    QVERIFY(tree.fileOnDisk(1).startsWith(m_temporary->path()));
    QFile nested(tree.fileOnDisk(1));
    QVERIFY(nested.open(QIODevice::ReadOnly));
    QCOMPARE(nested.readAll(), inner);
    QVERIFY(tree.lorixParser(0));
    QVERIFY(tree.lorixParser(1));
    QVERIFY(tree.lorixParser(0) != tree.lorixParser(1));
    QCOMPARE(tree.lorixParser(1)->getNumSections(), 1);
}

void TestNestedTree::onlyEmbeddedFilesWithTheExtensionAreFollowed()
{
    const QByteArray inner = containerOf({step(QStringLiteral("i"))});
    QList<FileSpec> files;
    for (const char* name : {"in.LORIX", "in.lorix.txt", "lorix", "in.Lorix"})
        files.append(nestedFile(QString::fromLatin1(name), inner));
    files.append(nestedFile(QStringLiteral(".lorix"), inner));
    WorkflowTree tree;
    QVERIFY(tree.treeFromLorixFile(write(containerOf({step(QStringLiteral("o"), files)}))));
    QCOMPARE(shape(tree),
             Texts({QStringLiteral("0<-1 o@a.lorix"), QStringLiteral("1<0 i@.lorix")}));

    // Without a summary no file counts as embedded.
    ContainerBuilder builder;
    builder.start();
    builder.section(
        SectionSpec(QStringLiteral("bare")).file(nestedFile(QStringLiteral("in.lorix"), inner)));
    QVERIFY(tree.treeFromLorixFile(write(builder.bytes())));
    QCOMPARE(shape(tree), Texts({QStringLiteral("0<-1 bare@a.lorix")}));
}

void TestNestedTree::damagedNestedContainerAddsNoNodes()
{
    const QByteArray inner = containerOf({step(QStringLiteral("i"))});
    QByteArray headless = inner;
    headless.replace("$LORIX_PDF", "$LORIX_XXX");
    FileSpec cut = nestedFile(QStringLiteral("cut.lorix"), inner).flate();
    cut.stored[20] = char(cut.stored[20] ^ 0x55);
    LogRecorder recorder;
    WorkflowTree tree(&recorder);
    QVERIFY(tree.treeFromLorixFile(write(containerOf(
        {step(QStringLiteral("o"), {nestedFile(QStringLiteral("headless.lorix"), headless), cut,
                                    nestedFile(QStringLiteral("empty.lorix"), QByteArray()),
                                    nestedFile(QStringLiteral("good.lorix"), inner)})}))));
    QCOMPARE(shape(tree),
             Texts({QStringLiteral("0<-1 o@a.lorix"), QStringLiteral("1<0 i@good.lorix")}));
    QCOMPARE(tree.skippedContainers().size(), 3);
    for (const SkippedContainer& skipped : tree.skippedContainers()) {
        QCOMPARE(skipped.nodeId, 0);
        QCOMPARE(skipped.reason, SkippedContainer::Unreadable);
    }
    QCOMPARE(tree.skippedContainers().first().filename, QStringLiteral("headless.lorix"));
    QCOMPARE(tree.skippedContainers().first().fileId, 0);
    // Only the file that is followed lies on disk still.
    QCOMPARE(listing(m_temporary->path()).size(), 2);
}

void TestNestedTree::unreadableContainerGivesAnEmptyTree()
{
    WorkflowTree tree = makeChain({QStringLiteral("a")});
    QVERIFY(!tree.treeFromLorixFile(m_files->filePath(QStringLiteral("missing"))));
    QCOMPARE(tree.nodeIds(), QList<int>());
    QVERIFY(!tree.treeFromLorixFile(write("no container")));
    QCOMPARE(tree.nodeIds(), QList<int>());
}

void TestNestedTree::readingAnotherContainerReplacesTheTree()
{
    const QString nested = write(nestedChain(1));
    const QString flat = write(containerOf({step(QStringLiteral("one"))}), QStringLiteral("b"));
    WorkflowTree tree;
    QVERIFY(tree.treeFromLorixFile(nested));
    const QString temporary = tree.fileOnDisk(1);
    QVERIFY(QFile::exists(temporary));
    QVERIFY(tree.treeFromLorixFile(flat));
    QCOMPARE(shape(tree), Texts({QStringLiteral("0<-1 one@b")}));
    QVERIFY(!QFile::exists(temporary));

    const auto parser = QSharedPointer<LorixParser>::create(Tolerant);
    QVERIFY(parser->open(nested));
    tree.treeFromLorixFile(parser, QStringLiteral("any name"));
    QCOMPARE(tree.nodeIds(), QList<int>({0, 1}));
    QCOMPARE(tree.lorixParser(0), parser);
    QCOMPARE(tree.fileOnDisk(0), QStringLiteral("any name"));
    QVERIFY(QFile::exists(nested));
}

namespace {

// Writes a random container and notes the lines that shape() must give.
QByteArray writeRandomly(QRandomGenerator& random, int depth, const QString& name, int parent,
                         int* nextId, QStringList* lines)
{
    QList<WrittenStep> steps;
    const int sections = 1 + random.bounded(4);
    int above = parent;
    for (int i = 0; i < sections; ++i) {
        const int id = (*nextId)++;
        WrittenStep one = step(QStringLiteral("%1.%2").arg(name).arg(i));
        lines->append(QStringLiteral("%1<%2 %3@%4")
                          .arg(QString::number(id), QString::number(above), one.title, name));
        above = id;
        for (int file = random.bounded(3); file > 0; --file) {
            const QString fileName = QStringLiteral("d%1n%2.lorix").arg(depth).arg(*nextId);
            if (depth == 0 || random.bounded(3) == 0) {
                one.files.append(FileSpec(fileName + QStringLiteral(".txt"), "text"));
            } else {
                FileSpec nested = nestedFile(
                    fileName, writeRandomly(random, depth - 1, fileName, id, nextId, lines));
                one.files.append(random.bounded(2) == 0 ? nested : nested.flate());
            }
        }
        steps.prepend(one);
    }
    return containerOf(steps);
}

} // namespace

void TestNestedTree::writtenTreeIsReadBack()
{
    qsizetype nodes = 0;
    for (int run = 0; run < randomRuns(60); ++run) {
        QRandomGenerator random{quint32(run)};
        QStringList lines;
        int nextId = 0;
        const QByteArray bytes =
            writeRandomly(random, 3, QStringLiteral("a.lorix"), -1, &nextId, &lines);
        WorkflowTree tree;
        QVERIFY(tree.treeFromLorixFile(write(bytes)));
        QCOMPARE(shape(tree), lines);
        nodes += lines.size();
    }
    QVERIFY(nodes > 600);
}

void TestNestedTree::temporaryFilesArePrivateAndInOneFolder()
{
    const QByteArray inner = containerOf({step(QStringLiteral("i"))});
    const QString path = write(containerOf(
        {step(QStringLiteral("o"), {nestedFile(QStringLiteral("a.lorix"), inner),
                                    nestedFile(QStringLiteral("../b.lorix"), inner)})}));
    WorkflowTree tree;
    QVERIFY(tree.treeFromLorixFile(path));
    const QString folder = QFileInfo(tree.fileOnDisk(1)).path();
    QCOMPARE(QFileInfo(tree.fileOnDisk(2)).path(), folder);
    QCOMPARE(QFileInfo(folder).path(), m_temporary->path());
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                        QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFileInfo(folder).permissions() & others, QFile::Permissions());
    QCOMPARE(QFileInfo(tree.fileOnDisk(1)).permissions() & others, QFile::Permissions());
    QCOMPARE(listing(m_temporary->path()).size(), 3);
}

void TestNestedTree::temporaryFilesGoWithTheLastCopy()
{
    const QString path = write(nestedChain(2));
    QScopedPointer<WorkflowTree> tree(new WorkflowTree);
    QVERIFY(tree->treeFromLorixFile(path));
    const QString temporary = tree->fileOnDisk(2);
    QScopedPointer<WorkflowTree> copy(new WorkflowTree(*tree));
    WorkflowTree assigned;
    assigned = *copy;
    tree.reset();
    QVERIFY(QFile::exists(temporary));
    copy->clear();
    QVERIFY(QFile::exists(temporary));
    QCOMPARE(assigned.lorixParser(2)->getNumSections(), 1);
    assigned = *copy;
    QCOMPARE(listing(m_temporary->path()), QStringList());
}

void TestNestedTree::extractedFileHasTheContent()
{
    const auto parser = QSharedPointer<LorixParser>::create(Tolerant);
    QVERIFY(parser->open(write(containerOf(
        {step(QStringLiteral("o"), {FileSpec(QStringLiteral("x.txt"), "content").flate()})}))));
    WorkflowTree tree;
    QFile extracted(tree.extractFile(parser, 0));
    QVERIFY(extracted.open(QIODevice::ReadOnly));
    QCOMPARE(extracted.readAll(), QByteArray("content"));
    // An unknown number gives an empty file, no parser none at all.
    QCOMPARE(QFileInfo(tree.extractFile(parser, 99)).size(), 0);
    QVERIFY(!tree.extractFile(parser, -1).isEmpty());
    QCOMPARE(tree.extractFile(QSharedPointer<LorixParser>(), 0), QString());
}

void TestNestedTree::depthIsBounded()
{
    QCOMPARE(Bounds().treeDepth, 64);
    const QString path = write(nestedChain(5));
    LogRecorder recorder;
    WorkflowTree tree(&recorder);
    Bounds bounds;
    bounds.treeDepth = 5;
    tree.setBounds(bounds);
    QVERIFY(tree.treeFromLorixFile(path));
    QCOMPARE(tree.nodeIds().size(), 6);
    QCOMPARE(recorder.messages.size(), 0);

    bounds.treeDepth = 4;
    tree.setBounds(bounds);
    QVERIFY(tree.treeFromLorixFile(path));
    QCOMPARE(tree.nodeIds().size(), 5);
    QCOMPARE(recorder.messages.size(), 1);
    QCOMPARE(recorder.messages.first().second, 1);
    QCOMPARE(tree.skippedContainers().size(), 1);
    QCOMPARE(tree.skippedContainers().first().reason, SkippedContainer::TooDeep);
    QCOMPARE(tree.skippedContainers().first().nodeId, 4);

    const QString deep = write(nestedChain(66), QStringLiteral("deep.lorix"));
    tree.setBounds(Bounds());
    QVERIFY(tree.treeFromLorixFile(deep));
    QCOMPARE(tree.nodeIds().size(), 65);
}

void TestNestedTree::nodesAreBounded()
{
    QCOMPARE(Bounds().treeNodes, 1000000);
    const QString path = write(nestedChain(3));
    LogRecorder recorder;
    WorkflowTree tree(&recorder);
    Bounds bounds;
    bounds.treeNodes = 4;
    tree.setBounds(bounds);
    QVERIFY(tree.treeFromLorixFile(path));
    QCOMPARE(tree.nodeIds().size(), 4);
    QCOMPARE(recorder.messages.size(), 0);

    bounds.treeNodes = 3;
    tree.setBounds(bounds);
    QVERIFY(tree.treeFromLorixFile(path));
    QCOMPARE(tree.nodeIds().size(), 3);
    QCOMPARE(recorder.messages.size(), 1);
    QCOMPARE(tree.skippedContainers().last().reason, SkippedContainer::TooManyNodes);
}

void TestNestedTree::extractedBytesAreBounded()
{
    QCOMPARE(Bounds().treeExtractedBytes, Q_INT64_C(17179869184));
    const QByteArray one = containerOf({step(QStringLiteral("1"))});
    const QByteArray two = containerOf({step(QStringLiteral("2"))});
    const QString path = write(containerOf(
        {step(QStringLiteral("o"), {nestedFile(QStringLiteral("1.lorix"), one).flate(),
                                    nestedFile(QStringLiteral("2.lorix"), two).flate()})}));
    LogRecorder recorder;
    WorkflowTree tree(&recorder);
    Bounds bounds;
    bounds.treeExtractedBytes = one.size() + two.size();
    tree.setBounds(bounds);
    QVERIFY(tree.treeFromLorixFile(path));
    QCOMPARE(tree.nodeIds().size(), 3);
    QCOMPARE(recorder.messages.size(), 0);

    bounds.treeExtractedBytes -= 1;
    tree.setBounds(bounds);
    QVERIFY(tree.treeFromLorixFile(path));
    QCOMPARE(tree.nodeIds().size(), 2);
    QCOMPARE(recorder.messages.size(), 1);
    QCOMPARE(tree.skippedContainers().last().reason, SkippedContainer::TooManyBytes);
    QCOMPARE(listing(m_temporary->path()).size(), 2);
}

void TestNestedTree::containerThatContainsItselfIsReadOnce()
{
    const QByteArray inner = containerOf({step(QStringLiteral("i"))});
    const QByteArray twice =
        containerOf({step(QStringLiteral("o"), {nestedFile(QStringLiteral("in.lorix"), inner),
                                                nestedFile(QStringLiteral("in.lorix"), inner)})});
    // The file on disk is what counts, so that a caller can stage the circle.
    const QString same = write(inner, QStringLiteral("same"));
    const auto parser = QSharedPointer<LorixParser>::create(Tolerant);
    QVERIFY(parser->open(write(twice)));
    LogRecorder recorder;
    WorkflowTree tree(&recorder);
    tree.fillTree(parser, NODE_ABOVE_ROOT, QStringLiteral("o"), same);
    QCOMPARE(tree.nodeIds().size(), 1);
    QCOMPARE(recorder.messages.size(), 1);
    QCOMPARE(recorder.messages.first().second, 1);
    QCOMPARE(tree.skippedContainers().size(), 2);
    QCOMPARE(tree.skippedContainers().first().reason, SkippedContainer::ContainsItself);

    // Side by side the same content may stand twice.
    tree.clear();
    QVERIFY(tree.treeFromLorixFile(write(twice)));
    QCOMPARE(tree.nodeIds().size(), 3);
}

void TestNestedTree::fanningOutEndsAtTheBoundWithOneWarning()
{
    // Each level holds the next one four times: 4^8 nodes at the innermost.
    QByteArray bytes = containerOf({step(QStringLiteral("i"))});
    for (int level = 0; level < 8; ++level) {
        QList<FileSpec> files;
        for (int i = 0; i < 4; ++i)
            files.append(nestedFile(QStringLiteral("%1.lorix").arg(i), bytes).flate());
        bytes = containerOf({step(QStringLiteral("l"), files)});
    }
    LogRecorder recorder;
    WorkflowTree tree(&recorder);
    Bounds bounds;
    bounds.treeNodes = 300;
    tree.setBounds(bounds);
    QVERIFY(tree.treeFromLorixFile(write(bytes)));
    QCOMPARE(tree.nodeIds().size(), 300);
    QCOMPARE(recorder.messages.size(), 1);
}

void TestNestedTree::cancelLeavesWhatWasRead()
{
    WorkflowTree tree;
    tree.setCancel([&tree] { return tree.nodeIds().size() == 2; });
    QVERIFY(tree.treeFromLorixFile(write(nestedChain(5))));
    QCOMPARE(tree.nodeIds().size(), 2);
}

void TestNestedTree::managerKeepsOneParserPerPath()
{
    const QString path = write(containerOf({step(QStringLiteral("one"))}));
    LorixFileManager manager;
    QVERIFY(manager.parser(path).isNull());
    const QSharedPointer<LorixParser> parser = manager.addLorixFile(path, false);
    QVERIFY(parser);
    QCOMPARE(manager.addLorixFile(path, true), parser);
    QCOMPARE(manager.parser(path), parser);
    LorixFileManager copy(manager);
    manager.clear();
    QVERIFY(manager.parser(path).isNull());
    QCOMPARE(copy.parser(path), parser);

    const auto own = QSharedPointer<LorixParser>::create(Tolerant);
    copy.addLorixFile(own, path);
    QCOMPARE(copy.parser(path), own);
    copy.clear();
    QVERIFY(QFile::exists(path));
}

void TestNestedTree::managerDoesNotKeepWhatItCannotOpen()
{
    const QString path = write("no container");
    LorixFileManager manager;
    QVERIFY(manager.addLorixFile(path, true).isNull());
    QVERIFY(manager.parser(path).isNull());
    QVERIFY(QFile::exists(path));
    write(containerOf({step(QStringLiteral("one"))}));
    QVERIFY(manager.addLorixFile(path, true));
    manager.clear();
    QVERIFY(!QFile::exists(path));
}

void TestNestedTree::temporaryFileGoesWithItsObject()
{
    const QString path = write("x");
    const auto parser = QSharedPointer<LorixParser>::create(Tolerant);
    {
        const TempLorixfile kept(parser, path, false);
        QCOMPARE(kept.parser(), parser);
        QCOMPARE(kept.filePath(), path);
        QVERIFY(!kept.removeOnDestruction());
    }
    QVERIFY(QFile::exists(path));
    {
        const TempLorixfile removed(parser, path, true);
    }
    QVERIFY(!QFile::exists(path));
}

void TestNestedTree::allTemporaryFilesCanBeRemovedAtOnce()
{
    WorkflowTree one;
    QVERIFY(one.treeFromLorixFile(write(nestedChain(3))));
    WorkflowTree two(one);
    QVERIFY(two.treeFromLorixFile(write(nestedChain(2))));
    const TemporaryFolder folder;
    QCOMPARE(listing(m_temporary->path()).size(), 3 + 3 + 2);
    TemporaryFolder::removeAllNow();
    QCOMPARE(listing(m_temporary->path()), QStringList());
}

void TestNestedTree::nothingIsLeftAfterManyTrees()
{
    const QString path = write(nestedChain(2));
    const int before = openDescriptors();
    for (int run = 0; run < randomRuns(100); ++run) {
        WorkflowTree tree;
        QVERIFY(tree.treeFromLorixFile(path));
        QCOMPARE(tree.nodeIds().size(), 3);
        const WorkflowTree copy(tree);
    }
    QCOMPARE(openDescriptors(), before);
    QCOMPARE(listing(m_temporary->path()), QStringList());
}

QTEST_GUILESS_MAIN(TestNestedTree)
#include "tst_nestedtree.moc"
