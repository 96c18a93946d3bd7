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
/// that the user walks to, or near which the mouse moves, has the row of the nearest strike selected, and
/// none is selected for a point of another series; the keyboard stays where it is. While the mouse leads, the
/// row goes with the point that view and numbers move under it. Escape in the table takes the mark away.
class RowPlotLink : public QObject {
    Q_OBJECT

public:
    /// The view becomes the parent.
    RowPlotLink(QuotesView* view, QuotesModel* model, DeskPlot* plot);

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void onCurrentChanged(const QModelIndex& current);
    void onPressed(const QModelIndex& index);
    void onPoint(double price);
    void onMoved();
    void onRefreshed();

private:
    void follow(double price);
    void followCursor();
    void mark(const QModelIndex& index);

    QuotesView* m_view;
    QuotesModel* m_model;
    QPointer<DeskPlot> m_plot;
    /// While one of the two moves the other.
    bool m_isFollowing = false;
    /// Whether the row is that of the cursor over the plot, neither of the walk nor chosen in the table.
    bool m_isCursorLeading = false;
};
