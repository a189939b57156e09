// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/delcommand.h>

#include <apps/lorix/interrupt.h>
#include <apps/lorix/toolrun.h>

#include <lorix/runner/lorixdelrunner.h>

namespace lorix::cli {

QString DelCommand::summary() const
{
    return QStringLiteral("Remove the newest step from a document, through the delete tool");
}

QString DelCommand::examples() const
{
    return QStringLiteral("  lorix del report.pdf\n"
                          "  lorix del '<DelWorkflowStep>report.pdf</DelWorkflowStep>'");
}

void DelCommand::declare(CLI::App& app)
{
    addTexts(app, "FILE", m_files, "Documents, or the undo description of a step")->required();
    addTexts(app, "--tool-path", m_toolPaths,
             "Folder to search for the tool before the program's own; may be given several times")
        ->type_name("FOLDER")
        ->allow_extra_args(false);
}

int DelCommand::run(Console& console, const GlobalOptions& options)
{
    int exitCode = Done;
    for (const QString& file : qAsConst(m_files)) {
        ToolRun tool(name(), file, m_toolPaths, console, options);
        // The tool would take a leading hyphen for an option.
        const QString parameter = file.startsWith(u'-') ? QStringLiteral("./") + file : file;
        exitCode = worse(exitCode, tool.run<LorixdelRunner>(parameter));
        if (Interrupt::requested())
            return Interrupted;
    }
    return exitCode;
}

} // namespace lorix::cli
