// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringList>
#include <QtGlobal>

/// Takes everything written to the debug stream while it lives, one entry per
/// statement, and gives the stream back when it dies. One at a time.
class DebugRecorder
{
public:
    DebugRecorder()
    {
        lines().clear();
        m_previous = qInstallMessageHandler(&DebugRecorder::record);
    }
    ~DebugRecorder() { qInstallMessageHandler(m_previous); }
    DebugRecorder(const DebugRecorder&) = delete;
    DebugRecorder& operator=(const DebugRecorder&) = delete;

    /// What was written since the last call.
    QStringList take()
    {
        QStringList result;
        result.swap(lines());
        return result;
    }

private:
    static QStringList& lines()
    {
        static QStringList recorded;
        return recorded;
    }

    static void record(QtMsgType, const QMessageLogContext&, const QString& message)
    {
        lines().append(message);
    }

    QtMessageHandler m_previous = nullptr;
};
