#include "functions/table.h"
#include "shell/application.h"
#include "shell/dialog.h"
#include "shell/dialogs/ask.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr int Category = 1051, Functions = 1056, Help = 1110;
constexpr std::size_t HelpTextMax = 300;

constexpr std::u16string_view HelpAnchors[CategoryCount] = {
    u"functions",  u"functions", u"fn_math_trig",   u"fn_statistical", u"fn_financial", u"fn_date",
    u"fn_logical", u"fn_text",   u"fn_information", u"fn_database",    u"fn_macro",
};

std::u16string functionText(int row)
{
    const FunctionRow& function = FunctionTable[row];
    std::u16string text(function.name);
    text += u'(';
    text += function.usage;
    text += u')';
    return text;
}

bool sortsBefore(int rowA, int rowB)
{
    return compareTexts(functionText(rowA).c_str(), functionText(rowB).c_str(), IgnoreCase) < 0;
}

class InsertFunctionDialog : public DialogModel {
public:
    explicit InsertFunctionDialog(FunctionOffer offer) : DialogModel(129), offer_(offer) {}

    std::u16string_view helpAnchor() const override { return HelpAnchors[category_]; }

    int chosen = NoFunction;

protected:
    // In tasks the functions of tasks take the place of those that were used last.
    void opened() override
    {
        std::vector<std::u16string> titles;
        for (int category = CategoryAll; category <= CategoryDatabase; ++category)
            titles.emplace_back(categoryTitle(categoryOfEntry(category)));
        setEntries(Category, std::move(titles));
        select(Category, CategoryAll);
        showCategory();
    }

    void changed(int control) override
    {
        if (control == Category)
            showCategory();
        if (control == Functions)
            setText(Help, FunctionTable[chosenRow()].help.substr(0, HelpTextMax));
    }

    void pressed(int button) override
    {
        if (selected(Functions) != NoEntry)
            chosen = chosenRow();
        close(button);
    }

private:
    int categoryOfEntry(int entry) const
    {
        return entry == CategoryRecent && offer_ == FunctionsOfTasks ? int{CategoryTask} : entry;
    }

    int chosenRow() const { return rows_[static_cast<std::size_t>(selected(Functions))]; }

    bool isOffered(const FunctionRow& function) const
    {
        if (function.name.empty())
            return false;
        if (category_ != CategoryAll)
            return function.category == category_;
        return function.category != CategoryTask || offer_ == FunctionsOfTasks;
    }

    void findRows()
    {
        rows_.clear();
        if (category_ == CategoryRecent) {
            for (int row : application->usedFunctions) {
                if (row >= 0 && row < FunctionRowCount && !FunctionTable[row].name.empty())
                    rows_.push_back(row);
            }
            return;
        }
        for (int row = 0; row < FunctionRowCount; ++row) {
            if (isOffered(FunctionTable[row]))
                rows_.push_back(row);
        }
        std::sort(rows_.begin(), rows_.end(), sortsBefore);
    }

    void showCategory()
    {
        category_ = categoryOfEntry(selected(Category));
        findRows();
        std::vector<std::u16string> texts;
        for (int row : rows_)
            texts.push_back(functionText(row));
        setEntries(Functions, std::move(texts));
        setText(Help, u"");
    }

    FunctionOffer offer_;
    int category_ = CategoryAll;
    std::vector<int> rows_; // of the functions in the list
};

} // namespace

int askFunction(FunctionOffer offer)
{
    InsertFunctionDialog dialog(offer);
    runDialog(dialog);
    return dialog.chosen;
}

} // namespace vorn
