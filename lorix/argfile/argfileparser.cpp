// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/argfileparser.h>

#include <limits>
#include <utility>

namespace lorix {

namespace {

constexpr QChar backslash = u'\\';
constexpr QChar singleQuote = u'\'';
constexpr QChar doubleQuote = u'"';
constexpr QChar dollar = u'$';
constexpr QChar hash = u'#';

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

bool isNameCharacter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

// The functions that end with "End" give the index behind the piece that starts
// at `start`, or `start` itself where no such piece starts there.

qsizetype blanksEnd(QStringView text, qsizetype start)
{
    qsizetype end = start;
    while (end < text.size() && isBlank(text[end]))
        ++end;
    return end;
}

qsizetype commentEnd(QStringView text, qsizetype start)
{
    qsizetype end = start;
    while (end < text.size() && text[end] != u'\n' && text[end] != u'\r')
        ++end;
    return end < text.size() ? end + 1 : end;
}

qsizetype wordEnd(QStringView text, qsizetype start)
{
    qsizetype end = start;
    while (end < text.size()) {
        const QChar c = text[end];
        if (c == backslash) {
            if (end + 1 == text.size())
                break;
            end += 2;
        } else if (c == singleQuote || c == doubleQuote || c == hash || isBlank(c)) {
            break;
        } else {
            ++end;
        }
    }
    return end;
}

qsizetype singleQuotedEnd(QStringView text, qsizetype start)
{
    const qsizetype close = text.indexOf(singleQuote, start + 1);
    return close < 0 ? start : close + 1;
}

qsizetype doubleQuotedEnd(QStringView text, qsizetype start)
{
    for (qsizetype i = start + 1; i < text.size(); ++i) {
        if (text[i] == doubleQuote)
            return i + 1;
        if (text[i] == backslash)
            ++i;
    }
    return start;
}

// The end of the variable whose dollar sign stands at `start`.
qsizetype variableEnd(QStringView text, qsizetype start)
{
    const qsizetype open = start + 1;
    const bool braced = open < text.size() && text[open] == u'{';
    const qsizetype nameStart = braced ? open + 1 : open;
    qsizetype end = nameStart;
    while (end < text.size() && isNameCharacter(text[end]))
        ++end;
    if (end == nameStart)
        return start;
    if (!braced)
        return end;
    return end < text.size() && text[end] == u'}' ? end + 1 : start;
}

bool isVariable(QStringView piece)
{
    return piece.startsWith(dollar) && variableEnd(piece, 0) == piece.size();
}

// What lies between the first and the last character.
QString inside(const QString& quoted)
{
    return quoted.mid(1, qMax(qsizetype(0), quoted.size() - 2));
}

int toPosition(qsizetype index)
{
    return static_cast<int>(qMin<qsizetype>(index, std::numeric_limits<int>::max()));
}

ArgfileToken madeToken(const QString& text)
{
    return ArgfileToken(text, -1, QString());
}

// Calls take(start, piece, isSeparator) for every token of the text; false when
// a part of it is none.
template <typename Take>
bool scan(const QString& text, const Take& take)
{
    qsizetype start = 0;
    while (start < text.size()) {
        const QChar first = text[start];
        qsizetype end = start;
        if (isBlank(first))
            end = blanksEnd(text, start);
        else if (first == hash)
            end = commentEnd(text, start);
        else if (first == singleQuote)
            end = singleQuotedEnd(text, start);
        else if (first == doubleQuote)
            end = doubleQuotedEnd(text, start);
        else
            end = wordEnd(text, start);
        if (end == start)
            return false;
        take(start, text.mid(start, end - start), isBlank(first) || first == hash);
        start = end;
    }
    return true;
}

// The text of one token with its variables replaced.
QString withVariables(const QString& text, const QHash<QString, QString>* variables)
{
    // A lone double quote, which no text gives, is still taken for a pair.
    const bool isQuoted = text.startsWith(doubleQuote);
    const bool mayHoldVariable = text.contains(dollar) || (isQuoted && text.size() == 1);
    if (text.startsWith(singleQuote) || !mayHoldVariable)
        return text;
    if (!isQuoted) {
        const QStringList pieces = ArgfileParser::findVariablesBackslashed(text);
        return ArgfileParser::replaceVariables(pieces, variables).str();
    }
    const QStringList pieces = ArgfileParser::findVariablesDoubleQuoted(text);
    return doubleQuote + ArgfileParser::replaceVariables(pieces, variables).str() + doubleQuote;
}

// The text of one token without quotes and backslashes.
QString unescaped(const QString& text)
{
    if (text.startsWith(singleQuote))
        return ArgfileParser::unescapeSingleQuoted(text);
    if (text.startsWith(doubleQuote))
        return ArgfileParser::unescapeDoubleQuoted(text);
    return ArgfileParser::unescapeBackslashed(text);
}

} // namespace

// The stages run piece by piece: a list of tokens between each two of them would
// cost several times as much.
QStringList ArgfileParser::parseArgfile(const QString& text,
                                        const QHash<QString, QString>* variables)
{
    QStringList arguments;
    QString argument;
    bool isOpen = false;
    const auto take = [&](qsizetype, const QString& piece, bool isSeparator) {
        if (!isSeparator) {
            argument += unescaped(withVariables(piece, variables));
            isOpen = true;
        } else if (isOpen) {
            arguments.append(std::exchange(argument, QString()));
            isOpen = false;
        }
    };
    if (!scan(text, take))
        return {};
    if (isOpen)
        arguments.append(argument);
    return arguments;
}

QList<ArgfileToken> ArgfileParser::getHighlighterList(const QString& text)
{
    return unescapeTokens(splitIntoTokens(text));
}

QList<ArgfileToken> ArgfileParser::splitIntoTokens(const QString& text)
{
    QList<ArgfileToken> tokens;
    const auto append = [&](qsizetype start, const QString& piece, bool isSeparator) {
        if (isSeparator)
            tokens.append(ArgfileToken(TokenSeparator, toPosition(start), piece));
        else
            tokens.append(ArgfileToken(piece, toPosition(start), piece));
    };
    return scan(text, append) ? tokens : QList<ArgfileToken>();
}

QList<ArgfileToken> ArgfileParser::removeDoubleSeparators(const QList<ArgfileToken>& tokens)
{
    QList<ArgfileToken> result;
    result.reserve(tokens.size());
    for (const ArgfileToken& token : tokens) {
        if (!token.isSeparator() || (!result.isEmpty() && !result.last().isSeparator()))
            result.append(token);
    }
    if (!result.isEmpty() && result.last().isSeparator())
        result.removeLast();
    return result;
}

QList<ArgfileToken> ArgfileParser::handleVariables(const QList<ArgfileToken>& tokens,
                                                   const QHash<QString, QString>* variables)
{
    QList<ArgfileToken> result;
    result.reserve(tokens.size());
    for (const ArgfileToken& token : tokens)
        result.append(token.isSeparator() ? token
                                          : madeToken(withVariables(token.str(), variables)));
    return result;
}

QStringList ArgfileParser::findVariablesInToken(const QString& token)
{
    QStringList pieces;
    qsizetype literalStart = 0;
    qsizetype backslashes = 0;
    qsizetype i = 0;
    while (i < token.size()) {
        const qsizetype end = token[i] == dollar ? variableEnd(token, i) : i;
        if (end == i) {
            backslashes = token[i] == backslash ? backslashes + 1 : 0;
            ++i;
            continue;
        }
        if (backslashes % 2 == 0) {
            if (i > literalStart)
                pieces.append(token.mid(literalStart, i - literalStart));
            pieces.append(token.mid(i, end - i));
            literalStart = end;
        }
        backslashes = 0;
        i = end;
    }
    if (literalStart < token.size())
        pieces.append(token.mid(literalStart));
    return pieces;
}

QStringList ArgfileParser::findVariablesInToken(const ArgfileToken& token)
{
    return findVariablesInToken(token.str());
}

QStringList ArgfileParser::findVariablesDoubleQuoted(const QString& token)
{
    return findVariablesInToken(inside(token));
}

QStringList ArgfileParser::findVariablesDoubleQuoted(const ArgfileToken& token)
{
    return findVariablesDoubleQuoted(token.str());
}

QStringList ArgfileParser::findVariablesBackslashed(const QString& token)
{
    return findVariablesInToken(token);
}

QStringList ArgfileParser::findVariablesBackslashed(const ArgfileToken& token)
{
    return findVariablesBackslashed(token.str());
}

ArgfileToken ArgfileParser::replaceVariables(const QStringList& pieces,
                                             const QHash<QString, QString>* variables)
{
    QString text;
    for (const QString& piece : pieces) {
        if (variables && isVariable(piece))
            text += escapeEverything(variables->value(getVariableName(piece)));
        else
            text += piece;
    }
    return madeToken(text);
}

QString ArgfileParser::getVariableName(const QString& piece)
{
    if (piece.startsWith(QLatin1String("${")) && piece.endsWith(u'}'))
        return piece.mid(2, piece.size() - 3);
    if (piece.startsWith(dollar))
        return piece.mid(1);
    return QString();
}

QString ArgfileParser::escapeEverything(const QString& string)
{
    QString result;
    result.reserve(2 * string.size());
    for (const QChar c : string) {
        result += backslash;
        result += c;
    }
    return result;
}

QList<ArgfileToken> ArgfileParser::unescapeTokens(const QList<ArgfileToken>& tokens)
{
    QList<ArgfileToken> result;
    result.reserve(tokens.size());
    for (const ArgfileToken& token : tokens) {
        if (token.isSeparator())
            result.append(token);
        else
            result.append(
                ArgfileToken(unescaped(token.str()), token.position(), token.originalText()));
    }
    return result;
}

QString ArgfileParser::unescapeBackslashed(const QString& string)
{
    if (!string.contains(backslash))
        return string;
    QString result;
    result.reserve(string.size());
    for (qsizetype i = 0; i < string.size(); ++i) {
        if (string[i] == backslash && i + 1 < string.size()) {
            ++i;
            if (string[i] == dollar)
                result += dollar;
        }
        result += string[i];
    }
    return result;
}

QString ArgfileParser::unescapeDoubleQuoted(const QString& string)
{
    return unescapeBackslashed(inside(string));
}

QString ArgfileParser::unescapeSingleQuoted(const QString& string)
{
    return inside(string).replace(dollar, QLatin1String("$$"));
}

QList<ArgfileToken> ArgfileParser::joinTokens(const QList<ArgfileToken>& tokens)
{
    QList<ArgfileToken> result;
    QString argument;
    for (const ArgfileToken& token : tokens) {
        if (token.isSeparator()) {
            result.append(madeToken(argument));
            argument.clear();
        } else {
            argument += token.str();
        }
    }
    if (!tokens.isEmpty() && !tokens.last().isSeparator())
        result.append(madeToken(argument));
    return result;
}

QStringList ArgfileParser::tokensToStrings(const QList<ArgfileToken>& tokens)
{
    QStringList result;
    result.reserve(tokens.size());
    for (const ArgfileToken& token : tokens)
        result.append(token.str());
    return result;
}

} // namespace lorix
