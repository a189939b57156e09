// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/historyloader.h>

namespace lorix::viewer {

HistoryLoader::HistoryLoader(QObject* logTarget, QObject* parent)
    : QObject(parent), m_logTarget(logTarget)
{}

void HistoryLoader::start(const QString& path)
{
    m_background.start([this, path](const Background::Cancelled& cancelled) -> Background::Finish {
        QString problem;
        const auto tell = [this, cancelled](int steps) {
            QMetaObject::invokeMethod(
                this,
                [this, cancelled, steps] {
                    if (!cancelled())
                        Q_EMIT progress(steps);
                },
                Qt::QueuedConnection);
        };
        const auto history = History::read(path, m_logTarget, cancelled, problem, tell);
        return [this, path, history, problem] {
            if (history)
                Q_EMIT loaded(history);
            else
                Q_EMIT failed(path, problem);
        };
    });
}

} // namespace lorix::viewer
