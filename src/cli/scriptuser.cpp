#include "cli/scriptuser.h"

#include "cli/output.h"
#include "shell/dialog.h"

namespace vorn::cli {

namespace {

std::string_view answerName(BoxAnswer answer)
{
    switch (answer) {
    case BoxAnswer::Ok:
        return "ok";
    case BoxAnswer::Yes:
        return "yes";
    case BoxAnswer::No:
        return "no";
    case BoxAnswer::Cancel:
        break;
    }
    return "cancel";
}

} // namespace

BoxAnswer ScriptUser::messageBox(std::u16string_view caption, std::u16string_view text,
                                 BoxButtons buttons, BoxIcon icon)
{
    const BoxAnswer answer = SilentUserInterface::messageBox(caption, text, buttons, icon);
    out_ << "box ";
    out_.quoted(caption);
    out_ << " ";
    out_.quoted(text);
    if (buttons != BoxButtons::Ok)
        out_ << " answered " << answerName(answer);
    out_.endLine();
    return answer;
}

void ScriptUser::runDialog(DialogModel& dialog)
{
    if (dialogAnswers.answer(dialog))
        return;
    out_ << "dialog " << dialog.number() << " ";
    out_.quoted(dialog.title());
    out_ << " cancelled";
    out_.endLine();
}

} // namespace vorn::cli
