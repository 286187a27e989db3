#include "support/nativefile.h"

#include "core/error.h"
#include "core/style.h"
#include "core/workbook.h"
#include "files/native.h"
#include "files/stream.h"
#include "support/codetext.h"

#include <bit>
#include <vector>

namespace vorn {

Fields& Fields::add(std::uint64_t number, int count)
{
    for (int byte = 0; byte < count; ++byte)
        bytes_ += static_cast<char>(number >> (8 * byte) & 0xff);
    return *this;
}

Fields& Fields::addDouble(double number)
{
    return add(std::bit_cast<std::uint64_t>(number), 8);
}

Fields& Fields::addBytes(std::string_view more)
{
    bytes_ += more;
    return *this;
}

Fields& Fields::addUnits(std::u16string_view text)
{
    for (const char16_t unit : text)
        add16(unit);
    return *this;
}

Fields& Fields::addCounted(std::u16string_view text)
{
    return add32(static_cast<std::uint32_t>(2 * text.size() + 2)).addPlain(text);
}

Fields& Fields::addPlain(std::u16string_view text)
{
    return addUnits(text).add16(0);
}

Fields& Fields::addCode(std::string_view code)
{
    const std::vector<std::uint8_t> bytes = codeBytes(code);
    add32(static_cast<std::uint32_t>(bytes.size()));
    bytes_.append(bytes.begin(), bytes.end());
    return *this;
}

Fields& Fields::addLogical(unsigned logical, unsigned style)
{
    return addCell(1, style).add8(logical);
}
Fields& Fields::addError(unsigned error, unsigned style)
{
    return addCell(2, style).add8(error);
}
Fields& Fields::addText(std::uint32_t number, unsigned style)
{
    return addCell(3, style).add32(number);
}
Fields& Fields::addNumber(double number, unsigned style)
{
    return addCell(4, style).addDouble(number);
}
Fields& Fields::addDate(double serial, unsigned style)
{
    return addCell(13, style).addDouble(serial);
}
Fields& Fields::addFormula(double result, unsigned style, std::uint32_t number)
{
    return addCell(4 | CellFormulaMark, style).addDouble(result).add32(number);
}

Fields rowFields(unsigned row, unsigned first, unsigned end, unsigned height, unsigned flags,
                 unsigned style)
{
    Fields fields;
    for (const unsigned field : {row, first, end, height, flags, style})
        fields.add16(field);
    return fields;
}

Fields styleFields(unsigned format, unsigned font)
{
    CellStyle style = defaultStyle();
    style.set(StyleFormat, static_cast<int>(format));
    style.set(StyleFont, static_cast<int>(font));
    Fields fields;
    for (const unsigned word : style.words)
        fields.add16(word);
    return fields;
}

Fields fontFields(std::u16string_view face, unsigned height)
{
    Fields fields;
    fields.add8(0).add8(0).add16(0).add16(height).add16(32767).add16(400).add8(34).add8(1);
    fields.addUnits(face);
    for (std::size_t unit = face.size(); unit < 32; ++unit)
        fields.add16(0);
    return fields.add8(static_cast<unsigned>(face.size()));
}

Fields formatFields(unsigned decimals, unsigned thousands,
                    std::initializer_list<std::u16string_view> affixes)
{
    Fields fields;
    fields.add8(decimals).add8(thousands);
    for (const std::u16string_view affix : affixes)
        fields.addPlain(affix);
    return fields;
}

NativeFile::NativeFile(unsigned version, unsigned writer, unsigned required)
{
    add(RecordHeader, Fields().add16(version).add16(writer).add16(required).add16(UsualPayloadMax));
}

NativeFile& NativeFile::add(unsigned type, const Fields& fields)
{
    bytes_ += Fields()
                  .add16(type)
                  .add16(static_cast<unsigned>(fields.bytes().size()))
                  .addBytes(fields.bytes())
                  .bytes();
    return *this;
}

NativeFile& NativeFile::addSheets(std::initializer_list<std::u16string_view> names)
{
    for (const std::u16string_view name : names)
        add(RecordSheetName, Fields().addCounted(name));
    return *this;
}

NativeFile& NativeFile::addTables(int styles)
{
    add(RecordFont, fontFields(u"Tahoma"));
    for (int format = 0; format < 16; ++format)
        add(RecordNumberFormat, formatFields(DecimalsOfGeneral, 0, {u"", u"", u"", u""}));
    for (int style = 0; style < styles; ++style)
        add(RecordStyle, styleFields(0, 0));
    return *this;
}

NativeFile& NativeFile::addText(std::u16string_view text)
{
    return add(RecordText, Fields().addCounted(text));
}

NativeFile& NativeFile::addFormula(std::string_view code)
{
    return add(RecordFormula, Fields().addCode(code));
}

int loadBytes(std::string_view bytes)
{
    NewDocument(0, FileKindNative);
    MemoryStream stream(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    TransferContext context;
    context.stream = &stream;
    loadNative(context, static_cast<std::uint32_t>(bytes.size()));
    const int code = errorState.code;
    clearError();
    return code;
}

} // namespace vorn
