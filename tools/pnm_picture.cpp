// Pictures in PNM files: PGM and PPM, in text and in bytes.
#include "pnm_picture.h"

#include <array>
#include <cctype>
#include <limits>
#include <string>
#include <vector>

#include "failure.h"
#include "input_bytes.h"
#include "pnm_comment.h"

namespace {

class PnmReader : public PictureReader {
  public:
    explicit PnmReader(InputBytes& file) : file_(file) {
        next();
        const int kind = next();
        isText_ = kind == '2' || kind == '3';
        header_.kind = "PNM";
        header_.isColour = kind == '3' || kind == '6';
        header_.colour = header_.isColour ? "colour" : "grey";
        header_.width = number();
        header_.height = number();
        most_ = number();
        if (header_.width == 0 || header_.height == 0 || most_ == 0 || most_ > 65535) {
            throw Failure("Its head is broken");
        }
        header_.depth = most_ > 255 ? 16 : 8;
        requireBytes();
    }

    PictureHeader header() override { return header_; }

    void read(PictureRows& rows) override {
        if (header_.isWide()) return readRows<unsigned short>(rows);
        readRows<unsigned char>(rows);
    }

  private:
    // The next byte; throws a Failure where there is none.
    int next() {
        if (at_ == end_) {
            at_ = 0;
            end_ = file_.readSome(bytes_.data(), bytes_.size());
            if (end_ == 0) throw Failure("The file ends early");
        }
        return bytes_[at_++];
    }

    // The rest of the line, in which programs leave their names.
    void skipComment() {
        std::string comment = "#";
        for (int c = next(); c != '\n'; c = next()) {
            if (comment.size() <= kPnmComment.size()) comment += static_cast<char>(c);
        }
        header_.isOwn = header_.isOwn || comment == kPnmComment;
    }

    int nextDigit() {
        for (;;) {
            const int c = next();
            if (c == '#') {
                skipComment();
            } else if (!std::isspace(c)) {
                return c;
            }
        }
    }

    // One number, and the byte behind it: a blank, or in a text the end of the file.
    long number(bool isLast = false) {
        long value = 0;
        int c = nextDigit();
        for (; std::isdigit(c) && value <= std::numeric_limits<int>::max(); c = next()) {
            value = 10 * value + (c - '0');
            if (isLast && isAtEnd()) return value;
        }
        if (std::isspace(c) && value <= std::numeric_limits<int>::max()) return value;
        throw Failure("A number is broken");
    }

    bool isAtEnd() {
        if (at_ < end_) return false;
        at_ = 0;
        end_ = file_.readSome(bytes_.data(), bytes_.size());
        return end_ == 0;
    }

    long samples() const { return header_.isColour ? 3 : 1; }

    // In a text each sample takes a digit and a blank.
    void requireBytes() const {
        const auto pels = static_cast<unsigned long long>(header_.width) *
                          static_cast<unsigned long long>(header_.height);
        const auto each =
            static_cast<unsigned long long>(samples() * (isText_ || header_.isWide() ? 2 : 1));
        if (file_.size() && pels > (*file_.size() + 1) / each) {
            throw Failure("The file ends early");
        }
    }

    template <class T>
    long sample(bool isLast) {
        if (isText_) return number(isLast);
        long value = next();
        if (sizeof(T) == 2) value = value << 8 | next();
        return value;
    }

    template <class T>
    T level(long value) const {
        if (value > most_) throw Failure("A sample is above the greatest value");
        return static_cast<T>((value * std::numeric_limits<T>::max() + most_ / 2) / most_);
    }

    template <class T>
    void readRows(PictureRows& rows) {
        std::vector<T> row(static_cast<std::size_t>(header_.width * samples()));
        for (long y = 0; y < header_.height; ++y) {
            for (T& pel : row) {
                const bool isLast = y == header_.height - 1 && &pel == &row.back();
                pel = level<T>(sample<T>(isLast));
            }
            rows.put(0, y, header_.width, row.data(), samples());
        }
    }

    InputBytes& file_;
    PictureHeader header_{};
    bool isText_ = false;
    long most_ = 0;
    std::array<unsigned char, 4096> bytes_{};
    std::size_t at_ = 0, end_ = 0;
};

}  // namespace

std::unique_ptr<PictureReader> pnmReader(InputBytes& file) {
    return std::make_unique<PnmReader>(file);
}
