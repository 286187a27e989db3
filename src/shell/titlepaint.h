// The titles of columns and rows, and the box in their corner that stands for the whole sheet.
// Those of whole columns and rows that are selected look pressed.
//
// Units:  pixels of the client area.
// Shape:  everything is cut to the area of the grid, and to the clip in force.
#pragma once

#include "core/sheet.h"
#include "platform/textmeasure.h"
#include "shell/gridlayout.h"
#include "shell/region.h"

#include <vector>

namespace vorn {

class Canvas;

// Which titles stand where, but for what is selected: if that is as it was, none has to be painted
// again.
struct TitlesLook {
    struct Title {
        int index;
        int edge; // x or y

        bool operator==(const Title&) const = default;
    };

    int zoom = 0;
    std::vector<Title> columns; // and where the last one ends
    std::vector<Title> rows;

    bool operator==(const TitlesLook&) const = default;
};

// The font of titles at a zoom.
FontLook titleFont(int zoom);

// Titles of a sheet in their places.
struct Titles {
    const Sheet& sheet;
    const GridLayout& areas;
    const GridView view;

    Titles(const Sheet& titledSheet, const GridLayout& layoutAreas)
        : sheet(titledSheet), areas(layoutAreas), view(layoutAreas.cellArea, titledSheet)
    {
    }
};

TitlesLook titlesLook(const Titles& titles);

// All that meet `area`, as they look with a range selected.
void paintTitles(Canvas& canvas, const Titles& titles, const RangeRef& selected, const Rect& area);

// Where those stand that look otherwise with the one range selected than with the other.
Region titleChanges(const Titles& titles, const RangeRef& selected, const RangeRef& before);

} // namespace vorn
