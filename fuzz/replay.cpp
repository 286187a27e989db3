// The main of a fuzz target without a fuzzer: runs it over every file of the folders it is given,
// in the order of their names. An input that once broke something is kept in such a folder.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> filesOf(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.is_regular_file(error))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void run(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream),
                                  std::istreambuf_iterator<char>()};
    const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

} // namespace

int main(int argc, char** argv)
{
    std::size_t count = 0;
    for (int at = 1; at < argc; ++at) {
        for (const std::filesystem::path& path : filesOf(argv[at])) {
            run(path);
            ++count;
        }
    }
    std::printf("%zu inputs\n", count);
    return count == 0 ? 1 : 0;
}
