// A picture through a filter and back.
#include "filter_picture.h"

#include <vector>

#include "attention.h"
#include "complex_picture.h"
#include "filter_archive.h"
#include "grey_levels.h"
#include "output_file.h"
#include "picture_output.h"
#include "png_picture.h"
#include "result_pels.h"
#include "standard_names.h"

namespace {

// A picture for a file.
struct Result {
    std::string path;
    Picture pels;

    void write(OutputFiles& files) const {
        OutputFile& file = files.add(path);
        std::visit([&](const auto& picture) { writePicture(file, picture); }, pels);
    }
};

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

    std::string write(const std::string& output) {
        filter(output);
        OutputFiles outputs;
        for (const Result& result : results_) result.write(outputs);
        if (options_.save) saveFilter(outputs.add(*options_.save), filter_);
        outputs.publish();
        return hint(output);
    }

  private:
    void filter(const std::string& output) {
        const bool hasPhases = options_.angleImage || options_.quadrantImage;
        const int calls = (hasPhases ? 2 : 0) + (options_.withSign && hasPhases ? 0 : 1);
        beginStage("filtering", calls * expectedPolls(choice_, image_.threads));
        mvPelBuffer<double> real;
        if (hasPhases || options_.withSign) real = realPart(picture_, filter_, image_);
        results_.push_back({output, options_.withSign ? Picture(realPels(real, options_.rescale))
                                                      : magnitudePels(picture_, filter_, image_,
                                                                      options_.rescale)});
        if (hasPhases) addPhases(real, imaginaryPart(picture_, filter_, image_));
    }

    void addPhases(const mvPelBuffer<double>& real, const mvPelBuffer<double>& imaginary) {
        if (options_.angleImage) {
            results_.push_back({*options_.angleImage, anglePels(real, imaginary)});
        }
        if (options_.quadrantImage) {
            results_.push_back({*options_.quadrantImage, quadrantPels(real, imaginary)});
        }
    }

    // What swings around zero by a few grey levels looks black.
    std::string hint(const std::string& output) const {
        if (options_.rescale || options_.withSign || hasFewLevels(picture_)) return "";
        const auto few = [](const auto& pels) { return hasFewLevels(pels); };
        if (!std::visit(few, results_.front().pels)) return "";
        return outputName(output) + ": has fewer than 10 grey levels (--rescale spreads them)";
    }

    const mvPelBuffer<T>& picture_;
    const FilterOptions& options_;
    const PlaneChoice choice_;
    const mvFrequencyFilter& filter_;
    const mvFilterImageOptions image_;
    std::vector<Result> results_;
};

}  // namespace

std::string filterPicture(const PictureFiles& files, const FilterOptions& options,
                          SharedFilters& filters, int threads) {
    return std::visit(
        [&](const auto& picture) {
            return FilterRun(picture, options, filters, threads).write(files.output);
        },
        readPicture(files.input));
}
