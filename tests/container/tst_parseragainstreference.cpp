// SPDX-License-Identifier: BSD-3-Clause
#include "parsercomparison.h"

#include <support/randomcontainer.h>
#include <support/referenceparser.h>

#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

class TestParserAgainstReference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomContainersAreReadAlike();
    void damagedContainersAreReadAlike();
    void randomContainersAreWorthReading();

private:
    QString difference(const QByteArray& bytes, Dice& dice);

    QTemporaryDir m_dir;
};

QString TestParserAgainstReference::difference(const QByteArray& bytes, Dice& dice)
{
    const QString path =
        ContainerBuilder::writeFile(m_dir.filePath(QStringLiteral("container")), bytes);
    const QString target = m_dir.filePath(QStringLiteral("target"));
    for (const ParseMode mode : {Strict, Tolerant}) {
        const QString result = parserDifference(mode, path, bytes, target, dice, 6);
        if (!result.isEmpty())
            return (mode == Strict ? QStringLiteral("strict ") : QStringLiteral("tolerant ")) +
                   result;
    }
    return {};
}

void TestParserAgainstReference::randomContainersAreReadAlike()
{
    for (int run = 0; run < randomRuns(500); ++run) {
        const quint32 seed = randomSeed(1) + static_cast<quint32>(run);
        Dice dice(seed);
        const QString result = difference(randomContainer(dice), dice);
        if (!result.isEmpty())
            QFAIL(qPrintable(QStringLiteral("seed %1: ").arg(seed) + result.left(4000)));
    }
}

void TestParserAgainstReference::damagedContainersAreReadAlike()
{
    for (int run = 0; run < randomRuns(1500); ++run) {
        const quint32 seed = randomSeed(1000000) + static_cast<quint32>(run);
        Dice dice(seed);
        const QString result = difference(randomDamage(dice, randomContainer(dice)), dice);
        if (!result.isEmpty())
            QFAIL(qPrintable(QStringLiteral("seed %1: ").arg(seed) + result.left(4000)));
    }
}

// Comparing is worth nothing where both sides find nothing.
void TestParserAgainstReference::randomContainersAreWorthReading()
{
    int opened = 0;
    int chained = 0;
    int withFiles = 0;
    int withContent = 0;
    int onlyTolerant = 0;
    const int runs = 300;
    for (int run = 0; run < runs; ++run) {
        Dice dice(static_cast<quint32>(run));
        const QByteArray bytes = randomDamage(dice, randomContainer(dice));
        ReferenceParser strict(ReferenceParser::Strict);
        ReferenceParser tolerant(ReferenceParser::Tolerant);
        opened += tolerant.open(bytes);
        strict.open(bytes);
        chained += tolerant.sections().size() > 1;
        onlyTolerant += tolerant.sections().size() > strict.sections().size();
        withFiles += !tolerant.files().isEmpty();
        for (const ReferenceFile& file : tolerant.files())
            withContent += tolerant.content(static_cast<int>(file.id)) != nullptr;
    }
    QVERIFY2(opened > runs * 3 / 4, qPrintable(QString::number(opened)));
    QVERIFY2(chained > runs / 4, qPrintable(QString::number(chained)));
    QVERIFY2(onlyTolerant > runs / 20, qPrintable(QString::number(onlyTolerant)));
    QVERIFY2(withFiles > runs / 2, qPrintable(QString::number(withFiles)));
    QVERIFY2(withContent > runs, qPrintable(QString::number(withContent)));
}

QTEST_GUILESS_MAIN(TestParserAgainstReference)
#include "tst_parseragainstreference.moc"
