// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/checkresults.h>

#include <QAbstractItemModel>
#include <QIcon>
#include <QPalette>

#include <functional>
#include <vector>

namespace lorix::viewer {

/// The history as an outline: the steps, newest first, below each its files,
/// and below a file that holds a history of its own the steps of that.
class OutlineModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column { Name, What, Size, When, State, ColumnCount };

    explicit OutlineModel(QObject* parent = nullptr);

    /// Shows another history; null empties the model.
    void setHistory(const QSharedPointer<History>& history);
    /// The results are read when cells are drawn; they must outlive the model.
    void setResults(const CheckResults* results) { m_results = results; }
    /// Icons in the colours of the palette.
    void setPalette(const QPalette& palette);
    /// There are new results.
    void refreshStates();

    Place placeOf(const QModelIndex& index) const;
    QModelIndex indexOf(const Place& place) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

    /// What puts a file that is being dragged away on disk, and gives its path.
    void setFileProvider(const std::function<QString(const Place&)>& provider)
    {
        m_fileProvider = provider;
    }

private:
    struct Entry
    {
        Place place;
        int parent = -1;
        int row = 0;
        std::vector<int> children;
    };

    int append(const Place& place, int parent);
    QString text(const Place& place, int column) const;
    QString stepText(int node, int column) const;
    QString fileText(const Place& place, int column) const;
    QVariant decoration(const Place& place, int column) const;

    QSharedPointer<History> m_history;
    const CheckResults* m_results = nullptr;
    std::function<QString(const Place&)> m_fileProvider;
    std::vector<Entry> m_entries;
    std::vector<int> m_top;
    QHash<Place, int> m_byPlace;
    QIcon m_stepIcon;
    QIcon m_fileIcon;
    QIcon m_nestedIcon;
    QIcon m_markIcons[3];
};

} // namespace lorix::viewer
