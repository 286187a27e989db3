// An Application whose dialogs are answered by hand, and a look at what became of its cells.
#pragma once

#include "core/workbook.h"
#include "editing/undo.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/dialog.h"
#include "support/testplatform.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace vorn {

using Texts = std::vector<std::u16string>;

// The pages of Format Cells.
enum { FormatTab = 133, AlignmentTab = 134, FontTab = 135, BorderTab = 105, ProtectTab = 161 };

class FormatDialogTest : public testing::Test {
protected:
    static Sheet& sheet() { return *workbook->currentSheet; }

    static void select(int column, int row, int columns = 1, int rows = 1)
    {
        RangeRef range;
        range.set(column, row, columns, rows);
        sheet().selection.select(range.first(), range.last());
    }
    static const CellStyle& styleAt(int column, int row)
    {
        return workbook->styles[sheet().cellStyle(column, row)];
    }
    static const FontRecord& fontAt(int column, int row)
    {
        return workbook->fonts[styleAt(column, row).font()];
    }
    static void putStyle(int column, int row, StyleField field, int value)
    {
        CellStyle style = defaultStyle();
        style.set(field, value);
        sheet().setCellStyle(column, row, workbook->addStyle(style));
    }

    // A page of an open sheet.
    static DialogModel& page(DialogModel& dialog, int number)
    {
        for (DialogModel* candidate : dialog.pages()) {
            if (candidate->number() == number)
                return *candidate;
        }
        ADD_FAILURE() << "no page " << number;
        return dialog;
    }
    static const Control& control(const DialogModel& dialog, int number)
    {
        return *dialog.find(number);
    }
    static std::u16string chosen(const DialogModel& dialog, int number)
    {
        const Control& list = control(dialog, number);
        return list.selected == NoEntry ? u"none"
                                        : list.entries[static_cast<std::size_t>(list.selected)];
    }
    static bool chooseText(DialogModel& dialog, int number, std::u16string_view text)
    {
        return dialog.choose(number, control(dialog, number).entryOf(text));
    }

    // Runs Format Cells; `work` gets the open sheet, and leaves it open for OK.
    void formatCells(const std::function<void(DialogModel&)>& work)
    {
        answer(work);
        formatCellsCommand();
    }
    void answer(const std::function<void(DialogModel&)>& work)
    {
        machine.userInterface.dialogUser = [this, work](DialogModel& dialog) {
            if (next_) {
                std::exchange(next_, nullptr)(dialog);
                return;
            }
            work(dialog);
            dialog.press(ButtonOk);
        };
    }

    // Answers the next dialog that opens while another is open.
    void answerNext(const std::function<void(DialogModel&)>& work) { next_ = work; }

    TestPlatform machine;
    Application application;

private:
    std::function<void(DialogModel&)> next_;
};

} // namespace vorn
