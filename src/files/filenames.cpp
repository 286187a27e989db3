#include "files/filenames.h"

namespace vorn {

namespace {

constexpr std::u16string_view Separators = u"/\\";

std::u16string_view extensionOfFilter(int filterIndex)
{
    switch (filterIndex) {
    case FilterPocketExcel:
        return u".pxl";
    case FilterExcel:
        return u".xls";
    default:
        return u".vn";
    }
}

} // namespace

std::u16string_view folderOfPath(std::u16string_view path)
{
    const std::size_t separator = path.find_last_of(Separators);
    return separator == std::u16string_view::npos ? std::u16string_view()
                                                  : path.substr(0, separator + 1);
}

std::u16string_view nameOfPath(std::u16string_view path)
{
    return path.substr(folderOfPath(path).size());
}

std::u16string completeName(std::u16string_view name, int filterIndex)
{
    std::u16string complete(name);
    if (name.find(u'.') == std::u16string_view::npos)
        complete += extensionOfFilter(filterIndex);
    else if (name.ends_with(u'.'))
        complete += extensionOfFilter(filterIndex).substr(1);
    return complete;
}

std::u16string nameForFilter(std::u16string_view shown, int filterIndex)
{
    std::u16string name(shown.substr(0, shown.find(u'.')));
    name += extensionOfFilter(filterIndex);
    return name;
}

std::u16string withoutDoubleBackslash(std::u16string_view path)
{
    return std::u16string(path.starts_with(u"\\\\") ? path.substr(1) : path);
}

} // namespace vorn
