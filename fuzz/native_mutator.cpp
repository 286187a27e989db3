// Changes native files record by record, so that most of them stay files: the payload of one record
// is changed as any bytes are, or records change their places, come twice or get lost. The lengths
// are put right.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed);

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Record {
    unsigned type;
    Bytes payload;
};
using Records = std::vector<Record>;

constexpr std::size_t HeadBytes = 4;

Records takeApart(const std::uint8_t* data, std::size_t size)
{
    Records records;
    while (size >= HeadBytes) {
        const auto type = static_cast<unsigned>(data[0] | data[1] << 8);
        const auto length = static_cast<std::size_t>(data[2] | data[3] << 8);
        const std::uint8_t* payload = data + HeadBytes;
        const std::size_t count = std::min(length, size - HeadBytes);
        records.push_back({type, Bytes(payload, payload + count)});
        data = payload + count;
        size -= HeadBytes + count;
    }
    return records;
}

Bytes putTogether(const Records& records)
{
    Bytes bytes;
    for (const Record& record : records) {
        const std::size_t length = record.payload.size();
        for (const std::size_t part : {std::size_t{record.type}, length}) {
            bytes.push_back(static_cast<std::uint8_t>(part));
            bytes.push_back(static_cast<std::uint8_t>(part >> 8));
        }
        bytes.insert(bytes.end(), record.payload.begin(), record.payload.end());
    }
    return bytes;
}

using Random = std::minstd_rand;

std::size_t below(Random& random, std::size_t limit)
{
    return random() % limit;
}

void changePayload(Bytes& payload, Random& random)
{
    const std::size_t size = payload.size();
    payload.resize(size + 1 + below(random, 24));
    payload.resize(LLVMFuzzerMutate(payload.data(), size, payload.size()));
}

void changeOrder(Records& records, Random& random)
{
    const std::size_t from = below(random, records.size());
    const Record record = records[from];
    const auto place = [&records](std::size_t index) {
        return records.begin() + static_cast<std::ptrdiff_t>(index);
    };
    if (below(random, 3) != 0)
        records.erase(place(from));
    if (below(random, 3) != 0 || records.empty())
        records.insert(place(below(random, records.size() + 1)), record);
}

void changeType(Record& record, Random& random)
{
    constexpr unsigned LastType = 28;
    constexpr unsigned ActiveSheet = 32769;
    const auto type = static_cast<unsigned>(below(random, LastType + 1));
    record.type = type == LastType ? ActiveSheet : type;
}

} // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                    unsigned seed)
{
    Random random(seed + 1);
    Records records = takeApart(data, size);
    const std::size_t choice = below(random, 16);
    if (records.empty() || choice == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    if (choice < 12)
        changePayload(records[below(random, records.size())].payload, random);
    else if (choice < 15)
        changeOrder(records, random);
    else
        changeType(records[below(random, records.size())], random);
    const Bytes bytes = putTogether(records);
    if (bytes.size() > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::memcpy(data, bytes.data(), bytes.size());
    return bytes.size();
}
