#include "cli/keyverbs.h"

#include "cli/place.h"
#include "cli/utf8.h"
#include "core/workbook.h"
#include "platform/textrules.h"
#include "shell/keys.h"
#include "shell/windowpaint.h"

namespace vorn::cli {

namespace {

constexpr int SizeMax = 10000;

constexpr struct {
    std::u16string_view name;
    Key key;
} KeyNames[] = {
    {u"Left",      KeyLeft     },
    {u"Right",     KeyRight    },
    {u"Up",        KeyUp       },
    {u"Down",      KeyDown     },
    {u"Home",      KeyHome     },
    {u"End",       KeyEnd      },
    {u"PageUp",    KeyPageUp   },
    {u"PageDown",  KeyPageDown },
    {u"Tab",       KeyTab      },
    {u"Enter",     KeyEnter    },
    {u"Escape",    KeyEscape   },
    {u"F2",        KeyF2       },
    {u"Delete",    KeyDelete   },
    {u"Backspace", KeyBackspace},
};

bool readModifiers(std::u16string_view text, KeyModifiers& out)
{
    while (!text.empty()) {
        const std::u16string_view word = takeWord(text);
        if (word == u"shift")
            out.shift = true;
        else if (word == u"ctrl")
            out.ctrl = true;
        else if (word == u"alt")
            out.alt = true;
        else if (!word.empty())
            return false;
    }
    return true;
}

// A letter or a digit is a key only together with Ctrl: alone it is a character.
Key readKey(std::u16string_view name, KeyModifiers modifiers)
{
    for (const auto& candidate : KeyNames) {
        if (candidate.name == name)
            return candidate.key;
    }
    if (name.size() != 1 || !modifiers.ctrl)
        return KeyNone;
    const char16_t unit = upperUnit(name.front());
    return isAsciiLetter(unit) || isAsciiDigit(unit) ? keyOf(unit) : KeyNone;
}

} // namespace

bool keyVerb(Script& script, std::u16string_view argument)
{
    std::u16string_view rest = argument;
    const std::u16string_view name = takeWord(rest);
    KeyModifiers modifiers;
    const bool known = readModifiers(rest, modifiers);
    const Key key = readKey(name, modifiers);
    if (!known || key == KeyNone)
        return script.fail("no key: '" + toUtf8(argument) + '\'');
    const bool used = keyDown(key, modifiers);
    if (!used && (key == KeyEnter || key == KeyBackspace))
        character(static_cast<char16_t>(key));
    return true;
}

// Every character is a message of its own.
bool typeVerb(Script& script, std::u16string_view argument)
{
    for (const char16_t unit : argument) {
        character(unit);
        script.app.showError();
        repaint(script);
    }
    return true;
}

bool editorVerb(Script& script, std::u16string_view)
{
    const FormulaBar& bar = script.app.formulaBar;
    if (!bar.editing) {
        script.out << "ready";
    } else {
        script.out << (script.app.pointMode ? "pointing " : "editing ");
        script.out.quoted(bar.line.text());
        script.out << " caret " << bar.line.selectionEnd();
    }
    script.out.endLine();
    return true;
}

bool sizeVerb(Script& script, std::u16string_view argument)
{
    std::u16string_view rest = argument;
    const int width = readNumber(takeWord(rest), SizeMax);
    const int height = readNumber(rest, SizeMax);
    if (width == 0 || height == 0)
        return script.fail("no size: '" + toUtf8(argument) + '\'');
    script.app.resize({0, 0, width, height});
    return true;
}

void repaint(Script&)
{
    endRepaint();
}

} // namespace vorn::cli
