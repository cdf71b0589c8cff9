// Calls an operation while chosen events fail.
#include "campaigns/faults/call.h"

#include <exception>
#include <functional>
#include <new>
#include <optional>
#include <type_traits>

#include "support/attention.h"
#include "support/thrown.h"

namespace faults {

namespace {

using support::AttentionCounter;

std::string nameOf(const std::exception_ptr& error) {
    try {
        return support::thrownBy([&] {
            if (error) std::rethrow_exception(error);
        });
    } catch (const std::bad_alloc&) {
        return "bad_alloc";
    }
}

// What an application's handler may do: there and back, with polls of its own.
void useLibrary() {
    const AttentionCounter polls;
    mvPelBuffer<Byte> image(4, 2);
    mfPelSet(image, 7);
    mvFrequencyBuffer plane;
    mfForwardFFT<Byte>(image, plane);
    mfInverseFFT<Byte>(plane, image, false, true);
}

// Counts the events and lets the chosen ones fail, while it lives.
class Events {
  public:
    Events(Operands& operands, const Trouble& trouble)
        : operands_(operands), trouble_(trouble), former_(installHandler()) {
        watch([this] { change(); });
        allocations_.emplace(trouble.allocation, trouble.extent, trouble.threads);
    }
    ~Events() {
        allocations_.reset();
        watch({});
        vsys_set_attention_handler(former_.handler, former_.context);
    }
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;

    Outcome outcome() {
        if (allocations_->hasFailed()) noteFirst(Event::kAllocation, "bad_alloc");
        return {"",     allocations_->count(),     polls_,        changes_, first_,
                throw_, allocations_->hasFailed(), hasPollFailed_};
    }

  private:
    vsys_attention_state installHandler() {
        return vsys_set_attention_handler(
            [](void* self) { return static_cast<Events*>(self)->poll(); }, this);
    }

    void watch(const std::function<void()>& watcher) {
        visitOperands(operands_, [&](const std::string&, auto& object) {
            if constexpr (std::is_base_of_v<mvFrequencyFilter, std::decay_t<decltype(object)>>) {
                mvPersistent::watch(object, watcher);
            }
        });
    }

    void noteFirst(Event event, const char* thrown) {
        if (first_ != Event::kNone) return;
        first_ = event;
        throw_ = thrown;
    }

    void note(Event event, const char* thrown) {
        if (allocations_->hasFailed()) noteFirst(Event::kAllocation, "bad_alloc");
        noteFirst(event, thrown);
    }

    int poll() {
        ++polls_;
        if (trouble_.isBusy) workAtPoll();
        if (polls_ != trouble_.poll) return 0;
        note(Event::kPoll, trouble_.pollThrows ? "Interrupted" : "status 77");
        hasPollFailed_ = true;
        if (trouble_.pollStarves) allocations_->failAll();
        if (trouble_.pollThrows) throw support::Interrupted{};
        return AttentionCounter::kFailure;
    }

    // An allocation that fails here ends the handler: for the library that is a poll that throws.
    void workAtPoll() {
        const bool hadFailed = allocations_->hasFailed();
        try {
            useLibrary();
        } catch (const std::bad_alloc&) {
            if (!hadFailed) noteFirst(Event::kPoll, "bad_alloc");
            hasPollFailed_ = true;
            throw;
        }
    }

    void change() {
        if (++changes_ != trouble_.change) return;
        note(Event::kChange, "Interrupted");
        throw support::Interrupted{};
    }

    Operands& operands_;
    const Trouble& trouble_;
    vsys_attention_state former_;
    std::optional<AllocationFaults> allocations_;
    long polls_ = 0;
    long changes_ = 0;
    Event first_ = Event::kNone;
    const char* throw_ = nullptr;
    bool hasPollFailed_ = false;
};

struct Unwound {};

template <class Call>
void whileUnwinding(Call call) {
    struct Last {
        ~Last() { call(); }
        Call& call;
    };
    try {
        const Last last{call};
        throw Unwound{};
    } catch (const Unwound&) {
    }
}

}  // namespace

Outcome call(const Operation& operation, Operands& operands, const Trouble& trouble) {
    std::exception_ptr error;
    const auto attempt = [&] {
        try {
            operation.call(operands);
        } catch (...) {
            error = std::current_exception();
        }
    };
    const auto failing = [&] {
        Events events(operands, trouble);
        trouble.isUnwinding ? whileUnwinding(attempt) : attempt();
        return events.outcome();
    };
    Outcome outcome = failing();
    outcome.thrown = nameOf(error);
    return outcome;
}

}  // namespace faults
