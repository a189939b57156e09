// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/inflater.h>
#include <lorix/container/md5generator.h>
#include <lorix/export.h>

#include <QByteArray>
#include <QObject>
#include <QString>

namespace lorix {

/// Checks one run of bytes against its MD5 digests while the bytes stream past.
///
///     Validator validator(tag.md5file, tag.md5cfile);
///     while (...)
///         validator.update(chunk);
///     if (!validator.isValid()) ...
///
/// Digests are 32 lower-case hexadecimal digits and are compared as text: an
/// expected digest in upper case never validates.
class LORIX_EXPORT Validator : public QObject
{
    Q_OBJECT

public:
    /// A check of content against `md5`. When `cmd5` is not empty the bytes are
    /// taken as a zlib stream (RFC 1950): `cmd5` is the digest of the stream
    /// and `md5` that of what it inflates to.
    Validator(const QString& md5, const QString& cmd5, QObject* parent = nullptr);

    /// Starts over with other expectations, as a new object would.
    void reinit(const QString& md5, const QString& cmd5);

    /// Feeds the next bytes, in pieces of any size.
    void update(const QByteArray& data);

    /// Whether the bytes fed so far are what was expected: for a stream, that
    /// it is unbroken, has reached its end and both digests match; otherwise
    /// that the digest matches. The digests are fixed by the first call: what
    /// is fed later changes nothing until reinit().
    bool isValid();

private:
    QString m_md5;
    QString m_cmd5;
    bool m_compressed = false;
    MD5Generator m_contentDigest;
    MD5Generator m_storedDigest;
    Inflater m_inflater;
};

} // namespace lorix
