// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/argfile.h>
#include <lorix/container/lorixparser.h>
#include <lorix/queues/validationqueue.h>
#include <lorix/runner/applicationdir.h>
#include <lorix/runner/lorixaddrunner.h>
#include <lorix/runner/lorixdelrunner.h>
#include <lorix/summary/summarycreator.h>
#include <support/logrecorder.h>
#include <support/randomruns.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <thread>

using namespace lorix;

// The real tools through the runners: what an invocation says is what the
// library reads from the container afterwards, and deleting takes it all back.
namespace {

/// One step as it was asked for, with the content of its files.
struct Step
{
    ArgFile invocation;
    QList<QByteArray> contents;
};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

void writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

QString md5(const QByteArray& content)
{
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Md5).toHex());
}

void useTools(LorixRunner& runner)
{
    const QString tools = qEnvironmentVariable("LORIX_TOOLS");
    runner.setSearchPaths({QDir(getBinaryDir()).relativeFilePath(tools)});
    runner.setUsePy2Exe(false);
}

/// Runs a tool, which must succeed without a complaint.
template <typename Runner>
bool succeeds(const QString& parameter)
{
    LogRecorder recorder;
    Runner runner(&recorder);
    useTools(runner);
    const int exitCode = runner.runProcess(parameter);
    for (const auto& message : recorder.messages) {
        if (message.second != 0 || exitCode != 0)
            qWarning("%d: %s", message.second, qPrintable(message.first));
    }
    return exitCode == 0 &&
           recorder.texts().last() == QStringLiteral("Programm exited with error code: 0\n\n");
}

/// The predefined entities undone, as steps' texts carry them.
QString withoutEntities(QString text)
{
    text.replace(QLatin1String("&lt;"), QLatin1String("<"));
    text.replace(QLatin1String("&gt;"), QLatin1String(">"));
    text.replace(QLatin1String("&quot;"), QLatin1String("\""));
    text.replace(QLatin1String("&apos;"), QLatin1String("'"));
    text.replace(QLatin1String("&amp;"), QLatin1String("&"));
    return text;
}

/// The escapes of marker fields undone, as files' texts carry them.
QString withoutEscapes(QString text)
{
    text.replace(QLatin1String("\\]"), QLatin1String("]"));
    text.replace(QLatin1String("\\\\"), QLatin1String("\\"));
    return text;
}

class Invention
{
public:
    explicit Invention(quint32 seed) : m_dice(seed) {}

    Dice& dice() { return m_dice; }

    /// A text with a blank in it, so that an argument file carries it unharmed.
    QString text()
    {
        static const QString alphabet =
            QString::fromUtf8("abcXYZ019 $${}'\"#`~%&<>/[]()=,;:!?*\\\xc3\xa4\xe2\x82\xac");
        QString result = QStringLiteral("t ");
        for (int length = m_dice.below(12); length > 0; --length)
            result += alphabet[m_dice.below(static_cast<int>(alphabet.size()))];
        // Two backslashes in a row or one before a bracket would be undone in
        // more than one way.
        while (result.contains(QLatin1String("\\\\")) || result.contains(QLatin1String("\\]")))
            result.replace(QLatin1String("\\"), QLatin1String("-"));
        return result + u'.';
    }

    QString textOrNothing() { return m_dice.once(3) ? QString() : text(); }

    QByteArray content()
    {
        const int size = m_dice.once(4) ? m_dice.below(200000) : m_dice.below(500);
        switch (m_dice.below(3)) {
        case 0:
            return m_dice.anyBytes(size);
        case 1:
            return m_dice.bytes(size, "%<--! $LORIX_SECTION [left:1][size:99]-->\r\n");
        default:
            return QByteArray(size, 'a');
        }
    }

    Step step(const QString& folder, const QString& container, int number)
    {
        Step step;
        ArgFile& invocation = step.invocation;
        invocation.addOutputLorixfile(container);
        invocation.setRootfile(container);
        for (const auto set :
             {&ArgFile::setTitle, &ArgFile::setDescription, &ArgFile::setComment, &ArgFile::setTool,
              &ArgFile::setToolpath, &ArgFile::setHost, &ArgFile::setUser, &ArgFile::setCommand})
            (invocation.*set)(textOrNothing());
        for (int count = m_dice.below(3); count > 0; --count)
            invocation.addUserAttribute(text() + QString::number(count), text());
        for (int count = m_dice.below(4); count > 0; --count) {
            step.contents.append(content());
            WSFile* file = invocation.addFile(WSFile());
            file->setFilenameAndPath(
                QStringLiteral("%1/in %2/file %3 &_%4.x")
                    .arg(folder)
                    .arg(number)
                    .arg(count)
                    .arg(m_dice.below(2) ? QStringLiteral("]") : QStringLiteral("a")));
            file->setInputFile(m_dice.once(2));
            file->setEmbed(!m_dice.once(4));
            file->setCompress(m_dice.once(2));
            file->setPreview(m_dice.once(3));
            file->setThumbnail(m_dice.once(3));
            file->setFiletype(textOrNothing());
            file->setDescription(textOrNothing());
            file->setComment(textOrNothing());
            if (m_dice.once(3))
                file->addUserAttribute(text(), text());
            writeFile(file->filepath() + file->filename(), step.contents.last());
        }
        return step;
    }

private:
    Dice m_dice;
};

