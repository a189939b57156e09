// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/printsummary.h>
#include <lorix/summary/summary.h>

#include <QDebug>

namespace lorix {

Summary makeSummaryFromTags(const SectionTag& section, const QList<FileTag>& files)
{
    Summary summary;
    summary.tagId = section.id;
    summary.title = section.title;
    summary.creator = section.creator;
    summary.files.reserve(files.size());
    for (const FileTag& tag : files)
        summary.files.append(makeFileSummaryFromFileTag(tag));
    return summary;
}

void printSummary(const Summary& summary)
{
    printWorkflowstep(summary);
    qDebug() << "Summary MD5:" << summary.md5;
}

} // namespace lorix
