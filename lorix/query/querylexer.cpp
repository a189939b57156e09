// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/querylexer.h>

#include <QStringView>

using namespace lorix;

namespace {

bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isLetterOrDigit(QChar c)
{
    return isLetter(c) || (c >= u'0' && c <= u'9');
}

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

bool isBareWordCharacter(QChar c)
{
    return !c.isSpace() && !QStringView(u":&|!%=><'\")(").contains(c);
}

class Lexer
{
public:
    explicit Lexer(const QString& query) : m_query(query) {}

    bool atEnd() const { return m_position >= m_query.size(); }
    int position() const { return static_cast<int>(m_position); }

    /// Appends the token at the current position, if it is not a blank, and
    /// steps over it. False where no form fits.
    bool next(QList<ExpressionValue>& tokens);

private:
    qsizetype run(qsizetype from, bool (*accepts)(QChar)) const;
    QChar at(qsizetype i) const { return i < m_query.size() ? m_query[i] : QChar(); }
    qsizetype pairedEnd(qsizetype from, char16_t closing) const;

    qsizetype userVariableLength();
    qsizetype variableLength() const;
    qsizetype quotedLength() const;
    qsizetype binaryOperatorLength() const;
    qsizetype wordOperatorLength() const;

    ExpressionValue makeQuoted(const QString& text) const;
    QString take(qsizetype length);

