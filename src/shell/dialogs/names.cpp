#include "shell/dialogs/names.h"

#include "core/workbook.h"
#include "shell/dialog.h"
#include "shell/dialogs/ask.h"

#include <algorithm>
#include <iterator>

namespace vorn {

namespace {

constexpr int Names = 1029;

// Of the codes from 1 on.
constexpr std::u16string_view BuiltInNames[] = {
    u"Auto_Open", u"Auto_Close",    u"Extract",         u"Database",
    u"Criteria",  u"Print_Area",    u"Print_Titles",    u"Recorder",
    u"Data_Form", u"Auto_Activate", u"Auto_Deactivate", u"Sheet_Title",
};

bool sortsBefore(const std::u16string& a, const std::u16string& b)
{
    return compareTexts(a.c_str(), b.c_str(), IgnoreCase) < 0;
}

class InsertNameDialog : public DialogModel {
public:
    InsertNameDialog() : DialogModel(156) {}

    std::u16string chosen;

protected:
    // A name whose definition was deleted is offered as well: whoever writes it may define it
    // later.
    void opened() override
    {
        std::vector<std::u16string> names;
        for (const DefinedName& name : workbook->names)
            names.push_back(shownName(name.name));
        std::stable_sort(names.begin(), names.end(), sortsBefore);
        setEntries(Names, std::move(names));
    }

    void pressed(int button) override
    {
        if (selected(Names) != NoEntry)
            chosen = chosenEntry(Names);
        close(button);
    }
};

} // namespace

std::u16string shownName(std::u16string_view name)
{
    if (!name.empty() && name.front() >= 1 && name.front() <= std::size(BuiltInNames))
        return std::u16string(BuiltInNames[name.front() - 1]);
    return std::u16string(name);
}

std::u16string askName()
{
    InsertNameDialog dialog;
    runDialog(dialog);
    return dialog.chosen;
}

} // namespace vorn
