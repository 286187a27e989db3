#include "shell/dialogs/newformat.h"

#include "editing/numberformats.h"
#include "platform/platform.h"
#include "shell/dialog.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vorn {

namespace {

class NumberFormatDialog : public DialogModel {
public:
    explicit NumberFormatDialog(int format) : DialogModel(137), draft_(numberFormatDraft(format)) {}

    int made() const { return made_; }

protected:
    enum {
        PositivePrefix = 1053,
        PositiveSuffix = 1054,
        NegativePrefix = 1055,
        NegativeSuffix = 1057,
        Decimals = 1019,
        Thousands = 1052,
    };

    void opened() override
    {
        AffixChoices choices = affixChoices();
        setEntries(PositivePrefix, std::move(choices.positivePrefixes));
        setEntries(PositiveSuffix, std::move(choices.positiveSuffixes));
        setEntries(NegativePrefix, std::move(choices.negativePrefixes));
        setEntries(NegativeSuffix, std::move(choices.negativeSuffixes));
        setText(PositivePrefix, draft_.positivePrefix);
        setText(PositiveSuffix, draft_.positiveSuffix);
        setText(NegativePrefix, draft_.negativePrefix);
        setText(NegativeSuffix, draft_.negativeSuffix);
        const int greatest = static_cast<int>(find(Decimals)->entries.size()) - 1;
        select(Decimals, std::min(draft_.decimals, greatest));
        showBox(Thousands, draft_.thousands);
    }

    void pressed(int button) override
    {
        draft_.positivePrefix = text(PositivePrefix);
        draft_.positiveSuffix = text(PositiveSuffix);
        draft_.negativePrefix = text(NegativePrefix);
        draft_.negativeSuffix = text(NegativeSuffix);
        draft_.decimals = selected(Decimals);
        draft_.thousands = isOn(Thousands);
        made_ = addNumberFormat(draft_);
        close(button);
    }

private:
    NumberFormatDraft draft_;
    int made_ = NoFormat;
};

class DateFormatDialog : public DialogModel {
public:
    explicit DateFormatDialog(int format) : DialogModel(139), draft_(dateFormatDraft(format)) {}

    int made() const { return made_; }

protected:
    enum { Date = 1057, Time = 1058, TimeForm = 1053 };
    static constexpr int Parts[] = {1063, 1064, 1066};
    static constexpr int Separators[] = {1055, 1065};

    void opened() override
    {
        showBox(Date, draft_.hasDate);
        showBox(Time, draft_.hasTime);
        for (std::size_t part = 0; part < std::size(Parts); ++part) {
            setEntries(Parts[part], datePartSamples());
            select(Parts[part], draft_.parts[part]);
        }
        for (std::size_t gap = 0; gap < std::size(Separators); ++gap) {
            const std::u16string& separator = draft_.separators[gap];
            setEntries(Separators[gap], separatorChoices(separator));
            select(Separators[gap], find(Separators[gap])->entryOf(separator));
        }
        setEntries(TimeForm, timeFormSamples());
        select(TimeForm, draft_.timeForm);
    }

    void pressed(int button) override
    {
        draft_.hasDate = isOn(Date);
        draft_.hasTime = isOn(Time);
        for (std::size_t part = 0; part < std::size(Parts); ++part)
            draft_.parts[part] = selected(Parts[part]);
        for (std::size_t gap = 0; gap < std::size(Separators); ++gap) {
            const Control& list = *find(Separators[gap]);
            draft_.separators[gap] = list.entries[static_cast<std::size_t>(list.selected)];
        }
        draft_.timeForm = selected(TimeForm);
        if (!isValidDraft(draft_)) {
            platform.userInterface->messageBox(u"Vorn", u"Invalid date format!", BoxButtons::Ok);
            return;
        }
        made_ = addDateFormat(draft_);
        close(button);
    }

private:
    DateFormatDraft draft_;
    int made_ = NoFormat;
};

} // namespace

int askNumberFormat(int format)
{
    NumberFormatDialog dialog(format);
    runDialog(dialog);
    return dialog.made();
}

int askDateFormat(int format)
{
    DateFormatDialog dialog(format);
    runDialog(dialog);
    return dialog.made();
}

} // namespace vorn
