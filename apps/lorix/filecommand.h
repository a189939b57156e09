// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>
#include <apps/lorix/inputs.h>
#include <apps/lorix/text.h>

namespace lorix::cli {

/// For whom an answer is made, so that only what will be shown needs making.
struct View
{
    Paint paint;
    bool json;
};

/// A command that answers for one file at a time: it takes several, and
/// folders with -r; one bad file never stops the rest, and the worst exit code
/// wins. Answers are printed in the order of the arguments, whatever the number
/// of jobs.
class FileCommand : public Command
{
public:
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

protected:
    /// Answers for one file. Called on several threads at once when the command
    /// has jobs, so that it must not change members; its objects (a parser for
    /// example) are its own. Sets `skipped` where there is nothing to say.
    virtual Answer examine(const Input& input, const View& view, bool& skipped) const = 0;

    /// What the files are called in the help; "FILE" without more.
    virtual std::string filesDescription() const { return "Documents to look at"; }
    /// Adds --jobs; called from declare() of commands whose work is worth it.
    void declareJobs(CLI::App& app, int defaultJobs);
    /// Whether the person has named any file.
    bool hasInputs() const { return !m_inputs.paths.isEmpty(); }
    /// Prints one answer as the options ask for it; false when writing failed.
    bool print(const Answer& answer, Console& console, const GlobalOptions& options) const;

private:
    Inputs m_inputs;
    int m_jobs = 1;
};

} // namespace lorix::cli
