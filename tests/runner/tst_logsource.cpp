// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/logsource.h>
#include <support/logrecorder.h>

#include <QMetaMethod>
#include <QTest>

using namespace lorix;

namespace {

class UntypedRecorder : public QObject
{
    Q_OBJECT

public:
    QStringList messages;

public Q_SLOTS:
    void log(QString message) { messages.append(message); }
};

class UntypedRelay : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void log(QString message);
};

class TypedRelay : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void log(QString message, int type);
};

using Messages = QList<QPair<QString, int>>;

} // namespace

class TestLogSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void metaObjectHoldsBothSignalsTypedOneFirst();
    void constructorArgumentReceivesButDoesNotOwn();
    void receiverWithTypedSlotGetsTextAndType();
    void receiverWithUntypedSlotGetsTextAlone();
    void relayPassesMessagesOn();
    void untypedRelayPassesTextOn();
    void receiverWithoutSlotIsLeftAlone();
    void nullReceiversDoNothing();
};

void TestLogSource::metaObjectHoldsBothSignalsTypedOneFirst()
{
    const QMetaObject& meta = LogSource::staticMetaObject;
    const int typed = meta.indexOfSignal("log(QString,int)");
    const int untyped = meta.indexOfSignal("log(QString)");
    QVERIFY(typed >= meta.methodOffset());
    QVERIFY(untyped > typed);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
}

void TestLogSource::constructorArgumentReceivesButDoesNotOwn()
{
    LogRecorder recorder;
    LogSource source(&recorder);
    QCOMPARE(source.parent(), nullptr);
    Q_EMIT source.log(QStringLiteral("hello"), 2);
    QCOMPARE(recorder.messages, Messages({{QStringLiteral("hello"), 2}}));
}

void TestLogSource::receiverWithTypedSlotGetsTextAndType()
{
    LogRecorder recorder;
    LogSource source(nullptr);
    source.publishToLogSlot(&recorder);
    Q_EMIT source.log(QStringLiteral("a"), 0);
    Q_EMIT source.log(QStringLiteral("b"), 1);
    QCOMPARE(recorder.messages, Messages({{QStringLiteral("a"), 0}, {QStringLiteral("b"), 1}}));
}

void TestLogSource::receiverWithUntypedSlotGetsTextAlone()
{
    UntypedRecorder recorder;
    LogSource source(&recorder);
    Q_EMIT source.log(QStringLiteral("a"), 2);
    QCOMPARE(recorder.messages, QStringList({QStringLiteral("a")}));
}

void TestLogSource::relayPassesMessagesOn()
{
    LogRecorder recorder;
    TypedRelay relay;
    connect(&relay, SIGNAL(log(QString, int)), &recorder, SLOT(log(QString, int)));
    LogSource source(nullptr);
    source.publishToLogSignal(&relay);
    Q_EMIT source.log(QStringLiteral("a"), 2);
    QCOMPARE(recorder.messages, Messages({{QStringLiteral("a"), 2}}));

    LogSource last(&recorder);
    LogSource first(nullptr);
    first.publishToLogSignal(&last);
    Q_EMIT first.log(QStringLiteral("b"), 1);
    QCOMPARE(recorder.messages.last(), qMakePair(QStringLiteral("b"), 1));
}

void TestLogSource::untypedRelayPassesTextOn()
{
    UntypedRecorder recorder;
    UntypedRelay relay;
    connect(&relay, SIGNAL(log(QString)), &recorder, SLOT(log(QString)));
    LogSource source(nullptr);
    source.publishToLogSignal(&relay);
    Q_EMIT source.log(QStringLiteral("a"), 2);
    QCOMPARE(recorder.messages, QStringList({QStringLiteral("a")}));
}

void TestLogSource::receiverWithoutSlotIsLeftAlone()
{
    QObject plain;
    LogSource source(&plain);
    source.publishToLogSlot(&plain);
    source.publishToLogSignal(&plain);
    Q_EMIT source.log(QStringLiteral("a"), 0);
}

void TestLogSource::nullReceiversDoNothing()
{
    LogSource source(nullptr);
    source.publishToLogSlot(nullptr);
    source.publishToLogSignal(nullptr);
    Q_EMIT source.log(QStringLiteral("a"), 0);
}

QTEST_GUILESS_MAIN(TestLogSource)
#include "tst_logsource.moc"
