// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QList>
#include <QRandomGenerator>

/// The number of random cases to try: `usual`, times the environment variable
/// LORIX_RANDOM_RUNS where that is set.
inline int randomRuns(int usual)
{
    bool ok = false;
    const int factor = qEnvironmentVariableIntValue("LORIX_RANDOM_RUNS", &ok);
    return ok && factor > 0 ? usual * factor : usual;
}

/// The seed of a test's first random case: `usual`, unless LORIX_RANDOM_SEED says
/// otherwise. Failures print the seed of their case.
inline quint32 randomSeed(quint32 usual)
{
    bool ok = false;
    const int seed = qEnvironmentVariableIntValue("LORIX_RANDOM_SEED", &ok);
    return ok ? static_cast<quint32>(seed) : usual;
}

/// Small random choices, the same on every run for the same seed.
class Dice
{
public:
    explicit Dice(quint32 seed) : m_random(seed) {}

    /// A number from 0 to below - 1.
    int below(int bound) { return bound < 2 ? 0 : m_random.bounded(bound); }

    /// A number from low to high, both included.
    int between(int low, int high) { return low + below(high - low + 1); }

    /// True once in `times` cases.
    bool once(int times) { return below(times) == 0; }

    template <typename T>
    const T& oneOf(const QList<T>& list)
    {
        return list.at(below(static_cast<int>(list.size())));
    }

    /// `count` bytes out of `alphabet`.
    QByteArray bytes(int count, const QByteArray& alphabet)
    {
        QByteArray result(count, Qt::Uninitialized);
        for (char& byte : result)
            byte = alphabet.at(below(static_cast<int>(alphabet.size())));
        return result;
    }

    /// `count` bytes of any value.
    QByteArray anyBytes(int count)
    {
        QByteArray result(count, Qt::Uninitialized);
        for (char& byte : result)
            byte = static_cast<char>(below(256));
        return result;
    }

private:
    QRandomGenerator m_random;
};
