#include "monkey/stepmaking.h"

namespace Monkey {

namespace {

using Make::Mood;

/// Ends and corners more often than by chance.
double part(Random& random)
{
    return random.chance(8) ? random.integer(0, 1) : random.unit();
}

Place place(Random& random, Mood mood)
{
    constexpr Area anywhere[]
        = {Area::Canvas, Area::Canvas, Area::Prices, Area::Values, Area::Legend, Area::Window, Area::Outside};
    Area area = random.of(anywhere);
    if (mood == Mood::PanCanvas && !random.chance(6))
        area = random.chance(8) ? Area::Outside : Area::Canvas;
    else if (mood == Mood::DragAxis && !random.chance(6))
        area = random.chance(2) ? Area::Prices : Area::Values;
    else if (mood == Mood::TurnWheel && !random.chance(6))
        area = random.of({Area::Canvas, Area::Canvas, Area::Prices, Area::Values});
    else if (mood == Mood::Legend && !random.chance(4))
        area = Area::Legend;
    const double across = part(random);
    return {area, across, part(random)};
}

Qt::MouseButton button(Random& random)
{
    return random.chance(5) ? random.of({Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) : Qt::LeftButton;
}

int modifiers(Random& random)
{
    if (!random.chance(3))
        return Qt::NoModifier;
    return random.of(
        {int(Qt::ShiftModifier), int(Qt::ControlModifier), int(Qt::ShiftModifier | Qt::ControlModifier),
            int(Qt::AltModifier), int(Qt::MetaModifier | Qt::ShiftModifier)});
}

int angle(Random& random)
{
    constexpr int odd[] = {0, 1, -1, 15, 119, -119, 121, -127, 239, -239, 360, -1200, 32767, -32768,
        2147483647, -2147483647 - 1};
    return random.chance(4) ? random.of(odd) : random.of({120, 120, -120, -120, -120, 240, -240});
}

}

Step Make::press(Random& random, Mood mood)
{
    Press step{place(random, mood), button(random), modifiers(random)};
    // The panner starts without a modifier only.
    if (mood == Mood::PanCanvas && !random.chance(4))
        step.modifiers = Qt::NoModifier;
    return step;
}

Step Make::move(Random& random, Mood mood)
{
    return Move{place(random, mood)};
}

Step Make::release(Random& random, Mood mood)
{
    return Release{place(random, mood), button(random)};
}

Step Make::doubleClick(Random& random, Mood mood)
{
    return DoubleClick{place(random, mood), button(random)};
}

Step Make::turn(Random& random, Mood mood)
{
    Turn step;
    step.cursor = place(random, mood);
    step.event = random.chance(4) ? place(random, mood) : step.cursor;
    step.angle = random.chance(8) ? QPoint{angle(random), angle(random)} : QPoint{0, angle(random)};
    step.modifiers = modifiers(random);
    return step;
}

Step Make::typeKey(Random& random, Mood)
{
    const int key = random.of({int(Qt::Key_Left), int(Qt::Key_Right), int(Qt::Key_Up), int(Qt::Key_Down),
        int(Qt::Key_Tab), int(Qt::Key_Space), int(Qt::Key_Escape), int(Qt::Key_Return), int(Qt::Key_Plus),
        int(Qt::Key_Minus), int(Qt::Key_Home), int(Qt::Key_Backspace), int(Qt::Key_A),
        int(Qt::Key_PageDown)});
    return Type{key, modifiers(random)};
}

Step Make::moveCursor(Random& random, Mood mood)
{
    return MoveCursor{place(random, mood)};
}

Step Make::resize(Random& random, Mood)
{
    if (random.chance(6))
        return Resize{random.of({0, 1, 2, 19, 40}), random.of({0, 1, 2, 19, 40})};
    // Large windows take long to paint: one side at a time.
    if (random.chance(12))
        return random.chance(2) ? Resize{random.integer(1000, 4000), random.integer(60, 200)}
                                : Resize{random.integer(60, 200), random.integer(1000, 4000)};
    return Resize{random.integer(60, 400), random.integer(40, 300)};
}

Step Make::showWindow(Random& random, Mood)
{
    return ShowWindow{!random.chance(3)};
}

Step Make::handleEvents(Random& random, Mood)
{
    return HandleEvents{random.chance(3)};
}

Step Make::grab(Random&, Mood)
{
    return Grab{};
}

Step Make::fireTimers(Random&, Mood)
{
    return FireTimers{};
}

}
