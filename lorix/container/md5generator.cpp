// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/md5generator.h>

namespace lorix {

MD5Generator::MD5Generator() : m_state(QCryptographicHash::Md5) {}

MD5Generator::MD5Generator(const QByteArray& data) : MD5Generator()
{
    update(data);
}

void MD5Generator::update(const QByteArray& data)
{
    if (m_hexDigest.isEmpty())
        m_state.addData(data);
}

QString MD5Generator::getHexDigest()
{
    if (m_hexDigest.isEmpty())
        m_hexDigest = QString::fromLatin1(m_state.result().toHex());
    return m_hexDigest;
}

void MD5Generator::reset()
{
    m_state.reset();
    m_hexDigest.clear();
}

} // namespace lorix
