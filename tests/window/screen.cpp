#include "window/screen.h"

#include <cstring>

namespace vorn {
namespace {

// The server keeps its picture as a window dump: numbers of four bytes, the greatest first, then
// the name, the colour table and the pixels.
enum HeaderField : std::size_t {
    HeaderSize = 0,
    PixelDepth = 3,
    Width = 4,
    Height = 5,
    ByteOrder = 7,
    BitsPerPixel = 11,
    BytesPerLine = 12,
    ColourCount = 19,
    HeaderFields = 25,
};
constexpr std::size_t ColourSize = 12;
constexpr unsigned LeastByteFirst = 0;

unsigned field(const std::string& dump, HeaderField index)
{
    unsigned value = 0;
    for (std::size_t byte = 0; byte < 4; ++byte)
        value = value << 8 | static_cast<unsigned char>(dump[index * 4 + byte]);
    return value;
}

QImage readDump(const std::string& dump)
{
    if (dump.size() < HeaderFields * 4 || field(dump, BitsPerPixel) != 32 ||
        field(dump, PixelDepth) != 24 || field(dump, ByteOrder) != LeastByteFirst)
        return {};
    const std::size_t begin = field(dump, HeaderSize) + field(dump, ColourCount) * ColourSize;
    const std::size_t line = field(dump, BytesPerLine);
    const std::size_t height = field(dump, Height);
    if (dump.size() < begin + line * height)
        return {};
    QImage picture(static_cast<int>(field(dump, Width)), static_cast<int>(height),
                   QImage::Format_RGB32);
    for (std::size_t y = 0; y < height; ++y)
        std::memcpy(picture.scanLine(static_cast<int>(y)), dump.data() + begin + y * line,
                    static_cast<std::size_t>(picture.width()) * 4);
    return picture;
}

const QRgb* pixels(const QImage& picture, int y)
{
    return static_cast<const QRgb*>(static_cast<const void*>(picture.constScanLine(y)));
}

} // namespace

Screen::Screen(int width, int height)
{
    const std::string size = std::to_string(width) + "x" + std::to_string(height) + "x24";
    // The server itself picks a number that is free, and tells it once it can be talked to.
    server_.emplace(
        std::vector<std::string>{"sh", "-c",
                                 "exec Xvfb -displayfd 3 -screen 0 " + size +
                                     " -fbdir . -nolisten tcp -noreset -nocursor 3> number"},
        Variables{}, folder_.file(""), "log");
    const auto hasNumber = [this] { return folder_.read("number").ends_with('\n'); };
    if (!waitUntil([&] { return hasNumber() || !server_->isRunning(); }) || !hasNumber())
        return;
    const std::string number = folder_.read("number");
    name_ = ":" + number.substr(0, number.size() - 1);
}

std::string Screen::fault() const
{
    return "Xvfb cannot start: " + folder_.read("log");
}

QImage Screen::picture() const
{
    const std::string path = folder_.file("Xvfb_screen0");
    std::string dump(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary)
        .read(dump.data(), static_cast<std::streamsize>(dump.size()));
    return readDump(dump);
}

QRect difference(const QImage& one, const QImage& other)
{
    QRect found;
    for (int y = 0; y < one.height(); ++y) {
        const QRgb* a = pixels(one, y);
        const QRgb* b = pixels(other, y);
        int left = 0;
        int right = one.width();
        while (left < right && ((a[left] ^ b[left]) & RGB_MASK) == 0)
            ++left;
        while (right > left && ((a[right - 1] ^ b[right - 1]) & RGB_MASK) == 0)
            --right;
        if (left < right)
            found |= QRect(left, y, right - left, 1);
    }
    return found;
}

} // namespace vorn
