#include "shell/editline.h"

#include <algorithm>

namespace vorn {

namespace {

std::size_t sizeOf(int length)
{
    return static_cast<std::size_t>(length);
}

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

std::u16string_view EditLine::selectedText() const
{
    return std::u16string_view(text_).substr(sizeOf(selectionStart()),
                                             sizeOf(selectionEnd() - selectionStart()));
}

void EditLine::setText(std::u16string_view text)
{
    text_ = text;
    anchor_ = caret_ = 0;
    undo_ = {};
    ++version_;
}

void EditLine::setSelection(int start, int end)
{
    const auto position = [this](int wanted) {
        return wanted < 0 ? length() : std::min(wanted, length());
    };
    anchor_ = position(start);
    caret_ = position(end);
    ++version_;
}

void EditLine::replaceSelection(std::u16string_view text, UndoRule rule)
{
    replace(selectionStart(), selectionEnd(), text, rule);
}

void EditLine::character(char16_t unit)
{
    if (unit == KeyBackspace)
        erase(before(caret_), caret_);
    else if (unit >= u' ')
        replaceSelection({&unit, 1});
}

void EditLine::key(Key key, KeyModifiers modifiers)
{
    switch (key) {
    case KeyLeft:
    case KeyUp:
        moveCaret(modifiers.ctrl ? wordBefore(caret_) : before(caret_), modifiers.shift);
        break;
    case KeyRight:
    case KeyDown:
        moveCaret(modifiers.ctrl ? wordBehind(caret_) : behind(caret_), modifiers.shift);
        break;
    case KeyHome:
        moveCaret(0, modifiers.shift);
        break;
    case KeyEnd:
        moveCaret(length(), modifiers.shift);
        break;
    case KeyDelete:
        erase(caret_, behind(caret_));
        break;
    default:
        break;
    }
}

void EditLine::paste(std::u16string_view text)
{
    constexpr std::u16string_view LineEnds(u"\r\n\0", 3);
    replaceSelection(text.substr(0, text.find_first_of(LineEnds)));
}

void EditLine::clear()
{
    if (hasSelection())
        replaceSelection({});
}

void EditLine::undo()
{
    if (!canUndo())
        return;
    const Change change = undo_;
    undo_ = {};
    replace(change.start, change.start + change.inserted, change.removed, KeepForUndo);
    setSelection(change.start, change.start + static_cast<int>(change.removed.size()));
}

void EditLine::replace(int start, int end, std::u16string_view text, UndoRule rule)
{
    const int room = std::max(0, EditTextMax - (length() - (end - start)));
    const std::u16string_view taken = text.substr(0, sizeOf(room));
    const std::u16string removed = text_.substr(sizeOf(start), sizeOf(end - start));
    if (taken.empty() && removed.empty())
        return;
    text_.replace(sizeOf(start), removed.size(), taken);
    const int inserted = static_cast<int>(taken.size());
    anchor_ = caret_ = start + inserted;
    if (rule == KeepForUndo)
        remember(start, removed, inserted);
    else
        undo_ = {};
    ++version_;
}

// Characters typed one after the other are taken back together, and so are those that were erased
// one after the other.
void EditLine::remember(int start, std::u16string_view removed, int inserted)
{
    const int removedEnd = start + static_cast<int>(removed.size());
    const bool typing =
        removed.empty() && undo_.inserted != 0 && start == undo_.start + undo_.inserted;
    const bool erasing = inserted == 0 && canUndo() && undo_.inserted == 0;
    if (typing)
        undo_.inserted += inserted;
    else if (erasing && start == undo_.start)
        undo_.removed.append(removed);
    else if (erasing && removedEnd == undo_.start)
        undo_ = {start, 0, std::u16string(removed) + undo_.removed};
    else
        undo_ = {start, inserted, std::u16string(removed)};
}

// Erases the selection where there is one, else what is told.
void EditLine::erase(int start, int end)
{
    if (hasSelection())
        clear();
    else
        replace(start, end, {}, KeepForUndo);
}

void EditLine::moveCaret(int position, bool extend)
{
    setSelection(extend ? anchor_ : position, position);
}

int EditLine::before(int position) const
{
    if (position == 0)
        return 0;
    const bool pair = position >= 2 && isLowSurrogate(text_[sizeOf(position - 1)]) &&
                      isHighSurrogate(text_[sizeOf(position - 2)]);
    return position - (pair ? 2 : 1);
}

int EditLine::behind(int position) const
{
    if (position == length())
        return position;
    const bool pair = position + 2 <= length() && isHighSurrogate(text_[sizeOf(position)]) &&
                      isLowSurrogate(text_[sizeOf(position + 1)]);
    return position + (pair ? 2 : 1);
}

int EditLine::wordBefore(int position) const
{
    while (position > 0 && text_[sizeOf(position - 1)] == u' ')
        --position;
    while (position > 0 && text_[sizeOf(position - 1)] != u' ')
        --position;
    return position;
}

int EditLine::wordBehind(int position) const
{
    while (position < length() && text_[sizeOf(position)] != u' ')
        ++position;
    while (position < length() && text_[sizeOf(position)] == u' ')
        ++position;
    return position;
}

} // namespace vorn
