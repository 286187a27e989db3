#include "core/workbook.h"
#include "shell/dialogs/formatpages.h"
#include "shell/dialogs/newformat.h"

#include <algorithm>

namespace vorn {

namespace {

enum { Category = 1051, Formats = 1003, Delete = 1032, New = 1035 };

// What a deletion makes of the index of a format.
void moveFormat(int& format, int deleted)
{
    if (format == deleted)
        format = FormatIndexGeneral;
    else if (format > deleted)
        --format;
}

} // namespace

FormatPage::FormatPage(FormatRequest& before, FormatRequest& request)
    : DialogModel(133), before_(before), request_(request)
{
}

void FormatPage::opened()
{
    setEntries(Category, {u"Number", u"Date & Time"});
    select(Category, static_cast<int>(formatListOf(request_.numberFormat)));
    fill(request_.numberFormat);
}

void FormatPage::changed(int control)
{
    if (control == Category)
        fill(request_.numberFormat);
    else
        showDeletable();
}

void FormatPage::pressed(int button)
{
    switch (button) {
    case New:
        return makeFormat();
    case Delete:
        return removeFormat();
    default:
        if (chosenFormat() != NoFormat)
            request_.numberFormat = chosenFormat();
        return close(button);
    }
}

FormatList FormatPage::list() const
{
    return static_cast<FormatList>(selected(Category));
}

int FormatPage::chosenFormat() const
{
    const int entry = selected(Formats);
    return entry == NoEntry ? NoFormat : choices_[static_cast<std::size_t>(entry)].format;
}

// Shows the list that the category names, with this format chosen if it is in there.
void FormatPage::fill(int format)
{
    choices_ = formatChoices(list());
    std::vector<std::u16string> entries;
    int chosen = NoEntry;
    for (const FormatChoice& choice : choices_) {
        if (choice.format == format)
            chosen = static_cast<int>(entries.size());
        entries.push_back(choice.text);
    }
    setEntries(Formats, std::move(entries));
    select(Formats, chosen);
    showDeletable();
}

void FormatPage::showDeletable()
{
    enable(Delete, workbook->isUserFormat(chosenFormat()));
}

void FormatPage::makeFormat()
{
    const bool number = list() == FormatList::Number;
    const int made = number ? askNumberFormat(chosenFormat()) : askDateFormat(chosenFormat());
    if (made == NoFormat)
        return;
    request_.numberFormat = made;
    fill(made);
}

void FormatPage::removeFormat()
{
    const int format = chosenFormat();
    if (!deleteFormat(format))
        return;
    moveFormat(before_.numberFormat, format);
    request_.numberFormat = formatAfterDeletion(list());
    fill(request_.numberFormat);
}

} // namespace vorn