    const QString& m_query;
    qsizetype m_position = 0;
    qsizetype m_tokenPosition = 0;
    // No closing brace is found from any "{" in this part of the query.
    qsizetype m_unclosedBegin = 0;
    qsizetype m_unclosedEnd = 0;
};

qsizetype Lexer::run(qsizetype from, bool (*accepts)(QChar)) const
{
    qsizetype end = from;
    while (end < m_query.size() && accepts(m_query[end]))
        ++end;
    return end - from;
}

// Position of the first `closing` that no backslash escapes, or the complement
// of where reading stops: at the end, or at a backslash that escapes nothing.
qsizetype Lexer::pairedEnd(qsizetype from, char16_t closing) const
{
    qsizetype i = from;
    while (i < m_query.size()) {
        if (m_query[i] == closing)
            return i;
        if (m_query[i] == u'\\') {
            if (at(i + 1) != u'\\' && at(i + 1) != closing)
                return ~i;
            ++i;
        }
        ++i;
    }
    return ~i;
}

qsizetype Lexer::userVariableLength()
{
    const qsizetype letters = run(m_position, isLetter);
    const QStringView opening = u":user{";
    if (QStringView(m_query).mid(m_position + letters, opening.size()) != opening)
        return 0;
    const qsizetype begin = m_position + letters + opening.size();
    // Without this, a query of many unclosed braces would be read to its end
    // for each of them.
    if (begin >= m_unclosedBegin && begin < m_unclosedEnd)
        return 0;
    const qsizetype end = pairedEnd(begin, u'}');
    if (end < 0) {
        m_unclosedBegin = begin;
        m_unclosedEnd = ~end;
        return 0;
    }
    return end == begin ? 0 : end + 1 - m_position;
}

qsizetype Lexer::variableLength() const
{
    const qsizetype colon = m_position + run(m_position, isLetter);
    if (at(colon) != u':')
        return 0;
    const qsizetype first = run(colon + 1, isLetterOrDigit);
    if (first == 0)
        return 0;
    const qsizetype end = colon + 1 + first;
    const qsizetype second = at(end) == u':' ? run(end + 1, isLetterOrDigit) : 0;
    return (second > 0 ? end + 1 + second : end) - m_position;
}

qsizetype Lexer::quotedLength() const
{
    const QChar quote = m_query[m_position];
    if (quote != u'\'' && quote != u'"')
        return 0;
    const qsizetype end = pairedEnd(m_position + 1, quote.unicode());
    return end < 0 ? 0 : end + 1 - m_position;
}

qsizetype Lexer::wordOperatorLength() const
{
    for (const QStringView word :
         {QStringView(u"%contains"), QStringView(u"%matches"), QStringView(u"%isapprox")}) {
        if (QStringView(m_query).mid(m_position, word.size()) != word)
            continue;
        const qsizetype end = m_position + word.size();
        if (end == m_query.size())
            return word.size();
        return m_query[end].isSpace() ? word.size() + 1 : 0;
    }
    return 0;
}

qsizetype Lexer::binaryOperatorLength() const
{
    const QChar first = m_query[m_position];
    const QChar second = at(m_position + 1);
    if (first == u'<' || first == u'>')
        return second == u'=' ? 2 : 1;
    if ((first == u'&' || first == u'|') && second == first)
        return 2;
    if ((first == u'=' || first == u'!') && second == u'=')
        return 2;
    return wordOperatorLength();
}

QString Lexer::take(qsizetype length)
{
    m_tokenPosition = m_position;
    m_position += length;
    return m_query.mid(m_tokenPosition, length);
}

ExpressionValue Lexer::makeQuoted(const QString& text) const
{
    const QString inside = text.mid(1, text.size() - 2);
    const QString string =
        text.startsWith(u'\'') ? unescapeString1(inside) : unescapeString2(inside);
    return ExpressionValue::fromString(string, static_cast<int>(m_tokenPosition), text);
}

bool Lexer::next(QList<ExpressionValue>& tokens)
{
    const int begin = position();
    if (const qsizetype blanks = run(m_position, isBlank)) {
        m_position += blanks;
        return true;
    }
    qsizetype variable = userVariableLength();
    if (variable == 0)
        variable = variableLength();
    if (variable > 0) {
        const QString text = take(variable);
        tokens.append(ExpressionValue::fromVariable(text, begin, text));
        return true;
    }
    if (const qsizetype quoted = quotedLength()) {
        tokens.append(makeQuoted(take(quoted)));
        return true;
    }
    if (const qsizetype word = run(m_position, isBareWordCharacter)) {
        const QString text = take(word);
        tokens.append(ExpressionValue::fromString(unescapeString3(text), begin, text));
        return true;
    }
    qsizetype length = binaryOperatorLength();
    const QChar first = m_query[m_position];
    if (length == 0 && (first == u'!' || first == u'(' || first == u')'))
        length = 1;
    if (length == 0)
        return false;
    const QString text = take(length);
    tokens.append(ExpressionValue::fromOperator(text.toLower().trimmed(), begin, text));
    return true;
}

QueryError makeLexicalError(const QString& query, int position)
{
    const qsizetype shown = 20;
    const QString rest = query.mid(position);
    const QString excerpt = rest.size() > shown ? rest.left(shown) + QStringLiteral("...") : rest;
    const QString message =
        QStringLiteral("Error while reading text at position %1 (%2):\n input seems to be invalid")
            .arg(QString::number(position), excerpt);
    return QueryError(QueryErrorFatal, message, position, rest);
}

} // namespace

QList<ExpressionValue> lexQuery(const QString& query, QList<QueryError>& errors)
{
    QList<ExpressionValue> tokens;
    Lexer lexer(query);
    while (!lexer.atEnd()) {
        if (!lexer.next(tokens)) {
            errors.append(makeLexicalError(query, lexer.position()));
            return {};
        }
    }
    return tokens;
}

QString unescapeString1(const QString& string)
{
    QString result = string;
    result.replace(QLatin1String("\\'"), QLatin1String("'"));
    result.replace(QLatin1String("\\\\"), QLatin1String("\\"));
    return result;
}

QString unescapeString2(const QString& string)
{
    QString result = string;
    result.replace(QLatin1String("\\\""), QLatin1String("\""));
    result.replace(QLatin1String("\\\\"), QLatin1String("\\"));
    return result;
}

QString unescapeString3(const QString& string)
{
    return string;
}
