// SPDX-License-Identifier: BSD-3-Clause
// bench_query search|plain NAMES CANDIDATES [STEPS]
// bench_query lex|compile BYTES
//
// Prints the seconds that one call takes: the search that ships, or plain
// backtracking, over a history in which nothing matches; or reading a query of
// so many bytes. With STEPS the plain search gives up after so many bindings
// and prints "-".
#include <lorix/query/lorixfindquery.h>
#include <lorix/query/querylexer.h>
#include <query/referencesearch.h>

#include <QElapsedTimer>

#include <cstdio>
#include <cstdlib>

using namespace lorix;

namespace {

// Step i leads to those steps whose title is its tool. Round a ring of 37, a
// path of three or four steps never comes back to where it began; but every
// step has a next one and one before, so that no candidate is out of the
// question by itself, or with its neighbours.
constexpr int ring = 37;

QList<Summary> makeHistory(int candidates)
{
    QList<Summary> summaries;
    for (int i = 0; i < candidates; ++i) {
        Summary summary;
        summary.tagId = i;
        summary.title = QStringLiteral("place %1").arg(i % ring);
        summary.tool = QStringLiteral("place %1").arg((i + 1) % ring);
        summaries.append(summary);
    }
    return summaries;
}

QString makePath(int names)
{
    QStringList tests;
    for (int i = 0; i < names; ++i)
        tests.append(QStringLiteral("%1:tool == %2:title")
                         .arg(QChar(u'a' + i))
                         .arg(QChar(u'a' + (i + 1) % names)));
    return tests.join(QStringLiteral(" && "));
}

QString makeConjunctions(qsizetype bytes)
{
    QString query = QStringLiteral("a:iswfs");
    for (int i = 0; query.size() < bytes; ++i)
        query += QStringLiteral(" && a:title != 'the title with number %1'").arg(i);
    return query;
}

int search(bool plain, int names, int candidates, qint64 most)
{
    const QList<Summary> summaries = makeHistory(candidates);
    const LorixFindQuery query(makePath(names));
    QElapsedTimer timer;
    timer.start();
    qint64 steps = 0;
    bool found = false;
    if (plain)
        reference::search(summaries, query.normalForm(), query.normalForm().variableNames(), &found,
                          most, &steps);
    else
        found = query.matches(summaries);
    if (found)
        return 3;
    if (steps < 0)
        std::printf("-\n");
    else
        std::printf("%.6f\n", static_cast<double>(timer.nsecsElapsed()) / 1e9);
    return 0;
}

int read(bool compile, qsizetype bytes)
{
    Bounds bounds;
    bounds.queryClauses = 10 * 1000 * 1000;
    bounds.queryLiterals = 10 * 1000 * 1000;
    const QString text = makeConjunctions(bytes);
    QElapsedTimer timer;
    timer.start();
    QList<QueryError> errors;
    const bool good =
        compile ? LorixFindQuery(text, bounds).isValid() : !lexQuery(text, errors).isEmpty();
    std::printf("%.6f\n", static_cast<double>(timer.nsecsElapsed()) / 1e9);
    return good ? 0 : 3;
}

} // namespace

int main(int argc, char** argv)
{
    const QByteArray mode = argc > 2 ? argv[1] : "";
    if (argc == 3 && (mode == "lex" || mode == "compile"))
        return read(mode == "compile", std::atoll(argv[2]));
    if (argc >= 4 && (mode == "search" || mode == "plain"))
        return search(mode == "plain", std::atoi(argv[2]), std::atoi(argv[3]),
                      argc > 4 ? std::atoll(argv[4]) : -1);
    std::fprintf(stderr, "bench_query search|plain NAMES CANDIDATES [STEPS]\n"
                         "bench_query lex|compile BYTES\n");
    return 2;
}
