// SPDX-License-Identifier: BSD-3-Clause
#include <query/referencecompiler.h>

#include <QRegExp>

#include <algorithm>
#include <utility>

using namespace lorix;

namespace reference {

float toNumber(const QString& text, bool* ok)
{
    QString lower = text.toLower();
    float factor = 1;
    const QList<QPair<QString, float>> units = {{QStringLiteral("kb"), 1024.F},
                                                {QStringLiteral("mb"), 1048576.F},
                                                {QStringLiteral("gb"), 1073741824.F}};
    for (const auto& unit : units) {
        if (lower.endsWith(unit.first)) {
            lower.chop(2);
            factor = unit.second;
            break;
        }
    }
    QRegExp number(QStringLiteral("[+-]?[0-9.,]+(e[+-]?[0-9]+)?"));
    if (number.indexIn(lower) != 0) {
        *ok = false;
        return 0;
    }
    return number.cap(0).toFloat(ok) * factor;
}

QDateTime toDate(const QString& text, bool* ok)
{
    const QString date = QStringLiteral("(?:([0-9]{2}|[0-9]{4})-([0-9]{1,2})-([0-9]{1,2}))");
    const QString time = QStringLiteral("(?:([0-9]{1,2}):([0-9]{1,2})(?::([0-9]{1,2}))?)");
    QRegExp both(QStringLiteral("%1 +%2").arg(date, time));
    QRegExp dateOnly(date);
    QRegExp timeOnly(time);
    QDateTime result;
    if (both.indexIn(text) == 0) {
        result = QDateTime(QDate(both.cap(1).toInt(), both.cap(2).toInt(), both.cap(3).toInt()),
                           QTime(both.cap(4).toInt(), both.cap(5).toInt(), both.cap(6).toInt()));
    } else if (dateOnly.indexIn(text) == 0) {
        result = QDateTime(
            QDate(dateOnly.cap(1).toInt(), dateOnly.cap(2).toInt(), dateOnly.cap(3).toInt()),
            QTime(0, 0));
    } else if (timeOnly.indexIn(text) == 0) {
        result =
            QDateTime(QDate::currentDate(), QTime(timeOnly.cap(1).toInt(), timeOnly.cap(2).toInt(),
                                                  timeOnly.cap(3).toInt()));
    }
    *ok = result.isValid();
    return result;
}

bool matches(const QString& text, const QString& pattern)
{
    QRegExp expression(pattern.toLower(), Qt::CaseSensitive, QRegExp::Wildcard);
    return expression.indexIn(text) >= 0 && expression.matchedLength() == text.size();
}

QList<ExpressionValue> lexQuery(const QString& query, QList<QueryError>& errors)
{
    const QString quoted = QStringLiteral("'((?:[^'\\\\]|\\\\\\\\|\\\\')*)'");
    const QStringList patterns = {
        QStringLiteral("[ \\t\\n\\r]+"),
        QStringLiteral("[a-zA-Z]*\\:user\\{([^}\\\\]|\\\\\\\\|\\\\\\})+\\}"),
        QStringLiteral("[a-zA-Z]*\\:[a-zA-Z0-9]+(\\:[a-zA-Z0-9]+)?"),
        quoted,
        QString(quoted).replace(u'\'', u'"'),
        QStringLiteral("[^:&|!%=><\\s'\")(]+"),
        QStringLiteral("&&|\\|\\||==|!=|<|<=|>|>=|%contains\\s|%contains$|%matches\\s|%matches$|"
                       "%isapprox\\s|%isapprox$"),
        QStringLiteral("\\!"),
        QStringLiteral("\\(|\\)"),
    };
    static const QList<QRegExp> compiled = [&] {
        QList<QRegExp> list;
        for (const QString& pattern : patterns)
            list.append(QRegExp(pattern));
        return list;
    }();
    QList<ExpressionValue> tokens;
    int position = 0;
    while (position < query.size()) {
        int which = 0;
        while (which < 9 && compiled[which].indexIn(query, position) != position)
            ++which;
        if (which == 9) {
            QString shown = query.mid(position, 20);
            if (query.size() > position + 20)
                shown += QStringLiteral("...");
            errors.append(QueryError(QueryErrorType(0),
                                     QStringLiteral("Error while reading text at position ") +
                                         QString::number(position) + QStringLiteral(" (") + shown +
                                         QStringLiteral("):\n input seems to be invalid"),
                                     position, query.mid(position)));
            return {};
        }
        const QString text = compiled[which].cap(0);
        QString inside = compiled[which].cap(1);
        if (which == 1 || which == 2) {
            tokens.append(ExpressionValue::fromVariable(text, position, text));
        } else if (which == 3) {
            inside.replace(QStringLiteral("\\'"), QStringLiteral("'"));
            inside.replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
            tokens.append(ExpressionValue::fromString(inside, position, text));
        } else if (which == 4) {
            inside.replace(QStringLiteral("\\\""), QStringLiteral("\""));
            inside.replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
            tokens.append(ExpressionValue::fromString(inside, position, text));
        } else if (which == 5) {
            tokens.append(ExpressionValue::fromString(text, position, text));
        } else if (which == 6 || which == 7) {
            tokens.append(ExpressionValue::fromOperator(text.toLower().trimmed(), position, text));
        } else if (which == 8) {
            tokens.append(ExpressionValue::fromOperator(text, position, text));
        }
        position += int(text.size());
    }
    return tokens;
}

namespace {

bool isOp(const ExpressionValue& token, const char* name)
{
    return token.isOperator() && token.operatorName() == QLatin1String(name);
}

// Index after the sub-expression's last token, or -1.
int checkFrom(const QList<ExpressionValue>& tokens, int i, bool inside, QList<ExpressionValue>& out,
              QList<QueryError>& errors)
{
    bool operandWanted = true;
    const auto fail = [&](const QString& message, const ExpressionValue& token) {
        errors.append(
            QueryError(QueryErrorType(0), message, token.position(), token.originalText()));
        return -1;
    };
    for (; i < tokens.size(); ++i) {
        const ExpressionValue& token = tokens[i];
        const bool operand = token.isVariable() || token.isString();
        if (isOp(token, ")") && (!operandWanted || !inside)) {
            if (!inside)
                return fail(QStringLiteral("Error at position %1:\n found a closing  bracket ) "
                                           "but did not except one.")
                                .arg(token.position()),
                            token);
            out.append(token);
            return i + 1;
        }
        if (operand || isOp(token, "(") || isOp(token, "!")) {
            if (!operandWanted)
                out.append(ExpressionValue::fromOperator(QStringLiteral("implizit &&"),
                                                         token.position(), QString()));
            out.append(token);
            operandWanted = isOp(token, "!");
            if (isOp(token, "(")) {
                const int end = checkFrom(tokens, i + 1, true, out, errors);
                if (end < 0)
                    return -1;
                i = end - 1;
            }
            continue;
        }
        if (operandWanted)
            return fail(QStringLiteral("Error at position ") + QString::number(token.position()) +
                            QStringLiteral(":\n expected a string, a variable, an open bracket "
                                           "'(' or an unary operator (e.g. !), but found '") +
                            token.originalText() + QStringLiteral("'."),
                        token);
        out.append(token);
        operandWanted = true;
    }
    if (tokens.isEmpty()) {
        errors.append(QueryError(QueryErrorType(0),
                                 QStringLiteral("Error after position 0:\n query is empty."), 0,
                                 QString()));
        return -1;
    }
    if (inside || operandWanted) {
        const ExpressionValue& last = tokens.last();
        return fail(QStringLiteral("Error after position ") +
                        QString::number(last.position() + last.originalText().size()) +
                        QStringLiteral(":\n premature end of query  after ") + last.originalText() +
                        QStringLiteral("."),
                    last);
    }
    return i;
}

// Reads tokens that are known to be right.
class Descent
{
public:
    Descent(const QList<ExpressionValue>& tokens, QString query)
        : m_tokens(tokens), m_query(std::move(query))
    {}

