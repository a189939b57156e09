// SPDX-License-Identifier: BSD-3-Clause
#include "referenceargfile.h"

#include <QRegExp>

namespace reference {

Tokens splitIntoTokens(const QString& text)
{
    const QRegExp patterns[] = {
        QRegExp(QStringLiteral("[\r\n\t ]+")),
        QRegExp(QStringLiteral("#[^\r\n]*.?")),
        QRegExp(QStringLiteral("([^\\\\'\"#\r\n\t ]|\\\\.)+")),
        QRegExp(QStringLiteral("('[^']*')")),
        QRegExp(QStringLiteral("(\"([^\"\\\\]|\\\\.)*\")")),
    };
    Tokens tokens;
    int position = 0;
    QString rest = text;
    while (!rest.isEmpty()) {
        QString matched;
        int index = 0;
        while (index < 5 && patterns[index].indexIn(rest, 0, QRegExp::CaretAtZero) != 0)
            ++index;
        if (index == 5)
            return Tokens();
        matched = patterns[index].cap(0);
        const bool separator = index < 2;
        tokens.append({separator ? QString() : matched, separator, position, matched});
        position += static_cast<int>(matched.length());
        rest = rest.mid(matched.length());
    }
    return tokens;
}

Tokens removeDoubleSeparators(Tokens tokens)
{
    for (int i = 1; i < tokens.size();) {
        if (tokens[i].isSeparator && tokens[i - 1].isSeparator)
            tokens.remove(i);
        else
            ++i;
    }
    if (!tokens.isEmpty() && tokens.first().isSeparator)
        tokens.removeFirst();
    if (!tokens.isEmpty() && tokens.last().isSeparator)
        tokens.removeLast();
    return tokens;
}

Tokens handleVariables(const Tokens& tokens, const Variables* variables)
{
    Tokens result;
    for (const Token& token : tokens) {
        const QString s = token.str;
        if (token.isSeparator) {
            result.append(token);
        } else if (s.startsWith(QLatin1Char('"'))) {
            const QString inside = s.mid(1, s.length() - 2);
            const QString replaced = replaceVariables(findVariablesInToken(inside), variables);
            result.append({QLatin1Char('"') + replaced + QLatin1Char('"'), false, -1, QString()});
        } else if (s.startsWith(QLatin1Char('\''))) {
            result.append({s, false, -1, QString()});
        } else {
            result.append(
                {replaceVariables(findVariablesInToken(s), variables), false, -1, QString()});
        }
    }
    return result;
}

QStringList findVariablesInToken(const QString& token)
{
    QRegExp pattern(QStringLiteral("\\\\*\\$([A-Za-z0-9]+|\\{[A-Za-z0-9]+\\})"));
    QStringList pieces;
    QString rest = token;
    int from = 0;
    for (;;) {
        const int found = pattern.indexIn(rest, from);
        if (found < 0)
            break;
        const int end = found + pattern.matchedLength();
        const auto dollar = rest.indexOf(QLatin1Char('$'), found);
        if ((dollar - found) % 2 == 1) {
            from = end;
            continue;
        }
        if (dollar > 0)
            pieces.append(rest.left(dollar));
        pieces.append(rest.mid(dollar, end - dollar));
        rest = rest.mid(end);
        from = 0;
    }
    if (!rest.isEmpty())
        pieces.append(rest);
    return pieces;
}

QString replaceVariables(const QStringList& pieces, const Variables* variables)
{
    const QRegExp wholeVariable(QStringLiteral("\\$([A-Za-z0-9]+|\\{[A-Za-z0-9]+\\})"));
    QString result;
    for (const QString& piece : pieces) {
        if (!variables || !wholeVariable.exactMatch(piece)) {
            result += piece;
            continue;
        }
        QString name = piece.mid(1);
        if (name.startsWith(QLatin1Char('{')))
            name = name.mid(1, name.length() - 2);
        const QString value = variables->value(name);
        for (int i = 0; i < value.length(); ++i)
            result += QLatin1Char('\\') + QString(value.at(i));
    }
    return result;
}

Tokens unescapeTokens(const Tokens& tokens)
{
    Tokens result;
    for (Token token : tokens) {
        QString& s = token.str;
        if (!token.isSeparator) {
            if (s.startsWith(QLatin1Char('\''))) {
                s = s.mid(1, s.length() - 2);
                s.replace(QLatin1String("$"), QLatin1String("$$"));
            } else if (s.startsWith(QLatin1Char('"'))) {
                s = unescapeBackslashed(s.mid(1, s.length() - 2));
            } else {
                s = unescapeBackslashed(s);
            }
        }
        result.append(token);
    }
    return result;
}

QString unescapeBackslashed(const QString& string)
{
    QString result;
    int i = 0;
    while (i < string.length()) {
        if (string.at(i) == QLatin1Char('\\') && i < string.length() - 1) {
            const QChar next = string.at(i + 1);
            result += next == QLatin1Char('$') ? QStringLiteral("$$") : QString(next);
            i += 2;
        } else {
            result += string.at(i);
            i += 1;
        }
    }
    return result;
}

QStringList joinTokens(const Tokens& tokens)
{
    QStringList result;
    QString pending;
    for (const Token& token : tokens) {
        if (token.isSeparator) {
            result.append(pending);
            pending = QString();
        } else {
            pending = pending + token.str;
        }
    }
    if (!tokens.isEmpty() && !tokens.last().isSeparator)
        result.append(pending);
    return result;
}

QStringList parseArgfile(const QString& text, const Variables* variables)
{
    return joinTokens(
        unescapeTokens(handleVariables(removeDoubleSeparators(splitIntoTokens(text)), variables)));
}

} // namespace reference
