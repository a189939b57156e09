// SPDX-License-Identifier: BSD-3-Clause
#include "parsercomparison.h"

#include <support/debugrecorder.h>
#include <support/logrecorder.h>
#include <support/referenceparser.h>

#include <QFile>
#include <QStringList>

using namespace lorix;

namespace {

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString text(const QSharedPointer<QByteArray>& bytes)
{
    return bytes ? QString::fromLatin1(bytes->toHex()) : QStringLiteral("null");
}

template <typename Section>
QString text(const QSharedPointer<Section>& section)
{
    return section ? describeSection(*section) : QStringLiteral("null");
}

template <typename File>
QString filesText(const QList<File>& files)
{
    QStringList lines;
    for (const File& file : files)
        lines.append(describeFile(file));
    return lines.join(QLatin1Char('\n'));
}

template <typename Section>
QString sectionsText(const QList<Section>& sections)
{
    QStringList lines;
    for (const Section& section : sections)
        lines.append(describeSection(section));
    return lines.join(QLatin1Char('\n'));
}

QString idsText(const QList<FileTag>& files)
{
    QStringList ids;
    for (const FileTag& file : files)
        ids.append(QString::number(file.id));
    return ids.join(QLatin1Char(' '));
}

QString idsText(const QList<qint64>& ids)
{
    QStringList result;
    for (const qint64 id : ids)
        result.append(QString::number(id));
    return result.join(QLatin1Char(' '));
}

// Collects the first difference under the name of what was asked.
class Comparison
{
public:
    bool same(const QString& what, const QString& actual, const QString& expected)
    {
        if (m_difference.isEmpty() && actual != expected)
            m_difference = what + QStringLiteral("\n  actual:   ") + actual +
                           QStringLiteral("\n  expected: ") + expected;
        return m_difference.isEmpty();
    }

