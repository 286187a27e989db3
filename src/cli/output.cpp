#include "cli/output.h"

#include "cli/utf8.h"

#include <cstdio>

namespace vorn::cli {

namespace {

constexpr std::size_t SpillSize = 1 << 16;

} // namespace

Output& Output::operator<<(std::string_view text)
{
    buffer_ += text;
    return *this;
}

Output& Output::operator<<(std::u16string_view text)
{
    appendUtf8(buffer_, text);
    return *this;
}

Output& Output::operator<<(int number)
{
    buffer_ += std::to_string(number);
    return *this;
}

void Output::quoted(std::u16string_view text)
{
    std::u16string escaped = u"\"";
    for (char16_t unit : text) {
        switch (unit) {
        case u'"':
            escaped += u"\\\"";
            break;
        case u'\\':
            escaped += u"\\\\";
            break;
        case u'\t':
            escaped += u"\\t";
            break;
        case u'\n':
            escaped += u"\\n";
            break;
        default:
            escaped += unit;
        }
    }
    escaped += u'"';
    *this << escaped;
}

void Output::endLine()
{
    buffer_ += '\n';
    if (buffer_.size() >= SpillSize)
        spill();
}

void Output::spill()
{
    ok_ = std::fwrite(buffer_.data(), 1, buffer_.size(), stdout) == buffer_.size() && ok_;
    buffer_.clear();
}

void Output::flush()
{
    spill();
    ok_ = std::fflush(stdout) == 0 && ok_;
}

void Output::error(std::string_view text)
{
    flush();
    const std::string line = std::string(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace vorn::cli
