#pragma once

#include <QWidget>

class FilterActions;
class QAction;
class QActionGroup;
class QComboBox;

/// The filter over the table of quotes: the choices of FilterActions as a box to check and two to choose
/// from.
class FilterBar : public QWidget {
    Q_OBJECT

public:
    /// The actions must outlive the bar.
    explicit FilterBar(const FilterActions& actions, QWidget* parent = nullptr);

private Q_SLOTS:
    void onChosen(int index);
    void onActionsChanged();

private:
    QComboBox* addBox(const QActionGroup& group, const QString& name, const QString& tip);
    static void follow(const QActionGroup& group, QComboBox* box);

    const FilterActions& m_actions;
    QComboBox* m_sides;
    QComboBox* m_deviations;
};
