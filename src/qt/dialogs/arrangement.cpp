#include "qt/dialogs/arrangement.h"

#include <algorithm>

namespace vorn::qt {

namespace {

// --- The dialogs whose form does not say enough

constexpr int RowControlMax = 6;
constexpr int NoMore = 0;

struct RowData {
    int dialog;
    RowKind kind;
    std::u16string_view caption;
    int controls[RowControlMax]; // the first of them that is 0 ends the row
};

constexpr RowKind Fields = RowKind::Fields, Flow = RowKind::Flow, List = RowKind::List,
                  Note = RowKind::Note, Borders = RowKind::Borders, Sample = RowKind::Sample;

// The rows of a dialog stand together, from top to bottom.
// clang-format off
constexpr RowData Rows[] = {
    {105, Borders, u"",             {1016, 1014, 1015, 1017}},
    {105, Flow,    u"",             {1018}},

    {111, Fields,  u"Name:",        {1019}},
    {111, List,    u"",             {1099}},
    {111, Flow,    u"",             {1011, 1012, 1013, 1014, 1015}},

    {123, Fields,  u"Find what:",   {1019}},
    {123, Fields,  u"",             {1021}},
    {123, Fields,  u"",             {1022}},
    {123, Flow,    u"",             {1023, 1024}},

    {124, Fields,  u"Sort by:",     {1019, 1020}},
    {124, Fields,  u"Then by:",     {1021, 1022}},
    {124, Fields,  u"Then by:",     {1023, 1024}},
    {124, Flow,    u"",             {1058}},
    {124, Flow,    u"",             {1025}},
    {124, Flow,    u"",             {1027}},

    {126, Fields,  u"Reference:",   {1019}},

    {129, Fields,  u"",             {1051}},
    {129, List,    u"",             {1056}},
    {129, Note,    u"",             {1110}},

    {133, Fields,  u"",             {1051}},
    {133, List,    u"",             {1003}},
    {133, Flow,    u"",             {1035, 1032}},

    {134, Fields,  u"Horizontal:",  {1004}},
    {134, Fields,  u"Vertical:",    {1044}},
    {134, Flow,    u"",             {1045}},

    {135, Fields,  u"",             {1005}},
    {135, Fields,  u"",             {1006}},
    {135, Fields,  u"",             {1007}},
    {135, Fields,  u"",             {1008}},
    {135, Flow,    u"",             {1009, 1010, 1011}},
    {135, Sample,  u"",             {}},

    {137, Fields,  u"Positive:",    {1053, 1054}},
    {137, Fields,  u"Negative:",    {1055, 1057}},
    {137, Fields,  u"",             {1019}},
    {137, Flow,    u"",             {1052}},
    {137, Sample,  u"",             {}},

    {138, Fields,  u"Percent:",     {1019}},

    {139, Fields,  u"",             {1057, 1063, 1055}},
    {139, Fields,  u" ",            {1064, 1065}},
    {139, Fields,  u" ",            {1066}},
    {139, Fields,  u"",             {1058, 1053}},
    {139, Sample,  u"",             {}},

    {143, Sample,  u"",             {}},
    {143, Note,    u"",             {1111}},
    {143, Note,    u"",             {1112}},

    {144, Fields,  u"",             {1019}},
    {144, Fields,  u"",             {1025}},
    {144, Fields,  u"",             {1021}},
    {144, Flow,    u"",             {1023, 1024}},

    {155, List,    u"",             {1082}},
    {155, Flow,    u"",             {1035, 1032}},

    {157, Fields,  u"Name:",        {1088}},
    {157, Fields,  u"Refers to:",   {1019}},
    {157, Flow,    u"",             {1035, 1032}},

    {163, Flow,    u"",             {1102}},
    {163, Fields,  u"",             {1103, 1019, 1054}},
    {163, Flow,    u"",             {1105, 1106}},
    {163, Flow,    u"",             {1107}},
    {163, Fields,  u"",             {1097, 1053}},
    {163, Flow,    u"",             {1108, 1109}},
    {163, Fields,  u"",             {1098, 1099}},
};
// clang-format on

constexpr struct {
    int dialog;
    int control;
    EntryLook look;
} EntryLooks[] = {
    {135, 1005, EntryLook::Faces  },
    {135, 1007, EntryLook::Colours},
    {135, 1008, EntryLook::Colours},
};

constexpr int AboutDialog = 143, FindBox = 125, ReplaceBox = 145;

ArrangedRow rowOf(const RowData& data)
{
    ArrangedRow row = {data.kind, data.caption, {}};
    for (int control : data.controls) {
        if (control != NoMore)
            row.controls.push_back(control);
    }
    return row;
}

// --- The others

bool isField(const ControlForm& control)
{
    return control.kind == ControlKind::Edit || control.kind == ControlKind::Choice ||
           control.kind == ControlKind::Combo;
}

bool isBox(const ControlForm& control)
{
    return control.kind == ControlKind::Box || control.kind == ControlKind::TriBox ||
           control.kind == ControlKind::Radio;
}

// Is it a box that tells of what stands behind it?
bool isCaption(const ControlForm& control)
{
    return isBox(control) && control.label.ends_with(u':');
}

bool isTall(const ControlForm& control)
{
    return control.kind == ControlKind::List || control.kind == ControlKind::LabelList ||
           control.kind == ControlKind::TextArea || control.kind == ControlKind::Picture;
}

// Derives the rows of a form from the order and the labels of its controls.
class Derivation {
public:
    void add(const ControlForm& control)
    {
        if (control.kind == ControlKind::Button)
            buttons_.push_back(control.id);
        else if (isTall(control))
            begin(RowKind::List, control);
        else if (control.kind == ControlKind::Label)
            begin(RowKind::Note, control);
        else if (isField(control))
            addField(control);
        else
            addBox(control);
    }

