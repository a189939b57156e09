// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>

namespace lorix::cli {

/// `lorix schema`: the JSON Schema of everything that --json prints.
class SchemaCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("schema"); }
    QString summary() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

    /// The whole schema, put together from one part per command.
    static QJsonObject schema();
};

} // namespace lorix::cli
