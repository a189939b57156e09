// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>
#include <QStringList>

/// The building blocks of a command line for the add tool: lists of arguments,
/// and their quoting as text of an argument file.

/// Appends `option`, `name` and `value` to `list`, or nothing where `value` is
/// empty.
LORIX_EXPORT void appendAttributeToList(const QString& value, const QString& option,
                                        const QString& name, QStringList& list);

/// Appends `option` and `name`, with "no-" before the name where `flag` is false.
LORIX_EXPORT void appendFlagToList(bool flag, const QString& option, const QString& name,
                                   QStringList& list);

/// The string as it is written in an argument file: a backslash before each
/// backslash, double quote and backquote, and double quotes around it when it
/// holds a blank, tab, carriage return or line feed. An empty string stays
/// empty.
///
/// With `keepVariables`, "$$" (an escaped dollar sign, see ArgfileParser)
/// becomes "\$" and a single dollar sign stays, so that "$name" remains a
/// variable; otherwise every dollar sign becomes "\$".
///
/// A single quote or # is not escaped: only within a string that is put in
/// double quotes do they read back as themselves. docs/argfile.md lists the
/// strings for which writing and reading are a round trip.
LORIX_EXPORT QString quoteString(const QString& string, bool keepVariables);

/// quoteString() of each element.
LORIX_EXPORT QStringList quoteStringList(const QStringList& list, bool keepVariables);

namespace lorix {
using ::appendAttributeToList;
using ::appendFlagToList;
using ::quoteString;
using ::quoteStringList;
} // namespace lorix
