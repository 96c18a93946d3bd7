#pragma once

#include <basic_models/strikebybasecodemodel.h>

#include <vector>

namespace TestSupport {

/// A copy of a model's strikes that is kept by what the model announces alone.
class ModelMirror : public QObject {
    Q_OBJECT

public:
    explicit ModelMirror(StrikeByBaseCodeModel* model)
        : m_model(model)
    {
        connect(model, SIGNAL(rowsInserted(QModelIndex, int, int)), SLOT(onInserted(QModelIndex, int, int)));
        connect(model, SIGNAL(rowsRemoved(QModelIndex, int, int)), SLOT(onRemoved(QModelIndex, int, int)));
        connect(model, SIGNAL(modelReset()), SLOT(copy()));
        connect(model, SIGNAL(layoutChanged()), SLOT(copy()));
        copy();
    }

    const std::vector<decimal>& strikes() const { return m_strikes; }

private Q_SLOTS:
    void onInserted(const QModelIndex&, int first, int last)
    {
        for (int row = first; row <= last; ++row)
            m_strikes.insert(m_strikes.begin() + row, m_model->strike(row));
    }
    void onRemoved(const QModelIndex&, int first, int last)
    {
        m_strikes.erase(m_strikes.begin() + first, m_strikes.begin() + last + 1);
    }
    void copy()
    {
        m_strikes.clear();
        for (int row = 0; row < m_model->rowCount(); ++row)
            m_strikes.push_back(m_model->strike(row));
    }

private:
    StrikeByBaseCodeModel* m_model;
    std::vector<decimal> m_strikes;
};

}
