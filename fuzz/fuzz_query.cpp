// SPDX-License-Identifier: BSD-3-Clause
// A query, and a history that it is matched against. The first byte says how
// many candidates; then comes the query up to a NUL, then the history's texts,
// one after the other, each up to a line feed.
//
// Whatever the query is, compiling ends; what matches is what the plain search
// finds, where that ends soon.
#include <lorix/query/lorixfindquery.h>
#include <lorix/query/querycandidate.h>
#include <lorix/query/querycompletion.h>
#include <lorix/query/queryevaluation.h>

#include <QByteArrayList>
#include <QLoggingCategory>

#include <cstdint>
#include <cstdlib>

using namespace lorix;

namespace {

class Texts
{
public:
    explicit Texts(const QByteArray& bytes) : m_lines(bytes.split('\n')) {}

    QString next()
    {
        const QByteArray line = m_lines.at(m_at % m_lines.size());
        ++m_at;
        return QString::fromUtf8(line);
    }

private:
    QByteArrayList m_lines;
    qsizetype m_at = 0;
};

QList<Summary> makeHistory(int candidates, Texts& texts)
{
    QList<Summary> summaries;
    for (int i = 0; i < candidates; ++i) {
        if (i % 3 == 0) {
            Summary summary;
            summary.tagId = i;
            summary.title = texts.next();
            summary.tool = texts.next();
            const QString key = texts.next();
            summary.userAttributes.insert(key, texts.next());
            summary.userAttributeKeys.append(key);
            summaries.append(summary);
            continue;
        }
        FileSummary file;
        file.tagId = i;
        file.filename = texts.next();
        file.comment = texts.next();
        file.uncompressedSize = static_cast<int>(texts.next().size());
        file.embedded = i % 2 == 0;
        summaries.last().files.append(file);
    }
    return summaries;
}

// The number of bindings that plain backtracking may have to try.
double plainWork(const StaticParams& statics)
{
    double work = 1;
    for (qsizetype i = 0; i < statics.variableNames.size(); ++i)
        work *= static_cast<double>(statics.candidates.size() + 1);
    return work * static_cast<double>(statics.variableLocations.size() + 1);
}

void compareWithPlainSearch(const LorixFindQuery& query, const QList<Summary>& summaries)
{
    StaticParams statics;
    for (const Summary& summary : summaries) {
        statics.candidates.append(convertStepToHash(summary));
        for (const FileSummary& file : summary.files)
            statics.candidates.append(convertFileToHash(file, summary.tagId));
    }
    statics.cnf = query.normalForm();
    statics.variableLocations = statics.cnf.variableLocations();
    statics.variableNames = statics.cnf.variableNames();
    if (plainWork(statics) > 20000)
        return;
    DynamicParams dynamics;
    dynamics.candidateUsed.fill(false, statics.candidates.size());
    dynamics.assignment.fill(-1, statics.variableNames.size());
    for (int i = 0; i < statics.cnf.numDisjunctions(); ++i)
        dynamics.results.append(QList<EvaluationResult>(statics.cnf.disjunctionAt(i).numLiterals(),
                                                        EvaluationUndecided));
    QHash<QString, QString> plain;
    QHash<QString, QString> matches;
    const bool found = davisPutnam(statics, dynamics, plain);
    if (query.matches(summaries, &matches) != found || matches != plain)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1),
                           static_cast<qsizetype>(size - 1));
    const qsizetype nul = bytes.indexOf('\0');
    const QString text = QString::fromUtf8(nul < 0 ? bytes : bytes.left(nul));
    Texts texts(nul < 0 ? QByteArray() : bytes.mid(nul + 1));
    const QList<Summary> summaries = makeHistory(data[0] % 9, texts);

    // Small bounds: what lies beyond them takes time and finds nothing new.
    Bounds bounds;
    bounds.queryClauses = 500;
    bounds.queryLiterals = 2000;
    queryCompletions(text);
    const LorixFindQuery query(text, bounds);
    if (query.isValid() != query.getErrors().isEmpty())
        std::abort();
    for (const QueryError& error : query.getErrors()) {
        if (error.position() < 0 || error.position() > text.size() ||
            error.errorMessage().isEmpty())
            std::abort();
    }
    if (query.isValid())
        compareWithPlainSearch(query, summaries);
    return 0;
}
