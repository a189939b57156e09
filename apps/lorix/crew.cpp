// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/crew.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace lorix::cli {

void runCrew(int jobs, const std::function<void()>& here, const std::function<void()>& elsewhere,
             const std::function<void()>& wait)
{
    std::mutex mutex;
    std::condition_variable finished;
    int running = std::max(jobs - 1, 0);
    std::vector<std::thread> threads;
    for (int i = 1; i < jobs; ++i)
        threads.emplace_back([&] {
            elsewhere();
            const std::lock_guard<std::mutex> lock(mutex);
            --running;
            finished.notify_one();
        });
    here();
    std::unique_lock<std::mutex> lock(mutex);
    while (running > 0) {
        finished.wait_for(lock, std::chrono::milliseconds(100));
        wait();
    }
    lock.unlock();
    for (std::thread& thread : threads)
        thread.join();
}

int usefulJobs(int jobs, qint64 items, qint64 bytes)
{
    constexpr qint64 bytesWorthAThread = 1024 * 1024;
    const qint64 useful = std::min(items, bytes / bytesWorthAThread + 1);
    return static_cast<int>(std::clamp<qint64>(useful, 1, std::max(jobs, 1)));
}

} // namespace lorix::cli
