#include "shell/dialog.h"

#include "core/error.h"
#include "platform/platform.h"
#include "platform/textrules.h"

#include <algorithm>
#include <cassert>
#include <climits>

namespace vorn {

namespace {

std::vector<std::u16string> splitEntries(std::u16string_view joined)
{
    std::vector<std::u16string> entries;
    while (!joined.empty()) {
        const std::size_t end = joined.find(u'|');
        entries.emplace_back(joined.substr(0, end));
        joined.remove_prefix(end == std::u16string_view::npos ? joined.size() : end + 1);
    }
    return entries;
}

// The part of a text that a control takes.
std::u16string_view cutText(const Control& control, std::u16string_view text)
{
    const auto limit = static_cast<std::size_t>(control.form->textMax);
    return limit == 0 ? text : text.substr(0, limit);
}

CaretRange caretIn(std::u16string_view text, CaretRange caret)
{
    const int length = static_cast<int>(text.size());
    return {std::clamp(caret.start, 0, length), std::clamp(caret.end, 0, length)};
}

void placeText(Control& control, std::u16string_view text)
{
    control.text = text;
    const int end = static_cast<int>(text.size());
    control.caret = {end, end};
}

} // namespace

bool Control::isList() const
{
    return form->kind == ControlKind::List || form->kind == ControlKind::Choice ||
           form->kind == ControlKind::Combo || form->kind == ControlKind::LabelList;
}

bool Control::isBox() const
{
    return form->kind == ControlKind::Box || form->kind == ControlKind::TriBox ||
           form->kind == ControlKind::Radio;
}

bool Control::isText() const
{
    return form->kind == ControlKind::Edit || form->kind == ControlKind::TextArea ||
           form->kind == ControlKind::Combo;
}

int Control::entryOf(std::u16string_view entryText) const
{
    const auto place = std::find(entries.begin(), entries.end(), entryText);
    return place == entries.end() ? NoEntry : static_cast<int>(place - entries.begin());
}

DialogModel::DialogModel(int number) : DialogModel(*dialogForm(number)) {}

DialogModel::DialogModel(const DialogForm& form) : form_(form), title_(form.title)
{
    controls_.reserve(form_.controls.size());
    for (const ControlForm& row : form_.controls) {
        Control& control = controls_.emplace_back();
        control.form = &row;
        control.entries = splitEntries(row.entries);
        control.enabled = (row.traits & ControlDisabled) == 0;
    }
}

const Control* DialogModel::find(int control) const
{
    const std::size_t index = indexOf(control);
    return index < controls_.size() ? &controls_[index] : nullptr;
}

// --- What the user does

bool DialogModel::enterText(int control, std::u16string_view text)
{
    Control* target = usable(control);
    if (target == nullptr || !target->isText())
        return false;
    beginRule();
    setText(control, cutText(*target, text));
    return tellChanged(control);
}

// The caret is where the user left it, and no rule asks before it needs it.
bool DialogModel::moveCaret(int control, CaretRange caret)
{
    Control* target = usable(control);
    if (target == nullptr || !target->isText())
        return false;
    target->caret = caretIn(target->text, caret);
    focus_ = control;
    return true;
}

bool DialogModel::choose(int control, int entry)
{
    Control* target = usable(control);
    if (target == nullptr || !target->isList() || entry < 0 ||
        entry >= static_cast<int>(target->entries.size()))
        return false;
    beginRule();
    select(control, entry);
    return tellChanged(control);
}

bool DialogModel::setBox(int control, BoxState state)
{
    Control* target = usable(control);
    if (target == nullptr || !target->isBox())
        return false;
    const ControlKind kind = target->form->kind;
    if (state == BoxState::Mixed && kind != ControlKind::TriBox)
        return false;
    // A radio button goes off when another of its group goes on.
    if (state == BoxState::Off && kind == ControlKind::Radio)
        return false;
    beginRule();
    showBox(control, state);
    return tellChanged(control);
}

bool DialogModel::tapBox(int control)
{
    const Control* target = find(control);
    if (target == nullptr)
        return false;
    const bool turnsOn = target->box == BoxState::Off || target->form->kind == ControlKind::Radio;
    return setBox(control, turnsOn ? BoxState::On : BoxState::Off);
}

bool DialogModel::press(int button)
{
    if (!open_ || inRule_)
        return false;
    if (button == ButtonOk)
        button = form_.okButton;
    if (button != ButtonOk && button != ButtonCancel) {
        const Control* target = usable(button);
        if (target == nullptr || target->form->kind != ControlKind::Button)
            return false;
    }
    labelInEdit_ = NoControl;
    beginRule();
    if (button == ButtonCancel) {
        cancelled();
        close(ButtonCancel);
    } else {
        pressed(button);
    }
    endRule();
    return true;
}

bool DialogModel::doubleTap(int control, int entry)
{
    if (!choose(control, entry))
        return false;
    if ((at(control).form->traits & ControlDoubleTapOk) != 0)
        press(ButtonOk);
    return true;
}

bool DialogModel::editLabel(int control)
{
    const Control* target = usable(control);
    if (target == nullptr || target->form->kind != ControlKind::LabelList ||
        target->selected == NoEntry)
        return false;
    beginLabelEdit(control);
    return true;
}

bool DialogModel::endLabelEdit(std::u16string_view text)
{
    if (!open_ || inRule_ || labelInEdit_ == NoControl)
        return false;
    const int control = labelInEdit_;
    labelInEdit_ = NoControl;
    // The text may be the entry's own, which a rule may replace.
    const std::u16string label(cutText(at(control), text));
    beginRule();
    labelEdited(control, label);
    endRule();
    return true;
}

bool DialogModel::cancelLabelEdit()
{
    const bool was = labelInEdit_ != NoControl;
    labelInEdit_ = NoControl;
    return was;
}

void DialogModel::open()
{
    assert(!open_);
    open_ = true;
    beginRule();
    opened();
    endRule();
}

// --- What the rules do

void DialogModel::close(int button)
{
    if (!open_)
        return;
    open_ = false;
    closedBy_ = button;
    if (observer != nullptr)
        observer->dialogClosed();
}

void DialogModel::setText(int control, std::u16string_view text)
{
    Control& target = at(control);
    placeText(target, text);
    target.selected = target.entryOf(target.text);
    showControl(control);
}

void DialogModel::setEntries(int control, std::vector<std::u16string> entries)
{
    Control& target = at(control);
    target.entries = std::move(entries);
    target.selected = target.isText() ? target.entryOf(target.text) : NoEntry;
    showControl(control);
}

void DialogModel::setEntry(int control, int entry, std::u16string_view text)
{
    at(control).entries[static_cast<std::size_t>(entry)] = text;
    showControl(control);
}

void DialogModel::select(int control, int entry)
{
    Control& target = at(control);
    assert(entry >= NoEntry && entry < static_cast<int>(target.entries.size()));
    target.selected = entry;
    if (target.isText() && entry != NoEntry)
        placeText(target, target.entries[static_cast<std::size_t>(entry)]);
    showControl(control);
}

void DialogModel::showBox(int control, BoxState state)
{
    Control& target = at(control);
    if (target.form->kind == ControlKind::Radio && state == BoxState::On)
        turnOn(target);
    target.box = state;
    showControl(control);
}

void DialogModel::enable(int control, bool enabled)
{
    at(control).enabled = enabled;
    showControl(control);
}

void DialogModel::setCaret(int control, CaretRange caret)
{
    Control& target = at(control);
    target.caret = caretIn(target.text, caret);
    showControl(control);
}

void DialogModel::setFocus(int control)
{
    focus_ = control;
    if (observer != nullptr)
        observer->focusMoved(control);
}

void DialogModel::beginLabelEdit(int control)
{
    assert(at(control).selected != NoEntry);
    labelInEdit_ = control;
    if (observer != nullptr)
        observer->labelEditBegun(control);
}

void DialogModel::tellPageTurned()
{
    if (observer != nullptr)
        observer->pageTurned();
}

const std::u16string& DialogModel::chosenEntry(int control) const
{
    const Control& list = at(control);
    assert(list.selected != NoEntry);
    return list.entries[static_cast<std::size_t>(list.selected)];
}

int DialogModel::wholeNumber(int control) const
{
    std::u16string_view digits = at(control).text;
    while (!digits.empty() && digits.front() == u' ')
        digits.remove_prefix(1);
    while (!digits.empty() && digits.back() == u' ')
        digits.remove_suffix(1);
    const bool negative = digits.starts_with(u'-');
    if (negative)
        digits.remove_prefix(1);
    int number = 0;
    for (char16_t unit : digits) {
        if (!isAsciiDigit(unit))
            return 0;
        // A number that is too great stays the greatest: nobody asks for one of that size.
        number = number > (INT_MAX - 9) / 10 ? INT_MAX : number * 10 + (unit - u'0');
    }
    return negative ? -number : number;
}

// --- Within

// The number of controls for a control that the dialog does not have.
std::size_t DialogModel::indexOf(int control) const
{
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [&](const Control& it) { return it.form->id == control; });
    return static_cast<std::size_t>(found - controls_.begin());
}

