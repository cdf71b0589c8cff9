// Changes pictures so that they stay pictures: chunks keep their checksums.
#include <zlib.h>

#include <algorithm>
#include <string>
#include <vector>

#include "input.h"
#include "support/random_planes.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed);

namespace {

constexpr std::size_t kSignature = 8;

std::size_t wordAt(const std::string& bytes, std::size_t at) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

std::string word(std::size_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
    return bytes;
}

struct Chunk {
    std::string type;
    std::string data;
};

// The chunks behind the signature; the last one may be cut.
std::vector<Chunk> chunksOf(const std::string& png) {
    std::vector<Chunk> chunks;
    for (std::size_t at = kSignature; at + 8 <= png.size();) {
        const std::size_t size = std::min(wordAt(png, at), png.size() - at - 8);
        chunks.push_back({png.substr(at + 4, 4), png.substr(at + 8, size)});
        at += 12 + size;
    }
    return chunks;
}

std::string pngOf(const std::string& signature, const std::vector<Chunk>& chunks) {
    std::string png = signature;
    for (const Chunk& chunk : chunks) {
        const std::string body = chunk.type + chunk.data;
        const auto* bytes = reinterpret_cast<const Bytef*>(body.data());
        png +=
            word(chunk.data.size()) + body + word(crc32(0, bytes, static_cast<uInt>(body.size())));
    }
    return png;
}

void mutateBytes(std::string& bytes, std::size_t room) {
    const std::size_t size = bytes.size();
    bytes.resize(size + room);
    bytes.resize(
        LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(bytes.data()), size, size + room));
}

std::string inflated(const std::string& packed) {
    std::string plain(1 << 14, '\0');
    auto size = static_cast<uLongf>(plain.size());
    uncompress(reinterpret_cast<Bytef*>(plain.data()), &size,
               reinterpret_cast<const Bytef*>(packed.data()), static_cast<uLong>(packed.size()));
    plain.resize(size);
    return plain;
}

std::string deflated(const std::string& plain) {
    auto size = compressBound(static_cast<uLong>(plain.size()));
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size,
             reinterpret_cast<const Bytef*>(plain.data()), static_cast<uLong>(plain.size()));
    packed.resize(size);
    return packed;
}

void mutateChunk(Chunk& chunk, support::Random& random) {
    if (chunk.type == "IHDR" && chunk.data.size() == 13 && random.below(2) == 0) {
        // The last byte of a side, the depth, the colour type, the way of interlacing.
        constexpr std::size_t kPlaces[] = {3, 7, 8, 9, 12};
        constexpr char kValues[] = {0, 1, 2, 3, 4, 6, 8, 16};
        chunk.data[kPlaces[random.below(5)]] = kValues[random.below(8)];
    } else if (chunk.type == "IDAT" && random.below(4) != 0) {
        std::string pels = inflated(chunk.data);
        mutateBytes(pels, 64);
        chunk.data = deflated(pels);
    } else {
        mutateBytes(chunk.data, 16);
    }
}

std::string mutatedPng(const std::string& png, support::Random& random) {
    std::vector<Chunk> chunks = chunksOf(png);
    if (chunks.empty()) return png;
    const auto at = chunks.begin() + random.below(static_cast<unsigned>(chunks.size()));
    switch (random.below(8)) {
        case 0:
            chunks.insert(at, *at);
            break;
        case 1:
            chunks.erase(at);
            break;
        default:
            mutateChunk(*at, random);
    }
    return pngOf(png.substr(0, kSignature), chunks);
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    support::Random random(seed);
    const fuzz::Input input = fuzz::split(fuzz::asText(data, size), '\0');
    const bool isPng = input.body.starts_with("\x89PNG");
    if (!isPng || random.below(4) == 0) return LLVMFuzzerMutate(data, size, most);
    const std::string all =
        std::string(input.heading) + '\0' + mutatedPng(std::string(input.body), random);
    const std::size_t kept = std::min(all.size(), most);
    std::copy_n(all.begin(), kept, data);
    return kept;
}
