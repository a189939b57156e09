// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/summary/summary.h>
#include <lorix/summary/tripple.h>

#include <QHash>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <limits>

namespace lorix {

/// Reads the XML summary of a step, "ws_summary.xml", into records.
///
/// The text is walked with VXMLLevel1Iter, so it is XML without attributes,
/// entities and namespaces: text comes out as it stands between the tags, with
/// "&lt;" and the like left alone. Nothing is an error. What is malformed ends
/// the walk at its level and leaves what was read before it; an element that is
/// not known is skipped; where an element comes twice the later one counts.
/// Flags are read with str2bool(), sizes with str2int().
///
/// Unknown elements within a step, a file and their attributes are written to
/// the debug stream, one line each.
///
/// All functions but readSummary() take the content of one element. None keeps
/// anything between calls.
class LORIX_EXPORT SummaryReader : public QObject
{
    Q_OBJECT

public:
    /// One user attribute: key, value, and unit or null where there is none.
    using Attribute = Tripple<QString, QString, QSharedPointer<QString>>;

    /// A list of user attributes: value by key, the keys in document order (as
    /// often as they occur), unit by key for those that have one.
    using Attributes = Tripple<QHash<QString, QString>, QStringList, QHash<QString, QString>>;

    explicit SummaryReader(QObject* parent = nullptr);

    /// The content of the first "loxchange" element among the first-level
    /// elements of a whole summary text, as parseSummary() reads it; a default
    /// Summary, with `fromXml` false, where there is none. Files of a step
    /// beyond the first `maxFiles` are left out.
    Summary readSummary(const QString& xml, int maxFiles = std::numeric_limits<int>::max()) const;

    /// The step ("Workflowstep") and `md5` ("MD5Signature") of a "loxchange"
    /// element; `fromXml` is true.
    Summary parseSummary(const QString& content) const;

    /// A step; its `tagId` is -1.
    Workflowstep parseWorkflowstep(const QString& content) const;

    /// A file; its `tagId` is -1, `fromTags` false and `filePurpose` left as it
    /// is by default, since the enclosing element's name tells it.
    FileSummary parseFile(const QString& content) const;

    /// The "Attribute" elements of a "UserAttributes" element. A repeated key
    /// overwrites the value and is listed again; a unit once given stays
    /// unless another one overwrites it.
    Attributes parseUserAttributes(const QString& content) const;

    /// The "Key", "Value" and "Unit" of an "Attribute" element.
    Attribute parseAttribute(const QString& content) const;
};

} // namespace lorix
