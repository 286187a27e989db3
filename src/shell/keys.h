// The keyboard, as the messages of a window bring it: keys that go down, and the characters that
// they make.
//
// Errors: the sticky code, which the end of the message shows.
#pragma once

#include "shell/key.h"

namespace vorn {

// A key goes down: it is a command's, or else belongs to whatever has the focus. False if nothing
// was done yet: then the character that the key makes, if it makes one, is to follow.
bool keyDown(Key key, KeyModifiers modifiers);

// What a key does in the editor, before the control has it.
bool editorKey(Key key, KeyModifiers modifiers);

// A character as typed, Enter as a carriage return or a line feed. False if a locked cell refuses
// it, with all that would follow.
bool character(char16_t unit);

} // namespace vorn
