// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/lineup.h>

#include <utility>

namespace lorix::cli {

Lineup::Lineup(int jobs, Work work, Show show)
    : m_jobs(jobs), m_work(std::move(work)), m_show(std::move(show))
{}

Lineup::~Lineup()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ended = true;
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

bool Lineup::add(const Input& input)
{
    if (m_jobs <= 1) {
        m_ended = m_ended || !m_show(input, m_work(input));
        return !m_ended;
    }
    // Not more threads than there are inputs.
    if (m_threads.size() < static_cast<size_t>(m_jobs))
        m_threads.emplace_back([this] { workAlong(); });
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] {
        return m_ended || m_places.size() < static_cast<size_t>(mostWaiting(m_jobs));
    });
    if (m_ended)
        return false;
    Place& place = m_places.emplace_back();
    place.input = input;
    m_changed.notify_all();
    return true;
}

bool Lineup::finish()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return m_ended || m_places.empty(); });
    return !m_ended;
}

// The first place that nobody works on yet, null where none may be begun. The
// very first may always be: until it is shown nothing else can be.
Lineup::Place* Lineup::nextToTake()
{
    if (m_taken == m_places.size() || (m_taken > 0 && m_bytes > mostBytes))
        return nullptr;
    return &m_places[m_taken++];
}

void Lineup::workAlong()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_ended) {
        Place* place = nextToTake();
        if (!place) {
            m_changed.wait(lock);
            continue;
        }
        lock.unlock();
        Printout printout = m_work(place->input);
        lock.lock();
        m_bytes += printout.out.size();
        place->printout = std::move(printout);
        place->done = true;
        showFinished(lock);
    }
}

// Whoever finishes an input shows it and all that waited behind it, so that
// nothing is held back while the caller of add() looks for the next one.
void Lineup::showFinished(std::unique_lock<std::mutex>& lock)
{
    if (m_showing)
        return;
    m_showing = true;
    while (!m_ended && !m_places.empty() && m_places.front().done) {
        const Place& place = m_places.front();
        lock.unlock();
        const bool more = m_show(place.input, place.printout);
        lock.lock();
        m_ended = m_ended || !more;
        m_bytes -= place.printout.out.size();
        m_places.pop_front();
        --m_taken;
        m_changed.notify_all();
    }
    m_showing = false;
}

} // namespace lorix::cli
