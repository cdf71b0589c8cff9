// The fuzzer's way to the archive mutator.
#include <algorithm>

#include "archive_mutator.h"
#include "input.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    support::Random random(seed);
    if (random.below(5) == 0) return LLVMFuzzerMutate(data, size, most);
    const fuzz::Input input = fuzz::split(fuzz::asText(data, size), '\n');
    std::string kind(input.heading);
    std::string bytes(input.body);
    for (unsigned changes = 1 + random.below(3); changes > 0; --changes) {
        fuzz::mutateArchive(kind, bytes, random);
    }
    const std::string all = kind + '\n' + bytes;
    const std::size_t kept = std::min(all.size(), most);
    std::copy_n(all.begin(), kept, data);
    return kept;
}
