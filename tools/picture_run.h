// One picture, or many of them, several at once.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "failure.h"
#include "picture_arguments.h"

/// What there is to say of a picture that is done, or empty texts.
struct PictureReport {
    std::string remark{};  // what a user should know of the result
    std::string list{};    // what was found in it, for standard output
};

/// What is done to one picture, on up to `threads` threads; called from several threads at once.
using PictureWork = std::function<PictureReport(const PictureFiles& files, int threads)>;

/// The files of a run beside its pictures.
struct OtherFiles {
    std::vector<std::string> inputs;
    std::vector<Output> outputs;
};

/// Throws BadArgument for files that a run may not have: before it begins.
void requireFiles(const PictureArguments& pictures, const OtherFiles& others);

/// Does the work on every picture, on as many threads as --jobs says. Where these are more than the
/// pictures, each picture gets several.
///
/// Errors of a single picture are thrown. With --out-dir, a picture that fails is reported and the
/// others go on; at the end a line on standard output says how many are done, or on standard error,
/// where standard output has the lists of the pictures in their order. Parameters with which no
/// picture can be filtered end the run as an exception.
ExitCode runPictures(const PictureArguments& pictures, const PictureWork& work);