    // Buttons stand at the side of the first list; without one they are left for the foot.
    std::vector<ArrangedRow> finish()
    {
        const auto list = std::find_if(rows_.begin(), rows_.end(), [](const ArrangedRow& row) {
            return row.kind == RowKind::List;
        });
        if (list != rows_.end())
            list->controls.insert(list->controls.end(), buttons_.begin(), buttons_.end());
        return std::move(rows_);
    }

private:
    void begin(RowKind kind, const ControlForm& control)
    {
        rows_.push_back({kind, u"", {control.id}});
        last_ = &control;
    }

    // Whether a row takes one more field: behind a box that is its caption, or behind one other
    // list.
    bool takesField(const ControlForm& control) const
    {
        if (last_ == nullptr || !control.label.empty())
            return false;
        if (isBox(*last_))
            return isCaption(*last_);
        const std::size_t size = rows_.back().controls.size();
        return isField(*last_) && last_->label.empty() && control.kind != ControlKind::Edit &&
               size < FieldsMax + (startsWithBox_ ? 1U : 0U);
    }

    void addField(const ControlForm& control)
    {
        if (!takesField(control)) {
            startsWithBox_ = false;
            return begin(RowKind::Fields, control);
        }
        startsWithBox_ = startsWithBox_ || isCaption(*last_);
        rows_.back().kind = RowKind::Fields;
        rows_.back().controls.push_back(control.id);
        last_ = &control;
    }

    // Radio buttons of one group share a line; every other box has its own.
    void addBox(const ControlForm& control)
    {
        const bool joins = last_ != nullptr && control.kind == ControlKind::Radio &&
                           last_->kind == ControlKind::Radio && !isCaption(*last_) &&
                           !isCaption(control) && (control.traits & ControlStartsGroup) == 0;
        if (!joins) {
            startsWithBox_ = false;
            return begin(RowKind::Flow, control);
        }
        rows_.back().controls.push_back(control.id);
        last_ = &control;
    }

    static constexpr std::size_t FieldsMax = 2;

    std::vector<ArrangedRow> rows_;
    std::vector<int> buttons_;
    const ControlForm* last_ = nullptr;
    bool startsWithBox_ = false;
};

} // namespace

std::vector<ArrangedRow> arrangementOf(int dialog, std::span<const ControlForm> controls)
{
    std::vector<ArrangedRow> rows;
    for (const RowData& data : Rows) {
        if (data.dialog == dialog)
            rows.push_back(rowOf(data));
    }
    if (!rows.empty())
        return rows;
    Derivation derivation;
    for (const ControlForm& control : controls)
        derivation.add(control);
    return derivation.finish();
}

bool hasCancel(int dialog)
{
    return dialog != AboutDialog;
}

std::u16string_view titleOfUntitled(int dialog)
{
    switch (dialog) {
    case FindBox:
    case ReplaceBox:
        return u"Found";
    default:
        return u"Vorn";
    }
}

EntryLook entryLookOf(int dialog, int control)
{
    for (const auto& row : EntryLooks) {
        if (row.dialog == dialog && row.control == control)
            return row.look;
    }
    return EntryLook::Plain;
}

} // namespace vorn::qt
