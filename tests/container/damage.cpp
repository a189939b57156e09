// SPDX-License-Identifier: BSD-3-Clause
// Opens, lists, reads and extracts containers that were damaged at random:
//
//     damage [COUNT [FIRST-SEED]]
//
// The count may also come from the environment variable LORIX_DAMAGE_RUNS. A
// container that takes more than a second of processor time ends the program
// with its seed; so does whatever a sanitizer finds.
#include <lorix/container/lorixparser.h>
#include <support/randomcontainer.h>

#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/time.h>
#include <unistd.h>

using namespace lorix;

namespace {

volatile unsigned int currentSeed = 0;

extern "C" void tooLong(int)
{
    char text[] = "damage: over a second with seed 0000000000\n";
    unsigned int seed = currentSeed;
    for (size_t i = sizeof text - 3; text[i] == '0'; --i, seed /= 10)
        text[i] = static_cast<char>('0' + seed % 10);
    if (write(2, text, sizeof text - 1) < 0)
        _exit(2);
    abort();
}

void startWatch()
{
    const itimerval second = {{0, 0}, {1, 0}};
    setitimer(ITIMER_PROF, &second, nullptr);
}

// Keeps the runs quiet: damage is what they are about.
void silence(QtMsgType, const QMessageLogContext&, const QString&) {}

struct Totals
{
    long long opened = 0;
    long long sections = 0;
    long long files = 0;
    long long inSections = 0;
    long long sectionless = 0;
    long long contents = 0;
    long long extracted = 0;
};

void readEverything(const QString& path, const QString& target, ParseMode mode, Totals& totals)
{
    LorixParser parser(mode);
    if (!parser.open(path))
        return;
    ++totals.opened;
    totals.sections += parser.getNumSections();
    totals.files += parser.getNumFiles();
    for (int id = 0; id < parser.getNumSections(); ++id)
        totals.inSections += parser.getFilesInSection(id).size();
    totals.sectionless += parser.getSectionlessFiles().size();
    for (int id = 0; id < parser.getNumFiles(); ++id) {
        parser.getCompressedFile(id);
        totals.contents += parser.getFileContent(id) != nullptr;
        parser.calcChecksumsForFile(id);
        totals.extracted += parser.writeFileToDisk(id, target);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const int fromEnvironment = qEnvironmentVariableIntValue("LORIX_DAMAGE_RUNS");
    const int count = argc > 1 ? std::atoi(argv[1]) : fromEnvironment > 0 ? fromEnvironment : 1000;
    const auto first = argc > 2 ? static_cast<unsigned int>(std::atol(argv[2])) : 1U;
    std::signal(SIGPROF, tooLong);
    qInstallMessageHandler(silence);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("container"));
    const QString target = dir.filePath(QStringLiteral("target"));
    Totals totals;
    for (int run = 0; run < count; ++run) {
        currentSeed = first + static_cast<unsigned int>(run);
        Dice dice(currentSeed);
        ContainerBuilder::writeFile(path, randomDamage(dice, randomContainer(dice)));
        startWatch();
        for (const ParseMode mode : {Strict, Tolerant})
            readEverything(path, target, mode, totals);
    }
    std::printf("%d damaged containers read in both modes: %lld opened, %lld sections, "
                "%lld files (%lld in sections, %lld in none), %lld with content, %lld extracted\n",
                count, totals.opened, totals.sections, totals.files, totals.inSections,
                totals.sectionless, totals.contents, totals.extracted);
    // Containers so spoiled that nothing is read would show nothing.
    return totals.opened > count && totals.contents > count ? 0 : 1;
}
