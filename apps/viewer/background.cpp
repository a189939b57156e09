// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/background.h>

#include <QThread>

#include <utility>

namespace lorix::viewer {

// What has been given up may go on for a while; it must not outlive what it
// works with.
Background::~Background()
{
    cancel();
    for (QThread* const thread : std::as_const(m_threads)) {
        thread->wait();
        delete thread;
    }
}

void Background::start(const Work& work)
{
    cancel();
    m_cancelled = std::make_shared<std::atomic_bool>(false);
    const auto cancelled = m_cancelled;
    auto result = std::make_shared<Finish>();
    QThread* const thread = QThread::create([this, work, cancelled, result] {
        Finish finish = work([cancelled] { return cancelled->load(); });
        // What is not wanted goes away here, where it keeps nobody waiting.
        if (!cancelled->load())
            *result = std::move(finish);
    });
    connect(thread, &QThread::finished, this, [this, thread, cancelled, result] {
        m_threads.removeOne(thread);
        thread->deleteLater();
        if (cancelled->load())
            return;
        m_cancelled.reset();
        if (*result)
            (*result)();
    });
    m_threads.append(thread);
    thread->start();
}

void Background::cancel()
{
    if (m_cancelled)
        m_cancelled->store(true);
    m_cancelled.reset();
}

} // namespace lorix::viewer
