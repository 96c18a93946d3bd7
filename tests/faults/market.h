#pragma once

#include "flow/strikes.h"
#include "support/testplot.h"

#include <basic_models/strikebybasecodemodel.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpanner.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <qwt_legend_label.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

/// A plot with all that a host puts around it, over the host's tables: strikes from 100 to 140, 10 apart. Its
/// legend also has an entry of a second plot's curve. Each object may go at any time, by anybody; remove()
/// takes one away that is still there.
class Market {
public:
    enum Part {
        Plot,
        Manager,
        Model,
        Legend,
        Entries,
        Canvas,
        Picker,
        Panner,
        Curves,
        Markers,
        OtherPlot,
        OtherCurve,
        Securities,
        Boards,
        PartCount
    };

    static const char* nameOf(Part part)
    {
        static const char* const names[] = {"plot", "manager", "model", "legend", "entries", "canvas",
            "picker", "panner", "curves", "markers", "other plot", "other curve", "securities", "boards"};
        return names[part];
    }

    /// With a point manager on a max-session model or on a base-code model.
    explicit Market(bool hasSessions = false)
    {
        table = TestHost::createSecurities();
        boards = TestHost::createBoards();
        TestHost::addBoard(1, 2, true);
        TestHost::addSecurity(TestHost::future({{"price_step", "1"}, {"cur_kotir_real", "118"}}));
        for (const char* strike : {"100", "110", "120", "130", "140"})
            addOption(strike);
        plot = new TestPlot;
        plot->resize(300, 200);
        plot->setBaseCode(QStringLiteral("Amber"));
        picker = plot->createPicker();
        picker->initTimer();
        panner = plot->findChild<PriceBased2dPlotPanner*>();
        canvas = plot->canvas();
        manager = new PriceBased2dPlotPointManager(hasSessions, plot);
        // A max-session model has no base code before.
        manager->setPlot(plot);
        model = manager->model();
        legend = new PriceBased2dPlotLegend(plot);
        legend->initCore();
        QObject::connect(
            legend, SIGNAL(visibilityChanged(QString, bool)), plot, SLOT(setCurveVisible(QString, bool)));
        plot->insertLegend(legend, QwtPlot::RightLegend);
        (new QwtPlotCurve(QStringLiteral("plain")))->attach(plot);
        addCurve(*plot, PriceBased2dPlotCurve::quoteLineType, {{118.0, 0.0}, {118.0, 1.0}},
            QStringLiteral("quote"));
        for (const int type : {9, 10, 13})
            addCurve(*plot, type, {{100.0, 1.0}, {140.0, 2.0}}, QStringLiteral("curve %1").arg(type))
                ->setSymbol(new QwtSymbol(QwtSymbol::DTriangle));
        curve(QStringLiteral("curve 13"))
            ->setMarkerSamples({{100.0, 1.0, true}, {120.0, 2.0, false}, {140.0, 3.0, true}});
        plot->QwtPlot::setAxisScale(QwtPlot::xBottom, 95.0, 145.0);
        plot->updateYAxisScale();
        addOther();
    }
    Market(const Market&) = delete;
    Market& operator=(const Market&) = delete;
    ~Market()
    {
        delete plot;
        delete other;
        TestHost::dropSecurities();
        TestHost::dropBoards();
    }

    PriceBased2dPlotCurve* curve(const QString& title) const
    {
        const QList<PriceBased2dPlotCurve*> curves = plot->attachedCurves(-1);
        for (PriceBased2dPlotCurve* one : curves) {
            if (one->title().text() == title)
                return one;
        }
        return nullptr;
    }

    /// That of the other plot, which has but one.
    PriceBased2dPlotCurve* otherCurve() const { return other ? other->attachedCurves(-1).value(0) : nullptr; }

    void remove(Part part)
    {
        switch (part) {
        case Plot:
            delete plot;
            break;
        case Manager:
            delete manager;
            break;
        case Model:
            delete model;
            break;
        case Legend:
            delete legend;
            break;
        case Entries:
            // All but the one that is not of the library, see removeCurves().
            if (legend)
                qDeleteAll(ownEntries());
            break;
        case Canvas:
            // Qwt deletes the one for the other; it cannot lay out a plot that has none.
            if (canvas)
                plot->setCanvas(new QwtPlotCanvas);
            break;
        case Picker:
            delete picker;
            break;
        case Panner:
            delete panner;
            break;
        case Curves:
            if (plot)
                removeCurves();
            break;
        case Markers:
            if (plot)
                plot->detachItems(QwtPlotItem::Rtti_PlotMarker, true);
            break;
        case OtherPlot:
            delete other;
            break;
        case OtherCurve:
            delete otherCurve();
            break;
        case Securities:
            TestHost::dropSecurities();
            break;
        case Boards:
            TestHost::dropBoards();
            break;
        case PartCount:
            break;
        }
    }

