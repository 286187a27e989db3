#include "support/json.h"

#include <algorithm>
#include <cstdlib>

namespace vorn {

namespace {

class JsonReader {
public:
    explicit JsonReader(std::u16string_view text) : text_(text) {}

    Json read()
    {
        Json value = readValue();
        skipSpace();
        return failed_ || at_ != text_.size() ? Json{} : value;
    }

private:
    char16_t peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }

    void skipSpace()
    {
        while (peek() == u' ' || (peek() >= u'\t' && peek() <= u'\r'))
            ++at_;
    }

    bool take(std::u16string_view word)
    {
        if (text_.substr(at_, word.size()) != word)
            return false;
        at_ += word.size();
        return true;
    }

    void expect(std::u16string_view word) { failed_ = failed_ || !take(word); }

    Json readValue()
    {
        skipSpace();
        Json value;
        if (failed_ || take(u"null"))
            return value;
        if (peek() == u'"') {
            value.kind = Json::Text;
            value.text = readText();
        } else if (take(u"[")) {
            readList(value);
        } else if (take(u"{")) {
            readRecord(value);
        } else if (peek() == u't' || peek() == u'f') {
            value.kind = Json::Logical;
            value.logical = take(u"true");
            if (!value.logical)
                expect(u"false");
        } else {
            readNumber(value);
        }
        return value;
    }

    void readList(Json& value)
    {
        value.kind = Json::List;
        skipSpace();
        if (take(u"]"))
            return;
        do
            value.items.push_back(readValue());
        while (!failed_ && goesOn());
        expect(u"]");
    }

    void readRecord(Json& value)
    {
        value.kind = Json::Record;
        skipSpace();
        if (take(u"}"))
            return;
        do {
            skipSpace();
            value.names.push_back(readText());
            skipSpace();
            expect(u":");
            value.items.push_back(readValue());
        } while (!failed_ && goesOn());
        expect(u"}");
    }

    bool goesOn()
    {
        skipSpace();
        return take(u",");
    }

    void readNumber(Json& value)
    {
        std::string digits;
        while (peek() != 0 && std::u16string_view(u"+-.eE0123456789").find(peek()) != text_.npos)
            digits += static_cast<char>(text_[at_++]);
        value.kind = Json::Number;
        value.number = std::strtod(digits.c_str(), nullptr);
        failed_ = failed_ || digits.empty();
    }

    std::u16string readText()
    {
        std::u16string out;
        expect(u"\"");
        while (!failed_ && peek() != u'"') {
            failed_ = at_ >= text_.size();
            if (take(u"\\"))
                out += readEscape();
            else if (!failed_)
                out += text_[at_++];
        }
        expect(u"\"");
        return out;
    }

    char16_t readEscape()
    {
        constexpr std::u16string_view letters = u"bfnrt";
        constexpr std::u16string_view meanings = u"\b\f\n\r\t";
        const char16_t letter = peek();
        ++at_;
        if (const std::size_t index = letters.find(letter); index != letters.npos)
            return meanings[index];
        if (letter != u'u')
            return letter;
        const std::u16string_view digits = text_.substr(std::min(at_, text_.size()), 4);
        at_ += digits.size();
        return static_cast<char16_t>(
            std::strtoul(std::string(digits.begin(), digits.end()).c_str(), nullptr, 16));
    }

    std::u16string_view text_;
    std::size_t at_ = 0;
    bool failed_ = false;
};

} // namespace

const Json& Json::at(std::u16string_view name) const
{
    static const Json none;
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (names[index] == name)
            return items[index];
    }
    return none;
}

Json parseJson(std::u16string_view text)
{
    return JsonReader(text).read();
}

} // namespace vorn
