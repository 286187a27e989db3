#include "files/csv.h"

#include "core/error.h"
#include "core/input.h"
#include "core/workbook.h"
#include "files/stream.h"
#include "numfmt/locale.h"

#include <algorithm>
#include <string_view>

namespace vorn {

namespace {

constexpr std::size_t FieldMax = 1000;
constexpr char16_t LineFeed = u'\n';
constexpr char16_t Blank = u' '; // everything below is a control character
constexpr char16_t Quote = u'"';
constexpr char16_t FormulaSign = u'=';

class TextImport {
public:
    explicit TextImport(const TransferContext& context)
        : stream_(*context.stream), sheet_(*workbook->currentSheet), separator_(localeInfo.list),
          firstColumn_(context.anchorColumn), row_(context.anchorRow)
    {
    }

    void run()
    {
        for (bool more = true; more && row_ <= LastRow;) {
            const char16_t end = readField();
            addField();
            if (end == 0 || end == LineFeed || memoryIsShort())
                storeRow();
            length_ = 0;
            previousWasQuote_ = false;
            more = end != 0 && !memoryIsShort();
        }
    }

private:
    // Collects a field and answers the character that ended it.
    char16_t readField()
    {
        for (;;) {
            takePlainChars();
            const char16_t unit = stream_.ReadChar();
            if (endsField(unit))
                return unit;
            takeChar(unit);
        }
    }

    // Takes what is at hand up to the next character that means something. Nearly all go this way.
    void takePlainChars()
    {
        const std::u16string_view atHand = stream_.charsAtHand();
        if (atHand.empty() || (length_ == 0 && atHand.front() == FormulaSign))
            return;
        const std::size_t most = std::min(atHand.size(), FieldMax - length_);
        const char16_t separator = separator_;
        std::size_t count = 0;
        for (; count < most; ++count) {
            const char16_t unit = atHand[count];
            if (unit <= Blank || unit == Quote || unit == separator)
                break;
            field_[length_ + count] = unit;
        }
        if (count == 0)
            return;
        length_ += count;
        previousWasQuote_ = false;
        stream_.skipChars(count);
    }

    // A line feed ends a field even in quotes.
    bool endsField(char16_t unit) const
    {
        return unit == 0 || unit == LineFeed || (unit == separator_ && !inQuotes_);
    }

    void takeChar(char16_t unit)
    {
        if (unit == Quote) {
            if (previousWasQuote_ && !inQuotes_)
                keep(unit);
            inQuotes_ = !inQuotes_;
        } else if (unit == Blank) {
            if (length_ != 0 || inQuotes_)
                keep(unit);
        } else if (unit > Blank) {
            // Without its apostrophe a formula would be compiled.
            if (unit == FormulaSign && length_ == 0)
                keep(u'\'');
            keep(unit);
        }
        previousWasQuote_ = unit == Quote;
    }

    void keep(char16_t unit)
    {
        if (length_ < FieldMax)
            field_[length_++] = unit;
    }

    void addField()
    {
        const int column = firstColumn_ + fields_;
        if (column > LastColumn)
            return;
        const CellPosition position{static_cast<std::uint16_t>(row_),
                                    static_cast<std::uint16_t>(column),
                                    static_cast<std::uint16_t>(sheet_.index)};
        Cell& cell = rowCells_[fields_++];
        cell = {};
        int format = NoFormatSuggestion;
        parseCellInput(cell.value, {field_, length_}, position, &format);
        // A percent is a fraction, and only its format shows it as it was written.
        if (cell.value.tag == TagNumber && format == FormatIndexPercent)
            cell.style = percentStyle(column);
    }

    // From the last field to the first, because the row then gets its length at once.
    void storeRow()
    {
        while (fields_ > 0) {
            Cell& cell = rowCells_[--fields_];
            sheet_.setCell(firstColumn_ + fields_, row_, cell);
            if (memoryIsShort())
                releaseValue(cell.value);
        }
        ++row_;
        inQuotes_ = false;
    }

    bool memoryIsShort() const { return errorState.code == ErrorMemory; }

    // The style that the present cell has, with percents.
    std::int16_t percentStyle(int column)
    {
        const int present = sheet_.cellStyle(column, row_);
        if (present != plainStyle_) {
            CellStyle style = workbook->styles[present];
            style.set(StyleFormat, FormatIndexPercent);
            plainStyle_ = present;
            percentStyle_ = workbook->addStyle(style);
        }
        return static_cast<std::int16_t>(percentStyle_);
    }

    Stream& stream_;
    Sheet& sheet_;
    const char16_t separator_;
    const int firstColumn_;
    int row_;
    int fields_ = 0; // of this row, as many as the sheet has columns for
    Cell rowCells_[ColumnCount];
    bool inQuotes_ = false;
    bool previousWasQuote_ = false;
    std::size_t length_ = 0;
    char16_t field_[FieldMax];
    int plainStyle_ = -1;
    int percentStyle_ = -1;
};

} // namespace

void ImportText(const TransferContext& context)
{
    if (!context.stream->beginText(workbook->codePage))
        return;
    TextImport(context).run();
    context.stream->endText();
}

} // namespace vorn
