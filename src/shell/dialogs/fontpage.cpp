#include "platform/platform.h"
#include "resources/colournames.h"
#include "shell/dialogs/formatpages.h"

#include <algorithm>
#include <string>

namespace vorn {

namespace {

enum {
    Face = 1005,
    Size = 1006,
    TextColour = 1007,
    BackColour = 1008,
    Bold = 1009,
    Italic = 1010,
    Underline = 1011,
};

constexpr std::size_t FaceMax = 16;
constexpr std::size_t FixedSizeMax = 12;
constexpr int ScalableSizes[] = {8, 9, 10, 11, 12, 14, 16, 20, 24, 28, 36};

static_assert(std::size(ColourNames) == ColourEntryCount);

std::u16string decimalText(int number)
{
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

std::vector<int> offeredSizes(const FontFamily* family)
{
    if (family == nullptr || family->scalable)
        return {std::begin(ScalableSizes), std::end(ScalableSizes)};
    std::vector<int> sizes = family->points;
    sizes.resize(std::min(sizes.size(), FixedSizeMax));
    return sizes;
}

} // namespace

FontPage::FontPage(FormatRequest& request) : DialogModel(135), request_(request) {}

void FontPage::opened()
{
    size_ = request_.fontSize;
    fillFaces();
    fillSizes();
    const std::vector<std::u16string> colours(std::begin(ColourNames), std::end(ColourNames));
    setEntries(TextColour, colours);
    select(TextColour, request_.textColour);
    setEntries(BackColour, colours);
    select(BackColour, request_.backColour);
    showBox(Bold, static_cast<BoxState>(request_.bold));
    showBox(Italic, static_cast<BoxState>(request_.italic));
    showBox(Underline, static_cast<BoxState>(request_.underline));
}

void FontPage::changed(int control)
{
    if (control == Face)
        fillSizes();
    else if (control == Size)
        size_ = sizes_[static_cast<std::size_t>(selected(Size))];
}

void FontPage::pressed(int button)
{
    if (selected(Face) != NoEntry) {
        const FontFamily& family = families_[static_cast<std::size_t>(selected(Face))];
        request_.fontName = family.face;
        request_.fontPitch = family.pitchAndFamily;
        request_.fontCharset = family.charset;
    }
    request_.fontSize = size_;
    request_.textColour = selected(TextColour);
    request_.backColour = selected(BackColour);
    request_.bold = static_cast<int>(boxState(Bold));
    request_.italic = static_cast<int>(boxState(Italic));
    request_.underline = static_cast<int>(boxState(Underline));
    close(button);
}

// The machine's fonts. That of the selection is shown as the selection has it, also if the machine
// does not have it.
void FontPage::fillFaces()
{
    families_ = platform.textMeasure->fontFamilies();
    families_.resize(std::min(families_.size(), FaceMax));
    int chosen = NoEntry;
    if (!request_.fontName.empty()) {
        const auto known =
            std::find_if(families_.begin(), families_.end(), [this](const FontFamily& family) {
                return family.face == request_.fontName;
            });
        chosen = static_cast<int>(known - families_.begin());
        if (known == families_.end())
            families_.push_back({request_.fontName, 0, 0, true, {}});
        FontFamily& family = families_[static_cast<std::size_t>(chosen)];
        family.pitchAndFamily = request_.fontPitch;
        family.charset = request_.fontCharset;
    }
    std::vector<std::u16string> faces;
    for (const FontFamily& family : families_)
        faces.push_back(family.face);
    setEntries(Face, std::move(faces));
    select(Face, chosen);
}

// The sizes of the chosen font, and the one that is in force.
void FontPage::fillSizes()
{
    const int face = selected(Face);
    sizes_ = offeredSizes(face == NoEntry ? nullptr : &families_[static_cast<std::size_t>(face)]);
    auto entry = std::lower_bound(sizes_.begin(), sizes_.end(), size_);
    if (size_ != FormatMixed && (entry == sizes_.end() || *entry != size_))
        entry = sizes_.insert(entry, size_);
    const int chosen = size_ == FormatMixed ? NoEntry : static_cast<int>(entry - sizes_.begin());
    std::vector<std::u16string> entries;
    for (int size : sizes_)
        entries.push_back(decimalText(size));
    setEntries(Size, std::move(entries));
    select(Size, chosen);
}

} // namespace vorn
