#pragma once

#include <QStyledItemDelegate>

namespace Position {

/// Edits the cells of a LegModel: a list to choose from for kind and expiry, a line of text for numbers.
class LegDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit LegDelegate(QObject* parent = nullptr);

    QWidget* createEditor(
        QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private Q_SLOTS:
    void commit();
};

}
