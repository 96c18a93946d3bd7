#pragma once

#include <QPoint>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVector>
#include <Qt>

#include <tuple>
#include <variant>

/// What a random driver of a plot does: plain values that say it all, so that a step can be made, printed and
/// done again anywhere. Curves and entries are numbered from 0, and a number beyond the last starts again.
namespace Monkey {

enum class Area { Canvas, Prices, Values, Legend, Window, Outside };

/// A place in a part of the window: its left and upper end are 0, its right and lower end 1. Outside is the
/// window with as much room around it on every side.
struct Place {
    Area area = Area::Window;
    double across = 0.5;
    double down = 0.5;
};

// The user.

struct Press {
    static constexpr const char* name = "press";
    Place place;
    Qt::MouseButton button = Qt::LeftButton;
    int modifiers = 0;
    auto fields() const { return std::tie(place, button, modifiers); }
};

struct Move {
    static constexpr const char* name = "move";
    Place place;
    auto fields() const { return std::tie(place); }
};

struct Release {
    static constexpr const char* name = "release";
    Place place;
    Qt::MouseButton button = Qt::LeftButton;
    auto fields() const { return std::tie(place, button); }
};

struct DoubleClick {
    static constexpr const char* name = "double click";
    Place place;
    Qt::MouseButton button = Qt::LeftButton;
    auto fields() const { return std::tie(place, button); }
};

/// The event happens at one place while the cursor is at another one, or at the same.
struct Turn {
    static constexpr const char* name = "wheel";
    Place cursor;
    Place event;
    QPoint angle;
    int modifiers = 0;
    auto fields() const { return std::tie(cursor, event, angle, modifiers); }
};

struct Type {
    static constexpr const char* name = "key";
    int key = 0;
    int modifiers = 0;
    auto fields() const { return std::tie(key, modifiers); }
};

struct MoveCursor {
    static constexpr const char* name = "cursor";
    Place place;
    auto fields() const { return std::tie(place); }
};

// The window and the event loop.

struct Resize {
    static constexpr const char* name = "resize";
    int width = 0;
    int height = 0;
    auto fields() const { return std::tie(width, height); }
};

struct ShowWindow {
    static constexpr const char* name = "show window";
    bool on = true;
    auto fields() const { return std::tie(on); }
};

struct HandleEvents {
    static constexpr const char* name = "handle events";
    bool deferredDeletes = false;
    auto fields() const { return std::tie(deferredDeletes); }
};

struct Grab {
    static constexpr const char* name = "grab";
    auto fields() const { return std::tie(); }
};

struct FireTimers {
    static constexpr const char* name = "fire timers";
    auto fields() const { return std::tie(); }
};

// The host's curves.

struct AddCurve {
    static constexpr const char* name = "add curve";
    int type = 9;
    int title = 0;
    QVector<QPointF> samples;
    auto fields() const { return std::tie(type, title, samples); }
};

struct SetSamples {
    static constexpr const char* name = "set samples";
    int curve = 0;
    QVector<QPointF> samples;
    auto fields() const { return std::tie(curve, samples); }
};

/// Every so many samples one is marked, none for 0.
struct SetMarkerSamples {
    static constexpr const char* name = "set marker samples";
    int curve = 0;
    int markEvery = 0;
    QVector<QPointF> samples;
    auto fields() const { return std::tie(curve, markEvery, samples); }
};

struct Retitle {
    static constexpr const char* name = "retitle curve";
    int curve = 0;
    int title = 0;
    auto fields() const { return std::tie(curve, title); }
};

struct ShowCurve {
    static constexpr const char* name = "show curve";
    int curve = 0;
    bool on = true;
    auto fields() const { return std::tie(curve, on); }
};

/// Another style of line and another symbol; now and then one that makes the curve invalid.
struct ChangeLook {
    static constexpr const char* name = "change look";
    int curve = 0;
    int look = 0;
    auto fields() const { return std::tie(curve, look); }
};

struct AttachCurve {
    static constexpr const char* name = "attach curve";
    int curve = 0;
    bool on = true;
    auto fields() const { return std::tie(curve, on); }
};

struct DeleteCurve {
    static constexpr const char* name = "delete curve";
    int curve = 0;
    auto fields() const { return std::tie(curve); }
};

// The host's legend.

struct ToggleEntry {
    static constexpr const char* name = "toggle entry";
    enum How { ClickBox, ClickLabel, Call };
    int entry = 0;
    int how = ClickBox;
    auto fields() const { return std::tie(entry, how); }
};

struct StoreLegend {
    static constexpr const char* name = "store legend";
    auto fields() const { return std::tie(); }
};

/// From what was stored; with damage, from that with so many bytes less.
struct RestoreLegend {
    static constexpr const char* name = "restore legend";
    int damage = 0;
    auto fields() const { return std::tie(damage); }
};

struct RestoreUnchecked {
    static constexpr const char* name = "restore unchecked";
    QStringList texts;
    auto fields() const { return std::tie(texts); }
};

struct ReplaceLegend {
    static constexpr const char* name = "replace legend";
    int position = 0;
    auto fields() const { return std::tie(position); }
};

// The host's plot and market.

struct SetScale {
    static constexpr const char* name = "set scale";
    int axis = 0;
    double lower = 0.0;
    double upper = 0.0;
    double step = 0.0;
    auto fields() const { return std::tie(axis, lower, upper, step); }
};

/// Qwt's own, which finds the range of all attached items.
struct LetQwtScale {
    static constexpr const char* name = "let Qwt scale";
    int axis = 0;
    auto fields() const { return std::tie(axis); }
};

struct Switch {
    static constexpr const char* name = "switch";
    enum What { AutoScale, Zoom, QuoteLabel, Grid, Tracker };
    int what = AutoScale;
    bool on = true;
    auto fields() const { return std::tie(what, on); }
};

struct SetInterval {
    static constexpr const char* name = "set price interval";
    double low = 0.0;
    double high = 0.0;
    double step = 0.0;
    bool valid = true;
    auto fields() const { return std::tie(low, high, step, valid); }
};

struct SetQuote {
    static constexpr const char* name = "set quote";
    double quote = 0.0;
    auto fields() const { return std::tie(quote); }
};

/// Of the future in the host's table; an empty text is no value.
struct SetMarket {
    static constexpr const char* name = "set market";
    QString quote;
    QString priceStep;
    auto fields() const { return std::tie(quote, priceStep); }
};

struct MoveQuoteLine {
    static constexpr const char* name = "move quote line";
    double low = 0.0;
    double high = 0.0;
    double quote = 0.0;
    auto fields() const { return std::tie(low, high, quote); }
};

struct Convert {
    static constexpr const char* name = "convert";
    int axis = 0;
    /// 0 for none.
    int conversion = 0;
    auto fields() const { return std::tie(axis, conversion); }
};

struct Rescale {
    static constexpr const char* name = "rescale";
    QString factor;
    auto fields() const { return std::tie(factor); }
};

struct Refresh {
    static constexpr const char* name = "refresh";
    enum What { Replot, Labels, Values, AxisWidgets, Layout };
    int what = Replot;
    auto fields() const { return std::tie(what); }
};

struct ChangeStrikes {
    static constexpr const char* name = "change strikes";
    enum What { Add, Remove, Alter };
    int what = Add;
    int row = 0;
    QString strike;
    auto fields() const { return std::tie(what, row, strike); }
};

/// New samples of a curve at the prices that the point manager asks for.
struct Evaluate {
    static constexpr const char* name = "evaluate";
    int curve = 0;
    bool force = true;
    auto fields() const { return std::tie(curve, force); }
};

struct Remove {
    static constexpr const char* name = "remove";
    enum What { Picker, Panner, Legend, PointManager };
    int what = Picker;
    auto fields() const { return std::tie(what); }
};

struct NewPicker {
    static constexpr const char* name = "new picker";
    auto fields() const { return std::tie(); }
};

/// The host looks for the closest point, and writes it beside the cursor.
struct Track {
    static constexpr const char* name = "track";
    auto fields() const { return std::tie(); }
};

/// Once, when the next signal of a kind comes, the host does something that its slot had better not.
struct Listen {
    static constexpr const char* name = "listen";
    enum Signal { Labels, AutoScale, Visibility };
    enum Action {
        DeleteCurves,
        DeletePicker,
        DeletePanner,
        DeleteLegend,
        AddCurves,
        HideWindow,
        Shrink,
        SetScales
    };
    int signal = Labels;
    int action = DeleteCurves;
    auto fields() const { return std::tie(signal, action); }
};

/// The host starts over: ordinary curves, an ordinary view, a window of ordinary size.
struct StartOver {
    static constexpr const char* name = "start over";
    int width = 400;
    int height = 250;
    auto fields() const { return std::tie(width, height); }
};

using Step = std::variant<Press, Move, Release, DoubleClick, Turn, Type, MoveCursor, Resize, ShowWindow,
    HandleEvents, Grab, FireTimers, AddCurve, SetSamples, SetMarkerSamples, Retitle, ShowCurve, ChangeLook,
    AttachCurve, DeleteCurve, ToggleEntry, StoreLegend, RestoreLegend, RestoreUnchecked, ReplaceLegend,
    SetScale, LetQwtScale, Switch, SetInterval, SetQuote, SetMarket, MoveQuoteLine, Convert, Rescale, Refresh,
    ChangeStrikes, Evaluate, Remove, NewPicker, Track, Listen, StartOver>;

/// Whether the user did it, with mouse, wheel or keys.
bool isOfUser(const Step& step);

/// All that the step says, in one line; numbers in full.
QString text(const Step& step);

}
