// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/querywords.h>

#include <apps/lorix/text.h>

#include <QCoreApplication>
#include <QRegularExpression>

namespace lorix::viewer {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(QueryWords)
};

struct Kind
{
    const char* pattern; ///< Of the complaint on one line; what it captures is %1.
    const char* words;
};

// An empty capture stands for the piece of the query that the complaint is about.
const Kind kinds[] = {
    {"^Error while reading text",
     QT_TRANSLATE_NOOP("QueryWords", "“%1” cannot be understood. A text stands in quotes, as in "
                                     "s:tool == 'python'.")},
    {"expected a string, a variable",
     QT_TRANSLATE_NOOP("QueryWords", "“%1” cannot stand here: a text, an attribute such as s:tool "
                                     "or an opening bracket is expected.")},
    {"found a closing bracket",
     QT_TRANSLATE_NOOP("QueryWords", "There is one closing bracket too many.")},
    {"query is empty", QT_TRANSLATE_NOOP("QueryWords", "The query is empty.")},
    {"premature end of query",
     QT_TRANSLATE_NOOP("QueryWords", "The query is not complete: something must follow “%1”.")},
    {"attribute (.*) does not exist",
     QT_TRANSLATE_NOOP("QueryWords", "There is no attribute “%1”. Ctrl+Space shows which there "
                                     "are.")},
    {"operator (.*) requires two booleans",
     QT_TRANSLATE_NOOP("QueryWords", "“%1” stands between two conditions, such as "
                                     "s:tool == 'python'.")},
    {"operator (.*) requires two strings",
     QT_TRANSLATE_NOOP("QueryWords", "“%1” stands between two texts, as in s:title %contains "
                                     "'report'.")},
    {"operator (.*) requires two numbers",
     QT_TRANSLATE_NOOP("QueryWords", "“%1” stands between two numbers.")},
    {"operator (.*) requires either two numbers or two dates",
     QT_TRANSLATE_NOOP("QueryWords", "“%1” compares two numbers, or two dates.")},
    {"operator (.*) requires a boolean",
     QT_TRANSLATE_NOOP("QueryWords", "“%1” stands before a condition, such as s:tool == "
                                     "'python'.")},
    {"is not a boolean value",
     QT_TRANSLATE_NOOP("QueryWords", "This is no condition. Say what must hold, as in s:tool == "
                                     "'python'.")},
    {"the normal form of the query has more than",
     QT_TRANSLATE_NOOP("QueryWords", "The query is too complicated. Use fewer “&&” within “||”.")},
};

QString shortened(const QString& text)
{
    const qsizetype longest = 40;
    const QString line = cli::printable(text.simplified());
    return line.size() > longest ? line.left(longest) + QStringLiteral(" …") : line;
}

} // namespace

QString queryWords(const QueryError& error)
{
    const QString message = error.errorMessage().simplified();
    for (const Kind& kind : kinds) {
        const QRegularExpression pattern(QLatin1String(kind.pattern));
        const QRegularExpressionMatch match = pattern.match(message);
        if (!match.hasMatch())
            continue;
        const QString about = pattern.captureCount() > 0 ? match.captured(1) : error.originalText();
        QString words = Text::tr(kind.words);
        // No arg(): the words may hold a "%" that stands for itself.
        return words.replace(QLatin1String("%1"), shortened(about));
    }
    return message;
}

} // namespace lorix::viewer
