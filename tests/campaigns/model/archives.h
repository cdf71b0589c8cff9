// The archive records in the model: what is stored, and what loading makes of it.
#pragma once

#include "campaigns/model/state.h"
#include "support/archive_record.h"

namespace model {

archive::Record recordOf(const Buffer& b);

/// With the base part in front, as all filters have it.
archive::Record recordOf(const RingFilter& filter);
archive::Record recordOf(const LobeFilter& filter);
archive::Record recordOf(const ImageFilter& filter);

/// Field by field: bytes that end early leave the fields before them changed and no data.
void load(Buffer& b, const std::string& bytes);

}  // namespace model
