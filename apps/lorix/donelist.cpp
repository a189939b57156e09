// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/donelist.h>

#include <QCryptographicHash>
#include <QJsonDocument>

#include <algorithm>

namespace lorix::cli {

// Of a hash for which nobody can make up two names with the same digest.
DoneList::Digest DoneList::digestOf(const QString& file)
{
    const QByteArray hash = QCryptographicHash::hash(file.toUtf8(), QCryptographicHash::Sha256);
    Digest digest{};
    std::copy_n(hash.begin(), digest.size(), digest.begin());
    return digest;
}

bool DoneList::read(QFile& output, const Fits& fits)
{
    m_done.clear();
    m_cutBytes = 0;
    for (QByteArray line = output.readLine(); !line.isEmpty(); line = output.readLine()) {
        if (!line.endsWith('\n')) {
            m_cutBytes = line.size();
            break;
        }
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        const QJsonValue file = object.value(QLatin1String("file"));
        if (file.isString() && object.value(QLatin1String("schema")) == QLatin1String("lorix/1") &&
            fits(object))
            m_done.push_back(digestOf(file.toString()));
    }
    std::sort(m_done.begin(), m_done.end());
    return output.error() == QFileDevice::NoError;
}

bool DoneList::contains(const QString& file) const
{
    return std::binary_search(m_done.begin(), m_done.end(), digestOf(file));
}

} // namespace lorix::cli
