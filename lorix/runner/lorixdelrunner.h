// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/runner/lorixrunner.h>

namespace lorix {

/// Runs the delete tool, "lorixdel", which removes the newest workflow step
/// from a container. The parameter of runProcess() is the tool's one argument:
/// the container's path, or what ArgFile::getUndoWorkflowStep() gives.
class LORIX_EXPORT LorixdelRunner : public LorixRunner
{
    Q_OBJECT

public:
    explicit LorixdelRunner(QObject* logTarget = nullptr);

protected:
    QStringList toolArguments(const QString& parameter) const override;
};

} // namespace lorix
