// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/background.h>

#include <QThread>

namespace lorix::viewer {

Background::~Background()
{
    cancel();
}

void Background::start(const Work& work)
{
    cancel();
    m_cancelled = std::make_shared<std::atomic_bool>(false);
    const auto cancelled = m_cancelled;
    m_thread = QThread::create([this, work, cancelled] {
        const Finish finish = work([cancelled] { return cancelled->load(); });
        // cancel() waits for this thread, so that `this` is alive here.
        QMetaObject::invokeMethod(
            this,
            [this, finish, cancelled] {
                if (cancelled->load())
                    return;
                release();
                if (finish)
                    finish();
            },
            Qt::QueuedConnection);
    });
    m_thread->start();
}

void Background::cancel()
{
    if (!m_thread)
        return;
    m_cancelled->store(true);
    release();
}

void Background::release()
{
    m_thread->wait();
    m_thread->deleteLater();
    m_thread = nullptr;
}

} // namespace lorix::viewer
