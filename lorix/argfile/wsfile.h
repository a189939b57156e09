// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/argfile/userattributes.h>
#include <lorix/export.h>

#include <QString>
#include <QStringList>

namespace lorix {

/// What a step did with a file: used it or produced it.
enum FilePurpose { Input = 0, Output = 1 };

/// One file of a step that is to be added (see ArgFile): where it lies, what is
/// recorded about it and how it goes into the container. A copyable value.
class LORIX_EXPORT WSFile
{
public:
    /// An input file without a name; automatic MD5 and embedding are on, all
    /// other flags off.
    WSFile() = default;

    QString filetype() const { return m_filetype; }
    void setFiletype(const QString& filetype) { m_filetype = filetype; }

    /// Name without directory.
    QString filename() const { return m_filename; }
    void setFilename(const QString& filename) { m_filename = filename; }

    /// Directory; ends in "/" once it has been set.
    QString filepath() const { return m_filepath; }
    /// Appends "/" where it is missing, even to an empty path.
    void setFilepath(const QString& filepath);

    /// Takes directory and name from one path; a bare name lies in "./".
    void setFilenameAndPath(const QString& full);

    /// MD5 of the file as 32 hexadecimal digits, where the caller knows it.
    QString md5File() const { return m_md5File; }
    void setMd5File(const QString& md5File) { m_md5File = md5File; }

    /// Whether the tool is to compute the MD5.
    bool autoMD5() const { return m_autoMD5; }
    void setAutoMD5(bool autoMD5) { m_autoMD5 = autoMD5; }

    /// Whether the content goes into the container.
    bool embed() const { return m_embed; }
    void setEmbed(bool embed) { m_embed = embed; }

    /// Whether the file may be missing.
    bool optional() const { return m_optional; }
    void setOptional(bool optional) { m_optional = optional; }

    bool compress() const { return m_compress; }
    void setCompress(bool compress) { m_compress = compress; }

    bool previewWS() const { return m_previewWS; }
    void setPreviewWS(bool previewWS) { m_previewWS = previewWS; }

    bool preview() const { return m_preview; }
    void setPreview(bool preview) { m_preview = preview; }

    bool thumbnail() const { return m_thumbnail; }
    void setThumbnail(bool thumbnail) { m_thumbnail = thumbnail; }

    bool thumbnailOnly() const { return m_thumbnailOnly; }
    void setThumbnailOnly(bool thumbnailOnly) { m_thumbnailOnly = thumbnailOnly; }

    FilePurpose filePurpose() const { return m_filePurpose; }
    void setFilePurpose(FilePurpose filePurpose) { m_filePurpose = filePurpose; }

    /// Whether the purpose is Input; setInputFile(false) makes it Output.
    bool inputFile() const { return m_filePurpose == Input; }
    void setInputFile(bool input) { m_filePurpose = input ? Input : Output; }

    QString description() const { return m_description; }
    void setDescription(const QString& description) { m_description = description; }

    QString comment() const { return m_comment; }
    void setComment(const QString& comment) { m_comment = comment; }

    /// Adds a user attribute; a repeated key is listed twice, its value is the
    /// last one given.
    void addUserAttribute(const QString& key, const QString& value);
    /// The value, or empty where the key is absent.
    QString userAttribute(const QString& key) const;
    /// The keys in the order in which they were added.
    QStringList userAttributeKeys() const { return m_userAttributes.keys; }
    void clearUserAttributes() { m_userAttributes.clear(); }

    /// Equal when every field is, the order of the user attribute keys included.
    bool operator==(const WSFile& other) const;
    bool operator!=(const WSFile& other) const { return !(*this == other); }

    /// The options that describe this file, as text of an argument file:
    /// "-i" or "-o" with the path, attributes that are not empty, every flag in
    /// either state, user attributes with a value. `keepVariables` is that of
    /// quoteString().
    QString toCommandline(bool keepVariables) const;

private:
    QString m_filetype;
    QString m_filename;
    QString m_filepath;
    QString m_md5File;
    bool m_autoMD5 = true;
    bool m_embed = true;
    bool m_optional = false;
    bool m_compress = false;
    bool m_previewWS = false;
    bool m_preview = false;
    bool m_thumbnail = false;
    bool m_thumbnailOnly = false;
    FilePurpose m_filePurpose = Input;
    QString m_description;
    QString m_comment;
    UserAttributes m_userAttributes;
};

} // namespace lorix
