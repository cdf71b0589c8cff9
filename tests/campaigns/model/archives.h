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
void load(ImageFilter& filter, const std::string& bytes);

/// The versions in front of a filter's fields, and its flag; `where` belongs to the own version.
bool loadBase(const std::string& bytes, const std::string& where);
/// Throws when the bytes are less than the record.
void requireWhole(const std::string& bytes, const std::string& record);

/// Loads what is left of the record of `src`.
template <class Filter>
void load(Filter& filter, const std::string& bytes, const Filter& src, const std::string& where) {
    filter.isInitialized = loadBase(bytes, where);
    filter.hasResponse = false;
    requireWhole(bytes, recordOf(src).bytes());
    filter = src;
}

}  // namespace model
