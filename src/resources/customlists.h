// The custom lists that a program that never ran before has. Each item has a comma behind it, and
// each list a semicolon.
#pragma once

#include <string_view>

namespace vorn {

inline constexpr std::u16string_view DefaultCustomLists =
    u"January,February,March,April,May,June,July,August,September,October,November,December,;"
    u"Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec,;"
    u"I,II,III,IV,V,VI,VII,VIII,IX,X,XI,XII,;"
    u"Sunday,Monday,Tuesday,Wednesday,Thursday,Friday,Saturday,;"
    u"Sun,Mon,Tue,Wed,Thu,Fri,Sat,;";

} // namespace vorn
