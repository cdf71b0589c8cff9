// Feeds a target the inputs of a packed corpus: a plain test, with any compiler.
//
// A corpus file holds inputs one after the other, each behind its size, 4 bytes, little-endian.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "input.h"

namespace {

std::size_t sizeAt(const std::string& all, std::size_t at) {
    std::size_t size = 0;
    for (std::size_t i = 4; i-- > 0;) size = size << 8 | static_cast<unsigned char>(all[at + i]);
    return size;
}

}  // namespace

int main(int argc, char** argv) {
    std::ifstream file(argc == 2 ? argv[1] : "", std::ios::binary);
    const std::string all{std::istreambuf_iterator<char>(file), {}};
    std::size_t inputs = 0;
    std::size_t at = 0;
    for (; at + 4 <= all.size(); ++inputs) {
        const std::size_t size = sizeAt(all, at);
        at += 4;
        if (size > all.size() - at) break;
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(all.data() + at), size);
        at += size;
    }
    std::printf("%zu inputs\n", inputs);
    return inputs > 0 && at == all.size() ? 0 : 1;
}
