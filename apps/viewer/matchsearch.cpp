// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/matchsearch.h>

#include <lorix/query/lorixfindquery.h>

#include <algorithm>
#include <utility>

namespace lorix::viewer {

namespace {

const int mostMatches = 1000; // what a person can look through

class Search
{
public:
    Search(const History& history, const QString& query) : m_history(history), m_query(query) {}

    bool isValid() const { return m_query.isValid(); }
    bool isFull() const { return m_found.matches.size() >= mostMatches; }
    FoundMatches found() const { return m_found; }
    void setMore() { m_found.more = true; }

    // Candidates in the order of the library: the oldest step first.
    void inContainer(const HistoryContainer& container)
    {
        QList<Summary> summaries;
        QList<int> nodes;
        for (auto it = container.nodes.crbegin(); it != container.nodes.crend(); ++it)
            if (!m_history.step(*it).sectionless)
                nodes.append(*it);
        for (const int node : container.nodes)
            if (m_history.step(node).sectionless)
                nodes.append(node);
        for (const int node : std::as_const(nodes))
            summaries.append(summaryOf(node));
        QList<QueryBinding> bindings;
        if (!m_query.findBindings(summaries, &bindings))
            return;
        FoundMatch match;
        for (const QueryBinding& binding : std::as_const(bindings))
            match.bindings.append(
                {binding.variable, Place{nodes.at(binding.summary), binding.file}});
        add(match);
    }

    // A file that has been found is taken out, so that the next one is found.
    void inStep(int node)
    {
        QList<Summary> summaries{summaryOf(node)};
        QList<int> files;
        for (int i = 0; i < summaries.first().files.size(); ++i)
            files.append(i);
        QList<QueryBinding> bindings;
        while (!isFull() && m_query.findBindings(summaries, &bindings)) {
            FoundMatch match;
            int used = -1;
            for (const QueryBinding& binding : std::as_const(bindings)) {
                match.bindings.append(
                    {binding.variable,
                     Place{node, binding.file < 0 ? -1 : files.at(binding.file)}});
                used = std::max(used, binding.file);
            }
            add(match);
            if (used < 0)
                return;
            summaries.first().files.removeAt(used);
            files.removeAt(used);
        }
    }

private:
    Summary summaryOf(int node) const
    {
        Summary summary;
        static_cast<Workflowstep&>(summary) = m_history.step(node).step;
        return summary;
    }

    void add(const FoundMatch& match)
    {
        if (!match.bindings.isEmpty() && !m_found.matches.contains(match))
            m_found.matches.append(match);
    }

    const History& m_history;
    LorixFindQuery m_query;
    FoundMatches m_found;
};

} // namespace

FoundMatches findMatches(const History& history, const QString& query,
                         const std::function<bool()>& cancelled)
{
    Search search(history, query);
    if (!search.isValid())
        return {};
    for (const HistoryContainer& container : history.containers()) {
        search.inContainer(container);
        for (const int node : container.nodes) {
            if (cancelled())
                return {};
            if (search.isFull()) {
                search.setMore();
                return search.found();
            }
            search.inStep(node);
        }
    }
    return search.found();
}

} // namespace lorix::viewer
