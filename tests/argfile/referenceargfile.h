// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

/// The argument-file stages in their plainest form, with the regular
/// expressions that define them. Slow, and the measure of ArgfileParser.
namespace reference {

struct Token
{
    QString str;
    bool isSeparator;
    int position;
    QString originalText;
};

using Tokens = QVector<Token>;
using Variables = QHash<QString, QString>;

Tokens splitIntoTokens(const QString& text);
Tokens removeDoubleSeparators(Tokens tokens);
Tokens handleVariables(const Tokens& tokens, const Variables* variables);
QStringList findVariablesInToken(const QString& token);
QString replaceVariables(const QStringList& pieces, const Variables* variables);
Tokens unescapeTokens(const Tokens& tokens);
QString unescapeBackslashed(const QString& string);
QStringList joinTokens(const Tokens& tokens);
QStringList parseArgfile(const QString& text, const Variables* variables);

} // namespace reference
