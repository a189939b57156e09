// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

namespace lorix {

/// A file on disk and the digest that it should have.
struct SavedFile
{
    QString filename; ///< Path of the file.
    QString md5;      ///< Expected MD5, 32 lower-case hexadecimal digits.
    int size = 0;     ///< Bytes to hash, from the start of the file.
};

} // namespace lorix
