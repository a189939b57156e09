// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/version.h>

QString getVersion()
{
    return QStringLiteral("lorixlib 1.83.0.2990 of Jun 21 2013");
}

QString getReleaseData()
{
    return QStringLiteral("Jun 21 2013");
}
