// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>

/// Ends the process, and so makes a finding, unless `holds`.
inline void require(bool holds, const char* what)
{
    if (!holds)
        qFatal("%s", what);
}

/// A folder of the process for what a target has to put on disk. It lies where
/// TMPDIR says, which should be memory.
class Scratch
{
public:
    QString path(const QString& name) const { return m_dir.filePath(name); }

    /// Writes a file in the folder and returns its path.
    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
                "cannot write to the scratch folder");
        return file.fileName();
    }

private:
    QTemporaryDir m_dir;
};

/// The one of the process; made at the first call.
inline const Scratch& scratch()
{
    static const Scratch folder;
    return folder;
}

/// Keeps the debug stream out of the log.
inline void silence()
{
    static const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            if (type == QtFatalMsg)
                previous(type, context, text);
        });
}

/// A number that depends on all bytes, to choose by.
inline quint32 hashOf(const std::uint8_t* data, std::size_t size)
{
    quint32 hash = 2166136261U;
    for (std::size_t i = 0; i < size; ++i)
        hash = (hash ^ data[i]) * 16777619U;
    return hash;
}
