// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/runner/lorixrunner.h>

namespace lorix {

/// Runs the add tool, "lorixadd", which adds a workflow step to a container.
/// The parameter of runProcess() is the text of an argument file, as
/// ArgFile::toCommandline() gives it; the tool gets the argument "--stdin" and
/// reads the text, in the local encoding, from its standard input.
class LORIX_EXPORT LorixaddRunner : public LorixRunner
{
    Q_OBJECT

public:
    explicit LorixaddRunner(QObject* logTarget = nullptr);

protected:
    QStringList toolArguments(const QString& parameter) const override;
    QByteArray toolInput(const QString& parameter) const override;
};

} // namespace lorix
