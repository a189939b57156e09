// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/validator.h>

namespace lorix {

Validator::Validator(const QString& md5, const QString& cmd5, QObject* parent)
    : QObject(parent), m_md5(md5), m_cmd5(cmd5), m_compressed(!cmd5.isEmpty())
{}

void Validator::reinit(const QString& md5, const QString& cmd5)
{
    m_md5 = md5;
    m_cmd5 = cmd5;
    m_compressed = !cmd5.isEmpty();
    m_contentDigest.reset();
    m_storedDigest.reset();
    m_inflater.reset();
}

void Validator::update(const QByteArray& data)
{
    if (!m_compressed) {
        m_contentDigest.update(data);
        return;
    }
    m_storedDigest.update(data);
    // Digesting what a damaged piece inflated to does no harm: it is invalid anyway.
    m_inflater.inflatePieces(data, [this](const char* bytes, qsizetype count) {
        m_contentDigest.update(QByteArray::fromRawData(bytes, count));
    });
}

bool Validator::isValid()
{
    if (m_compressed && (!m_inflater.hasFinished() || !m_inflater.isValid()))
        return false;
    if (m_contentDigest.getHexDigest() != m_md5)
        return false;
    return !m_compressed || m_storedDigest.getHexDigest() == m_cmd5;
}

} // namespace lorix
