// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/argfiletoken.h>

namespace lorix {

ArgfileToken::ArgfileToken(const QString& text, int position, const QString& originalText)
    : m_str(text), m_position(position), m_originalText(originalText)
{}

ArgfileToken::ArgfileToken(enum TokenSeparator, int position, const QString& originalText)
    : m_isSeparator(true), m_position(position), m_originalText(originalText)
{}

ArgfileToken::ArgfileToken(const char* text, int position, const QString& originalText)
    : m_str(QString::fromLatin1(text)), m_position(position), m_originalText(originalText)
{}

} // namespace lorix
