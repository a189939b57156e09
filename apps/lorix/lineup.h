// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/inputs.h>

#include <QByteArray>
#include <QStringList>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace lorix::cli {

/// What is printed about one input, as it goes to the two streams.
struct Printout
{
    int exitCode = 0;
    bool skipped = false;    ///< There is nothing to print or to count.
    bool unfinished = false; ///< Nor anything behind it: the person has stopped the work.
    QByteArray out;
    QStringList errors;
};

/// Works on any number of inputs with several threads, and shows what came of
/// them in the order in which they were added.
///
///     Lineup lineup(jobs, work, show);
///     while (...)
///         if (!lineup.add(input))
///             break;
///     lineup.finish();
///
/// Memory stays bounded however many inputs there are and however long one of
/// them takes: add() waits when `mostWaiting` inputs are not shown yet, and no
/// other input is begun while printouts of more than `mostBytes` wait behind
/// one that is still worked on.
class Lineup
{
public:
    /// Called on several threads at once; must not throw.
    using Work = std::function<Printout(const Input&)>;
    /// Called for one input at a time, on any of the threads; false ends it all.
    using Show = std::function<bool(const Input&, const Printout&)>;

    /// With one job everything happens on the calling thread, within add().
    Lineup(int jobs, Work work, Show show);
    /// Waits for what is being worked on; what is not begun is dropped.
    ~Lineup();
    Lineup(const Lineup&) = delete;
    Lineup& operator=(const Lineup&) = delete;

    /// Hands over an input. False once show has returned false.
    bool add(const Input& input);
    /// Waits until all is shown. False when show has returned false.
    bool finish();

    /// How many inputs may wait to be shown with so many jobs.
    static qsizetype mostWaiting(int jobs) { return 64 + 4 * qsizetype(jobs); }
    static constexpr qsizetype mostBytes = 64 * 1024 * 1024;

private:
    struct Place
    {
        Input input;
        Printout printout;
        bool done = false;
    };

    void workAlong();
    Place* nextToTake();
    void showFinished(std::unique_lock<std::mutex>& lock);

    const int m_jobs;
    const Work m_work;
    const Show m_show;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Place> m_places; // in the order of the inputs; references stay valid
    size_t m_taken = 0;         // so many at the front are taken
    qsizetype m_bytes = 0;      // of the printouts that wait
    bool m_showing = false;
    bool m_ended = false;
    std::vector<std::thread> m_threads;
};

} // namespace lorix::cli
