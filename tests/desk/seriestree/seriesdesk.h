#pragma once

#include <seriestree/seriesdock.h>
#include <seriestree/seriestreeview.h>
#include <window/deskdata.h>
#include <window/desklegend.h>
#include <window/deskwindow.h>
#include <window/overlaycurve.h>

#include <chain/optionchain.h>

#include <QComboBox>

#include <memory>

/// A desk's window on the screen, with the tree of series beside its plot.
class SeriesDesk {
public:
    /// Shows the first series of a chain.
    explicit SeriesDesk(const OptionChain& chain);

    DeskWindow& window() { return *m_window; }
    SeriesDock& dock() { return *m_dock; }
    SeriesTreeView& view() { return *m_view; }
    DeskLegend& legend() { return *m_legend; }

    /// The titles of the curves of other series that are shown.
    QStringList overlays() const;
    OverlayCurve* overlay(const QString& title) const;
    /// The texts of the legend, in its order.
    QStringList entries() const;
    QModelIndex row(const QString& title) const;
    /// The middle of a row's check box.
    QPoint boxOf(const QString& title) const;
    QString expiryBox() const { return m_window->findChild<QComboBox*>("expiries")->currentText(); }
    QAction* action() const { return m_dock->toggleViewAction(); }

private:
    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    SeriesDock* m_dock = nullptr;
    SeriesTreeView* m_view = nullptr;
    DeskLegend* m_legend = nullptr;
};