    /// The names of the parts that are there; curves, markers and entries are as long as there is one that
    /// remove() takes away.
    QStringList parts() const
    {
        const bool there[] = {!plot.isNull(), !manager.isNull(), !model.isNull(), !legend.isNull(),
            legend && !ownEntries().isEmpty(), !canvas.isNull(), !picker.isNull(), !panner.isNull(),
            plot && !plot->attachedCurves(-1).isEmpty(), plot && !plot->attachedMarkers().isEmpty(),
            !other.isNull(), otherCurve() != nullptr, !table.isNull(), !boards.isNull()};
        QStringList names;
        for (int part = 0; part < PartCount; ++part) {
            if (there[part])
                names << QString::fromLatin1(nameOf(Part(part)));
        }
        return names;
    }

    /// The names of those that are there after others were removed.
    static QStringList partsWithout(const QVector<Part>& removed)
    {
        QStringList names;
        for (int part = 0; part < PartCount; ++part) {
            if (!isGone(Part(part), removed))
                names << QString::fromLatin1(nameOf(Part(part)));
        }
        return names;
    }

    // All but the one that is not of the library: a legend without any entry has a negative size in Qwt.
    void removeCurves()
    {
        const QList<PriceBased2dPlotCurve*> curves = plot->attachedCurves(-1);
        for (PriceBased2dPlotCurve* one : curves) {
            if (plot && plot->attachedCurves(-1).contains(one))
                delete one;
        }
    }

    /// The widgets of the entries of the library's curves.
    QList<QWidget*> ownEntries() const
    {
        QList<QWidget*> entries;
        const auto labels = legend->findChildren<QwtLegendLabel*>();
        for (const QwtLegendLabel* label : labels) {
            if (label->text().text() != QLatin1String("plain"))
                entries << label->parentWidget();
        }
        return entries;
    }

    QPointer<Table> table;
    QPointer<Table> boards;
    QPointer<TestPlot> plot;
    QPointer<PriceBased2dPlotPointManager> manager;
    QPointer<StrikeByBaseCodeModel> model;
    QPointer<PriceBased2dPlotLegend> legend;
    QPointer<PriceBased2dPlotPicker> picker;
    QPointer<PriceBased2dPlotPanner> panner;
    QPointer<QWidget> canvas;
    QPointer<TestPlot> other;

private:
    /// Whether a part has gone, by itself or with one that took it along.
    static bool isGone(Part part, const QVector<Part>& removed)
    {
        const auto isRemoved = [&removed](Part one) { return isGone(one, removed); };
        if (removed.contains(part))
            return true;
        switch (part) {
        case Model:
            return isRemoved(Manager);
        case Entries:
            return isRemoved(Legend) || (isRemoved(Curves) && isRemoved(OtherCurve));
        case Picker:
        case Panner:
            return isRemoved(Canvas);
        case OtherCurve:
            return isRemoved(OtherPlot);
        case Manager:
        case Legend:
        case Canvas:
        case Curves:
        case Markers:
            return isRemoved(Plot);
        default:
            return false;
        }
    }

    /// The host shows and hides the other plot's curve by this plot's legend. The curve was made for this
    /// plot, whose markers follow it.
    void addOther()
    {
        other = new TestPlot;
        other->setBaseCode(QStringLiteral("Amber"));
        auto* curve = new PriceBased2dPlotCurve(plot, QStringLiteral("elsewhere"));
        curve->setDataType(PriceBased2dPlotCurve::markedType);
        curve->setSamples(QVector<QPointF>{{100.0, 1.0}, {140.0, 2.0}});
        curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
        curve->attach(other);
        QObject::connect(other, SIGNAL(legendDataChanged(QVariant, QList<QwtLegendData>)), legend,
            SLOT(updateLegend(QVariant, QList<QwtLegendData>)));
        QObject::connect(
            legend, SIGNAL(visibilityChanged(QString, bool)), other, SLOT(setCurveVisible(QString, bool)));
        other->updateLegend();
    }
};
