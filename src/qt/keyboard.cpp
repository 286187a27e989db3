#include "qt/keyboard.h"

#include "core/workbook.h"
#include "platform/platform.h"
#include "platform/userinterface.h"
#include "qt/messages.h"
#include "qt/strings.h"
#include "shell/commands.h"
#include "shell/keys.h"

namespace vorn::qt {

namespace {

constexpr struct {
    int toolkit;
    Key key;
} Keys[] = {
    {Qt::Key_Backspace, KeyBackspace},
    {Qt::Key_Tab,       KeyTab      },
    {Qt::Key_Backtab,   KeyTab      }, // Tab with Shift
    {Qt::Key_Return,    KeyEnter    },
    {Qt::Key_Enter,     KeyEnter    },
    {Qt::Key_Escape,    KeyEscape   },
    {Qt::Key_PageUp,    KeyPageUp   },
    {Qt::Key_PageDown,  KeyPageDown },
    {Qt::Key_End,       KeyEnd      },
    {Qt::Key_Home,      KeyHome     },
    {Qt::Key_Left,      KeyLeft     },
    {Qt::Key_Up,        KeyUp       },
    {Qt::Key_Right,     KeyRight    },
    {Qt::Key_Down,      KeyDown     },
    {Qt::Key_Delete,    KeyDelete   },
    {Qt::Key_F2,        KeyF2       },
};

bool isWithin(int key, int first, int last)
{
    return first <= key && key <= last;
}

void sendCharacters(Messages& messages, std::u16string_view text)
{
    bool taken = true;
    for (const char16_t unit : text) {
        if (taken && workbook != nullptr)
            messages.send([&] { taken = character(unit); });
    }
}

// The keys of the window itself.
bool sendWindowKey(Messages& messages, const QKeyEvent& event)
{
    if (event.key() == Qt::Key_F1) {
        messages.send([] { platform.userInterface->showHelp({}); });
        return true;
    }
    // The way back from the full screen, where there are no menus.
    if (event.key() == Qt::Key_F11) {
        messages.send([] { onCommand(CommandFullScreen); });
        return true;
    }
    return false;
}

} // namespace

Key systemKey(const QKeyEvent& event)
{
    const int key = event.key();
    for (const auto& known : Keys) {
        if (known.toolkit == key)
            return known.key;
    }
    // Letters and digits have the same numbers there.
    if (isWithin(key, Qt::Key_A, Qt::Key_Z) || isWithin(key, Qt::Key_0, Qt::Key_9))
        return static_cast<Key>(key);
    return KeyNone;
}

KeyModifiers modifiersOf(Qt::KeyboardModifiers modifiers)
{
    return {modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier),
            modifiers.testFlag(Qt::AltModifier)};
}

std::u16string charactersOf(const QKeyEvent& event)
{
    const Key key = systemKey(event);
    if (key == KeyEnter || key == KeyBackspace)
        return {static_cast<char16_t>(key)};
    const KeyModifiers held = modifiersOf(event.modifiers());
    // Both together are the key for the third sign of a key, where it has none of its own.
    if (held.ctrl != held.alt || event.modifiers().testFlag(Qt::MetaModifier))
        return {};
    std::u16string text = fromQt(event.text());
    std::erase_if(text, [](char16_t unit) { return unit < u' ' || unit == 0x7F; });
    return text;
}

void sendKey(Messages& messages, const QKeyEvent& event)
{
    if (sendWindowKey(messages, event))
        return;
    const Key key = systemKey(event);
    const std::u16string text = charactersOf(event);
    bool used = false;
    if (key != KeyNone)
        messages.send([&] { used = keyDown(key, modifiersOf(event.modifiers())); });
    if (!used)
        sendCharacters(messages, text);
}

void sendText(Messages& messages, const QString& text)
{
    sendCharacters(messages, fromQt(text));
}

} // namespace vorn::qt
