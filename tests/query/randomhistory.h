// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/summary/summary.h>
#include <query/randomquery.h>

#include <QList>

/// Steps and files with few different values, so that comparisons between them
/// often hold. About `candidates` of both together.
QList<lorix::Summary> randomHistory(RandomQuery& random, int candidates);
