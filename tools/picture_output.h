// Grey pictures on their way into files.
#pragma once

#include <base/pel_buffer.h>

class OutputFile;

/// Writes a grey PNG of 8 or 16 bits a pel, by the pel type, that bears the program's name. Throws
/// a Failure that names the file when it cannot be written.
template <class T>
void writePicture(OutputFile& file, const mvPelBuffer_const<T>& picture);
