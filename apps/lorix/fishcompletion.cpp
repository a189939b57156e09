// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/completions.h>

namespace lorix::cli {

namespace {

const char beginning[] = R"fish(# SPDX-License-Identifier: BSD-3-Clause
# fish completion for lorix, written by 'lorix completion fish'

)fish";

const char machinery[] = R"fish(
# Prints the command on the line so far, empty without one, and how many
# positionals stand behind it.
function __lorix_state
    set -l command ''
    set -l place 0
    set -l expected 0
    set -l behind 0
    for word in (commandline -opc)[2..-1]
        if test $expected = 1
            set expected 0
        else if test $behind = 0; and test "x$word" = x--
            set behind 1
        else if test $behind = 0; and string match -q -- '-?*' $word
            if contains -- ":$word" $__lorix_valued; or contains -- "$command:$word" $__lorix_valued
                set expected 1
            end
        else if test -n "$command"
            set place (math $place + 1)
        else if contains -- $word $__lorix_commands
            set command $word
        else
            set command info
            set place 1
        end
    end
    echo $command
    echo $place
end

# Whether the line is at command $argv[1], and, where it is given, at its
# positional $argv[2], or at a later one with a third argument.
function __lorix_at
    set -l state (__lorix_state)
    test "x$state[1]" = "x$argv[1]"; or return 1
    switch (count $argv)
        case 1
            return 0
        case 2
            test $state[2] = $argv[2]
        case '*'
            test $state[2] -ge $argv[2]
    end
end

function __lorix_query
    set -l program (commandline -opc)[1]
    $program completion --query (commandline -ct | string trim -l -c '\'"' | string collect) 2>/dev/null
end

complete -c lorix -f
complete -c lorix -n '__lorix_at ""' -F
)fish";

QString quoted(QString text)
{
    return u'\'' + text.replace(u'\\', QLatin1String("\\\\")).replace(u'\'', QLatin1String("\\'")) +
           u'\'';
}

// The arguments of "complete" that say what to offer.
QString offered(const OptionEntry& option, const OptionTable& table)
{
    switch (offerFor(option)) {
    case Offer::File:
        return QStringLiteral(" -F");
    case Offer::Folder:
        return QStringLiteral(" -a '(__fish_complete_directories (commandline -ct))'");
    case Offer::Query:
        return QStringLiteral(" -a '(__lorix_query)'");
    case Offer::Words: {
        const QString words = offeredWords(option, table).join(u' ');
        if (option.separator.isNull())
            return QLatin1String(" -a ") + quoted(words);
        return QStringLiteral(" -a '(__fish_append %1 %2)'").arg(option.separator).arg(words);
    }
    case Offer::Nothing:
        break;
    }
    return {};
}

QString optionLines(const CommandEntry& command, const QString& condition, const OptionTable& table)
{
    QString text;
    for (const OptionEntry& option : command.options) {
        if (!condition.isEmpty() && option.longNames.contains(QLatin1String("--help")))
            continue;
        text += QLatin1String("complete -c lorix") + condition;
        for (const QString& name : option.shortNames)
            text += QLatin1String(" -s ") + name.mid(1);
        for (const QString& name : option.longNames)
            text += QLatin1String(" -l ") + name.mid(2);
        if (option.takesValue())
            text += QLatin1String(offerFor(option) == Offer::File ? " -r" : " -x") +
                    offered(option, table);
        text += QLatin1String(" -d ") + quoted(option.description) + u'\n';
    }
    return text;
}

QString commandLines(const CommandEntry& command, const OptionTable& table)
{
    QString text = QStringLiteral("\ncomplete -c lorix -n '__lorix_at \"\"' -a %1 -d %2\n")
                       .arg(command.name, quoted(command.summary));
    int place = 0;
    for (const OptionEntry& positional : command.positionals) {
        const QString offer = offered(positional, table);
        if (!offer.isEmpty())
            text += QStringLiteral("complete -c lorix -n '__lorix_at %1 %2%3'%4\n")
                        .arg(command.name)
                        .arg(place)
                        .arg(positional.repeats ? QLatin1String(" more") : QLatin1String(), offer);
        ++place;
    }
    return text +
           optionLines(command, QStringLiteral(" -n '__lorix_at %1'").arg(command.name), table);
}

QStringList valuedOptions(const CommandEntry& command, const QString& name)
{
    QStringList words;
    for (const OptionEntry& option : command.options) {
        if (!option.takesValue())
            continue;
        for (const QString& optionName : option.names())
            words.append(name + u':' + optionName);
    }
    return words;
}

} // namespace

QString fishCompletion(const OptionTable& table)
{
    QStringList names;
    QStringList valued = valuedOptions(table.program, QString());
    QString lines = optionLines(table.program, QString(), table);
    for (const CommandEntry& command : table.commands) {
        names.append(command.name);
        valued += valuedOptions(command, command.name);
        lines += commandLines(command, table);
    }
    return QLatin1String(beginning) + QLatin1String("set -g __lorix_commands ") + names.join(u' ') +
           QLatin1String("\nset -g __lorix_valued ") + valued.join(u' ') + u'\n' +
           QLatin1String(machinery) + lines;
}

} // namespace lorix::cli
