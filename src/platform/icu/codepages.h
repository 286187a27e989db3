// Code pages through ICU's converters, by the numbers that Windows gives them.
//
// Errors: none; an unknown page counts as Windows Latin 1.
#pragma once

#include "platform/codepages.h"

namespace vorn {

constexpr int Latin1Page = 1252;
constexpr int Utf8Page = 65001;

class IcuCodePages : public CodePages {
public:
    // `systemPage` of 0 stands for the page of the environment's character set.
    explicit IcuCodePages(int systemPage = 0);

    int systemPage() override { return systemPage_; }
    bool isKnown(int page) override;
    std::unique_ptr<TextDecoder> decoder(int page) override;
    std::string encode(int page, std::u16string_view text) override;

private:
    int systemPage_;
};

// The code page of a character set by the name that the system gives it, such as "UTF-8" or
// "ISO-8859-15".
int pageOfCharacterSet(std::string_view characterSet);

} // namespace vorn
