// What a script's user answers to dialogs: answers wait, by the number of the dialog, until one of
// that number opens, and are then given control by control, as by hand.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {
class DialogModel;
}

namespace vorn::cli {

struct DialogAnswer {
    struct Setting {
        int control;
        std::u16string value;
    };

    int dialog = 0;
    std::vector<Setting> settings;
    int button = 0;
};

// Reads "DIALOG [ID=VALUE...] [button=ID|ok|cancel]". Answers false, with the reason, for a dialog
// or a control that does not exist and for a value that its control cannot have.
bool readDialogAnswer(std::u16string_view text, DialogAnswer& out, std::string& reason);

class DialogAnswers {
public:
    void add(DialogAnswer answer) { waiting_.push_back(std::move(answer)); }

    // Answers an open dialog until it closes or no answer is left for it. Answers false if there
    // was none from the start.
    bool answer(DialogModel& dialog);

    // Why an answer could not be given; empty while all could.
    std::string problem;

private:
    bool take(int dialog, DialogAnswer& out);
    bool answerPages(DialogModel& sheet);
    bool give(DialogModel& dialog, const std::vector<DialogAnswer::Setting>& settings);
    bool give(DialogModel& dialog, const DialogAnswer::Setting& setting);

    std::deque<DialogAnswer> waiting_;
};

} // namespace vorn::cli
