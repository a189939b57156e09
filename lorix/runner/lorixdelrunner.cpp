// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/lorixdelrunner.h>

namespace lorix {

LorixdelRunner::LorixdelRunner(QObject* logTarget)
    : LorixRunner(QStringLiteral("lorixdel"), logTarget)
{}

QStringList LorixdelRunner::toolArguments(const QString& parameter) const
{
    return {parameter};
}

} // namespace lorix
