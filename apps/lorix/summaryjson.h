// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/summary/summary.h>

#include <QJsonArray>
#include <QJsonObject>

namespace lorix::cli {

/// Records as JSON, every member under its own name, texts as they are stored
/// (with the escapes of markers and the entities of XML).
QJsonObject toJson(const FileSummary& file);
QJsonArray toJson(const QList<FileSummary>& files);
QJsonObject toJson(const Summary& summary);

} // namespace lorix::cli
