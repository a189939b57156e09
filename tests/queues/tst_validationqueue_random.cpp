// SPDX-License-Identifier: BSD-3-Clause
// Random containers with wrong numbers: every item ends, after the steps and
// with the verdict that follow from its numbers alone.
#include <lorix/container/lorixparser.h>
#include <lorix/queues/validationqueue.h>
#include <support/containerbuilder.h>
#include <support/signalrecorder.h>

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

namespace {

// What a pass over one item should show: bytes done after each step, and the
// bytes that are digested.
struct Pass
{
    QList<qint64> stepBytes;
    QByteArray digested;
};

QByteArray range(const QByteArray& file, qint64 from, qint64 to)
{
    if (from < 0 || from >= file.size() || to < from || to > file.size())
        return {};
    return file.mid(from, to - from);
}

// Cuts [from, to) of an item that starts at `start` into steps.
void cut(Pass& pass, const QByteArray& file, qint64 start, qint64 from, qint64 to, int chunk)
{
    for (qint64 at = from; at < to; at += chunk) {
        const qint64 end = qMin(to, at + chunk);
        pass.stepBytes.append(end - at);
        pass.digested += range(file, start + at, start + end);
    }
}

Pass sectionPass(const SectionTag& tag, const QByteArray& file, int chunk)
{
    Pass pass;
    const qint64 start = qint64(tag.position) - tag.left;
    const bool meetsMarker = tag.left >= 0 && tag.left <= tag.size;
    if (!meetsMarker) {
        if (tag.size > 0)
            cut(pass, file, start, 0, tag.size, chunk);
        else
            pass.stepBytes.append(tag.size);
        if (tag.left == tag.size && tag.left < 0)
            pass.digested += tag.validationTag;
    } else {
        if (tag.left > 0)
            cut(pass, file, start, 0, tag.left, chunk);
        else
            pass.stepBytes.append(0);
        pass.digested += tag.validationTag;
        const qint64 behind = tag.left + tag.validationTag.size();
        if (behind > tag.size)
            pass.stepBytes.append(tag.size - behind);
        else
            cut(pass, file, start, behind, tag.size, chunk);
    }
    return pass;
}

} // namespace

class TestValidationQueueRandom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sectionsWithAnyNumbersEndAsTheirNumbersSay();
    void everyItemOfAnyContainerIsReportedOnce();
};

void TestValidationQueueRandom::sectionsWithAnyNumbersEndAsTheirNumbersSay()
{
    const QTemporaryDir dir;
    QRandomGenerator random(20);
    const int runs = 400 * qMax(1, qEnvironmentVariableIntValue("LORIX_RANDOM_RUNS"));
    for (int run = 0; run < runs; ++run) {
        SectionSpec spec(QStringLiteral("s"));
        spec.setLeadingBytes(QByteArray(random.bounded(300), 'd') + '\n');
        spec.setTrailingBytes(QByteArray(random.bounded(300), 't'));
        const auto number = [&random] {
            return random.bounded(5) == 0 ? QByteArray() : QByteArray::number(random.bounded(700));
        };
        if (random.bounded(2))
            spec.set("left", number());
        if (random.bounded(2))
            spec.set("size", number());
        ContainerBuilder builder;
        builder.start().section(spec);
        LorixParser parser(Tolerant);
        QVERIFY(parser.open(builder.writeTo(dir.filePath(QStringLiteral("c")))));
        QCOMPARE(parser.getNumSections(), 1);
        const SectionTag tag = *parser.getSection(0);
        // A size of -1 whose marker stands there counts forth and back.
        if (tag.left == tag.size && tag.left < 0)
            continue;

        const int chunk = 1 + static_cast<int>(random.bounded(400));
        const Pass pass = sectionPass(tag, builder.bytes(), chunk);
        QStringList expected;
        qint64 done = 0;
        for (qsizetype step = 0; step < pass.stepBytes.size(); ++step) {
            done += pass.stepBytes.at(step);
            if (step == pass.stepBytes.size() - 1) {
                const QString md5 = QString::fromLatin1(ContainerBuilder::md5(pass.digested));
                expected.append(md5 == tag.md5section ? QStringLiteral("section 0 valid")
                                                      : QStringLiteral("section 0 invalid"));
            }
            const qint64 percent = tag.size == 0 ? 0 : done * 100 / tag.size;
            expected.append(QStringLiteral("percent %1 s").arg(percent));
        }

        ValidationQueue queue(&parser, chunk);
        queue.addValidatees({}, {0});
        SignalRecorder recorder(&queue);
        for (int step = 0; step < 5000 && queue.process(); ++step)
            ;
        QCOMPARE(recorder.lines, expected);
    }
}

void TestValidationQueueRandom::everyItemOfAnyContainerIsReportedOnce()
{
    const QTemporaryDir dir;
    QRandomGenerator random(21);
    const int runs = 300 * qMax(1, qEnvironmentVariableIntValue("LORIX_RANDOM_RUNS"));
    for (int run = 0; run < runs; ++run) {
        ContainerBuilder builder;
        builder.start();
        const int sections = static_cast<int>(random.bounded(4));
        for (int s = 0; s < sections; ++s) {
            SectionSpec spec(QStringLiteral("s"));
            const int files = static_cast<int>(random.bounded(4));
            for (int f = 0; f < files; ++f) {
                FileSpec file(QStringLiteral("f"), QByteArray(random.bounded(2000), 'f'));
                if (random.bounded(2))
                    file.flate();
                spec.file(file);
            }
            builder.section(spec);
        }
        QByteArray bytes = builder.bytes();
        // Damages some bytes, digits among them more often than not.
        for (quint32 damage = random.bounded(4); damage > 0; --damage) {
            const auto at = static_cast<qsizetype>(random.bounded(quint32(bytes.size())));
            bytes[at] = static_cast<char>('0' + random.bounded(10));
        }
        LorixParser parser(Tolerant);
        if (!parser.open(ContainerBuilder::writeFile(dir.filePath(QStringLiteral("c")), bytes)))
            continue;
        ValidationQueue queue(&parser, 1000000);
        queue.repopulate(&parser);
        QList<int> seenSections;
        QList<int> seenFiles;
        connect(&queue, &ValidationQueue::sectionProcessed, &queue,
                [&seenSections](int id) { seenSections.append(id); });
        connect(&queue, &ValidationQueue::fileProcessed, &queue,
                [&seenFiles](int id) { seenFiles.append(id); });
        for (int step = 0; step < 100000 && queue.process(); ++step)
            ;
        QList<int> expectedSections;
        for (int id = parser.getNumSections() - 1; id >= 0; --id)
            expectedSections.append(id);
        QList<int> expectedFiles;
        for (int id = 0; id < parser.getNumFiles(); ++id)
            expectedFiles.append(id);
        QCOMPARE(seenSections, expectedSections);
        QCOMPARE(seenFiles, expectedFiles);
    }
}

QTEST_GUILESS_MAIN(TestValidationQueueRandom)
#include "tst_validationqueue_random.moc"
