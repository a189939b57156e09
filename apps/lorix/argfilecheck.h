// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/argfile/argfile.h>

#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QString>

namespace lorix::cli {

/// Something in an argument file that is not as it should be, with its place.
struct Complaint
{
    QString code;     ///< Dotted, for example "argfile.option.unknown".
    QString severity; ///< "error" or "warning".
    QString message;
    int offset = 0; ///< 0-based, in UTF-16 units.
    int line = 1;   ///< 1-based; lines end in LF, CR or CR LF.
    int column = 1; ///< 1-based, in characters.

    QJsonObject toJson() const;
};

/// An argument file read with an eye on everything that is wrong with it.
struct ArgfileCheck
{
    ArgFile invocation;          ///< What was accepted.
    QList<Complaint> complaints; ///< In the order of the text.

    bool hasErrors() const;

    /// Reads a text. With null `variables` they stay as written; otherwise they
    /// are replaced, and an escaped dollar sign becomes a plain one.
    static ArgfileCheck read(const QString& text, const QHash<QString, QString>* variables);
};

} // namespace lorix::cli
