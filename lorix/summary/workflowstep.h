// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/summary/filesummary.h>

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace lorix {

/// One workflow step: who did what, when, with which tool, on which files.
struct Workflowstep
{
    int tagId = 0; ///< Number of the step's section (SectionTag::id).
    QString lorixRootFile;
    QString timestamp;
    QString title;
    QString description;
    QString comment;
    QString command;
    QString tool;
    QString toolPath;
    QString host;
    QString user;
    QString creator;
    QString pdfTitle;
    QString pdfAuthor;
    QString pdfSubject;
    QString pdfKeywords;
    QString pdfProducer;
    QString pdfCreator;
    QList<FileSummary> files;                   ///< Inputs and outputs in document order.
    QHash<QString, QString> userAttributes;     ///< Value by key.
    QHash<QString, QString> userAttributeUnits; ///< Unit by key, where there is one.
    QStringList userAttributeKeys;              ///< Keys in document order.
};

} // namespace lorix
