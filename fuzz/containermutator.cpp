// SPDX-License-Identifier: BSD-3-Clause
// Mutations that know what a container is: beside the engine's own there are
// numbers exchanged, markers spoiled and containers made afresh. CONTAINER_AT is
// the number of bytes in front of the container.
#include <support/randomcontainer.h>
#include <tree/nestedcontainer.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

// The fuzzing engine's.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

QByteArray freshContainer(Dice& dice)
{
    if (dice.once(2))
        return randomContainer(dice);
    // Two levels with summaries that fit.
    QList<WrittenStep> inner;
    for (int i = dice.below(3); i >= 0; --i)
        inner.append({QString::number(i), QStringLiteral("tool"), QString(), {}});
    const FileSpec nested = nestedFile(QStringLiteral("in.lorix"), containerOf(inner));
    return containerOf({{QStringLiteral("outer"),
                         QString(),
                         QString(),
                         {dice.once(2) ? FileSpec(nested).flate() : nested}}});
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned int seed)
{
    Dice dice(seed);
    constexpr std::size_t front = CONTAINER_AT;
    if ((size > front && dice.once(2)) || maxSize <= front)
        return LLVMFuzzerMutate(data, size, maxSize);
    if (size < front)
        std::memset(data + size, 0, front - size);
    const QByteArray old(reinterpret_cast<const char*>(data + front),
                         static_cast<qsizetype>(std::max(size, front) - front));
    const QByteArray changed =
        old.isEmpty() || dice.once(50) ? freshContainer(dice) : randomDamage(dice, old);
    const std::size_t length = std::min(static_cast<std::size_t>(changed.size()), maxSize - front);
    std::memcpy(data + front, changed.constData(), length);
    return front + length;
}
