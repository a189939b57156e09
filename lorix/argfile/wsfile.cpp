// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/wsfile.h>

#include <lorix/argfile/argumentlist.h>

#include <QDir>
#include <QFileInfo>

namespace lorix {

void WSFile::setFilepath(const QString& filepath)
{
    m_filepath = filepath;
    if (!m_filepath.endsWith(u'/'))
        m_filepath += u'/';
}

void WSFile::setFilenameAndPath(const QString& full)
{
    const QFileInfo info(full);
    setFilepath(info.path());
    m_filename = info.fileName();
}

void WSFile::addUserAttribute(const QString& key, const QString& value)
{
    m_userAttributes.add(key, value);
}

QString WSFile::userAttribute(const QString& key) const
{
    return m_userAttributes.values.value(key);
}

bool WSFile::operator==(const WSFile& other) const
{
    return m_filetype == other.m_filetype && m_filename == other.m_filename &&
           m_filepath == other.m_filepath && m_md5File == other.m_md5File &&
           m_autoMD5 == other.m_autoMD5 && m_embed == other.m_embed &&
           m_optional == other.m_optional && m_compress == other.m_compress &&
           m_previewWS == other.m_previewWS && m_preview == other.m_preview &&
           m_thumbnail == other.m_thumbnail && m_thumbnailOnly == other.m_thumbnailOnly &&
           m_filePurpose == other.m_filePurpose && m_description == other.m_description &&
           m_comment == other.m_comment && m_userAttributes == other.m_userAttributes;
}

QString WSFile::toCommandline(bool keepVariables) const
{
    QStringList list;
    list << (m_filePurpose == Output ? QStringLiteral("-o") : QStringLiteral("-i"));
    list << QFileInfo(QDir(m_filepath), m_filename).filePath();

    const QString attribute = QStringLiteral("-a");
    appendAttributeToList(m_filetype, attribute, QStringLiteral("filetype"), list);
    appendAttributeToList(m_description, attribute, QStringLiteral("description"), list);
    appendAttributeToList(m_comment, attribute, QStringLiteral("comment"), list);
    appendAttributeToList(m_md5File, attribute, QStringLiteral("md5file"), list);

    const QString flag = QStringLiteral("-f");
    appendFlagToList(m_optional, flag, QStringLiteral("optional"), list);
    appendFlagToList(m_compress, flag, QStringLiteral("compress"), list);
    appendFlagToList(m_embed, flag, QStringLiteral("embed"), list);
    appendFlagToList(m_autoMD5, flag, QStringLiteral("automd5"), list);
    appendFlagToList(m_previewWS, flag, QStringLiteral("previewws"), list);
    appendFlagToList(m_preview, flag, QStringLiteral("preview"), list);
    appendFlagToList(m_thumbnail, flag, QStringLiteral("thumbnail"), list);
    appendFlagToList(m_thumbnailOnly, flag, QStringLiteral("thumbnailonly"), list);

    for (const QString& key : m_userAttributes.keys)
        appendAttributeToList(userAttribute(key), QStringLiteral("-u"), key, list);
    return quoteStringList(list, keepVariables).join(u' ');
}

} // namespace lorix
