// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QSharedPointer>
#include <QString>

namespace lorix {

class LorixParser;

/// An open container together with the file that it lies in, which may be a
/// temporary one that goes with this object.
class LORIX_EXPORT TempLorixfile
{
public:
    TempLorixfile(const QSharedPointer<LorixParser>& parser, const QString& filePath,
                  bool removeOnDestruction);

    /// Removes the file when the object was made so.
    ~TempLorixfile();
    Q_DISABLE_COPY_MOVE(TempLorixfile)

    const QSharedPointer<LorixParser>& parser() const { return m_parser; }
    const QString& filePath() const { return m_filePath; }
    bool removeOnDestruction() const { return m_removeOnDestruction; }

private:
    QSharedPointer<LorixParser> m_parser;
    QString m_filePath;
    bool m_removeOnDestruction;
};

} // namespace lorix
