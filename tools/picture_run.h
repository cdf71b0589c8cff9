// One picture, or many of them, several at once.
#pragma once

#include <functional>

#include "failure.h"
#include "picture_arguments.h"

/// What is done to one picture, on up to `threads` threads; called from several threads at once.
using PictureWork = std::function<void(const PictureFiles& files, int threads)>;

/// Does the work on every picture, on as many threads as --jobs says. Where these are more than the
/// pictures, each picture gets several.
///
/// Errors of a single picture are thrown. With --out-dir, a picture that fails is reported and the
/// others go on; at the end a line on standard output says how many are done. Parameters with which
/// no picture can be filtered end the run as an exception.
ExitCode runPictures(const PictureArguments& pictures, const PictureWork& work);
