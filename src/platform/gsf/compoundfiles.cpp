#include "platform/gsf/compoundfiles.h"

#include "platform/files.h"

#include <algorithm>
#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-memory.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-utils.h>

namespace vorn {

namespace {

// No workbook comes near; a length that a damaged directory makes up does.
constexpr std::int64_t LargestFile = std::int64_t{1} << 30;
constexpr std::size_t BlockSize = std::size_t{1} << 16;

struct DropReference {
    void operator()(void* object) const { g_object_unref(object); }
};
using Input = std::unique_ptr<GsfInput, DropReference>;
using Infile = std::unique_ptr<GsfInfile, DropReference>;
using Output = std::unique_ptr<GsfOutput, DropReference>;
using Outfile = std::unique_ptr<GsfOutfile, DropReference>;

struct FreeText {
    void operator()(void* text) const { g_free(text); }
};

// libgsf talks about damage on the error stream of the process; while one of these lives it does
// not.
class Silence {
public:
    Silence() { former_ = g_log_set_default_handler(say, nullptr); }
    ~Silence() { g_log_set_default_handler(former_, nullptr); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    static void say(const char*, GLogLevelFlags, const char*, void*) {}

    GLogFunc former_;
};

std::u16string fromUtf8(const char* text)
{
    glong length = 0;
    const std::unique_ptr<gunichar2, FreeText> units(
        g_utf8_to_utf16(text, -1, nullptr, &length, nullptr));
    return units ? std::u16string(units.get(), units.get() + length) : std::u16string();
}

std::string toUtf8(std::u16string_view text)
{
    const std::vector<gunichar2> units(text.begin(), text.end());
    const std::unique_ptr<char, FreeText> bytes(
        g_utf16_to_utf8(units.data(), static_cast<glong>(units.size()), nullptr, nullptr, nullptr));
    return bytes ? bytes.get() : std::string();
}

bool readFile(File& file, std::vector<unsigned char>& out)
{
    const std::int64_t size = file.size();
    if (size < 0 || size > LargestFile)
        return false;
    out.resize(static_cast<std::size_t>(size));
    std::size_t got = 0;
    while (got < out.size()) {
        const std::int64_t count = file.read(out.data() + got, out.size() - got);
        if (count <= 0)
            return false;
        got += static_cast<std::size_t>(count);
    }
    return true;
}

bool isStream(GsfInput* child)
{
    return gsf_infile_num_children(GSF_INFILE(child)) < 0;
}

class GsfCompoundFile : public CompoundFile {
public:
    explicit GsfCompoundFile(std::vector<unsigned char> bytes) : bytes_(std::move(bytes)) {}

    bool open()
    {
        const Silence silence;
        gsf_init();
        const Input memory(
            gsf_input_memory_new(bytes_.data(), static_cast<gsf_off_t>(bytes_.size()), FALSE));
        root_.reset(gsf_infile_msole_new(memory.get(), nullptr));
        return root_ != nullptr;
    }

    std::vector<std::u16string> streamNames() override
    {
        const Silence silence;
        std::vector<std::u16string> names;
        const int count = gsf_infile_num_children(root_.get());
        for (int index = 0; index < count; ++index) {
            const char* name = gsf_infile_name_by_index(root_.get(), index);
            const Input child(gsf_infile_child_by_index(root_.get(), index));
            if (name != nullptr && child && isStream(child.get()))
                names.push_back(fromUtf8(name));
        }
        return names;
    }

    bool readStream(std::u16string_view name, std::vector<unsigned char>& out) override
    {
        const Silence silence;
        const Input child(gsf_infile_child_by_name(root_.get(), toUtf8(name).c_str()));
        if (!child || !isStream(child.get()))
            return false;
        const gsf_off_t size = gsf_input_size(child.get());
        if (size < 0 || size > static_cast<gsf_off_t>(bytes_.size()))
            return false;
        out.resize(static_cast<std::size_t>(size));
        for (std::size_t at = 0; at < out.size(); at += BlockSize) {
            const std::size_t count = std::min(BlockSize, out.size() - at);
            if (gsf_input_read(child.get(), count, out.data() + at) == nullptr)
                return false;
        }
        return true;
    }

private:
    std::vector<unsigned char> bytes_;
    Infile root_;
};

// The bytes of a compound file with one stream; null if they cannot be made.
Output assemble(std::u16string_view name, const std::vector<unsigned char>& content)
{
    Output sink(gsf_output_memory_new());
    const Outfile root(gsf_outfile_msole_new(sink.get()));
    if (!root)
        return nullptr;
    const Output child(gsf_outfile_new_child(root.get(), toUtf8(name).c_str(), FALSE));
    const bool written = child &&
                         gsf_output_write(child.get(), content.size(), content.data()) != FALSE &&
                         gsf_output_close(child.get()) != FALSE;
    const bool closed = gsf_output_close(GSF_OUTPUT(root.get())) != FALSE;
    return written && closed ? std::move(sink) : nullptr;
}

} // namespace

std::unique_ptr<CompoundFile> GsfCompoundFiles::open(std::u16string_view path)
{
    const std::unique_ptr<File> file = files_.openToRead(path);
    std::vector<unsigned char> bytes;
    if (!file || !readFile(*file, bytes))
        return nullptr;
    auto compound = std::make_unique<GsfCompoundFile>(std::move(bytes));
    if (!compound->open())
        return nullptr;
    return compound;
}

bool GsfCompoundFiles::createWithStream(std::u16string_view path, std::u16string_view name,
                                        const std::vector<unsigned char>& content)
{
    gsf_init();
    const std::unique_ptr<File> file = files_.create(path);
    if (!file)
        return false;
    const Output bytes = assemble(name, content);
    if (!bytes)
        return false;
    return file->write(gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(bytes.get())),
                       static_cast<std::size_t>(gsf_output_size(bytes.get())));
}

} // namespace vorn
