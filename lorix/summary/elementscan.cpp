// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/elementscan.h>

namespace lorix {

namespace {

// The closing tag that balances the opening one whose text is `tag`, searched
// from `from`; gives the range of its content and end through `element`.
//
// Neither "<tag>" nor "</tag>" holds a ">" but at its end. So each of them can
// only stand wholly between two ">", and looking back from each ">" finds all
// of them in order while no character is compared more than once.
bool closeElement(QStringView text, QStringView tag, qsizetype from, ElementRange& element)
{
    element.contentStart = from;
    qsizetype depth = 1;
    while (true) {
        const qsizetype close = text.indexOf(u'>', from);
        if (close < 0)
            return false;
        const QStringView stretch = text.sliced(from, close - from);
        from = close + 1;
        if (stretch.size() <= tag.size() || !stretch.endsWith(tag))
            continue;
        const QStringView before = stretch.chopped(tag.size());
        if (before.endsWith(u'<')) {
            ++depth;
        } else if (before.endsWith(u"</") && --depth == 0) {
            element.contentEnd = close - tag.size() - 2;
            element.end = from;
            return true;
        }
    }
}

// Behind the next `mark` from `from`, or -1.
qsizetype behind(QStringView text, QStringView mark, qsizetype from)
{
    const qsizetype found = text.indexOf(mark, from);
    return found < 0 ? -1 : found + mark.size();
}

} // namespace

std::optional<ElementRange> findElement(QStringView text, qsizetype from)
{
    while (from >= 0) {
        const qsizetype open = text.indexOf(u'<', from);
        if (open < 0)
            return std::nullopt;
        const qsizetype close = text.indexOf(u'>', open);
        if (close < 0)
            return std::nullopt;
        const QChar kind = text.at(open + 1);
        if (kind == u'!') {
            from = behind(text, u"-->", open + 1);
            continue;
        }
        if (kind == u'?') {
            from = behind(text, u"?>", open + 1);
            continue;
        }
        if (kind == u'/')
            return std::nullopt;

        ElementRange element;
        element.tagStart = open + 1;
        element.tagLength = close - element.tagStart;
        const QStringView tag = text.sliced(element.tagStart, element.tagLength);
        if (tag.endsWith(u'/')) {
            --element.tagLength;
            element.contentStart = element.contentEnd = element.end = close + 1;
            return element;
        }
        if (!closeElement(text, tag, close + 1, element))
            return std::nullopt;
        return element;
    }
    return std::nullopt;
}

} // namespace lorix
