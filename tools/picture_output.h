// Pictures on their way into files.
#pragma once

#include "picture.h"

class OutputFile;

/// Writes a picture of 8 or 16 bits a sample, by the pel type, that bears the program's name. What
/// kind of file it becomes says the file's name. Throws a Failure that names the file when it
/// cannot be written, and BadArgument for colour in a PGM.
template <class T>
void writePicture(OutputFile& file, const PictureOf<T>& picture);

/// A grey one.
template <class T>
void writePicture(OutputFile& file, const mvPelBuffer<T>& grey) {
    writePicture(file, PictureOf<T>{{grey}});
}
