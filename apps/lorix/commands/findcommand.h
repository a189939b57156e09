// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/filecommand.h>

#include <lorix/query/lorixfindquery.h>
#include <lorix/summary/summary.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace lorix::cli {

/// Compiled copies of one query, since one cannot serve two threads at once.
class QueryPool
{
public:
    /// A copy that nobody uses, made when there is none.
    std::unique_ptr<LorixFindQuery> take(const QString& query);
    void giveBack(std::unique_ptr<LorixFindQuery> query);

private:
    std::mutex m_mutex;
    std::vector<std::unique_ptr<LorixFindQuery>> m_idle;
};

/// `lorix find QUERY FILE...`: which documents' histories match, and what the
/// query's variables are bound to there.
class FindCommand : public FileCommand
{
public:
    QString name() const override { return QStringLiteral("find"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

protected:
    Answer examine(const Input& input, const View& view, bool& skipped) const override;
    bool isSameQuestion(const QJsonObject& answer) const override;

private:
    void explain(Console& console, const GlobalOptions& options) const;
    void addMatch(Answer& answer, const Input& input, const View& view,
                  const QList<Summary>& summaries, int steps,
                  const QList<QueryBinding>& bindings) const;

    QString m_query;
    bool m_namesOnly = false;
    bool m_count = false;
    bool m_explain = false;
    QList<QueryError> m_errors;
    QJsonObject m_explanation;
    mutable QueryPool m_pool;
    mutable std::atomic<int> m_matches = 0;
};

} // namespace lorix::cli
