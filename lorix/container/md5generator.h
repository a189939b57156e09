// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QByteArray>
#include <QCryptographicHash>
#include <QObject>
#include <QString>

namespace lorix {

/// Incremental MD5 (RFC 1321) whose result is text.
class LORIX_EXPORT MD5Generator : public QObject
{
    Q_OBJECT

public:
    /// Starts a digest over nothing.
    MD5Generator();
    /// Starts a digest and feeds `data`.
    explicit MD5Generator(const QByteArray& data);

    /// Feeds bytes. Without effect between getHexDigest() and reset().
    void update(const QByteArray& data);

    /// Ends the digest: 32 lower-case hexadecimal digits. Asked again, it gives
    /// the same text until reset().
    QString getHexDigest();

    /// Starts anew over nothing.
    void reset();

private:
    QCryptographicHash m_state;
    QString m_hexDigest;
};

} // namespace lorix