    QString difference() const { return m_difference; }

private:
    QString m_difference;
};

void compareExtraction(Comparison& comparison, LorixParser& parser, LogRecorder& log,
                       const ReferenceParser& reference, int id, const QString& target)
{
    QFile::remove(target);
    log.messages.clear();
    DebugRecorder debug;
    const bool succeeded = parser.writeFileToDisk(id, target);
    const QStringList notes = debug.take();
    QStringList lines = log.texts();
    if (succeeded && !lines.isEmpty())
        lines.last().truncate(lines.last().indexOf(QStringLiteral("total: ")) + 7);
    QFile file(target);
    const bool created = file.open(QIODevice::ReadOnly);
    const QByteArray bytes = created ? file.readAll() : QByteArray();
    const ReferenceExtraction expected = reference.extract(id, target);
    const QString name = QStringLiteral("extraction of %1: ").arg(id);
    comparison.same(name + QStringLiteral("result"), text(succeeded), text(expected.succeeded));
    comparison.same(name + QStringLiteral("log"), lines.join(QLatin1Char('\n')),
                    expected.log.join(QLatin1Char('\n')));
    comparison.same(name + QStringLiteral("created"), text(created), text(expected.targetCreated));
    comparison.same(name + QStringLiteral("bytes"), QString::fromLatin1(bytes.toHex()),
                    QString::fromLatin1(expected.target.toHex()));
    const bool noted = notes.size() == 1 && notes.first().startsWith(QStringLiteral("unextract")) &&
                       notes.first().contains(QLatin1Char('"') + target + QLatin1Char('"'));
    comparison.same(name + QStringLiteral("note"), text(noted), text(expected.inflated));
}

void compareFile(Comparison& comparison, LorixParser& parser, const ReferenceParser& reference,
                 int id)
{
    const QString name = QStringLiteral("file %1: ").arg(id);
    const auto stored = parser.getCompressedFile(id);
    DebugRecorder silence;
    comparison.same(name + QStringLiteral("stored"), text(stored),
                    text(QSharedPointer<QByteArray>::create(reference.storedBytes(id))));
    comparison.same(name + QStringLiteral("content"), text(parser.getFileContent(id)),
                    text(reference.content(id)));
    const auto digests = parser.calcChecksumsForFile(id);
    const auto expected = reference.checksums(id);
    comparison.same(name + QStringLiteral("first digest"), digests.first, expected.first);
    comparison.same(name + QStringLiteral("second digest"), digests.second, expected.second);
    QByteArray data = stored ? *stored : QByteArray();
    const QByteArray before = data;
    const auto size = static_cast<unsigned int>(id * 100);
    const QByteArray inflated = parser.decompressBytes(data, size);
    comparison.same(name + QStringLiteral("decompressBytes"), QString::fromLatin1(inflated.toHex()),
                    QString::fromLatin1(ReferenceParser::inflateAll(before).toHex()));
    const char head[4] = {0, 0, static_cast<char>(size >> 8), static_cast<char>(size)};
    comparison.same(name + QStringLiteral("argument of decompressBytes"),
                    QString::fromLatin1(data.toHex()),
                    QString::fromLatin1((QByteArray(head, 4) + before).toHex()));
    comparison.same(name + QStringLiteral("qUncompress"), QString::fromLatin1(inflated.toHex()),
                    QString::fromLatin1(qUncompress(QByteArray(head, 4) + before).toHex()));
}

void compareLists(Comparison& comparison, const LorixParser& parser,
                  const ReferenceParser& reference)
{
    comparison.same(QStringLiteral("sections"), sectionsText(parser.getSections()),
                    sectionsText(reference.sections()));
    comparison.same(QStringLiteral("files"), filesText(parser.getFiles()),
                    filesText(reference.files()));
    if (!comparison.difference().isEmpty())
        return;
    for (int id = -1; id <= reference.sections().size(); ++id)
        comparison.same(QStringLiteral("files in section %1").arg(id),
                        idsText(parser.getFilesInSection(id)), idsText(reference.idsInSection(id)));
    comparison.same(QStringLiteral("sectionless"), idsText(parser.getSectionlessFiles()),
                    idsText(reference.sectionlessIds()));
}

// The searches may be called at any time and go on from where the last one left
// the iterator.
void compareCall(Comparison& comparison, LorixParser& parser, ReferenceParser& reference,
                 Dice& dice, int size)
{
    switch (dice.below(6)) {
    case 0:
        comparison.same(QStringLiteral("headerFound"), text(parser.headerFound()),
                        text(reference.headerFound()));
        break;
    case 1:
        comparison.same(QStringLiteral("findLastSection"), text(parser.findLastSection()),
                        text(reference.findLastSection()));
        break;
    case 2:
        comparison.same(QStringLiteral("findFiles"), filesText(parser.findFiles()),
                        filesText(reference.findFiles()));
        break;
    case 3:
        comparison.same(QStringLiteral("readSections"), sectionsText(parser.readSections()),
                        sectionsText(reference.readSections()));
        break;
    default: {
        SectionTag tag;
        ReferenceSection referenceTag;
        tag.position = dice.between(-5, size + 5);
        tag.previousmarker = dice.between(-2, dice.once(2) ? size : 5);
        referenceTag.position = tag.position;
        referenceTag.previousmarker = tag.previousmarker;
        comparison.same(
            QStringLiteral("findPrevSection %1-%2").arg(tag.position).arg(tag.previousmarker),
            text(parser.findPrevSection(tag)), text(reference.findPrevSection(referenceTag)));
    }
    }
}

} // namespace

QString parserDifference(ParseMode mode, const QString& path, const QByteArray& bytes,
                         const QString& target, Dice& dice, int calls)
{
    LogRecorder log;
    LorixParser parser(mode, &log);
    ReferenceParser reference(mode == Strict ? ReferenceParser::Strict : ReferenceParser::Tolerant);
    Comparison comparison;
    comparison.same(QStringLiteral("open"), text(parser.open(path)), text(reference.open(bytes)));
    if (comparison.difference().isEmpty())
        compareLists(comparison, parser, reference);
    if (comparison.difference().isEmpty()) {
        const int count = static_cast<int>(reference.files().size());
        comparison.same(QStringLiteral("messages of open"), QString::number(log.messages.size()),
                        QStringLiteral("0"));
        for (int id = 0; id < count; ++id)
            compareFile(comparison, parser, reference, id);
        for (int id = -1; id <= count; ++id)
            compareExtraction(comparison, parser, log, reference, id, target);
    }
    for (int call = 0; call < calls && comparison.difference().isEmpty(); ++call)
        compareCall(comparison, parser, reference, dice, static_cast<int>(bytes.size()));
    return comparison.difference();
}
