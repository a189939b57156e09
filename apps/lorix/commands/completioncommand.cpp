// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/completioncommand.h>

#include <apps/lorix/completions.h>

namespace lorix::cli {

QString CompletionCommand::summary() const
{
    return QStringLiteral("Print the script that completes calls of lorix in a shell");
}

QString CompletionCommand::examples() const
{
    return QStringLiteral("  source <(lorix completion bash)\n"
                          "  source <(lorix completion zsh)\n"
                          "  lorix completion fish | source\n"
                          "  lorix completion --query 'step:to'");
}

void CompletionCommand::declare(CLI::App& app)
{
    m_program = app.get_parent();
    std::vector<std::string> shells;
    for (const QString& shell : completedShells())
        shells.push_back(shell.toStdString());
    CLI::Option* shell = addText(app, "SHELL", m_shell, "The shell: bash, zsh or fish");
    shell->check(CLI::IsMember(shells));
    m_queryOption = addText(app, "--query", m_query,
                            "Print instead what an unfinished query may become, one on each line")
                        ->excludes(shell);
}

int CompletionCommand::run(Console& console, const GlobalOptions& options)
{
    Q_UNUSED(options)
    if (m_queryOption->count() > 0) {
        for (const QString& query : continuedQueries(m_query))
            console.write(query + u'\n');
        return Done;
    }
    if (m_shell.isEmpty()) {
        console.error(QStringLiteral("name the shell: bash, zsh or fish"));
        return Unusable;
    }
    console.write(completionScript(m_shell, readOptionTable(*m_program)));
    return Done;
}

} // namespace lorix::cli
