// Text between bytes and UTF-16, by the number of a Windows code page (1252, 932, 65001 and so on).
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vorn {

// One direction of one stream: it remembers the beginning of a character that a block's end cut.
class TextDecoder {
public:
    virtual ~TextDecoder() = default;

    // Appends the characters of `bytes` to `out`. What has no meaning in the code page becomes
    // U+FFFD. `atEnd` says that no more bytes follow, so an unfinished character is one as well.
    virtual void decode(std::string_view bytes, bool atEnd, std::u16string& out) = 0;
};

class CodePages {
public:
    virtual ~CodePages() = default;

    // The code page of the system's own text: 65001 where that is UTF-8.
    virtual int systemPage() = 0;

    virtual bool isKnown(int page) = 0;

    // A decoder for `page`; an unknown page is read as Windows Latin 1 (1252).
    virtual std::unique_ptr<TextDecoder> decoder(int page) = 0;

    // The bytes of `text`; a character that the page has not becomes '?'.
    virtual std::string encode(int page, std::u16string_view text) = 0;
};

} // namespace vorn
