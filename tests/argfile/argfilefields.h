// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/argfile/argfile.h>

#include <QStringList>

/// Every field of an invocation as one line each, so that two can be compared
/// and a difference be seen.
QStringList fieldsOf(const lorix::ArgFile& argfile);
QStringList fieldsOf(const lorix::WSFile& file);
