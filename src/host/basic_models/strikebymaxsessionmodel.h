#pragma once

#include "basic_models/filterparams.h"
#include "basic_models/strikebybasecodemodel.h"

/// The strikes of a base code's options of the largest session ("sess_id", null as 0) among those that pass
/// the filter.
class StrikeByMaxSessionModel : public StrikeByBaseCodeModel {
    Q_OBJECT

public:
    explicit StrikeByMaxSessionModel(Table* table, QObject* parent = nullptr);
    ~StrikeByMaxSessionModel() override;

    FilterParams filterParams() const;
    /// Resets the model, also when the parameters are the same.
    void setFilterParams(const FilterParams& params);

    /// The largest session found, 0 while the model is empty.
    int session() const;

protected:
    bool accepts(const Record& option) const override;
    void prepareRebuild() override;
    bool acceptanceDependsOn(const QVector<Record>& records) const override;

private:
    FilterParams m_params;
    int m_session = 0;
};
