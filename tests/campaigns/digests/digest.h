// A digest of results, and numbers to make cases of: the same on every machine.
#pragma once

#include <base/pair.h>
#include <internal/bit_cast.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace digest {

/// FNV-1a over bytes in little-endian order. All NaNs count as one: which of them an operation
/// gives is the processor's choice.
class Digest {
  public:
    void add(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) addByte(value >> (8 * i) & 0xFF);
    }
    void add(unsigned char value) { add(value, 1); }
    void add(unsigned short value) { add(value, 2); }
    void add(float value) {
        add(mvi::bitCast<std::uint32_t>(value == value ? value : kFloatNaN), 4);
    }
    void add(double value) {
        add(mvi::bitCast<std::uint64_t>(value == value ? value : kDoubleNaN), 8);
    }
    void add(std::string_view text) {
        for (const char c : text) add(static_cast<unsigned char>(c));
    }

    std::uint64_t value() const { return hash_; }

  private:
    static constexpr float kFloatNaN = mvi::bitCast<float>(0x7FC00000U);
    static constexpr double kDoubleNaN = mvi::bitCast<double>(std::uint64_t{0x7FF8} << 48);

    void addByte(std::uint64_t byte) { hash_ = (hash_ ^ byte) * 0x100000001B3U; }

    std::uint64_t hash_ = 0xCBF29CE484222325U;
};

/// The splitmix64 generator.
class Numbers {
  public:
    explicit Numbers(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t z = state_;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9U;
        z = (z ^ z >> 27) * 0x94D049BB133111EBU;
        return z ^ z >> 31;
    }

    /// low .. high.
    long between(long low, long high) {
        return low + static_cast<long>(next() % static_cast<std::uint64_t>(high - low + 1));
    }
    /// Two of them. Arguments of a call have no order of their own, so that two draws in one call
    /// would depend on the compiler.
    mvPair<long> pair(long low, long high) {
        const long x = between(low, high);
        const long y = between(low, high);
        return {x, y};
    }
    bool coin() { return (next() & 1) != 0; }

    /// -1 .. 1, of 2^25 + 1 equally spaced values.
    double symmetric() { return static_cast<double>(between(-(1L << 24), 1L << 24)) / (1L << 24); }

    /// Mostly -1 .. 1; now and then a zero of either sign, a denormal, a large number, an infinity
    /// or a NaN.
    float special() {
        constexpr std::uint32_t kSpecial[] = {0,          0x80000000, 1,          0x80000001,
                                              0x00400000, 0x7149F2CA, 0xF149F2CA, 0x7F800000,
                                              0xFF800000, 0x7FC00000};
        const long choice = between(0, 799);
        if (choice < 10) return mvi::bitCast<float>(kSpecial[choice]);
        return static_cast<float>(symmetric());
    }

  private:
    std::uint64_t state_;
};

}  // namespace digest
