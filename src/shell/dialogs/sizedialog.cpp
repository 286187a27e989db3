#include "core/input.h"
#include "core/workbook.h"
#include "editing/rowcolumn.h"
#include "shell/commandhandlers.h"
#include "shell/dialog.h"

namespace vorn {

namespace {

constexpr int Decimals = 2;

// Asks for a height or a width, in the units that users know.
class SizeDialog : public DialogModel {
public:
    SizeDialog(std::u16string_view title, double size) : DialogModel(146)
    {
        setTitle(title);
        shown_ = numberText(size, Decimals, KeepZeros);
    }

    // Was something typed? What is shown is rounded, and no answer.
    bool isTyped() const { return find(Value)->text != shown_; }
    double size() const { return size_; }

protected:
    enum { Value = 1019 };

    void opened() override
    {
        setText(Value, shown_);
        setFocus(Value);
    }

    // What is no number closes nothing: taken for 0 it would hide what it should size.
    void pressed(int button) override
    {
        if (textToNumber(text(Value), size_))
            close(button);
        else
            setFocus(Value);
    }

private:
    std::u16string shown_;
    double size_ = 0;
};

} // namespace

void rowHeightCommand()
{
    const Sheet& sheet = *workbook->currentSheet;
    const int row = sheet.selection.activeRow;
    const int height = sheet.visibleRowHeight(row);
    SizeDialog dialog(u"Row height", pointsOfHeight(height));
    if (runDialog(dialog))
        setRowHeights(row, dialog.isTyped() ? heightOfPoints(dialog.size()) : height,
                      SizeSelection);
}

void columnWidthCommand()
{
    const Sheet& sheet = *workbook->currentSheet;
    const int column = sheet.selection.activeColumn;
    const int width = sheet.columns.visibleColumnWidth(column);
    SizeDialog dialog(u"Column width", charactersOfWidth(width));
    if (runDialog(dialog))
        setColumnWidths(column, dialog.isTyped() ? widthOfCharacters(dialog.size()) : width,
                        SizeSelection);
}

} // namespace vorn
