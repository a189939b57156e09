// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/application.h>

#include <lorix/runner/version.h>

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <map>
#include <string>

namespace lorix::cli {

namespace {

// The library's developers' dumps are no business of the person in front of
// the terminal.
int shownDebugLevel = 0;

void showLibraryMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    Q_UNUSED(context)
    const int needed = type == QtDebugMsg || type == QtInfoMsg ? 2 : type == QtWarningMsg ? 1 : 0;
    if (shownDebugLevel < needed)
        return;
    const QByteArray line = text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
}

} // namespace

Application::Application(Console& console)
    : m_console(console),
      m_app("Reads, checks and searches documents that carry their own history", "lorix"),
      m_commands(allCommands())
{
    declareGlobals();
    declareCommands();
}

Application::~Application() = default;

void Application::declareGlobals()
{
    m_app.require_subcommand(1);
    m_app.fallthrough();
    m_app.set_help_all_flag();
    m_app.set_version_flag("--version", "lorix " LORIX_VERSION "\n" + getVersion().toStdString());
    m_app.add_flag("--json", m_options.json,
                   "Answer with one JSON object per input and line (see 'lorix schema')");
    m_app.add_flag("-q,--quiet", m_options.quiet, "No progress and no notes");
    m_app.add_flag("-v,--verbose", m_options.verbose,
                   "Show the library's warnings; twice, its debug output as well");
    const std::map<std::string, Color> colors = {
        {"auto", Color::Auto}, {"always", Color::Always}, {"never", Color::Never}};
    m_app
        .add_option_function<std::string>(
            "--color",
            [this, colors](const std::string& when) { m_console.setColor(colors.at(when)); },
            "When to use colours: auto, always, never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    m_app.footer("'lorix FILE' is short for 'lorix info FILE'. 'lorix help exit-status' says what\n"
                 "the exit codes mean, 'lorix COMMAND --help' what a command takes.");
}

void Application::declareCommands()
{
    for (const auto& command : m_commands) {
        CLI::App* app =
            m_app.add_subcommand(command->name().toStdString(), command->summary().toStdString());
        app->fallthrough();
        command->declare(*app);
        if (!command->examples().isEmpty())
            app->footer("Examples:\n" + command->examples().toStdString());
    }
}

// The first argument that is no option names the command; where it names none,
// it is a file to look at.
QStringList Application::withDefaultCommand(const QStringList& arguments) const
{
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == QLatin1String("--color")) {
            ++i;
            continue;
        }
        if (arguments[i].startsWith(QLatin1Char('-')) && arguments[i].size() > 1 &&
            arguments[i] != QLatin1String("--"))
            continue;
        const auto isNamed = [&](const auto& command) { return command->name() == arguments[i]; };
        if (std::any_of(m_commands.begin(), m_commands.end(), isNamed))
            return arguments;
        QStringList result = arguments;
        result.insert(i, QStringLiteral("info"));
        return result;
    }
    return arguments;
}

int Application::run(const QStringList& arguments)
{
    std::vector<std::string> reversed;
    for (const QString& argument : withDefaultCommand(arguments))
        reversed.insert(reversed.begin(), QFile::encodeName(argument).toStdString());
    int exitCode = Done;
    try {
        m_app.parse(reversed);
        exitCode = runChosen();
    } catch (const CLI::ParseError& error) {
        exitCode = report(error);
    }
    return m_console.flush() ? exitCode : worse(exitCode, Failed);
}

int Application::runChosen()
{
    shownDebugLevel = m_options.verbose;
    qInstallMessageHandler(showLibraryMessage);
    // The dumps are long; where nobody sees them none is composed.
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, m_options.verbose >= 2);
    m_console.setQuiet(m_options.quiet);
    for (const auto& command : m_commands) {
        if (m_app.got_subcommand(command->name().toStdString()))
            return command->run(m_console, m_options);
    }
    return Unusable;
}

int Application::report(const CLI::ParseError& error)
{
    std::ostringstream out;
    std::ostringstream err;
    const bool asked = m_app.exit(error, out, err) == 0;
    m_console.write(QString::fromStdString(out.str()));
    if (asked)
        return Done;
    const QString message = QString::fromStdString(err.str()).section(QLatin1Char('\n'), 0, 0);
    m_console.error(message + QStringLiteral("\nlorix: 'lorix --help' lists the commands, "
                                             "'lorix COMMAND --help' what one takes"));
    return Unusable;
}

} // namespace lorix::cli
