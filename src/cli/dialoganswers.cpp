#include "cli/dialoganswers.h"

#include "cli/utf8.h"
#include "platform/textrules.h"
#include "shell/dialog.h"

#include <algorithm>

namespace vorn::cli {

namespace {

using Text = std::u16string_view;

constexpr int NumberMax = 0xffff;
constexpr Text ButtonWord = u"button";

bool fail(std::string& reason, std::string_view what, Text text)
{
    reason = std::string(what) + " '" + toUtf8(text) + '\'';
    return false;
}

// A number in decimal digits; -1 for anything else.
int numberOf(Text text)
{
    if (text.empty())
        return -1;
    int number = 0;
    for (char16_t unit : text) {
        if (!isAsciiDigit(unit))
            return -1;
        number = std::min(number * 10 + (unit - u'0'), NumberMax);
    }
    return number;
}

bool boxStateOf(Text text, BoxState& out)
{
    static constexpr struct {
        Text word;
        BoxState state;
    } words[] = {
        {u"on",    BoxState::On   },
        {u"off",   BoxState::Off  },
        {u"mixed", BoxState::Mixed},
    };
    for (const auto& candidate : words) {
        if (candidate.word == text) {
            out = candidate.state;
            return true;
        }
    }
    return false;
}

void skipBlanks(Text& text)
{
    while (text.starts_with(u' '))
        text.remove_prefix(1);
}

// What a backslash and this character stand for inside quotes; 0 for nothing.
char16_t escaped(char16_t unit)
{
    switch (unit) {
    case u'"':
    case u'\\':
        return unit;
    case u'n':
        return u'\n';
    case u't':
        return u'\t';
    default:
        return 0;
    }
}

// Cuts a quoted value, behind its first quote, off the front of `text`.
bool takeQuoted(Text& text, std::u16string& out)
{
    while (!text.empty() && text.front() != u'"') {
        char16_t unit = text.front();
        text.remove_prefix(1);
        if (unit == u'\\') {
            if (text.empty() || escaped(text.front()) == 0)
                return false;
            unit = escaped(text.front());
            text.remove_prefix(1);
        }
        out.push_back(unit);
    }
    if (text.empty())
        return false;
    text.remove_prefix(1);
    return text.empty() || text.front() == u' ';
}

// Cuts a value, quoted or up to the next blank, off the front of `text`.
bool takeValue(Text& text, std::u16string& out)
{
    out.clear();
    if (text.starts_with(u'"')) {
        text.remove_prefix(1);
        return takeQuoted(text, out);
    }
    out = text.substr(0, text.find(u' '));
    text.remove_prefix(out.size());
    return true;
}

const ControlForm* controlOf(const DialogForm& form, int id)
{
    for (const ControlForm& control : form.controls) {
        if (control.id == id)
            return &control;
    }
    return nullptr;
}

bool readButton(const DialogForm& form, Text value, int& out)
{
    out = numberOf(value);
    if (value == u"ok")
        out = ButtonOk;
    if (value == u"cancel")
        out = ButtonCancel;
    if (out == ButtonOk || out == ButtonCancel)
        return true;
    const ControlForm* control = controlOf(form, out);
    return control != nullptr && control->kind == ControlKind::Button;
}

// Could a control of this kind ever show the value? What its list holds is seen when it opens.
bool takesValue(ControlKind kind, Text value)
{
    BoxState state = BoxState::Off;
    switch (kind) {
    case ControlKind::Edit:
    case ControlKind::TextArea:
    case ControlKind::List:
    case ControlKind::Choice:
    case ControlKind::Combo:
    case ControlKind::LabelList:
        return true;
    case ControlKind::Box:
    case ControlKind::Radio:
        return boxStateOf(value, state) && state != BoxState::Mixed;
    case ControlKind::TriBox:
        return boxStateOf(value, state);
    case ControlKind::Label:
    case ControlKind::Button:
    case ControlKind::Picture:
        break;
    }
    return false;
}

// Cuts "ID=VALUE" or "button=..." off the front of `text`.
bool readPart(Text& text, const DialogForm& form, DialogAnswer& out, std::string& reason)
{
    const Text part = text;
    const Text name = text.substr(0, text.find_first_of(u"= "));
    text.remove_prefix(name.size());
    if (!text.starts_with(u'='))
        return fail(reason, "a value is missing:", name);
    text.remove_prefix(1);
    std::u16string value;
    if (!takeValue(text, value))
        return fail(reason, "no quoted value:", part);
    if (name == ButtonWord) {
        if (out.button != NoControl || !readButton(form, value, out.button))
            return fail(reason, "no button to close by:", value);
        return true;
    }
    const ControlForm* control = controlOf(form, numberOf(name));
    if (control == nullptr)
        return fail(reason, "no control of this dialog:", name);
    if (!takesValue(control->kind, value))
        return fail(reason, "no value of control " + toUtf8(name) + ':', value);
    out.settings.push_back({control->id, std::move(value)});
    return true;
}

// The entry with that text, or else of that index; NoEntry if there is neither.
int entryFor(const Control& list, Text value)
{
    const int entry = list.entryOf(value);
    if (entry != NoEntry)
        return entry;
    const int index = numberOf(value);
    return index < static_cast<int>(list.entries.size()) ? index : NoEntry;
}

} // namespace

bool readDialogAnswer(std::u16string_view text, DialogAnswer& out, std::string& reason)
{
    const Text number = text.substr(0, text.find(u' '));
    text.remove_prefix(number.size());
    const DialogForm* form = dialogForm(numberOf(number));
    if (form == nullptr)
        return fail(reason, "no dialog:", number);
    out = {form->number, {}, NoControl};
    for (skipBlanks(text); !text.empty(); skipBlanks(text)) {
        if (!readPart(text, *form, out, reason))
            return false;
    }
    if (out.button == NoControl)
        out.button = ButtonOk;
    return true;
}

bool DialogAnswers::answer(DialogModel& dialog)
{
    if (!dialog.pages().empty())
        return answerPages(dialog);
    DialogAnswer next;
    bool answered = false;
    while (dialog.isOpen() && take(dialog.number(), next)) {
        answered = true;
        if (!give(dialog, next.settings))
            break;
        dialog.press(next.button);
    }
    return answered;
}

bool DialogAnswers::take(int dialog, DialogAnswer& out)
{
    for (auto place = waiting_.begin(); place != waiting_.end(); ++place) {
        if (place->dialog == dialog) {
            out = std::move(*place);
            waiting_.erase(place);
            return true;
        }
    }
    return false;
}

// Each page takes its answers up to the one that closes; when every page has had its own, the sheet
// closes, by Cancel if any of them says so.
bool DialogAnswers::answerPages(DialogModel& sheet)
{
    const auto pages = sheet.pages();
    bool answered = false;
    while (sheet.isOpen()) {
        int closing = NoControl;
        for (std::size_t i = 0; i < pages.size(); ++i) {
            DialogAnswer next;
            bool settled = false;
            while (!settled && take(pages[i]->number(), next)) {
                answered = true;
                sheet.turnTo(static_cast<int>(i));
                if (!give(*pages[i], next.settings))
                    return true;
                settled = next.button == ButtonOk || next.button == ButtonCancel;
                if (!settled)
                    pages[i]->press(next.button);
                else if (closing != ButtonCancel)
                    closing = next.button;
            }
        }
        if (closing == NoControl)
            break;
        sheet.press(closing);
    }
    return answered;
}

bool DialogAnswers::give(DialogModel& dialog, const std::vector<DialogAnswer::Setting>& settings)
{
    return std::all_of(settings.begin(), settings.end(),
                       [&](const auto& setting) { return give(dialog, setting); });
}

// What cannot be done by hand, because the control is disabled, is not done and is no problem.
bool DialogAnswers::give(DialogModel& dialog, const DialogAnswer::Setting& setting)
{
    const Control& control = *dialog.find(setting.control);
    if (dialog.labelInEdit() == setting.control) {
        dialog.endLabelEdit(setting.value);
        return true;
    }
    if (control.isBox()) {
        BoxState state = BoxState::Off;
        boxStateOf(setting.value, state);
        dialog.setBox(setting.control, state);
        return true;
    }
    if (control.isText() && control.entryOf(setting.value) == NoEntry) {
        dialog.enterText(setting.control, setting.value);
        return true;
    }
    const int entry = entryFor(control, setting.value);
    if (entry == NoEntry && control.enabled)
        return fail(problem,
                    "dialog " + std::to_string(dialog.number()) + ": no entry of control " +
                        std::to_string(setting.control) + ':',
                    setting.value);
    dialog.choose(setting.control, entry);
    return true;
}

} // namespace vorn::cli
