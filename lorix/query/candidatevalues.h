// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/candidatereader.h>
#include <lorix/query/candidateset.h>
#include <lorix/query/queryplan.h>

#include <QHash>
#include <QString>

#include <deque>
#include <unordered_map>
#include <vector>

namespace lorix {

/// The values of one history's candidates, each read once, and what the plan's
/// literals make of them, each found out once where that is worth its memory.
class CandidateValues
{
public:
    CandidateValues(const QueryPlan& plan, const std::vector<Candidate>& candidates);

    int size() const { return static_cast<int>(m_candidates.size()); }

    /// A literal with one variable.
    bool holds(int literal, int candidate);

    /// A literal with two variables.
    bool holds(int literal, int left, int right);

    /// The candidates that make a literal with one variable true.
    const CandidateSet& satisfying(int literal);

    /// Unites `result` with the candidates for one side of a literal with two
    /// variables that make it true while the other side is `bound`.
    void uniteSatisfying(int literal, bool boundLeft, int bound, CandidateSet& result);

    /// About how many words uniteSatisfying() touches when it is called for
    /// each of `count` candidates.
    qint64 costOfRows(int literal, int count) const;

private:
    // Candidates with a string for an attribute, and which by text in lower case.
    struct EqualityIndex
    {
        CandidateSet strings;
        QHash<QString, std::vector<int>> byLowerText;
    };

    int valueId(int attribute, int candidate);
    const PreparedValue& value(int id) const { return m_pool[static_cast<size_t>(id)]; }
    const PreparedValue& operandValue(const QueryPlan::Operand& operand, int candidate);
    const QueryPlan::Literal& literalAt(int literal) const
    {
        return m_plan.literals[static_cast<size_t>(literal)];
    }
    const EqualityIndex& equalityIndex(int attribute);
    CandidateSet equalityRow(const QueryPlan::Literal& literal, bool boundLeft, int bound);
    CandidateSet comparisonRow(const QueryPlan::Literal& literal, bool boundLeft, int bound);

    const QueryPlan& m_plan;
    const std::vector<Candidate>& m_candidates;
    std::deque<PreparedValue> m_pool;
    QHash<QString, int> m_poolIds;
    std::vector<std::vector<int>> m_valueIds; // Per attribute and candidate, -1 unread.
    // Per literal and candidate: 0 unknown, 1 false, 2 true.
    std::vector<std::vector<quint8>> m_known;
    std::unordered_map<int, CandidateSet> m_satisfying;
    std::unordered_map<int, EqualityIndex> m_equality;
    QHash<QPair<int, int>, CandidateSet> m_rows; // By literal and side, and value.
    size_t m_rowBytes = 0;
    std::vector<quint8> m_truth; // Scratch: per value, as m_known.
};

} // namespace lorix
