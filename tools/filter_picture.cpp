// A picture through a filter and back.
#include "filter_picture.h"

#include <vector>

#include "attention.h"
#include "complex_picture.h"
#include "filter_archive.h"
#include "output_file.h"
#include "png_picture.h"

namespace {

// One picture on its way.
template <class T>
class FilterRun {
  public:
    FilterRun(const mvPelBuffer<T>& picture, const FilterOptions& options, SharedFilters& filters,
              int threads)
        : picture_(picture),
          options_(options),
          choice_(choosePlane(picture, filters.recipe(), options.plane)),
          filter_(filters.get(choice_.plane)),
          image_(imageOptions(options.plane, threads)) {}

    void write(const std::string& output) {
        filter(output);
        OutputFiles outputs;
        for (const Result& result : results_) {
            std::visit([&](const auto& pels) { writePicture(outputs.add(result.path), pels); },
                       result.pels);
        }
        if (!options_.save.empty()) saveFilter(outputs.add(options_.save), filter_);
        outputs.publish();
    }

  private:
    struct Result {
        std::string path;
        Picture pels;
    };

    void filter(const std::string& output) {
        const bool hasPhases = !options_.angleImage.empty() || !options_.quadrantImage.empty();
        const int calls = (hasPhases ? 2 : 0) + (options_.withSign && hasPhases ? 0 : 1);
        beginStage("filtering", calls * expectedPolls(choice_, image_.threads));
        mvPelBuffer<double> real;
        if (hasPhases || options_.withSign) real = realPart(picture_, filter_, image_);
        results_.push_back({output, options_.withSign ? Picture(signedPels(real)) : magnitudes()});
        if (hasPhases) addPhases(real, imaginaryPart(picture_, filter_, image_));
    }

    Picture magnitudes() const {
        mvPelBuffer<T> result;
        mvFilterImageOptions image = image_;
        image.rescale = options_.rescale;
        mfFilterImage(picture_, filter_, result, image);
        return result;
    }

    void addPhases(const mvPelBuffer<double>& real, const mvPelBuffer<double>& imaginary) {
        if (!options_.angleImage.empty()) {
            results_.push_back({options_.angleImage, anglePels(real, imaginary)});
        }
        if (!options_.quadrantImage.empty()) {
            results_.push_back({options_.quadrantImage, quadrantPels(real, imaginary)});
        }
    }

    const mvPelBuffer<T>& picture_;
    const FilterOptions& options_;
    const PlaneChoice choice_;
    const mvFrequencyFilter& filter_;
    const mvFilterImageOptions image_;
    std::vector<Result> results_;
};

}  // namespace

void filterPicture(const PictureFiles& files, const FilterOptions& options, SharedFilters& filters,
                   int threads) {
    std::visit(
        [&](const auto& picture) {
            FilterRun(picture, options, filters, threads).write(files.output);
        },
        readPicture(files.input));
}
