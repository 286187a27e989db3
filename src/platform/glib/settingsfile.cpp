#include "platform/glib/settingsfile.h"

#include <charconv>
#include <cstring>
#include <filesystem>
#include <glib.h>
#include <glib/gstdio.h>
#include <sys/stat.h>
#include <system_error>

namespace vorn {

namespace {

constexpr const char* Group = "Settings";
constexpr goffset LargestFile = goffset{1} << 24;
constexpr int NewFileMode = 0666;
constexpr int NewFolderMode = 0777;
constexpr unsigned Permissions = 0777;
constexpr unsigned AnyoneWrites = 0222;
constexpr char HexDigits[] = "0123456789abcdef";
constexpr char32_t Replacement = 0xFFFD;

struct FreeText {
    void operator()(void* text) const { g_free(text); }
};
using Text = std::unique_ptr<char, FreeText>;

struct FreeKeyFile {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, FreeKeyFile>;

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

// UTF-8 up to the first null; half of a pair becomes U+FFFD.
std::string toUtf8(std::u16string_view text)
{
    std::string bytes;
    text = text.substr(0, text.find(u'\0'));
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t character = text[at];
        if (isHighSurrogate(text[at]) && at + 1 < text.size() && isLowSurrogate(text[at + 1])) {
            character = 0x10000 + ((character - 0xD800) << 10) + (text[at + 1] - char32_t{0xDC00});
            ++at;
        } else if (isHighSurrogate(text[at]) || isLowSurrogate(text[at])) {
            character = Replacement;
        }
        char buffer[6];
        bytes.append(buffer, static_cast<std::size_t>(g_unichar_to_utf8(character, buffer)));
    }
    return bytes;
}

// GLib has answered for it that the bytes are UTF-8.
std::u16string fromUtf8(const char* bytes)
{
    glong length = 0;
    gunichar2* units = g_utf8_to_utf16(bytes, -1, nullptr, &length, nullptr);
    if (units == nullptr)
        return {};
    std::u16string text(units, units + length);
    g_free(units);
    return text;
}

int digitOf(char letter)
{
    const char* found = letter == '\0' ? nullptr : std::strchr(HexDigits, letter);
    return found == nullptr ? -1 : static_cast<int>(found - HexDigits);
}

bool isReadable(const char* path)
{
    GStatBuf status;
    // Anything but a file of bytes might never end.
    return g_stat(path, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= LargestFile;
}

// Where a file can take the place of `path`, and with which mode. A link leads to what it stands
// for, which else would become a file of its own beside it; a device or a pipe has no other to take
// its place, and a file that nobody may write keeps what it holds.
bool isReplaceable(std::string& path, int& mode)
{
    GStatBuf status;
    mode = NewFileMode;
    if (g_stat(path.c_str(), &status) != 0)
        return true; // there is none yet
    if (!S_ISREG(status.st_mode) || (status.st_mode & AnyoneWrites) == 0)
        return false;
    mode = static_cast<int>(status.st_mode & Permissions);
    std::error_code failure;
    const std::filesystem::path real = std::filesystem::canonical(path, failure);
    if (failure)
        return false;
    path = real.string();
    return true;
}

} // namespace

struct SettingsFile::Lines {
    KeyFile file{g_key_file_new()};

    // Null if there is no such line.
    Text raw(std::string_view name) const
    {
        return Text(g_key_file_get_value(file.get(), Group, std::string(name).c_str(), nullptr));
    }
    void setRaw(std::string_view name, const std::string& value)
    {
        g_key_file_set_value(file.get(), Group, std::string(name).c_str(), value.c_str());
    }
};

SettingsFile::SettingsFile(std::string path)
    : path_(std::move(path)), lines_(std::make_unique<Lines>())
{
}

SettingsFile::~SettingsFile() = default;

void SettingsFile::open()
{
    lines_->file.reset(g_key_file_new());
    if (!isReadable(path_.c_str()))
        return;
    const GKeyFileFlags flags =
        static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    // Half of a damaged file is worse than none of it.
    if (g_key_file_load_from_file(lines_->file.get(), path_.c_str(), flags, nullptr) == FALSE)
        lines_->file.reset(g_key_file_new());
}

bool SettingsFile::readNumber(std::string_view name, std::uint32_t& out) const
{
    const Text raw = lines_->raw(name);
    if (raw == nullptr)
        return false;
    const char* end = raw.get() + std::strlen(g_strchomp(raw.get()));
    std::uint32_t value = 0;
    const std::from_chars_result result = std::from_chars(raw.get(), end, value);
    if (result.ec != std::errc() || result.ptr != end)
        return false;
    out = value;
    return true;
}

bool SettingsFile::readText(std::string_view name, std::u16string& out) const
{
    const Text text(
        g_key_file_get_string(lines_->file.get(), Group, std::string(name).c_str(), nullptr));
    if (text == nullptr)
        return false;
    out = fromUtf8(text.get());
    return true;
}

bool SettingsFile::readBytes(std::string_view name, std::vector<unsigned char>& out) const
{
    const Text raw = lines_->raw(name);
    if (raw == nullptr)
        return false;
    const std::string_view digits = g_strchomp(raw.get());
    std::vector<unsigned char> bytes;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
        const int high = digitOf(digits[at]);
        const int low = digitOf(digits[at + 1]);
        if (high < 0 || low < 0)
            return false;
        bytes.push_back(static_cast<unsigned char>(high * 16 + low));
    }
    if (digits.size() % 2 != 0)
        return false;
    out = std::move(bytes);
    return true;
}

void SettingsFile::setNumber(std::string_view name, std::uint32_t value)
{
    lines_->setRaw(name, std::to_string(value));
}

void SettingsFile::setText(std::string_view name, std::u16string_view value)
{
    g_key_file_set_string(lines_->file.get(), Group, std::string(name).c_str(),
                          toUtf8(value).c_str());
}

void SettingsFile::setBytes(std::string_view name, const std::vector<unsigned char>& value)
{
    std::string digits;
    for (unsigned char byte : value) {
        digits += HexDigits[byte >> 4];
        digits += HexDigits[byte & 15];
    }
    lines_->setRaw(name, digits);
}

bool SettingsFile::keep()
{
    std::string path = path_;
    int mode = 0;
    if (!isReplaceable(path, mode))
        return false;
    const Text folder(g_path_get_dirname(path.c_str()));
    g_mkdir_with_parents(folder.get(), NewFolderMode);
    gsize length = 0;
    const Text bytes(g_key_file_to_data(lines_->file.get(), &length, nullptr));
    return g_file_set_contents_full(path.c_str(), bytes.get(), static_cast<gssize>(length),
                                    G_FILE_SET_CONTENTS_CONSISTENT, mode, nullptr) != FALSE;
}

} // namespace vorn
