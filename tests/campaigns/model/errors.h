// The error objects of the model.
#pragma once

#include <optional>
#include <string>

#include "campaigns/model/state.h"

namespace model {

/// "InvalidSize", and so on, by number.
const std::string& leafName(long leaf);

/// What a thrown error is compared with.
std::string textOf(const Error& error);

/// What is stored by reference, and by pointer: there the name of the class stands in front.
std::string recordOf(const Error& error);
std::string pointerRecordOf(const Error& error);

/// Load what is left of the record of `src`; the first three bytes tell what else is wrong.
void load(Error& error, const std::string& bytes, const Error& src);
void loadPointer(Error& error, const std::string& bytes, const Error& src);

}  // namespace model
