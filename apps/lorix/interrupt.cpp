// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/interrupt.h>

#include <lorix/tree/temporaryfolder.h>

#include <csignal>

namespace lorix::cli {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void endAtOnce(int signal)
{
    TemporaryFolder::removeAllNow();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

extern "C" void noteInterrupt(int signal)
{
    interrupted = 1;
    std::signal(signal, endAtOnce);
}

} // namespace

void Interrupt::install()
{
    std::signal(SIGINT, noteInterrupt);
    std::signal(SIGTERM, noteInterrupt);
#ifdef SIGHUP
    std::signal(SIGHUP, noteInterrupt);
#endif
#ifdef SIGXFSZ
    // A quota shows as a failed write, like a full disk, instead of killing us.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
    for (const int crash : {SIGSEGV, SIGABRT, SIGFPE, SIGILL})
        std::signal(crash, endAtOnce);
#ifdef SIGBUS
    std::signal(SIGBUS, endAtOnce);
#endif
}

bool Interrupt::requested()
{
    return interrupted != 0;
}

void Interrupt::set(bool requested)
{
    interrupted = requested ? 1 : 0;
}

} // namespace lorix::cli
