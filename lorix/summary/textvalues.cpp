// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/textvalues.h>

namespace {

int readNumber(const QString& text, bool* isNumber)
{
    const int number = text.toInt(isNumber, 10);
    // toInt() takes a zero character for the text's end.
    *isNumber = *isNumber && !text.contains(QChar(0));
    return *isNumber ? number : 0;
}

} // namespace

int str2int(const QString& text)
{
    bool isNumber = false;
    const int number = readNumber(text, &isNumber);
    return isNumber ? number : -1;
}

bool str2bool(const QString& text)
{
    bool isNumber = false;
    return readNumber(text, &isNumber) != 0;
}
