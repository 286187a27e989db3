#include "platform/headless/userinterface.h"

namespace vorn {

BoxAnswer SilentUserInterface::messageBox(std::u16string_view caption, std::u16string_view text,
                                          BoxButtons buttons)
{
    BoxAnswer answer = BoxAnswer::Ok;
    if (buttons != BoxButtons::Ok) {
        answer = buttons == BoxButtons::YesNoCancel ? BoxAnswer::Cancel : BoxAnswer::No;
        if (!answers.empty()) {
            answer = answers.front();
            answers.pop_front();
        }
    }
    boxes.push_back({std::u16string(caption), std::u16string(text), buttons, answer});
    return answer;
}

} // namespace vorn
