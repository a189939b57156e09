// SPDX-License-Identifier: BSD-3-Clause
// Opens any bytes as a container, in both modes, and does all that the library
// can do with one: lists, contents, digests, checking and extracting. What the
// queues say is compared with a plain reading in one go and, for one input in
// eight, everything with a slow second reading of the whole format.
#include "fuzzing.h"

#include <container/parsercomparison.h>
#include <lorix/container/inflatewhole.h>
#include <lorix/container/lorixparser.h>
#include <lorix/query/lorixfindquery.h>
#include <lorix/queues/extractionqueue.h>
#include <lorix/queues/storedrange.h>
#include <lorix/queues/validationqueue.h>
#include <lorix/queues/validator.h>
#include <lorix/summary/summarycreator.h>

#include <QHash>
#include <QMap>

using namespace lorix;

namespace {

constexpr std::size_t fewBytes = 6144;
// A small stream inflates to a thousand times its size; many markers may share it.
constexpr qint64 mostOutput = 32 * 1024 * 1024;
constexpr qint64 fewOutput = 256 * 1024;
constexpr qint64 mostItems = 200;

// How much comes out of the files together, as far as somebody wants to know.
qint64 outputOf(const LorixParser& parser)
{
    qint64 output = 0;
    for (const FileTag& file : parser.getFiles()) {
        if (file.compression == QLatin1String("flate"))
            inflateWhole(*parser.getCompressedFile(file.id), [&](const char*, qsizetype count) {
                output += count;
                return output <= mostOutput;
            });
        output += qMax(0, storedSize(file));
    }
    return output;
}

void checkLists(LorixParser& parser)
{
    const QList<SectionTag> sections = parser.getSections();
    const QList<FileTag> files = parser.getFiles();
    require(sections.size() == parser.getNumSections(), "the number of sections is wrong");
    require(files.size() == parser.getNumFiles(), "the number of files is wrong");
    QList<bool> inside(files.size(), false);
    for (qsizetype i = 0; i < sections.size(); ++i) {
        const int id = static_cast<int>(i);
        require(sections.at(i).id == id, "sections are not numbered in order");
        QList<int> expected;
        for (const FileTag& file : files)
            if (parser.fileInSection(file, sections.at(i)))
                expected.append(file.id);
        QList<int> found;
        for (const FileTag& file : parser.getFilesInSection(id)) {
            found.append(file.id);
            inside[file.id] = true;
        }
        require(found == expected, "other files are in the section");
    }
    QList<int> outside;
    for (const FileTag& file : parser.getSectionlessFiles())
        outside.append(file.id);
    for (qsizetype i = 0; i < files.size(); ++i)
        require(files.at(i).id == i && outside.contains(int(i)) != inside.at(i),
                "a file is neither in a section nor outside");
    require(!parser.getSection(-1) && !parser.getFile(parser.getNumFiles()), "an id too many");
}

// What the validation queue says about each item.
struct Verdicts
{
    QMap<int, bool> sections;
    QMap<int, bool> files;
};

Verdicts validated(LorixParser& parser, int chunk)
{
    Verdicts verdicts;
    ValidationQueue queue(&parser, chunk);
    QObject::connect(&queue, &ValidationQueue::sectionProcessed, [&](int id, bool valid) {
        require(!verdicts.sections.contains(id), "a section is checked twice");
        verdicts.sections.insert(id, valid);
    });
    QObject::connect(&queue, &ValidationQueue::fileProcessed, [&](int id, bool valid) {
        require(!verdicts.files.contains(id), "a file is checked twice");
        verdicts.files.insert(id, valid);
    });
    queue.repopulate(&parser);
    while (queue.process()) {
    }
    require(verdicts.sections.size() == parser.getNumSections(), "a section is not checked");
    require(verdicts.files.size() == parser.getNumFiles(), "a file is not checked");
    return verdicts;
}

bool isInside(qint64 start, qint64 size, qint64 fileSize)
{
    return start >= 0 && size >= 0 && start + size <= fileSize;
}

void checkValidation(LorixParser& parser, qint64 fileSize, int chunk)
{
    const Verdicts verdicts = validated(parser, 0);
    // What lies outside has as many bytes as chunks can be read of it.
    bool allInside = true;
    for (const SectionTag& section : parser.getSections()) {
        const qint64 start = qint64(section.position) - section.left;
        allInside = allInside && isInside(start, section.size, fileSize);
    }
    for (const FileTag& file : parser.getFiles()) {
        if (!isInside(storedStart(file), storedSize(file), fileSize)) {
            allInside = false;
            continue;
        }
        Validator whole(file.md5file, storedDigest(file));
        whole.update(parser.getBytes(storedStart(file), storedSize(file)));
        require(verdicts.files.value(file.id) == whole.isValid(), "checked otherwise in one go");
    }
    if (!allInside)
        return;
    const Verdicts again = validated(parser, chunk);
    require(again.sections == verdicts.sections && again.files == verdicts.files,
            "the size of the chunks decides");
}

void checkExtraction(LorixParser& parser)
{
    QHash<int, QString> targets;
    for (int id = 0; id < parser.getNumFiles(); ++id)
        targets.insert(id, scratch().path(QStringLiteral("target%1").arg(id)));
    QMap<int, bool> results;
    ExtractionQueue queue(&parser);
    QObject::connect(&queue, &ExtractionQueue::fileProcessed,
                     [&](int id, bool valid) { results.insert(id, valid); });
    queue.addExtractees(targets);
    while (queue.process()) {
    }
    require(results.size() == targets.size(), "a file is not extracted");
    for (int id = 0; id < parser.getNumFiles(); ++id) {
        QFile target(targets.value(id));
        const QByteArray written = target.open(QIODevice::ReadOnly) ? target.readAll() : "";
        const auto content = parser.getFileContent(id);
        const auto file = parser.getFile(id);
        // Without its digest a stream is written as it is; a stored file may
        // claim two sizes.
        const bool flate = file->compression == QLatin1String("flate");
        if (content && results.value(id) && !content->isEmpty() &&
            (flate ? !file->md5cfile.isEmpty() : file->filesize == file->cfilesize))
            require(written == *content, "extracted otherwise than read");
        const bool known = flate || file->compression == QLatin1String("none");
        require(parser.writeFileToDisk(id, targets.value(id)) == known, "written, or not");
        target.remove();
    }
}

void checkSummaries(LorixParser& parser)
{
    const QList<Summary> summaries = SummaryCreator().createSummaries(parser);
    require(summaries.size() >= parser.getNumSections(), "a section has no summary");
    for (const char* text : {"a:tool == 'tool' && b:title == '1'", "a:filename %matches '*.txt'"})
        LorixFindQuery(QLatin1String(text)).matches(summaries);
}

// Whether the container is small enough for the slow reading too.
bool checkEverything(const QString& path, ParseMode mode, qint64 fileSize, int chunk)
{
    LorixParser parser(mode);
    if (!parser.open(path)) {
        require(parser.getNumSections() == 0 && parser.getNumFiles() == 0, "not open, but lists");
        return true;
    }
    checkLists(parser);
    if (parser.getNumFiles() + parser.getNumSections() > mostItems)
        return false;
    const qint64 output = outputOf(parser);
    if (output > mostOutput)
        return false;
    for (int id = 0; id < parser.getNumFiles(); ++id)
        parser.calcChecksumsForFile(id);
    checkValidation(parser, fileSize, chunk);
    checkExtraction(parser);
    checkSummaries(parser);
    return output < fewOutput;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    silence();
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString path = scratch().write(QStringLiteral("container"), bytes);
    const quint32 choice = hashOf(data, size);
    for (const ParseMode mode : {Strict, Tolerant}) {
        const int chunk = 50 + static_cast<int>(choice % 500);
        if (!checkEverything(path, mode, bytes.size(), chunk) || size > fewBytes || choice % 8 != 0)
            continue;
        Dice dice(choice);
        const QString difference =
            parserDifference(mode, path, bytes, scratch().path(QStringLiteral("target")), dice, 6);
        require(difference.isEmpty(), qPrintable(difference));
    }
    return 0;
}
