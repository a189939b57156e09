// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/querytypes.h>

#include <QStringList>

#include <utility>
#include <vector>

using namespace lorix;

namespace {

enum TypeFit { fits = 1, mayFit = 2, doesNotFit = 4 };

// Characters of messages after which checking ends. A message quotes operands,
// so that a long chain of doubtful operators would quote itself over and over.
constexpr qsizetype messageCharacters = 16 * 1024 * 1024;

QueryError makeTypeError(const QString& message, const ExpressionTreeNode& node)
{
    return QueryError(QueryErrorFatal, message, node.value.position(), node.text);
}

QString operandText(const ExpressionTreeNode& node, qsizetype index)
{
    return index < node.children.size() ? node.children[index]->text : QString();
}

QString requirement(const char* format, const ExpressionTreeNode& node)
{
    return QString::fromLatin1(format).arg(QString::number(node.value.position()),
                                           node.value.operatorName());
}

// What a text may be: two descriptions, fitted to one type.
struct OperandFits
{
    OperandFits(const QString& type, const QString& leftTypes, const QString& rightTypes)
        : left(checkIfTypeFits(type, leftTypes)), right(checkIfTypeFits(type, rightTypes))
    {}

    bool possible() const { return left != doesNotFit && right != doesNotFit; }
    bool certain() const { return left == fits && right == fits; }

    int left;
    int right;
};

QString doubts(const ExpressionTreeNode& node, const OperandFits& operands, const QString& type)
{
    QString lines;
    if (operands.left == mayFit)
        lines += maybeWrongTypeStr(operandText(node, 0), type);
    if (operands.right == mayFit)
        lines += maybeWrongTypeStr(operandText(node, 1), type);
    return lines;
}

QString wrongTypeLine(const QString& text, int fitA, int fitB, const QString& typeA,
                      const QString& typeB)
{
    if (fitA == doesNotFit && fitB == doesNotFit)
        return wrongTypeStr(text, QStringLiteral("%1 or %2").arg(typeA, typeB));
    if (fitA == doesNotFit)
        return wrongTypeStr(text, typeA);
    return fitB == doesNotFit ? wrongTypeStr(text, typeB) : QString();
}

void checkBinaryOperator(const QSharedPointer<ExpressionTreeNode>& node, const QString& left,
                         const QString& right, QList<QueryError>& errors)
{
    const QString name = node->value.operatorName();
    const auto in = [&name](const QStringList& names) { return names.contains(name); };
    if (in({QStringLiteral("implizit &&"), QStringLiteral("||"), QStringLiteral("&&")}))
        checkLogicalOperators(node, left, right, errors);
    else if (in({QStringLiteral(">="), QStringLiteral(">"), QStringLiteral("<="),
                 QStringLiteral("<")}))
        checkComparissonOperators(node, left, right, errors);
    // "==" and "!=" are in no list: they take whatever they get.
    else if (in({QStringLiteral("%matches"), QStringLiteral("%contains")}))
        checkStringOperators(node, left, right, errors);
    else if (name == QLatin1String("%isapprox"))
        checkNumberOperators(node, left, right, errors);
}

QString typesOfVariable(const ExpressionTreeNode& node,
                        const QHash<QString, QString>& attributeTypes, QList<QueryError>& errors)
{
    const ExpressionValue& value = node.value;
    const QString attribute = value.variableAttribute();
    if (attribute.startsWith(QLatin1String("user:")))
        return QStringLiteral("string");
    const auto found = attributeTypes.constFind(attribute);
    if (found != attributeTypes.cend())
        return *found;
    const QString message = QStringLiteral("error at pos %1: attribute %2 does not exist.")
                                .arg(QString::number(value.position()), attribute);
    errors.append(QueryError(QueryErrorFatal, message, value.position(), value.originalText()));
    return QStringLiteral("nostring,noboolean,nonumber,nodate");
}

QString typesOfNode(const QSharedPointer<ExpressionTreeNode>& node, const QStringList& operandTypes,
                    const QHash<QString, QString>& attributeTypes, QList<QueryError>& errors)
{
    if (node->value.isString())
        return getTypesOfString(ReturnValue::fromString(node->value.string()));
    if (node->value.isVariable())
        return typesOfVariable(*node, attributeTypes, errors);
    if (operandTypes.size() == 2)
        checkBinaryOperator(node, operandTypes[0], operandTypes[1], errors);
    else if (operandTypes.size() == 1)
        checkUnaryLogicalOperators(node, operandTypes[0], errors);
    return QStringLiteral("boolean");
}

} // namespace

