// The locale of the user, or one by name, from ICU's data.
//
// Shape:  separators, currency and date forms may come from three locales, because an environment
//         may name one for each. Calendar and digits are always Gregorian and Latin: serials and
//         printed numbers know no others.
// Errors: none. A name that ICU has nothing for counts as en_US.
#pragma once

#include "platform/localesource.h"

#include <memory>
#include <string>
#include <string_view>

namespace vorn {

class IcuLocaleSource : public LocaleSource {
public:
    // A name such as "en_US" or "de_DE.UTF-8"; empty for the locale of the environment.
    explicit IcuLocaleSource(std::string_view name = {});
    ~IcuLocaleSource() override;
    IcuLocaleSource(const IcuLocaleSource&) = delete;
    IcuLocaleSource& operator=(const IcuLocaleSource&) = delete;

    LocaleSettings settings() override;
    std::u16string dateText(const LocalTime& parts, std::u16string_view pattern) override;
    std::u16string timeText(const LocalTime& parts, std::u16string_view pattern) override;

private:
    struct Names;
    const Names& names();

    std::string numbers_;
    std::string money_;
    std::string times_;
    std::unique_ptr<Names> names_; // looked up when the first text needs them
};

} // namespace vorn
