#pragma once

#include "monkey/monkeyhost.h"
#include "monkey/steps.h"

#include <database/settings.h>

#include <QEvent>
#include <QTemporaryDir>

namespace Monkey {

/// Does steps to a host's plot. Events go to the window as a window system's would, so that Qt finds the
/// widget under them, propagates them and grabs the mouse; a window that is not shown gets none.
class StepExecutor {
public:
    explicit StepExecutor(Host& host);

    void run(const Step& step);
    /// Qt knows of pressed buttons for the whole process, so that they would change what another plot does.
    void releaseButtons();

private:
    void perform(const Press& step);
    void perform(const Move& step);
    void perform(const Release& step);
    void perform(const DoubleClick& step);
    void perform(const Turn& step);
    void perform(const Type& step);
    void perform(const MoveCursor& step);
    void perform(const Resize& step);
    void perform(const ShowWindow& step);
    void perform(const HandleEvents& step);
    void perform(const Grab& step);
    void perform(const FireTimers& step);
    void perform(const AddCurve& step);
    void perform(const SetSamples& step);
    void perform(const SetMarkerSamples& step);
    void perform(const Retitle& step);
    void perform(const ShowCurve& step);
    void perform(const ChangeLook& step);
    void perform(const AttachCurve& step);
    void perform(const DeleteCurve& step);
    void perform(const ToggleEntry& step);
    void perform(const StoreLegend& step);
    void perform(const RestoreLegend& step);
    void perform(const RestoreUnchecked& step);
    void perform(const ReplaceLegend& step);
    void perform(const SetScale& step);
    void perform(const LetQwtScale& step);
    void perform(const Switch& step);
    void perform(const SetInterval& step);
    void perform(const SetQuote& step);
    void perform(const SetMarket& step);
    void perform(const MoveQuoteLine& step);
    void perform(const Convert& step);
    void perform(const Rescale& step);
    void perform(const Refresh& step);
    void perform(const ChangeStrikes& step);
    void perform(const Evaluate& step);
    void perform(const Remove& step);
    void perform(const NewPicker& step);
    void perform(const Track& step);
    void perform(const Listen& step);
    void perform(const StartOver& step);

    /// In the coordinates of the window.
    QPointF resolved(const Place& place) const;
    void putCursor(const QPointF& position);
    void sendMouse(QEvent::Type type, const QPointF& position, Qt::MouseButton button, int modifiers);
    void send(QEvent& event);

    Host& m_host;
    Plot& m_plot;
    Qt::MouseButtons m_buttons = Qt::NoButton;
    QTemporaryDir m_folder;
    Settings m_settings;
};

}
