#include "shell/region.h"

#include <algorithm>

namespace vorn {

namespace {

using Rects = std::vector<Rect>;

// Which pixels a combination of two sets keeps: those in both, in the first or in the second only.
struct Keep {
    bool both;
    bool first;
    bool second;

    bool of(bool inFirst, bool inSecond) const
    {
        return inFirst ? (inSecond ? both : first) : (inSecond && second);
    }
};

constexpr Keep Union = {true, true, true};
constexpr Keep Difference = {false, true, false};
constexpr Keep Intersection = {true, false, false};
constexpr Keep Either = {false, true, true};

void addEdges(std::vector<int>& edges, const Rects& rects, int Rect::*from, int Rect::*to)
{
    for (const Rect& rect : rects) {
        edges.push_back(rect.*from);
        edges.push_back(rect.*to);
    }
}

void sortEdges(std::vector<int>& edges)
{
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
}

// Those that a line at `y` runs through.
Rects crossing(const Rects& rects, int y)
{
    Rects found;
    std::copy_if(rects.begin(), rects.end(), std::back_inserter(found),
                 [y](const Rect& rect) { return rect.top <= y && y < rect.bottom; });
    return found;
}

bool holds(const Rects& crossed, int x)
{
    return std::any_of(crossed.begin(), crossed.end(),
                       [x](const Rect& rect) { return rect.left <= x && x < rect.right; });
}

// What is kept between two lines that no edge lies between.
Rects combinedBand(const Rects& a, const Rects& b, int top, int bottom, Keep keep)
{
    const Rects inA = crossing(a, top);
    const Rects inB = crossing(b, top);
    std::vector<int> edges;
    addEdges(edges, inA, &Rect::left, &Rect::right);
    addEdges(edges, inB, &Rect::left, &Rect::right);
    sortEdges(edges);
    Rects band;
    for (std::size_t at = 1; at < edges.size(); ++at) {
        const int left = edges[at - 1];
        if (!keep.of(holds(inA, left), holds(inB, left)))
            continue;
        if (!band.empty() && band.back().right == left)
            band.back().right = edges[at];
        else
            band.push_back({left, top, edges[at], bottom});
    }
    return band;
}

bool continues(const Rect& above, const Rect& below)
{
    return above.bottom == below.top && above.left == below.left && above.right == below.right;
}

// Bands that look the same become one.
void appendBand(Rects& rects, std::size_t& lastBand, const Rects& band)
{
    const auto last = rects.begin() + static_cast<std::ptrdiff_t>(lastBand);
    if (!band.empty() && std::equal(last, rects.end(), band.begin(), band.end(), continues)) {
        std::for_each(last, rects.end(), [&](Rect& rect) { rect.bottom = band.front().bottom; });
        return;
    }
    lastBand = rects.size();
    rects.insert(rects.end(), band.begin(), band.end());
}

Rects combined(const Rects& a, const Rects& b, Keep keep)
{
    std::vector<int> edges;
    addEdges(edges, a, &Rect::top, &Rect::bottom);
    addEdges(edges, b, &Rect::top, &Rect::bottom);
    sortEdges(edges);
    Rects rects;
    std::size_t lastBand = 0;
    for (std::size_t at = 1; at < edges.size(); ++at)
        appendBand(rects, lastBand, combinedBand(a, b, edges[at - 1], edges[at], keep));
    return rects;
}

Rects rectsOf(const Rect& area)
{
    return area.isEmpty() ? Rects() : Rects{area};
}

} // namespace

void Region::add(const Rect& area)
{
    rects_ = combined(rects_, rectsOf(area), Union);
}

void Region::add(const Region& other)
{
    rects_ = combined(rects_, other.rects_, Union);
}

void Region::remove(const Rect& area)
{
    rects_ = combined(rects_, rectsOf(area), Difference);
}

void Region::remove(const Region& other)
{
    rects_ = combined(rects_, other.rects_, Difference);
}

void Region::toggle(const Rect& area)
{
    rects_ = combined(rects_, rectsOf(area), Either);
}

void Region::cut(const Rect& area)
{
    rects_ = combined(rects_, rectsOf(area), Intersection);
}

void Region::scroll(const Rect& area, int dx, int dy)
{
    Region moving = *this;
    moving.cut(area);
    for (Rect& rect : moving.rects_)
        rect = rect.moved(dx, dy);
    moving.cut(area);
    remove(area);
    add(moving);
}

Region changes(const Region& a, const Region& b)
{
    Region region;
    region.rects_ = combined(a.rects_, b.rects_, Either);
    return region;
}

} // namespace vorn
