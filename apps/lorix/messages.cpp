// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/messages.h>

#include <utility>

namespace lorix::cli {

QString Message::severity() const
{
    if (type == 2)
        return QStringLiteral("error");
    return type == 1 ? QStringLiteral("warning") : QStringLiteral("information");
}

Messages::Messages() = default;

Messages::Messages(std::function<void(const Message&)> take) : m_take(std::move(take)) {}

QList<Message> Messages::takeAll()
{
    return std::exchange(m_kept, {});
}

void Messages::log(const QString& text, int type)
{
    if (m_take)
        m_take({text, type});
    else
        m_kept.append({text, type});
}

} // namespace lorix::cli
