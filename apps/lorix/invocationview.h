// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/text.h>

#include <lorix/argfile/argfile.h>

#include <QJsonObject>

namespace lorix::cli {

/// An invocation of the add tool for programs: every field by its name.
QJsonObject invocationJson(const ArgFile& invocation);

/// The same for people: what is set, and a table of the files.
QString invocationText(const ArgFile& invocation, const Paint& paint);

} // namespace lorix::cli
