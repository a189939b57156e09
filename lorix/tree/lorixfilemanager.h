// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/bounds.h>
#include <lorix/export.h>
#include <lorix/runner/logsource.h>

#include <QHash>
#include <QSharedPointer>
#include <QString>

namespace lorix {

class LorixParser;
class TempLorixfile;

/// Keeps one open parser per container file, under the file's path.
///
/// A copy shares the parsers and the temporary files, which go with the last
/// manager that holds them. The messages of a parser keep coming from the
/// manager that opened it.
class LORIX_EXPORT LorixFileManager : public LogSource
{
    Q_OBJECT

public:
    explicit LorixFileManager(QObject* logTarget = nullptr);
    ~LorixFileManager() override;
    LorixFileManager(const LorixFileManager& other);
    LorixFileManager& operator=(const LorixFileManager& other);

    /// The parser kept under this path; null when there is none.
    QSharedPointer<LorixParser> parser(const QString& path) const;

    /// The parser kept under this path or, when there is none, a new one that
    /// opens the path; null when that fails, and nothing is kept then. With
    /// `removeOnDestruction` a newly opened file is removed once no manager
    /// keeps it any longer; where it cannot be opened it stays.
    QSharedPointer<LorixParser> addLorixFile(const QString& path, bool removeOnDestruction);

    /// Keeps `parser` under this path, in place of any other. The file is the
    /// caller's and stays.
    void addLorixFile(const QSharedPointer<LorixParser>& parser, const QString& path);

    /// Lets go of everything.
    void clear();

    /// Bounds for the parsers that are opened from now on; see Bounds.
    void setBounds(const Bounds& bounds) { m_bounds = bounds; }

private:
    QHash<QString, QSharedPointer<TempLorixfile>> m_files; // by path
    Bounds m_bounds;
};

} // namespace lorix
