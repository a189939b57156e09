// SPDX-License-Identifier: BSD-3-Clause
#include <support/logrecorder.h>

QStringList LogRecorder::texts() const
{
    QStringList result;
    for (const auto& message : messages)
        result.append(message.first);
    return result;
}

void LogRecorder::log(QString message, int type)
{
    messages.append(qMakePair(message, type));
}
