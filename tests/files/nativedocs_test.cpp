// The worked example of docs/formats/native.md is a file that Vorn writes.

#include "core/heap.h"
#include "core/workbook.h"
#include "formula/compiler.h"
#include "support/cells.h"
#include "support/filedrecords.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace vorn {
namespace {

constexpr std::size_t BytesInLine = 16;

void defineName(std::u16string_view name, std::u16string_view definition)
{
    ByteCodeWriter writer;
    ASSERT_EQ(compileText(definition, writer, {}, CompileFormula), -1);
    DefinedName record;
    record.name = duplicateString(name);
    record.block = writer.finish();
    workbook->names.append(record);
}

// What the document says that the example is.
void buildExample(Cells& cells)
{
    NewDocument(1, FileKindNative);
    workbook->codePage = 65001;
    defineName(u"Vat", u"=0.2");
    cells.fill("A1", {
                         {u"net", u"100"      },
                         {u"tax", u"=B1*Vat"  },
                         {u"",    u"=A2&\"!\""}
    });
    Sheet& sheet = *workbook->currentSheet;
    CellStyle bold = defaultStyle();
    bold.set(StyleFont, 1);
    sheet.setCellStyle(1, 1, workbook->addStyle(bold));
    sheet.columns.setColumnWidth(0, 0, 3000);
    sheet.selection.select({0, 1}, {2, 1});
}

std::string spaced(const std::string& hex)
{
    std::string text;
    for (std::size_t place = 0; place < hex.size(); place += 2)
        text += (place == 0 ? "" : " ") + hex.substr(place, 2);
    return text;
}

// A line for each record: where it begins, its head, its payload. Long payloads go on in lines of
// their own.
std::string dumpOf(const std::string& bytes)
{
    std::string dump;
    std::size_t place = 0;
    const auto addLine = [&](const std::string& head, const std::string& payload) {
        dump += hex8(static_cast<unsigned>(place / 256)) + hex8(static_cast<unsigned>(place % 256));
        dump += "  " + (head.empty() ? std::string(11, ' ') : spaced(head)) + "  " +
                spaced(payload) + "\n";
        place += (head.size() + payload.size()) / 2;
    };
    for (const FiledRecord& record : splitRecords(bytes)) {
        std::string head = hex16(static_cast<unsigned>(record.type)) +
                           hex16(static_cast<unsigned>(record.payload.size() / 2));
        std::size_t taken = 0;
        do {
            const std::string part = record.payload.substr(taken, 2 * BytesInLine);
            addLine(head, part);
            head.clear();
            taken += part.size();
        } while (taken < record.payload.size());
    }
    return dump;
}

// The dump as it stands in the document, without the remarks behind "#".
std::string documentedDump()
{
    std::ifstream file(VORN_SOURCE_DIR "/docs/formats/native.md");
    std::string dump;
    bool isInside = false;
    for (std::string line; std::getline(file, line);) {
        if (line == "```") {
            isInside = !isInside;
        } else if (isInside) {
            line.erase(std::min(line.find('#'), line.size()));
            line.erase(line.find_last_not_of(' ') + 1);
            dump += line + "\n";
        }
    }
    return dump;
}

std::string withoutTrailingBlanks(const std::string& text)
{
    std::istringstream lines(text);
    std::string trimmed;
    for (std::string line; std::getline(lines, line);)
        trimmed += line.erase(line.find_last_not_of(' ') + 1) + "\n";
    return trimmed;
}

TEST(NativeDocs, showAFileAsItIsWritten)
{
    Cells cells;
    buildExample(cells);
    EXPECT_EQ(documentedDump(), withoutTrailingBlanks(dumpOf(savedBytes())));
}

} // namespace
} // namespace vorn
