// The base library: pel buffers, exceptions, the registry and archives.
#include <memory>
#include <vector>

#include "campaigns/faults/operations.h"
#include "support/streams.h"

namespace faults {

namespace {

// A persistent object that is registered while an operation runs.
class Lens : public mvPersistent {
  public:
    static mvPersistent* make() { return new Lens; }
};

template <class Call>
void storing(Operands& o, Call call) {
    o.written = hashOfStored(call);
}

template <class Printed>
void print(Operands& o, const Printed& printed) {
    Sink sink;
    sink << printed;
    o.written = sink.hash();
}

// Views of one memory whose rows are of different lengths: the copy goes through a temporary.
void copyWithin(mvPelBuffer<Byte>& image) {
    Byte* const pels = image.pointToOffset();
    const mvPelBuffer<Byte> src(pels, 3, 3, 3);
    mvPelBuffer<Byte> dst(pels + 1, 3, 3, 4);
    mfPelCopy(src, dst);
}

std::vector<Operation> pelOperations() {
    return {
        {"new pels", [](Operands& o) { o.newBytes = mvPelBuffer<Byte>(5, 4); }},
        {"new pels, aligned", [](Operands& o) { o.newFirst = mvPelBuffer<double>(5, 4, 4096); }},
        {"pels of no size",
         [](Operands& o) { o.newBytes = mvPelBuffer<Byte>(0, 4); },
         {},
         "mvException"},
        {"view with an owner",
         [](Operands& o) {
             const auto owner = std::make_shared<std::vector<Byte>>(12);
             o.newBytes = mvPelBuffer<Byte>(owner->data(), 3, 4, 3, owner);
         }},
        {"window", [](Operands& o) { o.newBytes = o.boundBytes.window(1, 1, 2, 1); }},
        {"window outside",
         [](Operands& o) { o.newBytes = o.boundBytes.window(1, 1, 9, 9); },
         {},
         "mvException"},
        {"copy within one memory", [](Operands& o) { copyWithin(o.boundBytes); }},
        {"fill", [](Operands& o) { mfPelSet_U8(o.boundBytes, 7); }},
    };
}

std::vector<Operation> exceptionOperations() {
    return {
        {"error with a message",
         [](Operands& o) { o.error = mvExceptionWithString("Another message, long as well."); }},
        {"error of an unknown version",
         [](Operands& o) { print(o, mvArchive::UnknownVersion("filt/fft", 572)); }},
        {"error of an unknown version with a long text",
         [](Operands& o) {
             print(o, mvArchive::UnknownVersion("a name longer than an object", 1));
         }},
        {"status", [](Operands&) { mfThrowExceptionOnFailure(5); }, {}, "status 5"},
        {"printed error", [](Operands& o) { print(o, o.error); }},
        {"printed error without a message",
         [](Operands& o) { print(o, mvExceptionWithString(nullptr)); }},
        {"thrown copy of an error that deletes itself",
         [](Operands&) {
             auto error =
                 std::make_unique<mvFrequencyDefs::BadCoord>("Out of the plane as a test.");
             error.release()->suicideAndRethrow();
         },
         {},
         "BadCoord: Out of the plane as a test."},
    };
}

std::vector<Operation> persistenceOperations() {
    return {
        {"watcher", [](Operands& o) { mvPersistent::watch(o.error, [&o] { o.text.clear(); }); }},
        {"names of the registered classes", [](Operands&) { mfRegisteredClasses(); }},
        {"registered class",
         [](Operands&) { const mv_Instantiator lenses(typeid(Lens), &Lens::make); }},
        {"unregistered class",
         [](Operands& o) {
             storing(o, [](mvArchive& ar) {
                 Lens lens;
                 mvPersistent* pointer = &lens;
                 ar || pointer;
             });
         },
         {},
         "mvException"},
    };
}

template <class Error>
Operation madeByTheRegistry(const char* name) {
    Error example(name);
    mvPersistent* address = &example;
    return {std::string("made by the registry: ") + name, [record = recordOf(address)](Operands&) {
                loadFrom(record, [](mvArchive& ar) { mfLoad<Error>(ar); });
            }};
}

std::vector<Operation> archiveOperations() {
    mvFrequencyDefs::InvalidSize example("A message that is too long to be kept in place.");
    mvPersistent* exampleAddress = &example;
    std::string exampleText = "A text that is long enough for a block.";
    const std::string text = recordOf(exampleText);
    const std::string error = recordOf(example);
    const std::string pointer = recordOf(exampleAddress);
    const std::string unknown("\x01\x1a\0\0\0NobodyHasEverHeardOfThisOne", 31);
    return {
        {"stored text", [](Operands& o) { storing(o, [&](mvArchive& ar) { ar || o.text; }); }},
        {"loaded text", [=](Operands& o) { loadFrom(text, [&](mvArchive& ar) { ar || o.text; }); }},
        {"stored error",
         [](Operands& o) { storing(o, [&](mvArchive& ar) { ar || o.error || o.error; }); }},
        {"loaded error",
         [=](Operands&) {
             mvFrequencyDefs::InvalidSize target;
             loadFrom(error, [&](mvArchive& ar) { ar || target; });
         }},
        {"stored pointers to one object",
         [](Operands& o) {
             mvFrequencyDefs::InvalidSize pointed("Message");
             mvPersistent* first = &pointed;
             storing(o, [&](mvArchive& ar) { ar || first || first; });
         }},
        {"loaded pointer",
         [=](Operands&) {
             loadFrom(pointer, [](mvArchive& ar) { mfLoad<mvFrequencyDefs::Errors>(ar); });
         }},
        {"loaded pointer of another class",
         [=](Operands&) {
             loadFrom(pointer, [](mvArchive& ar) { mfLoad<mvFrequencyFilter>(ar); });
         },
         {},
         "mvException"},
        {"loaded pointer of an unknown class",
         [=](Operands&) { loadFrom(unknown, [](mvArchive& ar) { mfLoad<mvPersistent>(ar); }); },
         {},
         "mvException"},
        madeByTheRegistry<mvFrequencyDefs::InvalidArgument>("InvalidArgument"),
        madeByTheRegistry<mvFrequencyDefs::Uninitialized>("Uninitialized"),
        madeByTheRegistry<mvFrequencyDefs::InvalidSize>("InvalidSize"),
        madeByTheRegistry<mvFrequencyDefs::UnboundWindow>("UnboundWindow"),
        madeByTheRegistry<mvFrequencyDefs::InvalidBuffer>("InvalidBuffer"),
        madeByTheRegistry<mvFrequencyDefs::BadCoord>("BadCoord"),
    };
}

}  // namespace

std::vector<Operation> baseOperations() {
    std::vector<Operation> all;
    for (const auto& rows :
         {pelOperations(), exceptionOperations(), persistenceOperations(), archiveOperations()}) {
        all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
}

}  // namespace faults
