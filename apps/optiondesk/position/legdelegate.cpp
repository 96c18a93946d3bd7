#include "position/legdelegate.h"

#include "position/legmodel.h"
#include "position/legtexts.h"

#include <QComboBox>
#include <QLineEdit>

namespace Position {

namespace {

void fill(QComboBox* list, const LegModel& model, int column)
{
    if (column == LegModel::Kind) {
        for (const LegKind kind : LegModel::kinds())
            list->addItem(LegTexts::kind(kind), int(kind));
        return;
    }
    const QVector<QDate> expiries = model.expiries();
    for (const QDate& expiry : expiries)
        list->addItem(LegTexts::expiry(expiry), expiry);
}

}

LegDelegate::LegDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

QWidget* LegDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto* const model = qobject_cast<const LegModel*>(index.model());
    if (!model)
        return QStyledItemDelegate::createEditor(parent, option, index);
    const QString name = model->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString();
    if (index.column() == LegModel::Kind || index.column() == LegModel::Expiry) {
        auto* const list = new QComboBox(parent);
        list->setAccessibleName(name);
        fill(list, *model, index.column());
        connect(list, SIGNAL(activated(int)), this, SLOT(commit()));
        return list;
    }
    auto* const line = new QLineEdit(parent);
    line->setAccessibleName(name);
    line->setFrame(false);
    line->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return line;
}

void LegDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* const list = qobject_cast<QComboBox*>(editor);
    if (!list) {
        QStyledItemDelegate::setEditorData(editor, index);
        return;
    }
    list->setCurrentIndex(list->findData(index.data(Qt::EditRole)));
}

void LegDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const auto* const list = qobject_cast<QComboBox*>(editor);
    if (!list)
        QStyledItemDelegate::setModelData(editor, model, index);
    else if (list->currentIndex() >= 0)
        model->setData(index, list->currentData(), Qt::EditRole);
}

void LegDelegate::commit()
{
    auto* const editor = qobject_cast<QWidget*>(sender());
    if (!editor)
        return;
    Q_EMIT commitData(editor);
    Q_EMIT closeEditor(editor);
}

}
