// A program whose user answers dialogs as a test says.
#pragma once

#include "core/input.h"
#include "core/workbook.h"
#include "formula/references.h"
#include "shell/application.h"
#include "shell/dialog.h"
#include "support/testplatform.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>

namespace vorn {

class DialogTest : public testing::Test {
protected:
    using Answer = std::function<void(DialogModel&)>;

    // Says how the next dialogs are answered, in turn. One that finds no answer is cancelled.
    template <typename... Some>
    void willAnswer(Some... some)
    {
        answers.clear();
        (answers.emplace_back(std::move(some)), ...);
    }

    DialogTest()
    {
        machine.userInterface.dialogUser = [this](DialogModel& dialog) {
            opened.push_back(dialog.number());
            if (answers.empty())
                return;
            const Answer answer = std::move(answers.front());
            answers.pop_front();
            answer(dialog);
        };
    }

    static Answer press(int button)
    {
        return [button](DialogModel& dialog) { EXPECT_TRUE(dialog.press(button)) << button; };
    }

    // "B2" or "Sheet2!B2".
    static void put(std::u16string_view place, std::u16string_view text)
    {
        const CellValue reference = referenceTo(place);
        Sheet* former = workbook->currentSheet;
        if (reference.firstSheet != NoFirstSheet)
            workbook->setCurrentSheet(workbook->sheetAt(reference.firstSheet));
        EXPECT_TRUE(storeCellInput(reference.cellRef().column, reference.cellRef().row, text));
        workbook->setCurrentSheet(former);
    }

    // Selects "B2" or "B2:C4"; the first corner is the active cell.
    static void selectCells(std::u16string_view place)
    {
        const CellValue reference = referenceTo(place);
        const bool oneCell = reference.tag == TagSheetCellRef;
        const CellRef first = oneCell ? reference.cellRef() : reference.rangeRef().first();
        workbook->currentSheet->selection.select(first,
                                                 oneCell ? first : reference.rangeRef().last());
    }

    static std::u16string input(std::u16string_view place)
    {
        const CellRef cell = referenceTo(place).cellRef();
        return workbook->currentSheet->cellInput(cell.column, cell.row);
    }

    static std::u16string selection()
    {
        return rangeToText(workbook->currentSheet->selection.range, RelativeForm);
    }

    static std::u16string activeCell()
    {
        const Selection& selected = workbook->currentSheet->selection;
        return cellRefToText(selected.activeColumn, selected.activeRow, RelativeForm);
    }

    // The texts of the boxes that were shown, the last one last.
    std::vector<std::u16string> boxes() const
    {
        std::vector<std::u16string> texts;
        for (const auto& box : machine.userInterface.boxes)
            texts.push_back(box.text);
        return texts;
    }

    TestPlatform machine;
    Application app;
    std::deque<Answer> answers;
    std::vector<int> opened; // numbers of the dialogs

private:
    static CellValue referenceTo(std::u16string_view place)
    {
        CellValue reference;
        EXPECT_TRUE(parseReferenceText(place, reference));
        return reference;
    }
};

using Texts = std::vector<std::u16string>;

} // namespace vorn
