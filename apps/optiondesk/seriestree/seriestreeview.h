#pragma once

#include <QTreeView>

class SeriesTreeModel;

/// The tree of the stored series. A click on an expiry or Enter chooses it, one on its box or the space bar
/// checks or unchecks it; the arrows only move.
class SeriesTreeView : public QTreeView {
    Q_OBJECT

public:
    /// The model must outlive the view, or be its parent.
    explicit SeriesTreeView(SeriesTreeModel* model, QWidget* parent = nullptr);

    /// As wide as its widest row, and a dozen rows high.
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has chosen a series that was not chosen before.
    void chosen(int futureIsinId);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private Q_SLOTS:
    void onClicked(const QModelIndex& index);

private:
    void choose(const QModelIndex& index);

    SeriesTreeModel* m_model;
    /// That of the row under the mouse when it was pressed.
    QVariant m_pressedState;
};
