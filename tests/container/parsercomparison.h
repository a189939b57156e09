// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/lorixparser.h>
#include <support/randomruns.h>

#include <QByteArray>
#include <QString>

/// Opens the container `bytes`, written to `path`, with the library's parser
/// and with the reference, and compares everything that can be asked of them:
/// the records, the files of each section, the contents, the digests, and what
/// extraction writes to `target` and logs. Then makes `calls` random calls of
/// the searching operations on both. Empty, or where they part.
QString parserDifference(lorix::ParseMode mode, const QString& path, const QByteArray& bytes,
                         const QString& target, Dice& dice, int calls);
