// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <support/randomruns.h>

#include <QRandomGenerator>
#include <QString>
#include <QStringList>

/// Texts and queries for comparisons with the plain algorithms.
class RandomQuery
{
public:
    explicit RandomQuery(quint32 seed) : m_random(seed) {}

    int below(int bound) { return m_random.bounded(bound); }
    bool once(int in) { return below(in) == 0; }
    QString pick(const QStringList& texts) { return texts.at(below(int(texts.size()))); }

    /// Up to `most` pieces, one after the other.
    QString text(const QStringList& pieces, int most);

    /// Pieces of the language in any order: mostly no query at all.
    QString soup(int most);

    /// A query that passes all checks, of about `size` tests. `names` are the
    /// variables' names; an empty one stands for an unnamed variable.
    QString query(const QStringList& names, int size);

    QRandomGenerator& generator() { return m_random; }

private:
    QString operand();
    QString test(const QString& name);

    QRandomGenerator m_random;
};
