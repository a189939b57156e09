// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QObject>

#include <atomic>
#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QThread;
QT_END_NAMESPACE

namespace lorix::viewer {

/// Does one piece of long work beside the window, so that it keeps answering.
///
///     m_background.start([=](const Background::Cancelled& cancelled) {
///         const Answer answer = think(cancelled);           // on a thread of its own
///         return [=] { show(answer); };                     // on the window's thread
///     });
class Background : public QObject
{
    Q_OBJECT

public:
    /// Answers true once the work is not wanted any more.
    using Cancelled = std::function<bool()>;
    /// What to do with the result.
    using Finish = std::function<void()>;
    using Work = std::function<Finish(const Cancelled& cancelled)>;

    explicit Background(QObject* parent = nullptr) : QObject(parent) {}
    ~Background() override;

    /// Begins the work; what was going on before is cancelled. What the work
    /// returns is called when it is done, unless it has been cancelled.
    void start(const Work& work);
    /// Gives up, without waiting until the work has noticed; nothing comes of it
    /// any more. Only the destructor waits.
    void cancel();
    /// Whether there is work that is still wanted.
    bool isBusy() const { return m_cancelled != nullptr; }

private:
    QList<QThread*> m_threads;                     // also of work that has been given up
    std::shared_ptr<std::atomic_bool> m_cancelled; // of what is still wanted
};

} // namespace lorix::viewer
