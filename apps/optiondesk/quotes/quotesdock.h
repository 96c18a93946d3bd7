#pragma once

#include <window/foldingdock.h>

class DeskWindow;
class FilterActions;
class QuotesModel;
class QuotesView;

/// The quotes of the chosen expiry by strike at the right of a desk's window, with a bar for the filter above
/// them, and entries for both in the window's menu View.
class QuotesDock : public FoldingDock {
    Q_OBJECT

public:
    /// The window becomes the parent.
    explicit QuotesDock(DeskWindow* window);

protected:
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void onShownChanged();

private:
    QWidget* contents();

    DeskWindow* m_window;
    FilterActions* m_filter;
    QuotesModel* m_model;
    QuotesView* m_view;
};
