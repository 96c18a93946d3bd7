#pragma once

#include <QWidget>

class QAction;
class QLabel;
class QTableView;

namespace Position {

class LegModel;

/// The table in which the user edits a position, with what it is worth below.
class PositionPanel : public QWidget {
    Q_OBJECT

public:
    /// The actions, which get buttons, are of others; the model must outlive the panel.
    PositionPanel(LegModel* model, const QList<QAction*>& actions, QWidget* parent = nullptr);

    /// Below the table: what the position is worth. The reason why an input was refused stands there until
    /// the user goes on.
    void setSummary(const QString& text);

    /// The row of the current cell; -1 without one.
    int currentRow() const;

    /// Takes the keyboard to the first cell of a row.
    void edit(int row);

    QTableView* table() const { return m_table; }
    QString summary() const;

    QSize sizeHint() const override;

private Q_SLOTS:
    void onRefused(const QString& reason);
    void forgetRefusal();

private:
    void setUpTable();

    LegModel* m_model;
    QTableView* m_table;
    QLabel* m_summary;
    QString m_worth;
    QString m_refusal;
};

}
