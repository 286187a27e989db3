#include "core/error.h"

#include "platform/platform.h"
#include "platform/userinterface.h"

namespace vorn {

ErrorState errorState;

void raiseError(int code)
{
    if (errorState.code == ErrorNone)
        errorState.code = code;
}

std::u16string errorText(int code)
{
    switch (code) {
#define ERROR(number, name, text)                                                                  \
    case number:                                                                                   \
        return text;
#include "core/errors.def"
#undef ERROR
    default:
        break;
    }
    std::u16string text = u"Error no. ";
    for (char digit : std::to_string(code))
        text += static_cast<char16_t>(digit);
    return text;
}

void showError()
{
    if (errorState.showMessages == 0 || errorState.code == ErrorNone)
        return;
    const std::u16string text = errorText(errorState.code);
    clearError();
    platform.userInterface->messageBox(u"Vorn", text, BoxButtons::Ok);
}

} // namespace vorn