QHash<QString, QString> getAttributeTypes()
{
    static const struct
    {
        const char* names;
        const char* types;
    } table[] = {
        {"hash", "string,nonumber,nodate,noboolean"},
        {"tagid,parentid,filesize,cfilesize", "string,number,nodate,noboolean"},
        {"timestamp,lastmodified", "string,date,nonumber,noboolean"},
        {"lorixrootfile,title,description,comment,command,tool,toolpath,host,user,creator,"
         "userattrs,filename,filepath,filetype",
         "string,noboolean"},
        {"iswfs,isfile,embedded,compressed", "nostring,nonumber,nodate,boolean"},
        {"isinfile,isoutfile", "nostring,nodate,nonumber,boolean"},
        {"filepurpose,md5,cmd5", "string,nodate,nonumber,noboolean"},
        {"any", "string"},
    };
    QHash<QString, QString> types;
    for (const auto& row : table) {
        for (const QString& name : QString::fromLatin1(row.names).split(u','))
            types.insert(name, QString::fromLatin1(row.types));
    }
    return types;
}

QString getTypes(QSharedPointer<ExpressionTreeNode> node,
                 const QHash<QString, QString>& attributeTypes, QList<QueryError>& errors)
{
    struct Frame
    {
        QSharedPointer<ExpressionTreeNode> node;
        QStringList operandTypes;
    };
    if (!node)
        return QString();
    std::vector<Frame> frames{{std::move(node), {}}};
    qsizetype counted = errors.size();
    qsizetype characters = 0;
    while (characters < messageCharacters) {
        const Frame& frame = frames.back();
        if (frame.operandTypes.size() < frame.node->children.size()) {
            frames.push_back({frame.node->children[frame.operandTypes.size()], {}});
            continue;
        }
        const QString types = typesOfNode(frame.node, frame.operandTypes, attributeTypes, errors);
        for (; counted < errors.size(); ++counted)
            characters += errors[counted].errorMessage().size();
        frames.pop_back();
        if (frames.empty())
            return types;
        frames.back().operandTypes.append(types);
    }
    return QStringLiteral("boolean");
}

QString getTypesOfString(const ReturnValue& value)
{
    return QStringLiteral("string,boolean") +
           (value.isNumber() ? QStringLiteral(",number") : QStringLiteral(",nonumber")) +
           (value.isDate() ? QStringLiteral(",date") : QStringLiteral(",nodate"));
}

int checkIfTypeFits(const QString& type, const QString& description)
{
    if (description.contains(QStringLiteral("no") + type))
        return doesNotFit;
    return description.contains(type) ? fits : mayFit;
}

QString wrongTypeStr(const QString& text, const QString& type)
{
    return QStringLiteral("\n'%1' is not a %2.").arg(text, type);
}

QString maybeWrongTypeStr(const QString& text, const QString& type)
{
    return QStringLiteral("\n'%1' may not be a %2.").arg(text, type);
}

void createErrorOneType(const QSharedPointer<ExpressionTreeNode>& node, const QString& left,
                        const QString& right, const QString& type, QList<QueryError>& errors)
{
    const OperandFits operands(type, left, right);
    if (operands.certain())
        return;
    const QString types = type + u's';
    QString message;
    if (operands.possible()) {
        message =
            QStringLiteral("warning at pos %1: operator %2 requires two %3 as arguments.")
                .arg(QString::number(node->value.position()), node->value.operatorName(), types) +
            doubts(*node, operands, type);
    } else {
        message =
            QStringLiteral("error at pos %1: operator %2 requires two %3 as arguments.")
                .arg(QString::number(node->value.position()), node->value.operatorName(), types);
        if (operands.left == doesNotFit)
            message += wrongTypeStr(operandText(*node, 0), type);
        if (operands.right == doesNotFit)
            message += wrongTypeStr(operandText(*node, 1), type);
    }
    errors.append(makeTypeError(message, *node));
}

