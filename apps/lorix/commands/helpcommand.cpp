// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/helpcommand.h>

#include <apps/lorix/manualpage.h>

namespace lorix::cli {

namespace {

const char exitStatusPage[] =
    R"(What the program returns:

  0    done, or the answer is yes
  1    the answer is no: a digest is wrong, nothing matched, the histories differ
  2    the call or the input cannot be used: wrong options, not a container,
       unreadable, a bad query
  3    the work itself failed: the disk is full, a tool is missing
  130  ended by ctrl-C

With several inputs the worst code counts, and one bad file never stops the
rest. Messages go to standard error, the answer alone to standard output.
'lorix add' and 'lorix del' pass on the exit code of the tool they run.
)";

const CLI::App* findCommand(const CLI::App& program, const std::string& name)
{
    for (const CLI::App* command : program.get_subcommands({})) {
        if (command->get_name() == name)
            return command;
    }
    return nullptr;
}

} // namespace

QString HelpCommand::summary() const
{
    return QStringLiteral("Explain a command, or the exit codes ('lorix help exit-status')");
}

void HelpCommand::declare(CLI::App& app)
{
    m_program = app.get_parent();
    addText(app, "TOPIC", m_topic, "A command, or exit-status");
    app.add_flag("--man", m_manual, "Print the manual page lorix(1), for man and troff");
}

int HelpCommand::run(Console& console, const GlobalOptions& options)
{
    Q_UNUSED(options)
    if (m_manual) {
        console.write(manualPage(readOptionTable(*m_program), QString::fromLatin1(exitStatusPage)));
        return Done;
    }
    if (m_topic == QLatin1String("exit-status")) {
        console.write(QString::fromLatin1(exitStatusPage));
        return Done;
    }
    const CLI::App* topic = m_program;
    if (!m_topic.isEmpty())
        topic = findCommand(*m_program, m_topic.toStdString());
    if (!topic) {
        console.error(QStringLiteral("there is no help on \"%1\"; 'lorix help' lists the commands")
                          .arg(m_topic));
        return Unusable;
    }
    console.write(QString::fromStdString(topic->help(topic == m_program ? "" : "lorix")));
    return Done;
}

} // namespace lorix::cli
