// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/completions.h>

namespace lorix::cli {

namespace {

const char beginning[] = R"zsh(#compdef lorix
# SPDX-License-Identifier: BSD-3-Clause
# zsh completion for lorix, written by 'lorix completion zsh'

_lorix_query() {
    local -a queries
    queries=(${(f)"$(_call_program queries ${(q)lorix_program} completion --query ${(q)PREFIX})"})
    (( $#queries )) && compadd -U -S '' -- $queries
}

_lorix() {
    local curcontext=$curcontext state line lorix_program=$words[1]
    local -a shared commands
    typeset -A opt_args
)zsh";

const char ending[] = R"zsh(    esac
}

if [[ $funcstack[1] == _lorix ]]; then
    _lorix "$@"
else
    compdef _lorix lorix
fi
)zsh";

QString quoted(QString text)
{
    return u'\'' + text.replace(u'\'', QLatin1String("'\\''")) + u'\'';
}

QString escaped(QString text, const QString& characters)
{
    for (const QChar c : characters)
        text.replace(c, QString(u'\\') + c);
    return text;
}

QString action(const OptionEntry& option, const OptionTable& table)
{
    const QString label = u':' + escaped(option.value.toLower(), QStringLiteral(":")) + u':';
    switch (offerFor(option)) {
    case Offer::File:
        return label + QLatin1String("_files");
    case Offer::Folder:
        return label + QLatin1String("_path_files -/");
    case Offer::Query:
        return label + QLatin1String("_lorix_query");
    case Offer::Words: {
        const QString words = offeredWords(option, table).join(u' ');
        if (option.separator.isNull())
            return label + u'(' + words + u')';
        return label + QLatin1String("_values -s ") + option.separator + u' ' +
               option.value.toLower() + u' ' + words;
    }
    case Offer::Nothing:
        break;
    }
    return label + u' ';
}

// One word for each name of the option, as _arguments reads it.
QStringList specifications(const OptionEntry& option, const OptionTable& table)
{
    const QString description = u'[' + escaped(option.description, QStringLiteral("\\[]")) + u']';
    const QString value = option.takesValue() ? action(option, table) : QString();
    const QString others = option.repeats              ? QStringLiteral("*")
                           : option.names().size() > 1 ? u'(' + option.names().join(u' ') + u')'
                                                       : QString();
    QStringList words;
    for (const QString& name : option.names()) {
        QString mark;
        if (option.takesValue())
            mark = name.startsWith(QLatin1String("--")) ? u'=' : u'+';
        words.append(quoted(others + name + mark + description + value));
    }
    return words;
}

QString lines(const QStringList& words, const QString& indent)
{
    QString text;
    for (const QString& word : words)
        text += indent + word + QLatin1String(" \\\n");
    text.chop(3);
    return text + u'\n';
}

QString commandBranch(const CommandEntry& command, const OptionTable& table)
{
    QStringList words;
    for (const OptionEntry& option : command.options) {
        if (!option.longNames.contains(QLatin1String("--help")))
            words += specifications(option, table);
    }
    for (const OptionEntry& positional : command.positionals) {
        const QString place = positional.repeats ? QStringLiteral("*") : QString();
        words.append(quoted(place + action(positional, table)));
    }
    const QString pattern =
        command.name == QLatin1String("info") ? QStringLiteral("*") : command.name;
    return QStringLiteral("    %1)\n        _arguments -s -S $shared").arg(pattern) +
           (words.isEmpty() ? QStringLiteral("\n")
                            : QLatin1String(" \\\n") + lines(words, QString(12, u' '))) +
           QStringLiteral("        ;;\n");
}

} // namespace

QString zshCompletion(const OptionTable& table)
{
    QStringList shared;
    for (const OptionEntry& option : table.program.options)
        shared += specifications(option, table);
    QStringList commands;
    QString branches;
    QString last;
    for (const CommandEntry& command : table.commands) {
        commands.append(
            quoted(command.name + u':' + escaped(command.summary, QStringLiteral("\\:"))));
        // A file in place of a command is for info, whose branch takes all that is left.
        (command.name == QLatin1String("info") ? last : branches) += commandBranch(command, table);
    }
    return QLatin1String(beginning) + QStringLiteral("    shared=(\n        ") +
           shared.join(QLatin1String("\n        ")) +
           QStringLiteral("\n    )\n    commands=(\n        ") +
           commands.join(QLatin1String("\n        ")) +
           QStringLiteral(
               "\n    )\n"
               "    _arguments -C -s -S $shared '1: :->first' '*:: :->rest' && return 0\n"
               "    if [[ $state == first ]]; then\n"
               "        _describe -t commands command commands\n"
               "        _files\n"
               "        return\n"
               "    fi\n"
               "    [[ $state == rest ]] || return 1\n"
               "    case $line[1] in\n") +
           branches + last + QLatin1String(ending);
}

} // namespace lorix::cli
