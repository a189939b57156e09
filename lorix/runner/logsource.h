// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QObject>
#include <QString>

namespace lorix {

/// Base of every class that reports something while it works.
///
/// Nothing in the library prints: a message is the emission of the signal
/// log(), and whoever wants to see it is connected to that signal. The usual
/// way is to hand a receiver to the constructor:
///
///     class Window : public QObject { ... public slots: void log(QString message, int type); };
///     LorixParser parser(Tolerant, &window);
///
/// Messages are complete texts; several end in a line break of their own.
/// Types: 0 information, 1 warning, 2 error.
class LORIX_EXPORT LogSource : public QObject
{
    Q_OBJECT

public:
    /// Makes an object without parent. `logTarget` is a receiver of messages,
    /// not an owner: it is connected as publishToLogSlot() does it, and may be
    /// null. It must be a live object; when it is destroyed, the connection
    /// ends by itself.
    explicit LogSource(QObject* logTarget);

    /// Connects the messages to the slot log(QString, int) of `receiver`, or,
    /// where it has none, to its slot log(QString), which gets the same
    /// messages without their type. A null receiver, and one that has neither
    /// slot, is left alone.
    void publishToLogSlot(QObject* receiver);

    /// Connects the messages to the signal log(QString, int) of `relay`, or,
    /// where it has none, to its signal log(QString), so that they are passed
    /// on. A null relay, and one that has neither signal, is left alone.
    void publishToLogSignal(QObject* relay);

Q_SIGNALS:
    /// One message. The default argument makes the meta-object hold two
    /// signals, log(QString,int) and log(QString), that one emission serves.
    void log(QString message, int type = 0);
};

} // namespace lorix
