// Just enough of JSON to read what is known about the files of a collection.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorn {

struct Json {
    enum Kind { Null, Logical, Number, Text, List, Record };

    // The value of an item of a record; a Null if there is none.
    const Json& at(std::u16string_view name) const;

    Kind kind = Null;
    bool logical = false;
    double number = 0;
    std::u16string text;
    std::vector<Json> items;           // of a list or a record
    std::vector<std::u16string> names; // of a record, beside its items
};

// Null if the text is no JSON.
Json parseJson(std::u16string_view text);

} // namespace vorn
