// What the program prints, collected and written in large pieces: a sheet may have a million cells.
// Errors go straight to stderr, behind everything that was printed before.
#pragma once

#include <string>
#include <string_view>

namespace vorn::cli {

class Output {
public:
    Output() = default;
    ~Output() { flush(); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    Output& operator<<(std::string_view text);
    Output& operator<<(std::u16string_view text);
    Output& operator<<(int number);

    // In double quotes, as every quoted text of an output line stands.
    void quoted(std::u16string_view text);

    void endLine();

    // Writes out what was collected.
    void flush();

    // One line on stderr: what went wrong.
    void error(std::string_view text);

    // Could all that was flushed be written?
    bool ok() const { return ok_; }

private:
    void spill();

    std::string buffer_;
    bool ok_ = true;
};

} // namespace vorn::cli
