// What an archive file holds, for people.
#include "archive_report.h"

#include <base/archive.h>
#include <filt/freqfilt.h>

#include <concepts>
#include <numbers>
#include <sstream>

#include "failure.h"
#include "input_file.h"
#include "picture_file.h"
#include "printable.h"
#include "size_text.h"

namespace {

void line(std::ostream& out, const char* name, const auto&... values) {
    std::ostringstream text;
    (text << ... << values);
    out << "  " << name << ": " << printable(text.str()) << '\n';
}

void alongAcross(std::ostream& out, const char* name, mvPair<double> value) {
    line(out, name, value.x, " along, ", value.y, " across, cycles per pixel");
}

void size(std::ostream& out, mvPair<long> size) {
    line(out, "size", sizeText(size));
}

// The square around DC that pass filters clear and reject filters keep.
void dcSquare(std::ostream& out, const auto& filter) {
    if constexpr (requires { filter.dcRemovalRadius(); }) {
        line(out, "DC removal radius", filter.dcRemovalRadius());
    } else {
        line(out, "DC protection radius", filter.dcProtectionRadius());
    }
}

template <std::derived_from<mvRingFilter> Filter>
void describe(std::ostream& out, Filter& filter) {
    size(out, filter.size());
    line(out, "frequency", filter.frequency(), " cycles per pixel");
    line(out, "sigma", filter.sigma(), " cycles per pixel");
    line(out, "plateau", filter.plateau(), " cycles per pixel");
    line(out, "support", filter.supportWidth(), " bins");
    dcSquare(out, filter);
}

template <std::derived_from<mvLobeFilter> Filter>
void describe(std::ostream& out, Filter& filter) {
    size(out, filter.size());
    line(out, "frequency", filter.frequency(), " cycles per pixel");
    line(out, "angle", filter.angle().toDouble() * 180 / std::numbers::pi, " degrees");
    alongAcross(out, "sigma", filter.sigma());
    alongAcross(out, "plateau", filter.plateau());
    line(out, "support", filter.supportWidth(), " x ", filter.supportHeight(), " bins");
    dcSquare(out, filter);
}

void describe(std::ostream& out, mvFrequencyFilterImage& filter) {
    size(out, {filter.supportWidth(), filter.supportHeight()});
}

void describe(std::ostream& out, mvFrequencyDefs::Errors& error) {
    std::ostringstream number;
    number << "0x" << std::hex << error.errorNumber();
    line(out, "number", number.str());
    line(out, "message", error.message() ? error.message() : "(none)");
}

// Writes the object under `name` if it is a T.
template <class T>
bool reportAs(const char* name, mvPersistent& object, std::ostream& out) {
    auto* typed = dynamic_cast<T*>(&object);
    if (!typed) return false;
    out << name << '\n';
    try {
        describe(out, *typed);
    } catch (const mvFrequencyDefs::Uninitialized&) {
        out << "  without response\n";
    }
    return true;
}

#define NAMED(Class) reportAs<Class>(#Class, object, out)

void report(mvPersistent& object, std::ostream& out) {
    const bool known = NAMED(mvFrequencyFilterBandPass) || NAMED(mvFrequencyFilterBandReject) ||
                       NAMED(mvFrequencyFilterGabor) || NAMED(mvFrequencyFilterGaborReject) ||
                       NAMED(mvFrequencyFilterImage) || NAMED(mvFrequencyDefs::InvalidArgument) ||
                       NAMED(mvFrequencyDefs::Uninitialized) ||
                       NAMED(mvFrequencyDefs::InvalidSize) ||
                       NAMED(mvFrequencyDefs::UnboundWindow) ||
                       NAMED(mvFrequencyDefs::InvalidBuffer) || NAMED(mvFrequencyDefs::BadCoord);
    if (!known) out << "an object of a class unknown to this program\n";
}

#undef NAMED

void reportArchive(std::istream& file, std::ostream& out) {
    mvArchive archive(file);
    do {
        const auto object = mfLoad<mvPersistent>(archive);
        if (object) {
            report(*object, out);
        } else {
            out << "null\n";
        }
    } while (file.peek() != std::istream::traits_type::eof());
}

}  // namespace

void reportFile(const std::string& path, std::ostream& out) {
    InputFile file(path);
    if (!isStandard(path) && beginsPicture(file.peek())) {
        out << pictureReport(path);
        return;
    }
    try {
        reportArchive(file, out);
    } catch (const mvException& error) {
        throw Failure(inputName(path) + ": " + textOf(error));
    }
}
