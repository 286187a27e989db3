// vorn-cli as a process of its own, for tests that look at the system from outside.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vorn {

// A new folder that goes away with its content.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    // Writes a file and gives its path.
    std::filesystem::path write(std::string_view name, std::string_view content) const;

private:
    std::filesystem::path path_;
};

struct Outcome {
    int status = -1; // -1 for a process that was killed
    std::string output;
    std::string errors;
};

// Runs vorn-cli in the folder, in a UTF-8 environment of no country. `arguments` is read by the
// shell, so it may quote and redirect.
Outcome runProgram(const TemporaryFolder& folder, const std::string& arguments);

std::string readWhole(const std::filesystem::path& file);

} // namespace vorn
