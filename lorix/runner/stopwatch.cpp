// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/stopwatch.h>

namespace lorix {

namespace {
// Not CLOCKS_PER_SEC: receivers of the messages count on this unit.
constexpr double ticksPerSecond = 100.0;
} // namespace

StopWatch::StopWatch(QObject* logTarget) : LogSource(logTarget) {}

StopWatch::~StopWatch()
{
    stop(true);
}

void StopWatch::start(const QString& name, bool silent)
{
    stop(!silent);
    m_startTicks = std::clock();
    m_running = true;
    m_name = name;
}

void StopWatch::stop(bool report)
{
    const bool wasRunning = m_running;
    m_running = false;
    if (!wasRunning || !report)
        return;
    const double seconds = static_cast<double>(std::clock() - m_startTicks) / ticksPerSecond;
    Q_EMIT log(m_name + QStringLiteral(": ") + QString::number(seconds, 'f', 2) +
                   QStringLiteral("s\n"),
               0);
}

} // namespace lorix
