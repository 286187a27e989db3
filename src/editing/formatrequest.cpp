#include "editing/formatrequest.h"

#include "core/style.h"

#include <iterator>

namespace vorn {

namespace {

// The list begins with four colours that the palette has at other places.
constexpr int FirstColours[] = {8, 9, 22, 23};
constexpr int RegularOffset = 6;

} // namespace

int colourOfEntry(int entry)
{
    return entry >= 0 && entry < std::ssize(FirstColours) ? FirstColours[entry]
                                                          : entry + RegularOffset;
}

int entryOfColour(int colour)
{
    for (int entry = 0; entry < ColourEntryCount; ++entry) {
        if (colourOfEntry(entry) == colour)
            return entry;
    }
    return FormatMixed;
}

int entryOfTextColour(int colour)
{
    return colour == ColourAutomatic ? ColourEntryBlack : entryOfColour(colour);
}

int entryOfBackColour(int colour)
{
    return colour == ColourWindowText ? ColourEntryWhite : entryOfColour(colour);
}

} // namespace vorn
