// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

namespace lorix::cli {

/// The name under which an embedded file may be written: a relative path of
/// harmless components, separated by "/".
///
/// Embedded names come from anywhere. Backslashes separate as well; empty
/// components, "." and ".." and drive letters are left out, so that nothing
/// leads outside; control characters, marks of direction and characters that
/// some system forbids become "_"; names that a system reserves (CON, NUL,
/// COM1 ...) get a "_" in front; a component has at most 200 bytes. Where
/// nothing is left the name is "file".
QString harmlessName(const QString& embeddedName);

/// Gives every file of a container a name of its own, by ascending id: where a
/// name is taken, the later file gets "-2", "-3" ... in front of its suffix.
/// Names that differ only in case or in how letters with accents are written
/// count as the same, as on many file systems. A folder whose name a file has
/// is numbered likewise. The same container always gives the same names.
class TargetNames
{
public:
    explicit TargetNames(const QList<FileTag>& files);

    /// The relative path for a file id; empty for an unknown one.
    QString nameOf(int id) const { return m_names.value(id); }

private:
    QString withFreeFolders(const QString& name);
    QString uniqueName(const QString& name);
    bool isTaken(const QString& name) const;
    QString take(const QString& name);

    QHash<int, QString> m_names;
    QSet<QString> m_takenFiles;
    QSet<QString> m_takenFolders;
    QHash<QString, QString> m_insteadOf; // folders whose name a file had before
    QHash<QString, int> m_lastNumber;
};

} // namespace lorix::cli
