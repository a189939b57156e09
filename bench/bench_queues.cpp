// SPDX-License-Identifier: BSD-3-Clause
// How long one process() takes: the 99th percentile over a whole container, and
// over its sections and files without compression, each as a ratio to hashing
// one chunk of 100000 bytes. Prints the two numbers.
#include <lorix/lorix.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double percentile99(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times.empty() ? 0 : times[times.size() * 99 / 100];
}

std::vector<double> stepTimes(lorix::ValidationQueue& queue)
{
    std::vector<double> times;
    for (bool more = true; more;) {
        const auto start = Clock::now();
        more = queue.process();
        times.push_back(since(start));
    }
    return times;
}

double hashTime()
{
    const QByteArray chunk(100000, 'x');
    std::vector<double> times;
    for (int i = 0; i < 2000; ++i) {
        lorix::MD5Generator digest;
        const auto start = Clock::now();
        digest.update(chunk);
        times.push_back(since(start));
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    lorix::LorixParser parser;
    if (argc != 2 || !parser.open(QString::fromLocal8Bit(argv[1])))
        return 2;
    const double hash = hashTime();
    lorix::ValidationQueue queue(&parser, 0);
    queue.repopulate(&parser);
    const double all = percentile99(stepTimes(queue)) / hash;
    QList<int> stored;
    QList<int> sections;
    for (const lorix::FileTag& file : parser.getFiles())
        if (file.compression == QLatin1String("none"))
            stored.append(file.id);
    for (const lorix::SectionTag& section : parser.getSections())
        sections.append(section.id);
    queue.addValidatees(stored, sections);
    const double plain = percentile99(stepTimes(queue)) / hash;
    std::printf("%.2f %.2f\n", all, plain);
    return 0;
}