    Node level(int depth)
    {
        static const QList<QStringList> levels = {
            {QStringLiteral("&&"), QStringLiteral("implizit &&")},
            {QStringLiteral("||")},
            {QStringLiteral("=="), QStringLiteral("!=")},
            {QStringLiteral("<"), QStringLiteral("<="), QStringLiteral(">"), QStringLiteral(">=")},
            {QStringLiteral("%contains"), QStringLiteral("%matches"), QStringLiteral("%isapprox")}};
        if (depth == levels.size())
            return primary();
        Node left = level(depth + 1);
        while (m_at < m_tokens.size() && m_tokens[m_at].isOperator() &&
               levels[depth].contains(m_tokens[m_at].operatorName())) {
            const ExpressionValue op = m_tokens[m_at++];
            left = inner(op, {left, level(depth + 1)});
        }
        return left;
    }

private:
    Node primary()
    {
        const ExpressionValue token = m_tokens[m_at++];
        if (isOp(token, "!"))
            return inner(token, {primary()});
        if (isOp(token, "(")) {
            m_brackets += 10;
            const Node node = level(0);
            ++m_at;
            m_brackets -= 10;
            return node;
        }
        Node leaf(new ExpressionTreeNode);
        leaf->value = token;
        leaf->text = token.originalText();
        leaf->position = token.position();
        return leaf;
    }

