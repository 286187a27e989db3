// What a native file holds, record by record, for tests of its writer and its reader. Payloads are
// written in hexadecimal, as one reads them in a dump.
#pragma once

#include "files/transfer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

struct FiledRecord {
    int type = 0;
    std::string payload; // in hexadecimal, without blanks

    bool operator==(const FiledRecord&) const = default;
};

// The bytes of the workbook as a file. The stream of the context is not looked at.
std::string savedBytes(TransferContext context = {});

// The records of such bytes; a test fails if they do not end where a record ends.
std::vector<FiledRecord> splitRecords(const std::string& bytes);

// The records of a save; and the payloads of those of one type.
std::vector<FiledRecord> savedRecords();
std::vector<std::string> savedPayloads(int type);

// The types of a save in their order, with blanks between; "7x3" stands for three of them.
std::string savedTypes();

std::string hexOf(std::string_view bytes);

// Takes the blanks out of what a test writes for the eye.
std::string bare(std::string_view hex);

std::string hex8(unsigned number);
std::string hex16(unsigned number);
std::string hex32(std::uint32_t number);
std::string hexDouble(double number);

// The units of a text with the closing zero; and with the count of bytes before them.
std::string hexPlain(std::u16string_view text);
std::string hexCounted(std::u16string_view text);

} // namespace vorn
