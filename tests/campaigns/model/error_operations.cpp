// Operations of error objects: made, copied, archived, thrown.
#include <sstream>
#include <type_traits>

#include "campaigns/model/archive_damage.h"
#include "campaigns/model/errors.h"
#include "campaigns/model/operation.h"
#include "support/archive_bytes.h"
#include "support/thrown.h"

namespace model {
namespace {

using Defs = mvFrequencyDefs;

constexpr long kFirstNumber = 0x10006300;
constexpr const char* kBefore = "before";

// Calls with the class of a number.
template <class Call>
void withLeaf(long leaf, Call call) {
    switch (leaf) {
        case 0:
            return call(std::type_identity<Defs::InvalidArgument>{});
        case 1:
            return call(std::type_identity<Defs::Uninitialized>{});
        case 2:
            return call(std::type_identity<Defs::InvalidSize>{});
        case 3:
            return call(std::type_identity<Defs::UnboundWindow>{});
        case 4:
            return call(std::type_identity<Defs::InvalidBuffer>{});
        default:
            return call(std::type_identity<Defs::BadCoord>{});
    }
}

// Calls with the object as what it is, if there is one.
template <class Call>
void withError(const std::unique_ptr<Defs::Errors>& error, Call call) {
    for (long leaf = 0; error != nullptr && leaf < 6; ++leaf) {
        withLeaf(leaf, [&]<class Leaf>(std::type_identity<Leaf>) {
            if (auto* object = dynamic_cast<Leaf*>(error.get())) call(*object);
        });
    }
}

std::optional<std::string> messageFrom(long seed) {
    if (seed % 3 == 0) return std::nullopt;
    return "message " + std::to_string(seed);
}

void addMaking(Operations& all) {
    using enum Domain;
    all.push_back({"new error",
                   {kFilter, kLeaf, kSeed},
                   [](Library& l, const Arguments& a) {
                       const std::optional<std::string> message = messageFrom(a[2]);
                       withLeaf(a[1], [&]<class Leaf>(std::type_identity<Leaf>) {
                           l.errors[at(a, 0)] =
                               std::make_unique<Leaf>(message ? message->c_str() : nullptr);
                       });
                   },
                   [](World& w, const Arguments& a) {
                       w.errors[at(a, 0)] = {a[1], messageFrom(a[2])};
                   }});
    all.push_back({"throw error",
                   {kFilter},
                   [](Library& l, const Arguments& a) {
                       Defs::Errors* const error = l.errors[at(a, 0)].release();
                       if (error == nullptr) return;
                       l.record = support::thrownBy([&] { error->suicideAndRethrow(); });
                   },
                   [](World& w, const Arguments& a) {
                       const Error error = std::exchange(w.errors[at(a, 0)], {});
                       if (error.isThere()) w.record = textOf(error);
                   },
                   1});
}

void addCopying(Operations& all) {
    using enum Domain;
    const auto copied = [](World& w, const Arguments& a) {
        if (w.errors[at(a, 1)].isThere()) w.errors[at(a, 0)] = Error(w.errors[at(a, 1)]);
    };
    all.push_back({"copy error",
                   {kFilter, kFilter},
                   [](Library& l, const Arguments& a) {
                       withError(l.errors[at(a, 1)], [&]<class Leaf>(const Leaf& error) {
                           l.errors[at(a, 0)] = std::make_unique<Leaf>(error);
                       });
                   },
                   copied,
                   1});
    all.push_back({"assign error",
                   {kFilter, kFilter},
                   [](Library& l, const Arguments& a) {
                       withError(l.errors[at(a, 1)], [&]<class Leaf>(const Leaf& error) {
                           auto target = std::make_unique<Leaf>(kBefore);
                           *target = error;
                           l.errors[at(a, 0)] = std::move(target);
                       });
                   },
                   copied,
                   1});
}

// What an error without a message prints is not said; it prints something.
void addDescribing(Operations& all) {
    using enum Domain;
    all.push_back(
        {"describe error",
         {kFilter},
         [](Library& l, const Arguments& a) {
             const auto& error = l.errors[at(a, 0)];
             if (error == nullptr) return;
             std::ostringstream out;
             out << *error;
             l.answer = {static_cast<double>(error->errorNumber()), out.str().empty() ? 0.0 : 1.0};
             if (error->message() != nullptr) l.record = out.str();
         },
         [](World& w, const Arguments& a) {
             const Error& error = w.errors[at(a, 0)];
             if (!error.isThere()) return;
             w.answer = {static_cast<double>(kFirstNumber + error.leaf), 1.0};
             w.record = error.message.value_or("");
         },
         1});
}

// By reference, into an error of the same class.
void addArchiving(Operations& all) {
    using enum Domain;
    all.push_back({"archive error",
                   {kFilter, kFilter, kDamage},
                   [](Library& l, const Arguments& a) {
                       withError(l.errors[at(a, 0)], [&]<class Leaf>(Leaf& error) {
                           l.record = stored(error);
                           auto target = std::make_unique<Leaf>(kBefore);
                           Leaf& object = *target;
                           l.errors[at(a, 1)] = std::move(target);
                           loadInto(object, damaged(l.record, a[2]));
                       });
                   },
                   [](World& w, const Arguments& a) {
                       const Error src = w.errors[at(a, 0)];
                       if (!src.isThere()) return;
                       w.record = recordOf(src);
                       w.errors[at(a, 1)] = {src.leaf, kBefore};
                       load(w.errors[at(a, 1)], damaged(w.record, a[2]), src);
                   }});
    all.push_back({"archive pointer to error",
                   {kFilter, kFilter, kDamage},
                   [](Library& l, const Arguments& a) {
                       if (l.errors[at(a, 0)] == nullptr) return;
                       l.record = support::storedByPointer({l.errors[at(a, 0)].get()});
                       support::Loading loading(damaged(l.record, a[2]));
                       l.errors[at(a, 1)] = mfLoad<Defs::Errors>(loading);
                   },
                   [](World& w, const Arguments& a) {
                       const Error src = w.errors[at(a, 0)];
                       if (!src.isThere()) return;
                       w.record = pointerRecordOf(src);
                       loadPointer(w.errors[at(a, 1)], damaged(w.record, a[2]), src);
                   }});
}

}  // namespace

void addErrorOperations(Operations& all) {
    addMaking(all);
    addCopying(all);
    addDescribing(all);
    addArchiving(all);
}

}  // namespace model
