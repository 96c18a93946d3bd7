#pragma once

#include "seriestree/seriestreemodel.h"

#include <window/foldingdock.h>

#include <QStringList>

class DeskWindow;
class SeriesOverlays;
class SeriesTreeView;

/// The tree of the stored series at the left of a desk's window, with an entry in its menu View: chooses the
/// series as the boxes of the tool bar do, and shows checked expiries beside the chosen one.
class SeriesDock : public FoldingDock {
    Q_OBJECT

public:
    /// The window becomes the parent.
    explicit SeriesDock(DeskWindow* window);

    /// The names of the series that the user has unchecked (see SeriesTreeModel), for a session's memory.
    QStringList unchecked() const;
    void setUnchecked(const QStringList& names);

    /// Shows at once what waits for its turn of the event loop, as for a picture.
    void finish();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The user has checked or unchecked series, or setUnchecked() has.
    void checksChanged();

private Q_SLOTS:
    void onStoredSeriesChanged();
    void onSeriesReplaced();
    void onShownChanged();
    void onChecksChanged();
    void onColorsChanged();
    void onVisibilityChanged(const QString& title, bool visible);

private:
    void showOverlays();
    void matchLegend();

    DeskWindow* m_window;
    SeriesTreeModel* m_model;
    SeriesTreeView* m_view;
    SeriesOverlays* m_overlays;
    /// Those shown beside the chosen series.
    QVector<SeriesBeside> m_beside;
};
