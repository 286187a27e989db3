// What lies at a place of the main window: what a tap there is for, and how a mouse shows it.
//
// Units:  pixels of the client area; columns and rows from 0, within the sheet.
#pragma once

#include "platform/geometry.h"

namespace vorn {

// A finger is wider than a pen.
enum class Pointer { Pen, Finger };

enum class PlaceKind {
    Nothing,
    Chrome,      // see shell/chrome.h
    Editor,      // the edit control
    Corner,      // the box that selects everything
    ColumnTitle, // `column`
    RowTitle,    // `row`
    ColumnEdge,  // the right edge of `column`
    RowEdge,     // the lower edge of `row`
    FillHandle,  // over the cell `column`, `row`
    Cell
};

struct Place {
    PlaceKind kind = PlaceKind::Nothing;
    int column = 0;
    int row = 0;

    bool operator==(const Place&) const = default;
};

// Edges and the handle can be taken only where they can be moved: a protected sheet has none. Where
// columns are hidden, what lies left of the boundary takes the column that is seen there, and what
// lies right of it the last hidden one, which so can be drawn open; rows likewise.
//
// A finger hits edges and the handle from further away, but leaves the middle of titles and cells
// to themselves.
Place placeAt(int x, int y, Pointer pointer = Pointer::Pen);

// The handle of the selection; false if it is out of view, or there is none while pointing.
bool handleRect(Rect& out);

enum class PointerShape {
    Arrow,
    Cross, // over the cells
    ColumnSize,
    RowSize,
    Fill,
    Splitter,
    Text
};

// While something is dragged, its shape, wherever the pen is.
PointerShape pointerShapeAt(int x, int y);

} // namespace vorn
