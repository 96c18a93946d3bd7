#pragma once

#include "basic_models/filterparams.h"
#include "basic_models/strikebybasecodemodel.h"

/// The strikes of a base code's options of the largest session ("sess_id", null as 0) among those that pass
/// the filter.
///
/// The largest session becoming another one is announced by modelReset, an empty model counting as session 0.
/// An option with a null in a field that is filtered by does not pass. Where "sess_id" or the column of a
/// filtered id is missing or no integer column, no option passes. A session outside 32 bits counts as the
/// nearest inside.
class StrikeByMaxSessionModel : public StrikeByBaseCodeModel {
    Q_OBJECT

public:
    /// The table may be null: the model stays empty then. Filters nothing.
    explicit StrikeByMaxSessionModel(Table* table, QObject* parent = nullptr);
    ~StrikeByMaxSessionModel() override;

    /// The filter as it was set.
    FilterParams filterParams() const;
    /// Resets the model, also when the parameters are the same.
    void setFilterParams(const FilterParams& params);

    /// The largest session found, 0 while the model is empty.
    int session() const;

protected:
    /// Whether an option passes the filter.
    bool accepts(const Record& option) const override;
    /// An option's session.
    int rank(const Record& option) const override;

private:
    FilterParams m_params;
    int m_stockColumn = -1;
    int m_boardColumn = -1;
    int m_futureColumn = -1;
    int m_optionTypeColumn = -1;
    int m_sessionColumn = -1;
};
