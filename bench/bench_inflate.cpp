// SPDX-License-Identifier: BSD-3-Clause
// Whether ISA-L's streaming inflate could stand in for zlib's: the inflater of
// the library beside one that does the same on ISA-L, over streams that are
// whole, cut, or damaged in one byte. Prints one line per kind of stream: its
// name, how many streams, how many that are answered otherwise (a call that
// gives other bytes, or other flags afterwards) and how many whose bytes differ
// even when all calls are taken together; at the end the seconds that each
// needs for the same bytes.
#include <lorix/container/inflater.h>

#include <QByteArrayList>

#include <isa-l/igzip_lib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

namespace {

using Random = std::mt19937;

constexpr unsigned outputBytes = 1024 * 1024;

/// Does with ISA-L what lorix::Inflater does with zlib.
class IsalInflater
{
public:
    IsalInflater()
    {
        isal_inflate_init(m_state.get());
        m_state->crc_flag = ISAL_ZLIB;
    }

    QByteArray inflateData(const QByteArray& input)
    {
        QByteArray output;
        m_state->next_in = reinterpret_cast<uint8_t*>(const_cast<char*>(input.constData()));
        m_state->avail_in = static_cast<uint32_t>(input.size());
        while (!input.isEmpty()) {
            m_state->next_out = m_output.data();
            m_state->avail_out = outputBytes;
            m_valid = isal_inflate(m_state.get()) >= ISAL_DECOMP_OK;
            if (!m_valid)
                return {};
            output.append(reinterpret_cast<const char*>(m_output.data()),
                          outputBytes - m_state->avail_out);
            m_finished = m_state->block_state == ISAL_BLOCK_FINISH;
            if (m_finished || m_state->avail_out > 0)
                break;
        }
        return output;
    }

    bool hasFinished() const { return m_finished; }
    bool isValid() const { return m_valid; }

private:
    std::unique_ptr<inflate_state> m_state = std::make_unique<inflate_state>();
    std::vector<uint8_t> m_output = std::vector<uint8_t>(outputBytes);
    bool m_valid = true;
    bool m_finished = false;
};

struct Answer
{
    QList<QByteArray> calls;
    bool valid = true;
    bool finished = false;

    bool operator==(const Answer& other) const
    {
        return calls == other.calls && valid == other.valid && finished == other.finished;
    }
};

template <class Any>
Answer answer(const QByteArray& stream, qsizetype chunk)
{
    Any inflater;
    Answer result;
    for (qsizetype at = 0; at < stream.size() && inflater.isValid() && !inflater.hasFinished();
         at += chunk)
        result.calls.append(inflater.inflateData(stream.mid(at, chunk)));
    result.valid = inflater.isValid();
    result.finished = inflater.hasFinished();
    return result;
}

QByteArray someText(Random& random, int size)
{
    const char* const words[] = {"step", "mesh", "result", "0.25", "1e-3", "\n", " ", "fin", ";"};
    QByteArray text;
    while (text.size() < size)
        text += random() % 5 == 0 ? QByteArray(1, static_cast<char>(random()))
                                  : QByteArray(words[random() % std::size(words)]);
    return text;
}

/// A zlib stream, without the length that qCompress() puts in front.
QByteArray stream(Random& random, int size)
{
    return qCompress(someText(random, size), static_cast<int>(random() % 10)).mid(4);
}

enum Kind { Whole, Chunks, Cut, Damaged };

QByteArray change(Kind kind, QByteArray bytes, Random& random)
{
    const auto place = static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()));
    if (kind == Cut)
        bytes.truncate(place);
    if (kind == Damaged)
        bytes[place] = static_cast<char>(bytes[place] ^ static_cast<char>(1 << random() % 8));
    return bytes;
}

void compare(const char* name, Kind kind, int runs)
{
    Random random(7);
    int otherwise = 0;
    int otherBytes = 0;
    for (int run = 0; run < runs; ++run) {
        const QByteArray bytes =
            change(kind, stream(random, 1 + static_cast<int>(random() % 3000)), random);
        const auto most = random() % 2 == 0 ? 8 : 400;
        const qsizetype chunk =
            kind == Whole ? bytes.size() : 1 + static_cast<int>(random() % most);
        const Answer ours = answer<lorix::Inflater>(bytes, chunk);
        const Answer theirs = answer<IsalInflater>(bytes, chunk);
        otherwise += ours == theirs ? 0 : 1;
        otherBytes += ours.calls.join() == theirs.calls.join() ? 0 : 1;
    }
    std::printf("%s %d %d %d\n", name, runs, otherwise, otherBytes);
}

template <class Any>
double seconds(const QByteArray& bytes)
{
    double best = 1e9;
    for (int run = 0; run < 5; ++run) {
        const auto start = std::chrono::steady_clock::now();
        answer<Any>(bytes, 100000);
        const std::chrono::duration<double> needed = std::chrono::steady_clock::now() - start;
        best = std::min(best, needed.count());
    }
    return best;
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::atoi(argv[1]) : 20000;
    compare("whole", Whole, runs);
    compare("chunks", Chunks, runs);
    compare("cut", Cut, runs);
    compare("damaged", Damaged, runs);
    Random random(1);
    const QByteArray large = qCompress(someText(random, 32 * 1024 * 1024), 6).mid(4);
    std::printf("seconds %.6f %.6f\n", seconds<lorix::Inflater>(large),
                seconds<IsalInflater>(large));
    return 0;
}
