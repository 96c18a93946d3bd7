#pragma once

#include "basic_models/filterparams.h"
#include "basic_models/strikebybasecodemodel.h"

/// The strikes of those options that pass a filter and are of the latest session among those that do.
class StrikeByMaxSessionModel : public StrikeByBaseCodeModel {
    Q_OBJECT

public:
    using StrikeByBaseCodeModel::StrikeByBaseCodeModel;

    FilterParams filterParams() const { return m_params; }
    void setFilterParams(const FilterParams& params);

protected:
    QVector<Record> chosen(const QVector<Record>& options) const override;

private:
    FilterParams m_params;
};
