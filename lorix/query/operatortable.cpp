// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/operatortable.h>

#include <algorithm>
#include <iterator>

namespace lorix {

namespace {

struct OperatorEntry
{
    QLatin1String name;
    int precedence;
    int numArguments;
    char association;
};

constexpr OperatorEntry operators[] = {
    {QLatin1String("!"), 9, 1, 'r'},           {QLatin1String("%contains"), 6, 2, 'l'},
    {QLatin1String("%matches"), 6, 2, 'l'},    {QLatin1String("%isapprox"), 6, 2, 'l'},
    {QLatin1String("<"), 5, 2, 'l'},           {QLatin1String("<="), 5, 2, 'l'},
    {QLatin1String(">"), 5, 2, 'l'},           {QLatin1String(">="), 5, 2, 'l'},
    {QLatin1String("=="), 4, 2, 'l'},          {QLatin1String("!="), 4, 2, 'l'},
    {QLatin1String("||"), 3, 2, 'l'},          {QLatin1String("&&"), 2, 2, 'l'},
    {QLatin1String("implizit &&"), 2, 2, 'l'}, {QLatin1String("("), 0, 0, 'x'},
    {QLatin1String(")"), 0, 0, 'x'},           {QLatin1String("EOS"), -100, 0, 'x'},
};

constexpr OperatorEntry unknownOperator = {QLatin1String(), -1, -1, 'x'};

const OperatorEntry& entry(const QString& name)
{
    const auto found = std::find_if(std::begin(operators), std::end(operators),
                                    [&](const OperatorEntry& e) { return name == e.name; });
    return found == std::end(operators) ? unknownOperator : *found;
}

} // namespace

int getPrecedence(const QString& operatorName)
{
    return entry(operatorName).precedence;
}

int getNumArguments(const QString& operatorName)
{
    return entry(operatorName).numArguments;
}

char getAssociation(const QString& operatorName)
{
    return entry(operatorName).association;
}

} // namespace lorix
