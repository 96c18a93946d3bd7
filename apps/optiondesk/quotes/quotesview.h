#pragma once

#include <QTableView>

class QuotesModel;

/// The table of quotes: whole rows are selected, one at a time; columns without a value are not shown.
class QuotesView : public QTableView {
    Q_OBJECT

public:
    /// The model must outlive the view, or be its parent.
    explicit QuotesView(QuotesModel* model, QWidget* parent = nullptr);

    /// As wide as its columns, within limits.
    QSize sizeHint() const override;

    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

public Q_SLOTS:
    /// Shows the columns that have values now. Where those are others than before, all become as wide as they
    /// need; otherwise those get wider whose visible numbers have outgrown them.
    void fitColumns();

private Q_SLOTS:
    void onReset();

private:
    bool showColumns();
    void widenColumns();
    QModelIndex atTheMoney() const;
    void showAtTheMoney();

    QuotesModel* m_model;
    /// Whether the rows are of another series than those painted last.
    bool m_isFresh = true;
};
