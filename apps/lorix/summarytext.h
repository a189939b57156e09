// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/text.h>

#include <lorix/container/lorixparser.h>
#include <lorix/summary/summary.h>

namespace lorix::cli {

/// A history for people, step by step: labelled lines, only for what is known.
///
/// Names and texts are shown decoded: the backslash escapes of markers undone
/// and, where a text was written as XML, the five predefined entities. What a
/// summary says word for word as the marker does is in the marker's form and
/// has no entities.
class SummaryText
{
public:
    /// `parser` must outlive the text. `full` lists everything that is known of
    /// each file instead of a line.
    SummaryText(const LorixParser& parser, const Paint& paint, bool full);

    /// The document's name and how many steps it has.
    void addHeading(const QString& path);
    void addStep(const Summary& step);
    /// The files that belong to no step; nothing for an empty list.
    void addLooseFiles(const QList<FileSummary>& files);

    const QString& text() const { return m_text; }

private:
    void addTitle(const QString& number, const QString& title);
    void addLine(const QString& label, const QString& value);
    void addStepFields(const Summary& step);
    void addDocumentFields(const Summary& step);
    void addAttributes(const QStringList& lines);
    void addFiles(const QString& label, const QList<FileSummary>& files);
    void addFileFields(const FileSummary& file);

    const LorixParser& m_parser;
    Paint m_paint;
    bool m_full;
    QString m_text;
};

} // namespace lorix::cli
