#pragma once

#include "window/shownseries.h"

#include <position/legmarket.h>
#include <position/positionfile.h>

#include <QObject>

#include <map>
#include <memory>

class DeskData;
class QAction;
class QDockWidget;
class QMainWindow;
class QMenu;
class SeriesFollower;
namespace Position {
class LegModel;
class PositionPanel;
}

/// The position of the underlying on the desk: its table at the bottom of the window, its file, and what it
/// is worth with the series of its legs as they are now.
class PositionDesk : public QObject, private Position::LegMarket {
    Q_OBJECT

public:
    /// Adds the table to the window, which becomes the parent. The data must outlive this object.
    PositionDesk(DeskData& data, QMainWindow* window);
    ~PositionDesk() override;

    /// Keeps the positions in a file from now on, and takes those in it over; what is wrong with the file,
    /// empty if nothing is.
    QString setFile(const QString& fileName);

    /// Gives a series that has just been valued the position of its underlying, and the table its values. The
    /// date is that of the prices for the other series of the underlying.
    void value(ShownSeries* series, const QDate& asOf);

    /// Empties the table while there is no series to show; the file keeps the position.
    void showNothing();

    /// Values the other series anew when they are needed next.
    void forgetOtherSeries();

    /// Puts the commands for the position into a menu.
    void addActions(QMenu* menu);

    /// Shows or hides the table.
    void setTableVisible(bool visible);
    QDockWidget* dock() const { return m_dock; }
    Position::LegModel* model() const { return m_model; }

Q_SIGNALS:
    /// The position, or a series of its legs other than the one shown, has changed: the series shown wants to
    /// be valued anew.
    void changed();
    /// Something the user should know, in one line.
    void said(const QString& text);

private Q_SLOTS:
    void onEdited();
    void onOtherSeriesChanged();
    void addLeg();
    void removeLeg();
    void removeAll();
    void editTable();

private:
    struct OtherSeries;

    QVector<QDate> expiries() const override;
    Position::Leg suggestedLeg() const override;
    std::optional<double> price(const Position::Leg& leg) const override;

    void createActions();
    QAction* createAction(const QString& text, const QString& key, const QString& tip, const char* slot);
    void takeBaseCode(const QString& baseCode);
    const ShownSeries* seriesOf(const QDate& expiry) const;
    OtherSeries& otherSeries(const QDate& expiry) const;
    void forgetUnusedSeries();
    void updateTable();

    DeskData& m_data;
    Position::PositionFile m_file;
    Position::LegModel* m_model;
    Position::PositionPanel* m_panel = nullptr;
    QDockWidget* m_dock;
    QList<QAction*> m_actions;
    /// The series shown, empty before there is one.
    std::optional<ShownSeries> m_shown;
    QDate m_asOf;
    /// The other series that legs belong to, by expiry; valued when they are asked for.
    mutable std::map<QDate, std::unique_ptr<OtherSeries>> m_others;
};