void createErrorTwoTypes(const QSharedPointer<ExpressionTreeNode>& node, const QString& left,
                         const QString& right, const QString& typeA, const QString& typeB,
                         QList<QueryError>& errors)
{
    const OperandFits a(typeA, left, right);
    const OperandFits b(typeB, left, right);
    const QString place = QString::number(node->value.position());
    const QString name = node->value.operatorName();
    const QString demand =
        QStringLiteral(" at pos %1: operator %2 requires either two %3 or two %4 as arguments.")
            .arg(place, name, typeA + u's', typeB + u's');
    QString message;
    if (!a.possible() && !b.possible()) {
        message = QStringLiteral("error") + demand +
                  wrongTypeLine(operandText(*node, 0), a.left, b.left, typeA, typeB) +
                  wrongTypeLine(operandText(*node, 1), a.right, b.right, typeA, typeB);
    } else if (a.certain() || b.certain()) {
        return;
    } else {
        message = QStringLiteral("warning") + demand;
        if (a.possible())
            message += doubts(*node, a, typeA);
        if (b.possible())
            message += doubts(*node, b, typeB);
    }
    errors.append(makeTypeError(message, *node));
}

namespace lorix {

bool checkQueryTypes(const QSharedPointer<ExpressionTreeNode>& root, QList<QueryError>& errors)
{
    const QString types = getTypes(root, getAttributeTypes(), errors);
    if (checkIfTypeFits(QStringLiteral("boolean"), types) != fits) {
        const QString text = root ? root->text : QString();
        errors.append(QueryError(
            QueryErrorFatal, QStringLiteral("Result of query %1 is not a boolean value").arg(text),
            root ? root->position : 0, text));
        return false;
    }
    return !containsErrors(errors);
}

void checkLogicalOperators(const QSharedPointer<ExpressionTreeNode>& node, const QString& left,
                           const QString& right, QList<QueryError>& errors)
{
    createErrorOneType(node, left, right, QStringLiteral("boolean"), errors);
}

void checkComparissonOperators(const QSharedPointer<ExpressionTreeNode>& node, const QString& left,
                               const QString& right, QList<QueryError>& errors)
{
    createErrorTwoTypes(node, left, right, QStringLiteral("number"), QStringLiteral("date"),
                        errors);
}

void checkStringOperators(const QSharedPointer<ExpressionTreeNode>& node, const QString& left,
                          const QString& right, QList<QueryError>& errors)
{
    createErrorOneType(node, left, right, QStringLiteral("string"), errors);
}

void checkNumberOperators(const QSharedPointer<ExpressionTreeNode>& node, const QString& left,
                          const QString& right, QList<QueryError>& errors)
{
    createErrorOneType(node, left, right, QStringLiteral("number"), errors);
}

void checkUnaryLogicalOperators(const QSharedPointer<ExpressionTreeNode>& node,
                                const QString& description, QList<QueryError>& errors)
{
    const QString type = QStringLiteral("boolean");
    const int fit = checkIfTypeFits(type, description);
    if (fit == doesNotFit) {
        errors.append(makeTypeError(
            requirement("error at pos %1: operator %2 requires a boolean as argument.", *node) +
                wrongTypeStr(operandText(*node, 0), type),
            *node));
    } else if (fit == mayFit) {
        errors.append(makeTypeError(
            requirement("warning at pos %1: operator %2 requires a boolean as argument.", *node) +
                maybeWrongTypeStr(operandText(*node, 0), type),
            *node));
    }
}

} // namespace lorix
