// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <support/randomruns.h>

#include <QByteArray>

/// A zlib stream of `content` made with any of the compressor's settings: level,
/// strategy, window, memory, and flushes in between.
QByteArray randomZlibStream(Dice& dice, const QByteArray& content);

/// `stream` with something wrong: bits turned, mostly in its first bytes and in
/// its checksum, bytes cut, added or exchanged, a header of another kind.
QByteArray damagedZlibStream(Dice& dice, QByteArray stream);
