// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringView>

#include <optional>

namespace lorix {

/// Where one element stands in a text, all in characters from the text's start.
struct ElementRange
{
    qsizetype tagStart = 0;     ///< First character behind "<".
    qsizetype tagLength = 0;    ///< Length of the tag text, without a closing "/".
    qsizetype contentStart = 0; ///< First character behind the opening tag.
    qsizetype contentEnd = 0;   ///< First character behind the content.
    qsizetype end = 0;          ///< First character behind the element.
};

/// The first element of `text` that begins at or behind `from`, comments and
/// processing instructions passed over; nothing where the text ends before, a
/// closing tag comes first, or what was opened is not closed. Time grows with
/// the distance to the element's end alone, whatever the names in it are.
std::optional<ElementRange> findElement(QStringView text, qsizetype from);

} // namespace lorix
