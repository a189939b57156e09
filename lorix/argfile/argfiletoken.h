// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

namespace lorix {

/// Stands where a token's text would stand, to make a separator. Enumeration
/// and enumerator share the name: plain TokenSeparator is the value.
enum TokenSeparator { TokenSeparator = 0 };

/// One piece of argument-file text: a word, a quoted string, or what separates
/// them (white space and comments). A copyable value; see ArgfileParser for the
/// stages that make tokens and turn them into arguments.
///
/// Tokens that come straight from the text know their place in it; tokens that
/// later stages put together have position -1 and no original text.
class LORIX_EXPORT ArgfileToken
{
public:
    /// An empty non-separator with position -1.
    ArgfileToken() = default;

    /// A non-separator. `position` is the 0-based index of the token's first
    /// character (UTF-16 unit) in the text, `originalText` what stood there.
    ArgfileToken(const QString& text, int position, const QString& originalText);

    /// A separator, whose str() is empty.
    ArgfileToken(enum TokenSeparator separator, int position, const QString& originalText);

    /// A non-separator from a zero-terminated ASCII text (null is empty).
    ArgfileToken(const char* text, int position, const QString& originalText);

    /// The current text: as written, or unescaped, as far as the stages that
    /// the token went through have brought it. Empty for a separator.
    QString str() const { return m_str; }

    /// True for white space and comments.
    bool isSeparator() const { return m_isSeparator; }

    /// 0-based index in the text, or -1 for tokens made by later stages.
    int position() const { return m_position; }

    /// The text exactly as written; empty for tokens made by later stages.
    QString originalText() const { return m_originalText; }

    /// Length of originalText() in characters.
    int originalLength() const { return static_cast<int>(m_originalText.size()); }

private:
    QString m_str;
    bool m_isSeparator = false;
    int m_position = -1;
    QString m_originalText;
};

} // namespace lorix
