// The tokens of a text as a test writes them down, separated by blanks:
//   2.5           a number               date:36526     a date or time
//   true          a logical              error:42       an error literal
//   + - * / & = ! ^ % > < >= <= <> ( )   operators      ; the list separator
//   cell:0002/c001 range:0000/c000:0002/c001            row and column words of the corners
//   call:37 sheet:0:2 name:0 variable:1  words          ?word a word that means nothing
//   if then else end while do            keywords       "text" a text literal
//   .             the end                !24            a failure and its code, which ends the list
#pragma once

#include "core/reference.h"

#include <string>
#include <string_view>

namespace vorn {

// Scans the whole text and takes the sticky error away again.
std::string tokenText(std::u16string_view text, CellPosition base = {});

} // namespace vorn