template <typename Target, typename Record>
void compareUserAttributes(const Target& asked, const Record& read)
{
    QStringList keys;
    for (const QString& key : read.userAttributeKeys) {
        keys.append(withoutEntities(key));
        QCOMPARE(withoutEntities(read.userAttributes.value(key)),
                 asked.userAttribute(withoutEntities(key)));
    }
    QCOMPARE(keys, asked.userAttributeKeys());
}

} // namespace

class TestRealTools : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void stepsComeBackAndGoAgain();
    void undoDescriptionRemovesTheStep();
    void complaintsOfTheToolsAreErrors();
    void ofTwoWritersEachWinsOrSaysSo();

private:
    void compare(LorixParser& parser, const Summary& summary, const Step& step);
    void compareFile(LorixParser& parser, const FileSummary& read, const WSFile& asked,
                     const QByteArray& content);
    void checkDigests(LorixParser& parser);
    void circle(quint32 seed);
};

void TestRealTools::initTestCase()
{
    // Summaries are dumped while they are made.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
}

void TestRealTools::compareFile(LorixParser& parser, const FileSummary& read, const WSFile& asked,
                                const QByteArray& content)
{
    QCOMPARE(withoutEscapes(read.filename), asked.filename());
    QCOMPARE(withoutEntities(read.filepath), asked.filepath());
    QCOMPARE(withoutEscapes(read.filetype), asked.filetype());
    QCOMPARE(withoutEscapes(read.description), asked.description());
    QCOMPARE(withoutEscapes(read.comment), asked.comment());
    QCOMPARE(read.filePurpose,
             asked.inputFile() ? QStringLiteral("InFile") : QStringLiteral("OutFile"));
    QCOMPARE(read.embedded, asked.embed());
    QCOMPARE(read.preview, asked.preview());
    QCOMPARE(read.thumbnail, asked.thumbnail());
    QCOMPARE(read.generateMD5, asked.autoMD5());
    QCOMPARE(read.uncompressedSize, content.size());
    QCOMPARE(read.uncompressedMD5, md5(content));
    compareUserAttributes(asked, read);
    QCOMPARE(read.tagId >= 0, asked.embed());
    if (!asked.embed())
        return;
    const auto stored = parser.getFileContent(read.tagId);
    QVERIFY(stored);
    QCOMPARE(md5(*stored), md5(content));
    QCOMPARE(parser.getFile(read.tagId)->compression,
             asked.compress() ? QStringLiteral("flate") : QStringLiteral("none"));
}

void TestRealTools::compare(LorixParser& parser, const Summary& summary, const Step& step)
{
    const ArgFile& asked = step.invocation;
    QVERIFY(summary.fromXml);
    QCOMPARE(withoutEntities(summary.title), asked.title());
    QCOMPARE(withoutEntities(summary.description), asked.description());
    QCOMPARE(withoutEntities(summary.comment), asked.comment());
    QCOMPARE(withoutEntities(summary.tool), asked.tool());
    QCOMPARE(withoutEntities(summary.toolPath), asked.toolpath());
    QCOMPARE(withoutEntities(summary.host), asked.host());
    QCOMPARE(withoutEntities(summary.user), asked.user());
    QCOMPARE(withoutEntities(summary.command), asked.command());
    QCOMPARE(withoutEntities(summary.lorixRootFile), asked.rootfile());
    compareUserAttributes(asked, summary);
    // The summary itself is a file of the section too.
    QCOMPARE(summary.files.size(), asked.numFiles() + 1);
    QCOMPARE(summary.files.last().filename, QStringLiteral("ws_summary.xml"));
    for (int i = 0; i < asked.numFiles(); ++i)
        compareFile(parser, summary.files[i], *asked.getConstFile(i), step.contents[i]);
}

void TestRealTools::checkDigests(LorixParser& parser)
{
    ValidationQueue queue(&parser, 100000);
    int checked = 0;
    bool valid = true;
    const auto check = [&](int, bool isValid) {
        ++checked;
        valid = valid && isValid;
    };
    connect(&queue, &ValidationQueue::fileProcessed, this, check);
    connect(&queue, &ValidationQueue::sectionProcessed, this, check);
    queue.repopulate(&parser);
    while (queue.process()) {
    }
    QVERIFY(valid);
    QCOMPARE(checked, parser.getNumFiles() + parser.getNumSections());
}

