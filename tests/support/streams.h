// Streams that allocate nothing, so that only the libraries' own allocations are met, and archives
// over them.
#pragma once

#include <base/archive.h>

#include <cstdint>
#include <istream>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace faults {

/// Keeps a hash of what is written in place of the bytes.
class Sink : private std::streambuf, public std::ostream {
  public:
    Sink() : std::ostream(static_cast<std::streambuf*>(this)) {}

    /// Short enough to be kept within a string object.
    std::string hash() const { return std::to_string(hash_ % 1'000'000'000'000); }

  private:
    int overflow(int c) override {
        hash_ = (hash_ ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
        return c;
    }

    std::uint64_t hash_ = 14695981039346656037ULL;
};

/// Reads a text that outlives it.
class Source : private std::streambuf, public std::istream {
  public:
    explicit Source(const std::string& text) : std::istream(static_cast<std::streambuf*>(this)) {
        char* const first = const_cast<char*>(text.data());
        setg(first, first, first + text.size());
    }
};

/// The record of an object, or of a pointer, as a text.
template <class Object>
std::string recordOf(Object& object) {
    std::ostringstream out;
    mvArchive ar(out);
    ar || object;
    return out.str();
}

/// Calls exchange(archive) with an archive that stores, and returns the hash of the bytes.
template <class Exchange>
std::string hashOfStored(Exchange exchange) {
    Sink sink;
    mvArchive ar(static_cast<std::ostream&>(sink));
    exchange(ar);
    return sink.hash();
}

/// Calls exchange(archive) with an archive that loads the record.
template <class Exchange>
void loadFrom(const std::string& record, Exchange exchange) {
    Source source(record);
    mvArchive ar(static_cast<std::istream&>(source));
    exchange(ar);
}

}  // namespace faults
