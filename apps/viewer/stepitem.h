// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/checkresults.h>

#include <QGraphicsItem>
#include <QSet>
#include <QStringList>

namespace lorix::viewer {

/// What the boxes of one picture share.
struct PictureState
{
    QSharedPointer<History> history;
    const CheckResults* results = nullptr;
    Place current;                 ///< What is selected.
    QHash<Place, QString> matches; ///< What a query has found, with its variables.
};

/// One step in the picture: title, who and when, its first files, its mark.
class StepItem : public QGraphicsItem
{
public:
    enum { Type = UserType + 1 };

    /// `state` is the picture's and must outlive the item.
    StepItem(int node, const PictureState& state);

    /// How high a step's box is.
    static qreal heightOf(const History& history, int node);

    int node() const { return m_node; }
    /// The file whose line is at this place within the item; -1 when none is.
    int fileAt(const QPointF& where) const;

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    void paintFrame(QPainter& painter, const QPalette& palette, bool small) const;
    void paintSmall(QPainter& painter, const QPalette& palette, qreal scale) const;
    void paintFiles(QPainter& painter, const QPalette& palette) const;
    QString matchText() const;

    int m_node;
    const PictureState& m_state;
    qreal m_height;
    QList<int> m_files; ///< Those that have a line of their own.
    int m_moreFiles = 0;
};

} // namespace lorix::viewer
