// Just enough of JSON to read what is known about the files of a collection.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn {

struct Json {
    enum Kind { Null, Logical, Number, Text, List, Record };

    // The value of a field of a record; a Null if there is none.
    const Json& at(std::u16string_view name) const;

    Kind kind = Null;
    bool logical = false;
    double number = 0;
    std::u16string text;
    std::vector<Json> items;                             // of a list
    std::vector<std::pair<std::u16string, Json>> fields; // of a record
};

// Null if the text is no JSON.
Json parseJson(std::u16string_view text);

} // namespace vorn
