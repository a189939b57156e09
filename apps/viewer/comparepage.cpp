// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/comparepage.h>

#include <apps/viewer/words.h>

#include <apps/lorix/text.h>

#include <lorix/tree/lorixdiff.h>
#include <lorix/tree/workflowstepcosts.h>

#include <QCheckBox>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace lorix::viewer {

namespace {

const qint64 patienceMs = 8000;       // then the quick answer is shown
const qint64 waitingPaths = 20000000; // about 240 MB
const int rowRole = Qt::UserRole;

QTreeWidget* makeTable(const QStringList& columns, const QString& accessibleName)
{
    auto* const table = new QTreeWidget;
    table->setColumnCount(static_cast<int>(columns.size()));
    table->setHeaderLabels(columns);
    table->setRootIsDecorated(false);
    table->setAlternatingRowColors(true);
    table->setUniformRowHeights(true);
    table->setAllColumnsShowFocus(true);
    table->setAccessibleName(accessibleName);
    return table;
}

// What a cell has room for.
QString onOneLine(const QString& text)
{
    const qsizetype longest = 300;
    if (text.isEmpty())
        return QStringLiteral("–");
    return text.left(longest).simplified();
}

void markDifference(QTreeWidgetItem* item, bool differs)
{
    QFont font = item->font(0);
    font.setBold(differs);
    for (int column = 0; column < item->columnCount(); ++column)
        item->setFont(column, font);
}

QString titleOf(const History& history, int node)
{
    if (node < 0)
        return QStringLiteral("–");
    const HistoryStep& step = history.step(node);
    // Steps of a container inside stand to the right of those around it.
    const int depth = history.containers().at(step.container).depth;
    return QString(depth * 4, QLatin1Char(' ')) + step.title;
}

} // namespace

ComparePage::ComparePage(QObject* logTarget, QWidget* parent)
    : QWidget(parent), m_loader(logTarget), m_summary(new QLabel),
      m_choose(new QPushButton(tr("Choose the other document …"))),
      m_previous(new QPushButton(tr("Better match"))),
      m_next(new QPushButton(tr("Next best match"))),
      m_onlyDifferent(new QCheckBox(tr("Only differences"))),
      m_steps(makeTable({tr("This document"), tr("Comparison"), tr("Other document")},
                        tr("Steps of both documents"))),
      m_fields(makeTable({tr("Field"), tr("This document"), tr("Other document"), tr("Comparison")},
                         tr("Fields of the selected steps")))
{
    buildLayout();
    connect(m_choose, &QPushButton::clicked, this, &ComparePage::chooseRequested);
    connect(m_next, &QPushButton::clicked, this, [this] {
        if (m_shown + 1 < m_matches.size())
            showMatch(m_shown + 1);
        else
            search(m_shown + 2);
    });
    connect(m_previous, &QPushButton::clicked, this, [this] { showMatch(m_shown - 1); });
    connect(m_onlyDifferent, &QCheckBox::toggled, this, &ComparePage::showRows);
    connect(m_steps, &QTreeWidget::currentItemChanged, this, &ComparePage::showFields);
    connect(&m_loader, &HistoryLoader::failed, this,
            [this](const QString& path, const QString& why) {
                say(tr("“%1” cannot be compared. %2").arg(cli::printable(path), why));
            });
    connect(&m_loader, &HistoryLoader::loaded, this,
            [this](const QSharedPointer<History>& history) {
                m_right = history;
                search(1);
            });
    setHistory({});
}

void ComparePage::buildLayout()
{
    m_summary->setWordWrap(true);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setAccessibleName(tr("Result of the comparison"));
    m_next->setObjectName(QStringLiteral("nextMatch"));
    m_previous->setObjectName(QStringLiteral("betterMatch"));
    m_next->setToolTip(tr("Another way to pair the steps, the next in how well it fits"));
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(m_choose);
    buttons->addWidget(m_onlyDifferent);
    buttons->addStretch(1);
    buttons->addWidget(m_previous);
    buttons->addWidget(m_next);
    auto* const splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(m_steps);
    splitter->addWidget(m_fields);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    m_steps->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_fields->header()->setSectionResizeMode(QHeaderView::Interactive);
    m_fields->setColumnWidth(0, 170);
    m_fields->setColumnWidth(1, 240);
    m_fields->setColumnWidth(2, 240);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_summary);
    layout->addWidget(splitter, 1);
}

void ComparePage::setHistory(const QSharedPointer<History>& history)
{
    m_loader.cancel();
    m_search.cancel();
    m_left = history;
    m_right.clear();
    m_matches.clear();
    m_rows.clear();
    m_shown = 0;
    m_noMore = false;
    showRows();
    say(tr("Choose another document to see which steps both have in common, and where they "
           "differ."));
}

void ComparePage::compareWith(const QString& path)
{
    const QSharedPointer<History> left = m_left;
    setHistory(left);
    say(tr("Reading “%1” …").arg(cli::printable(path)));
    m_loader.start(path);
}

