// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/optiontable.h>

namespace lorix::cli {

/// The shells that completions can be written for, as they are called.
QStringList completedShells();

/// The script that makes a shell complete calls of lorix, from the table alone;
/// empty for a shell that is not known. What a query may go on with the script
/// asks `lorix completion --query` for.
QString completionScript(const QString& shell, const OptionTable& table);

/// What an unfinished query may become, each as a whole, in ascending order.
QStringList continuedQueries(const QString& unfinished);

/// What a shell can offer for a value.
enum class Offer {
    Nothing, ///< Only the person knows: a number, a name.
    File,
    Folder,
    Query,
    Words ///< One of offeredWords().
};

/// What to offer for the value of an option or for a positional.
Offer offerFor(const OptionEntry& option);
/// The words where that is Offer::Words.
QStringList offeredWords(const OptionEntry& option, const OptionTable& table);

QString bashCompletion(const OptionTable& table);
QString zshCompletion(const OptionTable& table);
QString fishCompletion(const OptionTable& table);

} // namespace lorix::cli
