// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/lorix.h>

#include <cstdio>

int main(int argc, char* argv[])
{
    lorix::LorixParser parser(lorix::Tolerant);
    const bool opened = argc > 1 && parser.open(QString::fromLocal8Bit(argv[1]));
    std::printf("%s\n%s, %d sections, %d files\n", qPrintable(getVersion()),
                opened ? "opened" : "not opened", parser.getNumSections(), parser.getNumFiles());
    return opened ? 0 : 1;
}
