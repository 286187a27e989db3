#include "platform/headless/userinterface.h"

namespace vorn {

BoxAnswer SilentUserInterface::messageBox(std::u16string_view caption, std::u16string_view text,
                                          BoxButtons buttons, BoxIcon)
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

bool SilentUserInterface::askFile(FileQuestion& question)
{
    fileQuestions.push_back(question);
    if (files.empty())
        return false;
    const std::u16string path = files.front();
    files.pop_front();
    if (path.empty())
        return false;
    question.path = path;
    return true;
}

} // namespace vorn
