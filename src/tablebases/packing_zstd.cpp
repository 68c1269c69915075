#include <zstd.h>

#include <new>

#include "tablebases/packing.h"

namespace VorkaTablebases {

namespace {

/// The strongest level that needs no more memory to unpack. A table is packed once.
constexpr int level = 19;

struct FreeContext {
    void operator()(ZSTD_CCtx* context) const noexcept { ZSTD_freeCCtx(context); }
    void operator()(ZSTD_DCtx* context) const noexcept { ZSTD_freeDCtx(context); }
};

}  // namespace

bool HasPacking() noexcept { return true; }

struct Packer::State {
    std::unique_ptr<ZSTD_CCtx, FreeContext> context{ZSTD_createCCtx()};
};

Packer::Packer() : state_(std::make_unique<State>()) {
    if (!state_->context) throw std::bad_alloc();
    ZSTD_CCtx_setParameter(state_->context.get(), ZSTD_c_compressionLevel, level);
}

Packer::~Packer() = default;

std::vector<std::uint8_t> Packer::Pack(std::span<const std::uint8_t> plain) {
    std::vector<std::uint8_t> packed(ZSTD_compressBound(plain.size()));
    const std::size_t size =
        ZSTD_compress2(state_->context.get(), packed.data(), packed.size(), plain.data(), plain.size());
    if (ZSTD_isError(size) != 0) throw std::bad_alloc();  // there is room, so that nothing else can fail
    packed.resize(size);
    return packed;
}

struct Unpacker::State {
    std::unique_ptr<ZSTD_DCtx, FreeContext> context{ZSTD_createDCtx()};
};

Unpacker::Unpacker() : state_(std::make_unique<State>()) {
    if (!state_->context) throw std::bad_alloc();
}

Unpacker::~Unpacker() = default;

bool Unpacker::Unpack(std::span<const std::uint8_t> packed, std::span<std::uint8_t> plain) noexcept {
    return ZSTD_decompressDCtx(state_->context.get(), plain.data(), plain.size(), packed.data(), packed.size()) ==
           plain.size();
}

}  // namespace VorkaTablebases
