// SPDX-License-Identifier: BSD-3-Clause
// Reads any bytes as a summary and, where they are few, compares what comes out
// with a slow and plain reading.
#include <lorix/summary/summaryreader.h>
#include <lorix/summary/vxmllevel1iter.h>
#include <summary/plainmatching.h>

#include <QLoggingCategory>

#include <cstdint>

namespace {

// The plain reading takes time with the square of the length.
constexpr std::size_t fewBytes = 16384;

bool walksAsThePlainWay(const QString& text)
{
    lorix::VXMLLevel1Iter element(text);
    for (const plain::Element& expected : plain::elements(text)) {
        if (!element.isTag(expected.tag) || element.getData() != expected.content)
            return false;
        ++element;
    }
    return !element;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, false);
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const lorix::Summary found = lorix::SummaryReader().readSummary(text);
    if (size > fewBytes)
        return 0;
    QStringList unknown;
    if (plain::members(found) != plain::members(plain::readSummary(text, unknown)))
        qFatal("read otherwise than the plain way");
    if (!walksAsThePlainWay(text))
        qFatal("walked otherwise than the plain way");
    return 0;
}
