// SPDX-License-Identifier: BSD-3-Clause
// bench_summary read|walk|create TIMES FILE
//
// Reads a summary text into records, merely walks it with Qt's reader of XML, or
// opens a container and tells its history; each so many times in one process.
#include <lorix/summary/summarycreator.h>
#include <lorix/summary/summaryreader.h>

#include <QFile>
#include <QLoggingCategory>
#include <QXmlStreamReader>

#include <cstdio>

namespace {

qsizetype read(const QString& text)
{
    return lorix::SummaryReader().readSummary(text).files.size();
}

qsizetype walk(const QString& text)
{
    QXmlStreamReader xml(text);
    qsizetype elements = 0;
    while (!xml.atEnd())
        elements += xml.readNext() == QXmlStreamReader::StartElement;
    return xml.hasError() ? 0 : elements;
}

qsizetype create(const QString& path)
{
    lorix::LorixParser parser;
    if (!parser.open(path))
        return 0;
    qsizetype files = 0;
    for (const lorix::Summary& step : lorix::SummaryCreator().createSummaries(parser)) {
        for (const lorix::FileSummary& file : step.files)
            files += file.embedded && file.tagId >= 0;
    }
    return files;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    // As a program runs that shows no debug output.
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, false);
    const QByteArray mode = argv[1];
    const QString path = QFile::decodeName(argv[3]);
    QString text;
    if (mode != "create") {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return 2;
        text = QString::fromUtf8(file.readAll());
    }
    qsizetype found = 0;
    for (int times = QByteArray(argv[2]).toInt(); times > 0; --times)
        found = mode == "read" ? read(text) : mode == "walk" ? walk(text) : create(path);
    std::printf("%lld\n", static_cast<long long>(found));
    return found > 0 ? 0 : 2;
}
