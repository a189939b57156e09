// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/summary/workflowstep.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace lorix::cli {

/// One field in which two steps differ. Texts are as the records hold them.
struct Difference
{
    QString field; ///< A member's name, or "userAttributes.KEY".
    QString left;
    QString right;
};

/// What two steps differ in: their texts, their user attributes with units, and
/// their files by name and content, of which only those are told that the other
/// side does not have. Fields named in `ignored` are left out.
QList<Difference> differencesOf(const Workflowstep& left, const Workflowstep& right,
                                const QStringList& ignored);

/// The fields that differencesOf() looks at.
QStringList comparedFields();

} // namespace lorix::cli
