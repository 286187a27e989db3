#include "shell/region.h"

#include "support/dice.h"

#include <bitset>
#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

constexpr int Side = 16;

// The same set, a bit for a pixel.
class Bits {
public:
    template <typename Change>
    void each(Change change)
    {
        for (int y = 0; y < Side; ++y) {
            for (int x = 0; x < Side; ++x)
                set(x, y, change(x, y, get(x, y)));
        }
    }
    bool get(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < Side && y < Side && bits_[place(x, y)];
    }
    void set(int x, int y, bool on) { bits_[place(x, y)] = on; }

private:
    static std::size_t place(int x, int y) { return static_cast<std::size_t>(y * Side + x); }

    std::bitset<Side * Side> bits_;
};

bool holds(const Region& region, int x, int y)
{
    for (const Rect& rect : region.rects()) {
        if (rect.contains(x, y))
            return true;
    }
    return false;
}

bool overlapsItself(const Region& region)
{
    const auto& rects = region.rects();
    for (std::size_t a = 0; a < rects.size(); ++a) {
        for (std::size_t b = a + 1; b < rects.size(); ++b) {
            if (rects[a].meets(rects[b]))
                return true;
        }
    }
    return false;
}

bool same(const Region& region, const Bits& bits)
{
    for (int y = 0; y < Side; ++y) {
        for (int x = 0; x < Side; ++x) {
            if (holds(region, x, y) != bits.get(x, y))
                return false;
        }
    }
    return true;
}

Rect anyRect(Dice& dice)
{
    const int left = dice.below(Side);
    const int top = dice.below(Side);
    return {left, top, left + dice.below(Side - left + 1), top + dice.below(Side - top + 1)};
}

void anyChange(Dice& dice, Region& region, Bits& bits)
{
    const Rect area = anyRect(dice);
    switch (dice.below(5)) {
    case 0:
        region.add(area);
        bits.each([&](int x, int y, bool in) { return in || area.contains(x, y); });
        break;
    case 1:
        region.remove(area);
        bits.each([&](int x, int y, bool in) { return in && !area.contains(x, y); });
        break;
    case 2:
        region.toggle(area);
        bits.each([&](int x, int y, bool in) { return in != area.contains(x, y); });
        break;
    case 3:
        if (dice.oneIn(3)) {
            region.cut(area);
            bits.each([&](int x, int y, bool in) { return in && area.contains(x, y); });
        }
        break;
    default: {
        const int dx = dice.below(9) - 4;
        const int dy = dice.below(9) - 4;
        const Bits before = bits;
        region.scroll(area, dx, dy);
        bits.each([&](int x, int y, bool in) {
            const bool moved = area.contains(x - dx, y - dy) && before.get(x - dx, y - dy);
            return area.contains(x, y) ? moved : in;
        });
    }
    }
}

TEST(Region, isTheSetOfItsPixels)
{
    Dice dice(4711);
    Region region;
    Region other;
    Bits bits;
    Bits otherBits;
    for (int step = 0; step < 3000; ++step) {
        anyChange(dice, region, bits);
        anyChange(dice, other, otherBits);
        ASSERT_TRUE(same(region, bits)) << "step " << step;
        ASSERT_FALSE(overlapsItself(region)) << "step " << step;
        Bits changed;
        changed.each([&](int x, int y, bool) { return bits.get(x, y) != otherBits.get(x, y); });
        ASSERT_TRUE(same(changes(region, other), changed)) << "step " << step;
        if (dice.oneIn(10)) {
            region.remove(other);
            bits.each([&](int x, int y, bool in) { return in && !otherBits.get(x, y); });
        } else if (dice.oneIn(10)) {
            region.add(other);
            bits.each([&](int x, int y, bool in) { return in || otherBits.get(x, y); });
        }
    }
}

TEST(Region, hasTheSameRectanglesHoweverItWasMade)
{
    Region whole({0, 0, 9, 9});
    Region parts;
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x)
            parts.add(Rect{8 - x, y, 9 - x, y + 1});
    }
    EXPECT_EQ(parts, whole);
    EXPECT_EQ(parts.rects().size(), 1U);
    whole.remove(Rect{3, 3, 6, 6});
    parts.remove(Rect{3, 3, 6, 5});
    parts.remove(Rect{3, 5, 6, 6});
    EXPECT_EQ(parts, whole);
    EXPECT_EQ(whole.rects().size(), 4U) << "a ring is a strip above, two beside and one below";
}

TEST(Region, isEmptyWithoutPixels)
{
    Region region;
    EXPECT_TRUE(region.isEmpty());
    region.add(Rect{5, 5, 5, 9});
    region.add(Rect{5, 5, 3, 9});
    EXPECT_TRUE(region.isEmpty()) << "an empty rectangle has none, nor has one inside out";
    region.toggle({0, 0, 4, 4});
    region.toggle({0, 0, 4, 4});
    EXPECT_TRUE(region.isEmpty()) << "twice is never";
    region.add(Rect{0, 0, 4, 4});
    region.remove(Rect{-1, -1, 5, 5});
    EXPECT_TRUE(region.isEmpty());
    EXPECT_TRUE(changes(Region({1, 1, 2, 2}), Region({1, 1, 2, 2})).isEmpty());
}

} // namespace
} // namespace vorn
