// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <support/containerbuilder.h>
#include <support/randomruns.h>

/// A container made by chance: any line ends, header lines, sections, files of
/// both kinds, nested containers, odd names, long lines, zero bytes, byte order
/// marks, broken UTF-8, markers inside lines and inside content. Up to some ten
/// kilobytes.
QByteArray randomContainer(Dice& dice, int depth = 0);

/// `container` with a few things changed by chance: bits turned, bytes cut out
/// or put in, numbers in markers swapped for others, digests, line ends and
/// keywords spoiled.
QByteArray randomDamage(Dice& dice, QByteArray container);
