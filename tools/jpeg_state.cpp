// What libjpeg keeps of a file, and its errors as exceptions.
#include "jpeg_state.h"

#include <jerror.h>

#include <cstdio>

#include "attention.h"
#include "input_bytes.h"

namespace {

// A file of many scans is decoded once for each of them; those of cameras have about ten.
constexpr int kMostScans = 100;

JpegState& stateOf(void* client) {
    return *static_cast<JpegState*>(client);
}

extern "C" void endSteps(j_common_ptr jpeg) {
    std::array<char, JMSG_LENGTH_MAX> text{};
    jpeg->err->format_message(jpeg, text.data());
    stateOf(jpeg->client_data).fail(text.data());
}

// Bytes between markers, and versions to come, change no pel.
bool isHarmless(int warning) {
    return warning == JWRN_EXTRANEOUS_DATA || warning == JWRN_JFIF_MAJOR ||
           warning == JWRN_ADOBE_XFORM;
}

extern "C" void takeWarning(j_common_ptr jpeg, int level) {
    if (level < 0 && !isHarmless(jpeg->err->msg_code)) endSteps(jpeg);
}

extern "C" void printNothing(j_common_ptr) {}

extern "C" void doNothing(j_decompress_ptr) {}

extern "C" boolean fillBuffer(j_decompress_ptr jpeg) {
    stateOf(jpeg->client_data).refill();
    return TRUE;
}

extern "C" void skipBytes(j_decompress_ptr jpeg, long count) {
    if (count <= 0) return;
    auto left = static_cast<std::size_t>(count);
    while (left > jpeg->src->bytes_in_buffer) {
        left -= jpeg->src->bytes_in_buffer;
        fillBuffer(jpeg);
    }
    jpeg->src->next_input_byte += left;
    jpeg->src->bytes_in_buffer -= left;
}

extern "C" void watchProgress(j_common_ptr common) {
    JpegState& state = stateOf(common->client_data);
    if (interrupted()) state.fail("interrupted");
    if (state.jpeg.input_scan_number > kMostScans) state.fail("Too many scans");
}

}  // namespace

JpegState::JpegState(InputBytes& file) : file_(file) {
    jpeg.err = jpeg_std_error(&errors_);
    errors_.error_exit = endSteps;
    errors_.emit_message = takeWarning;
    errors_.output_message = printNothing;
    jpeg.client_data = this;
    guarded(*this, [](j_decompress_ptr made) { jpeg_create_decompress(made); });
    source_.init_source = doNothing;
    source_.fill_input_buffer = fillBuffer;
    source_.skip_input_data = skipBytes;
    source_.resync_to_restart = jpeg_resync_to_restart;
    source_.term_source = doNothing;
    jpeg.src = &source_;
    progress_.progress_monitor = watchProgress;
    jpeg.progress = &progress_;
}

JpegState::~JpegState() {
    jpeg_destroy_decompress(&jpeg);
}

void JpegState::fail(const char* text) {
    std::snprintf(error.data(), error.size(), "%s", text);
    std::longjmp(escape, 1);
}

void JpegState::refill() {
    source_.next_input_byte = bytes_.data();
    source_.bytes_in_buffer = file_.readSome(bytes_.data(), bytes_.size());
    if (source_.bytes_in_buffer == 0) fail("too few bytes");
}
