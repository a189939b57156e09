// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/findpanel.h>

#include <apps/viewer/queryedit.h>
#include <apps/viewer/querywords.h>
#include <apps/viewer/words.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace lorix::viewer {

namespace {

const int nodeRole = Qt::UserRole;
const int fileRole = Qt::UserRole + 1;

// Variables that the query leaves without a name have one that says nothing.
QString variableName(const QString& variable)
{
    return variable.startsWith(QLatin1Char('@')) ? FindPanel::tr("found") : variable;
}

} // namespace

FindPanel::FindPanel(QWidget* parent)
    : QWidget(parent), m_edit(new QueryEdit), m_find(new QPushButton(tr("Find"))),
      m_examples(new QPushButton(tr("Examples"))), m_message(new QLabel), m_list(new QTreeWidget)
{
    buildLayout();
    auto* const menu = new QMenu(this);
    for (const auto& [query, meaning] : examples()) {
        QString shown = query;
        shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
        QAction* const action = menu->addAction(meaning + QStringLiteral("\t") + shown);
        connect(action, &QAction::triggered, this, [this, query = query] {
            m_edit->setQuery(query);
            find();
        });
    }
    m_examples->setMenu(menu);
    connect(m_find, &QPushButton::clicked, this, &FindPanel::find);
    connect(m_edit, &QueryEdit::submitted, this, &FindPanel::find);
    connect(m_edit, &QueryEdit::checked, this, &FindPanel::showErrors);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &FindPanel::choose);
    showErrors();
}

void FindPanel::buildLayout()
{
    m_find->setObjectName(QStringLiteral("findButton"));
    m_examples->setObjectName(QStringLiteral("examplesButton"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setAccessibleName(tr("About the query"));
    m_list->setHeaderLabels({tr("Found"), tr("Variable"), tr("Step"), tr("Document")});
    m_list->setAccessibleName(tr("What the query has found"));
    m_list->setAlternatingRowColors(true);
    m_list->setRootIsDecorated(false);
    m_list->setColumnWidth(0, 320);
    m_list->setColumnWidth(2, 260);
    auto* const bar = new QHBoxLayout;
    bar->addWidget(m_edit, 1);
    bar->addWidget(m_find);
    bar->addWidget(m_examples);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addLayout(bar);
    layout->addWidget(m_message);
    layout->addWidget(m_list, 1);
}

QList<QPair<QString, QString>> FindPanel::examples()
{
    return {
        {QStringLiteral("report"), tr("Anything in which a word occurs")},
        {QStringLiteral("s:tool == 'python'"), tr("Steps that were done with a tool")},
        {QStringLiteral("f:filename %matches '*.csv'"), tr("Files with a certain ending")},
        {QStringLiteral("f:isoutfile && f:filesize > 10kb"), tr("Large results")},
        {QStringLiteral("s:user == 'anna' && s:iswfs"), tr("Steps of one person")},
        {QStringLiteral("s:userattrs %contains 'project'"),
         tr("Whatever has an attribute of this name")},
        {QStringLiteral("s:iswfs && f:isinfile && f:parentid == s:tagid"),
         tr("Steps, each with one of its inputs")},
    };
}

void FindPanel::setHistory(const QSharedPointer<History>& history)
{
    m_search.cancel();
    m_history = history;
    m_found = FoundMatches();
    m_list->clear();
    setEnabled(history != nullptr);
    QStringList attributes;
    if (history)
        for (const HistoryStep& step : history->steps()) {
            attributes += step.step.userAttributeKeys;
            for (const FileSummary& file : step.step.files)
                attributes += file.userAttributeKeys;
        }
    m_edit->setUserAttributes(attributes);
    showErrors();
    Q_EMIT matchesChanged({});
}

void FindPanel::showErrors()
{
    const QList<QueryError>& errors = m_edit->errors();
    m_find->setEnabled(errors.isEmpty() && !m_edit->query().trimmed().isEmpty());
    if (!errors.isEmpty())
        m_message->setText(QStringLiteral("⚠ ") + queryWords(errors.first()));
    else
        m_message->setText(tr("Return finds, Ctrl+Space completes. A plain word is looked for "
                              "everywhere."));
}

void FindPanel::find()
{
    if (!m_history || !m_edit->errors().isEmpty() || m_edit->query().trimmed().isEmpty())
        return;
    m_message->setText(tr("Looking …"));
    const auto history = m_history;
    const QString query = m_edit->query();
    m_search.start(
        [this, history, query](const Background::Cancelled& cancelled) -> Background::Finish {
            const FoundMatches found = findMatches(*history, query, cancelled);
            return [this, found] { take(found); };
        });
}

void FindPanel::take(const FoundMatches& found)
{
    m_found = found;
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    QHash<Place, QString> places;
    for (int i = 0; i < found.matches.size(); ++i) {
        addMatch(i + 1, found.matches.at(i));
        for (const auto& [variable, place] : found.matches.at(i).bindings)
            places.insert(place, variableName(variable));
    }
    if (found.matches.isEmpty())
        m_message->setText(tr("Nothing in this history matches."));
    else if (found.more)
        m_message->setText(tr("The first %1 matches; there are more.").arg(found.matches.size()));
    else
        m_message->setText(found.matches.size() == 1 ? tr("One match.")
                                                     : tr("%1 matches.").arg(found.matches.size()));
    Q_EMIT matchesChanged(places);
}

void FindPanel::addMatch(int number, const FoundMatch& match)
{
    for (const auto& [variable, place] : match.bindings) {
        const HistoryStep& step = m_history->step(place.node);
        const QString what = place.isFile() ? m_history->fileName(place) : step.title;
        auto* const item = new QTreeWidgetItem(
            {match.bindings.size() > 1 ? tr("%1.  %2").arg(number).arg(what) : what,
             variableName(variable), place.isFile() ? step.title : tr("(the step itself)"),
             m_history->containers().at(step.container).name});
        for (int column = 0; column < item->columnCount(); ++column)
            item->setToolTip(column, plainTip(item->text(column)));
        item->setData(0, nodeRole, place.node);
        item->setData(0, fileRole, place.file);
        m_list->addTopLevelItem(item);
    }
}

void FindPanel::choose(QTreeWidgetItem* item)
{
    if (item)
        Q_EMIT placeChosen({item->data(0, nodeRole).toInt(), item->data(0, fileRole).toInt()});
}

QString FindPanel::message() const
{
    return m_message->text();
}

} // namespace lorix::viewer
