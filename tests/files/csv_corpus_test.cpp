// Text files of other programs, where a collection of them is at hand: VORN_CORPUS names its
// folder. What is known about a file are its fields, as texts, cut apart by the usual rules for
// quotes.

#include "core/error.h"
#include "core/input.h"
#include "core/workbook.h"
#include "files/csv.h"
#include "files/stream.h"
#include "platform/files.h"
#include "support/cells.h"
#include "support/json.h"
#include "support/testplatform.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>

namespace vorn {
namespace {

constexpr std::size_t FieldMax = 1000;
constexpr int IsoLatin1Page = 28591;
constexpr int LittleEndianPage = 1200;

std::string unpacked(const std::filesystem::path& path)
{
    std::string bytes;
    FILE* pipe = ::popen(("gzip -dc '" + path.string() + "'").c_str(), "r");
    if (pipe == nullptr)
        return bytes;
    char block[4096];
    for (std::size_t count; (count = std::fread(block, 1, sizeof block, pipe)) != 0;)
        bytes.append(block, count);
    ::pclose(pipe);
    return bytes;
}

// A file of the collection, and what is known about it.
struct CorpusFile {
    explicit CorpusFile(const std::filesystem::path& corpus, const std::filesystem::path& file)
        : path(file)
    {
        std::u16string text;
        const auto name = "csv-" + file.stem().string() + ".json.gz";
        IcuCodePages(Utf8Page).decoder(Utf8Page)->decode(unpacked(corpus / "oracle" / name), true,
                                                         text);
        known = parseJson(text);
        delimiter = known.at(u"delimiter").text;
        encoding = known.at(u"encoding").text;
    }

    int codePage() const
    {
        if (encoding == u"legacy")
            return IsoLatin1Page; // as their fields were made known
        return encoding == u"utf-16" ? LittleEndianPage : Utf8Page;
    }

    bool hasMark() const { return encoding == u"utf-8-sig" || encoding == u"utf-16"; }

    std::filesystem::path path;
    Json known;
    std::u16string delimiter;
    std::u16string encoding;
};

std::vector<CorpusFile> corpusFiles()
{
    std::vector<CorpusFile> files;
    const char* corpus = std::getenv("VORN_CORPUS");
    if (corpus == nullptr)
        return files;
    std::error_code error;
    const std::filesystem::path folder(corpus);
    for (const auto& entry : std::filesystem::directory_iterator(folder / "csv", error))
        files.emplace_back(folder, entry.path());
    return files;
}

// A document that holds nothing but a file, whatever its name says about its kind.
class ReadFile {
public:
    explicit ReadFile(const CorpusFile& file, std::string_view locale = TestLocale)
        : document_(locale)
    {
        NewDocument(1, FileKindNative);
        workbook->codePage = file.codePage();
        const std::unique_ptr<File> bytes = platform.files->openToRead(file.path.u16string());
        EXPECT_TRUE(bytes) << file.path;
        if (!bytes)
            return;
        FileStream stream(*bytes);
        TransferContext context;
        context.stream = &stream;
        ImportText(context);
    }

private:
    TestDocument document_;
};

// A field as our reader collects it.
std::u16string collected(std::u16string field)
{
    std::erase_if(field, [](char16_t unit) { return unit < u' '; });
    if (!field.empty() && field.front() == u'=')
        field.insert(field.begin(), u'\'');
    return field.substr(0, FieldMax);
}

std::string typed(std::u16string_view text)
{
    CellValue value;
    int format = NoFormatSuggestion;
    parseCellInput(value, text, {}, &format);
    std::string shown = describe(value);
    releaseValue(value);
    return shown;
}

// A cell has to hold what its field would be if it were typed. Blanks before it are dropped, but
// not within quotes, of which nothing is known.
void expectField(const std::u16string& field, int column, int row, const std::string& name)
{
    const std::string cell = describe(workbook->currentSheet->cellCopy(column, row).value);
    const std::u16string text = collected(field);
    const std::size_t start = std::min(text.find_first_not_of(u' '), text.size());
    if (cell == typed(text))
        return;
    EXPECT_EQ(cell, typed(collected(text.substr(start)))) << name << " " << row << " " << column;
}

void expectFields(const CorpusFile& file)
{
    const std::string name = file.path.filename().string();
    const std::vector<Json>& rows = file.known.at(u"rows").items;
    int lastRow = 0;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::vector<Json>& fields = rows[row].items;
        for (std::size_t column = 0; column < std::min<std::size_t>(fields.size(), ColumnCount);
             ++column) {
            std::u16string field = fields[column].text;
            if (file.hasMark() && row == 0 && column == 0)
                field.insert(field.begin(), u'\ufeff');
            expectField(field, static_cast<int>(column), static_cast<int>(row), name);
            if (!field.empty())
                lastRow = static_cast<int>(row);
        }
        EXPECT_LE(workbook->currentSheet->rowCount(static_cast<int>(row)),
                  static_cast<int>(fields.size()))
            << name << " " << row;
    }
    EXPECT_EQ(workbook->currentSheet->lastRow(), lastRow) << name;
}

bool holdsLineEnds(const Json& rows)
{
    for (const Json& row : rows.items) {
        for (const Json& field : row.items) {
            if (field.text.find_first_of(u"\r\n") != std::u16string::npos)
                return true;
        }
    }
    return false;
}

TEST(CsvCorpus, readsEveryFile)
{
    const std::vector<CorpusFile> files = corpusFiles();
    if (files.empty())
        GTEST_SKIP() << "VORN_CORPUS names no collection";
    for (const CorpusFile& file : files) {
        const ReadFile document(file);
        EXPECT_EQ(errorState.code, ErrorNone) << file.path;
        CellIterator cells;
        cells.start(*workbook->currentSheet, {0, 0, LastRow, LastColumn});
        while (const Cell* cell = cells.nextOccupiedCell())
            EXPECT_NE(cell->value.tag, TagFormula) << file.path;
    }
}

TEST(CsvCorpus, readsTheFieldsThatAreKnown)
{
    const std::vector<CorpusFile> files = corpusFiles();
    if (files.empty())
        GTEST_SKIP() << "VORN_CORPUS names no collection";
    int compared = 0;
    for (const CorpusFile& file : files) {
        // The locale's separator decides, so only files that some locale can read are compared; and
        // a line feed in quotes ends our row.
        const bool comma = file.delimiter == u",";
        if ((!comma && file.delimiter != u";") || holdsLineEnds(file.known.at(u"rows")))
            continue;
        const ReadFile document(file, comma ? "en_US" : "de_DE");
        expectFields(file);
        ++compared;
    }
    EXPECT_GE(compared, 15);
}

} // namespace
} // namespace vorn
