// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/history.h>

#include <QHash>
#include <QList>
#include <QPair>
#include <QString>

namespace lorix::viewer {

/// What is known of the bytes of a step or file.
enum class CheckState { NotChecked, Valid, Damaged };

/// The state, and in words what it means here.
struct Verdict
{
    CheckState state = CheckState::NotChecked;
    QString reason;
};

/// Something about the document as a whole that should not be so.
struct Notice
{
    bool isError = false; ///< Else it is worth knowing, but no damage.
    QString text;
};

/// What checking a history has found so far. A plain value.
class CheckResults
{
public:
    void setSection(int container, int id, const Verdict& verdict);
    void setFile(int container, int id, const Verdict& verdict);
    void addNotice(const Notice& notice) { m_notices.append(notice); }
    void setComplete() { m_complete = true; }

    /// What is known of a file, or of a step's own bytes and its files
    /// together: damaged when one of them is.
    Verdict of(const History& history, const Place& place) const;

    /// Everything was checked.
    bool isComplete() const { return m_complete; }
    bool isEmpty() const { return m_sections.isEmpty() && m_files.isEmpty(); }
    int checked() const { return static_cast<int>(m_sections.size() + m_files.size()); }
    int damaged() const { return m_damaged; }
    const QList<Notice>& notices() const { return m_notices; }

private:
    Verdict ofStep(const History& history, int node) const;

    QHash<QPair<int, int>, Verdict> m_sections; // by container and id
    QHash<QPair<int, int>, Verdict> m_files;
    QList<Notice> m_notices;
    int m_damaged = 0;
    bool m_complete = false;
};

/// The state in one or two words, as every mark carries them.
QString stateName(CheckState state);

} // namespace lorix::viewer
