// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace lorix::cli {

/// One line of a list of digests.
struct SumEntry
{
    int line = 0; ///< Counted from 1.
    QString md5;  ///< 32 lower-case hexadecimal digits.
    QString path; ///< As it stands in the list.
};

/// A list of MD5 digests in the format of `md5sum`: digest, a blank, a blank or
/// "*", name; or "MD5 (name) = digest". A backslash in front of the line says
/// that "\\", "\n" and "\r" in the name are escapes. Lines that are empty or
/// begin with "#" are passed over.
struct SumList
{
    QList<SumEntry> entries;
    QList<int> badLines; ///< Numbers of the lines that are neither.

    static SumList parse(const QByteArray& bytes);
};

} // namespace lorix::cli
