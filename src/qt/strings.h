// Texts between the system and the toolkit. Both are UTF-16.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace vorn::qt {

inline QString toQt(std::u16string_view text)
{
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::u16string fromQt(const QString& text)
{
    return text.toStdU16String();
}

} // namespace vorn::qt
