// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QFile>
#include <QJsonObject>
#include <QString>

#include <array>
#include <functional>
#include <vector>

namespace lorix::cli {

/// Which inputs an earlier output already answers for. Of each only a digest of
/// its name is kept, 16 bytes, so that a list of millions fits.
class DoneList
{
public:
    /// Whether a line of the earlier output answers what is asked now.
    using Fits = std::function<bool(const QJsonObject&)>;

    /// Reads an output of --json. Lines that are no complete objects are passed
    /// over: where a run was killed, the last one is cut. False when reading failed.
    bool read(QFile& output, const Fits& fits);

    /// Whether the output has an object for this "file".
    bool contains(const QString& file) const;

    /// How many bytes at the end of the output belong to a line that was cut.
    qint64 cutBytes() const { return m_cutBytes; }

private:
    using Digest = std::array<char, 16>;
    static Digest digestOf(const QString& file);

    std::vector<Digest> m_done; // ascending
    qint64 m_cutBytes = 0;
};

} // namespace lorix::cli
