// Pictures into PNM files.
#include "pnm_output.h"

#include <bit>
#include <string>
#include <utility>

#include "output_file.h"
#include "pnm_comment.h"

namespace {

class PnmWriter : public PictureWriter {
  public:
    PnmWriter(OutputFile& file, const PictureForm& form)
        : file_(file), form_(form), row_(form.rowBytes(), '\0') {
        file_.write(std::string(form.channels == 1 ? "P5\n" : "P6\n").append(kPnmComment) + "\n" +
                    std::to_string(form.width) + " " + std::to_string(form.height) + "\n" +
                    (form.depth == 8 ? "255\n" : "65535\n"));
    }

    // The upper byte of a sample comes first.
    void writeRow(const void* samples) override {
        row_.assign(static_cast<const char*>(samples), row_.size());
        if (form_.depth == 16 && std::endian::native == std::endian::little) {
            for (std::size_t i = 0; i < row_.size(); i += 2) std::swap(row_[i], row_[i + 1]);
        }
        file_.write(row_);
        file_.requireStored();
    }

  private:
    OutputFile& file_;
    const PictureForm form_;
    std::string row_;
};

}  // namespace

std::unique_ptr<PictureWriter> pnmWriter(OutputFile& file, const PictureForm& form) {
    return std::make_unique<PnmWriter>(file, form);
}
