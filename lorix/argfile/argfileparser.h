// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/argfile/argfiletoken.h>
#include <lorix/export.h>

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace lorix {

/// Turns the text of an argument file into arguments, and into tokens with
/// their places for an editor that highlights it.
///
/// An argument file holds the options of one invocation of the add tool in a
/// small shell-like syntax: words, 'single-quoted' and "double-quoted" strings,
/// backslash escapes, # comments and $name or ${name} variables (docs/argfile.md
/// tells it from the writer's side). Adjacent pieces form one argument.
///
///     QHash<QString, QString> variables{{"out", "report.pdf"}};
///     QStringList arguments = ArgfileParser::parseArgfile("-O $out -i 'a b'", &variables);
///     // "-O", "report.pdf", "-i", "a b"
///
/// The class holds no state: every operation is a pure function, and each stage
/// can be called alone. All work in time and memory linear in their input.
///
/// Variables come as a pointer to a hash from name to value. Null means that no
/// variables are given at all, and "$name" stays as it is; an empty hash means
/// that no variable has a value, and "$name" becomes nothing.
///
/// A dollar sign that the text escapes ("\$", or within single quotes) is
/// carried in the arguments as "$$", so that it can be told from one that stands
/// for a variable; quoteString() turns it back when an invocation is written.
class LORIX_EXPORT ArgfileParser
{
public:
    ArgfileParser() = default;

    /// The arguments of the whole text: splitIntoTokens(),
    /// removeDoubleSeparators(), handleVariables(), unescapeTokens(),
    /// joinTokens() and tokensToStrings() in that order. Empty when the text
    /// cannot be split, for example because a quote is not closed.
    static QStringList parseArgfile(const QString& text,
                                    const QHash<QString, QString>* variables = nullptr);

    /// All tokens of the text, separators and comments included, each with its
    /// position and original text and with str() unescaped: splitIntoTokens()
    /// and unescapeTokens() alone. Empty when the text cannot be split.
    static QList<ArgfileToken> getHighlighterList(const QString& text);

    /// Cuts the text into tokens, without a gap: the original texts put
    /// together are `text`. One token is the longest piece of its kind:
    ///
    /// - white space (carriage return, line feed, tab, blank): a separator;
    /// - a comment, from # to the end of the line and with the one character
    ///   that ends it (of CR LF only the CR): a separator. A # begins a comment
    ///   in the middle of a word too;
    /// - a plain word, in which a backslash takes any next character along;
    /// - 'single-quoted', up to the next single quote;
    /// - "double-quoted", in which a backslash takes any next character along.
    ///
    /// str() is still as written. Empty when any part of the text is none of
    /// these: a quote that is not closed, a backslash that ends the text.
    static QList<ArgfileToken> splitIntoTokens(const QString& text);

    /// Keeps the first of adjacent separators, and none at start and end.
    static QList<ArgfileToken> removeDoubleSeparators(const QList<ArgfileToken>& tokens);

    /// Replaces the variables of words and double-quoted strings. Values are
    /// escaped, so that nothing in them is taken for syntax. Separators are
    /// copied; all other tokens lose their place.
    static QList<ArgfileToken> handleVariables(const QList<ArgfileToken>& tokens,
                                               const QHash<QString, QString>* variables);

    /// Cuts the text of a word into its variables, "$name" or "${name}" with a
    /// name of ASCII letters and digits, and the literal pieces around them. A
    /// dollar sign after an odd number of backslashes is literal, as is one with
    /// no name behind it. No piece is empty; together they are the text.
    static QStringList findVariablesInToken(const QString& token);
    static QStringList findVariablesInToken(const ArgfileToken& token);

    /// findVariablesInToken() of what lies between the first and the last character.
    static QStringList findVariablesDoubleQuoted(const QString& token);
    static QStringList findVariablesDoubleQuoted(const ArgfileToken& token);

    /// The same as findVariablesInToken().
    static QStringList findVariablesBackslashed(const QString& token);
    static QStringList findVariablesBackslashed(const ArgfileToken& token);

    /// Puts the pieces together in one token, each variable replaced by its
    /// escaped value: nothing for a name that the hash does not hold, the piece
    /// itself where `variables` is null. A piece that begins with a dollar sign
    /// but is not "$name" or "${name}" is literal.
    static ArgfileToken replaceVariables(const QStringList& pieces,
                                         const QHash<QString, QString>* variables);

    /// The name in a piece: the text between "${" and a final "}", else the text
    /// after a leading "$", else empty.
    static QString getVariableName(const QString& piece);

    /// Every character with a backslash before it.
    static QString escapeEverything(const QString& string);

    /// Removes quotes and backslashes: the text of each token goes through the
    /// function for its first character. Places are kept, separators copied.
    static QList<ArgfileToken> unescapeTokens(const QList<ArgfileToken>& tokens);

    /// Drops every backslash and takes the character after it literally; a
    /// dollar sign after a backslash becomes "$$", a backslash at the very end
    /// stays. No letter has a meaning: "\n" is "n".
    static QString unescapeBackslashed(const QString& string);

    /// unescapeBackslashed() of what lies between the first and the last character.
    static QString unescapeDoubleQuoted(const QString& string);

    /// What lies between the first and the last character, every "$" doubled.
    static QString unescapeSingleQuoted(const QString& string);

    /// One token per argument: adjacent non-separators put together; each
    /// separator ends an argument, even an empty one.
    static QList<ArgfileToken> joinTokens(const QList<ArgfileToken>& tokens);

    /// The str() of each token.
    static QStringList tokensToStrings(const QList<ArgfileToken>& tokens);
};

} // namespace lorix