// The exact search may take for ever where much differs; then the quick match
// is shown, which says nothing about being the best.
void ComparePage::search(int count)
{
    say(tr("Comparing …"));
    const auto left = m_left;
    const auto right = m_right;
    m_search.start(
        [this, left, right, count](const Background::Cancelled& cancelled) -> Background::Finish {
            WorkflowstepCosts costs;
            const LorixDiff diff(left->tree(), right->tree(), &costs);
            QElapsedTimer timer;
            timer.start();
            SearchLimits limits;
            limits.queued = waitingPaths;
            limits.cancel = [&] { return cancelled() || timer.elapsed() > patienceMs; };
            SearchOutcome outcome;
            QList<LorixDiffResult> matches = diff.findBestMatches(count, limits, &outcome);
            if (matches.isEmpty() && !cancelled())
                matches.append(diff.findQuickMatch().result);
            const bool stopped = outcome.stopped;
            return [this, matches, count, stopped] { take(matches, count, stopped); };
        });
}

void ComparePage::take(const QList<LorixDiffResult>& matches, int asked, bool stopped)
{
    const qsizetype had = m_matches.size();
    m_noMore = matches.size() < asked || stopped;
    if (matches.size() > had)
        m_matches = matches;
    showMatch(std::min(asked, static_cast<int>(m_matches.size())) - 1);
    if (stopped)
        say(summary() + QLatin1Char(' ') +
            tr("The documents differ so much that there may be a better match."));
    else if (m_noMore)
        say(summary() + QLatin1Char(' ') + tr("There is no other match."));
}

void ComparePage::showMatch(int number)
{
    if (number < 0 || number >= m_matches.size())
        return;
    m_shown = number;
    m_rows = compareHistories(*m_left, *m_right, m_matches.at(number));
    int same = 0;
    int changed = 0;
    int moved = 0;
    int left = 0;
    int right = 0;
    for (const ComparisonRow& row : m_rows) {
        same += row.isSame();
        moved += row.moved;
        left += row.right < 0;
        right += row.left < 0;
        changed += row.left >= 0 && row.right >= 0 && !row.changed.isEmpty();
    }
    showRows();
    const QString rank = number == 0 ? tr("Best match") : tr("Match number %1").arg(number + 1);
    const QString counts = tr("%1 steps are the same, %2 differ, %3 have moved, %4 are only on the "
                              "left, %5 only on the right.")
                               .arg(same)
                               .arg(changed)
                               .arg(moved)
                               .arg(left)
                               .arg(right);
    const bool equal = same == m_rows.size();
    say(rank + QStringLiteral(": ") +
        (equal ? tr("both documents have the same history (%1 steps).").arg(same) : counts));
}

void ComparePage::showRows()
{
    const QSignalBlocker quiet(m_steps);
    m_steps->clear();
    m_steps->setHeaderLabels({m_left ? cli::printable(m_left->name()) : tr("This document"),
                              tr("Comparison"),
                              m_right ? cli::printable(m_right->name()) : tr("Other document")});
    QList<QTreeWidgetItem*> items;
    for (int i = 0; i < m_rows.size(); ++i) {
        const ComparisonRow& row = m_rows.at(i);
        if (m_onlyDifferent->isChecked() && row.isSame())
            continue;
        const QString sign = row.isSame()    ? QStringLiteral("=  ")
                             : row.right < 0 ? QStringLiteral("−  ")
                             : row.left < 0  ? QStringLiteral("+  ")
                             : row.moved     ? QStringLiteral("⇅  ")
                                             : QStringLiteral("≠  ");
        auto* const item = new QTreeWidgetItem(
            {titleOf(*m_left, row.left), sign + describeRow(row), titleOf(*m_right, row.right)});
        item->setToolTip(0, plainTip(item->text(0).trimmed()));
        item->setToolTip(1, plainTip(describeRow(row)));
        item->setToolTip(2, plainTip(item->text(2).trimmed()));
        item->setData(0, rowRole, i);
        markDifference(item, !row.isSame());
        items.append(item);
    }
    m_steps->addTopLevelItems(items);
    if (!items.isEmpty())
        m_steps->setCurrentItem(items.first());
    showFields();
    m_next->setEnabled(!m_matches.isEmpty() && !(m_noMore && m_shown + 1 >= m_matches.size()));
    m_previous->setEnabled(m_shown > 0);
    m_onlyDifferent->setEnabled(!m_matches.isEmpty());
}

void ComparePage::showFields()
{
    m_fields->clear();
    const QTreeWidgetItem* const item = m_steps->currentItem();
    if (!item)
        return;
    const ComparisonRow& row = m_rows.at(item->data(0, rowRole).toInt());
    for (const FieldPair& pair : compareSteps(*m_left, row.left, *m_right, row.right)) {
        auto* const line =
            new QTreeWidgetItem({onOneLine(pair.field), onOneLine(pair.left), onOneLine(pair.right),
                                 pair.differs() ? tr("differs") : tr("same")});
        line->setToolTip(0, plainTip(pair.field));
        line->setToolTip(1, plainTip(pair.left));
        line->setToolTip(2, plainTip(pair.right));
        markDifference(line, pair.differs());
        m_fields->addTopLevelItem(line);
    }
}

QString ComparePage::summary() const
{
    return m_summary->text();
}

void ComparePage::say(const QString& text)
{
    m_summary->setText(text);
    m_next->setEnabled(!m_search.isBusy() && !m_matches.isEmpty() &&
                       !(m_noMore && m_shown + 1 >= m_matches.size()));
    m_previous->setEnabled(!m_search.isBusy() && m_shown > 0);
    if (!isBusy())
        Q_EMIT shown();
}

} // namespace lorix::viewer
