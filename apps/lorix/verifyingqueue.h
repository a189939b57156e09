// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/md5generator.h>
#include <lorix/queues/extractionqueue.h>

namespace lorix::cli {

/// An extraction queue that counts and, if asked, digests the bytes of the
/// current item as they pass.
class VerifyingQueue : public ExtractionQueue
{
    Q_OBJECT

public:
    VerifyingQueue(LorixParser* parser, bool digests);

    /// Forgets what has passed; before each item.
    void startItem();

    qint64 contentBytes() const { return m_contentBytes; }
    /// MD5 of the stored bytes and of the content; of nothing without digests.
    QString storedMd5() { return m_stored.getHexDigest(); }
    QString contentMd5() { return m_content.getHexDigest(); }

protected:
    void storedBytesRead(const Extractee& extractee, const QByteArray& bytes) override;
    void contentWritten(const Extractee& extractee, const char* bytes, qsizetype count) override;

private:
    bool m_digests;
    qint64 m_contentBytes = 0;
    MD5Generator m_stored;
    MD5Generator m_content;
};

} // namespace lorix::cli
