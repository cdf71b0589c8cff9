// Where the fields of archive records stand.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace fuzz {

enum class FieldKind {
    version,  ///< u8
    flag,     ///< bool
    tag,      ///< u8 before a pointer
    integer,  ///< i32 or u32
    count,    ///< u32, the size of the floats or of the text that follow
    floats,   ///< f32, any number of them
    number,   ///< f64
    text
};

struct Field {
    FieldKind kind;
    std::size_t at;
    std::size_t size;
};

/// The fields of an archive that is read as `kind` (archive/content.h), in their order. Ends with
/// the last whole field, or where a tag or a name has no meaning.
std::vector<Field> recordFields(std::string_view kind, std::string_view bytes);

}  // namespace fuzz
