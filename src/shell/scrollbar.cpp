#include "shell/scrollbar.h"

#include "platform/canvas.h"
#include "shell/flatbutton.h"
#include "shell/gridlayout.h"
#include "shell/look.h"

#include <algorithm>
#include <cstdint>

namespace vorn {

namespace {

int thumbLengthIn(int track, const ScrollReach& reach)
{
    const int steps = reach.last - reach.first;
    if (track < LeastThumbLength)
        return 0;
    if (steps <= 0)
        return track;
    const std::int64_t length =
        std::int64_t{track} * reach.page / (std::int64_t{steps} + reach.page);
    return static_cast<int>(std::clamp<std::int64_t>(length, LeastThumbLength, track));
}

// The nearest whole number to value * numerator / denominator, none of them negative.
int scaled(int value, int numerator, int denominator)
{
    const std::int64_t product = std::int64_t{value} * numerator;
    return static_cast<int>((product + denominator / 2) / denominator);
}

} // namespace

ScrollBar::ScrollBar(BarDirection direction, const Rect& area, const ScrollReach& reach)
    : direction_(direction), area_(area), reach_(reach)
{
    const bool across = direction == BarDirection::Across;
    start_ = across ? area.left : area.top;
    end_ = across ? area.right : area.bottom;
    const int button = std::min(ScrollBarThickness, (end_ - start_) / 2);
    trackStart_ = start_ + button;
    trackEnd_ = end_ - button;
    thumbLength_ = thumbLengthIn(trackEnd_ - trackStart_, reach);
    thumbStart_ = trackStart_;
    if (reach.first < reach.last)
        thumbStart_ += scaled(reach.position - reach.first, trackEnd_ - trackStart_ - thumbLength_,
                              reach.last - reach.first);
}

Rect ScrollBar::part(int from, int to) const
{
    if (area_.isEmpty() || from >= to)
        return {};
    if (direction_ == BarDirection::Across)
        return {from, area_.top, to, area_.bottom};
    return {area_.left, from, area_.right, to};
}

Rect ScrollBar::thumb() const
{
    return part(thumbStart_, thumbStart_ + thumbLength_);
}

ScrollPart ScrollBar::partAt(int x, int y) const
{
    if (!area_.contains(x, y))
        return ScrollNone;
    const int place = along(x, y);
    if (place < trackStart_)
        return ScrollLineBack;
    if (place >= trackEnd_)
        return ScrollLineOn;
    if (thumbLength_ == 0)
        return ScrollNone;
    if (place < thumbStart_)
        return ScrollPageBack;
    return place < thumbStart_ + thumbLength_ ? ScrollThumb : ScrollPageOn;
}

int ScrollBar::positionAt(int x, int y, int grip) const
{
    const int way = trackEnd_ - trackStart_ - thumbLength_;
    const int start = std::clamp(along(x, y) - grip - trackStart_, 0, way);
    if (way == 0 || trackStart_ + start == thumbStart_)
        return reach_.position;
    return reach_.first + scaled(start, reach_.last - reach_.first, way);
}

// --- The look

namespace {

PushState stateOf(const ScrollBarLook& look, ScrollPart part)
{
    return look.pressed == part ? PushState::Pressed : PushState::Idle;
}

void paintTrack(Canvas& canvas, const ScrollBarLook& look)
{
    const Rect track = ScrollBar(look.direction, look.area).track();
    if (track.isEmpty())
        return;
    canvas.fill(track, ColourTrack);
    paintButton(canvas, look.thumb, stateOf(look, ScrollThumb));
}

} // namespace

void paintScrollBar(Canvas& canvas, const ScrollBarLook& look)
{
    const bool across = look.direction == BarDirection::Across;
    const ScrollBar bar(look.direction, look.area);
    paintTrack(canvas, look);
    paintArrowButton(canvas, bar.backButton(), across ? Arrow::Left : Arrow::Up,
                     stateOf(look, ScrollLineBack));
    paintArrowButton(canvas, bar.onButton(), across ? Arrow::Right : Arrow::Down,
                     stateOf(look, ScrollLineOn));
}

void paintScrollBarChange(Canvas& canvas, const ScrollBarLook& now, const ScrollBarLook& before)
{
    if (now == before)
        return;
    if (now.area == before.area && now.pressed == before.pressed)
        paintTrack(canvas, now);
    else
        paintScrollBar(canvas, now);
}

} // namespace vorn
