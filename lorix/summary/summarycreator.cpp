// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/makesummaries.h>
#include <lorix/summary/summarycreator.h>

namespace lorix {

SummaryCreator::SummaryCreator(QObject* parent) : QObject(parent) {}

QList<Summary> SummaryCreator::createSummaries(LorixParser& parser) const
{
    return makeSummaries(parser, makeTagHash(parser));
}

} // namespace lorix
