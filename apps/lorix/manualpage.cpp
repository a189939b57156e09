// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/manualpage.h>

#include <algorithm>

namespace lorix::cli {

namespace {

// Text in which troff finds nothing to interpret; hyphens stay what is typed.
QString escaped(const QString& text)
{
    QString result;
    for (const QChar c : text) {
        if (c == u'\\')
            result += QLatin1String("\\e");
        else if (c == u'-')
            result += QLatin1String("\\-");
        else if (c == u'\'')
            result += QLatin1String("\\(aq");
        else if (c == u'^')
            result += QLatin1String("\\(ha");
        else if (c == u'~')
            result += QLatin1String("\\(ti");
        else
            result += c;
    }
    return result.startsWith(u'.') ? QLatin1String("\\&") + result : result;
}

QString bold(const QString& text)
{
    return QLatin1String("\\fB") + escaped(text) + QLatin1String("\\fR");
}

QString italic(const QString& text)
{
    return QLatin1String("\\fI") + escaped(text) + QLatin1String("\\fR");
}

// Lines that are to stay as they are.
QString verbatim(const QString& lines)
{
    QString result = QStringLiteral(".nf\n");
    for (const QString& line : lines.split(u'\n'))
        result += escaped(line) + u'\n';
    return result + QStringLiteral(".fi\n");
}

QString sentence(const QString& text)
{
    return escaped(text) + QLatin1String(text.endsWith(u'.') ? "\n" : ".\n");
}

QString remarks(const OptionEntry& option)
{
    QString text;
    if (!option.choices.isEmpty()) {
        const bool listed = std::all_of(
            option.choices.begin(), option.choices.end(),
            [&option](const QString& choice) { return option.description.contains(choice); });
        if (!listed)
            text += QStringLiteral("Allowed: %1.\n")
                        .arg(escaped(option.choices.join(QLatin1String(", "))));
    }
    QStringList facts;
    if (!option.range.isEmpty())
        facts.append(option.range);
    if (!option.defaultValue.isEmpty())
        facts.append(QStringLiteral("default: ") + option.defaultValue);
    if (facts.isEmpty())
        return text;
    QString fact = facts.join(QLatin1String("; "));
    fact[0] = fact[0].toUpper();
    return text + sentence(fact);
}

QString entry(const OptionEntry& option)
{
    QString text = QStringLiteral(".TP\n");
    if (option.names().isEmpty()) {
        text += italic(option.value);
    } else {
        QStringList names;
        for (const QString& name : option.names())
            names.append(bold(name));
        text += names.join(QLatin1String(", "));
        if (option.takesValue())
            text += u' ' + italic(option.value);
    }
    return text + u'\n' + sentence(option.description) + remarks(option);
}

bool isHelp(const OptionEntry& option)
{
    return option.longNames.contains(QLatin1String("--help"));
}

QString synopsis(const CommandEntry& command)
{
    QString text = bold(QLatin1String("lorix ") + command.name);
    const bool hasOptions = std::any_of(command.options.begin(), command.options.end(),
                                        [](const OptionEntry& o) { return !isHelp(o); });
    if (hasOptions)
        text += QLatin1String(" [") + italic(QStringLiteral("OPTION")) + QLatin1String("...]");
    for (const OptionEntry& positional : command.positionals) {
        // What is passed on to a tool stands behind a mark.
        if (positional.value == QLatin1String("OPTION"))
            text += QLatin1String(" \\-\\-");
        const QString value =
            italic(positional.value) + QLatin1String(positional.repeats ? "..." : "");
        text += positional.required ? QString(u' ' + value)
                                    : QString(QLatin1String(" [") + value + u']');
    }
    return text + u'\n';
}

QString commandSection(const CommandEntry& command)
{
    QString text = QStringLiteral(".SS ") + escaped(command.name) + u'\n' + synopsis(command) +
                   QStringLiteral(".PP\n") + sentence(command.summary);
    for (const OptionEntry& positional : command.positionals)
        text += entry(positional);
    for (const OptionEntry& option : command.options) {
        if (!isHelp(option))
            text += entry(option);
    }
    if (!command.examples.isEmpty())
        text += QStringLiteral(".PP\nExamples:\n.PP\n") + verbatim(command.examples);
    return text;
}

// The page that help shows has its title in front, which a section does not need.
QString exitSection(const QString& exitStatus)
{
    return QStringLiteral(".SH \"EXIT STATUS\"\n") +
           verbatim(exitStatus.section(u'\n', 2).trimmed().prepend(QLatin1String("  ")));
}

const char introduction[] =
    R"(.SH DESCRIPTION
.B lorix
looks into documents, typically PDF files, to whose end a history of workflow
steps and copies of their files have been appended.
It shows what happened, checks that nothing was changed, searches, compares and
extracts, and through
.BR lorixadd (1)
and
.BR lorixdel (1)
adds steps and takes them off.
.PP
The answer alone goes to standard output, messages and progress to standard
error.
With several inputs, one bad file never stops the rest.
.BI "lorix " FILE
is short for
.BI "lorix info " FILE .
)";

const char ending[] =
    R"(.SH ENVIRONMENT
.TP
.B NO_COLOR
Where it is set and not empty, no colours unless
.B \-\-color
asks for them.
.SH "SEE ALSO"
.BR lorixadd (1),
.BR lorixdel (1),
.BR lorix\-viewer (1)
)";

} // namespace

QString manualPage(const OptionTable& table, const QString& exitStatus)
{
    QString page = QStringLiteral(".\\\" SPDX-License-Identifier: BSD-3-Clause\n"
                                  ".\\\" Written by 'lorix help --man'.\n"
                                  ".TH LORIX 1 \"\" \"lorix\" \"User Commands\"\n"
                                  ".SH NAME\nlorix \\- ");
    QString summary = table.program.summary;
    summary[0] = summary[0].toLower();
    page += escaped(summary) + QStringLiteral("\n.SH SYNOPSIS\n") + bold(QStringLiteral("lorix")) +
            QLatin1String(" [") + italic(QStringLiteral("OPTION")) + QLatin1String("...] ") +
            italic(QStringLiteral("COMMAND")) + QLatin1String(" ...\n.br\n") +
            bold(QStringLiteral("lorix")) + u' ' + italic(QStringLiteral("FILE")) + u'\n';
    page += QLatin1String(introduction);
    page += QStringLiteral(".SH OPTIONS\nThese may stand in front of the command or behind it.\n");
    for (const OptionEntry& option : table.program.options)
        page += entry(option);
    page += QStringLiteral(".SH COMMANDS\n");
    for (const CommandEntry& command : table.commands)
        page += commandSection(command);
    return page + exitSection(exitStatus) + QLatin1String(ending);
}

} // namespace lorix::cli
