// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/outlinemodel.h>

#include <apps/viewer/marks.h>
#include <apps/viewer/words.h>

#include <apps/lorix/text.h>

#include <QMimeData>
#include <QUrl>

namespace lorix::viewer {

OutlineModel::OutlineModel(QObject* parent) : QAbstractItemModel(parent)
{
    setPalette(QPalette());
}

void OutlineModel::setPalette(const QPalette& palette)
{
    m_stepIcon = symbolIcon(Symbol::Step, palette);
    m_fileIcon = symbolIcon(Symbol::File, palette);
    m_nestedIcon = symbolIcon(Symbol::Nested, palette);
    for (const CheckState state : {CheckState::NotChecked, CheckState::Valid, CheckState::Damaged})
        m_markIcons[static_cast<int>(state)] = markIcon(state, palette);
    refreshStates();
}

// Nodes are numbered so that what holds a container comes before its steps.
void OutlineModel::setHistory(const QSharedPointer<History>& history)
{
    beginResetModel();
    m_entries.clear();
    m_top.clear();
    m_byPlace.clear();
    m_history = history;
    if (history) {
        for (int node = 0; node < history->steps().size(); ++node) {
            const HistoryStep& step = history->step(node);
            const Place holder = history->containers().at(step.container).embedding;
            const int entry = append({node, -1}, m_byPlace.value(holder, -1));
            for (int file = 0; file < step.step.files.size(); ++file)
                append({node, file}, entry);
        }
    }
    endResetModel();
}

int OutlineModel::append(const Place& place, int parent)
{
    const int number = static_cast<int>(m_entries.size());
    std::vector<int>& siblings =
        parent < 0 ? m_top : m_entries[static_cast<size_t>(parent)].children;
    const int row = static_cast<int>(siblings.size());
    siblings.push_back(number);
    m_entries.push_back({place, parent, row, {}});
    m_byPlace.insert(place, number);
    return number;
}

void OutlineModel::refreshStates()
{
    // Views ask again for what they show; which rows have changed matters to none.
    if (!m_top.empty())
        Q_EMIT dataChanged(index(0, Name), index(static_cast<int>(m_top.size()) - 1, State));
}

Place OutlineModel::placeOf(const QModelIndex& index) const
{
    return index.isValid() ? m_entries[index.internalId()].place : Place();
}

QModelIndex OutlineModel::indexOf(const Place& place) const
{
    const int number = m_byPlace.value(place, -1);
    if (number < 0)
        return {};
    return createIndex(m_entries[static_cast<size_t>(number)].row, 0,
                       static_cast<quintptr>(number));
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex& parent) const
{
    const std::vector<int>& rows =
        parent.isValid() ? m_entries[parent.internalId()].children : m_top;
    if (row < 0 || row >= static_cast<int>(rows.size()) || column < 0 || column >= ColumnCount)
        return {};
    return createIndex(row, column, static_cast<quintptr>(rows[static_cast<size_t>(row)]));
}

QModelIndex OutlineModel::parent(const QModelIndex& child) const
{
    if (!child.isValid())
        return {};
    const int parent = m_entries[child.internalId()].parent;
    if (parent < 0)
        return {};
    return createIndex(m_entries[static_cast<size_t>(parent)].row, 0,
                       static_cast<quintptr>(parent));
}

int OutlineModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
        return 0;
    return static_cast<int>(
        (parent.isValid() ? m_entries[parent.internalId()].children : m_top).size());
}

int OutlineModel::columnCount(const QModelIndex& parent) const
{
    Q_UNUSED(parent);
    return ColumnCount;
}

QString OutlineModel::stepText(int node, int column) const
{
    const HistoryStep& step = m_history->step(node);
    switch (column) {
    case Name:
        return step.title;
    case What:
        return step.sectionless ? QString() : tr("Step");
    case When:
        return m_history->stepText(node, step.step.timestamp.left(100));
    default:
        return {};
    }
}

QString OutlineModel::fileText(const Place& place, int column) const
{
    const FileSummary& file = m_history->file(place);
    switch (column) {
    case Name:
        return m_history->fileName(place);
    case What:
        return m_history->isOwnSummary(place) ? tr("Description of the step")
                                              : purposeName(file.filePurpose);
    case Size:
        return file.uncompressedSize < 0 ? QString() : cli::humanSize(file.uncompressedSize);
    case When:
        return m_history->fileText(place, file.lastModified, 100);
    default:
        return {};
    }
}

QString OutlineModel::text(const Place& place, int column) const
{
    if (column == State) {
        if (place.isFile() && m_history->file(place).tagId < 0)
            return tr("not embedded");
        return stateName(m_results ? m_results->of(*m_history, place).state
                                   : CheckState::NotChecked);
    }
    return place.isFile() ? fileText(place, column) : stepText(place.node, column);
}

QVariant OutlineModel::decoration(const Place& place, int column) const
{
    if (column == Name) {
        if (!place.isFile())
            return m_stepIcon;
        return m_history->nestedIn(place) >= 0 ? m_nestedIcon : m_fileIcon;
    }
    if (column != State || (place.isFile() && m_history->file(place).tagId < 0))
        return {};
    const CheckState state =
        m_results ? m_results->of(*m_history, place).state : CheckState::NotChecked;
    return m_markIcons[static_cast<int>(state)];
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const
{
    const Place place = placeOf(index);
    if (place.isNull())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return text(place, index.column());
    case Qt::DecorationRole:
        return decoration(place, index.column());
    case Qt::ToolTipRole:
        if (index.column() == State && m_results)
            return plainTip(m_results->of(*m_history, place).reason);
        return plainTip(text(place, index.column()));
    case Qt::TextAlignmentRole:
        return index.column() == Size ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::AccessibleTextRole:
        if (index.column() == Name)
            return tr("%1, %2, %3").arg(text(place, Name), text(place, What), text(place, State));
        return text(place, index.column());
    default:
        return {};
    }
}

QVariant OutlineModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Name:
        return tr("Step or file");
    case What:
        return tr("What it is");
    case Size:
        return tr("Size");
    case When:
        return tr("Date");
    case State:
        return tr("State");
    default:
        return {};
    }
}

Qt::ItemFlags OutlineModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    const Place place = placeOf(index);
    if (place.isFile() && m_history->file(place).tagId >= 0)
        flags |= Qt::ItemIsDragEnabled;
    return flags;
}

QStringList OutlineModel::mimeTypes() const
{
    return {QStringLiteral("text/uri-list")};
}

QMimeData* OutlineModel::mimeData(const QModelIndexList& indexes) const
{
    QList<QUrl> urls;
    for (const QModelIndex& index : indexes) {
        if (index.column() != Name || !m_fileProvider || !placeOf(index).isFile())
            continue;
        const QString path = m_fileProvider(placeOf(index));
        if (!path.isEmpty())
            urls.append(QUrl::fromLocalFile(path));
    }
    if (urls.isEmpty())
        return nullptr;
    auto* const data = new QMimeData;
    data->setUrls(urls);
    return data;
}

} // namespace lorix::viewer
