// What a file holds, for people.
#pragma once

#include <ostream>
#include <string>

/// Writes class and parameters of every object in an archive, or what a PNG is. Throws a Failure
/// when a record cannot be read; what stands before it has been written then.
void reportFile(const std::string& path, std::ostream& out);
