// The options that say in which plane a picture is filtered.
#include "plane_options.h"

#include <CLI/CLI.hpp>

#include <bit>
#include <string>

#include "numbers.h"

namespace {

void addBorder(CLI::App& command, mvBorder& border) {
    const auto set = [&border](const std::string& name) {
        border = name == "zero" ? mvBorder::zero : mvBorder::mirror;
    };
    command
        .add_option_function<std::string>("--border", set,
                                          "What stands around the picture: its mirror image "
                                          "(mirror, default) or black (zero)")
        ->check(CLI::IsMember({"mirror", "zero"}));
}

void addTile(CLI::App& command, std::optional<long>& tile) {
    const auto take = [&tile](long side) {
        if (!std::has_single_bit(static_cast<unsigned long>(side))) {
            throw CLI::ValidationError("--tile", std::to_string(side) + " is no power of two");
        }
        tile = side;
    };
    addWhole(command, "--tile",
             "Side of the tiles that a larger picture is cut into, a power of two up to 2048; 1024 "
             "if not given, or 2048 where that is less work",
             take, 1, kLargestPlaneSide);
}

}  // namespace

void addPlaneOptions(CLI::App& command, PlaneOptions& options, bool canChoose) {
    addBorder(command, options.border);
    if (canChoose) addTile(command, options.tile);
    addWhole(
        command, "--margin",
        "Pels around the picture, or around each of its tiles, that are filtered with it; as far "
        "as "
        "the filter reaches, or a quarter of the plane, if not given",
        [&options](long margin) { options.margin = margin; }, 0, kLargestPlaneSide / 2 - 1);
}
