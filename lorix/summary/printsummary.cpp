// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/printsummary.h>

#include <QDebug>
#include <QLoggingCategory>

namespace {

// A record has some twenty lines; where nobody listens none is composed.
bool nobodyListens()
{
    return !QLoggingCategory::defaultCategory()->isDebugEnabled();
}

} // namespace

void printFileSummary(const lorix::FileSummary& file)
{
    if (nobodyListens())
        return;
    qDebug() << "  TagID" << file.tagId;
    qDebug() << "  Filename" << file.filename;
    qDebug() << "  Filepath" << file.filepath;
    qDebug() << "  Filetype" << file.filetype;
    qDebug() << "  Description" << file.description;
    qDebug() << "  Comment" << file.comment;
    qDebug() << "  LastModified" << file.lastModified;
    qDebug() << "  GenerateMD5" << file.generateMD5;
    qDebug() << "  Embedded" << file.embedded;
    qDebug() << "  UncompressedSize" << file.uncompressedSize;
    qDebug() << "  UncompressedMD5" << file.uncompressedMD5;
    qDebug() << "  CompressedMethod" << file.compressedMethod;
    qDebug() << "  CompressedSize" << file.compressedSize;
    qDebug() << "  CompressedMD5" << file.compressedMD5;
    qDebug() << "  FilePurpose" << file.filePurpose;
    qDebug() << "  Preview" << file.preview;
    qDebug() << "  PreviewWS" << file.previewWS;
    qDebug() << "  Thumbnail" << file.thumbnail;
    qDebug() << "  ThumbnailOnly" << file.thumbnailOnly;
    qDebug() << "  File User Attributes:";
    qDebug() << "   " << file.userAttributes;
}

void printWorkflowstep(const lorix::Workflowstep& step)
{
    if (nobodyListens())
        return;
    qDebug() << "TagID" << step.tagId;
    qDebug() << "LorixRootFile:" << step.lorixRootFile;
    qDebug() << "Timestamp:" << step.timestamp;
    qDebug() << "Title:" << step.title;
    qDebug() << "Description:" << step.description;
    qDebug() << "Comment:" << step.comment;
    qDebug() << "Command:" << step.command;
    qDebug() << "Tool:" << step.tool;
    qDebug() << "ToolPath:" << step.toolPath;
    qDebug() << "Host:" << step.host;
    qDebug() << "User:" << step.user;
    qDebug() << "Creator:" << step.creator;
    qDebug() << "PDFTitle:" << step.pdfTitle;
    qDebug() << "PDFAuthor:" << step.pdfAuthor;
    qDebug() << "PDFSubject:" << step.pdfSubject;
    qDebug() << "PDFKeywords:" << step.pdfKeywords;
    qDebug() << "PDFProducer:" << step.pdfProducer;
    qDebug() << "PDFCreator:" << step.pdfCreator;
    for (const lorix::FileSummary& file : step.files)
        printFileSummary(file);
    qDebug() << "Step User Attributes:";
    qDebug() << " " << step.userAttributes;
}
