// Depreciation of an asset: along a line, by the digits of the years, by a declining balance.

#include "functions/numeric.h"
#include "functions/table.h"

#include <algorithm>
#include <cmath>

namespace vorn {

void callSln()
{
    const double life = popNumber();
    const double salvage = popNumber();
    const double cost = popNumber();
    if (checkPending())
        pushNumberIf(life != 0, (cost - salvage) / life, CellErrorDiv0);
}

void callSyd()
{
    const double period = popNumber();
    const double life = popNumber();
    const double salvage = popNumber();
    const double cost = popNumber();
    if (!checkPending())
        return;
    const bool inDomain = life > 0 && period <= life && period >= 0 && salvage >= 0;
    pushNumberIf(inDomain, 2 * (life - period + 1) * (cost - salvage) / ((life + 1) * life),
                 CellErrorNum);
}

namespace {

// Periods that are written off one by one. Of more than these, all but the last are written off at
// once: nobody waits for a life of 1e12 periods.
constexpr double PeriodsWalked = 1e5;

struct Asset {
    double book = 0;
    double salvage = 0;
    double life = 0;
    double factor = 0;
};

// Writes off one period; answers its depreciation.
double writeOff(Asset& asset)
{
    double part = asset.book * asset.factor / asset.life;
    asset.book -= part;
    if (asset.book < asset.salvage) {
        part -= asset.salvage - asset.book;
        asset.book = asset.salvage;
    }
    return part < 0 ? 0 : part;
}

void writeOffMany(Asset& asset, double periods)
{
    asset.book *= std::exp(periods * std::log1p(-asset.factor / asset.life));
    if (asset.book < asset.salvage)
        asset.book = asset.salvage;
}

// The depreciation of the last of these periods; a part of a period does not count. From a round on
// that changes nothing all others are like it.
double decliningBalance(Asset asset, double period)
{
    const double periods = std::floor(period);
    const int walked = static_cast<int>(std::min(periods, PeriodsWalked));
    double part = 0;
    for (int i = 0; i < walked; ++i) {
        const double before = asset.book;
        part = writeOff(asset);
        if (asset.book == before)
            return part;
    }
    if (periods == walked)
        return part;
    writeOffMany(asset, periods - walked - 1);
    return writeOff(asset);
}

} // namespace

void callDdb()
{
    const double factor = popOptional(5, 2);
    const double period = popNumber();
    const double life = popNumber();
    const double salvage = popNumber();
    const double cost = popNumber();
    if (!checkPending())
        return;
    const bool inDomain = factor > 0 && period > 0 && life >= period && salvage >= 0 && cost >= 0;
    if (inDomain)
        pushNumber(decliningBalance({cost, salvage, life, factor}, period));
    else
        pushError(CellErrorNum);
}

} // namespace vorn
