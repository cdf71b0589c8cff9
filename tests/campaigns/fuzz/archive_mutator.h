// Changes archives field by field.
#pragma once

#include <string>

#include "support/random_planes.h"

namespace fuzz {

/// One change of an archive that is read as `kind`; both may change. Fields get values from the
/// ends of their ranges, counts lie or agree with what follows, sizes and planes are made to fit
/// each other, records are added, doubled and cut.
void mutateArchive(std::string& kind, std::string& bytes, support::Random& random);

}  // namespace fuzz
