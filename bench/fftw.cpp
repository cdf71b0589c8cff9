// FFTW in single precision, several builds of it in one process.
#include "fftw.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <new>
#include <stdexcept>

#include "machine.h"

namespace bench {
namespace {

template <class Function>
void find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (function == nullptr) throw std::runtime_error(dlerror());
}

const char* nameOf(Rigor rigor) {
    switch (rigor) {
        case Rigor::Estimate:
            return "estimate";
        case Rigor::Measure:
            return "measure";
        default:
            return "patient";
    }
}

unsigned flagsOf(Rigor rigor) {
    switch (rigor) {
        case Rigor::Estimate:
            return FFTW_ESTIMATE;
        case Rigor::Measure:
            return FFTW_MEASURE;
        default:
            return FFTW_PATIENT;
    }
}

}  // namespace

std::string FftwForm::suffix() const {
    if (rigor == Rigor::Estimate) return "-estimate+plan";
    const char* const where = place == Place::Over ? "-in-place" : "-out-of-place";
    return std::string("-") + nameOf(rigor) + where;
}

std::string keyOf(const std::string& work, Size size) {
    return work + "-" + std::to_string(size.width) + "x" + std::to_string(size.height);
}

std::string keyOf(const std::string& work, Size size, Place place) {
    const char* const places[] = {"-over", "-beside", "-beside-kept"};
    return keyOf(work, size) + places[static_cast<int>(place)];
}

Fftw::Fftw(std::string name, const std::string& path, const Settings& settings)
    : name_(std::move(name)),
      wisdom_(settings.wisdom),
      planSeconds_(settings.planSeconds),
      realTime_(settings.realTime),
      library_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND), [](void* library) {
          if (library != nullptr) dlclose(library);
      }) {
    if (library_ == nullptr) throw std::runtime_error(dlerror());
    void* const handle = library_.get();
    find(handle, "fftwf_version", version_);
    find(handle, "fftwf_execute", execute);
    find(handle, "fftwf_execute_dft", executeDft);
    find(handle, "fftwf_plan_dft_2d", planDft2d);
    find(handle, "fftwf_plan_dft_r2c_2d", planForward2d);
    find(handle, "fftwf_plan_dft_c2r_2d", planInverse2d);
    find(handle, "fftwf_plan_many_dft", planMany);
    find(handle, "fftwf_plan_many_dft_r2c", planManyForward);
    find(handle, "fftwf_plan_many_dft_c2r", planManyInverse);
    find(handle, "fftwf_plan_guru_split_dft", planSplit);
    find(handle, "fftwf_execute_split_dft", executeSplitDft);
    find(handle, "fftwf_plan_guru_split_dft_r2c", planSplitForward);
    find(handle, "fftwf_plan_guru_split_dft_c2r", planSplitInverse);
    find(handle, "fftwf_destroy_plan", destroyPlan_);
    find(handle, "fftwf_forget_wisdom", forgetWisdom_);
    find(handle, "fftwf_set_timelimit", setTimeLimit_);
    find(handle, "fftwf_import_wisdom_from_filename", importWisdom_);
    find(handle, "fftwf_export_wisdom_to_filename", exportWisdom_);
}

std::string Fftw::version() const {
    return version_;
}

std::string Fftw::wisdomFile(const std::string& key, Rigor rigor) const {
    if (wisdom_.empty() || rigor == Rigor::Estimate) return {};
    std::filesystem::create_directories(wisdom_);
    return wisdom_ + "/" + name_ + "-" + nameOf(rigor) + "-" + key;
}

// The wisdom of a search that ran out of time is not kept: it would lead to far worse plans than
// the search itself.
Fftw::Plan Fftw::plan(const std::string& key, Rigor rigor,
                      const std::function<fftwf_plan(unsigned)>& make) const {
    const std::string file = wisdomFile(key, rigor);
    const RealTime realTime(realTime_ && rigor != Rigor::Estimate);
    forgetWisdom_();
    const bool isLimited = rigor == Rigor::Patient && planSeconds_ > 0;
    setTimeLimit_(isLimited ? planSeconds_ : FFTW_NO_TIMELIMIT);
    fftwf_plan found = nullptr;
    if (!file.empty() && importWisdom_(file.c_str()) != 0) {
        found = make(flagsOf(rigor) | FFTW_WISDOM_ONLY);
    }
    if (found == nullptr) {
        const auto begin = Clock::now();
        found = make(flagsOf(rigor));
        const bool ended = !isLimited || nanosecondsSince(begin) < planSeconds_ * 1e9;
        if (!file.empty() && ended) exportWisdom_(file.c_str());
    }
    if (found == nullptr) throw std::runtime_error("FFTW has no plan for " + key);
    return {found, [destroy = destroyPlan_, library = library_](fftwf_plan p) { destroy(p); }};
}

std::vector<std::shared_ptr<const Fftw>> fftwBuilds(const Settings& settings) {
    std::vector<std::shared_ptr<const Fftw>> builds;
    builds.push_back(std::make_shared<Fftw>("fftw-debian", "libfftw3f.so.3", settings));
#ifdef MVFREQ_BENCH_FFTW_ROOT
    builds.push_back(std::make_shared<Fftw>(
        "fftw-built", MVFREQ_BENCH_FFTW_ROOT "/lib/libfftw3f.so.3", settings));
#endif
    return builds;
}

std::shared_ptr<const Fftw> fftwLimitedToSse2([[maybe_unused]] const Settings& settings) {
#ifdef MVFREQ_BENCH_FFTW_ROOT
    const std::string path = MVFREQ_BENCH_FFTW_ROOT "/sse2/lib/libfftw3f.so.3";
    if (std::filesystem::exists(path)) return std::make_shared<Fftw>("fftw-sse2", path, settings);
#endif
    return nullptr;
}

AlignedFloats::AlignedFloats(long count)
    : floats_(static_cast<float*>(std::aligned_alloc(
                  64, (static_cast<std::size_t>(count) * sizeof(float) + 63) / 64 * 64)),
              &std::free),
      count_(count) {
    if (floats_ == nullptr) throw std::bad_alloc();
    std::fill_n(floats_.get(), count, 0.0f);
}

}  // namespace bench
