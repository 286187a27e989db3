// The keys and the characters of the toolkit, handed to the system.
//
// Shape:  each key that goes down is a message, and so is each character that comes of it.
#pragma once

#include "shell/key.h"

#include <QKeyEvent>
#include <QString>

#include <string>

namespace vorn::qt {

class Messages;

// KeyNone for a key that the system has no name for.
Key systemKey(const QKeyEvent& event);

KeyModifiers modifiersOf(Qt::KeyboardModifiers modifiers);

// What a key types; nothing for one that is held together with Ctrl or Alt.
std::u16string charactersOf(const QKeyEvent& event);

void sendKey(Messages& messages, const QKeyEvent& event);

// A text that comes without keys: composed, or of a keyboard on the screen.
void sendText(Messages& messages, const QString& text);

} // namespace vorn::qt
