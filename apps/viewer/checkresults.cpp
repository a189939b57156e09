// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/checkresults.h>

#include <QCoreApplication>

namespace lorix::viewer {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(CheckResults)
};

} // namespace

void CheckResults::setSection(int container, int id, const Verdict& verdict)
{
    m_sections.insert({container, id}, verdict);
    m_damaged += verdict.state == CheckState::Damaged;
}

void CheckResults::setFile(int container, int id, const Verdict& verdict)
{
    m_files.insert({container, id}, verdict);
    m_damaged += verdict.state == CheckState::Damaged;
}

Verdict CheckResults::of(const History& history, const Place& place) const
{
    if (!place.isFile())
        return ofStep(history, place.node);
    const FileSummary& file = history.file(place);
    if (file.tagId < 0)
        return {CheckState::NotChecked,
                Text::tr("The document only describes this file and does not hold its content, so "
                         "there is nothing to check.")};
    const auto found = m_files.constFind({history.step(place.node).container, file.tagId});
    if (found != m_files.constEnd())
        return *found;
    return {CheckState::NotChecked, Text::tr("Not checked yet.")};
}

Verdict CheckResults::ofStep(const History& history, int node) const
{
    const HistoryStep& step = history.step(node);
    Verdict own{CheckState::NotChecked, Text::tr("Not checked yet.")};
    if (!step.sectionless)
        own = m_sections.value({step.container, step.step.tagId}, own);
    int checked = 0;
    int damaged = 0;
    for (const FileSummary& file : step.step.files) {
        const auto found = m_files.constFind({step.container, file.tagId});
        if (found == m_files.constEnd())
            continue;
        ++checked;
        damaged += found->state == CheckState::Damaged;
    }
    if (damaged > 0) {
        const QString files = damaged == 1 ? Text::tr("One of its files is damaged.")
                                           : Text::tr("%1 of its files are damaged.").arg(damaged);
        if (own.state == CheckState::Damaged)
            return {CheckState::Damaged, own.reason + QLatin1Char(' ') + files};
        return {CheckState::Damaged, files};
    }
    if (step.sectionless && checked > 0)
        return {CheckState::Valid,
                Text::tr("The content of these files is what was recorded for them.")};
    return own;
}

QString stateName(CheckState state)
{
    switch (state) {
    case CheckState::Valid:
        return Text::tr("valid");
    case CheckState::Damaged:
        return Text::tr("damaged");
    case CheckState::NotChecked:
        break;
    }
    return Text::tr("not checked");
}

} // namespace lorix::viewer
