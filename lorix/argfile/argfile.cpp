// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/argfile.h>

#include <lorix/argfile/argumentlist.h>

namespace lorix {

ArgFile::ArgFile(const QString& outputLorixfile, const QString& rootFile)
    : m_outputLorixfiles(outputLorixfile), m_rootfile(rootFile)
{}

void ArgFile::addUserAttribute(const QString& key, const QString& value)
{
    m_userAttributes.add(key, value);
}

QString ArgFile::userAttribute(const QString& key) const
{
    return m_userAttributes.values.value(key);
}

WSFile* ArgFile::addFile(const WSFile& file)
{
    return &m_files.emplace_back(file);
}

WSFile* ArgFile::getFile(int i)
{
    return i >= 0 && i < numFiles() ? &m_files[static_cast<size_t>(i)] : nullptr;
}

const WSFile* ArgFile::getConstFile(int i) const
{
    return i >= 0 && i < numFiles() ? &m_files[static_cast<size_t>(i)] : nullptr;
}

WSFile* ArgFile::lastFile()
{
    return m_files.empty() ? nullptr : &m_files.back();
}

void ArgFile::removeFile(int i)
{
    if (i >= 0 && i < numFiles())
        m_files.erase(m_files.begin() + i);
}

void ArgFile::clearVariables()
{
    ArgFile cleared;
    cleared.m_userAttributes = m_userAttributes;
    cleared.m_outputLorixfiles = m_outputLorixfiles;
    cleared.m_rootfile = m_rootfile;
    cleared.m_files.swap(m_files);
    *this = std::move(cleared);
}

QString ArgFile::getUndoWorkflowStep() const
{
    QString result;
    for (const QString& name : m_outputLorixfiles)
        result += QStringLiteral("<DelWorkflowStep>%1</DelWorkflowStep>").arg(name);
    return result;
}

QString ArgFile::toCommandline(bool keepVariables) const
{
    const QStringList list = generalOptions() + attributeOptions();
    QString result = quoteStringList(list, keepVariables).join(u' ');
    for (const WSFile& file : m_files) {
        result += u' ';
        result += file.toCommandline(keepVariables);
    }
    return result;
}

QStringList ArgFile::generalOptions() const
{
    QStringList list;
    if (m_verbosity == Verbose)
        list << QStringLiteral("--verbose");
    else if (m_verbosity == Quiet)
        list << QStringLiteral("--quiet");
    if (m_pretend)
        list << QStringLiteral("--pretend");
    if (m_debugMode)
        list << QStringLiteral("--debug");
    if (m_showHelp)
        list << QStringLiteral("--help");
    if (m_showVersion)
        list << QStringLiteral("--version");
    if (!m_firstpage.isEmpty())
        list << QStringLiteral("--firstpage") << m_firstpage;
    if (!m_readme.isEmpty())
        list << QStringLiteral("--readme") << m_readme;
    for (const QString& name : m_outputLorixfiles)
        list << QStringLiteral("-O") << name;
    if (!m_rootfile.isEmpty())
        list << (m_rootIsOptional ? QStringLiteral("-J") : QStringLiteral("-I")) << m_rootfile;
    return list;
}

QStringList ArgFile::attributeOptions() const
{
    QStringList list;
    const QString step = QStringLiteral("-s");
    appendAttributeToList(m_title, step, QStringLiteral("title"), list);
    appendAttributeToList(m_description, step, QStringLiteral("description"), list);
    appendAttributeToList(m_comment, step, QStringLiteral("comment"), list);
    appendAttributeToList(m_tool, step, QStringLiteral("tool"), list);
    appendAttributeToList(m_toolpath, step, QStringLiteral("toolpath"), list);
    appendAttributeToList(m_host, step, QStringLiteral("host"), list);
    appendAttributeToList(m_user, step, QStringLiteral("user"), list);
    appendAttributeToList(m_command, step, QStringLiteral("command"), list);

    const QString document = QStringLiteral("-d");
    appendAttributeToList(m_pdfTitle, document, QStringLiteral("title"), list);
    appendAttributeToList(m_pdfProducer, document, QStringLiteral("producer"), list);
    appendAttributeToList(m_pdfCreator, document, QStringLiteral("creator"), list);
    appendAttributeToList(m_pdfAuthor, document, QStringLiteral("author"), list);
    appendAttributeToList(m_pdfKeywords, document, QStringLiteral("keywords"), list);
    appendAttributeToList(m_pdfSubject, document, QStringLiteral("subject"), list);

    for (const QString& key : m_userAttributes.keys)
        appendAttributeToList(userAttribute(key), QStringLiteral("-U"), key, list);
    return list;
}

} // namespace lorix
