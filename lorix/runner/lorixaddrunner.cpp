// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/lorixaddrunner.h>

namespace lorix {

LorixaddRunner::LorixaddRunner(QObject* logTarget)
    : LorixRunner(QStringLiteral("lorixadd"), logTarget)
{}

QStringList LorixaddRunner::toolArguments(const QString&) const
{
    return {QStringLiteral("--stdin")};
}

QByteArray LorixaddRunner::toolInput(const QString& parameter) const
{
    return parameter.toLocal8Bit();
}

} // namespace lorix
