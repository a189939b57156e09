// SPDX-License-Identifier: BSD-3-Clause
#include <support/signalrecorder.h>

#include <QMetaMethod>
#include <QRegularExpression>

namespace {

QString verdict(bool valid)
{
    return valid ? QStringLiteral("valid") : QStringLiteral("invalid");
}

} // namespace

SignalRecorder::SignalRecorder(QObject* queue)
{
    for (const char* signature : {"sectionProcessed(int,bool)", "fileProcessed(int,bool)",
                                  "savedFileProcessed(QString,bool)",
                                  "percentFinishedChanged(int,QString)", "log(QString,int)"}) {
        const int signalIndex = queue->metaObject()->indexOfSignal(signature);
        if (signalIndex < 0)
            continue;
        connect(queue, queue->metaObject()->method(signalIndex), this,
                metaObject()->method(metaObject()->indexOfSlot(signature)));
    }
}

QStringList SignalRecorder::take()
{
    QStringList result;
    result.swap(lines);
    return result;
}

void SignalRecorder::sectionProcessed(int id, bool valid)
{
    lines.append(QStringLiteral("section %1 %2").arg(id).arg(verdict(valid)));
}

void SignalRecorder::fileProcessed(int id, bool valid)
{
    lines.append(QStringLiteral("file %1 %2").arg(id).arg(verdict(valid)));
}

void SignalRecorder::savedFileProcessed(QString filename, bool valid)
{
    lines.append(QStringLiteral("saved %1 %2").arg(filename, verdict(valid)));
}

void SignalRecorder::percentFinishedChanged(int percent, QString name)
{
    lines.append(QStringLiteral("percent %1 %2").arg(percent).arg(name));
}

void SignalRecorder::log(QString message, int type)
{
    static const QRegularExpression timing(QStringLiteral("^(.*): \\d+\\.\\d\\ds\\n$"));
    const auto match = timing.match(message);
    lines.append(match.hasMatch() && type == 0
                     ? QStringLiteral("time %1").arg(match.captured(1))
                     : QStringLiteral("log %1 %2").arg(type).arg(message));
}
