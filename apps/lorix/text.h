// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QtGlobal>

namespace lorix::cli {

/// The text with everything that could move a terminal's cursor, hide text or
/// break a line written as an escape: control characters as \n, \t, \xNN,
/// direction marks, line separators and lone surrogates as \u{NNNN}.
QString printable(const QString& text);

/// Undoes the escapes of a marker's text field: \\ is a backslash, \] a closing
/// bracket, \n a line feed.
QString decodedField(const QString& text);

/// Undoes the five predefined XML entities; anything else stays as it is.
QString decodedEntities(const QString& text);

/// A size for people: "512 B", "20.0 KiB", "1.5 GiB"; "?" when negative.
QString humanSize(qint64 bytes);

/// "1 file", "3 files".
QString counted(qint64 count, const QString& one, const QString& many);

/// The quoting that shows where a name begins and ends, printable.
QString quoted(const QString& name);

/// Text in a terminal's colours, or as it is.
class Paint
{
public:
    explicit Paint(bool colored) : m_colored(colored) {}
    QString bold(const QString& text) const { return with("1", text); }
    QString dim(const QString& text) const { return with("2", text); }
    QString good(const QString& text) const { return with("32", text); }
    QString bad(const QString& text) const { return with("31", text); }
    QString warning(const QString& text) const { return with("33", text); }
    bool colored() const { return m_colored; }

private:
    QString with(const char* code, const QString& text) const;
    bool m_colored;
};

} // namespace lorix::cli