void TestRealTools::circle(quint32 seed)
{
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    Invention invention(seed);
    const QString container = folder.filePath(QStringLiteral("it is a report.lorix"));
    const QByteArray document = invention.dice().once(5) ? QByteArray() : invention.content();
    writeFile(container, document);

    QList<Step> steps;
    QList<QByteArray> states;
    const int count = invention.dice().between(1, 10);
    for (int number = 0; number < count; ++number) {
        states.append(contentOf(container));
        steps.append(invention.step(folder.path(), container, number));
        QVERIFY(succeeds<LorixaddRunner>(steps.last().invocation.toCommandline(false)));
    }

    {
        LorixParser parser;
        QVERIFY(parser.open(container));
        QCOMPARE(parser.getNumSections(), count);
        const QList<Summary> summaries = SummaryCreator().createSummaries(parser);
        QCOMPARE(summaries.size(), count);
        // Oldest first, as they were added.
        for (int i = 0; i < count; ++i) {
            compare(parser, summaries[i], steps[i]);
            if (QTest::currentTestFailed())
                return;
        }
        checkDigests(parser);
    }

    for (int number = count - 1; number >= 0; --number) {
        QVERIFY(succeeds<LorixdelRunner>(container));
        QCOMPARE(md5(contentOf(container)), md5(states[number]));
    }
    QCOMPARE(contentOf(container), document);
}

void TestRealTools::stepsComeBackAndGoAgain()
{
    const quint32 seed = randomSeed(7001);
    const int runs = randomRuns(3);
    for (int run = 0; run < runs; ++run) {
        circle(seed + static_cast<quint32>(run));
        if (QTest::currentTestFailed()) {
            qWarning("seed %u", seed + static_cast<quint32>(run));
            return;
        }
    }
}

void TestRealTools::undoDescriptionRemovesTheStep()
{
    const QTemporaryDir folder;
    ArgFile invocation;
    for (const char* name : {"one", "two"}) {
        const QString path = folder.filePath(QString::fromLatin1(name));
        writeFile(path, "first document\n");
        invocation.addOutputLorixfile(path);
    }
    invocation.setRootfile(invocation.outputLorixfile(0));
    QVERIFY(succeeds<LorixaddRunner>(invocation.toCommandline(false)));
    for (int i = 0; i < 2; ++i)
        QVERIFY(contentOf(invocation.outputLorixfile(i)).size() > 100);
    QVERIFY(succeeds<LorixdelRunner>(invocation.getUndoWorkflowStep()));
    for (int i = 0; i < 2; ++i)
        QCOMPARE(contentOf(invocation.outputLorixfile(i)), QByteArray("first document\n"));
}

void TestRealTools::complaintsOfTheToolsAreErrors()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("plain"));
    writeFile(path, "no container\n");
    LogRecorder recorder;
    LorixdelRunner del(&recorder);
    useTools(del);
    const int delCode = del.runProcess(path);
    QVERIFY(delCode > 0);
    QCOMPARE(recorder.messages.size(), 2);
    QCOMPARE(recorder.messages.first().second, 2);
    QVERIFY(recorder.messages.first().first.contains(path));
    QCOMPARE(recorder.texts().last(),
             QStringLiteral("Programm exited with error code: %1\n\n").arg(delCode));

    recorder.messages.clear();
    LorixaddRunner add(&recorder);
    useTools(add);
    QVERIFY(add.runProcess(QStringLiteral("-A '%1' --bogus").arg(path)) > 0);
    QCOMPARE(recorder.messages.first().second, 2);
    QCOMPARE(contentOf(path), QByteArray("no container\n"));
}

void TestRealTools::ofTwoWritersEachWinsOrSaysSo()
{
    const QTemporaryDir folder;
    const QString container = folder.filePath(QStringLiteral("shared.lorix"));
    const QString data = folder.filePath(QStringLiteral("data"));
    Dice dice(7002);
    writeFile(data, dice.anyBytes(4000000));
    writeFile(container, "first document\n");

    int won = 0;
    for (int round = 0; round < 3; ++round) {
        struct Writer
        {
            int exitCode = -1;
            bool complained = false;
        };
        std::array<Writer, 2> writers;
        std::array<std::thread, 2> threads;
        for (size_t i = 0; i < writers.size(); ++i) {
            threads[i] = std::thread([&, i] {
                LogRecorder recorder;
                LorixaddRunner runner(&recorder);
                useTools(runner);
                writers[i].exitCode = runner.runProcess(
                    QStringLiteral("-A '%1' -s title w -i '%2' -f compress").arg(container, data));
                for (const auto& message : recorder.messages)
                    writers[i].complained = writers[i].complained || message.second == 2;
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        int winners = 0;
        for (const Writer& writer : writers) {
            QCOMPARE(writer.complained, writer.exitCode != 0);
            winners += writer.exitCode == 0 ? 1 : 0;
        }
        QVERIFY(winners >= 1);
        won += winners;
        LorixParser parser;
        QVERIFY(parser.open(container));
        QCOMPARE(parser.getNumSections(), won);
        checkDigests(parser);
    }
    // Nothing half-written stays behind.
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
             QStringList({QStringLiteral("data"), QStringLiteral("shared.lorix")}));
    for (; won > 0; --won)
        QVERIFY(succeeds<LorixdelRunner>(container));
    QCOMPARE(contentOf(container), QByteArray("first document\n"));
}

QTEST_GUILESS_MAIN(TestRealTools)
#include "tst_realtools.moc"
