// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>
#include <apps/lorix/inputs.h>
#include <apps/lorix/lineup.h>
#include <apps/lorix/selection.h>
#include <apps/lorix/text.h>

namespace lorix::cli {

/// For whom an answer is made, so that only what will be shown needs making.
struct View
{
    Paint paint;
    bool json;
};

/// A command that answers for one file at a time: it takes several, lists of
/// them, and folders with -r; one bad file never stops the rest, and the worst
/// exit code wins. Several files are worked on at once; their answers are
/// printed in the order of the arguments, each as soon as its turn comes, and
/// memory does not grow with their number.
class FileCommand : public Command
{
public:
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

protected:
    /// Answers for one file. Called on several threads at once, so that it must
    /// not change members; its objects (a parser for example) are its own. Sets
    /// `skipped` where there is nothing to say.
    virtual Answer examine(const Input& input, const View& view, bool& skipped) const = 0;

    /// Whether an object of an earlier output answers what is asked now; a
    /// command whose question is more than its name says so here.
    virtual bool isSameQuestion(const QJsonObject& answer) const;
    /// What the files are called in the help; "FILE" without more.
    virtual std::string filesDescription() const { return "Documents to look at"; }
    /// Whether the person has named any file.
    bool hasInputs() const { return !m_inputs.isEmpty(); }
    /// Whether examine() is called once, on the calling thread, so that it may
    /// use all jobs and the console for itself.
    bool hasSingleInput() const { return m_inputs.isSingle(); }
    /// How many things are done at once.
    int jobs() const { return m_jobs; }
    /// Prints one answer as the options ask for it; false when writing failed.
    static bool print(const Answer& answer, Console& console, const GlobalOptions& options);

private:
    Printout workOn(const Input& input, const View& view) const;
    int showAll(Console& console, const View& view);

    Inputs m_inputs;
    Selection m_selection;
    int m_jobs = 1;
};

} // namespace lorix::cli
