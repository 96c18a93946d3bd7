#include "monkey/stepmaking.h"

namespace Monkey {

namespace {

/// An ordinary number most of the time, but often enough any at all.
double numberAbout(Random& random, double low, double high)
{
    return random.chance(5) ? random.anyDouble() : random.decimalNumber(low, high);
}

/// What the host's decimals can hold.
QString decimalText(Random& random, double low, double high)
{
    constexpr const char* odd[]
        = {"", "0", "-1", "-0.00001", "0.00001", "99999999999", "-99999999999", "2147483648", "100"};
    if (random.chance(5))
        return QString::fromLatin1(random.of(odd));
    return QString::number(random.decimalNumber(low, high), 'f', 2);
}

int title(Random& random)
{
    return random.integer(0, 9);
}

int curve(Random& random)
{
    return random.integer(0, 11);
}

int type(Random& random)
{
    return random.chance(6) ? random.of({-1, 0, 13, 14}) : random.of({0, 9, 10, 11, 12, 13, 9});
}

int axis(Random& random)
{
    return random.chance(20) ? random.of({-1, 1, 3, 4}) : random.of({0, 2});
}

}

Step Make::addCurve(Random& random, Mood)
{
    const int typeOfCurve = type(random);
    const int titleOfCurve = title(random);
    if (typeOfCurve == 0 && !random.chance(3)) {
        const double quote = random.decimalNumber(60.0, 140.0);
        return AddCurve{typeOfCurve, titleOfCurve, {QPointF(quote, 0.0), QPointF(quote, 1.0)}};
    }
    return AddCurve{typeOfCurve, titleOfCurve, random.samples()};
}

Step Make::setSamples(Random& random, Mood)
{
    const int number = curve(random);
    return SetSamples{number, random.samples()};
}

Step Make::setMarkerSamples(Random& random, Mood)
{
    const int number = curve(random);
    const int markEvery = random.of({0, 1, 2, 7});
    return SetMarkerSamples{number, markEvery, random.samples()};
}

Step Make::retitle(Random& random, Mood)
{
    const int number = curve(random);
    return Retitle{number, title(random)};
}

Step Make::showCurve(Random& random, Mood)
{
    const int number = curve(random);
    return ShowCurve{number, random.chance(2)};
}

Step Make::changeLook(Random& random, Mood)
{
    const int number = curve(random);
    return ChangeLook{number, random.integer(0, 9)};
}

Step Make::attachCurve(Random& random, Mood)
{
    const int number = curve(random);
    return AttachCurve{number, !random.chance(3)};
}

Step Make::deleteCurve(Random& random, Mood)
{
    return DeleteCurve{curve(random)};
}

Step Make::toggleEntry(Random& random, Mood)
{
    const int entry = curve(random);
    return ToggleEntry{entry, random.integer(0, 2)};
}

Step Make::storeLegend(Random&, Mood)
{
    return StoreLegend{};
}

Step Make::restoreLegend(Random& random, Mood)
{
    return RestoreLegend{random.chance(4) ? random.integer(1, 40) : 0};
}

Step Make::restoreUnchecked(Random& random, Mood)
{
    constexpr const char* names[] = {"Smile", "Theory", "Bid", "Quote", "no such curve", ""};
    QStringList texts;
    for (int i = random.integer(0, 3); i > 0; --i)
        texts.append(QString::fromLatin1(random.of(names)));
    return RestoreUnchecked{texts};
}

Step Make::replaceLegend(Random& random, Mood)
{
    return ReplaceLegend{random.integer(0, 3)};
}

Step Make::setScale(Random& random, Mood)
{
    SetScale step;
    step.axis = axis(random);
    const bool prices = step.axis == 2;
    step.lower = prices ? numberAbout(random, 60.0, 110.0) : numberAbout(random, -5.0, 40.0);
    step.upper = random.chance(5) ? random.anyDouble() : step.lower + random.decimalNumber(0.5, 60.0);
    step.step = random.chance(8) ? random.anyDouble() : 0.0;
    return step;
}

Step Make::letQwtScale(Random& random, Mood)
{
    return LetQwtScale{random.of({0, 2})};
}

Step Make::switchOne(Random& random, Mood)
{
    const int what = random.integer(0, 4);
    // Zoom and auto-scale are mostly on, so that they are used.
    return Switch{what, what < Switch::QuoteLabel ? !random.chance(4) : random.chance(2)};
}

Step Make::setInterval(Random& random, Mood)
{
    const double low = numberAbout(random, 60.0, 90.0);
    const double high = numberAbout(random, 90.0, 140.0);
    const double step = random.chance(3) ? random.anyDouble() : random.of({0.25, 0.5, 1.0, 5.0});
    return SetInterval{low, high, step, !random.chance(5)};
}

Step Make::setQuote(Random& random, Mood)
{
    return SetQuote{numberAbout(random, 60.0, 140.0)};
}

Step Make::setMarket(Random& random, Mood)
{
    const QString quote = decimalText(random, 60.0, 140.0);
    return SetMarket{quote, random.chance(4) ? decimalText(random, 0.0, 2.0) : QStringLiteral("0.25")};
}

Step Make::moveQuoteLine(Random& random, Mood)
{
    const double low = numberAbout(random, -5.0, 20.0);
    const double high = numberAbout(random, 0.0, 40.0);
    return MoveQuoteLine{low, high, random.chance(3) ? -1.0 : numberAbout(random, 60.0, 140.0)};
}

Step Make::convert(Random& random, Mood)
{
    const int number = random.of({0, 2});
    return Convert{number, random.chance(2) ? 0 : random.integer(1, 5)};
}

Step Make::rescale(Random& random, Mood)
{
    return Rescale{decimalText(random, 60.0, 140.0)};
}

Step Make::refresh(Random& random, Mood)
{
    return Refresh{random.integer(0, 4)};
}

Step Make::changeStrikes(Random& random, Mood)
{
    const int what
        = random.of({ChangeStrikes::Add, ChangeStrikes::Add, ChangeStrikes::Remove, ChangeStrikes::Alter});
    const int row = random.integer(0, 30);
    return ChangeStrikes{what, row, decimalText(random, 60.0, 140.0)};
}

Step Make::evaluate(Random& random, Mood)
{
    const int number = curve(random);
    return Evaluate{number, random.chance(2)};
}

Step Make::remove(Random& random, Mood)
{
    // The plot makes its panner once: nothing is dragged on the canvas afterwards.
    if (random.chance(20))
        return Remove{Remove::Panner};
    return Remove{random.of({Remove::Picker, Remove::Legend, Remove::PointManager})};
}

Step Make::newPicker(Random&, Mood)
{
    return NewPicker{};
}

Step Make::track(Random&, Mood)
{
    return Track{};
}

Step Make::listen(Random& random, Mood)
{
    const int signal = random.integer(0, 2);
    if (random.chance(30))
        return Listen{signal, Listen::DeletePanner};
    return Listen{signal,
        random.of({Listen::DeleteCurves, Listen::DeletePicker, Listen::DeleteLegend, Listen::AddCurves,
            Listen::HideWindow, Listen::Shrink, Listen::SetScales})};
}

Step Make::startOver(Random& random, Mood)
{
    const int width = random.integer(200, 400);
    return StartOver{width, random.integer(120, 300)};
}

}
