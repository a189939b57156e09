// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace lorix::cli {

/// One message of the library: type 0 is information, 1 a warning, 2 an error.
struct Message
{
    QString text;
    int type = 0;

    /// "information", "warning" or "error".
    QString severity() const;
};

/// Receives the library's messages: keeps them, or hands each on at once.
class Messages : public QObject
{
    Q_OBJECT

public:
    /// Keeps the messages in list().
    Messages();
    /// Calls `take` with each message and keeps none.
    explicit Messages(std::function<void(const Message&)> take);

    /// The messages that came since the last call.
    QList<Message> takeAll();

public Q_SLOTS:
    void log(const QString& text, int type);

private:
    std::function<void(const Message&)> m_take;
    QList<Message> m_kept;
};

} // namespace lorix::cli
