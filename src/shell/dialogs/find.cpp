#include "editing/find.h"

#include "core/error.h"
#include "core/workbook.h"
#include "shell/commandhandlers.h"
#include "shell/dialog.h"

namespace vorn {

namespace {

// --- The dialogs that ask what to look for

// What both of them have.
class SearchDialog : public DialogModel {
public:
    explicit SearchDialog(int number) : DialogModel(number) {}

protected:
    enum { Text = 1019, Order = 1021, Entire = 1023, Case = 1024 };

    void opened() override
    {
        setText(Text, findSettings.findText);
        setCaret(Text, {0, static_cast<int>(findSettings.findText.size())});
        setFocus(Text);
        select(Order, findSettings.byColumns ? 1 : 0);
        showBox(Entire, findSettings.entireCells);
        showBox(Case, findSettings.caseSensitive);
    }

    void store()
    {
        findSettings.findText = text(Text);
        findSettings.byColumns = selected(Order) == 1;
        findSettings.entireCells = isOn(Entire);
        findSettings.caseSensitive = isOn(Case);
    }
};

class FindDialog : public SearchDialog {
public:
    FindDialog() : SearchDialog(123) {}

protected:
    enum { Place = 1022 };

    void opened() override
    {
        SearchDialog::opened();
        select(Place, findSettings.inValues ? 0 : 1);
    }

    void pressed(int button) override
    {
        store();
        findSettings.inValues = selected(Place) == 0;
        close(button);
    }
};

class ReplaceDialog : public SearchDialog {
public:
    ReplaceDialog() : SearchDialog(144) {}

protected:
    enum { NewText = 1025, All = 1035 };

    void opened() override
    {
        SearchDialog::opened();
        setText(NewText, findSettings.replaceText);
    }

    void pressed(int button) override
    {
        store();
        findSettings.replaceText = text(NewText);
        findSettings.replaceAction = button == All ? ActionReplaceAll : ActionFindNext;
        close(button);
    }
};

// --- The boxes that stay in sight while the user looks at a hit

class FindBox : public DialogModel {
public:
    FindBox() : DialogModel(125) { place = &findSettings.findBoxRect; }
};

class ReplaceBox : public DialogModel {
public:
    ReplaceBox() : DialogModel(145) { place = &findSettings.replaceBoxRect; }

protected:
    enum { This = 1074, All = 1035 };

    void pressed(int button) override
    {
        findSettings.replaceAction = button == All    ? ActionReplaceAll
                                     : button == This ? ActionReplace
                                                      : ActionFindNext;
        close(button);
    }
};

template <typename Dialog>
bool ask()
{
    Dialog dialog;
    return runDialog(dialog);
}

// --- The walk of Replace

struct Hit {
    const Sheet* sheet = nullptr;
    int column = 0;
    int row = 0;

    bool operator==(const Hit&) const = default;

    bool isBehind(const Hit& other) const
    {
        if (findSettings.byColumns)
            return column != other.column ? column > other.column : row > other.row;
        return row != other.row ? row > other.row : column > other.column;
    }
};

Hit hitAtCursor()
{
    Sheet& sheet = *workbook->currentSheet;
    return {&sheet, sheet.selection.activeColumn, sheet.selection.activeRow};
}

// The walk ends when it is back at its first hit. But that cell may have become one that is no hit
// any more, while others stay what they are however often they are replaced: so that nobody waits
// for ever, replacing all ends as well after a round that changed nothing, and after many rounds.
class ReplaceWalk {
public:
    bool isOver(const Hit& hit)
    {
        if (first_.sheet == nullptr)
            first_ = hit;
        else if (hit == first_ || (!hit.isBehind(last_) && !beginRound()))
            return true;
        last_ = hit;
        return false;
    }

    // A formula that does not compile any more is told of, and the walk goes on.
    void replace(const Hit& hit)
    {
        const std::u16string before = hit.sheet->cellInput(hit.column, hit.row);
        replaceInCell();
        showError();
        changed_ = changed_ || hit.sheet->cellInput(hit.column, hit.row) != before;
    }

private:
    bool beginRound()
    {
        const bool useful = changed_ && ++rounds_ < RoundsMax;
        changed_ = false;
        return useful || findSettings.replaceAction != ActionReplaceAll;
    }

    static constexpr int RoundsMax = 1024;

    Hit first_;
    Hit last_;
    bool changed_ = true; // since the round began; nobody saw the beginning of the first
    int rounds_ = 0;
};

} // namespace

void findCommand()
{
    setSearchRange();
    if (!ask<FindDialog>())
        return;
    bool found = findNext(FindInActiveCell);
    while (found && ask<FindBox>())
        found = findNext(FindBehindActiveCell);
}

void replaceCommand()
{
    findSettings.inValues = false;
    findSettings.replaceAction = ActionFindNext;
    setSearchRange();
    if (!ask<ReplaceDialog>())
        return;
    ReplaceWalk walk;
    bool found = findNext(FindInActiveCell);
    while (found && (findSettings.replaceAction == ActionReplaceAll || ask<ReplaceBox>())) {
        const Hit hit = hitAtCursor();
        if (walk.isOver(hit))
            return;
        if (findSettings.replaceAction != ActionFindNext)
            walk.replace(hit);
        found = findNext(FindBehindActiveCell);
    }
}

} // namespace vorn
