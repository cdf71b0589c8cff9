// FFTW in single precision, several builds of it in one process.
#pragma once

#include <fftw3.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "peer.h"
#include "settings.h"

namespace bench {

/// How hard FFTW looks for a plan.
enum class Rigor { Estimate, Measure, Patient };

/// Where FFTW leaves a transform: over the input, beside an input that it may spoil, or beside one
/// that it keeps.
enum class Place { Over, Beside, BesideKept };

/// How a plan is made, and for what place; with Rigor::Estimate it is made within the timed run, as
/// by a caller who has none yet.
struct FftwForm {
    Rigor rigor;
    Place place;

    /// What the name of a peer ends with.
    std::string suffix() const;
};

/// What the plans of a work are kept under.
std::string keyOf(const std::string& work, Size size);
std::string keyOf(const std::string& work, Size size, Place place);

/// One build, loaded apart from the others: they all use the same names.
class Fftw {
  public:
    using Plan = std::shared_ptr<std::remove_pointer_t<fftwf_plan>>;

    /// Throws std::runtime_error when the library cannot be loaded.
    Fftw(std::string name, const std::string& path, const Settings& settings);

    const std::string& name() const { return name_; }
    std::string version() const;

    /// Forgets all plans, then has one made with the flags given. With a folder for wisdom, what
    /// was found under `key` before is found again at once. Throws std::runtime_error when there is
    /// no plan.
    Plan plan(const std::string& key, Rigor rigor,
              const std::function<fftwf_plan(unsigned flags)>& make) const;

    decltype(&fftwf_execute) execute;
    decltype(&fftwf_execute_dft) executeDft;
    decltype(&fftwf_plan_dft_2d) planDft2d;
    decltype(&fftwf_plan_dft_r2c_2d) planForward2d;
    decltype(&fftwf_plan_dft_c2r_2d) planInverse2d;
    decltype(&fftwf_plan_many_dft) planMany;
    decltype(&fftwf_plan_many_dft_r2c) planManyForward;
    decltype(&fftwf_plan_many_dft_c2r) planManyInverse;
    decltype(&fftwf_plan_guru_split_dft) planSplit;
    decltype(&fftwf_execute_split_dft) executeSplitDft;
    decltype(&fftwf_plan_guru_split_dft_r2c) planSplitForward;
    decltype(&fftwf_plan_guru_split_dft_c2r) planSplitInverse;

  private:
    std::string wisdomFile(const std::string& key, Rigor rigor) const;

    std::string name_;
    std::string wisdom_;
    double planSeconds_;
    bool realTime_;
    std::shared_ptr<void> library_;
    const char* version_;
    decltype(&fftwf_destroy_plan) destroyPlan_;
    decltype(&fftwf_forget_wisdom) forgetWisdom_;
    decltype(&fftwf_set_timelimit) setTimeLimit_;
    decltype(&fftwf_import_wisdom_from_filename) importWisdom_;
    decltype(&fftwf_export_wisdom_to_filename) exportWisdom_;
};

/// Debian's build and, with MVFREQ_BENCH_FFTW_ROOT, the one there.
std::vector<std::shared_ptr<const Fftw>> fftwBuilds(const Settings& settings);

/// The build limited to SSE2 beneath MVFREQ_BENCH_FFTW_ROOT; null without it.
std::shared_ptr<const Fftw> fftwLimitedToSse2(const Settings& settings);

/// Shared memory aligned to cache lines, zero at first.
class AlignedFloats {
  public:
    explicit AlignedFloats(long count);
    float* data() const { return floats_.get(); }
    fftwf_complex* complex() const { return reinterpret_cast<fftwf_complex*>(floats_.get()); }
    long size() const { return count_; }

  private:
    std::shared_ptr<float> floats_;
    long count_;
};

}  // namespace bench
