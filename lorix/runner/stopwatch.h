// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/runner/logsource.h>

#include <ctime>

namespace lorix {

/// Measures how much processor time a piece of work takes and reports it as a
/// message of the form "name: 2.50s" with a line feed.
class LORIX_EXPORT StopWatch : public LogSource
{
    Q_OBJECT

public:
    /// A watch that stands still; its messages go to `logTarget` (see LogSource).
    explicit StopWatch(QObject* logTarget);

    /// Ends a running measurement as stop(true) does.
    ~StopWatch() override;

    /// Begins a measurement called `name`. One that is still running ends
    /// first, and is reported unless `silent`.
    void start(const QString& name, bool silent);

    /// Ends the measurement. If one was running and `report` is set, emits
    /// log(name + ": " + seconds + "s\n", 0), with two decimals. The seconds
    /// are ticks of the standard clock() divided by 100, whatever the
    /// platform's tick rate.
    void stop(bool report);

private:
    QString m_name;
    bool m_running = false;
    std::clock_t m_startTicks = 0;
};

} // namespace lorix
