// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/argfile/argfile.h>
#include <lorix/export.h>
#include <lorix/runner/logsource.h>

#include <QHash>
#include <QString>
#include <QStringList>

namespace lorix {

/// Makes an ArgFile from the options of the add tool, given as the text of an
/// argument file or as a list of arguments.
///
/// Nothing is thrown and nothing fails: complaints are log messages, and the
/// result holds what was accepted. The options, their parameters and names are
/// told in docs/argfile.md.
///
///     ArgfileReader reader(&window);
///     ArgFile step = reader.readArgfile("-A report.pdf -s title Proofread", nullptr);
class LORIX_EXPORT ArgfileReader : public LogSource
{
    Q_OBJECT

public:
    /// A reader whose messages go to `logTarget` (see LogSource).
    explicit ArgfileReader(QObject* logTarget = nullptr);

    /// Splits the text (ArgfileParser::parseArgfile()), cuts the arguments off at
    /// the first error (checkOptionSignatures()) and reads the rest
    /// (parseCommandline()). A text that cannot be split gives a default ArgFile.
    ArgFile readArgfile(const QString& text, const QHash<QString, QString>* variables = nullptr);

    /// The longest prefix of `arguments` that consists of known options, each
    /// with as many parameters as it takes. What ends it is logged with type 2:
    /// "unknown option found: %1" or "not enough parameters for option: %1".
    /// Parameters may look like options.
    QStringList checkOptionSignatures(const QStringList& arguments);

    /// Applies the options to a default ArgFile, in order. Options for a file
    /// mean the one given last; before the first one they are ignored. What is
    /// no option is logged as "invalid option (%1) found" with type 0, and the
    /// next argument is looked at. "--sync-cwd" and "-c" mean something to the
    /// tool alone and are logged in the same way. An option whose parameters
    /// lie behind the end of the list is ignored.
    ArgFile parseCommandline(const QStringList& arguments);

    /// Apply the parameters of one option, which begin at the 0-based `index`,
    /// to a file or an invocation. `option` is what messages call the option.
    /// An unknown flag or attribute name is logged with type 2 and changes
    /// nothing, nor do parameters behind the end of the list or a null target.
    ///
    /// The flag takes one parameter, which "no-" turns off; the attributes take
    /// two, name and value.
    void saveFileFlag(const QString& option, const QStringList& arguments, int index, WSFile* file);
    void saveFileAttr(const QString& option, const QStringList& arguments, int index, WSFile* file);
    void saveStepAttr(const QString& option, const QStringList& arguments, int index,
                      ArgFile* argfile);
    void saveDocAttr(const QString& option, const QStringList& arguments, int index,
                     ArgFile* argfile);

    void saveFileFlag(const QString& option, const QStringList& arguments, int index, WSFile& file)
    {
        saveFileFlag(option, arguments, index, &file);
    }
    void saveFileAttr(const QString& option, const QStringList& arguments, int index, WSFile& file)
    {
        saveFileAttr(option, arguments, index, &file);
    }
    void saveStepAttr(const QString& option, const QStringList& arguments, int index,
                      ArgFile& argfile)
    {
        saveStepAttr(option, arguments, index, &argfile);
    }
    void saveDocAttr(const QString& option, const QStringList& arguments, int index,
                     ArgFile& argfile)
    {
        saveDocAttr(option, arguments, index, &argfile);
    }
};

} // namespace lorix
