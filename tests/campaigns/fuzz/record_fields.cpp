// Where the fields of archive records stand: docs/archive-format.md as code.
#include "record_fields.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace fuzz {
namespace {

// Walks over the bytes. Once they end early, nothing more is added.
class Walk {
  public:
    explicit Walk(std::string_view bytes) : bytes_(bytes) {}

    bool hasMore() const { return at_ < bytes_.size(); }
    std::vector<Field> fields() && { return std::move(fields_); }

    void archive(std::string_view kind) {
        if (kind != "pointers") return record(kind);
        while (hasMore()) pointer();
    }

  private:
    void add(FieldKind kind, std::size_t size) {
        if (size > bytes_.size() - at_) return stop();
        if (size > 0) fields_.push_back({kind, at_, size});
        at_ += size;
    }
    void stop() { bytes_ = bytes_.substr(0, at_); }

    // A field of one byte or of four, and its value.
    unsigned byte(FieldKind kind) {
        const std::size_t at = at_;
        add(kind, 1);
        return at_ > at ? static_cast<unsigned char>(bytes_[at]) : 0;
    }
    std::uint32_t word(FieldKind kind) {
        const std::size_t at = at_;
        add(kind, 4);
        std::uint32_t value = 0;
        for (std::size_t i = at_; i-- > at;) {
            value = value << 8 | static_cast<unsigned char>(bytes_[i]);
        }
        return value;
    }

    void integers(int count) {
        for (int i = 0; i < count; ++i) word(FieldKind::integer);
    }
    void numbers(int count) {
        for (int i = 0; i < count; ++i) add(FieldKind::number, 8);
    }
    void integerPair() {
        byte(FieldKind::version);
        integers(2);
    }
    void doublePair() {
        byte(FieldKind::version);
        numbers(2);
    }
    void floats() {
        byte(FieldKind::version);
        const std::size_t count = word(FieldKind::count);
        const std::size_t there = (bytes_.size() - at_) / 4;
        add(FieldKind::floats, 4 * std::min(count, there));
        if (count > there) stop();
    }
    std::string_view text() {
        const std::size_t size = word(FieldKind::count);
        const std::size_t at = at_;
        add(FieldKind::text, size);
        return bytes_.substr(at, at_ - at);
    }

    void pointer() {
        const unsigned tag = byte(FieldKind::tag);
        if (tag == 1) return record(text());
        if (tag == 2) return integers(1);
        if (tag != 0) stop();
    }

    void record(std::string_view kind) {
        if (kind == "buffer") return buffer();
        if (kind.starts_with("mvFrequencyDefs::")) return error();
        if (!kind.starts_with("mvFrequencyFilter")) return stop();
        byte(FieldKind::version);
        byte(FieldKind::version);
        byte(FieldKind::flag);
        if (kind == "mvFrequencyFilterImage") return buffer();
        parametric(kind.starts_with("mvFrequencyFilterGabor"));
    }

    void parametric(bool isLobe) {
        integers(2);
        numbers(isLobe ? 2 : 3);
        if (isLobe) {
            doublePair();
            doublePair();
        }
        integerPair();
        integers(1);
        byte(FieldKind::flag);
        floats();
    }

    void buffer() {
        const unsigned version = byte(FieldKind::version);
        integers(7);
        byte(FieldKind::flag);
        if (version == 0 || byte(FieldKind::flag) == 1) numbers(6);
        integerPair();
        byte(FieldKind::flag);
        floats();
    }

    void error() {
        byte(FieldKind::version);
        byte(FieldKind::version);
        if (byte(FieldKind::flag) == 1) text();
    }

    std::string_view bytes_;
    std::size_t at_ = 0;
    std::vector<Field> fields_;
};

}  // namespace

std::vector<Field> recordFields(std::string_view kind, std::string_view bytes) {
    Walk walk(bytes);
    walk.archive(kind);
    return std::move(walk).fields();
}

}  // namespace fuzz
