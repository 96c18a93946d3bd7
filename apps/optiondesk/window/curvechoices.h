#pragma once

#include "window/commandline.h"

#include <QColor>
#include <QObject>

#include <functional>

class DeskLegend;
class PriceBased2dPlot;
class SeriesCurves;
class Settings;

/// What the user chooses in the legend: which curves of a view are shown, and their colours. With settings
/// the choices are kept in them, each as soon as it is made.
class CurveChoices : public QObject {
    Q_OBJECT

public:
    /// Asks the user for the colour of the curve of this title; invalid if the user wants none.
    using ColorQuestion = std::function<QColor(const QString& title, const QColor& current, QWidget* parent)>;

    /// All must outlive this object, or be its parents. The plot must hear of the legend's changes before.
    CurveChoices(PriceBased2dPlot* plot, DeskLegend* legend, SeriesCurves* curves);

    /// Takes over what is stored, which is applied to the curves of the next series; null for no settings.
    /// They must outlive this object.
    void setSettings(Settings* settings);

    /// How to ask; with a dialog unless this is called.
    void setColorQuestion(const ColorQuestion& question) { m_question = question; }

    /// Hides the curves on the plot that the user has hidden in this view.
    void apply(DeskView view);

    /// The colour of the chosen series' smile, also while it is not on the plot.
    QColor smileColor() const;

Q_SIGNALS:
    /// The user, or the settings, have another colour for a curve.
    void colorsChanged();

private Q_SLOTS:
    void onVisibilityChanged();
    void onColorRequested(const QString& title);

private:
    PriceBased2dPlot* m_plot;
    DeskLegend* m_legend;
    SeriesCurves* m_curves;
    Settings* m_settings = nullptr;
    ColorQuestion m_question;
    DeskView m_view = DeskView::Volatility;
    bool m_isApplying = false;
};
