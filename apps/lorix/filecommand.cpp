// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/filecommand.h>

#include <apps/lorix/interrupt.h>

#include <QJsonDocument>

#include <deque>
#include <future>
#include <thread>

namespace lorix::cli {

namespace {

struct Examined
{
    Answer answer;
    bool skipped = false;
};

} // namespace

void FileCommand::declare(CLI::App& app)
{
    addTexts(app, "FILE", m_inputs.paths, filesDescription())->required();
    app.add_flag("-r,--recursive", m_inputs.recursive,
                 "Look at every file below the folders named; files without a history are passed "
                 "over");
}

void FileCommand::declareJobs(CLI::App& app, int defaultJobs)
{
    m_jobs = defaultJobs > 0 ? defaultJobs
                             : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    app.add_option("--jobs", m_jobs, "How many files are worked on at once")
        ->check(CLI::Range(1, 1024))
        ->capture_default_str();
}

int FileCommand::run(Console& console, const GlobalOptions& options)
{
    const View view{Paint(console.colored()), options.json};
    int exitCode = Done;
    bool printing = true;
    // At most as many answers as jobs wait in memory, oldest first.
    std::deque<std::future<Examined>> running;
    const auto finishOldest = [&] {
        const Examined examined = running.front().get();
        running.pop_front();
        if (examined.skipped || !printing)
            return;
        exitCode = worse(exitCode, examined.answer.exitCode);
        printing = print(examined.answer, console, options);
    };
    const std::launch policy = m_jobs > 1 ? std::launch::async : std::launch::deferred;
    m_inputs.forEach([&](const Input& input) {
        running.push_back(std::async(policy, [this, input, view] {
            Examined examined;
            examined.answer = examine(input, view, examined.skipped);
            return examined;
        }));
        while (running.size() >= static_cast<size_t>(m_jobs))
            finishOldest();
        return printing && !Interrupt::requested();
    });
    while (!running.empty())
        finishOldest();
    if (Interrupt::requested())
        return Interrupted;
    return printing ? exitCode : worse(exitCode, Failed);
}

bool FileCommand::print(const Answer& answer, Console& console, const GlobalOptions& options) const
{
    if (options.json) {
        console.writeBytes(QJsonDocument(answer.json).toJson(QJsonDocument::Compact) + '\n');
    } else {
        console.write(answer.text);
        for (const QString& error : answer.errors)
            console.error(error);
    }
    return console.flush();
}

} // namespace lorix::cli
