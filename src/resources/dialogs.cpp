#include "resources/dialogs.h"

namespace vorn {

namespace {

// --- What the forms are written with

constexpr ControlForm label(int id)
{
    return {id, ControlKind::Label, u""};
}

constexpr ControlForm edit(int id, std::u16string_view text, int textMax = 0)
{
    return {id, ControlKind::Edit, text, u"", textMax};
}

constexpr ControlForm textArea(int id)
{
    return {id, ControlKind::TextArea, u""};
}

constexpr ControlForm box(int id, std::u16string_view text)
{
    return {id, ControlKind::Box, text};
}

constexpr ControlForm triBox(int id, std::u16string_view text)
{
    return {id, ControlKind::TriBox, text};
}

constexpr ControlForm radio(int id, std::u16string_view text)
{
    return {id, ControlKind::Radio, text};
}

constexpr ControlForm firstRadio(int id, std::u16string_view text)
{
    return {id, ControlKind::Radio, text, u"", 0, ControlStartsGroup};
}

constexpr ControlForm list(int id)
{
    return {id, ControlKind::List, u""};
}

constexpr ControlForm pickList(int id)
{
    return {id, ControlKind::List, u"", u"", 0, ControlDoubleTapOk};
}

constexpr ControlForm choice(int id, std::u16string_view text, std::u16string_view entries = u"")
{
    return {id, ControlKind::Choice, text, entries};
}

constexpr ControlForm combo(int id)
{
    return {id, ControlKind::Combo, u""};
}

constexpr ControlForm labelList(int id, int textMax)
{
    return {id, ControlKind::LabelList, u"", u"", textMax};
}

constexpr ControlForm button(int id, std::u16string_view text)
{
    return {id, ControlKind::Button, text};
}

constexpr ControlForm disabledButton(int id, std::u16string_view text)
{
    return {id, ControlKind::Button, text, u"", 0, ControlDisabled};
}

constexpr ControlForm picture(int id)
{
    return {id, ControlKind::Picture, u""};
}

// --- The forms, by number of dialog

// Lists that more than one dialog has.
constexpr std::u16string_view SearchOrders = u"Lines|Columns";
constexpr std::u16string_view SortOrders = u"Ascending|Descending";
constexpr std::u16string_view Comparisons =
    u"=|<>|>|>=|<|<=|begins with|not begin|ends with|not end|contains|not contain";
constexpr std::u16string_view OptionalComparisons =
    u" |=|<>|>|>=|<|<=|begins with|not begin|ends with|not end|contains|not contain";

constexpr int SearchTextMax = 200;
constexpr int TaskNameMax = 100;
constexpr int SheetLabelMax = 39;

constexpr ControlForm Border[] = {
    triBox(1014, u"Left"),   triBox(1015, u"Right"), triBox(1016, u"Top"),
    triBox(1017, u"Bottom"), box(1018, u"Outline"),
};

constexpr ControlForm DefineTask[] = {
    edit(1019, u"", TaskNameMax), textArea(1099),     button(1011, u"fn()"), button(1012, u"if"),
    button(1013, u"while"),       button(1014, u"("), button(1015, u")"),
};

constexpr ControlForm InputBox[] = {
    edit(1014, u""),
};

constexpr ControlForm ListBox[] = {
    list(1029),
};

constexpr ControlForm Find[] = {
    edit(1019, u"", SearchTextMax),
    button(1020, u"Find"),
    choice(1021, u"Search by:", SearchOrders),
    choice(1022, u"Look in:", u"Values|Formulas"),
    box(1023, u"Entire cells"),
    box(1024, u"Case sensitive"),
};

constexpr ControlForm Sort[] = {
    choice(1019, u""),        choice(1020, u"", SortOrders),
    choice(1021, u""),        choice(1022, u"", SortOrders),
    choice(1023, u""),        choice(1024, u"", SortOrders),
    box(1058, u"Header row"), box(1025, u"Case sensitive"),
    box(1027, u"Sort rows"),
};

constexpr ControlForm FindAgain[] = {
    button(1020, u"Find next"),
};

constexpr ControlForm GoTo[] = {
    edit(1019, u""),
};

constexpr ControlForm View[] = {
    box(1071, u"Formula bar"),
    box(1026, u"Column and row titles"),
    box(1027, u"Gridlines"),
    box(1028, u"Zero values"),
};

constexpr ControlForm Sheets[] = {
    labelList(1029, SheetLabelMax),
    button(1030, u"New"),
    button(1031, u"Rename"),
    button(1032, u"Delete"),
};

constexpr ControlForm InsertFunction[] = {
    choice(1051, u"Category:"),
    pickList(1056),
    label(1110),
};

constexpr ControlForm Format[] = {
    choice(1051, u"Category:"),
    list(1003),
    disabledButton(1032, u"Delete"),
    button(1035, u"New..."),
};

constexpr ControlForm Alignment[] = {
    choice(1004, u"", u"General|Left|Center|Right|Center Selection"),
    choice(1044, u"", u"Top|Center|Bottom"),
    triBox(1045, u"Wrap text"),
};

constexpr ControlForm Font[] = {
    choice(1005, u"Font:"),       choice(1006, u"Size:"), choice(1007, u"Color:"),
    choice(1008, u"Back color:"), triBox(1009, u"Bold"),  triBox(1010, u"Italic"),
    triBox(1011, u"Underline"),
};

constexpr ControlForm NewNumberFormat[] = {
    combo(1053),
    combo(1054),
    combo(1055),
    combo(1057),
    choice(1019, u"Decimal places:", u"0|1|2|3|4|5|6|7|8|9"),
    box(1052, u"Use 1000 separator"),
};

constexpr ControlForm Zoom[] = {
    edit(1019, u""),
};

constexpr ControlForm NewDateFormat[] = {
    box(1057, u"Date:"), choice(1063, u""), choice(1055, u""),   choice(1064, u""),
    choice(1065, u""),   choice(1066, u""), box(1058, u"Time:"), choice(1053, u""),
};

constexpr ControlForm RowsOrColumns[] = {
    firstRadio(1067, u"Rows"),
    radio(1068, u"Columns"),
};

constexpr ControlForm About[] = {
    label(1111),
    label(1112),
};

constexpr ControlForm Replace[] = {
    edit(1019, u"Find:", SearchTextMax),
    edit(1025, u"Replace with:", SearchTextMax),
    choice(1021, u"Search by:", SearchOrders),
    box(1023, u"Entire cells"),
    box(1024, u"Case sensitive"),
    button(1020, u"Find Next"),
    button(1035, u"Replace All"),
};

constexpr ControlForm ReplaceAgain[] = {
    button(1036, u"Find Next"),
    button(1074, u"Replace"),
    button(1035, u"Replace All"),
};

constexpr ControlForm WidthOrHeight[] = {
    edit(1019, u""),
};

constexpr ControlForm Series[] = {
    choice(1075, u"Fill:", u"Right|Down"),
    choice(1076, u"Type:", u"Linear|Growth|Date|Autofill"),
    choice(1077, u"Date unit:", u"Day|Weekday|Month|Year"),
    edit(1019, u"Step value:"),
    edit(1020, u"Stop value:"),
};

constexpr ControlForm General[] = {
    choice(1081, u"Move after Enter:", u"None|Right|Down"),
    box(1091, u"Full Screen Zoom:"),
    edit(1019, u""),
};

constexpr ControlForm PasteSpecial[] = {
    box(1084, u"Contents"),
    box(1058, u"Formats"),
    box(1085, u"Only results of formulas"),
    box(1086, u"Skip empty cells"),
};

constexpr ControlForm CustomLists[] = {
    list(1082),
    button(1035, u"Import from selection"),
    button(1032, u"Delete list"),
};

constexpr ControlForm InsertName[] = {
    pickList(1029),
};

constexpr ControlForm DefineName[] = {
    combo(1088),
    edit(1019, u""),
    button(1035, u"Add"),
    button(1032, u"Delete"),
};

constexpr ControlForm QuickEntry[] = {
    pickList(1029),
};

constexpr ControlForm Chart[] = {
    picture(1093),
    choice(1076, u"Type:", u"Bar|Line|Pie|XY"),
    choice(1097, u"Series:", u"Cols|Rows"),
    box(1096, u"Legend"),
};

constexpr ControlForm Protect[] = {
    triBox(1098, u"Locked"),
    triBox(1058, u"Hidden"),
};

constexpr ControlForm Tasks[] = {
    list(1029),
    box(1100, u"On tap:"),
    edit(1019, u""),
    box(1058, u"Add to menu"),
    box(1059, u"Global"),
    button(1012, u"Run"),
    button(1030, u"New..."),
    button(1014, u"Edit..."),
    button(1032, u"Delete"),
};

constexpr ControlForm Filter[] = {
    firstRadio(1102, u"All"),
    radio(1103, u"Top:"),
    edit(1019, u""),
    choice(1054, u"", u"with largest values|with smallest values"),
    radio(1105, u"Blanks"),
    radio(1106, u"NonBlanks"),
    radio(1107, u"Where cells:"),
    choice(1097, u"", Comparisons),
    combo(1053),
    firstRadio(1108, u"And"),
    radio(1109, u"Or"),
    choice(1098, u"", OptionalComparisons),
    combo(1099),
};

constexpr DialogForm Dialogs[] = {
    {105, u"Border",             u"format",        Border,          ButtonOk},
    {111, u"Define Task",        u"task",          DefineTask,      ButtonOk},
    {112, u"",                   u"",              InputBox,        ButtonOk},
    {113, u"",                   u"",              ListBox,         ButtonOk},
    {123, u"Find",               u"find",          Find,            1020    },
    {124, u"Sort",               u"sort",          Sort,            ButtonOk},
    {125, u"",                   u"",              FindAgain,       1020    },
    {126, u"Go to",              u"goto",          GoTo,            ButtonOk},
    {127, u"View",               u"options",       View,            ButtonOk},
    {128, u"Sheets",             u"sheets",        Sheets,          ButtonOk},
    {129, u"Insert function",    u"functions",     InsertFunction,  ButtonOk},
    {133, u"Format",             u"format",        Format,          ButtonOk},
    {134, u"Alignment",          u"format",        Alignment,       ButtonOk},
    {135, u"Font",               u"format",        Font,            ButtonOk},
    {137, u"Number Format",      u"number_format", NewNumberFormat, ButtonOk},
    {138, u"Zoom",               u"",              Zoom,            ButtonOk},
    {139, u"Date & Time Format", u"number_format", NewDateFormat,   ButtonOk},
    {141, u"Delete Cells",       u"insert_delete", RowsOrColumns,   ButtonOk},
    {142, u"Insert Cells",       u"insert_delete", RowsOrColumns,   ButtonOk},
    {143, u"About Vorn",         u"copyright",     About,           ButtonOk},
    {144, u"Replace",            u"replace",       Replace,         1020    },
    {145, u"",                   u"",              ReplaceAgain,    1036    },
    {146, u"",                   u"",              WidthOrHeight,   ButtonOk},
    {147, u"Series",             u"series",        Series,          ButtonOk},
    {152, u"General",            u"options",       General,         ButtonOk},
    {154, u"Paste Special",      u"paste_special", PasteSpecial,    ButtonOk},
    {155, u"Custom Lists",       u"options",       CustomLists,     ButtonOk},
    {156, u"Insert Name",        u"insert_name",   InsertName,      ButtonOk},
    {157, u"Define Name",        u"define_name",   DefineName,      ButtonOk},
    {158, u"Quick Entry",        u"",              QuickEntry,      ButtonOk},
    {160, u"Chart",              u"chart",         Chart,           ButtonOk},
    {161, u"Protect",            u"format",        Protect,         ButtonOk},
    {162, u"Task",               u"task",          Tasks,           ButtonOk},
    {163, u"Filter - Show Rows", u"filter",        Filter,          ButtonOk},
};

constexpr int FormatCellsPages[] = {133, 134, 135, 105, 161};
constexpr int OptionsPages[] = {127, 152, 155};

} // namespace

const DialogForm* dialogForm(int number)
{
    for (const DialogForm& form : Dialogs) {
        if (form.number == number)
            return &form;
    }
    return nullptr;
}

const PageSheetForm FormatCellsForm = {u"Format Cells", FormatCellsPages};
const PageSheetForm OptionsForm = {u"Options", OptionsPages};

} // namespace vorn
