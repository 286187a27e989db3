// Native files put together by hand, record by record, for tests of their reader.
#pragma once

#include "files/nativerecords.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vorn {

// The fields of one record, in order. All numbers are little-endian.
class Fields {
public:
    Fields() = default;

    Fields& add8(unsigned number) { return add(number, 1); }
    Fields& add16(unsigned number) { return add(number, 2); }
    Fields& add32(std::uint32_t number) { return add(number, 4); }
    Fields& addDouble(double number);
    Fields& addBytes(std::string_view more);
    Fields& addUnits(std::u16string_view text);

    // The count of bytes, the units and a zero.
    Fields& addCounted(std::u16string_view text);

    // The units and a zero.
    Fields& addPlain(std::u16string_view text);

    // The count of bytes and byte code as support/codetext.h writes it.
    Fields& addCode(std::string_view code);

    // The cells of a row.
    Fields& addHole() { return add8(CellHole); }
    Fields& addBlank(unsigned style) { return addCell(0, style); }
    Fields& addLogical(unsigned logical, unsigned style);
    Fields& addError(unsigned error, unsigned style);
    Fields& addText(std::uint32_t number, unsigned style);
    Fields& addNumber(double number, unsigned style);
    Fields& addDate(double serial, unsigned style);

    // A formula whose result is a number.
    Fields& addFormula(double result, unsigned style, std::uint32_t number);

    // Tag and style of a cell, without what follows.
    Fields& addCell(unsigned tag, unsigned style) { return add8(tag).add16(style); }

    const std::string& bytes() const { return bytes_; }

private:
    Fields& add(std::uint64_t number, int count);

    std::string bytes_;
};

// The head of a row: all but its cells.
Fields rowFields(unsigned row, unsigned first, unsigned end, unsigned height = 255,
                 unsigned flags = 0x100, unsigned style = 0);

// A style with the font and the format of these numbers, otherwise the default one.
Fields styleFields(unsigned format, unsigned font);

Fields fontFields(std::u16string_view face, unsigned height = 200);

// A number format, or with 254 and 255 decimals the text format and General.
Fields formatFields(unsigned decimals, unsigned thousands,
                    std::initializer_list<std::u16string_view> affixes);

// The bytes of a file. It begins with a header; its end is up to the test.
class NativeFile {
public:
    explicit NativeFile(unsigned version = NativeVersion, unsigned writer = NativeVersion,
                        unsigned required = NativeVersion);

    NativeFile& add(unsigned type, const Fields& fields = {});

    // The names of sheets; tables with one font, sixteen formats of no account and so many styles.
    NativeFile& addSheets(std::initializer_list<std::u16string_view> names);
    NativeFile& addTables(int styles = 1);
    NativeFile& addText(std::u16string_view text);
    NativeFile& addFormula(std::string_view code);

    // The file as it is, and with its end.
    const std::string& bytes() const { return bytes_; }
    std::string ended() const { return NativeFile(*this).add(RecordEnd).bytes_; }

private:
    std::string bytes_;
};

// A document with a record of every type and a cell of every kind, without volatile functions and
// without its end.
NativeFile richFile();

// Reads the bytes into a new document, as an open does, and answers the error that stands then,
// which is taken away. The document that a failed read leaves is not replaced.
int loadBytes(std::string_view bytes);

// The same, into the document that stands.
int loadInPlace(std::string_view bytes);

// Shows, prints and calculates all that a user could look at. Answers how many characters it was.
std::size_t lookAtEverything();

} // namespace vorn
