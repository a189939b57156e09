// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/argfile/userattributes.h>
#include <lorix/argfile/wsfile.h>
#include <lorix/export.h>

#include <QString>
#include <QStringList>

#include <deque>

namespace lorix {

/// How much the add tool says.
enum Verbosity { Quiet = 0, Normal = 1, Verbose = 2 };

/// One invocation of the add tool: the step that is recorded, the document
/// attributes that are set, the containers that are read and written, and the
/// files that the step used or produced. A copyable value.
///
///     ArgFile step("report.pdf", "draft.pdf");
///     step.setTitle("Proofread");
///     WSFile file;
///     file.setFilenameAndPath("notes.txt");
///     step.addFile(file);
///     LorixaddRunner(&window).runProcess(step.toCommandline(false));
///
/// ArgfileReader makes one from a command line or an argument file.
class LORIX_EXPORT ArgFile
{
public:
    /// An invocation that does nothing: normal verbosity, all else empty.
    ArgFile() = default;

    /// One that adds to `rootFile` and writes the result to `outputLorixfile`.
    ArgFile(const QString& outputLorixfile, const QString& rootFile);

    // How the tool runs.

    Verbosity verbosity() const { return m_verbosity; }
    void setVerbosity(Verbosity verbosity) { m_verbosity = verbosity; }

    /// Whether the root container may be missing.
    bool rootIsOptional() const { return m_rootIsOptional; }
    void setRootIsOptional(bool optional) { m_rootIsOptional = optional; }

    /// Whether nothing is written: a dry run.
    bool pretend() const { return m_pretend; }
    void setPretend(bool pretend) { m_pretend = pretend; }

    bool debugMode() const { return m_debugMode; }
    void setDebugMode(bool debugMode) { m_debugMode = debugMode; }

    bool showHelp() const { return m_showHelp; }
    void setShowHelp(bool showHelp) { m_showHelp = showHelp; }

    bool showVersion() const { return m_showVersion; }
    void setShowVersion(bool showVersion) { m_showVersion = showVersion; }

    // The containers.

    QString firstpage() const { return m_firstpage; }
    void setFirstpage(const QString& firstpage) { m_firstpage = firstpage; }

    QString readme() const { return m_readme; }
    void setReadme(const QString& readme) { m_readme = readme; }

    /// The container that is read.
    QString rootfile() const { return m_rootfile; }
    void setRootfile(const QString& rootfile) { m_rootfile = rootfile; }
    /// Empties rootfile().
    void clearRootLorixfiles() { m_rootfile.clear(); }

    /// The containers that are written, in the order in which they were added.
    void addOutputLorixfile(const QString& name) { m_outputLorixfiles.append(name); }
    int numOutputLorixfiles() const { return static_cast<int>(m_outputLorixfiles.size()); }
    /// The name with the 0-based index `i`, or empty where there is none.
    QString outputLorixfile(int i) const { return m_outputLorixfiles.value(i); }
    void clearOutputLorixfiles() { m_outputLorixfiles.clear(); }

    // The step.

    QString title() const { return m_title; }
    void setTitle(const QString& title) { m_title = title; }

    QString description() const { return m_description; }
    void setDescription(const QString& description) { m_description = description; }

    QString comment() const { return m_comment; }
    void setComment(const QString& comment) { m_comment = comment; }

    QString tool() const { return m_tool; }
    void setTool(const QString& tool) { m_tool = tool; }

    QString toolpath() const { return m_toolpath; }
    void setToolpath(const QString& toolpath) { m_toolpath = toolpath; }

    QString host() const { return m_host; }
    void setHost(const QString& host) { m_host = host; }

    QString user() const { return m_user; }
    void setUser(const QString& user) { m_user = user; }

    QString command() const { return m_command; }
    void setCommand(const QString& command) { m_command = command; }

    /// Adds a user attribute of the step; a repeated key is listed twice, its
    /// value is the last one given.
    void addUserAttribute(const QString& key, const QString& value);
    /// The value, or empty where the key is absent.
    QString userAttribute(const QString& key) const;
    /// The keys in the order in which they were added.
    QStringList userAttributeKeys() const { return m_userAttributes.keys; }
    void clearUserAttributes() { m_userAttributes.clear(); }

    // The document's attributes.

    QString pdfTitle() const { return m_pdfTitle; }
    void setPdfTitle(const QString& title) { m_pdfTitle = title; }

    QString pdfProducer() const { return m_pdfProducer; }
    void setPdfProducer(const QString& producer) { m_pdfProducer = producer; }

    QString pdfCreator() const { return m_pdfCreator; }
    void setPdfCreator(const QString& creator) { m_pdfCreator = creator; }

    QString pdfAuthor() const { return m_pdfAuthor; }
    void setPdfAuthor(const QString& author) { m_pdfAuthor = author; }

    QString pdfKeywords() const { return m_pdfKeywords; }
    void setPdfKeywords(const QString& keywords) { m_pdfKeywords = keywords; }

    QString pdfSubject() const { return m_pdfSubject; }
    void setPdfSubject(const QString& subject) { m_pdfSubject = subject; }

    // The files, in command-line order. Indices are 0-based. A pointer to an
    // entry is valid until an entry is removed or the list is cleared, assigned
    // or destroyed; adding further entries leaves it valid.

    int numFiles() const { return static_cast<int>(m_files.size()); }
    /// Appends a copy and returns a pointer to it.
    WSFile* addFile(const WSFile& file);
    /// The entry, or null where there is none with this index.
    WSFile* getFile(int i);
    const WSFile* getConstFile(int i) const;
    /// The last entry, or null where there is none.
    WSFile* lastFile();
    /// Removes an entry; an index without one is ignored.
    void removeFile(int i);
    void clearFilelist() { m_files.clear(); }

    // The whole.

    /// Sets the verbosity back to Normal, the flags to false and all texts to
    /// empty, except for rootfile(): callers rely on its staying. Files, output
    /// containers and user attributes stay too.
    void clearVariables();

    /// What undoes this step: for each output container, in order,
    /// "<DelWorkflowStep>" with its name and "</DelWorkflowStep>". The name is
    /// written as it is, without escapes.
    QString getUndoWorkflowStep() const;

    /// The whole invocation as text of an argument file, in a fixed order:
    /// general options, containers, attributes of step and document that are
    /// not empty, user attributes with a value, and then " " and
    /// WSFile::toCommandline() for each file. `keepVariables` is that of
    /// quoteString().
    QString toCommandline(bool keepVariables) const;

private:
    QStringList generalOptions() const;
    QStringList attributeOptions() const;

    UserAttributes m_userAttributes;
    // Appending to a deque keeps pointers to its elements valid.
    std::deque<WSFile> m_files;
    QStringList m_outputLorixfiles;
    Verbosity m_verbosity = Normal;
    bool m_rootIsOptional = false;
    bool m_pretend = false;
    bool m_debugMode = false;
    bool m_showHelp = false;
    bool m_showVersion = false;
    QString m_firstpage;
    QString m_readme;
    QString m_rootfile;
    QString m_title;
    QString m_description;
    QString m_comment;
    QString m_tool;
    QString m_toolpath;
    QString m_host;
    QString m_user;
    QString m_command;
    QString m_pdfTitle;
    QString m_pdfProducer;
    QString m_pdfCreator;
    QString m_pdfAuthor;
    QString m_pdfKeywords;
    QString m_pdfSubject;
};

} // namespace lorix
