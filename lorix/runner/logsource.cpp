// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/logsource.h>

#include <QMetaMethod>
#include <QMetaObject>

namespace lorix {

namespace {

// The meta-object knows only normalised signatures, without the const.
const char* const typedSignature = "log(QString,int)";
const char* const untypedSignature = "log(QString)";

void connectLog(LogSource* source, QObject* receiver, const char* signature,
                int (QMetaObject::*indexOf)(const char*) const)
{
    const int receiverIndex = (receiver->metaObject()->*indexOf)(signature);
    if (receiverIndex < 0)
        return;
    const QMetaObject* sourceMeta = source->metaObject();
    QObject::connect(source, sourceMeta->method(sourceMeta->indexOfSignal(signature)), receiver,
                     receiver->metaObject()->method(receiverIndex));
}

void publish(LogSource* source, QObject* receiver, int (QMetaObject::*indexOf)(const char*) const)
{
    if (!receiver)
        return;
    const bool typed = (receiver->metaObject()->*indexOf)(typedSignature) >= 0;
    connectLog(source, receiver, typed ? typedSignature : untypedSignature, indexOf);
}

} // namespace

LogSource::LogSource(QObject* logTarget)
{
    publishToLogSlot(logTarget);
}

void LogSource::publishToLogSlot(QObject* receiver)
{
    publish(this, receiver, &QMetaObject::indexOfSlot);
}

void LogSource::publishToLogSignal(QObject* relay)
{
    publish(this, relay, &QMetaObject::indexOfSignal);
}

} // namespace lorix
