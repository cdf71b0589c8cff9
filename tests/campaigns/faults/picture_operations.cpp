// The picture call: all pel types, borders, ways of a tile, and threads.
#include <memory>

#include "campaigns/faults/operations.h"

namespace faults {

namespace {

// What a filter of the caller's own is: nothing is known of its plane.
class HalvingFilter : public mvFrequencyFilter {
  public:
    HalvingFilter() { initialized_ = true; }
    mvFrequencyFilter* clone() const override { return new HalvingFilter; }
    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override {
        dst = src;
        apply(dst);
    }
    void apply(mvFrequencyBuffer& buf) const override {
        float* const data = getFrequencyBufferData(buf);
        for (long i = 0; i < 2 * buf.width() * buf.height(); ++i) data[i] *= 0.5f;
    }
};

mvFrequencyFilterImage convolution() {
    mvFrequencyBuffer kernel(16, 4);
    kernel.put(0, 0, {1.0, 0.0}, false);
    return mvFrequencyFilterImage(kernel);
}

// Filters with and without gains of their own, each for planes smaller than some of the pictures.
struct PictureFilters {
    mvFrequencyFilterBandPass ring{0.05, 0.02, 0.2, {16, 16}, 1};
    mvFrequencyFilterBandReject ringReject{0.05, 0.02, 0.2, {16, 16}, 1};
    mvFrequencyFilterGabor lobe{{0.05, 0.04}, {0.02, 0.01}, mvRadian(0.5), 0.2, {16, 16}, 1};
    mvFrequencyFilterGaborReject lobeReject{{0.05, 0.04}, {0.02, 0.01}, mvRadian(0.5),
                                            0.2,          {16, 16},     1};
    mvFrequencyFilterBandPass narrow{0.05, 0.02, 0.2, {8, 8}, 1};
    mvFrequencyFilterImage image = convolution();
    HalvingFilter own;
};

using Shared = std::shared_ptr<const PictureFilters>;

enum class Types { kAlike, kMixed };

// What a call that fails may change: an output that is bound.
std::map<std::string, Left> output(mvPelBuffer<Byte> Operands::*) {
    return {{"newBytes", Left::kPels}};
}
std::map<std::string, Left> output(mvPelBuffer<Word> Operands::*) {
    return {{"newWords", Left::kPels}};
}
std::map<std::string, Left> output(mvPelBuffer<double> Operands::*) {
    return {{"newFirst", Left::kPels}};
}

// Pels of each type in and out, alike or each with the others.
template <class Filter>
void addTypes(std::vector<Operation>& rows, const std::string& name, const Shared& filters,
              Filter PictureFilters::*filter, const mvFilterImageOptions& options, Types types) {
    const auto add = [&](const std::string& pels, auto in, auto out) {
        rows.push_back(
            {"picture: " + name + ", " + pels,
             [=](Operands& o) { mfFilterImage(o.*in, (*filters).*filter, o.*out, options); },
             output(out)});
    };
    if (types == Types::kAlike) {
        add("bytes", &Operands::bytes, &Operands::newBytes);
        add("words", &Operands::words, &Operands::newWords);
        add("doubles", &Operands::doubles, &Operands::newFirst);
        return;
    }
    add("bytes to words", &Operands::bytes, &Operands::newWords);
    add("bytes to doubles", &Operands::bytes, &Operands::newFirst);
    add("words to bytes", &Operands::words, &Operands::newBytes);
    add("words to doubles", &Operands::words, &Operands::newFirst);
    add("doubles to bytes", &Operands::doubles, &Operands::newBytes);
    add("doubles to words", &Operands::doubles, &Operands::newWords);
}

template <class In, class Out, class Filter>
Operation rescaled(const std::string& name, const Shared& filters, In in, Out out,
                   Filter PictureFilters::*filter) {
    mvFilterImageOptions options;
    options.rescale = true;
    return {"picture: rescaled, " + name,
            [=](Operands& o) { mfFilterImage(o.*in, (*filters).*filter, o.*out, options); },
            output(out)};
}

void addRescaled(std::vector<Operation>& rows, const Shared& filters) {
    const auto add = [&](const std::string& name, auto filter) {
        rows.push_back(
            rescaled(name + ", bytes", filters, &Operands::bytes, &Operands::newBytes, filter));
        rows.push_back(
            rescaled(name + ", words", filters, &Operands::words, &Operands::newWords, filter));
        rows.push_back(rescaled(name + ", bytes to words", filters, &Operands::bytes,
                                &Operands::newWords, filter));
        rows.push_back(rescaled(name + ", words to bytes", filters, &Operands::words,
                                &Operands::newBytes, filter));
        rows.push_back(rescaled(name + ", doubles to bytes", filters, &Operands::doubles,
                                &Operands::newBytes, filter));
        rows.push_back(rescaled(name + ", doubles to words", filters, &Operands::doubles,
                                &Operands::newWords, filter));
    };
    add("ring", &PictureFilters::ring);
}

template <class Filter>
Operation inItself(const std::string& name, const Shared& filters, Filter PictureFilters::*filter) {
    return {"picture: " + name + ", into a view of the same pels", [=](Operands& o) {
                mvPelBuffer<Byte> pels(o.bytes.width(), o.bytes.height());
                pels.offset(o.bytes.offset());
                mfPelCopy(o.bytes, pels);
                mvPelBuffer<Byte> view(pels);
                mfFilterImage(pels, (*filters).*filter, view);
            }};
}

Operation inTurn(const Shared& filters) {
    return {"picture: three filters in turn",
            [=](Operands& o) {
                mfFilterImage(o.bytes, {&filters->ringReject, &filters->own, &filters->lobe},
                              o.newBytes);
            },
            output(&Operands::newBytes)};
}

}  // namespace

std::vector<Operation> pictureOperations() {
    const auto filters = std::make_shared<const PictureFilters>();
    mvFilterImageOptions zero, twoThreads;
    zero.border = mvBorder::zero;
    twoThreads.threads = 2;
    std::vector<Operation> rows;
    using P = PictureFilters;
    addTypes(rows, "ring", filters, &P::ring, {}, Types::kAlike);
    addTypes(rows, "ring", filters, &P::ring, zero, Types::kMixed);
    addTypes(rows, "ring, narrow plane", filters, &P::narrow, zero, Types::kAlike);
    addTypes(rows, "ring, two threads", filters, &P::ring, twoThreads, Types::kAlike);
    addTypes(rows, "reject ring", filters, &P::ringReject, zero, Types::kAlike);
    addTypes(rows, "lobe", filters, &P::lobe, zero, Types::kAlike);
    addTypes(rows, "reject lobe", filters, &P::lobeReject, zero, Types::kAlike);
    addTypes(rows, "image filter", filters, &P::image, {}, Types::kAlike);
    addTypes(rows, "own filter", filters, &P::own, {}, Types::kAlike);
    addRescaled(rows, filters);
    rows.push_back(inTurn(filters));
    rows.push_back(inItself("ring", filters, &PictureFilters::ring));
    mvFilterImageOptions realParts;
    realParts.result = mvFilterResult::real;
    rows.push_back(
        {"picture: real parts",
         [=](Operands& o) { mfFilterImage(o.doubles, filters->ring, o.newFirst, realParts); },
         output(&Operands::newFirst)});
    rows.push_back({"picture: reach of an image filter",
                    [=](Operands&) { (void)mfFilterReach(filters->image); }});
    return rows;
}

}  // namespace faults
