// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/filecommand.h>

#include <apps/lorix/countline.h>
#include <apps/lorix/interrupt.h>

#include <QJsonDocument>

#include <new>
#include <thread>

namespace lorix::cli {

namespace {

Printout printoutOf(const Answer& answer, bool json)
{
    Printout printout;
    printout.exitCode = answer.exitCode;
    if (json) {
        printout.out = QJsonDocument(answer.json).toJson(QJsonDocument::Compact) + '\n';
    } else {
        printout.out = answer.text.toUtf8();
        printout.errors = answer.errors;
    }
    return printout;
}

bool show(const Printout& printout, Console& console)
{
    console.writeBytes(printout.out);
    for (const QString& error : printout.errors)
        console.error(error);
    return console.flush();
}

} // namespace

void FileCommand::declare(CLI::App& app)
{
    addTexts(app, "FILE", m_inputs.paths, filesDescription());
    app.add_flag("-r,--recursive", m_inputs.recursive,
                 "Look at every file below the folders named; files without a history are passed "
                 "over");
    addText(app, "--files-from", m_inputs.list,
            "Take the names of more files from this list, one on a line; - is standard input")
        ->type_name("FILE");
    app.add_flag("-0,--null", m_inputs.zeroDelimited,
                 "The names in the list end in a zero byte, as 'find -print0' writes them");
    m_selection.declare(app);
    m_jobs = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    app.add_option("--jobs", m_jobs, "How many files are worked on at once")
        ->check(CLI::Range(1, 1024))
        ->default_str("one per processor");
}

bool FileCommand::isSameQuestion(const QJsonObject& answer) const
{
    return answer.value(QLatin1String("command")) == name();
}

int FileCommand::run(Console& console, const GlobalOptions& options)
{
    if (!hasInputs()) {
        console.error(QStringLiteral("FILE is required; 'lorix %1 --help' says more").arg(name()));
        return Unusable;
    }
    const QString problem =
        m_selection.prepare([this](const QJsonObject& answer) { return isSameQuestion(answer); });
    if (!problem.isEmpty()) {
        console.error(problem);
        return Unusable;
    }
    return showAll(console, View{Paint(console.colored()), options.json});
}

int FileCommand::showAll(Console& console, const View& view)
{
    int exitCode = Done;
    CountLine progress(console, !hasSingleInput());
    Lineup lineup(
        hasSingleInput() ? 1 : m_jobs,
        [this, &view](const Input& input) { return workOn(input, view); },
        [&](const Input&, const Printout& printout) {
            // What was printed has to be where a run that goes on begins.
            if (printout.unfinished)
                return false;
            progress.count(printout.skipped, printout.exitCode);
            if (printout.skipped)
                return true;
            exitCode = worse(exitCode, printout.exitCode);
            return show(printout, console);
        });
    bool printing = true;
    m_inputs.forEach([&](const Input& input) {
        if (!m_selection.leavesOut(input))
            printing = lineup.add(input);
        return printing && !Interrupt::requested();
    });
    printing = lineup.finish() && printing;
    if (Interrupt::requested())
        return Interrupted;
    if (m_selection.leftOut() > 0)
        console.note(QStringLiteral("%1 left out, as asked")
                         .arg(counted(m_selection.leftOut(), QStringLiteral("file"),
                                      QStringLiteral("files"))));
    return printing ? exitCode : worse(exitCode, Failed);
}

// Whatever one file does to us, the others still get their turn.
Printout FileCommand::workOn(const Input& input, const View& view) const
{
    Printout printout;
    printout.unfinished = Interrupt::requested();
    if (printout.unfinished)
        return printout;
    try {
        bool skipped = false;
        const Answer answer = examine(input, view, skipped);
        if (!skipped)
            printout = printoutOf(answer, view.json);
        printout.skipped = skipped;
        printout.unfinished = skipped && Interrupt::requested();
    } catch (const std::bad_alloc&) {
        Answer answer = Answer::start(name(), input.path);
        answer.fail(Failed, QStringLiteral("memory.exhausted"), input.path,
                    QStringLiteral("there is not enough memory for it"));
        printout = printoutOf(answer, view.json);
    }
    return printout;
}

bool FileCommand::print(const Answer& answer, Console& console, const GlobalOptions& options)
{
    return show(printoutOf(answer, options.json), console);
}

} // namespace lorix::cli
