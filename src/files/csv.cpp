#include "files/csv.h"

#include "core/error.h"
#include "core/input.h"
#include "core/workbook.h"
#include "files/stream.h"
#include "numfmt/locale.h"

namespace vorn {

namespace {

constexpr int FieldMax = 1000;
constexpr char16_t LineFeed = u'\n';
constexpr char16_t FirstPrintable = u' ';

class TextImport {
public:
    explicit TextImport(const TransferContext& context)
        : stream_(*context.stream), sheet_(*workbook->currentSheet), separator_(localeInfo.list),
          firstColumn_(context.anchorColumn), column_(context.anchorColumn), row_(context.anchorRow)
    {
    }

    void run()
    {
        char16_t end = 0;
        do {
            end = readField();
            if (!storeField())
                return;
            startField(end);
        } while (end != 0 && row_ <= LastRow);
    }

private:
    // Collects a field and answers the character that ended it.
    char16_t readField()
    {
        for (;;) {
            const char16_t unit = stream_.ReadChar();
            if (unit > FirstPrintable && unit != u'"' && unit != separator_) {
                // Without its apostrophe a formula would be compiled.
                if (unit == u'=' && length_ == 0)
                    keep(u'\'');
                keep(unit);
                previousWasQuote_ = false;
            } else if (endsField(unit)) {
                return unit;
            } else {
                takeSpecial(unit);
            }
        }
    }

    // A line feed ends a field even in quotes.
    bool endsField(char16_t unit) const
    {
        return unit == 0 || unit == LineFeed || (unit == separator_ && !inQuotes_);
    }

    void takeSpecial(char16_t unit)
    {
        if (unit == u'"') {
            if (previousWasQuote_ && !inQuotes_)
                keep(unit);
            inQuotes_ = !inQuotes_;
        } else if (unit == u' ') {
            if (length_ != 0 || inQuotes_)
                keep(unit);
        } else if (unit > FirstPrintable) {
            keep(unit);
        }
        previousWasQuote_ = unit == u'"';
    }

    void keep(char16_t unit)
    {
        if (length_ < FieldMax)
            field_[length_++] = unit;
    }

    bool storeField()
    {
        if (column_ > LastColumn)
            return true;
        Cell cell;
        int format = NoFormatSuggestion;
        const CellPosition position{static_cast<std::uint16_t>(row_),
                                    static_cast<std::uint16_t>(column_),
                                    static_cast<std::uint16_t>(sheet_.index)};
        parseCellInput(cell.value, {field_, static_cast<std::size_t>(length_)}, position, &format);
        // A percent is a fraction, and only its format shows it as it was written.
        if (cell.value.tag == TagNumber && format == FormatIndexPercent)
            cell.style = percentStyle();
        sheet_.setCell(column_, row_, cell);
        if (errorState.code != ErrorMemory)
            return true;
        releaseValue(cell.value);
        return false;
    }

    // The style that the present cell has, with percents.
    std::int16_t percentStyle()
    {
        const int present = sheet_.cellStyle(column_, row_);
        if (present != plainStyle_) {
            CellStyle style = workbook->styles[present];
            style.set(StyleFormat, FormatIndexPercent);
            plainStyle_ = present;
            percentStyle_ = workbook->addStyle(style);
        }
        return static_cast<std::int16_t>(percentStyle_);
    }

    void startField(char16_t end)
    {
        if (end == LineFeed) {
            ++row_;
            column_ = firstColumn_;
            inQuotes_ = false;
        } else {
            ++column_;
        }
        length_ = 0;
        previousWasQuote_ = false;
    }

    Stream& stream_;
    Sheet& sheet_;
    const char16_t separator_;
    const int firstColumn_;
    int column_;
    int row_;
    bool inQuotes_ = false;
    bool previousWasQuote_ = false;
    int plainStyle_ = -1;
    int percentStyle_ = -1;
    int length_ = 0;
    char16_t field_[FieldMax];
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