    Node inner(ExpressionValue op, const QList<Node>& children) const
    {
        op.setPrecedence(op.precedence() + m_brackets);
        Node node(new ExpressionTreeNode);
        node->value = op;
        node->children = children;
        qsizetype begin = children[0]->position;
        qsizetype end = begin;
        for (const Node& child : children) {
            begin = std::min<qsizetype>(begin, child->position);
            end = std::max(end, child->position + child->text.size());
        }
        node->position = int(begin);
        node->text = m_query.mid(begin, end - begin);
        return node;
    }

    QList<ExpressionValue> m_tokens;
    QString m_query;
    int m_at = 0;
    int m_brackets = 0;
};

} // namespace

QList<ExpressionValue> checkSyntax(const QList<ExpressionValue>& tokens, QList<QueryError>& errors)
{
    QList<ExpressionValue> out;
    return checkFrom(tokens, 0, false, out, errors) < 0 ? QList<ExpressionValue>() : out;
}

Node createTree(const QList<ExpressionValue>& tokens, const QString& query)
{
    return tokens.isEmpty() ? Node() : Descent(tokens, query).level(0);
}

namespace {

int fit(const QString& type, const QString& types)
{
    if (types.contains(QStringLiteral("no") + type))
        return 4;
    return types.contains(type) ? 1 : 2;
}

void complain(const Node& node, const QString& message, QList<QueryError>& errors)
{
    errors.append(QueryError(QueryErrorType(0), message, node->value.position(), node->text));
}

QString head(const Node& node, const char* gravity)
{
    return QString::fromLatin1(gravity) + QStringLiteral(" at pos ") +
           QString::number(node->value.position()) + QStringLiteral(": operator ") +
           node->value.operatorName();
}

QString line(const Node& operand, const char* verb, const QString& type)
{
    return QStringLiteral("\n'") + operand->text + QString::fromLatin1(verb) + type + u'.';
}

const char* const isNot = "' is not a ";
const char* const mayNot = "' may not be a ";

void oneType(const Node& node, const QStringList& types, const QString& type,
             QList<QueryError>& errors)
{
    const QList<int> f = {fit(type, types[0]), fit(type, types[1])};
    const int worst = std::max(f[0], f[1]);
    if (worst == 1)
        return;
    QString message = head(node, worst == 4 ? "error" : "warning") +
                      QStringLiteral(" requires two ") + type + QStringLiteral("s as arguments.");
    for (int side = 0; side < 2; ++side) {
        if (f[side] == worst)
            message += line(node->children[side], worst == 4 ? isNot : mayNot, type);
    }
    complain(node, message, errors);
}

void twoTypes(const Node& node, const QStringList& types, QList<QueryError>& errors)
{
    const QStringList kinds = {QStringLiteral("number"), QStringLiteral("date")};
    int f[2][2]; // kind, side
    for (int kind = 0; kind < 2; ++kind) {
        for (int side = 0; side < 2; ++side)
            f[kind][side] = fit(kinds[kind], types[side]);
    }
    const auto possible = [&](int kind) { return f[kind][0] != 4 && f[kind][1] != 4; };
    const QString rest = QStringLiteral(" requires either two numbers or two dates as arguments.");
    QString message;
    if (!possible(0) && !possible(1)) {
        message = head(node, "error") + rest;
        for (int side = 0; side < 2; ++side) {
            if (f[0][side] == 4 && f[1][side] == 4)
                message += line(node->children[side], isNot, QStringLiteral("number or date"));
            else if (f[0][side] == 4)
                message += line(node->children[side], isNot, kinds[0]);
            else if (f[1][side] == 4)
                message += line(node->children[side], isNot, kinds[1]);
        }
    } else if ((f[0][0] == 1 && f[0][1] == 1) || (f[1][0] == 1 && f[1][1] == 1)) {
        return;
    } else {
        message = head(node, "warning") + rest;
        for (int kind = 0; kind < 2; ++kind) {
            for (int side = 0; side < 2 && possible(kind); ++side) {
                if (f[kind][side] == 2)
                    message += line(node->children[side], mayNot, kinds[kind]);
            }
        }
    }
    complain(node, message, errors);
}

QString variableTypes(const QString& attribute)
{
    const auto in = [&](const char* names) {
        return QString::fromLatin1(names).split(u' ').contains(attribute);
    };
    if (attribute.startsWith(QLatin1String("user:")) || attribute == QLatin1String("any"))
        return QStringLiteral("string");
    if (in("hash filepurpose md5 cmd5"))
        return QStringLiteral("string nonumber nodate noboolean");
    if (in("tagid filesize cfilesize parentid"))
        return QStringLiteral("string number nodate noboolean");
    if (in("timestamp lastmodified"))
        return QStringLiteral("string date nonumber noboolean");
    if (in("iswfs isfile embedded compressed isinfile isoutfile"))
        return QStringLiteral("nostring nonumber nodate boolean");
    if (in("lorixrootfile title description comment command tool toolpath host user creator "
           "userattrs filename filepath filetype"))
        return QStringLiteral("string noboolean");
    return QString();
}

} // namespace

QString getTypes(const Node& node, QList<QueryError>& errors)
{
    const ExpressionValue& value = node->value;
    if (value.isString()) {
        bool number = false;
        bool date = false;
        toNumber(value.string(), &number);
        toDate(value.string(), &date);
        return QStringLiteral("string boolean ") +
               (number ? QStringLiteral("number ") : QStringLiteral("nonumber ")) +
               (date ? QStringLiteral("date") : QStringLiteral("nodate"));
    }
    if (value.isVariable()) {
        const QString types = variableTypes(value.variableAttribute());
        if (!types.isEmpty())
            return types;
        errors.append(QueryError(QueryErrorType(0),
                                 QStringLiteral("error at pos ") +
                                     QString::number(value.position()) +
                                     QStringLiteral(": attribute ") + value.variableAttribute() +
                                     QStringLiteral(" does not exist."),
                                 value.position(), value.originalText()));
        return QStringLiteral("nostring noboolean nonumber nodate");
    }
    QStringList types;
    for (const Node& child : node->children)
        types.append(getTypes(child, errors));
    const QString name = value.operatorName();
    if (name == QLatin1String("!")) {
        const int f = fit(QStringLiteral("boolean"), types[0]);
        if (f != 1)
            complain(
                node,
                head(node, f == 4 ? "error" : "warning") +
                    QStringLiteral(" requires a boolean as argument.") +
                    line(node->children[0], f == 4 ? isNot : mayNot, QStringLiteral("boolean")),
                errors);
    } else if (name.endsWith(QLatin1String("&&")) || name == QLatin1String("||")) {
        oneType(node, types, QStringLiteral("boolean"), errors);
    } else if (name.startsWith(u'<') || name.startsWith(u'>')) {
        twoTypes(node, types, errors);
    } else if (name == QLatin1String("%matches") || name == QLatin1String("%contains")) {
        oneType(node, types, QStringLiteral("string"), errors);
    } else if (name == QLatin1String("%isapprox")) {
        oneType(node, types, QStringLiteral("number"), errors);
    }
    return QStringLiteral("boolean");
}

Node expandImplicit(const Node& node, bool booleanContext)
{
    if (booleanContext && node->value.isString()) {
        Node any(new ExpressionTreeNode);
        any->value = ExpressionValue::fromVariable(QString(), QStringLiteral("any"), node->position,
                                                   QString());
        any->position = node->position;
        Node contains(new ExpressionTreeNode);
        contains->value =
            ExpressionValue::fromOperator(QStringLiteral("%contains"), node->position, node->text);
        contains->position = node->position;
        contains->text = node->text;
        contains->children = {any, node};
        return contains;
    }
    const QString name = node->value.operatorName();
    if (name.contains(QLatin1String("&&")) || name.contains(QLatin1String("||")) ||
        name == QLatin1String("!")) {
        for (Node& child : node->children)
            child = expandImplicit(child, true);
    }
    return node;
}

QSet<QString> nameVariables(const Node& node, int counter)
{
    QSet<QString> names;
    if (node->value.isVariable()) {
        if (node->value.variableName().isEmpty())
            node->value.setVariableName(QStringLiteral("@unnamed-") + QString::number(counter + 1));
        names.insert(node->value.variableName());
    }
    for (const Node& child : node->children) {
        const QSet<QString> below = nameVariables(child, counter);
        counter += int(below.size());
        names += below;
    }
    node->variables = names;
    return names;
}

Node parseQuery(const QString& query, QList<QueryError>& errors)
{
    errors.clear();
    QList<ExpressionValue> tokens = reference::lexQuery(query, errors);
    if (!errors.isEmpty())
        return {};
    tokens = reference::checkSyntax(tokens, errors);
    if (!errors.isEmpty())
        return {};
    Node tree = reference::createTree(tokens, query);
    const QString types = reference::getTypes(tree, errors);
    if (types.contains(QLatin1String("noboolean")) || !types.contains(QLatin1String("boolean"))) {
        errors.append(QueryError(QueryErrorType(0),
                                 QStringLiteral("Result of query ") + tree->text +
                                     QStringLiteral(" is not a boolean value"),
                                 tree->position, tree->text));
        return {};
    }
    if (!errors.isEmpty())
        return {};
    tree = expandImplicit(tree, true);
    nameVariables(tree, 0);
    return tree;
}

QString describe(const QList<ExpressionValue>& tokens)
{
    QString result;
    for (const ExpressionValue& token : tokens) {
        result +=
            QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8\n")
                .arg(QString::number(token.kind()), token.variableName(), token.variableAttribute(),
                     token.string(), token.operatorName(), QString::number(token.precedence()),
                     token.originalText(), QString::number(token.position()));
    }
    return result;
}

QString describe(const QList<QueryError>& errors)
{
    QString result;
    for (const QueryError& error : errors) {
        result += QStringLiteral("%1|%2|%3|%4\n")
                      .arg(QString::number(error.type()), error.errorMessage(),
                           QString::number(error.position()), error.originalText());
    }
    return result;
}

QString describe(const Node& node, int depth)
{
    if (!node)
        return QStringLiteral("null\n");
    QStringList names(node->variables.cbegin(), node->variables.cend());
    names.sort();
    QString result = QString(depth * 2, u' ') +
                     QStringLiteral("[%1 %2 %3] ")
                         .arg(QString::number(node->position), node->text, names.join(u',')) +
                     describe({node->value});
    for (const Node& child : node->children)
        result += describe(child, depth + 1);
    return result;
}

} // namespace reference
