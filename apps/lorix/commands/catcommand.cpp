// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/catcommand.h>

#include <apps/lorix/container.h>
#include <apps/lorix/text.h>

#include <lorix/container/inflater.h>

#include <algorithm>

namespace lorix::cli {

namespace {

constexpr int stepBytes = 64 * 1024;

QString cut(const QString& name)
{
    return QStringLiteral("the stored bytes of %1 do not lie inside the document as a whole")
        .arg(quoted(name));
}

// Writes the content piece by piece; what is wrong in words, or nothing.
QString writeContent(const LorixParser& parser, const FileTag& file, Console& console)
{
    const bool flate = file.compression == QLatin1String("flate");
    if (!flate && file.compression != QLatin1String("none"))
        return QStringLiteral("%1 is stored by a method that is not known: %2")
            .arg(quoted(file.filename), quoted(file.compression));
    const qint64 start = qint64(file.position) + file.taglen + file.offset;
    const qint64 size = flate ? file.cfilesize : file.filesize;
    if (size < 0)
        return cut(file.filename);
    Inflater inflater;
    const auto write = [&console](const char* bytes, qsizetype count) {
        console.writeBytes(QByteArray::fromRawData(bytes, count));
    };
    for (qint64 done = 0; done < size; done += stepBytes) {
        const int length = static_cast<int>(std::min<qint64>(stepBytes, size - done));
        const qint64 from = start + done;
        const QByteArray bytes = from > parser.bounds().fileBytes
                                     ? QByteArray()
                                     : parser.getBytes(static_cast<int>(from), length);
        if (bytes.size() != length)
            return cut(file.filename);
        if (!flate)
            console.writeBytes(bytes);
        else if (!inflater.inflatePieces(bytes, write))
            return QStringLiteral("the compressed stream of %1 is damaged")
                .arg(quoted(file.filename));
    }
    if (flate && !inflater.hasFinished())
        return QStringLiteral("the compressed stream of %1 is cut short")
            .arg(quoted(file.filename));
    return {};
}

} // namespace

QString CatCommand::summary() const
{
    return QStringLiteral("Write one embedded file's content to standard output");
}

QString CatCommand::examples() const
{
    return QStringLiteral("  lorix cat report.pdf 3 > mesh.inp\n"
                          "  lorix cat report.pdf 7 | less");
}

void CatCommand::declare(CLI::App& app)
{
    addText(app, "FILE", m_file, "Document to look into")->required();
    app.add_option("ID", m_id, "Number of the embedded file, as 'lorix files' shows it")
        ->required();
}

int CatCommand::run(Console& console, const GlobalOptions& options)
{
    Q_UNUSED(options)
    Answer answer = Answer::start(name(), m_file);
    LorixParser parser;
    bool skipped = false;
    if (!openContainer(parser, {m_file, true, false}, answer, skipped)) {
        console.error(answer.errors.join(QLatin1Char('\n')));
        return answer.exitCode;
    }
    const auto file = parser.getFile(m_id);
    if (!file) {
        console.error(QStringLiteral("%1: there is no embedded file %2; 'lorix files' lists the %3")
                          .arg(printable(m_file))
                          .arg(m_id)
                          .arg(counted(parser.getNumFiles(), QStringLiteral("one there is"),
                                       QStringLiteral("there are"))));
        return Unusable;
    }
    const QString problem = writeContent(parser, *file, console);
    if (!problem.isEmpty())
        console.error(printable(m_file) + QStringLiteral(": ") + problem);
    if (!console.flush()) {
        console.error(QStringLiteral("writing to standard output failed"));
        return Failed;
    }
    return problem.isEmpty() ? Done : No;
}

} // namespace lorix::cli
