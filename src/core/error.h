// The sticky error of operations. A layer that fails raises a code and goes on; whoever began the
// operation looks at the code at the end of a step, and the user sees it when the message that
// caused it is over. The first code stands until it is shown or cleared, because it is the one that
// tells the cause. The errors of calculations are another thing: they are values (core/value.h).
#pragma once

#include <string>

namespace vorn {

enum ErrorCode : int {
#define ERROR(code, name, text) name = code,
#include "core/errors.def"
#undef ERROR
};

struct ErrorState {
    int code = ErrorNone;
    // Nothing reads it; it is saved and restored together with the code.
    int reserved = 0;
    // While this is 0 showError does nothing and leaves the code alone.
    int showMessages = 1;
};

extern ErrorState errorState;

// Makes `code` the sticky error, unless one stands already.
void raiseError(int code);

inline bool errorStands()
{
    return errorState.code != ErrorNone;
}
inline void clearError()
{
    errorState.code = ErrorNone;
}

// The message of a code; "Error no. N" for a code that has none.
std::u16string errorText(int code);

// Shows the message of the sticky error in a box and clears the error. The code is cleared before
// the box opens, so that whatever happens while it is open starts clean. Does nothing without an
// error.
void showError();

} // namespace vorn
