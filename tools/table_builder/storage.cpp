#include "table_builder/storage.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "frame/base/whole_file.h"
#include "table_builder/parallel.h"
#include "tablebases/packing.h"
#include "tablebases/table_messages.h"

namespace table_builder {

namespace {

using namespace VorkaTablebases;

/// Larger blocks pack better, smaller ones are read faster.
constexpr std::uint32_t block_bytes = 1 << 14;

/// The values of a block as they are packed: what stands for no position is never asked for, and becomes what stands
/// before it.
std::vector<TableValue> WithoutGaps(std::span<const TableValue> values) {
    std::vector<TableValue> block(values.begin(), values.end());
    const auto first = std::ranges::find_if(block, [](TableValue value) { return value != table_illegal; });
    TableValue before = first == block.end() ? table_draw : *first;
    for (TableValue& value : block) {
        if (value == table_illegal) value = before;
        before = value;
    }
    return block;
}

/// Null if it is no table of this material.
std::unique_ptr<MateTableFile> OpenTable(const std::string& folder, const Material& material) {
    std::unique_ptr<MateTableFile> file = MateTableFile::Open(PathOf(folder, material));
    if (file && file->header().material != material) {
        TellUnableToRegister(PathOf(folder, material));
        return nullptr;
    }
    return file;
}

}  // namespace

std::string PathOf(const std::string& folder, const Material& material) {
    return folder + '/' + material.name().append(mate_table_ending);
}

bool WriteTable(const std::string& folder, const SolvedTable& table, int threads,
                const std::function<void(double)>& report) {
    MateTableHeader header = HeaderOf(table);
    header.block_bytes = block_bytes;
    std::vector<std::vector<std::uint8_t>> packed(header.blocks());
    std::vector<std::optional<Packer>> packers(static_cast<std::size_t>(threads));
    for (std::optional<Packer>& packer : packers) packer.emplace();
    InParallel(threads, packed.size(), 1, [&](int thread, std::uint64_t begin, std::uint64_t end) {
        for (std::uint64_t block = begin; block < end; ++block) {
            const auto number = static_cast<std::uint32_t>(block);
            const std::span<const TableValue> values(table.values.data() + block * block_bytes, header.BytesOf(number));
            packed[block] = packers[static_cast<std::size_t>(thread)]->Pack(WithoutGaps(values));
        }
        if (thread == 0 && report) report(static_cast<double>(end) / static_cast<double>(packed.size()));
    });
    return ReplaceFile(PathOf(folder, table.material()), MateTableText(header, packed)) == FileOutcome::written;
}

bool IsSound(const std::string& folder, const Material& material) {
    if (access(PathOf(folder, material).c_str(), F_OK) != 0) return false;
    const std::unique_ptr<MateTableFile> file = OpenTable(folder, material);
    if (!file) return false;
    std::vector<TableValue> values(file->header().block_bytes);
    for (std::uint32_t block = 0; block < file->header().blocks(); ++block) {
        if (file->ReadBlock(block, values) != SourceFailure::none) return false;
    }
    return true;
}

std::unique_ptr<SolvedTable> ReadTable(const std::string& folder, const Material& material) {
    const std::unique_ptr<MateTableFile> file = OpenTable(folder, material);
    if (!file) return nullptr;
    auto table = std::make_unique<SolvedTable>(material);
    table->values.resize(static_cast<std::size_t>(file->header().entries));
    for (std::uint32_t block = 0; block < file->header().blocks(); ++block) {
        const std::span<TableValue> to(table->values.data() + std::size_t{block} * file->header().block_bytes,
                                       file->header().BytesOf(block));
        if (file->ReadBlock(block, to) != SourceFailure::none) return nullptr;
    }
    return table;
}

}  // namespace table_builder
