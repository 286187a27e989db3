// A program that runs without a window, and its user at the keyboard, for tests of the shell.
#pragma once

#include "core/workbook.h"
#include "formula/references.h"
#include "shell/application.h"
#include "shell/entry.h"
#include "shell/keys.h"
#include "support/testplatform.h"

#include <string>
#include <string_view>
#include <vector>

namespace vorn {

class Session {
public:
    explicit Session(std::string_view locale = TestLocale) : machine(locale) {}

    // Every key and every character is a message, with its repaint pass behind it.
    void key(Key key, KeyModifiers modifiers = {})
    {
        if (!keyDown(key, modifiers) && (key == KeyEnter || key == KeyBackspace))
            character(static_cast<char16_t>(key));
        endMessage();
    }
    void type(std::u16string_view text)
    {
        for (const char16_t unit : text) {
            character(unit);
            endMessage();
        }
    }
    void endMessage()
    {
        app.showError();
        refreshEditor();
    }

    // "ready", or the mode and the text with a bar at the caret: "editing =A1+|"; what is selected
    // stands in brackets: "editing [abc]".
    std::string editor() const
    {
        const FormulaBar& bar = app.formulaBar;
        if (!bar.editing)
            return "ready";
        std::string text = narrow(bar.line.text());
        const auto start = static_cast<std::size_t>(bar.line.selectionStart());
        const auto end = static_cast<std::size_t>(bar.line.selectionEnd());
        if (start == end)
            text.insert(end, "|");
        else
            text.insert(end, "]").insert(start, "[");
        return (app.pointMode ? "pointing " : "editing ") + text;
    }

    // Cells of the current sheet by their names.
    void select(std::u16string_view first, std::u16string_view second = {})
    {
        const CellRef corner = place(first);
        sheet().selection.select(corner, second.empty() ? corner : place(second));
        refreshEditor();
    }
    void put(std::u16string_view cell, std::u16string_view text)
    {
        const Selection former = sheet().selection;
        select(cell);
        app.enterCell(text);
        sheet().selection = former;
    }
    std::string input(std::u16string_view cell) const
    {
        const CellRef at = place(cell);
        return narrow(sheet().cellInput(at.column, at.row));
    }
    std::string shown(std::u16string_view cell) const
    {
        const CellRef at = place(cell);
        return narrow(sheet().cellText(at.column, at.row));
    }

    // "B2", or "B2:C3 active C3".
    std::string selected() const { return described(sheet().selection); }
    std::string pointed() const { return described(app.pointSelection); }

    // Locks or unlocks a cell, or hides its formula.
    void protect(std::u16string_view cell, bool locked, bool hidden = false)
    {
        const CellRef at = place(cell);
        CellStyle style = workbook->styles[sheet().cellStyle(at.column, at.row)];
        style.set(StyleLocked, locked ? 1 : 0);
        style.set(StyleHidden, hidden ? 1 : 0);
        sheet().setCellStyle(at.column, at.row, workbook->addStyle(style));
    }

    // The texts of the boxes since the last call.
    std::vector<std::string> boxes()
    {
        std::vector<std::string> texts;
        for (const auto& box : machine.userInterface.boxes)
            texts.push_back(narrow(box.text));
        machine.userInterface.boxes.clear();
        return texts;
    }

    Sheet& sheet() const { return *workbook->currentSheet; }

    static CellRef place(std::u16string_view name)
    {
        CellValue value;
        return parseReferenceText(name, value) ? value.cellRef() : CellRef();
    }
    static std::string narrow(std::u16string_view text) { return {text.begin(), text.end()}; }

    TestPlatform machine;
    Application app;

private:
    static std::string described(const Selection& selection)
    {
        const std::string active =
            narrow(cellRefToText(selection.activeColumn, selection.activeRow, RelativeForm));
        if (!selection.range.isMultiCell())
            return active;
        return narrow(rangeToText(selection.range, RelativeForm)) + " active " + active;
    }
};

} // namespace vorn
