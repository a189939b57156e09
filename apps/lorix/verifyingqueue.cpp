// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/verifyingqueue.h>

namespace lorix::cli {

VerifyingQueue::VerifyingQueue(LorixParser* parser, bool digests)
    : ExtractionQueue(parser), m_digests(digests)
{}

void VerifyingQueue::startItem()
{
    m_contentBytes = 0;
    m_stored.reset();
    m_content.reset();
}

void VerifyingQueue::storedBytesRead(const Extractee& extractee, const QByteArray& bytes)
{
    // Of a file that is stored as it is, the content is all that counts.
    if (m_digests && !extractee.cmd5.isEmpty())
        m_stored.update(bytes);
}

void VerifyingQueue::contentWritten(const Extractee& extractee, const char* bytes, qsizetype count)
{
    Q_UNUSED(extractee)
    m_contentBytes += count;
    if (m_digests)
        m_content.update(QByteArray::fromRawData(bytes, count));
}

} // namespace lorix::cli