const Control& DialogModel::at(int control) const
{
    assert(indexOf(control) < controls_.size());
    return controls_[indexOf(control)];
}

Control& DialogModel::at(int control)
{
    assert(indexOf(control) < controls_.size());
    return controls_[indexOf(control)];
}

// The control that the user may use now; null if there is none. Whatever is done to it ends the
// renaming of a label.
Control* DialogModel::usable(int control)
{
    if (!open_ || inRule_)
        return nullptr;
    const Control* target = find(control);
    if (target == nullptr || !target->enabled)
        return nullptr;
    labelInEdit_ = NoControl;
    return &at(control);
}

// Turns the others of its group off. A group goes from one that starts it to the next.
void DialogModel::turnOn(const Control& radio)
{
    const auto isStart = [](const Control& control) {
        return (control.form->traits & ControlStartsGroup) != 0;
    };
    std::size_t first = static_cast<std::size_t>(&radio - controls_.data());
    while (first > 0 && !isStart(controls_[first]))
        --first;
    for (std::size_t i = first; i < controls_.size(); ++i) {
        if (i != first && isStart(controls_[i]))
            break;
        Control& other = controls_[i];
        if (&other == &radio || other.form->kind != ControlKind::Radio ||
            other.box == BoxState::Off)
            continue;
        other.box = BoxState::Off;
        showControl(other.form->id);
    }
}

void DialogModel::beginRule()
{
    inRule_ = true;
}

// What the rule left as the sticky error belongs to this dialog, if it is still there; else to
// whoever opened it.
void DialogModel::endRule()
{
    if (open_)
        showError();
    inRule_ = false;
}

bool DialogModel::tellChanged(int control)
{
    focus_ = control;
    changed(control);
    endRule();
    return true;
}

void DialogModel::showControl(int control)
{
    if (observer != nullptr)
        observer->controlChanged(control);
}

bool runDialog(DialogModel& dialog)
{
    dialog.open();
    if (dialog.isOpen())
        platform.userInterface->runDialog(dialog);
    dialog.press(ButtonCancel);
    return dialog.closedBy() != ButtonCancel;
}

} // namespace vorn
