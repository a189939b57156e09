// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/answer.h>

#include <lorix/container/lorixparser.h>

#include <QList>
#include <QString>

namespace lorix::cli {

/// Why one section or file did not validate: what was wrong in a few words for
/// a table, and the findings with digests, expected and found.
struct Diagnosis
{
    QString words;
    QList<Finding> findings;
};

/// Reads a section that did not validate once more and says why:
/// section.outside, section.digest.missing, section.digest.mismatch, or
/// input.truncated where the document has become shorter than `fileBytes`.
Diagnosis diagnose(const LorixParser& parser, const SectionTag& section, qint64 fileBytes);

/// The same for an embedded file: file.outside, file.digest.missing,
/// file.stored.mismatch, file.stream.damaged, file.stream.cut,
/// file.content.mismatch, input.truncated.
Diagnosis diagnose(const LorixParser& parser, const FileTag& file, qint64 fileBytes);

} // namespace lorix::cli
