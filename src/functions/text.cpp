// Text functions. Texts are counted in UTF-16 units, and places in them from 1. Counts and places
// must be numbers: a text that reads as a number is refused everywhere but in Replace.

#include "formula/pushtext.h"
#include "functions/arguments.h"
#include "functions/table.h"
#include "platform/textrules.h"

#include <algorithm>
#include <cstdint>

namespace vorn {
namespace {

// What Rept fills: a result stays below it.
constexpr std::size_t ReptBufferSize = 1000;

// Pushes `text` with the `count` units from `start` (from 0, inside) replaced.
void pushReplaced(std::u16string_view text, std::size_t start, std::size_t count,
                  std::u16string_view replacement)
{
    const std::u16string_view before = text.substr(0, start);
    const std::u16string_view after = text.substr(std::min(text.size(), start + count));
    pushWrittenText(before.size() + replacement.size() + after.size(), [&](char16_t* out) {
        out = std::copy(before.begin(), before.end(), out);
        out = std::copy(replacement.begin(), replacement.end(), out);
        std::copy(after.begin(), after.end(), out);
    });
}

// Pushes the argument with each unit replaced by what `map` makes of it, in their order.
template <typename Map>
void mapText(Map map)
{
    const PoppedText argument;
    if (!checkPending())
        return;
    const std::u16string_view text = argument.view();
    pushWrittenText(text.size(), [&](char16_t* out) {
        for (const char16_t unit : text)
            *out++ = map(unit);
    });
}

// The last of `places` arguments, which may be left out.
std::int32_t popOptionalInteger(int places, std::int32_t otherwise)
{
    return machine.argumentCount >= places ? popInteger() : otherwise;
}

// A number that was tested to be 0 or more.
std::size_t toSize(std::int32_t number)
{
    return static_cast<std::size_t>(number);
}

} // namespace

void callLen()
{
    const PoppedText text;
    if (checkPending())
        pushNumber(static_cast<double>(text.view().size()));
}

void callLeft()
{
    const std::int32_t count = popOptionalInteger(2, 1);
    const PoppedText text;
    if (!checkPending())
        return;
    if (count < 0)
        pushError(CellErrorVal);
    else
        pushNewText(text.view().substr(0, toSize(count)));
}

void callRight()
{
    const std::int32_t count = popOptionalInteger(2, 1);
    const PoppedText argument;
    if (!checkPending())
        return;
    if (count < 0) {
        pushError(CellErrorVal);
        return;
    }
    const std::u16string_view text = argument.view();
    pushNewText(text.substr(text.size() - std::min<std::size_t>(text.size(), toSize(count))));
}

void callMid()
{
    const std::int32_t count = popInteger();
    const std::int32_t start = popInteger();
    const PoppedText argument;
    if (!checkPending())
        return;
    if (start < 1 || count < 0) {
        pushError(CellErrorVal);
        return;
    }
    const std::u16string_view text = argument.view();
    const std::size_t first = std::min<std::size_t>(text.size(), toSize(start) - 1);
    pushNewText(text.substr(first, toSize(count)));
}

// The only one here that takes a text for a number.
void callReplace()
{
    const PoppedText replacement;
    const double count = popNumber();
    const double start = popNumber();
    const PoppedText argument;
    if (!checkPending())
        return;
    // Asked this way round, what is no number is refused too.
    if (!(start >= 1 && count >= 0)) {
        pushError(CellErrorVal);
        return;
    }
    const std::u16string_view text = argument.view();
    const auto first = toSize(truncateToInteger(start)) - 1;
    pushReplaced(text, std::min(text.size(), first), toSize(truncateToInteger(count)),
                 replacement.view());
}

// One match is replaced, never all of them: the first, or the one that is asked for. The search
// goes on one unit behind the beginning of a match, so matches may overlap.
void callSubstitute()
{
    const std::int32_t instance = popOptionalInteger(4, 1);
    const PoppedText newText;
    const PoppedText oldText;
    const PoppedText argument;
    if (!checkPending())
        return;
    if (instance < 1) {
        pushError(CellErrorVal);
        return;
    }
    const std::u16string_view text = argument.view();
    const std::u16string_view searched = oldText.view();
    std::size_t match = text.find(searched);
    for (std::int32_t seen = 1; seen < instance && match != std::u16string_view::npos; ++seen)
        match = text.find(searched, match + 1);
    if (match == std::u16string_view::npos)
        pushNewText(text);
    else
        pushReplaced(text, match, searched.size(), newText.view());
}

void callFind()
{
    const std::int32_t start = popOptionalInteger(3, 1);
    const PoppedText within;
    const PoppedText searched;
    if (!checkPending())
        return;
    const std::u16string_view text = within.view();
    std::size_t match = std::u16string_view::npos;
    if (start >= 1 && toSize(start) <= text.size())
        match = text.find(searched.view(), toSize(start) - 1);
    if (match == std::u16string_view::npos)
        pushError(CellErrorVal);
    else
        pushNumber(static_cast<double>(match + 1));
}

void callExact()
{
    const PoppedText second;
    const PoppedText first;
    if (checkPending())
        pushLogical(first.view() == second.view());
}

void callLower()
{
    mapText([](char16_t unit) { return lowerUnit(unit); });
}

void callUpper()
{
    mapText([](char16_t unit) { return upperUnit(unit); });
}

// Only white space begins a word, and only a letter ends the wait for its first one: o'neil has one
// capital, and so has 1abc.
void callProper()
{
    bool startOfWord = true;
    mapText([&startOfWord](char16_t unit) {
        const bool first = startOfWord && isLetterUnit(unit);
        startOfWord = isSpaceUnit(unit) || (startOfWord && !first);
        return first ? upperUnit(unit) : lowerUnit(unit);
    });
}

void callCode()
{
    const PoppedText text;
    if (!checkPending())
        return;
    const char16_t first = *text.data();
    if (first == u'\0')
        pushError(CellErrorVal);
    else
        pushNumber(first);
}

void callChar()
{
    const std::int32_t number = popInteger();
    if (!checkPending())
        return;
    const auto unit = static_cast<char16_t>(number);
    if (number < 1)
        pushError(CellErrorVal);
    else
        pushNewText({&unit, 1});
}

// Copies that would fill the buffer are left out, so that a result stops short of it silently.
void callRept()
{
    const std::int32_t count = popInteger();
    const PoppedText argument;
    if (!checkPending())
        return;
    if (count < 0) {
        pushError(CellErrorVal);
        return;
    }
    const std::u16string_view text = argument.view();
    const std::size_t room = text.empty() ? 0 : (ReptBufferSize - 1) / text.size();
    const std::size_t copies = std::min<std::size_t>(room, toSize(count));
    pushWrittenText(copies * text.size(), [&](char16_t* out) {
        for (std::size_t copy = 0; copy < copies; ++copy)
            out = std::copy(text.begin(), text.end(), out);
    });
}

// Looks at what lies on the stack, so the text of a cell never gets here: its reference does.
void callT()
{
    if (topValue().tag == TagText)
        return;
    popMany(1);
    pushNewText({});
}

void callValue()
{
    const double number = popNumber();
    if (checkPending())
        pushNumber(number);
}

} // namespace vorn
