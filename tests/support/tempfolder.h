// A folder of its own for a test that needs files; it is gone when the object is.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace vorn {

class TempFolder {
public:
    TempFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "vorn-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The path of a file in the folder, whether it is there or not.
    std::string file(std::string_view name) const { return (path_ / name).string(); }
    std::u16string path(std::string_view name) const
    {
        return std::filesystem::path(file(name)).u16string();
    }

    // Makes a file of these bytes and answers its path.
    std::u16string write(std::string_view name, std::string_view bytes) const
    {
        std::ofstream(file(name), std::ios::binary) << bytes;
        return path(name);
    }

    std::string read(std::string_view name) const
    {
        std::ifstream stream(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path path_;
};

} // namespace vorn
