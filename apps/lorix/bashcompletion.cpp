// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/completions.h>

namespace lorix::cli {

namespace {

const char beginning[] = R"bash(# bash completion for lorix, written by 'lorix completion bash'
# SPDX-License-Identifier: BSD-3-Clause

)bash";

// What follows does not change with the table.
const char machinery[] = R"bash(
# Offers what kind $1 has for the text $2 so far; $3 stands before it in its word.
_lorix_offer() {
    local text=$2 before=$3
    case $1 in
        file) compopt -o default ;;
        folder) compopt -o dirnames ;;
        query)
            compopt -o nospace
            mapfile -t COMPREPLY < <("${COMP_WORDS[0]/#\~/$HOME}" completion --query "${text#[\'\"]}" 2>/dev/null)
            ;;
        list\ *)
            compopt -o nospace
            [[ $text == *,* ]] && before+=${text%,*},
            text=${text##*,}
            ;;&
        list\ * | words\ *) mapfile -t COMPREPLY < <(compgen -W "${1#* }" -- "$text") ;;
    esac
    COMPREPLY=("${COMPREPLY[@]/#/$before}")
}

_lorix() {
    local command='' kind='' expected='' behind='' i word already rest=$COMP_LINE place=0
    local -a words=() positionals=()
    local options repeats
    # The line editor cuts words at "=" and ":"; here they are one again.
    for ((i = 0; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ ${#words[@]} -gt 0 && $rest != [[:space:]]* ]]; then
            words[${#words[@]} - 1]+=$word
        else
            words+=("$word")
        fi
        rest=${rest#"${rest%%[![:space:]]*}"}
        rest=${rest#"$word"}
    done
    already=${words[${#words[@]} - 1]}
    [[ $COMP_WORDBREAKS == *"$word"* && -n $word ]] || already=${already%"$word"}

    for ((i = 1; i < ${#words[@]} - 1; i++)); do
        word=${words[i]}
        if [[ -n $expected ]]; then
            expected=
        elif [[ -z $behind && $word == -- ]]; then
            behind=1
        elif [[ -z $behind && $word == -?* ]]; then
            [[ $word != --*=* ]] && _lorix_kind "$command" "$word" && expected=$kind
        elif [[ -n $command ]]; then
            place=$((place + 1))
        elif _lorix_command "$word"; then
            command=$word
        else
            command=info
            place=1
        fi
    done

    word=${words[i]}
    COMPREPLY=()
    _lorix_command "$command"
    if [[ -n $expected ]]; then
        _lorix_offer "$expected" "$word"
    elif [[ -z $behind && $word == --*=* ]]; then
        _lorix_kind "$command" "${word%%=*}" && _lorix_offer "$kind" "${word#*=}" "${word%%=*}="
    elif [[ -z $behind && $word == -* ]]; then
        _lorix_offer "words $options" "$word"
    elif [[ -z $command ]]; then
        _lorix_offer "words $lorix_commands" "$word"
        [[ ${#COMPREPLY[@]} -gt 0 ]] || compopt -o default
    else
        [[ -n $repeats && $place -ge ${#positionals[@]} ]] && place=$((${#positionals[@]} - 1))
        _lorix_offer "${positionals[place]:-nothing}" "$word"
    fi
    COMPREPLY=("${COMPREPLY[@]#"$already"}")
}

complete -F _lorix lorix
)bash";

QString quoted(const QString& text)
{
    return u'\'' + text + u'\'';
}

QString kindOf(const OptionEntry& option, const OptionTable& table)
{
    switch (offerFor(option)) {
    case Offer::File:
        return QStringLiteral("file");
    case Offer::Folder:
        return QStringLiteral("folder");
    case Offer::Query:
        return QStringLiteral("query");
    case Offer::Words:
        return (option.separator.isNull() ? QLatin1String("words ") : QLatin1String("list ")) +
               offeredWords(option, table).join(u' ');
    case Offer::Nothing:
        break;
    }
    return QStringLiteral("nothing");
}

// One branch that sets what a command takes; `shared` may stand behind any.
QString commandBranch(const CommandEntry& command, const CommandEntry& shared,
                      const OptionTable& table)
{
    QStringList names;
    for (const OptionEntry& option : shared.options)
        names += option.names();
    for (const OptionEntry& option : command.options) {
        for (const QString& name : option.names()) {
            if (!names.contains(name))
                names.append(name);
        }
    }
    QStringList kinds;
    bool repeats = false;
    for (const OptionEntry& positional : command.positionals) {
        kinds.append(quoted(kindOf(positional, table)));
        repeats = positional.repeats;
    }
    return QStringLiteral("        %1)\n            options='%2'\n"
                          "            positionals=(%3) repeats=%4\n            ;;\n")
        .arg(command.name.isEmpty() ? QStringLiteral("''") : command.name, names.join(u' '),
             kinds.join(u' '), repeats ? QStringLiteral("1") : QStringLiteral("''"));
}

QString kindBranches(const CommandEntry& command, const QString& pattern, const OptionTable& table)
{
    QString text;
    for (const OptionEntry& option : command.options) {
        if (!option.takesValue())
            continue;
        QStringList patterns;
        for (const QString& name : option.names())
            patterns.append(pattern + u':' + name);
        text += QStringLiteral("        %1) kind=%2 ;;\n")
                    .arg(patterns.join(QLatin1String(" | ")), quoted(kindOf(option, table)));
    }
    return text;
}

} // namespace

QString bashCompletion(const OptionTable& table)
{
    QStringList names;
    CommandEntry program = table.program;
    program.name.clear();
    QString branches = commandBranch(program, program, table);
    QString kinds = kindBranches(program, QStringLiteral("*"), table);
    for (const CommandEntry& command : table.commands) {
        names.append(command.name);
        branches += commandBranch(command, program, table);
        kinds += kindBranches(command, command.name, table);
    }
    return QLatin1String(beginning) +
           QStringLiteral("lorix_commands='%1'\n\n").arg(names.join(u' ')) +
           QStringLiteral("# What command $1 takes; fails where there is no such command.\n"
                          "_lorix_command() {\n    case $1 in\n") +
           branches +
           QStringLiteral(
               "        *) return 1 ;;\n    esac\n}\n\n"
               "# The kind of value of option $2 of command $1; fails where it has none.\n"
               "_lorix_kind() {\n    case $1:$2 in\n") +
           kinds + QStringLiteral("        *) return 1 ;;\n    esac\n}\n") +
           QLatin1String(machinery);
}

} // namespace lorix::cli
