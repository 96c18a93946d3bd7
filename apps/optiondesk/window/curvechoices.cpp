#include "window/curvechoices.h"

#include "window/curvelook.h"
#include "window/desklegend.h"
#include "window/legendrecords.h"
#include "window/seriescurves.h"

#include <database/settings.h>
#include <plot2d/pricebased2dplot.h>

#include <QColorDialog>
#include <QPointer>
#include <QScopedValueRollback>

namespace {

// Where the library keeps the state of a legend.
const auto legendKey = QStringLiteral("legendItemKeys");

QString colorKey(const QString& title)
{
    return QStringLiteral("curveColors/") + CurveLook::key(title);
}

QColor askByDialog(const QString& title, const QColor& current, QWidget* parent)
{
    return QColorDialog::getColor(current, parent, CurveChoices::tr("Colour of the curve %1").arg(title));
}

}

CurveChoices::CurveChoices(PriceBased2dPlot* plot, DeskLegend* legend, SeriesCurves* curves)
    : QObject(plot)
    , m_plot(plot)
    , m_legend(legend)
    , m_curves(curves)
    , m_question(&askByDialog)
{
    connect(legend, SIGNAL(visibilityChanged(QString, bool)), this, SLOT(onVisibilityChanged()));
    connect(legend, SIGNAL(colorRequested(QString)), this, SLOT(onColorRequested(QString)));
}

void CurveChoices::setSettings(Settings* settings)
{
    m_settings = settings;
    if (!settings)
        return;
    for (const CurveRole role : CurveLook::roles()) {
        const QString title = CurveLook::title(role);
        const QColor color(settings->value(colorKey(title)).toString());
        if (color.isValid())
            m_curves->setColor(title, color.rgb());
    }
    Q_EMIT colorsChanged();
}

void CurveChoices::apply(DeskView view)
{
    m_view = view;
    const QScopedValueRollback<bool> applying(m_isApplying, true);
    m_legend->restoreUncheckedItems();
    // The views have other curves with the same data types.
    if (m_settings)
        m_legend->restore(Settings(*m_settings, viewName(view)));
}

void CurveChoices::onVisibilityChanged()
{
    if (m_isApplying || !m_settings)
        return;
    Settings settings(*m_settings, viewName(m_view));
    const QByteArray earlier = settings.value(legendKey).toByteArray();
    m_legend->store(settings);
    settings.setValue(
        legendKey, LegendRecords::withMissing(settings.value(legendKey).toByteArray(), earlier));
}

void CurveChoices::onColorRequested(const QString& title)
{
    const QPointer<CurveChoices> self(this);
    const QColor color = m_question(title, m_curves->color(title), m_plot->window());
    if (!self || !color.isValid())
        return;
    m_curves->setColor(title, color.rgb());
    if (m_settings)
        m_settings->setValue(colorKey(title), QColor(color.rgb()).name());
    m_plot->replot();
    Q_EMIT colorsChanged();
}

QColor CurveChoices::smileColor() const
{
    return m_curves->color(CurveRole::Smile);
}
