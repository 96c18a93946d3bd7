#pragma once

#include <QModelIndex>
#include <QObject>
#include <QPointer>

class DeskPlot;
class QuotesView;
class QuotesModel;

/// Lets the current row of the table of quotes and the point read out on the plot follow each other.
///
/// A row that the user goes to has its point marked on the plot, as the walk along the points does. A point
/// that the user walks to, or near which the mouse moves, has the row of the nearest strike selected; the
/// keyboard stays where it is.
class RowPlotLink : public QObject {
    Q_OBJECT

public:
    /// The view becomes the parent.
    RowPlotLink(QuotesView* view, QuotesModel* model, DeskPlot* plot);

private Q_SLOTS:
    void onCurrentChanged(const QModelIndex& current);
    void onPressed(const QModelIndex& index);
    void onPoint(double price);

private:
    void mark(const QModelIndex& index);

    QuotesView* m_view;
    QuotesModel* m_model;
    QPointer<DeskPlot> m_plot;
    /// While one of the two moves the other.
    bool m_isFollowing = false;
};
