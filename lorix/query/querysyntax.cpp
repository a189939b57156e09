// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/querysyntax.h>

using namespace lorix;

namespace {

bool isNamed(const ExpressionValue& token, QLatin1String name)
{
    return token.isOperator() && token.operatorName() == name;
}

QueryError makeError(const QString& message, const ExpressionValue& token)
{
    return QueryError(QueryErrorFatal, message, token.position(), token.originalText());
}

QueryError makeOperandExpected(const ExpressionValue& token)
{
    return makeError(
        QStringLiteral("Error at position %1:\n expected a string, a variable, an open bracket "
                       "'(' or an unary operator (e.g. !), but found '%2'.")
            .arg(QString::number(token.position()), token.originalText()),
        token);
}

// The doubled blank and the wording are what callers know.
QueryError makeUnexpectedClosingBracket(const ExpressionValue& token)
{
    return makeError(QStringLiteral("Error at position %1:\n found a closing  bracket ) but did "
                                    "not except one.")
                         .arg(token.position()),
                     token);
}

QueryError makePrematureEnd(const QList<ExpressionValue>& tokens)
{
    if (tokens.isEmpty())
        return QueryError(QueryErrorFatal,
                          QStringLiteral("Error after position 0:\n query is empty."), 0,
                          QString());
    const ExpressionValue& last = tokens.last();
    return makeError(
        QStringLiteral("Error after position %1:\n premature end of query  after %2.")
            .arg(QString::number(last.position() + last.length()), last.originalText()),
        last);
}

// A scanner of two states, expecting an operand or an operator, that counts
// the brackets which are open.
class SyntaxScanner
{
public:
    SyntaxScanner(bool insideBracket, QList<QueryError>& errors)
        : m_depth(insideBracket ? 1 : 0), m_insideBracket(insideBracket), m_errors(errors)
    {}

    QList<ExpressionValue> checked;

    /// False after an error.
    bool scan(const ExpressionValue& token)
    {
        return m_expectsOperand ? scanOperand(token) : scanOperator(token);
    }

    /// The bracket that was open at the beginning is closed.
    bool isClosed() const { return m_insideBracket && m_depth == 0; }

    bool mayEnd() const { return m_depth == 0 && !m_expectsOperand; }

private:
    bool scanOperand(const ExpressionValue& token)
    {
        if (isNamed(token, QLatin1String("("))) {
            ++m_depth;
        } else if (token.isVariable() || token.isString()) {
            m_expectsOperand = false;
        } else if (!isNamed(token, QLatin1String("!"))) {
            const bool strayBracket = m_depth == 0 && isNamed(token, QLatin1String(")"));
            m_errors.append(strayBracket ? makeUnexpectedClosingBracket(token)
                                         : makeOperandExpected(token));
            return false;
        }
        checked.append(token);
        return true;
    }

    bool scanOperator(const ExpressionValue& token)
    {
        if (isNamed(token, QLatin1String(")"))) {
            if (m_depth == 0) {
                m_errors.append(makeUnexpectedClosingBracket(token));
                return false;
            }
            --m_depth;
            checked.append(token);
            return true;
        }
        if (token.isOperator() && token.numArgs() == 2) {
            checked.append(token);
            m_expectsOperand = true;
            return true;
        }
        const bool startsOperand = token.isVariable() || token.isString() ||
                                   isNamed(token, QLatin1String("(")) ||
                                   isNamed(token, QLatin1String("!"));
        if (startsOperand)
            checked.append(createImplizitAnd(token.position()));
        m_expectsOperand = true;
        return scanOperand(token);
    }

    qsizetype m_depth;
    bool m_insideBracket;
    bool m_expectsOperand = true;
    QList<QueryError>& m_errors;
};

} // namespace

QList<ExpressionValue> checkSyntax(const QList<ExpressionValue>& tokens, QList<QueryError>& errors)
{
    return checkSubExpressionCorrectness(tokens, 0, false, errors).first;
}

QPair<QList<ExpressionValue>, int>
checkSubExpressionCorrectness(const QList<ExpressionValue>& tokens, int start, bool insideBracket,
                              QList<QueryError>& errors)
{
    SyntaxScanner scanner(insideBracket, errors);
    for (int i = start; i < tokens.size(); ++i) {
        if (!scanner.scan(tokens[i]))
            return {{}, ~i};
        if (scanner.isClosed())
            return {scanner.checked, i};
    }
    const int end = static_cast<int>(tokens.size());
    if (!scanner.mayEnd()) {
        errors.append(makePrematureEnd(tokens));
        return {{}, ~end};
    }
    return {scanner.checked, end};
}

ExpressionValue createImplizitAnd(int position)
{
    return ExpressionValue::fromOperator(QStringLiteral("implizit &&"), position, QString());
}
