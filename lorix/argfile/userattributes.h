// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QHash>
#include <QString>
#include <QStringList>

namespace lorix {

/// The attributes that users add to a step or a file under keys of their own.
/// Keys stay in the order in which they were added.
struct LORIX_EXPORT UserAttributes
{
    QHash<QString, QString> values; ///< Value by key.
    QStringList keys;               ///< Keys as added; a repeated key is listed again.

    /// Appends the key and stores the value, over an earlier one of the same key.
    void add(const QString& key, const QString& value);

    void clear();

    bool operator==(const UserAttributes& other) const;
    bool operator!=(const UserAttributes& other) const { return !(*this == other); }
};

} // namespace lorix
