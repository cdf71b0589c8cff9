// Filters: life, parameters, application and archives.
#include <memory>
#include <type_traits>

#include "campaigns/faults/operations.h"
#include "support/streams.h"
#include "support/thrown.h"

namespace faults {

namespace {

template <class F>
constexpr bool kIsRing = std::is_base_of_v<mvRingFilter, F>;
template <class F>
constexpr bool kIsImage = std::is_same_v<F, mvFrequencyFilterImage>;

// The rows of one filter class.
template <class F>
class Rows {
  public:
    Rows(std::string name, Filters<F> Operands::*filters)
        : name_(std::move(name)), filters_(filters) {}

    std::vector<Operation> all() {
        addLife();
        addApplication();
        addArchives();
        if constexpr (kIsImage<F>) {
            addImage();
        } else {
            addParameters();
        }
        return std::move(rows_);
    }

  private:
    void add(const std::string& what, std::function<void(Operands&, Filters<F>&)> call,
             std::map<std::string, Left> mayChange = {}, const std::string& thrown = "nothing") {
        rows_.push_back({name_ + ": " + what,
                         [filters = filters_, call](Operands& o) { call(o, o.*filters); },
                         std::move(mayChange), thrown});
    }

    void addLife() {
        add("construction", [](Operands&, Filters<F>&) { makeFilter<F>({8, 4}); });
        add("copy", [](Operands&, Filters<F>& f) { F{f.built}; });
        add("clone", [](Operands&, Filters<F>& f) {
            const std::unique_ptr<mvFrequencyFilter> copy(f.built.clone());
        });
        add("assignment", [](Operands&, Filters<F>& f) { f.other = f.built; });
        add("assignment to a filter without response",
            [](Operands&, Filters<F>& f) { f.none = f.built; });
        add("moving assignment", [](Operands&, Filters<F>& f) { f.other = std::move(f.built); });
        add("comparison", [](Operands&, Filters<F>& f) { (void)(f.built == f.other); });
    }

    void addParameters() {
        add("size", [](Operands&, Filters<F>& f) { f.other.size({16, 8}); });
        add("frequency", [](Operands&, Filters<F>& f) { f.other.frequency(0.3); });
        add(
            "frequency out of range", [](Operands&, Filters<F>& f) { f.other.frequency(0.6); }, {},
            "InvalidArgument: Frequency must be between 0.0 and 0.5.");
        add(
            "frequency without response", [](Operands&, Filters<F>& f) { f.none.frequency(0.3); },
            {}, "Uninitialized: FrequencyFilter has not been initialized");
        if constexpr (kIsRing<F>) {
            add("sigma", [](Operands&, Filters<F>& f) { f.other.sigma(1.5); });
            add("plateau", [](Operands&, Filters<F>& f) { f.other.plateau(0.7); });
        } else {
            add("sigma", [](Operands&, Filters<F>& f) { f.other.sigma({1.5, 1.0}); });
            add("plateau", [](Operands&, Filters<F>& f) { f.other.plateau({0.7, 0.2}); });
            add("angle", [](Operands&, Filters<F>& f) { f.other.angle(mvRadian(1.0)); });
        }
    }

    void addImage() {
        add("another image", [](Operands& o, Filters<F>& f) { f.other.setImage(o.spectrum); });
        add(
            "no image", [](Operands& o, Filters<F>& f) { f.other.setImage(o.empty); }, {},
            support::kNoData);
    }

    void addApplication() {
        add("application in place", [](Operands& o, Filters<F>& f) { f.built.apply(o.spectrum); });
        add("application", [](Operands& o, Filters<F>& f) { f.built.apply(o.spectrum, o.other); });
        add("application to the buffer itself",
            [](Operands& o, Filters<F>& f) { f.built.apply(o.spectrum, o.spectrum); });
        add(
            "application to no data",
            [](Operands& o, Filters<F>& f) { f.built.apply(o.empty, o.other); }, {},
            support::kNoData);
        add(
            "application to another size",
            [](Operands& o, Filters<F>& f) { f.built.apply(o.other); }, {},
            "InvalidSize: Size of frequency buffer does not match size of filter.");
    }

    void addArchives() {
        F example = makeFilter<F>({8, 4});
        mvPersistent* pointer = &example;
        const std::string inPlace = recordOf(example);
        const std::string pointed = recordOf(pointer);
        add("stored", [](Operands& o, Filters<F>& f) {
            o.written = hashOfStored([&](mvArchive& ar) { ar || f.built || f.other; });
        });
        add("loaded",
            [inPlace](Operands&, Filters<F>& f) {
                loadFrom(inPlace, [&](mvArchive& ar) { ar || f.other; });
            },
            {{name_ + ".other", Left::kLoaded}});
        add("made by the registry", [pointed](Operands&, Filters<F>&) {
            loadFrom(pointed, [](mvArchive& ar) { mfLoad<F>(ar); });
        });
    }

    std::string name_;
    Filters<F> Operands::*filters_;
    std::vector<Operation> rows_;
};

}  // namespace

std::vector<Operation> filterOperations() {
    std::vector<Operation> all;
    const auto add = [&](std::vector<Operation> rows) {
        all.insert(all.end(), rows.begin(), rows.end());
    };
    add(Rows("bandPass", &Operands::bandPass).all());
    add(Rows("bandReject", &Operands::bandReject).all());
    add(Rows("gabor", &Operands::gabor).all());
    add(Rows("gaborReject", &Operands::gaborReject).all());
    add(Rows("image", &Operands::image).all());
    return all;
}

}  // namespace faults
