#pragma once

#include "flow/strikes.h"
#include "support/testplot.h"

#include <basic_models/strikebybasecodemodel.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpanner.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

/// A plot with all that a host puts around it, over the host's tables: strikes from 100 to 140, 10 apart.
/// Each object may go at any time, by anybody; remove() takes one away that is still there.
class Market {
public:
    enum Part {
        Plot,
        Manager,
        Model,
        Legend,
        Picker,
        Panner,
        Curves,
        Markers,
        Securities,
        Boards,
        PartCount
    };

    static const char* nameOf(Part part)
    {
        static const char* const names[] = {"plot", "manager", "model", "legend", "picker", "panner",
            "curves", "markers", "securities", "boards"};
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
        manager = new PriceBased2dPlotPointManager(hasSessions, plot);
        // A max-session model has no base code before.
        manager->setPlot(plot);
        model = manager->model();
        legend = new PriceBased2dPlotLegend(plot);
        legend->initCore();
        QObject::connect(
            legend, SIGNAL(visibilityChanged(QString, bool)), plot, SLOT(setCurveVisible(QString, bool)));
        plot->insertLegend(legend, QwtPlot::RightLegend);
        (new QwtPlotCurve(QStringLiteral("other")))->attach(plot);
        addCurve(*plot, PriceBased2dPlotCurve::quoteLineType, {{118.0, 0.0}, {118.0, 1.0}},
            QStringLiteral("quote"));
        for (const int type : {9, 10, 13})
            addCurve(*plot, type, {{100.0, 1.0}, {140.0, 2.0}}, QStringLiteral("curve %1").arg(type))
                ->setSymbol(new QwtSymbol(QwtSymbol::DTriangle));
        curve(QStringLiteral("curve 13"))
            ->setMarkerSamples({{100.0, 1.0, true}, {120.0, 2.0, false}, {140.0, 3.0, true}});
        plot->QwtPlot::setAxisScale(QwtPlot::xBottom, 95.0, 145.0);
        plot->updateYAxisScale();
    }
    Market(const Market&) = delete;
    Market& operator=(const Market&) = delete;
    ~Market()
    {
        delete plot;
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

    /// The names of the parts that are there; curves and markers are as long as there is one.
    QStringList parts() const
    {
        const bool there[] = {!plot.isNull(), !manager.isNull(), !model.isNull(), !legend.isNull(),
            !picker.isNull(), !panner.isNull(), plot && !plot->attachedCurves(-1).isEmpty(),
            plot && !plot->attachedMarkers().isEmpty(), !table.isNull(), !boards.isNull()};
        QStringList names;
        for (int part = 0; part < PartCount; ++part) {
            if (there[part])
                names << QString::fromLatin1(nameOf(Part(part)));
        }
        return names;
    }

    /// The names of those that are there after others were removed: a plot takes with it all but the tables,
    /// a manager its model.
    static QStringList partsWithout(const QVector<Part>& removed)
    {
        QStringList names;
        for (int part = 0; part < PartCount; ++part) {
            const bool goesWithPlot = part != Securities && part != Boards && removed.contains(Plot);
            const bool goesWithManager = part == Model && removed.contains(Manager);
            if (!removed.contains(Part(part)) && !goesWithPlot && !goesWithManager)
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

    QPointer<Table> table;
    QPointer<Table> boards;
    QPointer<TestPlot> plot;
    QPointer<PriceBased2dPlotPointManager> manager;
    QPointer<StrikeByBaseCodeModel> model;
    QPointer<PriceBased2dPlotLegend> legend;
    QPointer<PriceBased2dPlotPicker> picker;
    QPointer<PriceBased2dPlotPanner> panner;
};
