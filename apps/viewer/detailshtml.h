// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/checkresults.h>

#include <QString>

namespace lorix::viewer {

/// The page of a step or file, as HTML with everything escaped. Links read
/// "place:NODE:FILE"; FILE is -1 for a step.
QString detailsHtml(const History& history, const CheckResults& results, const Place& place);

/// The page of the document as a whole: what it is, how many steps and files.
QString overviewHtml(const History& history, const CheckResults& results);

/// The link to a place, and the place that a link names; null for other links.
QString linkTo(const Place& place);
Place placeOfLink(const QString& link);

} // namespace lorix::viewer
